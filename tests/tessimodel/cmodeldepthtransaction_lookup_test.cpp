#include "indexui/tessimodel/cmodeltransaction.h"
#include "tests/tessimodel/tradelist.h"

#include <limits>

namespace {

using namespace tests;

class TradeLookupTest : public TradeListTest {
protected:
    // The row at or before a second, and the one at or after it.
    int upTo(const std::string& clock) const { return model->find(secondOf(clock), true); }
    int from(const std::string& clock) const { return model->find(secondOf(clock), false); }

    // The rows that a tick of that time and volume gets.
    std::string tryFind(const std::string& clock, int volume) const
    {
        TC::TransData tick;
        tick.timetag = secondOf(clock);
        tick.volume = volume;
        TradeList::SeqPair rows{-7, -7};
        return model->tryFind(&tick, rows) ? pairText(rows) : "none " + pairText(rows);
    }
};

// --- rows by index -------------------------------------------------------------------------------------------

TEST_F(TradeLookupTest, shouldGiveARowThatPassesWhenTheIndexIsInRange)
{
    EXPECT_EQ(model->getData(0), nullptr);
    filter(atLeastHands(2));
    feed.trades(history, {dealt("09:30:00", 10.00, 1), dealt("09:30:01", 10.00, 2), dealt("09:30:02", 10.00, 3)});
    EXPECT_EQ(model->getData(0), model->m_rows.at(1));
    EXPECT_EQ(model->getData(1), model->m_rows.at(2));
    for (const int outside : {-1, 2, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_EQ(model->getData(outside), nullptr) << outside;
}

TEST_F(TradeLookupTest, shouldNumberTheRowsOfASecondWhenTracingBack)
{
    feed.trades(history, {dealt("09:30:00", 10.00, 1), dealt("09:30:00.999", 10.00, 2), dealt("09:30:01", 10.00, 1),
                          dealt("09:30:00", 10.00, 2), dealt("09:30:00", 10.00, 2), dealt("09:30:00", 10.00, 2)});
    const int expected[] = {1, 2, 1, 1, 2, 3};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(model->tracebackSeq(i), expected[i]) << i;
    EXPECT_EQ(model->tracebackSeq(-1), 1);
    EXPECT_EQ(model->tracebackSeq(6), 1);
    filter(atLeastHands(2));
    EXPECT_EQ(model->tracebackSeq(3), 4) << "of the rows that pass";
    EXPECT_EQ(model->tracebackSeq(4), 1) << "out of range by now";
}

TEST_F(TradeLookupTest, shouldCompareLowBitsOfSecondsWhenTracingBack)
{
    constexpr __int64 kTwoTo32 = 4294967296;
    Records trades;
    for (const __int64 second : {kTwoTo32 + 100, 2 * kTwoTo32 + 100}) {
        const std::shared_ptr<quoter::TransactionData> trade = fill(1, 2).at(10.00);
        trade->timetag = second * 1000;
        trades.push_back(trade);
    }
    TC::SDepthFilterParam wholeDay;
    wholeDay.startTime = 0;
    wholeDay.endTime = 86400000;
    filter(wholeDay);
    feed.trades(history, trades);
    ASSERT_EQ(model->m_rowCount, 2);
    EXPECT_EQ(model->tracebackSeq(1), 2);
}

// --- rows by second ------------------------------------------------------------------------------------------

TEST_F(TradeLookupTest, shouldFindNoRowWhenThereIsNone)
{
    EXPECT_EQ(upTo("09:30:00"), -1);
    EXPECT_EQ(from("09:30:00"), -1);
    filter(atLeastHands(5));
    feed.trades(history, {dealt("09:30:00", 10.00, 1)});
    EXPECT_EQ(upTo("09:30:00"), -1) << "none passes";
    EXPECT_EQ(from("09:30:00"), -1);
}

struct FindCase {
    const char* clock;
    int upTo, from;
};

TEST_F(TradeLookupTest, shouldFindTheNearestRowWhenAskedByTheSecond)
{
    feed.trades(history, {dealt("09:30:10", 10.00, 1), dealt("09:30:10", 10.00, 1), dealt("09:30:20", 10.00, 1),
                          dealt("09:31:00", 10.00, 1), dealt("09:31:00", 10.00, 1), dealt("09:33:30", 10.00, 1)});
    const FindCase cases[] = {
        {"09:29:00", 0, 0},                       // before the first minute: also the row before is row 0
        {"09:30:09", 0, 0},                       // before the first row, in its minute
        {"09:30:10", 1, 0},                       // exact, of two rows
        {"09:30:15", 1, 2},                       // in a gap within a minute
        {"09:30:20", 2, 2},                       // exact
        {"09:30:59", 2, 3},                       // in a gap up to the next minute
        {"09:31:00", 4, 3},                       // exact, at the start of a minute
        {"09:31:01", 4, 5},                       // in a gap over whole minutes
        {"09:32:30", 4, 5},                       // in a minute without rows
        {"09:33:00", 4, 5},                       // in the last minute, before its row
        {"09:33:29", 4, 5},   {"09:33:30", 5, 5}, // exact, the last row
        {"09:33:31", -1, -1},                     // after the last
        {"10:00:00", -1, -1},
    };
    for (const FindCase& c : cases) {
        EXPECT_EQ(upTo(c.clock), c.upTo) << c.clock;
        EXPECT_EQ(from(c.clock), c.from) << c.clock;
    }
}

TEST_F(TradeLookupTest, shouldFindTheLastRowWhenSeveralAreOfTheLastSecond)
{
    feed.trades(history, {dealt("09:30:10", 10.00, 1), dealt("09:30:20", 10.00, 1), dealt("09:30:20", 10.00, 1)});
    EXPECT_EQ(upTo("09:30:20"), 2);
    EXPECT_EQ(from("09:30:20"), 1);
}

// The walk begins at the minute of the second. Rows with times that go back are found from there on only.
TEST_F(TradeLookupTest, shouldBeginAtTheMinuteWhenEarlierRowsWouldAnswer)
{
    feed.trades(history, {dealt("09:31:30", 10.00, 1), dealt("09:30:10", 10.00, 1), dealt("09:30:20", 10.00, 1)});
    EXPECT_EQ(minutesText(*model), "09:30:00 1\n09:31:00 0\n");
    EXPECT_EQ(from("09:30:05"), 1);
    EXPECT_EQ(upTo("09:30:15"), 1);
    EXPECT_EQ(from("09:31:10"), 0);
    EXPECT_EQ(from("09:29:00"), 0) << "no minute is as early: from row 0 on";
}

TEST_F(TradeLookupTest, shouldBeginTooLateWhenTheFilterWasSetAfterTheRowsCame)
{
    feed.trades(history, {dealt("09:30:10", 10.00, 1), dealt("09:30:20", 10.00, 1), dealt("09:30:30", 10.00, 1),
                          dealt("09:31:10", 10.00, 2), dealt("09:31:20", 10.00, 2), dealt("09:31:30", 10.00, 2),
                          dealt("09:31:40", 10.00, 2), dealt("09:31:50", 10.00, 2)});
    EXPECT_EQ(from("09:31:00"), 3);
    filter(atLeastHands(2));
    EXPECT_EQ(from("09:31:00"), 3) << "now the row of 09:31:40";
    EXPECT_EQ(upTo("09:31:15"), 2) << "the row before the first that is looked at";
    EXPECT_EQ(from("09:30:00"), 0);

    TC::SDepthFilterParam late = atLeastHands(2);
    late.startTime = 34290000; // 09:31:30
    filter(late);
    EXPECT_EQ(from("09:31:10"), -1) << "the walk begins behind the last row";
    EXPECT_EQ(upTo("09:31:50"), 2) << "but the last row's own second is told";
    EXPECT_EQ(from("09:31:50"), 2);
}

TEST_F(TradeLookupTest, shouldBeginAtRowZeroWhenNoRowHadPassedByThatMinute)
{
    filter(atLeastHands(2));
    feed.trades(history, {dealt("09:30:10", 10.00, 1), dealt("09:30:20", 10.00, 2), dealt("09:30:30", 10.00, 2)});
    EXPECT_EQ(minutesText(*model), "09:30:00 -1\n");
    EXPECT_EQ(from("09:30:10"), 0);
    EXPECT_EQ(upTo("09:30:25"), 0);
}

TEST_F(TradeLookupTest, shouldGiveThePairOfThatVerySecondWhenThereIsOne)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 1), dealt("09:30:05", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 2), snapshot("09:30:06", 10.00, 3)});
    EXPECT_EQ(pairText(model->find(secondOf("09:30:03"))), "(0, 1)");
    EXPECT_EQ(pairText(model->find(secondOf("09:30:06"))), "(2, 2)") << "open";
    for (const char* clock : {"09:30:02", "09:30:04", "09:30:09", "00:00:00"})
        EXPECT_EQ(pairText(model->find(secondOf(clock))), "(-1, -1)") << clock;
}

