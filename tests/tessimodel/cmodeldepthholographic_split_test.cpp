#include "tests/tessimodel/tradelist.h"

namespace {

using namespace tests;

class TradeSplitTest : public TradeViewTest {
protected:
    // "(2, 3)", or "none (-1, -1)".
    std::string findSeq(const std::string& clock, int volume)
    {
        TradeView::SeqPair rows{-7, -7};
        const bool found = model->findSeq(secondOf(clock), volume, rows);
        return (found ? "" : "none ") + pairText(rows);
    }

    // Rows of 1, 2, 3 and 4 hands of the snapshot of 09:30:06, one of 2 hands of that of 09:30:09, two of 3 hands of
    // that of 09:30:12, which is the last that is matched, and one that waits with the snapshot of 09:30:15.
    void givenThreeClosedPairs()
    {
        feed.trades(history, {dealt("09:30:04", 10.00, 1), dealt("09:30:04", 10.01, 2), dealt("09:30:05", 10.00, 3),
                              dealt("09:30:05", 10.00, 4), dealt("09:30:07", 10.00, 2), dealt("09:30:10", 10.00, 3),
                              dealt("09:30:11", 10.00, 3), dealt("09:30:13", 10.00, 1)});
        feed.snapshots(history, {snapshot("09:30:06", 10.00, 10), snapshot("09:30:09", 10.00, 12),
                                 snapshot("09:30:12", 10.00, 18), snapshot("09:30:15", 10.00, 30)});
        EXPECT_EQ(pairsText(*model), threeClosedPairs);
        EXPECT_EQ(model->m_lastMatchedQuote, 2);
    }

