#pragma once

#include "apps/tessi/orderledger.h"
#include "apps/tessi/placement.h"
#include "apps/tessi/queuestates.h"

#include <cstddef>
#include <vector>

namespace recording {
struct Event;
struct RecordedDay;
} // namespace recording

namespace tessi {

// A recorded queue held against the model's in some of its states.
struct QueueReading {
    StateRange states;
    std::vector<__int64> book;             // the model's first sizes
    std::size_t right = 0;                 // how many of them are the recorded ones, from the first on
    std::vector<RestingOrder> explainedBy; // what else is recorded, as far as it rests at the exchange
};

// A row that is to be explained, and what the states that it may stand for say of it.
struct OpenRow {
    const QueueRow* row = nullptr;
    StateRange within; // none: the row is left alone

    std::vector<QueueReading> explained; // the states in which resting orders make up the difference, ascending
    QueueReading nearest;                // the reading that is right for the longest, the first of equal ones

    // The explained reading of this state; null for any other.
    const QueueReading* at(std::size_t state) const;
};

// Walks the day's ticks once more, with a ledger of what rests at the exchange beside the model, and fills `rows`.
//
// Runs a stand-in terminal of its own: no other may exist.
void readOpenRows(const recording::RecordedDay& day, const std::vector<const recording::Event*>& ticks,
                  std::vector<OpenRow>& rows);

} // namespace tessi
