#include "exchange/orderbook.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

namespace exchange {

namespace {

constexpr int kSweptLevels = 5; // of the kind that names five levels

Ticks rank(Side side, Ticks price)
{
    return side == Side::Buy ? -price : price;
}

bool reaches(Side side, Ticks limit, Ticks price)
{
    return side == Side::Buy ? price <= limit : price >= limit;
}

// How far an order may trade on arrival; none when its kind cancels it whole.
std::optional<Ticks> limitOf(const Order& order, const OrderBook& book)
{
    const Ticks anyPrice = order.side == Side::Buy ? book.band().high : book.band().low;
    const Levels& others = book.levels(opposite(order.side));
    switch (order.kind) {
    case OrderKind::Limit:
        return order.price;
    case OrderKind::FillAndCancel:
        return anyPrice;
    case OrderKind::FiveLevelsFillAndCancel: {
        if (others.size() <= kSweptLevels)
            return anyPrice;
        return std::next(others.begin(), kSweptLevels - 1)->second.price;
    }
    case OrderKind::FillAllOrCancel: {
        Shares available = 0;
        for (const auto& [key, level] : others)
            available += level.volume;
        return available >= order.volume ? std::optional(anyPrice) : std::nullopt;
    }
    case OrderKind::OwnBest:
        return book.best(order.side);
    case OrderKind::OtherBest:
        return book.best(opposite(order.side));
    }
    return std::nullopt;
}

bool restsAfterTrading(OrderKind kind)
{
    return kind == OrderKind::Limit || kind == OrderKind::OwnBest || kind == OrderKind::OtherBest;
}

[[noreturn]] void refuse(const Order& order, const std::string& why)
{
    throw std::invalid_argument("order " + std::to_string(order.seq) + " refused: " + why);
}

bool isKnown(OrderKind kind)
{
    return restsAfterTrading(kind) || kind == OrderKind::FillAndCancel || kind == OrderKind::FiveLevelsFillAndCancel ||
           kind == OrderKind::FillAllOrCancel;
}

} // namespace

void OrderBook::accept(const Order& order)
{
    if (order.seq <= m_lastSeq)
        refuse(order, "order " + std::to_string(m_lastSeq) + " came before it");
    if (order.volume <= 0)
        refuse(order, "volume " + std::to_string(order.volume));
    if (!isKnown(order.kind))
        refuse(order, "unknown kind " + std::to_string(static_cast<int>(order.kind)));
    if (order.kind == OrderKind::Limit && !m_band.holds(order.price))
        refuse(order, "price " + std::to_string(order.price) + " is beyond the day's limits");
    m_lastSeq = order.seq;
}

Outcome OrderBook::enter(const Order& order)
{
    if (isCrossed())
        throw std::logic_error("a call auction must be uncrossed before continuous trading");
    accept(order);

    Outcome outcome;
    const std::optional<Ticks> limit = limitOf(order, *this);
    const Shares left = limit ? match(order, *limit, outcome) : order.volume;
    if (limit && left > 0 && restsAfterTrading(order.kind)) {
        rest(order, *limit, left);
        outcome.resting = left;
    } else {
        outcome.cancelled = left;
    }
    return outcome;
}

void OrderBook::collect(const Order& order)
{
    if (order.kind != OrderKind::Limit)
        refuse(order, "a call auction takes limit orders only");
    accept(order);
    rest(order, order.price, order.volume);
}

Shares OrderBook::match(const Order& order, Ticks limit, Outcome& outcome)
{
    Levels& others = levelsOf(opposite(order.side));
    Shares left = order.volume;
    while (left > 0 && !others.empty() && reaches(order.side, limit, others.begin()->second.price)) {
        const Level& level = others.begin()->second;
        const __int64 resting = level.orders.front().seq;
        const Ticks price = level.price;
        const Shares volume = takeOldest(others.begin(), left);
        left -= volume;
        if (order.side == Side::Buy)
            outcome.fills.push_back({order.seq, resting, price, volume});
        else
            outcome.fills.push_back({resting, order.seq, price, volume});
    }
    return left;
}

Shares OrderBook::takeOldest(Levels::iterator level, Shares atMost)
{
    RestingOrder& oldest = level->second.orders.front();
    const Shares taken = std::min(oldest.left, atMost);
    const Side side = oldest.side;
    oldest.left -= taken;
    level->second.volume -= taken;
    if (oldest.left == 0) {
        m_orders.erase(oldest.seq);
        level->second.orders.pop_front();
    }
    if (level->second.orders.empty())
        levelsOf(side).erase(level);
    return taken;
}

void OrderBook::rest(const Order& order, Ticks price, Shares volume)
{
    Level& level = levelsOf(order.side)[rank(order.side, price)];
    level.price = price;
    level.volume += volume;
    level.orders.push_back({order.seq, order.side, price, volume});
    m_orders.emplace(order.seq, std::prev(level.orders.end()));
}

std::optional<RestingOrder> OrderBook::cancel(__int64 seq)
{
    const auto found = m_orders.find(seq);
    if (found == m_orders.end())
        return std::nullopt;
    const RestingOrder order = *found->second;
    Levels& side = levelsOf(order.side);
    const auto level = side.find(rank(order.side, order.price));
    level->second.volume -= order.left;
    level->second.orders.erase(found->second);
    if (level->second.orders.empty())
        side.erase(level);
    m_orders.erase(found);
    return order;
}

std::vector<Fill> OrderBook::uncross(Ticks price)
{
    std::vector<Fill> fills;
    while (!m_bids.empty() && !m_asks.empty()) {
        const Level& bid = m_bids.begin()->second;
        const Level& ask = m_asks.begin()->second;
        if (bid.price < price || ask.price > price)
            break;
        const RestingOrder buy = bid.orders.front();
        const RestingOrder sell = ask.orders.front();
        const Shares volume = std::min(buy.left, sell.left);
        fills.push_back({buy.seq, sell.seq, price, volume});
        takeOldest(m_bids.begin(), volume);
        takeOldest(m_asks.begin(), volume);
    }
    return fills;
}

std::optional<Ticks> OrderBook::best(Side side) const
{
    const Levels& all = levels(side);
    return all.empty() ? std::nullopt : std::optional(all.begin()->second.price);
}

const RestingOrder* OrderBook::find(__int64 seq) const
{
    const auto found = m_orders.find(seq);
    return found == m_orders.end() ? nullptr : &*found->second;
}

bool OrderBook::isCrossed() const
{
    const std::optional<Ticks> bid = best(Side::Buy);
    const std::optional<Ticks> ask = best(Side::Sell);
    return bid && ask && *bid >= *ask;
}

} // namespace exchange
