#include "bench/tickstream.h"

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

using namespace bench;

namespace {

// Counts the book of a stream anew in the plainest way, and writes down every rule that a tick breaks.
class Audit {
public:
    explicit Audit(const TickStream& stream)
        : m_stream(stream)
    {
        for (std::size_t i = 0; i < stream.ticks.size(); ++i) {
            const Tick& tick = stream.ticks[i];
            if (!tick.order == !tick.trade)
                fault(i, "is not one of order and trade");
            else if (tick.order)
                take(i, *tick.order);
            else
                take(i, *tick.trade);
        }
        checkUncrossed(stream.ticks.size());
    }

    std::vector<std::string> faults;
    int cancels = 0;
    int fills = 0;
    std::size_t fewestLevels = SIZE_MAX; // on either side, once the opening is over
    std::size_t mostLevels = 0;

private:
    struct Order {
        bool isBuy;
        int key;
        __int64 left;
    };
    using Levels = std::map<int, std::map<__int64, __int64>>; // by price: what is left of each order, oldest first

    void fault(std::size_t tick, const std::string& what)
    {
        faults.push_back("tick " + std::to_string(tick) + " " + what);
    }

    void take(std::size_t i, const quoter::OrderData& order)
    {
        checkUncrossed(i);
        checkTime(i, order.timetag);
        if (order.seq <= m_lastSeq)
            fault(i, "has a seq that does not grow");
        m_lastSeq = order.seq;
        const int key = static_cast<int>(std::lround(order.price * 100));
        if (key < m_stream.lowestKey || key > m_stream.highestKey || order.volume <= 0 || order.volume % 100 != 0)
            fault(i, "is an order that the exchange would refuse");
        const bool isBuy = order.bsFlag == quoter::kSideBuy;
        levels(isBuy)[key][order.seq] = order.volume;
        m_resting[order.seq] = {isBuy, key, order.volume};
        m_newest = order.seq;
        if (i >= m_stream.opening)
            noteLevels();
    }

    void take(std::size_t i, const quoter::TransactionData& trade)
    {
        checkTime(i, trade.timetag);
        if (i < m_stream.opening)
            fault(i, "is a trade in the opening");
        if (trade.transKind == quoter::kTransKindCancel) {
            ++cancels;
            checkUncrossed(i);
            const __int64 seq = std::max(trade.buySeq, trade.sellSeq);
            if (std::min(trade.buySeq, trade.sellSeq) != 0 || !m_resting.contains(seq))
                return fault(i, "cancels nothing");
            if (m_resting[seq].left != trade.volume || m_resting[seq].isBuy != (trade.buySeq != 0))
                fault(i, "does not cancel the whole remainder");
            reduce(seq, trade.volume);
        } else {
            ++fills;
            takeFill(i, trade);
        }
        noteLevels();
    }

    void takeFill(std::size_t i, const quoter::TransactionData& trade)
    {
        const bool buyerCame = trade.tradeFlag == 1;
        const __int64 aggressor = buyerCame ? trade.buySeq : trade.sellSeq;
        const __int64 passive = buyerCame ? trade.sellSeq : trade.buySeq;
        if (!m_resting.contains(aggressor) || !m_resting.contains(passive))
            return fault(i, "trades an order that is not there");
        const auto& [price, queue] = buyerCame ? *m_asks.begin() : *m_bids.rbegin();
        if (aggressor != m_newest || queue.begin()->first != passive)
            fault(i, "is not the newest order against the oldest at the best price");
        if (price != static_cast<int>(std::lround(trade.price * 100)))
            fault(i, "does not trade at the price of the order that rested");
        if (trade.volume <= 0 || trade.volume > m_resting[aggressor].left || trade.volume > m_resting[passive].left)
            fault(i, "trades more than there is");
        reduce(aggressor, trade.volume);
        reduce(passive, trade.volume);
    }

