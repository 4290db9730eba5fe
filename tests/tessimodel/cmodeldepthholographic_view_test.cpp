#include "tests/support/layout.h"
#include "tests/tessimodel/tradelist.h"

#include <fmt/format.h>

#include <limits>

namespace {

using namespace tests;

class TradeViewRangeTest : public TradeViewTest {
protected:
    // "rows 0 to 2, 9.99 to 10.01, height 7".
    std::string viewText() const
    {
        return fmt::format("rows {} to {}, {:.2f} to {:.2f}, height {}", model->getStartIndex(), model->getEndIndex(),
                           model->m_minPrice, model->m_maxPrice, model->m_totalHeight);
    }

    // Looks at a range of time. True when that changed the view.
    bool look(const std::string& from, const std::string& to)
    {
        return model->setViewTimeRange(secondOf(from), secondOf(to));
    }

    // Rows 0 and 1 of the snapshot of 09:30:03, rows 2 and 3 of that of 09:30:06, and row 4 of none.
    void givenTwoSnapshots()
    {
        feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.02, 2), dealt("09:30:04", 9.99, 3),
                              dealt("09:30:05", 10.01, 4), dealt("09:30:08", 10.03, 5)});
        feed.snapshots(history, {snapshot("09:30:03", 10.02, 3), snapshot("09:30:06", 10.01, 10)});
        EXPECT_EQ(pairsText(*model), "09:30:03 (0, 1)\n09:30:06 (2, 3)\n");
    }
};

// --- construction --------------------------------------------------------------------------------------------

TEST_F(TradeViewRangeTest, shouldLookAtNothingWhenNew)
{
    EXPECT_EQ(viewText(), "rows -1 to -1, 0.00 to 0.00, height 0");
    EXPECT_FALSE(model->m_viewFlag);
    EXPECT_EQ(model->m_fullHeightHandle, 4);
    EXPECT_EQ(model->m_priceStep, 0.01);
    EXPECT_EQ(model->m_viewStartTime, -1);
    EXPECT_EQ(model->m_viewEndTime, -1);
    const TradeView& m = *model;
    EXPECT_TRUE(standInOrder(m.m_filter, m.m_viewFlag, m.m_fullHeightHandle, m.m_maxPrice, m.m_minPrice, m.m_priceStep,
                             m.m_viewStartTime, m.m_viewEndTime, m.m_startIndex, m.m_endIndex, m.m_totalHeight));
}

TEST_F(TradeViewRangeTest, shouldKeepTheHandleWhenSet)
{
    model->setFullHeightHandle(9);
    EXPECT_EQ(model->m_fullHeightHandle, 9);
    model->clear();
    EXPECT_EQ(model->m_fullHeightHandle, 9);
}

// --- the rows in view ----------------------------------------------------------------------------------------

TEST_F(TradeViewRangeTest, shouldTakeWholeSnapshotsWhenBothEndsHaveOne)
{
    givenTwoSnapshots();
    EXPECT_TRUE(look("09:30:03", "09:30:06"));
    EXPECT_EQ(viewText(), "rows 0 to 3, 9.99 to 10.02, height 14") << "a line a row and one a hand: 4 and 10";
    EXPECT_TRUE(look("09:30:06", "09:30:06"));
    EXPECT_EQ(viewText(), "rows 2 to 3, 9.99 to 10.01, height 9");
    EXPECT_EQ(model->m_viewStartTime, secondOf("09:30:06"));
    EXPECT_EQ(model->m_viewEndTime, secondOf("09:30:06"));
}

TEST_F(TradeViewRangeTest, shouldGoByTheRowsTimesWhenAnEndHasNoSnapshot)
{
    givenTwoSnapshots();
    EXPECT_TRUE(look("09:30:02", "09:30:04"));
    EXPECT_EQ(viewText(), "rows 1 to 2, 9.99 to 10.02, height 7");
    EXPECT_TRUE(look("09:29:00", "09:30:07"));
    EXPECT_EQ(viewText(), "rows 0 to 3, 9.99 to 10.02, height 14");
    EXPECT_TRUE(look("09:30:03", "09:30:04"));
    EXPECT_EQ(viewText(), "rows 0 to 2, 9.99 to 10.02, height 9") << "each end by itself";
}

