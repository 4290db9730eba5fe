#pragma once

#include "exchange/order.h"

#include <vector>

namespace exchange {

// Traded volume of one direction, by the size of the aggressor's order. An order's size is what it traded on its
// arrival, or in its auction: it belongs to the first class of which it reaches the shares or the amount.
//
//     huge     500,000 shares or 1,000,000 yuan
//     big      100,000 shares or   200,000 yuan
//     middle    20,000 shares or    40,000 yuan
//     small     all others
struct ActiveVolume {
    __int64 orders = 0;
    Shares huge = 0;
    Shares big = 0;
    Shares middle = 0;
    Shares small = 0;

    void add(Shares traded, __int64 amountInTicks, TickSize tick = {});
    friend bool operator==(const ActiveVolume&, const ActiveVolume&) = default;
};

// The day's figures of a snapshot. Prices are 0 before the first trade.
struct DayStatistics {
    Ticks open = 0;
    Ticks high = 0;
    Ticks low = 0;
    Ticks last = 0;
    Shares volume = 0;
    __int64 amountInTicks = 0; // sum of price times volume
    ActiveVolume buys;         // by the aggressor's side
    ActiveVolume sells;

    // All fills of one order on its arrival, or all of one auction. An order is the aggressor in one such batch only:
    // whatever rests afterwards is older than all that it can still meet.
    void add(const std::vector<Fill>& fills, TickSize tick = {});

    // Of all trades, rounded to the tick, half a tick up; 0 before the first trade.
    Ticks averagePrice() const;

    // What a call auction's price is to stay near to: the newest trade's price, before the first trade the last close.
    Ticks reference(Ticks lastClose) const { return volume > 0 ? last : lastClose; }

    friend bool operator==(const DayStatistics&, const DayStatistics&) = default;
};

} // namespace exchange
