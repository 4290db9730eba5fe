#include "datasource/rpcformula.h"
#include "tests/support/oddvalues.h"
#include "tests/tessimodel/transdistributiontest.h"

#include <cstddef>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

// How a computed series becomes ticks, and the pending ticks behind it.
namespace {

using namespace tests;

constexpr int kHighest = std::numeric_limits<int>::max();

class TransDistributionCalc : public TransDistributionTest {
protected:
    TransDistributionCalc() { follow("SZ", "000001"); }

    // A series of prices and cumulative volumes, oldest first.
    void calc(const std::vector<std::pair<double, double>>& series)
    {
        se::RPCFormulaMetaResult meta;
        meta.rowCount = static_cast<int>(series.size());
        for (const auto& [price, volume] : series) {
            meta.prices.push_back(price);
            meta.volumes.push_back(volume);
        }
        calcMeta(meta);
    }

    void calcPending() { calc(std::vector<std::pair<double, double>>()); }

    void calcMeta(const se::RPCFormulaMetaResult& meta) { model.calc(meta, {}, "", 0, ""); }

    // A pending tick whose own volume is given beside the cumulative one.
    void pend(double price, int totalVolume, int volume) { model.m_pending.append({price, totalVolume, volume, true}); }
};

// --- the series ---------------------------------------------------------------------------------------------------

TEST_F(TransDistributionCalc, shouldMakeATickOfEachRowWhenASeriesIsComputed)
{
    calc({{10, 5}, {10.01, 8}, {10.01, 9}, {10, 6}});
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n"
                                "10.01 +3 of 8 B\n"
                                "10.01 +1 of 9 B\n"
                                "10 +3 of 6 S\n");
    EXPECT_EQ(pricesText(model), "10.01 buys 4 sells 0 of 4\n"
                                 "10 buys 0 sells 8 of 8\n");
    EXPECT_EQ(sumsText(model), "all 12 max 8");
    EXPECT_EQ(redraws.text(), "") << "nobody is told";
    EXPECT_TRUE(model.init());
}

TEST_F(TransDistributionCalc, shouldReadNothingOfTheOtherArgumentsWhenASeriesIsComputed)
{
    se::RPCFormulaMetaResult meta;
    meta.rowCount = 1;
    meta.prices = {10};
    meta.volumes = {5};
    model.calc(meta, {}, "SH.600000", -7, "other");
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n");
}

TEST_F(TransDistributionCalc, shouldPassOverRowsWithoutVolumeWhenASeriesIsComputed)
{
    followIndex(); // which would keep ticks without volume
    const std::pair<double, const char*> cases[] = {{0, ""},
                                                    {1e-5, ""},
                                                    {-1e-5, ""},
                                                    {kNaN, ""},
                                                    {1.1e-5, "10 +0 of 0 S\n"},
                                                    {-1.1e-5, "10 +0 of 0 S\n"},
                                                    {1, "10 +1 of 1 S\n"},
                                                    {-1, "10 +-1 of -1 S\n"}};
    for (const auto& [volume, expected] : cases) {
        model.clear();
        calc({{10, volume}});
        EXPECT_EQ(ticksText(model), expected) << volume;
    }
}

TEST_F(TransDistributionCalc, shouldDropTicksWithoutVolumeWhenNoIndexIsFollowed)
{
    calc({{10, -5}, {10, 0.5}, {10, 5}, {10, 5.9}, {10, 6}});
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n"
                                "10 +1 of 6 B\n");
}

// The first row of a series counts whole, whatever there is already.
TEST_F(TransDistributionCalc, shouldCountTheFirstRowWholeWhenThereAreTicksBefore)
{
    model.tick(11, 100);
    calc({{10, 5}, {9, 105}});
    EXPECT_EQ(ticksText(model), "11 +100 of 100 S\n"
                                "10 +5 of 5 S\n"
                                "9 +100 of 105 S\n");
}

// The first row is the one of the series, not the first that has volume.
TEST_F(TransDistributionCalc, shouldCountTheDistanceWhenTheFirstRowIsPassedOver)
{
    model.tick(11, 100);
    calc({{10, 0}, {10, 130}});
    EXPECT_EQ(ticksText(model), "11 +100 of 100 S\n"
                                "10 +30 of 130 S\n");
    model.clear();
    calc({{10, 0}, {10, 130}, {10, 150}});
    EXPECT_EQ(ticksText(model), "10 +130 of 130 S\n"
                                "10 +20 of 150 B\n");
}

// The distance is taken before anything is cut off.
TEST_F(TransDistributionCalc, shouldTruncateTowardZeroWhenVolumesAreNotWhole)
{
    calc({{10, 10.9}, {10, 5.5}, {10, 8.4}});
    EXPECT_EQ(ticksText(model), "10 +10 of 10 S\n"
                                "10 +4 of 5 B\n"
                                "10 +3 of 8 B\n");
    followIndex();
    model.clear();
    calc({{10, -10.9}, {10, 0.9}});
    EXPECT_EQ(ticksText(model), "10 +-10 of -10 S\n"
                                "10 +10 of 0 B\n");
}