    const std::string threeClosedPairs = "09:30:06 (0, 3)\n09:30:09 (4, 4)\n09:30:12 (5, 6)\n09:30:15 (7, 7)\n";
};

// --- the pair of a second ------------------------------------------------------------------------------------

TEST_F(TradeSplitTest, shouldGiveTheSnapshotsPairWhenTheSecondHasOne)
{
    givenThreeClosedPairs();
    EXPECT_EQ(findSeq("09:30:06", 0), "(0, 3)");
    EXPECT_EQ(findSeq("09:30:06", 1), "(0, 3)") << "whatever the volume";
    EXPECT_EQ(findSeq("09:30:15", -1), "(7, 7)");
    EXPECT_EQ(pairsText(*model), threeClosedPairs);
}

TEST_F(TradeSplitTest, shouldFindNoneWhenTheSecondHasNoPairAndThereIsNoVolume)
{
    givenThreeClosedPairs();
    EXPECT_EQ(findSeq("09:30:05", 0), "none (-1, -1)");
    EXPECT_EQ(findSeq("09:30:05", -3), "none (-1, -1)");
    EXPECT_EQ(pairsText(*model), threeClosedPairs);
}

TEST_F(TradeSplitTest, shouldFindNoneWhenThereIsNoPairAtAll)
{
    feed.trades(history, {dealt("09:30:04", 10.00, 1)});
    EXPECT_EQ(findSeq("09:30:05", 1), "none (-1, -1)");
}

// --- a closed pair -------------------------------------------------------------------------------------------

// The rows in front that make up the volume go to the second, the others stay with the snapshot. Prices are not asked.
TEST_F(TradeSplitTest, shouldSplitTheNextPairWhenItIsClosed)
{
    givenThreeClosedPairs();
    EXPECT_EQ(findSeq("09:30:05", 3), "(0, 1)");
    EXPECT_EQ(pairsText(*model),
              "09:30:05 (0, 1)\n09:30:06 (2, 3)\n09:30:09 (4, 4)\n09:30:12 (5, 6)\n09:30:15 (7, 7)\n");
    EXPECT_EQ(findSeq("09:30:05", 1), "(0, 1)") << "its own pair by now";
    EXPECT_EQ(findSeq("09:30:04", 1), "(0, 0)") << "and so on";
    EXPECT_EQ(pairsText(*model), "09:30:04 (0, 0)\n09:30:05 (1, 1)\n09:30:06 (2, 3)\n09:30:09 (4, 4)\n09:30:12 (5, 6)\n"
                                 "09:30:15 (7, 7)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 2);
}

TEST_F(TradeSplitTest, shouldTakeTheNearestRowsWhenTheVolumeLiesBetween)
{
    const std::pair<int, const char*> cases[] = {{1, "(0, 0)"}, {2, "(0, 1)"}, {4, "(0, 1)"},
                                                 {5, "(0, 2)"}, {7, "(0, 2)"}, {8, "(0, 3)"}};
    for (const auto& [volume, rows] : cases) {
        givenThreeClosedPairs();
        EXPECT_EQ(findSeq("09:30:05", volume), rows) << volume << " hands of 1, 3, 6 and 10; the later of two as near";
        feed.snapshots(history, {});
    }
}

// When the rows never exceed the volume, all are the answer, and the last of them stays the snapshot's too.
TEST_F(TradeSplitTest, shouldLeaveTheLastRowWithTheSnapshotWhenAllRowsAreTheAnswer)
{
    givenThreeClosedPairs();
    EXPECT_EQ(findSeq("09:30:05", 99), "(0, 3)");
    EXPECT_EQ(pairsText(*model),
              "09:30:05 (0, 3)\n09:30:06 (3, 3)\n09:30:09 (4, 4)\n09:30:12 (5, 6)\n09:30:15 (7, 7)\n");
}

TEST_F(TradeSplitTest, shouldGiveTheWholePairAndLeaveItWhenItHasOneRow)
{
    givenThreeClosedPairs();
    EXPECT_EQ(findSeq("09:30:07", 1), "(4, 4)");
    EXPECT_EQ(findSeq("09:30:08", 99), "(4, 4)");
    EXPECT_EQ(pairsText(*model), threeClosedPairs);
}

TEST_F(TradeSplitTest, shouldCutTheRunningSumToWholeHandsWhenSharesAreOdd)
{
    const auto shares = [](__int64 volume) { return fill(1, 2).time("09:30:04").at(10.00).shares(volume); };
    feed.trades(history, {shares(60), shares(60), shares(130), shares(40), shares(500), dealt("09:30:07", 10.00, 2),
                          dealt("09:30:10", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:06", 10.00, 7), snapshot("09:30:09", 10.00, 9)});
    EXPECT_EQ(pairsText(*model), "09:30:06 (0, 4)\n09:30:09 (5, 5)\n");
    EXPECT_EQ(findSeq("09:30:05", 2), "(0, 3)") << "1, 1, 2 and 2 hands so far";
    EXPECT_EQ(findSeq("09:30:04", 1), "(0, 1)") << "60 shares are one hand";
}

// Whatever passes the filter, the volumes are those of all rows by their position.
TEST_F(TradeSplitTest, shouldAddUpAllRowsWhenAFilterIsSet)
{
    givenThreeClosedPairs();
    filter(atLeastHands(3));
    EXPECT_EQ(findSeq("09:30:05", 3), "(0, 1)");
}

TEST_F(TradeSplitTest, shouldGiveAnEmptyPairWhenEvenTheFirstRowIsTooFarOff)
{
    givenThreeClosedPairs();
    EXPECT_EQ(findSeq("09:30:05", 1410065410), "(0, -1)");
    EXPECT_EQ(pairsText(*model),
              "09:30:05 (0, -1)\n09:30:06 (0, 3)\n09:30:09 (4, 4)\n09:30:12 (5, 6)\n09:30:15 (7, 7)\n");
    EXPECT_EQ(findSeq("09:30:04", 1), "(0, -1)") << "it cannot be split, and is handed on as it is";
    EXPECT_EQ(pairText(model->m_seqPairs.at(secondOf("09:30:05"))), "(-1, -1)") << "from its last row on";
}

TEST_F(TradeSplitTest, shouldGiveAPairWithoutRowsWhenTheSecondHasOne)
{
    givenThreeClosedPairs();
    findSeq("09:30:05", 1410065410);
    findSeq("09:30:04", 1);
    EXPECT_EQ(findSeq("09:30:05", 0), "(-1, -1)") << "found, though it looks like none";
}

TEST_F(TradeSplitTest, shouldReachTheLimitOfADifferenceWhenAVolumeIsHuge)
{
    givenThreeClosedPairs();
    EXPECT_EQ(findSeq("09:30:05", 1410065409), "(0, 3)");
}

TEST_F(TradeSplitTest, shouldAddVolumesBeyondAnIntWhenRowsAreHuge)
{
    const auto huge = [] { return fill(1, 2).time("09:30:04").at(10.00).shares(2000000000); };
    feed.trades(history, {huge(), huge(), huge(), dealt("09:30:07", 10.00, 2), dealt("09:30:10", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:06", 10.00, 60000000), snapshot("09:30:09", 10.00, 60000002)});
    EXPECT_EQ(pairsText(*model), "09:30:06 (0, 2)\n09:30:09 (3, 3)\n");
    EXPECT_EQ(findSeq("09:30:05", 45000000), "(0, 1)");
}

// --- a pair that is not closed -------------------------------------------------------------------------------

// The latest snapshot's rows may still change: the answer is given, the pair is left whole.
TEST_F(TradeSplitTest, shouldLeaveThePairWholeWhenItIsTheLastMatched)
{
    givenThreeClosedPairs();
    EXPECT_EQ(findSeq("09:30:10", 3), "(5, 5)");
    EXPECT_EQ(findSeq("09:30:11", 99), "(5, 6)");
    EXPECT_EQ(pairsText(*model), threeClosedPairs);
}

TEST_F(TradeSplitTest, shouldLeaveThePairWholeWhenItIsOpen)
{
    givenThreeClosedPairs();
    feed.trades(live, {dealt("09:30:14", 10.00, 5)});
    const std::string pairs = pairsText(*model);
    EXPECT_EQ(pairs, "09:30:06 (0, 3)\n09:30:09 (4, 4)\n09:30:12 (5, 6)\n09:30:15 (7, 8)\n");
    EXPECT_EQ(findSeq("09:30:14", 1), "(7, 7)");
    EXPECT_EQ(findSeq("09:30:13", 6), "(7, 8)");
    EXPECT_EQ(pairsText(*model), pairs);
}

TEST_F(TradeSplitTest, shouldLeaveThePairWholeWhenNoSnapshotIsMatchedYet)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 2)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 9)});
    EXPECT_EQ(findSeq("09:30:02", 1), "(0, 0)");
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 1)\n");
}

// --- behind the last pair ------------------------------------------------------------------------------------

TEST_F(TradeSplitTest, shouldGiveTheFreeRowsWhenTheSecondIsBehindTheLastPair)
{
    givenThreeClosedPairs();
    EXPECT_EQ(findSeq("09:30:16", 1), "none (-1, -1)") << "no row is free";
    feed.snapshots(history, {snapshot("09:30:06", 10.00, 10), snapshot("09:30:09", 10.00, 12)});
    const std::string pairs = pairsText(*model);
    EXPECT_EQ(pairs, "09:30:06 (0, 3)\n09:30:09 (4, 4)\n");
    EXPECT_EQ(findSeq("09:30:10", 1), "(5, 7)") << "all of them, whatever the volume";
    EXPECT_EQ(pairsText(*model), pairs);
}

TEST_F(TradeSplitTest, shouldFindNoneBehindTheLastPairWhenNoVolumeIsGiven)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 2), dealt("09:30:07", 10.00, 2)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 3)});
    EXPECT_EQ(findSeq("09:30:10", 0), "none (-1, -1)");
    EXPECT_EQ(findSeq("09:30:10", 1), "(2, 2)");
}

