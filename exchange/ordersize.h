#pragma once

#include "exchange/order.h"
#include "exchange/random.h"

#include <algorithm>

namespace exchange {

constexpr Shares kMostLots = 10'000; // the exchange takes a million shares of a stock in one order

// The size of an order in whole lots: log-normal, from 1 to kMostLots.
inline Shares drawLots(Random& random, int medianLots)
{
    constexpr int kSpread = 520; // in 256ths of a doubling
    return std::clamp<Shares>(random.logNormal(medianLots, kSpread), 1, kMostLots);
}

} // namespace exchange
