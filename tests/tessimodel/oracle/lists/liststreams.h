#pragma once

#include "tests/tessimodel/oracle/streams.h"

#include <ostream>

// What happens to an order list or to a trade list, step by step.
namespace tests::oracle::lists {

// As the panel's filter, field by field.
struct Filter {
    int reserved0 = 0;
    int reserved1 = 0;
    int handsMode = 0;
    int hands = 0;
    int connective = 0;
    int amountMode = 0;
    int amount = 0;
    int startTime = 9 * 3600 * 1000;
    int endTime = (16 * 60 + 10) * 60 * 1000;
    bool showBuyOrder = true;
    bool showSellOrder = true;
    bool showBuyCancel = true;
    bool showSellCancel = true;
};

struct ListStep {
    enum class Action {
        Orders,    // a batch for entrustCallback
        Trades,    // for transactionCallback
        Snapshots, // for quoterCallback
        Work,      // the strand of the models runs
        Release,   // the strand that frees runs
        Clear,
        ClearOrders,
        ClearTrades,
        ClearQuotes,
        Follow,
        InitParams,
        SetFilter,
        FilterAnew, // datasFilter
        Append,     // one record, as of an instrument
        Reprice,    // another reader of a snapshot stores a last price into it
        Match,      // tryMatch as of an instrument
        Find,       // findSeq(first, second)
        Split,      // tryMatch(first, second) of the view
        View,       // setViewTimeRange(first, second)
        Recalculate,
        RecalculatePrices,
        Height // setFullHeightHandle(first)
    };

    Action action = Action::Work;
    int kind = 1;
    BatchPtr batch;
    bool works = true;        // the strand of the models runs right after the callback
    bool lowersFlags = false; // the panel takes the changed flags back beforehand
    int instrument = 0;
    RecordPtr record;
    Filter filter{};
    int first = 0;
    int second = 0;
    double price = 0;
};

std::string text(const ListStep& step);

} // namespace tests::oracle::lists
