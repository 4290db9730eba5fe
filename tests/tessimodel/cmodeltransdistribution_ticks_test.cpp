#include "tests/support/oddvalues.h"
#include "tests/tessimodel/transdistributiontest.h"

#include <limits>

// How snapshots become ticks.
namespace {

using namespace tests;

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();
constexpr __int64 kTwoTo32 = 4294967296;

class TransDistributionTicks : public TransDistributionTest {
protected:
    TransDistributionTicks() { follow("SZ", "000001"); }

    void feed(const Records& records)
    {
        for (const auto& record : records)
            model.processData(record);
    }

    // How often a tick's direction was asked from the date provider, which gives the date.
    int askedForDate = 0;
    void provideDate(int date)
    {
        model.m_dateProvider = [this, date] {
            ++askedForDate;
            return date;
        };
    }

    // The instrument with other last closes of days. The model keeps the description that it follows.
    void setLastCloses(const std::map<int, double>& closes)
    {
        auto description = stock("SZ", "000001");
        description.lastCloses = closes;
        terminal.instruments.add(description);
    }
};

// --- which records ------------------------------------------------------------------------------------------------

TEST_F(TransDistributionTicks, shouldTakeSnapshotsOfBothLevelsWhenTheyAlternate)
{
    feed({level1().last(10).volume(5), level2().last(10.01).volume(7), brokerLevel1().last(10.02).volume(12)});
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n"
                                "10.01 +2 of 7 B\n"
                                "10.02 +5 of 12 B\n");
}

TEST_F(TransDistributionTicks, shouldDropRecordsOfOtherTypesWhenTheyArrive)
{
    feed({nullptr, order(1).buy(10).shares(100), fill(1, 2).at(10).shares(100), bestQueues().bid(10, {100})});
    EXPECT_EQ(ticksText(model), "");
}

TEST_F(TransDistributionTicks, shouldReadTheLastPriceWhenTheRecordHasAnAlternativeOne)
{
    feed({level1().last(10).alternativeLast(11).volume(5), level2().last(10.01).alternativeLast(11).volume(7)});
    EXPECT_EQ(pricesText(model), "10.01 buys 2 sells 0 of 2\n"
                                 "10 buys 0 sells 5 of 5\n");
}

// --- the after-hours phase ----------------------------------------------------------------------------------------

TEST_F(TransDistributionTicks, shouldLeaveOutThePhaseAfterHoursWhenTheInstrumentHasOne)
{
    for (const auto& [ownType, shenzhens] : {std::pair{true, false}, {false, true}, {true, true}, {false, false}}) {
        for (const auto& [status, isAfterHours] : {std::pair{INT_MIN, false},
                                                   {0, false},
                                                   {13, false},
                                                   {21, false},
                                                   {22, true},
                                                   {23, true},
                                                   {24, true},
                                                   {100, true},
                                                   {INT_MAX, true}}) {
            SCOPED_TRACE(fmt::format("own {} Shenzhen's {} status {}", ownType, shenzhens, status));
            model.m_hasAfterHours = ownType;
            model.m_hasAfterHoursSz = shenzhens;
            const bool dropped = isAfterHours && (ownType || shenzhens);
            model.clear();
            feed({level1().last(10).volume(5).status(status)});
            EXPECT_EQ(model.m_ticks.isEmpty(), dropped);
            model.clear();
            feed({level2().last(10).volume(5).status(status)});
            EXPECT_EQ(model.m_ticks.isEmpty(), dropped);
        }
    }
}

// An index has such a type at most by accident, but the phase counts for it all the same.
TEST_F(TransDistributionTicks, shouldLeaveOutThePhaseAfterHoursWhenTheInstrumentIsAnIndex)
{
    followIndex();
    model.m_hasAfterHours = true;
    feed({level1().last(3000).volume(0).status(22), level1().last(3001).volume(0).status(21)});
    EXPECT_EQ(ticksText(model), "3001 +0 of 0 S\n");
}

