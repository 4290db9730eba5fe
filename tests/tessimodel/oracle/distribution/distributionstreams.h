#pragma once

#include "datasource/rpcformula.h"
#include "tests/tessimodel/oracle/snapshots/snapshotmarket.h"

#include <string>
#include <vector>

// What happens to a distribution, step by step. No model changes a record, so both sides have the same ones.
namespace tests::oracle::distribution {

using snapshots::RecordPtr;
using snapshots::Records;

struct Tick {
    double price = 0;
    int totalVolume = 0;
    int volume = 0;
    bool isBuy = false;
};

struct DistributionStep {
    enum class Action {
        Follow,
        Batch,
        Together, // several batches without waiting for their threads, at rest before and behind
        Clear,
        Dates,    // m_dateProvider
        Renew,    // an instrument gets other facts
        Pending,  // the member is written
        Series,   // calc
        Record,   // processData of a record
        OneTick,  // processData of a tick
        Thread,   // quoterCallBackThread, on this thread
        Construct // a new model, the old one goes
    };
    static constexpr std::size_t kActions = 12;

    Action action = Action::Clear;
    int kind = 1;
    int ignored = 0; // the first argument
    Records records;
    std::vector<Records> pieces;  // of kind 3, behind the first batch
    std::vector<Records> pushes;  // of kind 1, behind the pieces; one at most
    std::vector<int> instruments; // followed behind all; one at most
    bool on = false;              // the threads are held up until all are started; there is a date
    int number = 0;               // instrument, date
    int facts = 0;
    std::vector<Tick> ticks;
    se::RPCFormulaMetaResult series;
};

std::string text(const DistributionStep& step);

} // namespace tests::oracle::distribution