TEST_F(TradeSplitTest, shouldLeaveTheAnswerAloneWhenAStepFindsNone)
{
    TradeView::SeqPair rows{-7, -7};
    EXPECT_FALSE(model->tryMatch(secondOf("09:30:05"), 1, rows));
    givenThreeClosedPairs();
    EXPECT_FALSE(model->tryMatch(secondOf("09:30:16"), 1, rows));
    EXPECT_EQ(pairText(rows), "(-7, -7)");
}

TEST_F(TradeSplitTest, shouldSplitThePairBehindTheSecondWhenTheSecondHasItsOwn)
{
    givenThreeClosedPairs();
    TradeView::SeqPair rows{-7, -7};
    EXPECT_TRUE(model->tryMatch(secondOf("09:30:06"), 1, rows));
    EXPECT_EQ(pairText(rows), "(4, 4)");
    EXPECT_FALSE(model->tryMatch(secondOf("09:30:15"), 1, rows)) << "there is none behind the last";
}

// --- what splits do to what comes after ----------------------------------------------------------------------

TEST_F(TradeSplitTest, shouldGoOnMatchingBehindTheLastSnapshotWhenAnOlderOneWasSplit)
{
    givenThreeClosedPairs();
    findSeq("09:30:05", 3);
    feed.trades(live, {dealt("09:30:16", 10.00, 5)});
    EXPECT_EQ(pairsText(*model),
              "09:30:05 (0, 1)\n09:30:06 (2, 3)\n09:30:09 (4, 4)\n09:30:12 (5, 6)\n09:30:15 (7, 7)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 3);
}

} // namespace
