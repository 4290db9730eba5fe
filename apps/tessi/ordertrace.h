#pragma once

#include "apps/tessi/orderfates.h"
#include "indexui/tessimodel/cmodeldepthentrust.h"

#include <optional>
#include <vector>

namespace recording {
struct RecordedDay;
}

namespace tessi {

// One order of a day and all that became of it.
struct OrderTrace {
    int seq = 0;
    int row = -1;                           // in the order list; -1 without a record
    TC::CModelDepthEntrust::OrderRow order; // null when the day has no record of the order
    OrderFate fate;

    // In ms; rows know seconds.
    __int64 orderedAt = 0;            // 0 without a record
    std::vector<__int64> cancelledAt; // of each cancel of `fate`

    // Shares that are neither traded nor cancelled. Not known without a record.
    std::optional<__int64> left() const;

    // The order on the other side of one of its trades.
    int counterpartOf(const quoter::TransactionData& trade) const;
};

// Looks up one order after the whole day. Runs a stand-in terminal of its own: no other may exist.
//
// By its seq: nothing when neither an order nor a trade nor a cancel has it. Shanghai has trades of orders that it
// never reports.
std::optional<OrderTrace> traceOrder(const recording::RecordedDay& day, int seq);

// By its row in the order list; nothing when there is none.
std::optional<OrderTrace> traceRow(const recording::RecordedDay& day, int row);

} // namespace tessi