TEST_F(TransDistributionCalc, shouldHoldTheLowestNumberWhenAVolumeDoesNotFit)
{
    calc({{10, 3e9}, {10, kInfinity}});
    EXPECT_EQ(ticksText(model), "") << "below zero for a stock";
    calc({{10, kHighest}, {10, 3e9}, {10, -kInfinity}, {10, -2147483647}});
    EXPECT_EQ(ticksText(model), "10 +2147483647 of 2147483647 S\n"
                                "10 +852516353 of -2147483648 B\n"
                                "10 +1 of -2147483647 B\n");
    followIndex();
    model.clear();
    calc({{10, kInfinity}, {10, kInfinity}, {10, 5}});
    EXPECT_EQ(ticksText(model), "10 +-2147483648 of -2147483648 S\n"
                                "10 +-2147483648 of -2147483648 B\n"
                                "10 +-2147483648 of 5 B\n");
}

TEST_F(TransDistributionCalc, shouldBuyUnlessThePriceFellWhenARowFollows)
{
    const std::pair<double, bool> cases[] = {{10, true}, {10.01, true}, {9.999999999, false}, {kNaN, false}};
    for (const auto& [price, isBuy] : cases) {
        model.clear();
        calc({{10, 5}, {price, 7}});
        ASSERT_EQ(model.m_ticks.size(), 2);
        EXPECT_EQ(model.m_ticks[1].isBuy, isBuy) << price;
    }
}

// The first tick and the first row are measured against the last close, when a date is provided.
TEST_F(TransDistributionCalc, shouldCompareWithTheLastCloseWhenADateIsProvided)
{
    auto description = stock("SZ", "000001");
    description.lastCloses = {{7, 10.5}, {8, 9}};
    terminal.instruments.add(description);
    model.setStock(keyOf("SZ", "000001"));
    int asked = 0;
    model.m_dateProvider = [&asked] { return ++asked, 7; };
    const std::pair<double, const char*> cases[] = {{10.5, "S"}, {10.49, "S"}, {10.500000001, "B"}, {99, "B"}};
    for (const auto& [price, direction] : cases) {
        model.clear();
        asked = 0;
        calc({{price, 5}, {price, 7}});
        EXPECT_EQ(ticksText(model), fmt::format("{0} +5 of 5 {1}\n{0} +2 of 7 B\n", price, direction));
        EXPECT_EQ(asked, 1);
    }
    model.clear();
    model.tick(99, 1);
    calc({{11, 5}});
    EXPECT_TRUE(model.m_ticks[1].isBuy) << "the price fell, but the first row is above the last close";
    calc({{10.5, 5}});
    EXPECT_FALSE(model.m_ticks[2].isBuy);
    model.m_dateProvider = [] { return 8; };
    calc({{10.5, 5}});
    EXPECT_TRUE(model.m_ticks[3].isBuy);
    model.m_dateProvider.clear();
    calc({{99, 5}});
    EXPECT_FALSE(model.m_ticks[4].isBuy) << "a first row without a date is a sell";
}

// The close is that of the instrument as it is followed, where that of a snapshot is looked up by key.
TEST_F(TransDistributionCalc, shouldKeepTheFollowedInstrumentsCloseWhenItWasDescribedAnew)
{
    auto description = stock("SZ", "000001");
    description.lastCloses = {{7, 9}};
    terminal.instruments.add(description);
    model.setStock(keyOf("SZ", "000001"));
    description.lastCloses = {{7, 11}};
    terminal.instruments.add(description);
    model.m_dateProvider = [] { return 7; };
    calc({{10, 5}});
    EXPECT_EQ(ticksText(model), "10 +5 of 5 B\n");
}

TEST_F(TransDistributionCalc, shouldEndWithTheShorterColumnWhenRowsAreMissing)
{
    const std::tuple<int, std::size_t, std::size_t, int> cases[] = {
        {2, 3, 3, 2}, {3, 3, 3, 3}, {4, 3, 3, 3},  {4, 2, 3, 2}, {4, 3, 1, 1},
        {4, 1, 3, 1}, {0, 3, 3, 0}, {-1, 3, 3, 0}, {2, 0, 2, 0}, {kHighest, 1, 2, 1}};
    for (const auto& [rowCount, prices, volumes, expected] : cases) {
        model.clear();
        se::RPCFormulaMetaResult meta;
        meta.rowCount = rowCount;
        // Columns with room behind their ends, in which older values stand.
        meta.prices = {10, 11, 12, 13};
        meta.volumes = {5, 6, 7, 8};
        meta.prices.resize(prices);
        meta.volumes.resize(volumes);
        calcMeta(meta);
        EXPECT_EQ(model.m_ticks.size(), expected) << rowCount;
    }
}

