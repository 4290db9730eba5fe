#include "tests/tessimodel/tradelist.h"

#include <cfloat>

namespace {

using namespace tests;

// What a snapshot gets while its rows and others are still to come.
class TradeOpenPairTest : public TradeListTest {
protected:
    // Delivers one live trade and tells the pairs that there are then.
    std::string pairsAfter(const Trade& trade)
    {
        feed.trades(live, {trade});
        return pairsText(*model);
    }

    // Histories that hold nothing yet.
    void begin(const Records& snapshots = {})
    {
        feed.trades(history, {});
        feed.snapshots(history, snapshots);
    }
};

// --- the walk runs off the end -------------------------------------------------------------------------------

// A best row counts only when a later row or a farther one has closed the walk: the next trade may still be nearer.
TEST_F(TradeOpenPairTest, shouldForgetTheBestRowWhenTheWalkRunsOffTheEnd)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 2), dealt("09:30:02", 10.01, 5)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 3)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 2)\n") << "open: all the rows";
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
}

TEST_F(TradeOpenPairTest, shouldGrowUntilItIsClosedAndThenShrinkWhenTradesCome)
{
    begin({snapshot("09:30:03", 10.00, 3)});
    EXPECT_EQ(pairsText(*model), "");
    EXPECT_EQ(pairsAfter(dealt("09:30:01", 10.00, 1)), "09:30:03 (0, 0)\n");
    EXPECT_EQ(pairsAfter(dealt("09:30:01", 10.00, 2)), "09:30:03 (0, 1)\n");
    EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.01, 1)), "09:30:03 (0, 2)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
    EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.00, 1)), "09:30:03 (0, 1)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
    EXPECT_EQ(pairsAfter(dealt("09:30:04", 10.00, 1)), "09:30:03 (0, 1)\n") << "no snapshot waits for the rest";
    feed.snapshots(live, {snapshot("09:30:06", 10.00, 6)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 1)\n09:30:06 (2, 4)\n");
    EXPECT_EQ(pairsAfter(dealt("09:30:07", 10.00, 1)), "09:30:03 (0, 1)\n09:30:06 (2, 4)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 1);
}

// Only the snapshot that comes next has an open pair, those behind it have none.
TEST_F(TradeOpenPairTest, shouldOpenForTheNextSnapshotOnlyWhenSeveralWait)
{
    begin({snapshot("09:30:03", 10.00, 2), snapshot("09:30:06", 10.00, 4), snapshot("09:30:09", 10.00, 9)});
    EXPECT_EQ(pairsAfter(dealt("09:30:01", 10.00, 1)), "09:30:03 (0, 0)\n");
    EXPECT_EQ(pairsAfter(dealt("09:30:05", 10.00, 1)), "09:30:03 (0, 0)\n09:30:06 (1, 1)\n");
    EXPECT_EQ(pairsAfter(dealt("09:30:05", 10.00, 1)), "09:30:03 (0, 0)\n09:30:06 (1, 2)\n");
    EXPECT_EQ(pairsAfter(dealt("09:30:08", 10.00, 1)), "09:30:03 (0, 0)\n09:30:06 (1, 2)\n09:30:09 (3, 3)\n");
}

TEST_F(TradeOpenPairTest, shouldGiveASnapshotNoRowsWhenItsWaitIsOverBeforeTheyCome)
{
    begin({snapshot("09:30:03", 10.00, 1)});
    feed.trades(live, {dealt("09:30:01", 10.00, 1)});
    feed.trades(live, {dealt("09:30:02", 10.00, 1)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n");
    feed.snapshots(live, {snapshot("09:30:06", 10.00, 2)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n09:30:06 (1, 1)\n");
    feed.snapshots(live, {snapshot("09:30:09", 10.00, 3)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n09:30:06 (1, 1)\n") << "the pair before it is still open";
}

// --- a snapshot without a row --------------------------------------------------------------------------------

// A snapshot to which no row belongs stands at the row before, and its rows begin where the next one's do.
TEST_F(TradeOpenPairTest, shouldStandAtTheRowBeforeWhenASnapshotHasNoRow)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 2), dealt("09:30:07", 10.00, 3), dealt("09:30:10", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 2), snapshot("09:30:05", 10.00, 3),
                             snapshot("09:30:06", 10.00, 4), snapshot("09:30:09", 10.00, 7)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n09:30:05 (0, 0)\n09:30:06 (0, 0)\n09:30:09 (1, 1)\n");
}

TEST_F(TradeOpenPairTest, shouldStandAtRowZeroAndKeepItForTheNextWhenTheFirstSnapshotsHaveNoRow)
{
    feed.trades(history, {dealt("09:30:04", 10.00, 2), dealt("09:30:05", 10.00, 2), dealt("09:30:07", 10.00, 3)});
    feed.snapshots(history,
                   {snapshot("09:30:00", 10.00, 1), snapshot("09:30:03", 10.00, 2), snapshot("09:30:06", 10.00, 6)});
    EXPECT_EQ(pairsText(*model), "09:30:00 (0, 0)\n09:30:03 (0, 0)\n09:30:06 (0, 1)\n");
}

// The next run begins behind the last pair, and that one covers row 0: the row is lost to the snapshots to come.
TEST_F(TradeOpenPairTest, shouldBeginBehindRowZeroWhenASnapshotBeforeAllRowsWasMatchedInAnEarlierRun)
{
    begin({snapshot("09:30:00", 10.00, 1)});
    EXPECT_EQ(pairsAfter(dealt("09:30:01", 10.00, 1)), "09:30:00 (0, 0)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
    feed.snapshots(live, {snapshot("09:30:03", 10.00, 2)});
    EXPECT_EQ(pairsText(*model), "09:30:00 (0, 0)\n");
    EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.00, 1)), "09:30:00 (0, 0)\n09:30:03 (1, 1)\n");
}

TEST_F(TradeOpenPairTest, shouldOpenBehindThePairWhenASnapshotBeforeAllRowsWasMatchedInTheSameRun)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:00", 10.00, 1), snapshot("09:30:03", 10.00, 9)});
    EXPECT_EQ(pairsText(*model), "09:30:00 (0, 0)\n09:30:03 (1, 1)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
}

// The snapshot that waits has looked at row 0 in that run, and begins behind it in the next.
TEST_F(TradeOpenPairTest, shouldLookAtTheRowsAnewWhenTheNextRunBeginsAtALaterRow)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:00", 10.00, 1), snapshot("09:30:03", 10.00, 3)});
    EXPECT_EQ(pairsText(*model), "09:30:00 (0, 0)\n09:30:03 (1, 1)\n");
    EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.00, 1)), "09:30:00 (0, 0)\n09:30:03 (1, 2)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0) << "two hands from row 1 on are just what it waits for";
    EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.00, 1)), "09:30:00 (0, 0)\n09:30:03 (1, 2)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 1) << "three are more";
}