TEST_F(TradeViewRangeTest, shouldEndAtTheLastRowWhenTheRangeEndsAfterIt)
{
    givenTwoSnapshots();
    EXPECT_TRUE(look("09:30:06", "15:00:00"));
    EXPECT_EQ(viewText(), "rows 2 to 4, 9.99 to 10.03, height 15");
}

TEST_F(TradeViewRangeTest, shouldHaveHeightOneWhenThereAreNoRows)
{
    EXPECT_TRUE(look("09:30:00", "15:00:00")) << "the height was 0";
    EXPECT_EQ(viewText(), "rows -1 to -1, 0.00 to 0.00, height 1");
    EXPECT_FALSE(look("09:30:00", "15:00:00"));
}

TEST_F(TradeViewRangeTest, shouldHaveHeightOneWhenTheRangeIsBehindAllRows)
{
    givenTwoSnapshots();
    look("09:30:03", "09:30:06");
    EXPECT_TRUE(look("10:00:00", "15:00:00"));
    EXPECT_EQ(viewText(), "rows -1 to -1, 0.00 to 0.00, height 1");
}

// In a gap the first row behind it is the start and the last row before it the end.
TEST_F(TradeViewRangeTest, shouldHaveHeightZeroWhenTheRangeIsWithinAGap)
{
    givenTwoSnapshots();
    look("09:30:03", "09:30:06");
    EXPECT_TRUE(look("09:30:07", "09:30:07"));
    EXPECT_EQ(viewText(), "rows 4 to 3, 0.00 to 0.00, height 0");
}

// A range that starts behind all rows and ends among them has a missing row, -1, in front.
TEST_F(TradeViewRangeTest, shouldCountTheMissingRowWhenOnlyTheStartIsBehindAllRows)
{
    givenTwoSnapshots();
    EXPECT_TRUE(look("10:00:00", "09:30:02"));
    EXPECT_EQ(viewText(), "rows -1 to 1, 10.00 to 10.02, height 5") << "three rows, three hands, one missing";
}

// Pairs stay when a filter takes rows away, and each row that is missing then counts one hand less than none.
TEST_F(TradeViewRangeTest, shouldCountMissingRowsAsMinusOneWhenAFilterTookThemAway)
{
    givenTwoSnapshots();
    look("09:30:03", "09:30:06");
    filter(atLeastHands(5));
    EXPECT_TRUE(model->recalcMaxMinPrice());
    EXPECT_EQ(viewText(), "rows 0 to 3, 10.03 to 10.03, height 6") << "four rows, five hands, three missing";
    EXPECT_FALSE(model->recalcMaxMinSeqAndPrice());
    filter(atLeastHands(99));
    EXPECT_TRUE(look("09:30:06", "15:00:00"));
    EXPECT_EQ(viewText(), "rows 2 to -1, 0.00 to 0.00, height -2") << "the last of no rows at all";
}

// --- whether the view changed --------------------------------------------------------------------------------

TEST_F(TradeViewRangeTest, shouldTellNoChangeWhenTheValuesAreTheSame)
{
    givenTwoSnapshots();
    EXPECT_TRUE(look("09:30:03", "09:30:06"));
    EXPECT_FALSE(look("09:30:03", "09:30:06"));
    EXPECT_FALSE(model->recalcMaxMinSeqAndPrice());
    EXPECT_FALSE(model->recalcMaxMinPrice());
    EXPECT_FALSE(look("09:29:00", "09:30:07")) << "other seconds, the same rows";
}

TEST_F(TradeViewRangeTest, shouldTellAChangeWhenOnlyTheRowsAreOthers)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 1)});
    EXPECT_TRUE(look("09:30:01", "09:30:01"));
    EXPECT_TRUE(look("09:30:02", "09:30:02")) << "of the same height and price";
    EXPECT_EQ(viewText(), "rows 1 to 1, 10.00 to 10.00, height 2");
}

