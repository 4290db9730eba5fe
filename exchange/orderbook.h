#pragma once

#include "exchange/order.h"

#include <list>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

namespace exchange {

struct RestingOrder {
    __int64 seq = 0;
    Side side = Side::Buy;
    Ticks price = 0;
    Shares left = 0;
};

// All resting orders of one price, oldest first. Never empty while it is in a book.
struct Level {
    Ticks price = 0;
    Shares volume = 0; // sum of what is left of the orders
    std::list<RestingOrder> orders;
};

// The levels of one side, best first: the key is the price for sells and minus the price for buys.
using Levels = std::map<Ticks, Level>;

// What became of an order on arrival. Fills, `cancelled` and `resting` add up to its volume.
struct Outcome {
    std::vector<Fill> fills;
    Shares cancelled = 0; // what the order's kind does not let rest
    Shares resting = 0;
};

// The book of one stock, and its matching: best price first, at one price the oldest order first.
//
// An order's life:
//
//     enter --+-- trades with the other side -------------------------------> filled
//             |                                                                 ^
//             +-- remainder: limit, own best, other best --> resting -- fill ---+
//             |                                               ^     \-- cancel --> cancelled
//             |                                               |
//             +-- remainder: the other kinds -----------------|------------------> cancelled at once
//                                                             |
//     collect (call auction, no trade yet) -------------------+
//
// The book's:
//
//     continuous: enter, cancel --- collect ---> auction: collect, cancel
//         ^                                          |
//         +------------------ uncross ---------------+     (or nothing crosses: no step is needed)
//
// Between any two calls
//   - no level is empty, and a level's volume is the sum of its orders;
//   - within a level, sequence numbers rise;
//   - outside an auction the best bid is below the best ask;
//   - every price lies in the band.
//
// Bad input, as an order that is not newer than all before it or a price beyond the limits, throws
// std::invalid_argument; an order entered while the book is crossed throws std::logic_error. The book is then as it
// was. One owner, one thread.
class OrderBook {
public:
    explicit OrderBook(const PriceBand& band)
        : m_band(band)
    {}
    OrderBook(const OrderBook&) = delete; // the index points into the queues
    OrderBook& operator=(const OrderBook&) = delete;

    // Continuous trading: the order trades at once as far as it can, at the prices of the resting orders.
    Outcome enter(const Order& order);

    // Call auction: the limit order rests, also across the other side's prices.
    void collect(const Order& order);

    // Takes an order out and returns it; none when it does not rest.
    std::optional<RestingOrder> cancel(__int64 seq);

    // Ends a call auction: buys of at least `price` trade with sells of at most `price`, all at `price`, until one
    // of the two sides is used up. In the order of the buys' and the sells' priority.
    std::vector<Fill> uncross(Ticks price);

    // Best level first.
    const Levels& levels(Side side) const { return side == Side::Buy ? m_bids : m_asks; }

    // The best price of a side; none when the side is empty.
    std::optional<Ticks> best(Side side) const;

    // Null when the order does not rest. Valid until the book's next change.
    const RestingOrder* find(__int64 seq) const;

    bool isCrossed() const;
    const PriceBand& band() const { return m_band; }

private:
    Levels& levelsOf(Side side) { return side == Side::Buy ? m_bids : m_asks; }
    void accept(const Order& order);
    Shares match(const Order& order, Ticks limit, Outcome& outcome);
    Shares takeOldest(Levels::iterator level, Shares atMost);
    void rest(const Order& order, Ticks price, Shares volume);

    PriceBand m_band;
    Levels m_bids;
    Levels m_asks;
    std::unordered_map<__int64, std::list<RestingOrder>::iterator> m_orders; // by seq
    __int64 m_lastSeq = 0;
};

} // namespace exchange
