#pragma once

#include "tests/tessimodel/oracle/streams.h"

// What happens to a model of the order queues, step by step.
namespace tests::oracle::queues {

struct ModelStep {
    enum class Action {
        Orders,    // a batch for entrustCallback
        Trades,    // for transactionCallback
        Queues,    // for queueCallback
        Snapshots, // for quoterCallback
        Work,      // the strand of the models runs
        Clear,
        Follow,
        InitParams,
        Read,     // checkUpdate
        ReadBids, // getBids, as a model that derives from this one does
        Level,    // getLevel
        Clean,    // somebody takes note of the dirty marks
        BookOf,   // the book has another instrument than the model, as in the middle of setStock
        NewTick   // another price tick
    };

    Action action = Action::Work;
    int kind = 1;
    BatchPtr batch; // its instrument means nothing: the callbacks take records alone
    bool works = true;
    int instrument = 0;
    bool flag = false; // Level: bid side; Read, ReadBids: the panel has rows of its own in its lists
    double price = 0;
};

std::string text(const ModelStep& step);

} // namespace tests::oracle::queues
