#pragma once

#include "exchange/order.h"

#include <optional>

namespace exchange {

class OrderBook;

// What a call auction would trade if it ended now.
struct Uncross {
    Ticks price = 0;
    Shares volume = 0;   // matched, above 0
    Shares buyLeft = 0;  // buys of at least the price that find no seller
    Shares sellLeft = 0; // sells of at most the price that find no buyer; one of the two is 0
};

// The price at which the collected orders trade; none when nothing matches.
//
// Every tick between the day's limits is looked at, also those without an order. A price must
//   1. trade the largest volume,
//   2. fill every buy above it and every sell below it wholly, and one of the sides at it;
// of those that do, the one with
//   3. the smallest volume left over among buys of at least and sells of at most the price,
//   4. the smallest distance to `reference`, the lower one of two: the last close for the opening auction, the
//      newest trade for the closing one.
// Cost: the number of ticks between the limits.
std::optional<Uncross> findUncross(const OrderBook& book, Ticks reference);

} // namespace exchange
