#include "tests/tessimodel/tradelist.h"

#include <limits>

namespace {

using namespace tests;

class TradeSteppingTest : public TradeViewTest {
protected:
    // Rows 0 and 1 at 09:30:03, none of its own at 09:30:06, row 2 at 09:30:09, row 3 free.
    void givenThreeSnapshots()
    {
        feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 1), dealt("09:30:07", 10.00, 2),
                              dealt("09:30:10", 10.00, 1)});
        feed.snapshots(
            history, {snapshot("09:30:03", 10.00, 2), snapshot("09:30:06", 10.00, 3), snapshot("09:30:09", 10.00, 5)});
        EXPECT_EQ(pairsText(*model), "09:30:03 (0, 1)\n09:30:06 (1, 1)\n09:30:09 (2, 2)\n");
    }

    std::string current(int row) const { return pairText(model->getCurrSeqPair(row)); }
    std::string next(int row) const { return pairText(model->getNextSeqPair(row)); }
    std::string previous(int row) const { return pairText(model->getPreSeqPair(row)); }

    // The clock of the snapshot that a step by time leads to, "none" without one.
    static std::string snapshotClock(int second)
    {
        for (const char* clock : {"09:30:03", "09:30:06", "09:30:09"}) {
            if (secondOf(clock) == second)
                return clock;
        }
        return second == -1 ? "none" : std::to_string(second);
    }
    std::string clockOfRow(int row) const { return snapshotClock(model->getCurrQuoterTimgtag(row)); }
    std::string nextClock(const std::string& clock) const
    {
        return snapshotClock(model->getNextQuoterTimgtag(secondOf(clock)));
    }
    std::string previousClock(const std::string& clock) const
    {
        return snapshotClock(model->getPreQuoterTimgtag(secondOf(clock)));
    }
};

// --- from row to row -----------------------------------------------------------------------------------------

TEST_F(TradeSteppingTest, shouldGiveTheFirstPairThatCoversARow)
{
    givenThreeSnapshots();
    EXPECT_EQ(current(0), "(0, 1)");
    EXPECT_EQ(current(1), "(0, 1)") << "the snapshot without a row of its own covers it too, but is later";
    EXPECT_EQ(current(2), "(2, 2)");
    EXPECT_EQ(clockOfRow(0), "09:30:03");
    EXPECT_EQ(clockOfRow(1), "09:30:03");
    EXPECT_EQ(clockOfRow(2), "09:30:09");
}

TEST_F(TradeSteppingTest, shouldStepToTheNeighbourByTimeWhenThereIsOne)
{
    givenThreeSnapshots();
    EXPECT_EQ(next(0), "(1, 1)");
    EXPECT_EQ(next(1), "(1, 1)");
    EXPECT_EQ(previous(2), "(1, 1)");
}

TEST_F(TradeSteppingTest, shouldStayWhenThereIsNoNeighbour)
{
    givenThreeSnapshots();
    EXPECT_EQ(next(2), "(2, 2)");
    EXPECT_EQ(previous(0), "(0, 1)");
    EXPECT_EQ(previous(1), "(0, 1)");
}

TEST_F(TradeSteppingTest, shouldHaveNoPairWhenNoneCoversTheRow)
{
    for (const bool any : {false, true}) {
        if (any)
            givenThreeSnapshots();
        for (const int row : {-1, 3, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            SCOPED_TRACE(row);
            EXPECT_EQ(current(row), "(-1, -1)");
            EXPECT_EQ(next(row), "(-1, -1)");
            EXPECT_EQ(previous(row), "(-1, -1)");
            EXPECT_EQ(clockOfRow(row), "none");
        }
    }
}

TEST_F(TradeSteppingTest, shouldStepThroughSplitPairsWhenThereAreAny)
{
    givenThreeSnapshots();
    TradeView::SeqPair rows;
    EXPECT_TRUE(model->findSeq(secondOf("09:30:02"), 1, rows));
    EXPECT_EQ(pairText(rows), "(0, 0)");
    EXPECT_EQ(next(0), "(1, 1)");
    EXPECT_EQ(model->getCurrQuoterTimgtag(0), secondOf("09:30:02"));
    EXPECT_EQ(clockOfRow(1), "09:30:03");
    EXPECT_EQ(previous(1), "(0, 0)");
}

// --- from second to second -----------------------------------------------------------------------------------

TEST_F(TradeSteppingTest, shouldStepToTheNeighbourWhenTheSecondHasASnapshot)
{
    givenThreeSnapshots();
    EXPECT_EQ(nextClock("09:30:03"), "09:30:06");
    EXPECT_EQ(nextClock("09:30:06"), "09:30:09");
    EXPECT_EQ(previousClock("09:30:09"), "09:30:06");
    EXPECT_EQ(previousClock("09:30:06"), "09:30:03");
}

TEST_F(TradeSteppingTest, shouldStayAtTheEndsWhenThereIsNoNeighbour)
{
    givenThreeSnapshots();
    EXPECT_EQ(nextClock("09:30:09"), "09:30:09");
    EXPECT_EQ(previousClock("09:30:03"), "09:30:03");
}

// From a second without a snapshot both lead to the latest before it.
TEST_F(TradeSteppingTest, shouldFallBackToTheLatestBeforeWhenTheSecondHasNone)
{
    givenThreeSnapshots();
    const std::pair<const char*, const char*> cases[] = {{"09:30:02", "none"},     {"09:30:04", "09:30:03"},
                                                         {"09:30:08", "09:30:06"}, {"09:30:10", "09:30:09"},
                                                         {"15:00:00", "09:30:09"}, {"00:00:00", "none"}};
    for (const auto& [clock, answer] : cases) {
        EXPECT_EQ(nextClock(clock), answer) << clock;
        EXPECT_EQ(previousClock(clock), answer) << clock;
    }
}

TEST_F(TradeSteppingTest, shouldLeadNowhereWhenThereIsNoSnapshot)
{
    EXPECT_EQ(nextClock("09:30:03"), "none");
    EXPECT_EQ(previousClock("09:30:03"), "none");
}

} // namespace
