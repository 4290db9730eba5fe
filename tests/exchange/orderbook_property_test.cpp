// The matching engine against one that is too simple to be wrong: a plain list of orders, searched from front to
// back for each fill.

#include "exchange/orderbook.h"

#include "tests/exchange/builders.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <ranges>
#include <set>
#include <sstream>

namespace exchange {

namespace {

constexpr PriceBand kBand = PriceBand::around(100); // 90 to 110: crowded, so that orders meet

class PlainEngine {
public:
    Outcome enter(const Order& order)
    {
        Outcome outcome;
        Shares left = order.volume;
        const Ticks limit = limitOf(order);
        const bool possible = limit != 0 && (order.kind != OrderKind::FillAllOrCancel || available(order.side) >= left);
        while (possible && left > 0) {
            RestingOrder* best = bestAgainst(order.side, limit);
            if (!best)
                break;
            const Shares volume = std::min(left, best->left);
            left -= volume;
            best->left -= volume;
            outcome.fills.push_back({order.side == Side::Buy ? order.seq : best->seq,
                                     order.side == Side::Buy ? best->seq : order.seq, best->price, volume});
            std::erase_if(m_orders, [](const RestingOrder& resting) { return resting.left == 0; });
        }
        const bool rests =
            order.kind == OrderKind::Limit || order.kind == OrderKind::OwnBest || order.kind == OrderKind::OtherBest;
        if (left > 0 && rests && possible)
            m_orders.push_back({order.seq, order.side, limit, left});
        (rests && possible ? outcome.resting : outcome.cancelled) = left;
        return outcome;
    }

    Shares cancel(__int64 seq)
    {
        Shares left = 0;
        for (const RestingOrder& resting : m_orders)
            left += resting.seq == seq ? resting.left : 0;
        std::erase_if(m_orders, [seq](const RestingOrder& resting) { return resting.seq == seq; });
        return left;
    }

    std::string text() const
    {
        std::map<Ticks, std::string> lines[2];
        for (const RestingOrder& order : m_orders)
            lines[order.side == Side::Buy ? 0 : 1][order.price]
                .append(" ")
                .append(std::to_string(order.seq))
                .append("x")
                .append(std::to_string(order.left));
        std::ostringstream out;
        for (const auto& [price, orders] : lines[1] | std::views::reverse)
            out << price << ":" << orders << "\n";
        out << "---\n";
        for (const auto& [price, orders] : lines[0] | std::views::reverse)
            out << price << ":" << orders << "\n";
        return out.str();
    }

private:
    std::set<Ticks> prices(Side side) const
    {
        std::set<Ticks> result;
        for (const RestingOrder& order : m_orders) {
            if (order.side == side)
                result.insert(order.price);
        }
        return result;
    }

    // 0 when the order has no price to trade at.
    Ticks limitOf(const Order& order) const
    {
        const std::set<Ticks> bids = prices(Side::Buy);
        const std::set<Ticks> asks = prices(Side::Sell);
        const bool buys = order.side == Side::Buy;
        switch (order.kind) {
        case OrderKind::Limit:
            return order.price;
        case OrderKind::OwnBest:
            return buys ? (bids.empty() ? 0 : *bids.rbegin()) : (asks.empty() ? 0 : *asks.begin());
        case OrderKind::OtherBest:
            return buys ? (asks.empty() ? 0 : *asks.begin()) : (bids.empty() ? 0 : *bids.rbegin());
        case OrderKind::FiveLevelsFillAndCancel:
            if (buys && asks.size() >= 5)
                return *std::next(asks.begin(), 4);
            if (!buys && bids.size() >= 5)
                return *std::next(bids.rbegin(), 4);
            [[fallthrough]];
        default:
            return buys ? kBand.high : kBand.low;
        }
    }

    Shares available(Side taker) const
    {
        Shares sum = 0;
        for (const RestingOrder& order : m_orders)
            sum += order.side != taker ? order.left : 0;
        return sum;
    }

    RestingOrder* bestAgainst(Side taker, Ticks limit)
    {
        RestingOrder* best = nullptr;
        for (RestingOrder& order : m_orders) {
            if (order.side == taker || (order.price - limit) * keener(taker) > 0)
                continue;
            if (!best || (order.price - best->price) * keener(taker) < 0)
                best = &order;
        }
        return best;
    }

    std::vector<RestingOrder> m_orders; // in order of arrival
};

Order drawOrder(__int64 seq)
{
    using enum OrderKind;
    Order drawn;
    drawn.seq = seq;
    drawn.side = *rc::gen::element(Side::Buy, Side::Sell);
    drawn.kind = *rc::gen::weightedElement<OrderKind>({{10, Limit},
                                                       {1, FillAndCancel},
                                                       {1, FiveLevelsFillAndCancel},
                                                       {1, FillAllOrCancel},
                                                       {1, OwnBest},
                                                       {1, OtherBest}});
    drawn.price = drawn.kind == Limit ? *rc::gen::inRange(kBand.low, kBand.high + 1) : 0;
    // Large enough at times to sweep a side: the kinds differ in where they stop.
    drawn.volume = *rc::gen::inRange<Shares>(1, drawn.kind == Limit ? 1000 : 6000);
    return drawn;
}

} // namespace

RC_GTEST_PROP(OrderBookProperty, shouldAnswerAsThePlainEngineWhenOrdersAndCancelsComeAtRandom, ())
{
    OrderBook book(kBand);
    PlainEngine plain;
    const int steps = *rc::gen::inRange(1, 120);
    for (int seq = 1; seq <= steps; ++seq) {
        if (*rc::gen::inRange(0, 5) == 0) {
            const __int64 victim = *rc::gen::inRange(1, seq + 1);
            const auto cancelled = book.cancel(victim);
            RC_ASSERT((cancelled ? cancelled->left : 0) == plain.cancel(victim));
            continue;
        }
        const Order drawn = drawOrder(seq);
        RC_ASSERT(outcomeText(book.enter(drawn)) == outcomeText(plain.enter(drawn)));
        RC_ASSERT(bookText(book) == plain.text());
        RC_ASSERT(!book.isCrossed());
        for (const Side side : {Side::Buy, Side::Sell}) {
            for (const auto& [key, level] : book.levels(side)) {
                Shares sum = 0;
                for (const RestingOrder& resting : level.orders)
                    sum += resting.left;
                RC_ASSERT(sum == level.volume);
            }
        }
    }
}

} // namespace exchange
