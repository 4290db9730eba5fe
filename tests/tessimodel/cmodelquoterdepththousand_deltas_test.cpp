#include "tests/tessimodel/quoterthousand.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {

using namespace tests;

using Levels = std::vector<ThousandLevel>;

// What changed at a price from one record to another of about a second before.
class QuoterThousandDeltasTest : public QuoterThousandTest {
protected:
    // Compares two records that are a second apart, after a clear.
    std::string changes(const ThousandRecord& before, const ThousandRecord& after)
    {
        const std::shared_ptr<quoter::LevelThousandData> first = before;
        const std::shared_ptr<quoter::LevelThousandData> second = after;
        second->timetag = first->timetag + 1000;
        model.clear();
        feed.thousand(live, {first});
        feed.thousand(live, {second});
        return deltasText(model);
    }

    std::string bidChanges(const Levels& before, const Levels& after)
    {
        return changes(thousand().bids(before), thousand().bids(after));
    }
};

// --- what is entered ------------------------------------------------------------------------------------------

TEST_F(QuoterThousandDeltasTest, shouldBeNegativeWhenALevelGrew)
{
    EXPECT_EQ(bidChanges({{10.00, 100}}, {{10.00, 150}}), "10.00 -50") << "before minus after";
    EXPECT_EQ(bidChanges({{10.00, 150}}, {{10.00, 100}}), "10.00 50");
    EXPECT_EQ(bidChanges({{10.00, 150}}, {{10.00, 0}}), "10.00 150") << "a level may stand there empty";
}

TEST_F(QuoterThousandDeltasTest, shouldHoldTheChangeWithTheTimeOfTheRecordThatShowedIt)
{
    bidAt("09:30:00", 100);
    bidAt("09:30:01", 150);
    ASSERT_TRUE(model.m_priceDeltas.contains(10.00));
    EXPECT_EQ(model.m_priceDeltas[10.00].second, timeOf("09:30:01"));
}

TEST_F(QuoterThousandDeltasTest, shouldEnterOnlyPricesOfBothRecordsWhenVolumesDiffer)
{
    EXPECT_EQ(changes(thousand().bids({{10.00, 5}, {9.99, 6}, {9.98, 7}}).asks({{10.02, 8}, {10.03, 9}}),
                      thousand().bids({{9.99, 6}, {9.98, 2}, {9.97, 7}}).asks({{10.01, 8}, {10.03, 10}})),
              "9.98 5, 10.03 -1");
}

TEST_F(QuoterThousandDeltasTest, shouldEnterNothingWhenARecordIsEmpty)
{
    EXPECT_EQ(changes(thousand(), thousand()), "");
    EXPECT_EQ(changes(thousand().bid(10.00, 5), thousand()), "");
    EXPECT_EQ(changes(thousand(), thousand().bid(10.00, 5)), "");
}

TEST_F(QuoterThousandDeltasTest, shouldPairLevelsByPriceWhenTheyAreOutOfOrder)
{
    EXPECT_EQ(bidChanges({{9.99, 6}, {10.00, 5}, {9.98, 7}}, {{9.98, 8}, {9.99, 8}, {10.00, 8}}),
              "9.98 -1, 9.99 -2, 10.00 -3");
}

TEST_F(QuoterThousandDeltasTest, shouldKeepTheFirstVolumeWhenAPriceIsMetTwice)
{
    EXPECT_EQ(bidChanges({{10.00, 100}, {10.00, 1}}, {{10.00, 150}, {10.00, 2}}), "10.00 -50");
    EXPECT_EQ(bidChanges({{10.00, 100}, {10.00, 1}}, {{10.00, 100}, {10.00, 2}}), "");
    EXPECT_EQ(changes(thousand().asks({{10.00, 100}, {10.00, 1}}), thousand().asks({{10.00, 150}, {10.00, 1}})),
              "10.00 -50");
}

TEST_F(QuoterThousandDeltasTest, shouldKeepTheBidsVolumeWhenAPriceIsBothBidAndAsk)
{
    EXPECT_EQ(changes(thousand().bid(10.00, 100).ask(10.00, 7), thousand().bid(10.00, 150).ask(10.00, 1)), "10.00 -50");
    EXPECT_EQ(changes(thousand().bid(10.00, 100), thousand().ask(10.00, 30)), "10.00 70") << "sides are not told apart";
}

TEST_F(QuoterThousandDeltasTest, shouldTellPricesApartExactlyWhenTheyAreClose)
{
    EXPECT_EQ(bidChanges({{10.00, 100}}, {{std::nextafter(10.00, 11), 150}}), "");
    EXPECT_EQ(bidChanges({{10.00, 1}, {10.000001, 2}}, {{10.00, 2}, {10.000001, 4}}), "10.00 -1, 10.00 -2");
}

