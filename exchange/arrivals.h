#pragma once

#include "exchange/tradingday.h"

#include <vector>

namespace exchange {

class Random;

// When the day's orders arrive: `count` times of day, never falling, in steps of 10 ms as the exchange stamps them.
//
// A fixed curve says how many fall into each minute: a rush when the opening auction begins, a few orders until it
// ends, the U of continuous trading (most at 09:30, least before lunch, more again towards 14:57), and a thin
// closing auction. Within a minute times are even, but for followers, which come a few milliseconds after another
// order, and for the orders that waited for a session to begin, which come in its first seconds.
std::vector<DayTime> drawArrivals(int count, Random& random);

} // namespace exchange
