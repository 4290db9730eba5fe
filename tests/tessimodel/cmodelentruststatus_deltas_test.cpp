#include "tests/tessimodel/entruststatus.h"

#include <climits>
#include <cmath>

// The change of volume at each price.
namespace {

using namespace tests;

class EntrustDeltasTest : public EntrustStreamTest {
protected:
    // The rows after two snapshots on a new model with this step of the price.
    std::string shown(const Written& before, const Written& now, double priceTick = 0.01) const
    {
        EntrustStatus fresh;
        fresh.m_priceTick = priceTick;
        fresh.show(of(before));
        fresh.show(of(now));
        return rowsText(fresh);
    }

    // The change on a row of 10.00 and 100, the state before having these bids.
    int bidDelta(std::initializer_list<SnapshotLevel> before, double price, double priceTick) const
    {
        EntrustStatus fresh;
        fresh.m_priceTick = priceTick;
        fresh.show(of(level1().bids(before)));
        fresh.show(of(level1().bid(price, 100)));
        return fresh.m_bidRows[0].delta;
    }
};

TEST_P(EntrustDeltasTest, shouldShowNoChangeWhenTheFirstSnapshotFollowsAClear)
{
    follow();
    const auto record = of(level1().asks({{10.02, 1}, {10.03, 2}}).bids({{10.01, 6}, {10.00, 7}}));
    model.live({of(level1().asks({{10.02, 11}, {10.03, 12}}).bids({{10.01, 16}, {10.00, 17}}))});
    model.clear();
    model.live({record});
    EXPECT_EQ(rowsText(model), "ask2 10.03 2\nask1 10.02 1\nbid1 10.01 6\nbid2 10 7\n");
    EXPECT_EQ(rowsText(model), shown(level1(), level1().asks({{10.02, 1}, {10.03, 2}}).bids({{10.01, 6}, {10.00, 7}})));
}

TEST_P(EntrustDeltasTest, shouldFollowThePriceWhenItMovesToAnotherLevel)
{
    EXPECT_EQ(shown(level1().asks({{10.02, 10}, {10.03, 20}, {10.04, 30}}).bids({{10.01, 40}, {10.00, 50}}),
                    level1().asks({{10.03, 25}, {10.04, 27}, {10.05, 9}}).bids({{10.02, 8}, {10.01, 46}, {9.99, 1}})),
              "ask3 10.05 9\nask2 10.04 27 -3\nask1 10.03 25 +5\nbid1 10.02 8\nbid2 10.01 46 +6\nbid3 9.99 1\n");
    EXPECT_EQ(shown(level1().asks({{10.03, 10}}).bids({{10.01, 40}}),
                    level1().asks({{10.01, 1}, {10.02, 2}, {10.03, 13}}).bids({{10.05, 1}, {10.03, 2}, {10.01, 30}})),
              "ask3 10.03 13 +3\nask2 10.02 2\nask1 10.01 1\nbid1 10.05 1\nbid2 10.03 2\nbid3 10.01 30 -10\n");
}

// A price that crosses over from one side to the other is new there.
TEST_P(EntrustDeltasTest, shouldCompareEachSideWithItselfAloneWhenAPriceCrossesOver)
{
    EXPECT_EQ(shown(level1().ask(10.02, 10).bid(10.01, 40), level1().ask(10.01, 11).bid(10.02, 41)),
              "ask1 10.01 11\nbid1 10.02 41\n");
}

TEST_P(EntrustDeltasTest, shouldShowNoChangeWhenTheVolumeStood)
{
    EXPECT_EQ(shown(level1().ask(10.02, 10).bid(10.01, 40), level1().ask(10.02, 10).bid(10.01, 40)),
              "ask1 10.02 10\nbid1 10.01 40\n");
}

TEST_P(EntrustDeltasTest, shouldForgetTheLastChangeWhenThePriceIsNew)
{
    model.show(of(level1().ask(10.02, 10).bid(10.01, 40)));
    model.show(of(level1().ask(10.02, 15).bid(10.01, 45)));
    ASSERT_EQ(rowsText(model), "ask1 10.02 15 +5\nbid1 10.01 45 +5\n");
    model.show(of(level1().ask(10.03, 15).bid(10.00, 45)));
    EXPECT_EQ(rowsText(model), "ask1 10.03 15\nbid1 10 45\n");
}

// --- the price ------------------------------------------------------------------------------------------------

// A level without a price keeps its zero: volumes at price 0 would match each other else.
TEST_P(EntrustDeltasTest, shouldShowNoChangeWhenALevelHasNoPrice)
{
    EXPECT_EQ(shown(level1().asks({{0, 10}}).bids({{0, 40}}), level1().asks({{0, 15}}).bids({{0, 45}})),
              "ask1 0 15\nbid1 0 45\n");
    for (const double none : {1e-5, -1e-5})
        EXPECT_EQ(bidDelta({{none, 40}}, none, 0.01), 0) << none;
    for (const double some : {1.1e-5, -1.1e-5, -10.0})
        EXPECT_EQ(bidDelta({{some, 40}}, some, 0.01), 60) << some;
}

// Rows that are empty take part, at price 0: a small enough price finds the first of them.
TEST_P(EntrustDeltasTest, shouldFindAnEmptyRowWhenThePriceIsTiny)
{
    EXPECT_EQ(bidDelta({}, 0.00005, 0.001), 100);
    EXPECT_EQ(bidDelta({{0, 30}}, 0.00005, 0.001), 70);
    EXPECT_EQ(bidDelta({{10, 30}}, 0.00005, 0.001), 100);
    EXPECT_EQ(bidDelta({}, 0.0001, 0.001), 0) << "a tenth of the step is too far";
    model.show(of(level1().ask(0.00005, 100).bid(0.00005, 100)), of(level1()));
    EXPECT_EQ(rowsText(model), "ask1 5e-05 100 +100\nbid1 5e-05 100 +100\n");
}

// So do rows that no snapshot has written, and those beyond the five levels of a snapshot before.
TEST_P(EntrustDeltasTest, shouldFindAnUnusedRowWhenThePriceIsTiny)
{
    model.show(of(level1().ask(0.00005, 100).bid(0.00005, 200)));
    EXPECT_EQ(rowsText(model), "ask1 5e-05 100 +100\nbid1 5e-05 200 +200\n");
    model.show(
        of(level1().ask(0.00005, 100).bid(0.00005, 200)),
        of(level1().asks({{5, 1}, {6, 2}, {7, 3}, {8, 4}, {9, 5}}).bids({{4, 1}, {3, 2}, {2, 3}, {1, 4}, {0.5, 5}})));
    EXPECT_EQ(rowsText(model), "ask1 5e-05 100 +100\nbid1 5e-05 200 +200\n");
}

TEST_P(EntrustDeltasTest, shouldNotMatchWhenPricesDifferByATenthOfTheStep)
{
    EXPECT_EQ(bidDelta({{11, 30}}, 10, 10), 0) << "exactly a tenth of the step of 10";
    EXPECT_EQ(bidDelta({{9, 30}}, 10, 10), 0);
    EXPECT_EQ(bidDelta({{std::nextafter(11.0, 0), 30}}, 10, 10), 70);
    EXPECT_EQ(bidDelta({{std::nextafter(9.0, 10), 30}}, 10, 10), 70);
    EXPECT_EQ(bidDelta({{10.03125, 30}}, 10, 0.3125), 0) << "and of 0.3125";
    EXPECT_EQ(bidDelta({{10.03124, 30}}, 10, 0.3125), 70);
    EXPECT_EQ(bidDelta({{10.0009, 30}}, 10, 0.01), 70) << "far more than two prices that are equal differ by";
    EXPECT_EQ(bidDelta({{10.00002, 30}}, 10, 0.0001), 0) << "less than a tenth of a fine step counts";
    EXPECT_EQ(bidDelta({{10.000005, 30}}, 10, 0.0001), 70);
}

TEST_P(EntrustDeltasTest, shouldCompareByTheInstrumentsStepWhenItHasOne)
{
    const auto before = level1().bid(10.0009, 30);
    const auto now = level1().bid(10, 100);
    model.show(of(before));
    model.show(of(now));
    EXPECT_EQ(rowsText(model), "bid1 10 100\n") << "0.001 without an instrument";
    followWithStep(0.01);
    model.show(of(before));
    model.show(of(now));
    EXPECT_EQ(rowsText(model), "bid1 10 100 +70\n");
}

TEST_P(EntrustDeltasTest, shouldMatchNothingWhenTheStepIsUnusable)
{
    for (const double priceTick : {0.0, -0.01, kNaN})
        EXPECT_EQ(bidDelta({{10, 30}}, 10, priceTick), 0) << priceTick;
}

TEST_P(EntrustDeltasTest, shouldMatchOnlyWhatIsEqualWhenPricesAreNoPrices)
{
    EXPECT_EQ(bidDelta({{kNoPrice, 30}}, kNoPrice, 0.01), 70);
    EXPECT_EQ(bidDelta({{kNaN, 30}}, kNaN, 0.01), 0);
    EXPECT_EQ(bidDelta({{kInfinity, 30}}, kInfinity, 0.01), 0);
    EXPECT_EQ(bidDelta({{kNaN, 20}, {10, 30}}, 10, 0.01), 70) << "it is passed over";
}

// The first row from the top of the list, not the nearest price.
TEST_P(EntrustDeltasTest, shouldTakeTheFirstRowThatIsNearEnoughWhenThereAreTwo)
{
    EXPECT_EQ(bidDelta({{10.04, 10}, {10.00, 20}}, 10, 1), 90);
    EXPECT_EQ(shown(level1().asks({{10.00, 20}, {10.04, 10}}), level1().ask(10.00, 100), 1), "ask1 10 100 +90\n")
        << "the worse ask stands above";
    EXPECT_EQ(shown(level1().asks({{10.00, 20}, {10.00, 30}}).bids({{9, 20}, {9, 30}}),
                    level1().asks({{10.00, 21}, {10.00, 31}}).bids({{9, 21}, {9, 31}})),
              "ask2 10 31 +1\nask1 10 21 -9\nbid1 9 21 +1\nbid2 9 31 +11\n");
}

// --- the volume -----------------------------------------------------------------------------------------------

TEST_P(EntrustDeltasTest, shouldWrapTheChangeWhenItDoesNotFit)
{
    EXPECT_EQ(shown(level1().ask(10, INT_MIN).bid(9, INT_MAX), level1().ask(10, INT_MAX).bid(9, INT_MIN)),
              "ask1 10 2147483647 -1\nbid1 9 -2147483648 +1\n");
}

TEST_P(EntrustDeltasTest, shouldCompareLow32BitsWhenVolumesAreLarger)
{
    const auto before = level1().ask(10, (1LL << 32) + 5).bid(9, (1LL << 33) + 6);
    const auto now = level1().ask(10, 9).bid(9, (1LL << 34) + 1);
    EXPECT_EQ(shown(before, now), "ask1 10 9 +4\nbid1 9 1 -5\n");
    model.show(of(now), of(before));
    EXPECT_EQ(rowsText(model), "ask1 10 9 +4\nbid1 9 1 -5\n");
}

// --- the snapshot before --------------------------------------------------------------------------------------

TEST_P(EntrustDeltasTest, shouldCompareWithTheSnapshotBeforeWhenThereIsOne)
{
    model.show(of(level1().asks({{10.02, 10}, {10.03, 20}}).bids({{10.01, 40}, {10.00, 50}})));
    model.show(of(level1().asks({{10.02, 100}, {10.03, 200}}).bids({{10.01, 400}, {10.00, 500}})),
               of(level1().asks({{10.01, 1}, {10.02, 99}}).bids({{10.00, 498}, {9.99, 3}})));
    EXPECT_EQ(rowsText(model), "ask2 10.03 200\nask1 10.02 100 +1\nbid1 10.01 400\nbid2 10 500 +2\n");
}

// Nothing is left over from the rows as they stood: an empty snapshot before means that all is new.
TEST_P(EntrustDeltasTest, shouldShowNoChangeWhenTheSnapshotBeforeIsEmpty)
{
    const auto record = of(level1().asks({{10.02, 10}}).bids({{10.01, 40}}));
    model.show(record);
    model.show(of(level1().asks({{10.02, 100}}).bids({{10.01, 400}})), of(level1()));
    EXPECT_EQ(rowsText(model), "ask1 10.02 100\nbid1 10.01 400\n");
    model.show(record, record);
    EXPECT_EQ(rowsText(model), "ask1 10.02 10\nbid1 10.01 40\n");
}

TEST_P(EntrustDeltasTest, shouldFindTheLastLevelWhenTheSnapshotBeforeHadThePriceThere)
{
    model.show(of(level1().ask(10.06, 55).bid(9.97, 66)),
               of(level1()
                      .asks({{10.02, 1}, {10.03, 2}, {10.04, 3}, {10.05, 4}, {10.06, 5}})
                      .bids({{10.01, 6}, {10.00, 7}, {9.99, 8}, {9.98, 9}, {9.97, 10}})));
    EXPECT_EQ(rowsText(model), "ask1 10.06 55 +50\nbid1 9.97 66 +56\n");
}

TEST_P(EntrustDeltasTest, shouldCompareWithTheRowsWhenTheSnapshotBeforeIsNoneOfTheStream)
{
    const Written other = level1().ask(10.02, 99).bid(10.01, 399);
    for (const quoter::QuoterBasePtr& before :
         {quoter::QuoterBasePtr(), quoter::QuoterBasePtr(order(1).buy(10.01)), foreign(other)}) {
        model.clear();
        model.show(of(level1().ask(10.02, 10).bid(10.01, 40)));
        EXPECT_TRUE(model.show(of(level1().ask(10.02, 100).bid(10.01, 400)), before));
        EXPECT_EQ(rowsText(model), "ask1 10.02 100 +90\nbid1 10.01 400 +360\n");
    }
}

INSTANTIATE_TEST_SUITE_P(BothStreams, EntrustDeltasTest, ::testing::Values(1, 2), levelName);

} // namespace