TEST_F(QuoterThousandDeltasTest, shouldTakeZeroAndItsNegativeAsOnePriceWhenBothAreThere)
{
    EXPECT_EQ(bidChanges({{0.0, 5}}, {{-0.0, 7}}), "0.00 -2");
    EXPECT_EQ(bidChanges({{-0.0, 5}, {0.0, 9}}, {{0.0, 5}, {-0.0, 1}}), "");
}

TEST_F(QuoterThousandDeltasTest, shouldSkipPricesThatAreNoNumberWhenRecordsHaveThem)
{
    EXPECT_EQ(bidChanges({{NAN, 1}, {10.00, 5}, {NAN, 2}}, {{NAN, 3}, {10.00, 6}, {NAN, 4}}), "10.00 -1");
    EXPECT_EQ(bidChanges({{10.00, 5}, {NAN, 1}, {9.99, 5}, {9.98, 5}}, {{NAN, 1}, {9.98, 6}, {9.99, 6}, {10.00, 6}}),
              "9.98 -1, 9.99 -1, 10.00 -1");
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(bidChanges({{kInfinity, 1}, {-kInfinity, 2}}, {{-kInfinity, 3}, {kInfinity, 3}}), "-inf -1, inf -2");
}

TEST_F(QuoterThousandDeltasTest, shouldWrapIn32BitsWhenVolumesAreHuge)
{
    EXPECT_EQ(bidChanges({{10.00, INT_MAX}, {9.99, INT_MIN}}, {{10.00, -1}, {9.99, 1}}),
              "9.99 2147483647, 10.00 -2147483648");
}

// --- lists of unequal length ----------------------------------------------------------------------------------

TEST_F(QuoterThousandDeltasTest, shouldEndWithTheShorterListWhenPricesAndVolumesDiffer)
{
    const std::shared_ptr<quoter::LevelThousandData> first =
        thousand().bids({{10.00, 1}, {9.99, 1}, {9.98, 1}}).asks({{10.02, 1}, {10.03, 1}});
    const std::shared_ptr<quoter::LevelThousandData> second =
        thousand().bids({{10.00, 5}, {9.99, 5}, {9.98, 5}}).asks({{10.02, 5}, {10.03, 5}});
    first->bidVolumes.resize(2); // 9.98 has none
    second->askPrices.resize(1); // 5 hands more have no price
    second->bidNumbers.clear();
    second->askNumbers.clear();
    feed.thousand(live, {first});
    feed.thousand(live, {second});
    EXPECT_EQ(deltasText(model), "9.99 -4, 10.00 -4, 10.02 -4") << "the numbers do not matter";
}

// --- what stays -----------------------------------------------------------------------------------------------

TEST_F(QuoterThousandDeltasTest, shouldStayWhenThePriceIsGone)
{
    bidAt("09:30:00", 100);
    bidAt("09:30:01", 150);
    feed.thousand(live, {thousand("09:30:02").bid(9.99)});
    feed.thousand(live, {thousand("15:00:00").bid(9.98)});
    EXPECT_EQ(deltasText(model), "10.00 -50");
}

// The comparison is with the base only: back at the base's volume is no change, and the entry of before stands.
TEST_F(QuoterThousandDeltasTest, shouldStayWhenTheVolumeIsTheBasesAgain)
{
    bidAt("09:30:00.000", 100);
    bidAt("09:30:00.400", 150);
    bidAt("09:30:00.800", 100);
    EXPECT_EQ(bookText(model), "bid 10.00 100h x1 (-50)\n");
    EXPECT_EQ(model.m_priceDeltas[10.00].second, timeOf("09:30:00.400"));
}

TEST_F(QuoterThousandDeltasTest, shouldBeTheLatestWhenAPriceChangesOn)
{
    bidAt("09:30:00.000", 100);
    bidAt("09:30:00.400", 150);
    bidAt("09:30:00.800", 170);
    EXPECT_EQ(deltasText(model), "10.00 -70") << "against the base of 09:30:00";
    bidAt("09:30:01.000", 180);
    EXPECT_EQ(deltasText(model), "10.00 -10") << "against the base of 09:30:00.800";
    bidAt("09:30:01.400", 180);
    EXPECT_EQ(model.m_priceDeltas[10.00].second, timeOf("09:30:01.400")) << "seen once more";
}

TEST_F(QuoterThousandDeltasTest, shouldLeaveACopyAloneWhenAnotherChangeComes)
{
    bidAt("09:30:00", 100);
    bidAt("09:30:00.400", 150);
    const auto copy = model.m_priceDeltas;
    bidAt("09:30:00.800", 170);
    EXPECT_EQ(copy[10.00].first, -50);
    EXPECT_EQ(model.m_priceDeltas[10.00].first, -70);
}

} // namespace
