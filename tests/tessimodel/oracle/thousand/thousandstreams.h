#pragma once

#include "tests/tessimodel/oracle/streams.h"

// What happens to a model of the thousand-level snapshot, step by step.
namespace tests::oracle::thousand {

struct ThousandStep {
    enum class Action {
        Thousand,  // a batch for ThousandDataCallback
        Snapshots, // for quoterCallback
        Work,      // the strand of the models runs
        Release,   // the strand that frees runs
        Clear,
        Follow,
        InitParams,
        NewLoan,
        Reserve, // the time that compareNewerQuote compares with
        Own,     // what the model never fills itself is filled
        Save,    // another model left rows with the manager
        Forget,  // the manager drops its rows
        Read,    // checkUpdate
        ReadSide,
        Queue // getQueue
    };

    Action action = Action::Work;
    int kind = 1;
    BatchPtr batch;
    bool works = true;
    int instrument = 0;
    bool byQuoter = false;
    bool flag = false; // NewLoan: the value; Read: the panel starts its extremes anew; ReadSide, Queue: bid side;
                       // Reserve: from the time of the volume step
    double price = 0;
    __int64 time = 0;
    std::vector<__int64> volumes;
};

std::string text(const ThousandStep& step);

} // namespace tests::oracle::thousand