// --- volumes ------------------------------------------------------------------------------------------------------

TEST_F(TransDistributionTicks, shouldCountWhatWasTradedBetweenSnapshotsWhenVolumesGrow)
{
    feed({level1().last(10).volume(500), level1().last(10).volume(800), level1().last(10).volume(801)});
    EXPECT_EQ(ticksText(model), "10 +500 of 500 S\n"
                                "10 +300 of 800 B\n"
                                "10 +1 of 801 B\n");
    EXPECT_EQ(sumsText(model), "all 801 max 801");
}

TEST_F(TransDistributionTicks, shouldTakeTheDistanceWhenTheDaysVolumeFalls)
{
    feed({level1().last(10).volume(500), level1().last(10).volume(200), level1().last(10).volume(300)});
    EXPECT_EQ(ticksText(model), "10 +500 of 500 S\n"
                                "10 +300 of 200 B\n"
                                "10 +100 of 300 B\n");
    EXPECT_EQ(sumsText(model), "all 900 max 900");
}

TEST_F(TransDistributionTicks, shouldAddNoTickWhenNothingWasTraded)
{
    feed({level1().last(10).volume(500), level1().last(10.05).volume(500), level1().last(10.01).volume(501)});
    EXPECT_EQ(ticksText(model), "10 +500 of 500 S\n"
                                "10.01 +1 of 501 B\n");
}

// A snapshot without any volume says nothing of the day, so it is no fall of the volume either.
TEST_F(TransDistributionTicks, shouldDropASnapshotWithoutVolumeWhenNoIndexIsFollowed)
{
    feed({level1().last(10).volume(0)});
    EXPECT_EQ(ticksText(model), "");
    feed({level1().last(10).volume(500), level1().last(10).volume(0), level2().last(10).volume(kTwoTo32),
          level1().last(10).volume(600)});
    EXPECT_EQ(ticksText(model), "10 +500 of 500 S\n"
                                "10 +100 of 600 B\n");
}

TEST_F(TransDistributionTicks, shouldDropTheFirstSnapshotWhenItsVolumeIsNegative)
{
    feed({level1().last(10).volume(-5)});
    EXPECT_EQ(ticksText(model), "");
    feed({level1().last(10).volume(500), level1().last(10).volume(-5)});
    EXPECT_EQ(ticksText(model), "10 +500 of 500 S\n"
                                "10 +505 of -5 B\n");
}

TEST_F(TransDistributionTicks, shouldKeepTheLowHalfOfTheVolumeWhenItIsLarger)
{
    feed({level1().last(10).volume(kTwoTo32 + 5), level1().last(10).volume(-kTwoTo32 + 8)});
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n"
                                "10 +3 of 8 B\n");
}

TEST_F(TransDistributionTicks, shouldWrapWhenTheDaysVolumeOutgrowsIts32Bits)
{
    feed({level1().last(10).volume(kHighest), level1().last(10).volume(kHighest + 3LL)});
    EXPECT_EQ(ticksText(model), "10 +2147483647 of 2147483647 S\n"
                                "10 +3 of -2147483646 B\n");
    EXPECT_EQ(sumsText(model), "all -2147483646 max 2147483647");
    EXPECT_EQ(pricesText(model), "10 buys 3 sells 2147483647 of -2147483646\n");
}

// The largest distance has no positive number of 32 bits: it stays negative, and a stock drops it.
TEST_F(TransDistributionTicks, shouldDropATickWhenItsDistanceLosesItsSign)
{
    feed({level1().last(10).volume(1), level1().last(10).volume(kLowest + 1LL)});
    EXPECT_EQ(ticksText(model), "10 +1 of 1 S\n");
    feed({level1().last(10).volume(kLowest + 2LL)});
    EXPECT_EQ(ticksText(model), "10 +1 of 1 S\n"
                                "10 +2147483647 of -2147483646 B\n");
}