TEST_F(TradeOpenPairTest, shouldOpenNothingWhenTheOnlyRowIsBehindASnapshotWithoutRows)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:00", 10.00, 1), snapshot("09:30:03", 10.00, 2)});
    EXPECT_EQ(pairsText(*model), "09:30:00 (0, 0)\n");
}

// --- snapshots and rows that wait for each other -------------------------------------------------------------

TEST_F(TradeOpenPairTest, shouldMatchTheSameWhenSnapshotsComeBeforeTheRows)
{
    const Records rows{dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 2), dealt("09:30:04", 10.00, 1),
                       dealt("09:30:05", 10.00, 1)};
    const Records snapshots{snapshot("09:30:03", 10.00, 3), snapshot("09:30:06", 10.00, 5)};
    const std::string pairs = "09:30:03 (0, 1)\n09:30:06 (2, 3)\n";

    feed.snapshots(history, snapshots);
    EXPECT_EQ(pairsText(*model), "");
    feed.trades(history, rows);
    EXPECT_EQ(pairsText(*model), pairs);

    feed.snapshots(history, snapshots);
    EXPECT_EQ(pairsText(*model), pairs);
}

TEST_F(TradeOpenPairTest, shouldWaitForRowsWhenTheSnapshotIsLaterThanAllOfThem)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1)});
    feed.snapshots(history, {snapshot("10:30:00", 10.00, 1)});
    EXPECT_EQ(pairsText(*model), "10:30:00 (0, 0)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
}

TEST_F(TradeOpenPairTest, shouldDoNothingWhenTheLastMatchedSnapshotHasNoPair)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:04", 10.00, 1), dealt("09:30:07", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 1)});
    model->m_seqPairs.clear();
    model->append(model->m_stock, snapshot("09:30:06", 10.00, 2));
    EXPECT_EQ(model->tryMatch(model->m_stock), 1);
    EXPECT_EQ(pairsText(*model), "");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
}

TEST_F(TradeOpenPairTest, shouldTellWhetherThereWasAnythingToDoWhenMatching)
{
    begin();
    const auto stock = model->m_stock;
    EXPECT_EQ(model->tryMatch(stock), 1) << "neither rows nor snapshots";
    model->append(stock, dealt("09:30:01", 10.00, 1));
    EXPECT_EQ(model->tryMatch(stock), 1) << "no snapshot";
    model->append(stock, snapshot("09:30:03", 10.00, 1));
    EXPECT_EQ(model->tryMatch(stock), 2) << "rows ran out";
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n");
    model->append(stock, dealt("09:30:04", 10.00, 1));
    EXPECT_EQ(model->tryMatch(stock), 2) << "snapshots ran out";
    EXPECT_EQ(model->tryMatch(stock), 1) << "the snapshot is matched";
    feed.trades(history, {});
    EXPECT_EQ(model->tryMatch(stock), 1) << "no rows";
}