TEST_F(TransDistributionCalc, shouldComputeNothingWhenThereIsNoInstrument)
{
    model.setStock("nobody");
    pend(10, 100, 7);
    calc({{11, 5}});
    EXPECT_EQ(ticksText(model), "");
    EXPECT_EQ(sumsText(model), "all 0 max 0");
    EXPECT_EQ(model.m_pending.size(), 1);
}

// --- pending ticks ------------------------------------------------------------------------------------------------

TEST_F(TransDistributionCalc, shouldFeedThePendingTicksAsTheyAreWhenThereIsNoTickYet)
{
    pend(10, 100, 7);
    pend(9, 130, 30);
    calcPending();
    EXPECT_EQ(ticksText(model), "10 +7 of 100 B\n"
                                "9 +30 of 130 B\n");
    EXPECT_EQ(pricesText(model), "10 buys 7 sells 0 of 7\n"
                                 "9 buys 30 sells 0 of 30\n");
}

// The first pending tick is measured against the last pending one, not against the last tick of the day. It is wanted:
// with growing volumes the first drops out.
TEST_F(TransDistributionCalc, shouldMeasureTheFirstPendingTickAgainstTheLastPendingWhenThereAreTicks)
{
    model.tick(11, 50);
    pend(10, 100, 7);
    pend(9, 110, 8);
    pend(9, 130, 30);
    calcPending();
    EXPECT_EQ(ticksText(model), "11 +50 of 50 S\n"
                                "9 +8 of 110 B\n"
                                "9 +30 of 130 B\n");
    model.clear();
    model.tick(11, 50);
    pend(10, 100, 7);
    pend(9, 60, 8);
    calcPending();
    EXPECT_EQ(ticksText(model), "11 +50 of 50 S\n"
                                "10 +40 of 100 B\n"
                                "9 +8 of 60 B\n");
}

TEST_F(TransDistributionCalc, shouldKeepTheFirstPendingTickBelowZeroWhenAnIndexIsFollowed)
{
    followIndex();
    model.tick(11, 50);
    pend(10, 100, 7);
    pend(9, 130, 30);
    calcPending();
    EXPECT_EQ(ticksText(model), "11 +50 of 50 S\n"
                                "10 +-30 of 100 B\n"
                                "9 +30 of 130 B\n");
}

TEST_F(TransDistributionCalc, shouldDropTheOnlyPendingTickWhenThereAreTicks)
{
    model.tick(11, 50);
    pend(10, 100, 7);
    calcPending();
    EXPECT_EQ(ticksText(model), "11 +50 of 50 S\n");
    followIndex();
    calcPending();
    EXPECT_EQ(ticksText(model), "11 +50 of 50 S\n"
                                "10 +0 of 100 B\n");
}

TEST_F(TransDistributionCalc, shouldWrapWhenPendingVolumesLieFarApart)
{
    model.tick(11, 50);
    pend(10, -2, 7);
    pend(9, kHighest, 8);
    calcPending();
    EXPECT_EQ(ticksText(model), "11 +50 of 50 S\n"
                                "10 +2147483647 of -2 B\n"
                                "9 +8 of 2147483647 B\n");
}

// The series comes first, and its ticks count as ticks there are.
TEST_F(TransDistributionCalc, shouldFeedThePendingTicksBehindTheSeriesWhenThereAreBoth)
{
    pend(10, 100, 7);
    pend(9, 60, 8);
    calc({{11, 5}});
    EXPECT_EQ(ticksText(model), "11 +5 of 5 S\n"
                                "10 +40 of 100 B\n"
                                "9 +8 of 60 B\n");
}

TEST_F(TransDistributionCalc, shouldLeaveThePendingTicksAsTheyAreWhenItFeedsThem)
{
    pend(10, 100, 7);
    pend(9, 60, 8);
    const std::string pending = ticksText(model.m_pending);
    calc({{11, 5}});
    EXPECT_EQ(ticksText(model.m_pending), pending);
    calcPending();
    EXPECT_EQ(ticksText(model.m_pending), pending);
    EXPECT_EQ(ticksText(model), "11 +5 of 5 S\n"
                                "10 +40 of 100 B\n"
                                "9 +8 of 60 B\n"
                                "10 +40 of 100 B\n"
                                "9 +8 of 60 B\n");
}

TEST_F(TransDistributionCalc, shouldWaitForTheListsWhenAHistoryHoldsThem)
{
    expectToWait(model.m_mutex, {[this] { calc({{11, 5}}); }});
    EXPECT_EQ(ticksText(model), "11 +5 of 5 S\n");
}

} // namespace
