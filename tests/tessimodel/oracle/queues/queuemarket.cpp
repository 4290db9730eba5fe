#include "tests/tessimodel/oracle/queues/queuemarket.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <utility>

namespace tests::oracle::queues {

// Mostly one that a snapshot has where there is no level.
double QueueMarket::emptyPrice()
{
    if (m_dice.oneIn(6))
        return m_dice.pick({1e-5, -1e-5, 1.1e-5, 0.0009, 0.001, 0.0099, 0.01, -0.0, -0.004, 0.99 * DBL_MAX});
    return m_dice.oneIn(12) ? wildPrice() : m_dice.pick({0.0, 0.0, DBL_MAX});
}

void QueueMarket::emptySome(TenLevels& levels)
{
    const int share = m_dice.pick({0, 8, 40});
    for (std::size_t i = 0; i < levels.prices.size(); ++i) {
        if (!m_dice.percent(share))
            continue;
        levels.prices[i] = emptyPrice();
        levels.volumes[i] = m_dice.oneIn(20) ? m_dice.pick({LLONG_MAX, LLONG_MIN}) : m_dice.between(-1, 50);
    }
}

// Now and then of an order in the middle of its level that goes by a cancel, and some time later by a late fill: it
// then passes the older ones and meets younger ones, or none.
RecordPtr QueueMarket::trade()
{
    constexpr int kRecent = 40;
    if (m_gone && m_dice.oneIn(3))
        return lateFill(*std::exchange(m_gone, nullptr));
    if (m_orders.empty() || m_gone || !m_dice.oneIn(6))
        return Market::trade();
    const int recent = std::min(static_cast<int>(m_orders.size()), kRecent);
    m_gone = *(m_orders.end() - 1 - m_dice.below(recent));
    return kept(m_trades, tradeOf(*m_gone, 3));
}

Record QueueMarket::tradeOf(const Record& order, int transKind)
{
    Record trade;
    trade.type = Record::Type::Trade;
    trade.timetag = m_time;
    trade.transKind = transKind;
    trade.volume = order.volume;
    trade.price = order.price;
    (order.bsFlag == 1 ? trade.buySeq : trade.sellSeq) = static_cast<int>(order.seq);
    return trade;
}

// With an order of the other side that nobody knows any more.
RecordPtr QueueMarket::lateFill(const Record& order)
{
    Record fill = tradeOf(order, 0);
    (order.bsFlag == 1 ? fill.sellSeq : fill.buySeq) = -1;
    return kept(m_trades, fill);
}

RecordPtr QueueMarket::levelTwo()
{
    if (!m_snapshots.empty() && m_dice.oneIn(30))
        return repeated(m_snapshots);
    Record next = *snapshot();
    if (m_queueTime != 0 && m_dice.oneIn(3))
        next.timetag = m_queueTime;
    emptySome(next.bids);
    emptySome(next.asks);
    m_lastSnapshot = kept(m_snapshots, next);
    return m_lastSnapshot;
}

AllLevels QueueMarket::queueAt(double best)
{
    AllLevels queue;
    queue.prices = {m_dice.oneIn(2) ? best : emptyPrice()};
    const int orders = m_dice.oneIn(30) ? 50 : m_dice.below(5);
    for (int i = 0; i < orders; ++i)
        queue.volumes.push_back(m_dice.oneIn(30) ? m_dice.pick({INT_MAX, INT_MIN, 0, -100})
                                                 : m_dice.between(1, 9) * 100);
    return queue;
}

RecordPtr QueueMarket::queue()
{
    if (!m_queues.empty() && m_dice.oneIn(30))
        return repeated(m_queues);
    Record next;
    next.type = Record::Type::Queue;
    const bool isPaired = m_lastSnapshot && !m_dice.oneIn(3);
    next.timetag = isPaired ? m_lastSnapshot->timetag : m_time + m_dice.between(-200, 400);
    next.allBids = queueAt(m_lastSnapshot ? m_lastSnapshot->bids.prices[0] : price());
    next.allAsks = queueAt(m_lastSnapshot ? m_lastSnapshot->asks.prices[0] : price());
    m_queueTime = next.timetag;
    return kept(m_queues, next);
}

} // namespace tests::oracle::queues