TEST_F(TradeOpenPairTest, shouldChangeNothingWhenTheInstrumentIsAnotherByNow)
{
    begin();
    const auto former = model->m_stock;
    model->append(former, dealt("09:30:01", 10.00, 1));
    model->append(former, dealt("09:30:04", 10.00, 1));
    model->append(former, snapshot("09:30:03", 10.00, 1));
    model->setStock(keyOf("SZ", "000002"));
    EXPECT_EQ(model->tryMatch(former), -1);
    EXPECT_EQ(pairsText(*model), "");
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
}

// Pairs keep the positions that they were made with: matching goes on when there are rows behind them again.
TEST_F(TradeOpenPairTest, shouldWaitUntilRowsCatchUpWhenAFilterTookThemAway)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 2), dealt("09:30:04", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 3)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 1)\n");
    filter(atLeastHands(2));
    EXPECT_EQ(model->m_rowCount, 1);
    feed.snapshots(live, {snapshot("09:30:06", 10.00, 9)});
    EXPECT_EQ(pairsAfter(dealt("09:30:05", 10.00, 2)), "09:30:03 (0, 1)\n");
    EXPECT_EQ(model->tryMatch(model->m_stock), 1);
    EXPECT_EQ(pairsAfter(dealt("09:30:05", 10.00, 2)), "09:30:03 (0, 1)\n09:30:06 (2, 2)\n");
    EXPECT_EQ(pairsAfter(dealt("09:30:07", 10.00, 2)), "09:30:03 (0, 1)\n09:30:06 (2, 2)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 1);
}

// --- what may change while a snapshot waits ------------------------------------------------------------------

class WaitingSnapshotTest : public TradeOpenPairTest {
protected:
    // A snapshot of two hands that has looked at two rows, of one hand each.
    void givenAWaitingSnapshot()
    {
        begin({waiting});
        feed.trades(live, {dealt("09:30:01", 10.00, 1)});
        EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.00, 1)), "09:30:03 (0, 1)\n");
        EXPECT_EQ(model->m_lastMatchedQuote, -1);
    }

    const std::shared_ptr<quoter::QuoterDepthData> waiting = snapshot("09:30:03", 10.00, 2);
};

TEST_F(WaitingSnapshotTest, shouldLookAtAllRowsAnewWhenTheSnapshotsLastPriceChanged)
{
    waiting->lastPrice = DBL_MAX;
    givenAWaitingSnapshot();
    waiting->lastPrice = 10.00; // as the summary of the book puts a price that is missing
    EXPECT_EQ(pairsAfter(dealt("09:30:04", 10.00, 1)), "09:30:03 (0, 1)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
}

TEST_F(WaitingSnapshotTest, shouldLookAtTheRowsThatPassWhenTheFilterChanged)
{
    givenAWaitingSnapshot();
    filter(atLeastHands(2));
    EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.00, 2)), "09:30:03 (0, 0)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, -1) << "two hands so far";
    EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.00, 2)), "09:30:03 (0, 0)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0) << "four hands are farther";
}

TEST_F(WaitingSnapshotTest, shouldLookAtTheNewRowsWhenTheTradesBeginAnew)
{
    givenAWaitingSnapshot();
    feed.trades(history, {dealt("09:30:01", 10.00, 1)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n");
    EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.00, 1)), "09:30:03 (0, 1)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
    EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.00, 1)), "09:30:03 (0, 1)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
}

TEST_F(WaitingSnapshotTest, shouldLookAtTheNewRowsWhenAsManyTakeThePlaceOfTheOld)
{
    givenAWaitingSnapshot();
    feed.trades(history, {dealt("09:30:01", 10.00, 2), dealt("09:30:04", 10.00, 1)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
}

TEST_F(WaitingSnapshotTest, shouldLookForTheNewTargetWhenTheSnapshotsBeginAnew)
{
    givenAWaitingSnapshot();
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 1)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
}

TEST_F(WaitingSnapshotTest, shouldCountTheNewHandsWhenTheInstrumentHasOthers)
{
    givenAWaitingSnapshot();
    terminal.instruments.add(stock("SZ", "000001", {100017}));
    model->initStockParams();
    EXPECT_EQ(model->m_volumeUnit, 10);
    EXPECT_EQ(pairsAfter(dealt("09:30:02", 10.00, 1)), "09:30:03 (0, 0)\n") << "ten hands a row";
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
}

} // namespace