// --- rows of a tick that is newer than the snapshots ---------------------------------------------------------

class TradeTickTest : public TradeLookupTest {
protected:
    // Row 0 belongs to the snapshot of 09:30:03, and rows 1 to 3 with 2, 1 and 3 hands are free.
    void givenFreeRows()
    {
        feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:04", 10.00, 2), dealt("09:30:04", 10.00, 1),
                              dealt("09:30:05", 10.00, 3)});
        feed.snapshots(history, {snapshot("09:30:03", 10.00, 1)});
        EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n");
    }
};

TEST_F(TradeTickTest, shouldTakeTheLatestFreeRowsThatMakeUpTheVolume)
{
    givenFreeRows();
    EXPECT_EQ(tryFind("09:30:06", 1), "(3, 3)") << "the last row alone has enough";
    EXPECT_EQ(tryFind("09:30:06", 3), "(3, 3)");
    EXPECT_EQ(tryFind("09:30:06", 4), "(2, 3)");
    EXPECT_EQ(tryFind("09:30:06", 5), "(1, 3)");
    EXPECT_EQ(tryFind("09:30:06", 6), "(1, 3)");
    EXPECT_EQ(tryFind("09:30:06", 7), "(1, 3)") << "never reached: all that are free";
    EXPECT_EQ(tryFind("09:30:06", 0), "(3, 3)");
    EXPECT_EQ(tryFind("09:30:06", -5), "(3, 3)");
}

