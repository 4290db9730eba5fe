#include "tests/tessimodel/oracle/lists/listmarket.h"

#include "tests/tessimodel/oracle/naiveinstruments.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <limits>

namespace tests::oracle::lists {

namespace {

constexpr __int64 kHalfPastNine = 1709256600000; // at UTC+8
constexpr __int64 kHour = 3600000;
constexpr __int64 kSaneShares = 1000000; // the market itself takes no wild volumes into account
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

} // namespace

ListMarket::ListMarket(Dice& randomness)
    : RecordMarket(randomness, kHalfPastNine + randomness.below(100000))
{}

void ListMarket::follow(int instrument)
{
    if (instrument < 0)
        return;
    m_unit = sharesPerHand(instrumentAt(instrument));
    m_cancelsAsOrders = instrumentAt(instrument).market == "SH";
}

double ListMarket::wildPrice()
{
    return m_dice.pick({kNan, kNan, kInfinity, -kInfinity, DBL_MAX, -1.0, 0.0, 0.004, 1e9, 1e300});
}

// Mostly that of the trade before, which is where runs and matches come from.
double ListMarket::nextPrice()
{
    if (m_dice.oneIn(60))
        return wildPrice();
    if (m_dice.oneIn(4))
        m_level = std::clamp(m_level + m_dice.pick({-2, -1, -1, 1, 1, 2}), -8, 8);
    const double onTick = 10.0 + 0.01 * m_level;
    if (m_dice.oneIn(15))
        return onTick + m_dice.pick({0.00001, -0.00001, 0.000009, 0.0000101, -0.0000101, 0.00002, 0.004, 0.005});
    return onTick;
}

__int64 ListMarket::volume()
{
    if (m_dice.oneIn(70))
        return m_dice.pick<__int64>({0, 0, -100, -1, 2147483647, 2147483648, 4294967296, 4294967396, 25000000000,
                                     300000000000, LLONG_MAX, LLONG_MIN});
    if (m_dice.oneIn(8))
        return m_dice.pick<__int64>({1, 5, 30, 49, 50, 51, 99, 101, 149, 150, 250});
    return static_cast<__int64>(m_unit) * m_dice.pick({1, 1, 1, 2, 2, 3, 4, 5, 9});
}

__int64 ListMarket::wildTime()
{
    const __int64 sameKey = (1LL << 32) * 1000;
    return m_dice.pick<__int64>({LLONG_MAX, LLONG_MIN, -1, 0, -999, -60001, m_time + sameKey, m_time - sameKey});
}

__int64 ListMarket::tick()
{
    if (m_dice.oneIn(250))
        return wildTime();
    if (m_oddTicks > 0) {
        --m_oddTicks;
        return m_oddTime;
    }
    m_time += m_dice.oneIn(6) ? m_dice.between(400, 3500) : m_dice.below(200);
    return m_dice.oneIn(25) ? m_time - m_dice.between(1, 6000) : m_time;
}

void ListMarket::rest()
{
    const __int64 startOfDay = kHalfPastNine - 9 * kHour - kHour / 2;
    if (m_dice.oneIn(4)) {
        m_oddTicks = m_dice.between(1, 4);
        m_oddTime =
            startOfDay + m_dice.pick<__int64>({9 * kHour, 9 * kHour - 1, 16 * kHour + kHour / 6,
                                               16 * kHour + kHour / 6 + 1000, 11 * kHour, 23 * kHour, 24 * kHour});
        return;
    }
    m_time += m_dice.between(20000, 70000);
}

int ListMarket::anySeq()
{
    if (m_dice.oneIn(40))
        return m_dice.pick({-1, INT_MIN, INT_MAX, 1000000});
    return m_dice.below(static_cast<int>(m_seq % 100000) + 3);
}

__int64 ListMarket::seqOfOrder()
{
    if (m_dice.oneIn(60))
        return m_dice.pick<__int64>({-5, 0, INT_MIN, (1LL << 32) + anySeq(), (5LL << 32) - 3, LLONG_MAX});
    if (m_dice.oneIn(20))
        return anySeq();
    return ++m_seq;
}

RecordPtr ListMarket::order()
{
    if (!m_orders.empty() && m_dice.oneIn(60))
        return repeated(m_orders);
    Record order;
    order.type = Record::Type::Order;
    order.timetag = tick();
    order.seq = seqOfOrder();
    order.bsFlag = m_dice.oneIn(12) ? m_dice.below(6) : m_dice.between(1, 2);
    order.orderKind = m_dice.oneIn(5) ? m_dice.below(9) : 1;
    order.volume = volume();
    order.price = m_dice.oneIn(60) ? wildPrice() : 10.0 + 0.01 * (m_level + m_dice.between(-5, 5));
    if (m_dice.oneIn(m_cancelsAsOrders ? 6 : 60)) {
        order.bsFlag = m_dice.between(3, 4);
        order.orderKind = m_dice.below(2);
        order.seq = anySeq();
    }
    return kept(m_orders, order);
}

void ListMarket::cancel(Record& trade)
{
    trade.transKind = 3;
    trade.price = 0;
    trade.buySeq = trade.sellSeq = 0;
    (m_dice.oneIn(2) ? trade.buySeq : trade.sellSeq) = anySeq();
    if (m_dice.oneIn(8))
        trade.buySeq = anySeq();
}

// One side keeps its order for a while, as a large order that meets many small ones does.
RecordPtr ListMarket::trade()
{
    if (!m_trades.empty() && m_dice.oneIn(50))
        return repeated(m_trades);
    Record trade;
    trade.type = Record::Type::Trade;
    trade.timetag = tick();
    trade.volume = volume();
    trade.tradeFlag = m_dice.below(4);
    if (m_dice.oneIn(3))
        m_buySeq = m_dice.oneIn(4) ? anySeq() : m_buySeq + 1;
    if (m_dice.oneIn(3))
        m_sellSeq = m_dice.oneIn(4) ? anySeq() : m_sellSeq + 1;
    trade.buySeq = m_dice.oneIn(15) ? 0 : m_buySeq;
    trade.sellSeq = m_dice.oneIn(15) ? 0 : m_sellSeq;
    m_buySeq = m_buySeq > 100000 || m_buySeq < 0 ? 1 : m_buySeq;
    m_sellSeq = m_sellSeq > 100000 || m_sellSeq < 0 ? 2 : m_sellSeq;
    trade.price = nextPrice();
    trade.transKind = m_dice.oneIn(20) ? m_dice.below(6) : 0;
    if (m_dice.oneIn(12))
        cancel(trade);
    if (trade.transKind != 3 && trade.volume > 0 && trade.volume < kSaneShares) {
        m_dayShares += trade.volume;
        m_lastPrice = trade.price;
    }
    return kept(m_trades, trade);
}

RecordPtr ListMarket::snapshot()
{
    if (!m_snapshots.empty() && m_dice.oneIn(50))
        return repeated(m_snapshots);
    Record snapshot;
    snapshot.type = Record::Type::Snapshot;
    snapshot.timetag = m_dice.oneIn(150) ? wildTime() : m_dice.oneIn(5) ? m_time + m_dice.between(-1500, 2500) : m_time;
    snapshot.price = m_dice.oneIn(10) ? nextPrice() : m_lastPrice;
    if (m_dice.oneIn(30))
        snapshot.price = DBL_MAX;
    if (m_dice.oneIn(20))
        snapshot.price += m_dice.pick({0.00001, -0.00001, 0.0000101, 0.000009});
    if (m_dice.oneIn(25)) {
        const int phase = m_dice.pick({13, 15, 21, 22, 22, 23, 24});
        m_afterHoursFrom = phase >= 22 && m_phase < 22 && m_dice.oneIn(2) ? m_dayShares : m_afterHoursFrom;
        m_phase = phase;
    }
    snapshot.tradeStatus = m_phase;
    snapshot.volume = (m_dayShares - (m_phase >= 22 ? m_afterHoursFrom : 0)) / m_unit;
    if (m_dice.oneIn(6))
        snapshot.volume += m_dice.between(-3, 3);
    if (m_dice.oneIn(300))
        snapshot.volume = m_dice.pick<__int64>({-5, 0, LLONG_MAX, LLONG_MIN, 5000000000, 1410065408});
    return kept(m_snapshots, snapshot);
}

Filter ListMarket::filter()
{
    Filter filter;
    if (m_dice.oneIn(3))
        return filter;
    filter.reserved0 = m_dice.below(3);
    filter.reserved1 = m_dice.below(3);
    filter.handsMode = m_dice.oneIn(8) ? m_dice.pick({3, -1, INT_MAX}) : m_dice.below(3);
    filter.hands = m_dice.oneIn(30) ? m_dice.pick({-1, INT_MAX, INT_MIN}) : m_dice.below(5);
    filter.connective = m_dice.pick({0, 1, 1, 1, 2, -1});
    filter.amountMode = m_dice.oneIn(8) ? m_dice.pick({2, -1}) : m_dice.below(2);
    filter.amount = m_dice.pick({0, 0, 999, 1000, 2000, 3000, 5000, 200000, -1, INT_MAX});
    if (m_dice.oneIn(4)) {
        const int now = (9 * 3600 + 1800) * 1000 + static_cast<int>((m_time - kHalfPastNine) / 1000 * 1000);
        filter.startTime = m_dice.oneIn(2) ? filter.startTime : now - m_dice.between(-1, 20) * 1000;
        filter.endTime = m_dice.oneIn(2) ? filter.endTime : now + m_dice.between(-20, 20) * 1000 - m_dice.below(2);
    }
    filter.showBuyOrder = !m_dice.oneIn(4);
    filter.showSellOrder = !m_dice.oneIn(4);
    filter.showBuyCancel = !m_dice.oneIn(4);
    filter.showSellCancel = !m_dice.oneIn(4);
    return filter;
}

} // namespace tests::oracle::lists
