#pragma once

#include "exchange/order.h"
#include "exchange/tradingday.h"

#include <memory>
#include <string>
#include <vector>

namespace recording {
struct Event;
}

namespace exchange {

struct Outcome;
struct RestingOrder;

// Writes orders, trades and cancels as a market's feed reports them: each call appends to `events`, which outlives the
// feed. Prices in currency, volumes in shares, times in milliseconds since the epoch.
//
//     Shenzhen   an order, then the trades that it causes, then the cancel of what may not rest. Orders of market kinds
//                have no price. A cancel stands among the trades, with price 0 and one order number.
//     Shanghai   the trades, then the order with its full size, when something of it is left to rest. Orders of market
//                kinds cannot be told: they rest as limit orders at the price that they found. A cancel is a delete
//                among the orders and right behind it one like Shenzhen's. The trades of an auction have no aggressor.
//
// Throws std::overflow_error when a number does not fit the record's field.
class TickFeed {
public:
    TickFeed(std::vector<recording::Event>& events, __int64 midnight, TickSize tick);
    virtual ~TickFeed();
    TickFeed(const TickFeed&) = delete;
    TickFeed& operator=(const TickFeed&) = delete;

    // An order of a call auction.
    virtual void collected(DayTime time, const Order& order) = 0;

    // An order of continuous trading, and all that it caused; `resting` is what is left of it, or null.
    virtual void entered(DayTime time, const Order& order, const Outcome& outcome, const RestingOrder* resting) = 0;

    // The trades that end a call auction.
    virtual void uncrossed(DayTime time, const std::vector<Fill>& fills) = 0;

    // A resting order was taken back.
    virtual void cancelled(DayTime time, const RestingOrder& order) = 0;

protected:
    void appendOrder(DayTime time, const Order& order, int bsFlag, int orderKind);
    void appendTrade(DayTime time, const Fill& fill, int tradeFlag);
    void appendCancel(DayTime time, Side side, __int64 seq, Shares remainder);

private:
    std::vector<recording::Event>& m_events;
    __int64 m_midnight; // of the trading day in milliseconds since the epoch
    TickSize m_tick;
};

// Null when the market's ticks are not known.
std::unique_ptr<TickFeed> makeTickFeed(const std::string& market, std::vector<recording::Event>& events,
                                       __int64 midnight, TickSize tick);

} // namespace exchange
