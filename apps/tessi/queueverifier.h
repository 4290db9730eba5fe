#pragma once

#include "apps/tessi/orderledger.h"
#include "apps/tessi/queuestates.h"

#include <array>
#include <cstddef>
#include <vector>

namespace recording {
struct RecordedDay;
}

namespace tessi {

// Why a row has no match.
enum class QueueFault {
    MarketOrders, // orders of market kinds that rest, of which the book shows none, are all that it has more
    OtherOrders,  // the same, with limit orders among them
    OtherState,   // the model has had this queue near the row's time, but not together with the record's other side
    OutOfOrder,   // the model has had this queue near the row's time, but not between the records before and behind
    Unknown
};

inline constexpr std::array kAllQueueFaults{QueueFault::MarketOrders, QueueFault::OtherOrders, QueueFault::OtherState,
                                            QueueFault::OutOfOrder, QueueFault::Unknown};

const char* nameOf(QueueFault fault); // "market orders", "unexplained"

// A row that the model's queue at its price is not, at any state that the row could stand for.
struct QueueMiss : QueueRow {
    QueueFault fault = QueueFault::Unknown;
    std::vector<RestingOrder> explainedBy;
    std::vector<__int64> book;   // the first sizes of the nearest state: the one that is right for the longest
    std::size_t rightOrders = 0; // how long that is
};

// How a day's order queues agree with those that CModelDepthThousand builds from its ticks.
struct VerifiedQueues {
    std::size_t rows = 0;          // of continuous trading with an order at least, each side by itself
    std::size_t matches = 0;       // of these, how many are the model's queue at their price, in order
    std::vector<QueueMiss> misses; // the others, in their order

    std::size_t count(QueueFault fault) const;
};

// Replays the day's ticks through the thousand-level model, and holds what getQueue gives against every row of the
// day's order queues. As with snapshots a stamp does not say which ticks a record contains: the two sides of a record
// are looked for in one state of the model, and the records in states that do not go back; but none in states that held
// at quite another time (kStampWindow).
//
// Runs stand-in terminals of its own: no other may exist.
VerifiedQueues verifyQueues(const recording::RecordedDay& day);

} // namespace tessi
