#pragma once

#include "utils/int64.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace recording {
struct RecordedDay;
}

namespace tessi {

// Why a pair of the trade list has not the volume by which its snapshot's day volume grew.
enum class PairFault {
    WholeHands, // it has just the snapshot's trades: both day volumes were cut to whole hands
    Carried,    // it begins where the pair before it ended wrongly
    OddLots,    // it ends at another trade that is as near in whole hands, or nearer
    LateTrade,  // the snapshot knows of a trade that is stamped after its second
    OtherPrice, // the snapshot's last trade is not at its last price
    NoRow,      // no trade up to the snapshot's second is at its last price: it got no row
    Unknown     // no trade ends at the snapshot's day volume
};

inline constexpr std::array kAllPairFaults{PairFault::WholeHands, PairFault::Carried,    PairFault::OddLots,
                                           PairFault::LateTrade,  PairFault::OtherPrice, PairFault::NoRow,
                                           PairFault::Unknown};

// "whole hands", "carried", ...
const char* nameOf(PairFault fault);

// A pair that does not agree with its snapshot.
struct PairMiss {
    __int64 timetag = 0;                // of the snapshot, in ms
    std::pair<int, int> rows{-1, -1};   // that it was given, first and last
    std::pair<int, int> should{-1, -1}; // the rows between both day volumes; (-1, -1) for none
    __int64 shares = 0;                 // of the rows that it was given
    __int64 hands = 0;                  // the same in whole hands
    __int64 step = 0;                   // hands by which the snapshot's day volume grew
    PairFault fault = PairFault::Unknown;
};

// How the trade list's matching of trades to snapshots agrees with the snapshots' day volumes.
struct VerifiedPairs {
    std::size_t pairs = 0;        // snapshots with a closed pair
    std::size_t matches = 0;      // of these, how many pairs have the hands of the snapshot's volume step
    std::size_t rightRows = 0;    // how many have just the trades between both day volumes, to the share
    std::vector<PairMiss> misses; // the others of `matches`, in their order

    std::size_t count(PairFault fault) const;
};

// Delivers the day as history to the trade list, and holds every closed pair against its snapshot. Runs a stand-in
// terminal of its own: no other may exist.
VerifiedPairs verifyPairs(const recording::RecordedDay& day);

} // namespace tessi
