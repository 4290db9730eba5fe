#pragma once

// The kinds of tick orders (quoter::OrderData::orderKind).
namespace TC::detail {

enum OrderKind {
    kNoKind = 0, // of a market that does not tell, and of a delete in market "SH"
    kLimitOrder = 1,
    kFillAndCancelRest = 2,
    kFundUnits = 3, // creation or redemption of fund units, which trades with nobody
    kBestFiveAndCancelRest = 4,
    kFillAllOrCancel = 5,
    kOwnBestPrice = 6,
    kOtherBestPrice = 7
};

// Market orders of all kinds carry no price to go by.
constexpr bool isUnpriced(int orderKind)
{
    return orderKind == kFillAndCancelRest || (orderKind >= kBestFiveAndCancelRest && orderKind <= kOtherBestPrice);
}

} // namespace TC::detail
