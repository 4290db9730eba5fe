#pragma once

#include "apps/tessi/bestlevels.h"
#include "apps/tessi/orderledger.h"
#include "apps/tessi/pairverifier.h"
#include "apps/tessi/queueverifier.h"
#include "utils/int64.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace recording {
struct RecordedDay;
}

namespace tessi {

// A snapshot and the book that should have shown the same.
struct Divergence {
    std::size_t arrival = 0; // of the snapshot in the day
    __int64 timetag = 0;     // ms
    __int64 dayVolume = 0;   // shares
    BestLevels snapshot;
    BestLevels book; // may go deeper than the snapshot
};

// A snapshot that no state of the tick-built book matches. Its book is the nearest state of the same day volume; where
// no state has that volume, the state at the snapshot's time.
struct Miss : Divergence {
    bool hasVolume = false;                // some state has the snapshot's day volume
    std::vector<RestingOrder> explainedBy; // orders that rest and have no row, which make up the whole difference
};

// How a day's ticks and its snapshots agree: in the book built from them, in the trades matched to snapshots, and in
// the order queues at the best prices.
// docs/recorded-days.md tells what each figure means.
struct VerifiedDay {
    std::string market;
    std::string code;
    double priceTick = 0;
    int day = 0;                         // yyyymmdd
    std::size_t snapshots = 0;           // of continuous trading
    std::size_t rawMatches = 0;          // the book from ticks alone is the snapshot, at one of its states
    std::size_t newer = 0;               // snapshots newer than every tick before their place
    std::size_t correctedMatches = 0;    // of these, how often a read then shows the snapshot's levels
    std::size_t parked = 0;              // trades that wait for their order when the day is over
    __int64 forgotten = 0;               // trades whose order should have come and had not
    std::vector<Miss> misses;            // the others of `snapshots`, in their order; in shares
    std::optional<Divergence> wrongRead; // the first read that a newer snapshot did not put right; in hands
    VerifiedPairs pairs;
    std::optional<VerifiedQueues> queues; // of a day that has the stream

    // Misses by what explains them: only orders of market kinds, others too, nothing.
    std::size_t missesByMarketOrders() const;
    std::size_t missesByOtherOrders() const;
    std::size_t missesUnexplained() const;
};

// Called now and then with how much of the work is done.
using VerifyProgress = std::function<void(std::size_t done, std::size_t total)>;

// Replays the day's ticks through the thousand-level book and holds every snapshot of continuous trading against it;
// and through the trade list, to hold its matching against the snapshots.
//
// A stamp does not say which ticks a snapshot holds. So the ticks are walked one by one in the order of events, and
// each snapshot is looked for, in order, among the book's states: ten levels a side in shares, and the day volume. Then
// the day runs through the model once more, with each snapshot at its place: its state, or, for one that has none,
// behind the last tick that is not later than its stamp. Order queues are looked for by themselves.
//
// Runs a stand-in terminal of its own: no other may exist. `day` has orders, trades and snapshots.
VerifiedDay verifyDay(const recording::RecordedDay& day, const VerifyProgress& progress = {});

} // namespace tessi
