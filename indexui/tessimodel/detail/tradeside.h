#pragma once

#include "indexui/tessimodel/cmodeldepthtransaction.h"

namespace TC::detail {

// Where a row of the trade list keeps what belongs to its buy or to its sell order.
struct TradeSide {
    int DepthTransData::*seq;
    int DepthTransData::*prevIndex;
    int DepthTransData::*nextIndex;
    short DepthTransData::*run;
    int DepthTransData::*runHands;
};

inline constexpr TradeSide kBuySide{&DepthTransData::buySeq, &DepthTransData::prevBuyIndex,
                                    &DepthTransData::nextBuyIndex, &DepthTransData::buyRun,
                                    &DepthTransData::buyRunHands};
inline constexpr TradeSide kSellSide{&DepthTransData::sellSeq, &DepthTransData::prevSellIndex,
                                     &DepthTransData::nextSellIndex, &DepthTransData::sellRun,
                                     &DepthTransData::sellRunHands};

constexpr const TradeSide& tradeSide(bool isBuy)
{
    return isBuy ? kBuySide : kSellSide;
}

} // namespace TC::detail