TEST_F(TradeViewRangeTest, shouldTellAChangeWhenOnlyOnePriceDiffers)
{
    givenTwoSnapshots();
    look("09:30:03", "09:30:06");
    model->m_maxPrice = 10.0201;
    EXPECT_TRUE(model->recalcMaxMinPrice());
    EXPECT_FALSE(model->recalcMaxMinPrice());
    model->m_minPrice = 9.9899;
    EXPECT_TRUE(model->recalcMaxMinPrice());
    model->m_totalHeight = 15;
    EXPECT_TRUE(model->recalcMaxMinPrice());
    EXPECT_EQ(viewText(), "rows 0 to 3, 9.99 to 10.02, height 14");
}

TEST_F(TradeViewRangeTest, shouldTellNoChangeWhenPricesDifferWithinTheTolerance)
{
    feed.trades(history, {dealt("09:30:01", 0, 1)});
    look("09:30:01", "09:30:01");
    model->m_maxPrice = 1e-5;
    model->m_minPrice = -1e-5;
    EXPECT_FALSE(model->recalcMaxMinPrice());
    EXPECT_EQ(model->m_maxPrice, 0) << "stored in any case";
    EXPECT_EQ(model->m_minPrice, 0);
    model->m_minPrice = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(model->recalcMaxMinPrice());
}

TEST_F(TradeViewRangeTest, shouldWidenPricesBeyondTheToleranceOnly)
{
    feed.trades(history, {dealt("09:30:01", 0, 1), dealt("09:30:01", 1e-5, 1), dealt("09:30:01", -1e-5, 1)});
    look("09:30:01", "09:30:01");
    EXPECT_EQ(model->m_maxPrice, 0);
    EXPECT_EQ(model->m_minPrice, 0);
    feed.trades(live, {dealt("09:30:01", 2e-5, 1)});
    feed.trades(live, {dealt("09:30:01", -2e-5, 1)});
    EXPECT_TRUE(model->recalcMaxMinSeqAndPrice());
    EXPECT_EQ(model->m_maxPrice, 2e-5);
    EXPECT_EQ(model->m_minPrice, -2e-5);
}

TEST_F(TradeViewRangeTest, shouldFollowTheRowsWhenTheyComeIntoTheRange)
{
    givenTwoSnapshots();
    look("09:30:03", "15:00:00");
    EXPECT_EQ(viewText(), "rows 0 to 4, 9.99 to 10.03, height 20");
    feed.trades(live, {dealt("09:30:09", 10.02, 1)});
    EXPECT_FALSE(model->recalcMaxMinPrice()) << "the rows are found by the other";
    EXPECT_TRUE(model->recalcMaxMinSeqAndPrice());
    EXPECT_EQ(viewText(), "rows 0 to 5, 9.99 to 10.03, height 22");
}

TEST_F(TradeViewRangeTest, shouldWrapTheHeightWhenItExceedsAnInt)
{
    const std::shared_ptr<quoter::QuoterBase> huge = fill(1, 2).time("09:30:01").at(10.00).shares(2147483600);
    feed.trades(history, Records(101, huge));
    look("09:30:01", "09:30:01");
    EXPECT_EQ(model->m_totalHeight, -2126008860 + 101);
}

// --- clear ---------------------------------------------------------------------------------------------------

// The height stays behind, so that the next look tells of a change.
TEST_F(TradeViewRangeTest, shouldDropRowsAndViewButNotTheHeightWhenCleared)
{
    givenTwoSnapshots();
    look("09:30:03", "09:30:06");
    tookChange();
    model->clear();
    EXPECT_EQ(viewText(), "rows -1 to -1, 0.00 to 0.00, height 14");
    EXPECT_EQ(model->m_viewStartTime, -1);
    EXPECT_EQ(model->m_viewEndTime, -1);
    EXPECT_TRUE(model->m_rows.isEmpty() && model->m_quotes.isEmpty() && model->m_seqPairs.empty());
    EXPECT_FALSE(model->m_historyLoaded);
    EXPECT_TRUE(tookChange());
    EXPECT_NE(model->m_stock, nullptr);
    EXPECT_TRUE(model->recalcMaxMinPrice());
    EXPECT_EQ(model->m_totalHeight, 1);
}

} // namespace
