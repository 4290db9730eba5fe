#pragma once

#include "tests/tessimodel/oracle/copiedmodels.h"
#include "tests/tessimodel/oracle/snapshots/snapshotmarket.h"

#include <string>

// What happens to a book summary, step by step. Its snapshots are changed by who plays them, so each side has copies of
// its own.
namespace tests::oracle::status {

using snapshots::RecordPtr;
using snapshots::Records;

// The models of a stream, among which copies go to and fro.

struct StatusStep {
    enum class Action {
        Follow,
        Batch,
        Connect, // the first record, the second one before it
        Calc,    // the same, by the protected operation
        Clear,
        NewLoan,
        PriceTick,     // the member is written
        LastClose,     // the member is written
        Factor,        // of volumes under new-loan rules, an answer of the terminal
        Renew,         // an instrument gets other facts
        CopyConstruct, // another model is made as a copy of the one in use, and used on
        CopyAssign,    // another model becomes a copy of the one in use, and is used on
        Select,        // another model is used on
        Construct      // another model is made anew, and used on
    };
    static constexpr std::size_t kActions = 14;

    Action action = Action::Clear;
    int kind = 1;
    int ignored = 0; // the first argument
    Records records;
    int number = 0; // instrument, model, factor
    int facts = 0;
    bool on = false;
    double value = 0;
    __int64 volume = 0;
};

std::string text(const StatusStep& step);

} // namespace tests::oracle::status