TEST_F(TransDistributionTicks, shouldKeepATickWhenItsDistanceLosesItsSignInAnIndex)
{
    followIndex();
    feed({level1().last(10).volume(1), level1().last(10).volume(kLowest + 1LL)});
    EXPECT_EQ(ticksText(model), "10 +1 of 1 S\n"
                                "10 +-2147483648 of -2147483647 B\n");
    EXPECT_EQ(pricesText(model), "10 buys -2147483648 sells 1 of -2147483647\n");
    EXPECT_EQ(sumsText(model), "all -2147483647 max 1");
}

// --- indices ------------------------------------------------------------------------------------------------------

TEST_F(TransDistributionTicks, shouldKeepTicksWithoutVolumeWhenAnIndexIsFollowed)
{
    followIndex();
    feed({level1().last(3000).volume(0), level1().last(3001).volume(5), level1().last(3001).volume(5),
          level2().last(2999).volume(0)});
    EXPECT_EQ(ticksText(model), "3000 +0 of 0 S\n"
                                "3001 +5 of 5 B\n"
                                "3001 +0 of 5 B\n"
                                "2999 +5 of 0 S\n");
    EXPECT_EQ(pricesText(model), "3001 buys 5 sells 0 of 5\n"
                                 "3000 buys 0 sells 0 of 0\n"
                                 "2999 buys 0 sells 5 of 5\n");
    EXPECT_EQ(sumsText(model), "all 10 max 5");
}

TEST_F(TransDistributionTicks, shouldKeepANegativeFirstVolumeWhenAnIndexIsFollowed)
{
    followIndex();
    feed({level1().last(3000).volume(-5)});
    EXPECT_EQ(ticksText(model), "3000 +-5 of -5 S\n");
    EXPECT_EQ(pricesText(model), "3000 buys 0 sells -5 of -5\n");
    EXPECT_EQ(sumsText(model), "all -5 max 0");
}

TEST_F(TransDistributionTicks, shouldCountAsAnIndexWhenTheCodeIsThatOfTheOwnOne)
{
    const std::pair<const char*, bool> cases[] = {
        {"CNINDEX", true}, {"CNINDEX1", false}, {"CNINDE", false}, {"cnindex", false}, {"XCNINDEX", false}};
    for (const char* const market : {"SZ", "HK", "CNINDEX"}) {
        for (const auto& [code, expected] : cases) {
            follow(market, code);
            model.clear();
            feed({level1().last(3000).volume(0)});
            EXPECT_EQ(!model.m_ticks.isEmpty(), expected) << market << " " << code;
        }
    }
}

// What is an index may change while an instrument is followed.
TEST_F(TransDistributionTicks, shouldAskAnewWhetherItIsAnIndexWhenASnapshotArrives)
{
    feed({level1().last(10).volume(0)});
    EXPECT_EQ(ticksText(model), "");
    auto index = stock("SZ", "000001");
    index.isIndex = true;
    terminal.instruments.add(index);
    feed({level1().last(10).volume(0)});
    EXPECT_EQ(ticksText(model), "10 +0 of 0 S\n");
    follow("SH", "000001");
    terminal.instruments.add(stock("SZ", "000001"));
    feed({level1().last(11).volume(0)});
    EXPECT_EQ(ticksText(model), "10 +0 of 0 S\n");
}

// --- directions ---------------------------------------------------------------------------------------------------

// Without tolerance: the slightest fall is a sell.
TEST_F(TransDistributionTicks, shouldBuyUnlessThePriceFellWhenATickFollows)
{
    const std::pair<double, const char*> cases[] = {{10.01, "B"},      {10, "B"},   {9.99, "S"}, {9.999999999, "S"},
                                                    {10.0000001, "B"}, {kNaN, "S"}, {0, "S"},    {kNoPrice, "B"}};
    for (const auto& [price, direction] : cases) {
        model.clear();
        feed({level1().last(10).volume(5), level1().last(price).volume(7)});
        ASSERT_EQ(model.m_ticks.size(), 2) << price;
        EXPECT_EQ(model.m_ticks[1].isBuy ? "B" : "S", std::string(direction)) << price;
    }
    model.clear();
    feed({level1().last(kNaN).volume(5), level1().last(10).volume(7)});
    ASSERT_EQ(model.m_ticks.size(), 2);
    EXPECT_FALSE(model.m_ticks[1].isBuy) << "nothing is as high as no number, and nothing higher";
}

