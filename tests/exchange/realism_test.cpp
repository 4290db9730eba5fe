// A default day has the shape of a large stock's recorded day. The bounds are wide: they tell a market from noise.

#include "exchange/simulator.h"

#include "quoter/levelthousanddata.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <vector>

namespace exchange {

namespace {

constexpr __int64 kHour = 3'600'000;

// The day taken apart by stream, and sorted where only the spread of a figure counts.
struct Figures {
    explicit Figures(const recording::RecordedDay& day);

    void add(const quoter::OrderData& order);
    void add(const quoter::TransactionData& trade) { ++(trade.transKind == 3 ? cancels : trades); }
    void add(const quoter::QuoterDepthData& snapshot);
    void add(const quoter::LevelThousandData& thousand);

    __int64 midnight;
    int trades = 0;
    int cancels = 0;
    int snapshots = 0;
    bool continuous = false;
    std::map<int, int> ordersByHalfHour; // 19 is 09:30
    std::map<int, int> kinds;
    std::vector<__int64> sizes;
    std::vector<int> spreads;        // in ticks, of continuous trading
    std::vector<std::size_t> levels; // a side
    int oddBuys = 0;
    int oddSells = 0;
    int offBeat = 0; // stamps that are no multiple of 10 ms
    int auctionRush = 0;
    int auctionLate = 0;
    double high = 0;
    double low = 0;
    __int64 lastSeq = 0;
};

Figures::Figures(const recording::RecordedDay& day)
    : midnight(day.events.front().record->timetag - 9 * kHour)
{
    for (const recording::Event& event : day.events) {
        const quoter::QuoterBase* record = event.record.get();
        if (const auto* order = dynamic_cast<const quoter::OrderData*>(record))
            add(*order);
        else if (const auto* trade = dynamic_cast<const quoter::TransactionData*>(record))
            add(*trade);
        else if (const auto* snapshot = dynamic_cast<const quoter::QuoterDepthData*>(record))
            add(*snapshot);
        else if (const auto* thousand = dynamic_cast<const quoter::LevelThousandData*>(record))
            add(*thousand);
    }
    std::sort(sizes.begin(), sizes.end());
    std::sort(spreads.begin(), spreads.end());
    std::sort(levels.begin(), levels.end());
}

void Figures::add(const quoter::OrderData& order)
{
    const __int64 time = order.timetag - midnight;
    ++ordersByHalfHour[static_cast<int>(time / (kHour / 2))];
    ++kinds[order.orderKind];
    sizes.push_back(order.volume);
    if (order.volume % 100 != 0)
        ++(order.bsFlag == 1 ? oddBuys : oddSells);
    offBeat += time % 10 != 0 ? 1 : 0;
    auctionRush += time < 9 * kHour + kHour / 3 ? 1 : 0;
    auctionLate += time >= 9 * kHour + kHour / 3 && time < 9 * kHour + kHour / 2 ? 1 : 0;
    lastSeq = order.seq;
}

void Figures::add(const quoter::QuoterDepthData& snapshot)
{
    ++snapshots;
    continuous = snapshot.tradeStatus == 13;
    high = snapshot.high;
    low = snapshot.low;
    if (continuous && snapshot.bidPrice[0] > 0 && snapshot.askPrice[0] > 0)
        spreads.push_back(static_cast<int>(std::lround((snapshot.askPrice[0] - snapshot.bidPrice[0]) * 100)));
}

void Figures::add(const quoter::LevelThousandData& thousand)
{
    if (!continuous)
        return;
    levels.push_back(thousand.bidPrices.size());
    levels.push_back(thousand.askPrices.size());
}

template <class Number>
Number quantile(const std::vector<Number>& sorted, double part)
{
    return sorted.at(static_cast<std::size_t>(static_cast<double>(sorted.size() - 1) * part));
}

class DefaultDayShape : public ::testing::TestWithParam<int> {
protected:
    static Figures figures()
    {
        SimulationOptions options;
        options.seed = static_cast<std::uint64_t>(GetParam());
        return Figures(simulateDay(options));
    }
};

} // namespace

TEST_P(DefaultDayShape, shouldHaveAsManyEventsAsALargeStockWhenOptionsAreDefault)
{
    const Figures day = figures();
    EXPECT_NEAR(static_cast<double>(day.sizes.size()), 25'000, 750);
    EXPECT_NEAR(day.trades, 15'000, 4'000);
    EXPECT_NEAR(day.cancels, 5'000, 2'000);
    EXPECT_NEAR(day.snapshots, 4'700, 200);
    EXPECT_GT(day.lastSeq, 4'000'000) << "the channel carries other stocks";
    EXPECT_LT(day.lastSeq, 20'000'000);
}

TEST_P(DefaultDayShape, shouldHaveFewerOrdersWhenLunchIsNearThanEarlyOrLate)
{
    Figures day = figures();
    EXPECT_GT(day.ordersByHalfHour[19], 3 * day.ordersByHalfHour[22]) << "09:30 against 11:00";
    EXPECT_GT(day.ordersByHalfHour[20], day.ordersByHalfHour[21]);
    EXPECT_GT(day.ordersByHalfHour[21], day.ordersByHalfHour[22]);
    EXPECT_GT(day.ordersByHalfHour[29], day.ordersByHalfHour[27]) << "14:30 against 13:30";
    EXPECT_GT(day.auctionRush, 4 * day.auctionLate);
    EXPECT_GT(day.auctionLate, 100);
    EXPECT_EQ(day.offBeat, 0);
}

TEST_P(DefaultDayShape, shouldHoldHundredsOfLevelsAndANarrowSpreadWhenTradingIsContinuous)
{
    const Figures day = figures();
    EXPECT_GT(day.levels.front(), 100U);
    EXPECT_LT(day.levels.back(), 500U);
    EXPECT_GT(quantile(day.levels, 0.5), 200U);
    EXPECT_EQ(day.spreads.front(), 1);
    EXPECT_LE(quantile(day.spreads, 0.9), 2);
    EXPECT_GE(quantile(day.spreads, 0.97), 2);
    EXPECT_GT(day.high - day.low, 0.15) << "the price moves";
    EXPECT_LT(day.high - day.low, 5.00) << "and stays calm";
}

TEST_P(DefaultDayShape, shouldCoverTwoDecadesWithFewOddLotsWhenOrdersAreSized)
{
    Figures day = figures();
    EXPECT_NEAR(static_cast<double>(quantile(day.sizes, 0.5)), 550, 250);
    EXPECT_GE(quantile(day.sizes, 0.99), 20 * quantile(day.sizes, 0.5));
    EXPECT_LE(day.sizes.back(), 1'000'000);
    EXPECT_EQ(day.oddBuys, 0);
    EXPECT_NEAR(day.oddSells, 700, 300);
    for (const int kind : {2, 4, 5, 6, 7})
        EXPECT_GT(day.kinds[kind], 2) << "kind " << kind;
    EXPECT_GT(day.kinds[1], 23'700);
}

INSTANTIATE_TEST_SUITE_P(Seeds, DefaultDayShape, ::testing::Range(1, 6));

TEST(DefaultDays, shouldDifferInNumbersAndMovesWhenTheirSeedsDiffer)
{
    std::set<std::size_t> orders;
    std::vector<double> trades, ranges;
    for (std::uint64_t seed = 1; seed <= 8; ++seed) {
        SimulationOptions options;
        options.seed = seed;
        const Figures day(simulateDay(options));
        orders.insert(day.sizes.size());
        trades.push_back(day.trades);
        ranges.push_back(day.high - day.low);
    }
    const auto spread = [](const std::vector<double>& figures) {
        const auto [least, most] = std::minmax_element(figures.begin(), figures.end());
        return *most / *least;
    };
    EXPECT_GE(orders.size(), 7U);
    EXPECT_GT(spread(trades), 1.1);
    EXPECT_GT(spread(ranges), 1.5);
}

} // namespace exchange
