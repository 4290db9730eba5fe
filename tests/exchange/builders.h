#pragma once

#include "exchange/order.h"
#include "exchange/orderbook.h"

#include <string>
#include <vector>

namespace exchange {

// order(1).buy(1001).shares(300), order(2).sell(OrderKind::OtherBest).shares(500): prices in ticks.
class order {
public:
    explicit order(__int64 seq) { m_order.seq = seq; }

    order& buy(Ticks price) { return limit(Side::Buy, price); }
    order& sell(Ticks price) { return limit(Side::Sell, price); }
    order& buy(OrderKind kind) { return market(Side::Buy, kind); }
    order& sell(OrderKind kind) { return market(Side::Sell, kind); }
    order& shares(Shares volume)
    {
        m_order.volume = volume;
        return *this;
    }

    operator const Order&() const { return m_order; }

private:
    order& limit(Side side, Ticks price)
    {
        m_order.side = side;
        m_order.price = price;
        return *this;
    }
    order& market(Side side, OrderKind kind)
    {
        m_order.side = side;
        m_order.kind = kind;
        return *this;
    }

    Order m_order;
};

// "1002: 4x500\n1000: 1x300 2x100\n---\n..." : asks from the highest price down, a rule, then bids; at each price
// the orders as seq x shares, oldest first.
std::string bookText(const OrderBook& book);

// "2x1 300@1001 2x3 100@1002 cancelled 50 resting 20": fills as buyer x seller.
std::string outcomeText(const Outcome& outcome);
std::string fillsText(const std::vector<Fill>& fills);

} // namespace exchange
