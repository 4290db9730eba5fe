#include "tests/tessimodel/oracle/market.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <limits>

namespace tests::oracle {

namespace {

constexpr int kHand = 100;
constexpr __int64 kSaneShares = 1000000; // the market itself takes no wild volumes into account
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

} // namespace

// Far prices stand about where a book may give up to reach all prices in the same way.
double Market::priceAt(int level) const
{
    constexpr int kFirstFar = kPrices - 6;
    constexpr int kFarTicks[] = {64400, 64450, 64550, 64650, 64850, 65050};
    const int ticks = m_hasFarPrices && level >= kFirstFar ? kFarTicks[level - kFirstFar] : level * m_spread;
    return 10.0 + 0.01 * ticks;
}

double Market::wildPrice()
{
    return m_dice.pick(
        {kNan, kInfinity, -kInfinity, DBL_MAX, -1.0, -10.05, 0.0, 1e-5, 0.004, 1e9, 1.5e7, 1.5e7, 1.45e7, 2e7, 1e300});
}

double Market::price()
{
    const double onTick = priceAt(m_dice.below(kPrices));
    if (m_dice.oneIn(60))
        return wildPrice();
    return m_dice.oneIn(25) ? onTick + m_dice.pick({0.003, -0.003, 0.00001}) : onTick;
}

double Market::queuePrice()
{
    if (m_open.empty() || m_dice.oneIn(6))
        return price();
    return priceAt(m_open[static_cast<std::size_t>(m_dice.below(static_cast<int>(m_open.size())))].level);
}

__int64 Market::volume()
{
    if (m_dice.oneIn(80))
        return m_dice.pick<__int64>(
            {0, 0, 0, -100, -1, 300000, 2147483647, 2147483648, 4294967396, 25000000000, LLONG_MAX, LLONG_MIN});
    return m_dice.pick<__int64>({100, 100, 200, 200, 300, 500, 1000, 30, 150, 250});
}

__int64 Market::tick()
{
    if (m_dice.oneIn(700))
        return m_dice.pick<__int64>({LLONG_MAX, LLONG_MIN, -1, 0});
    const __int64 step = m_dice.oneIn(12) ? m_dice.pick<__int64>({2999, 3000, 3001, 5000}) : m_dice.below(400);
    m_time += step;
    return m_dice.oneIn(15) ? m_time - m_dice.between(1, 4000) : m_time;
}

__int64 Market::seqOfOrder()
{
    if (m_dice.oneIn(400))
        return m_dice.pick<__int64>({-5, 0, INT_MIN, (1LL << 32) + 3, LLONG_MAX});
    if (m_dice.oneIn(25) && m_seq > 3)
        return m_seq - m_dice.below(3);
    if (!m_promised.contains(m_seq + 1) && m_dice.oneIn(10))
        m_seq += m_dice.between(1, 2);
    return ++m_seq;
}

RecordPtr Market::order()
{
    if (!m_orders.empty() && m_dice.oneIn(60))
        return repeated(m_orders);
    Record order;
    order.type = Record::Type::Order;
    order.timetag = tick();
    order.seq = seqOfOrder();
    const auto promised = m_promised.find(order.seq);
    const bool isBid = promised != m_promised.end() ? promised->second : m_dice.oneIn(2);
    order.bsFlag = m_dice.oneIn(25) ? m_dice.below(6) : isBid ? 1 : 2;
    order.orderKind = m_dice.oneIn(10) ? m_dice.below(9) : 1;
    order.volume = volume();

    if (m_dice.oneIn(20))
        m_mid = m_dice.between(6, 13);
    // One in many crosses the other side without a trade, as after a loss.
    const int away = m_dice.oneIn(30) ? -m_dice.between(1, 4) : m_dice.below(7);
    const int level = std::clamp(isBid ? m_mid - 1 - away : m_mid + away, 0, kPrices - 1);
    order.price = m_dice.oneIn(150) ? wildPrice() : priceAt(level) + (m_dice.oneIn(30) ? 0.003 : 0.0);
    if (order.volume >= 0 && order.volume < kSaneShares && order.orderKind == 1 &&
        (order.bsFlag == 1 || order.bsFlag == 2))
        m_open.push_back({order.seq, order.bsFlag == 1, level, order.volume});
    return kept(m_orders, order);
}

const Market::Open* Market::oldestAtBest(bool isBid) const
{
    const Open* best = nullptr;
    for (const Open& open : m_open) {
        if (open.isBid == isBid && (!best || (isBid ? open.level > best->level : open.level < best->level)))
            best = &open;
    }
    return best;
}

void Market::take(__int64 seq, __int64 shares)
{
    for (Open& open : m_open) {
        if (open.seq == seq)
            open.left -= std::clamp<__int64>(shares, 0, kSaneShares);
    }
    std::erase_if(m_open, [seq](const Open& open) { return open.seq == seq && open.left <= 0; });
}

int Market::seqOfTrade(bool isBid)
{
    if (m_dice.oneIn(300))
        return m_dice.pick({-1, -7, INT_MIN, INT_MAX});
    if (m_dice.oneIn(12))
        return m_dice.below(static_cast<int>(m_seq % 100000) + 3);
    if (m_dice.oneIn(5) && !m_open.empty()) {
        const Open& any = m_open[static_cast<std::size_t>(m_dice.below(static_cast<int>(m_open.size())))];
        if (any.isBid == isBid)
            return static_cast<int>(any.seq);
    }
    const Open* best = oldestAtBest(isBid);
    return best ? static_cast<int>(best->seq) : 0;
}

void Market::fillPair(Record& trade)
{
    trade.buySeq = seqOfTrade(true);
    trade.sellSeq = seqOfTrade(false);
    trade.transKind = m_dice.oneIn(40) ? m_dice.below(5) : 0;
    __int64 left = LLONG_MAX;
    for (const Open& open : m_open) {
        if (open.seq == trade.buySeq || open.seq == trade.sellSeq)
            left = std::min(left, open.left);
    }
    if (left != LLONG_MAX && !m_dice.oneIn(10))
        trade.volume = m_dice.oneIn(10) && left > 1 ? left / 2 : left;
    take(trade.buySeq, trade.volume);
    take(trade.sellSeq, trade.volume);
}

void Market::cancelOne(Record& trade)
{
    const bool isBid = m_dice.oneIn(2);
    (isBid ? trade.buySeq : trade.sellSeq) = seqOfTrade(isBid);
    trade.transKind = 3;
    trade.price = 0;
    if (m_dice.oneIn(10))
        trade.volume = 0;
    take(trade.buySeq, kSaneShares);
    take(trade.sellSeq, kSaneShares);
}

// Its order comes next, or soon, or never.
void Market::tradeAhead(Record& trade)
{
    const bool isBid = m_dice.oneIn(2);
    const int ahead = static_cast<int>(m_seq % 1000000) + m_dice.between(1, 3);
    (isBid ? trade.buySeq : trade.sellSeq) = ahead;
    if (m_dice.oneIn(2))
        (isBid ? trade.sellSeq : trade.buySeq) = seqOfTrade(!isBid);
    trade.transKind = m_dice.oneIn(6) ? 3 : 0;
    m_promised[ahead] = isBid;
}

RecordPtr Market::trade()
{
    if (!m_trades.empty() && m_dice.oneIn(30))
        return repeated(m_trades);
    Record trade;
    trade.type = Record::Type::Trade;
    trade.timetag = tick();
    trade.volume = volume();
    trade.price = m_dice.oneIn(80) ? wildPrice() : priceAt(m_mid);
    const int what = m_dice.below(100);
    if (what < 62)
        fillPair(trade);
    else if (what < 84)
        cancelOne(trade);
    else
        tradeAhead(trade);
    if (trade.transKind != 3 && trade.volume > 0 && trade.volume < kSaneShares)
        m_dayVolume += (trade.volume + kHand - 1) / kHand;
    return kept(m_trades, trade);
}

// Of a level that the ticks see otherwise.
__int64 Market::wrongHands()
{
    if (m_dice.oneIn(20))
        return m_dice.pick<__int64>({0, -1, 2147483647, 21474837, 4294967297, LLONG_MIN});
    return m_dice.oneIn(4) ? m_dice.between(900, 5000) : m_dice.between(0, 12);
}

TenLevels Market::levels(bool isBid)
{
    std::map<int, __int64> shares;
    for (const Open& open : m_open) {
        if (open.isBid == isBid)
            shares[isBid ? -open.level : open.level] += open.left;
    }
    TenLevels out;
    std::size_t place = 0;
    for (const auto& [rank, volume] : shares) {
        if (place == out.prices.size())
            break;
        if (m_dice.oneIn(12)) { // a level is missing, or stands empty in its place
            place += m_dice.oneIn(2) ? 1U : 0U;
            continue;
        }
        out.prices[place] = m_dice.oneIn(300) ? wildPrice() : priceAt(isBid ? -rank : rank);
        out.volumes[place] = m_dice.oneIn(3) ? wrongHands() : volume / kHand;
        ++place;
        if (m_dice.oneIn(25) && place < out.prices.size())
            out.prices[place++] = priceAt(m_dice.below(kPrices));
    }
    return out;
}

RecordPtr Market::snapshot()
{
    Record snapshot;
    snapshot.type = Record::Type::Snapshot;
    snapshot.timetag = m_dice.percent(60) ? m_time + m_dice.between(-300, 900) : m_time;
    if (m_dice.oneIn(200))
        snapshot.timetag = m_dice.pick<__int64>({-5, 0, LLONG_MAX});
    snapshot.price = price();
    snapshot.lastPriceAlt = price();
    snapshot.volume = m_dice.oneIn(150)  ? m_dice.pick<__int64>({-5, 0, LLONG_MAX, LLONG_MIN, 5000000000})
                      : m_dice.oneIn(20) ? m_dayVolume - m_dice.below(20)
                                         : m_dayVolume;
    if (m_dice.oneIn(8))
        m_phase = m_dice.pick({13, 13, 13, 14, 15, 21, 21, 22, 22, 23, 23, 24});
    snapshot.tradeStatus = m_phase;
    snapshot.bids = levels(true);
    snapshot.asks = levels(false);
    if (m_dice.oneIn(12)) {
        snapshot.bids.prices[0] = snapshot.asks.prices[0] = m_dice.oneIn(3) ? 0.0 : priceAt(m_mid);
    } else if (m_dice.oneIn(12)) {
        (m_dice.oneIn(2) ? snapshot.bids : snapshot.asks) = {};
    }
    return kept(m_snapshots, snapshot);
}

} // namespace tests::oracle
