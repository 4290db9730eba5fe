#pragma once

#include "bench/tickstream.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace quoter {
struct QuoterDepthData;
}

namespace bench {

// A level-2 snapshot of a feed and when it comes.
struct SnapshotPush {
    std::shared_ptr<quoter::QuoterDepthData> record;
    std::size_t before = 0; // it comes ahead of the trade of this index, or behind all
};

// What the order list and the trade list get on one day.
struct DayStream {
    std::vector<std::shared_ptr<quoter::OrderData>> orders;
    std::vector<std::shared_ptr<quoter::TransactionData>> trades;  // cancels not among them
    std::vector<std::shared_ptr<quoter::TransactionData>> reports; // trades and cancels as the exchange sends them
    std::vector<SnapshotPush> snapshots;
    int lowestKey = 0; // price limits in ticks
    int highestKey = 0;
};

inline constexpr int kTradesOfADay = 1'000'000;

// The day of a busy stock, or its beginning up to so many trades, the same each time: in the whole day there are about
// 1,200,000 orders, and 4,800 snapshots up to the close.
//
// A snapshot is stamped with a whole second, three after the one before it, and contains what was traded up to then:
// its volume in hands and its last price are those of these trades. Like a real feed's it comes up to a second
// later, in between trades that it does not contain, or a moment too early. It has no levels: the lists read none.
DayStream makeDay(int trades = kTradesOfADay);

} // namespace bench
