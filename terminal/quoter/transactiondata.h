#pragma once

#include "quoter/quoterbase.h"

namespace quoter {

// TransactionData::transKind of a cancel.
inline constexpr int kTransKindCancel = 3;

// One tick trade, or a cancel that the exchange reports as a trade.
struct TERMINAL_API TransactionData : QuoterBase {
    ~TransactionData() override;

    __int64 volume = 0; // shares; of a cancel the order's whole remainder
    int buySeq = 0;     // seq of the buy order, 0 when there is none
    int sellSeq = 0;    // seq of the sell order, 0 when there is none
    int tradeFlag = 0;  // the aggressor as the feed marks it: 1 buy, 2 sell, 0 unknown
    int transKind = 0;  // kTransKindCancel, anything else is a trade
};

} // namespace quoter
