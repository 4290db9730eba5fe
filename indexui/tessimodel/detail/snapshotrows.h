#pragma once

#include "indexui/tessimodel/cmodeldepththousand_queue.h"

namespace quoter {
struct QuoterDepthData;
}

namespace TC::detail {

// Where the search for the lowest ask begins, and what it is without one.
inline constexpr double kNoAskFloor = 10000000000.0;

// Not the call auction, in which both best prices are the same, or both missing. A one-sided book is continuous.
bool isContinuousTrading(const quoter::QuoterDepthData& record);

// Makes a side's rows of the ten levels of a snapshot, in hands, with an unknown number of orders; levels without a
// price are skipped. Returns the lowest ask, or kNoAskFloor; the highest bid, or 0.
double takeAsks(const quoter::QuoterDepthData& record, double priceTick, EntrustRows& rows);
double takeBids(const quoter::QuoterDepthData& record, double priceTick, EntrustRows& rows);

} // namespace TC::detail
