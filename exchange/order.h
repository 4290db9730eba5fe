#pragma once

#include "utils/int64.h"

#include <algorithm>

// The vocabulary of the matching engine. Prices are whole ticks, volumes shares: nothing here is a double.
namespace exchange {

using Ticks = int;
using Shares = __int64;

// How prices step: so many ticks make one unit of the instrument's currency. A price is the double next to it.
struct TickSize {
    int perUnit = 100; // a stock's tick is 0.01 yuan

    constexpr double price(Ticks ticks) const { return static_cast<double>(ticks) / perUnit; }
};

// An amount in ticks over the shares that it is the price of, rounded to the tick, half a tick up.
constexpr Ticks averageOf(__int64 amountInTicks, Shares shares)
{
    return static_cast<Ticks>((2 * amountInTicks + shares) / (2 * shares));
}

// The values are those of a record's bsFlag and tradeFlag.
enum class Side { Buy = 1, Sell = 2 };

constexpr Side opposite(Side side)
{
    return side == Side::Buy ? Side::Sell : Side::Buy;
}

// +1 for buys, -1 for sells: added to a price, it makes the order keener to trade.
constexpr Ticks keener(Side side)
{
    return side == Side::Buy ? 1 : -1;
}

// The values are those of a record's orderKind. All but the limit order have no price of their own.
enum class OrderKind {
    Limit = 1,
    FillAndCancel = 2,           // trades at once, the rest is cancelled
    FiveLevelsFillAndCancel = 4, // as 2, against the best five levels
    FillAllOrCancel = 5,         // trades wholly at once or is cancelled
    OwnBest = 6,                 // a limit order at its own side's best price
    OtherBest = 7                // a limit order at the other side's best price
};

// The prices of a day: last close, and the limits below and above it, both allowed.
struct PriceBand {
    Ticks lastClose = 0;
    Ticks low = 0;
    Ticks high = 0;

    // Limits are rounded to the tick, half a tick up.
    static constexpr PriceBand around(Ticks close, int percent = 10)
    {
        return {close, (close * (100 - percent) + 50) / 100, (close * (100 + percent) + 50) / 100};
    }

    constexpr bool holds(Ticks price) const { return low <= price && price <= high; }
    constexpr Ticks clamp(Ticks price) const { return std::clamp(price, low, high); }
};

struct Order {
    __int64 seq = 0; // number in the channel, later orders have larger ones
    Side side = Side::Buy;
    OrderKind kind = OrderKind::Limit;
    Ticks price = 0; // limit orders only
    Shares volume = 0;
};

struct Fill {
    __int64 buySeq = 0;
    __int64 sellSeq = 0;
    Ticks price = 0;
    Shares volume = 0;

    // The later order of the two, in call auctions too.
    Side aggressor() const { return buySeq > sellSeq ? Side::Buy : Side::Sell; }
    __int64 aggressorSeq() const { return std::max(buySeq, sellSeq); }
};

} // namespace exchange
