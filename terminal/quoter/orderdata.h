#pragma once

#include "quoter/quoterbase.h"

namespace quoter {

// OrderData::bsFlag; the cancels are of market "SH" only.
inline constexpr int kSideBuy = 1;
inline constexpr int kSideSell = 2;
inline constexpr int kSideCancelBuy = 3;
inline constexpr int kSideCancelSell = 4;

// One tick order.
struct TERMINAL_API OrderData : QuoterBase {
    ~OrderData() override;

    __int64 volume = 0; // shares
    __int64 seq = 0;    // the exchange's order sequence number
    // 1 limit; 2, 4, 5, 6, 7 the kinds without a usable price; 3 fund creation or redemption; 0 none, as in market "SH"
    // a delete has it, which a book does not take as an order.
    int orderKind = 0;
    int bsFlag = 0; // 1 buy, 2 sell; in market "SH" also 3 cancel of a buy, 4 cancel of a sell
};

} // namespace quoter