TEST_F(TradeTickTest, shouldAnswerNoWhenTheTickIsNoneOrNotNewer)
{
    givenFreeRows();
    TradeList::SeqPair rows{-7, -7};
    EXPECT_FALSE(model->tryFind(nullptr, rows));
    EXPECT_EQ(pairText(rows), "(-7, -7)");
    EXPECT_EQ(tryFind("09:30:03", 1), "none (-7, -7)");
    EXPECT_EQ(tryFind("09:30:02", 1), "none (-7, -7)");
    EXPECT_EQ(tryFind("09:30:04", 1), "(3, 3)");
}

// It is the last snapshot that counts, whether it is matched or not.
TEST_F(TradeTickTest, shouldAnswerNoWhenASnapshotThatWaitsIsNewer)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 1), snapshot("09:30:06", 10.00, 2)});
    feed.trades(live, {dealt("09:30:02", 10.00, 1)});
    EXPECT_EQ(tryFind("09:30:06", 1), "none (-7, -7)");
}

TEST_F(TradeTickTest, shouldAnswerNoWhenNoRowIsFree)
{
    EXPECT_EQ(tryFind("09:30:01", 1), "none (-7, -7)") << "there is none at all";
    feed.trades(history, {dealt("09:30:01", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 1)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n");
    EXPECT_EQ(tryFind("09:30:04", 1), "none (-7, -7)") << "an open pair has it";
}

TEST_F(TradeTickTest, shouldTakeAllRowsAsFreeWhenThereIsNoPair)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:01", 10.00, 1), dealt("09:30:01", 10.00, 1)});
    EXPECT_EQ(tryFind("09:00:00", 2), "(1, 2)") << "without snapshots any tick is new";
    EXPECT_EQ(tryFind("09:30:01", 9), "(0, 2)");
}

TEST_F(TradeTickTest, shouldCountRowsThatPassWhenAFilterIsSet)
{
    givenFreeRows();
    filter(atLeastHands(2));
    EXPECT_EQ(tryFind("09:30:06", 9), "(1, 1)") << "the pair still says that row 0 is taken";
}

TEST_F(TradeTickTest, shouldAddHandsBeyondAnIntWhenRowsAreHuge)
{
    filter({});
    follow(stock("SZ", "128001", {100017}));
    const std::shared_ptr<quoter::QuoterBase> huge = fill(1, 2).time("09:30:01").at(10.00).shares(2000000000);
    feed.trades(history, Records(12, huge));
    EXPECT_EQ(tryFind("09:30:02", std::numeric_limits<int>::max()), "(1, 11)") << "eleven of 200,000,000 hands";
}

} // namespace