// A tick that was dropped for want of volume does not move the price either.
TEST_F(TransDistributionTicks, shouldCompareWithTheLastTickWhenSnapshotsBetweenWereDropped)
{
    feed({level1().last(10).volume(5), level1().last(9).volume(5), level1().last(9.5).volume(6)});
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n"
                                "9.5 +1 of 6 S\n");
}

TEST_F(TransDistributionTicks, shouldSellFirstWhenThereIsNoDateProvider)
{
    setLastCloses({{0, 1}});
    feed({level1().last(99).volume(5)});
    EXPECT_EQ(ticksText(model), "99 +5 of 5 S\n");
}

// A first tick at the last close is a sell, where later ones at an unchanged price are buys.
TEST_F(TransDistributionTicks, shouldBuyFirstWhenThePriceIsAboveTheLastCloseOfTheProvidedDate)
{
    setLastCloses({{20240229, 9.5}, {20240301, 10.5}});
    const std::tuple<int, double, const char*> cases[] = {
        {20240301, 10.5, "S"},        {20240301, 10.49, "S"}, {20240301, 10.51, "B"},   {20240301, 10.500000001, "B"},
        {20240301, 10.49999999, "S"}, {20240229, 9.5, "S"},   {20240229, 9.51, "B"},    {20240229, 10, "B"},
        {20240302, 99, "S"},          {20240301, kNaN, "S"},  {20240302, kNoPrice, "S"}};
    for (const auto& [date, price, direction] : cases) {
        model.clear();
        provideDate(date);
        feed({level2().last(price).volume(5), level2().last(price).volume(6)});
        ASSERT_EQ(model.m_ticks.size(), 2);
        EXPECT_EQ(model.m_ticks[0].isBuy ? "B" : "S", std::string(direction)) << date << " " << price;
        EXPECT_EQ(model.m_ticks[1].isBuy, price == price) << date << " " << price;
    }
}

TEST_F(TransDistributionTicks, shouldAskForTheDateOnlyWhenThereIsNoTickYet)
{
    provideDate(0);
    feed({level1().last(10).volume(0), level1().last(10).volume(0).status(22)});
    EXPECT_EQ(askedForDate, 0) << "a snapshot without volume is dropped before";
    feed({level1().last(10).volume(-5)});
    EXPECT_EQ(askedForDate, 1) << "one with a negative volume is dropped after";
    feed({level1().last(10).volume(5), level1().last(10).volume(7), level1().last(10).volume(9)});
    EXPECT_EQ(askedForDate, 2);
    model.clear();
    feed({level1().last(10).volume(5)});
    EXPECT_EQ(askedForDate, 3);
    followIndex();
    model.clear();
    feed({level1().last(10).volume(0), level1().last(10).volume(0)});
    EXPECT_EQ(askedForDate, 4);
}

// The close is looked up by the instrument's key: it is that of the instrument's latest description.
TEST_F(TransDistributionTicks, shouldKnowTheLatestLastCloseWhenTheInstrumentWasDescribedAnew)
{
    setLastCloses({{7, 9}});
    model.setStock(keyOf("SZ", "000001"));
    setLastCloses({{7, 11}});
    provideDate(7);
    feed({level1().last(10).volume(5)});
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n");
    setLastCloses({{7, 8}});
    model.clear();
    feed({level1().last(10).volume(5)});
    EXPECT_EQ(ticksText(model), "10 +5 of 5 B\n");
}

} // namespace