    void reduce(__int64 seq, __int64 volume)
    {
        Order& order = m_resting[seq];
        order.left -= volume;
        auto& level = levels(order.isBuy)[order.key];
        level[seq] = order.left;
        if (order.left > 0)
            return;
        level.erase(seq);
        if (level.empty())
            levels(order.isBuy).erase(order.key);
        m_resting.erase(seq);
    }

    void checkTime(std::size_t i, __int64 timetag)
    {
        if (timetag < m_time)
            fault(i, "is older than the tick before");
        m_time = timetag;
    }

    void checkUncrossed(std::size_t i)
    {
        if (!m_bids.empty() && !m_asks.empty() && m_bids.rbegin()->first >= m_asks.begin()->first)
            fault(i, "finds a crossed book");
    }

    void noteLevels()
    {
        fewestLevels = std::min({fewestLevels, m_bids.size(), m_asks.size()});
        mostLevels = std::max({mostLevels, m_bids.size(), m_asks.size()});
    }

    Levels& levels(bool isBuy) { return isBuy ? m_bids : m_asks; }

    const TickStream& m_stream;
    Levels m_bids;
    Levels m_asks;
    std::map<__int64, Order> m_resting;
    __int64 m_lastSeq = 0;
    __int64 m_newest = 0;
    __int64 m_time = 0;
};

std::string lineOf(const Tick& tick)
{
    if (tick.order)
        return std::to_string(tick.order->seq) + " " + std::to_string(tick.order->price);
    return std::to_string(tick.trade->buySeq) + "/" + std::to_string(tick.trade->sellSeq) + " " +
           std::to_string(tick.trade->volume);
}

std::string textOf(const TickStream& stream)
{
    std::string text;
    for (const Tick& tick : stream.ticks)
        text += lineOf(tick) + "\n";
    return text;
}

} // namespace

TEST(TickStream, shouldKeepTheRulesOfTheMarketWhenDayRuns)
{
    const TickStream stream = makeTicks({.events = 300'000});
    const Audit audit(stream);
    EXPECT_THAT(audit.faults, testing::IsEmpty());
    EXPECT_GT(audit.fills, 30'000);
    EXPECT_EQ(stream.orders + stream.trades, stream.ticks.size());
    EXPECT_NEAR(static_cast<double>(stream.ticks.size()), 300'000, 100);
}

TEST(TickStream, shouldCancelThirtyFivePercentWhenOpeningIsOver)
{
    const TickStream stream = makeTicks({.events = 300'000});
    const double trading = static_cast<double>(stream.ticks.size() - stream.opening);
    EXPECT_NEAR(Audit(stream).cancels / trading, 0.35, 0.01);
}

TEST(TickStream, shouldStayDeepWhenWholeDayRuns)
{
    const Audit audit(makeTicks({}));
    EXPECT_THAT(audit.faults, testing::IsEmpty());
    EXPECT_GE(audit.fewestLevels, 200U);
    EXPECT_LE(audit.mostLevels, 1500U);
    EXPECT_NEAR(audit.cancels, 350'000, 10'000);
}

TEST(TickStream, shouldStandAtTheLevelsAskedForWhenDepthIsSet)
{
    for (const int levels : {200, 2000, 20000}) {
        SCOPED_TRACE(levels);
        const Audit audit(makeTicks({.events = 2 * levels + 60'000, .levels = levels, .resting = 2 * levels + 10'000}));
        EXPECT_THAT(audit.faults, testing::IsEmpty());
        EXPECT_GE(audit.fewestLevels, static_cast<std::size_t>(levels) / 2);
        EXPECT_LE(audit.mostLevels, static_cast<std::size_t>(levels) * 3 / 2);
    }
}

TEST(TickStream, shouldBeTheSameWhenSeedIsTheSame)
{
    EXPECT_EQ(textOf(makeTicks({.events = 30'000, .seed = 7})), textOf(makeTicks({.events = 30'000, .seed = 7})));
    EXPECT_NE(textOf(makeTicks({.events = 30'000, .seed = 7})), textOf(makeTicks({.events = 30'000, .seed = 8})));
}
