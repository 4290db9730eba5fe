#include "tests/tessimodel/queuemodel.h"

namespace {

using namespace tests;

class QueueSnapshotsTest : public QueueTest {
protected:
    // "09:30:03 with 09:30:03, joined 09:30:03, continuous": the snapshot, the queues, the pair.
    std::string state() const
    {
        const auto clock = [](const auto& record) { return record ? clockOf(record->timetag / 1000) : "none"; };
        return clock(model.m_quoter) + " with " + clock(model.m_levelOrder) + ", joined " +
               (model.m_rawTimetag == 0 ? "never" : clockOf(model.m_rawTimetag / 1000)) +
               (model.m_continuous ? ", continuous" : ", not continuous");
    }

    static Snapshot<quoter::QuoterDepthData> trading(const std::string& clock)
    {
        return level2(clock).bid(10.00).ask(10.01);
    }
    static Snapshot<quoter::QuoterDepthData> auction(const std::string& clock)
    {
        return level2(clock).bid(10.00).ask(10.00);
    }
};

// --- which are taken ------------------------------------------------------------------------------------------

TEST_F(QueueSnapshotsTest, shouldJoinTheTwoWhenTheyAreOfTheSameTime)
{
    feed.snapshots(live, {trading("09:30:03")});
    EXPECT_EQ(state(), "09:30:03 with none, joined never, continuous");
    feed.queues(live, {bestQueues("09:30:03")});
    EXPECT_EQ(state(), "09:30:03 with 09:30:03, joined 09:30:03, continuous");
    feed.queues(live, {bestQueues("09:30:06")});
    EXPECT_EQ(state(), "09:30:03 with 09:30:06, joined 09:30:03, continuous");
    feed.snapshots(live, {trading("09:30:06")});
    EXPECT_EQ(state(), "09:30:06 with 09:30:06, joined 09:30:06, continuous") << "whichever comes last";
}

TEST_F(QueueSnapshotsTest, shouldNotJoinThemWhenAMillisecondIsBetween)
{
    feed.snapshots(live, {trading("09:30:03")});
    feed.queues(live, {bestQueues("09:30:03.001")});
    EXPECT_EQ(state(), "09:30:03 with 09:30:03, joined never, continuous");
    EXPECT_EQ(slotsText(model.m_bids), "0-9: none\n");
    feed.snapshots(live, {trading("09:30:03.002")});
    EXPECT_EQ(state(), "09:30:03 with 09:30:03, joined never, continuous");
    EXPECT_EQ(slotsText(model.m_asks), "0-9: none\n");
}

TEST_F(QueueSnapshotsTest, shouldTakeOnlyWhatIsNewerWhenSnapshotsCome)
{
    feed.snapshots(live, {trading("09:30:03")});
    const auto first = model.m_quoter;
    feed.snapshots(live, {trading("09:30:03")});
    feed.snapshots(live, {trading("09:30:02.999")});
    EXPECT_EQ(model.m_quoter, first);
    feed.queues(live, {bestQueues("09:30:03")});
    const auto queue = model.m_levelOrder;
    feed.queues(live, {bestQueues("09:30:03")});
    feed.queues(live, {bestQueues("09:30:02")});
    EXPECT_EQ(model.m_levelOrder, queue);
    feed.snapshots(live, {trading("09:30:03.001")});
    feed.queues(live, {bestQueues("09:30:03.001")});
    EXPECT_NE(model.m_quoter, first);
    EXPECT_NE(model.m_levelOrder, queue);
}

// --- continuous trading ---------------------------------------------------------------------------------------

// The snapshot is dropped, and what it said about trading stays.
TEST_F(QueueSnapshotsTest, shouldLeaveItsVerdictWhenASnapshotIsOfAnAuction)
{
    feed.snapshots(live, {trading("09:30:03")});
    feed.snapshots(live, {auction("09:30:06")});
    EXPECT_EQ(state(), "09:30:03 with none, joined never, not continuous");
    feed.queues(live, {bestQueues("09:30:03")});
    EXPECT_EQ(state(), "09:30:03 with none, joined never, not continuous") << "queues wait for continuous trading";
    feed.snapshots(live, {trading("09:30:04")});
    EXPECT_EQ(state(), "09:30:04 with none, joined never, continuous") << "the dropped one had set no time";
    feed.queues(live, {bestQueues("09:30:04")});
    EXPECT_EQ(state(), "09:30:04 with 09:30:04, joined 09:30:04, continuous");
}

TEST_F(QueueSnapshotsTest, shouldKeepTheVerdictWhenASnapshotIsNotNewer)
{
    feed.snapshots(live, {trading("09:30:03")});
    feed.snapshots(live, {auction("09:30:03")});
    feed.snapshots(live, {auction("09:25:00")});
    EXPECT_EQ(state(), "09:30:03 with none, joined never, continuous");
    feed.snapshots(live, {auction("09:30:04")});
    feed.snapshots(live, {trading("09:30:03")});
    EXPECT_EQ(state(), "09:30:03 with none, joined never, not continuous");
}

TEST_F(QueueSnapshotsTest, shouldDropQueuesWhenNothingWasContinuousYet)
{
    feed.queues(live, {bestQueues("09:25:00")});
    feed.snapshots(live, {auction("09:25:00")});
    feed.queues(live, {bestQueues("09:25:00")});
    feed.snapshots(live, {level2("09:26:00")});
    feed.queues(live, {bestQueues("09:26:00")});
    EXPECT_EQ(state(), "none with none, joined never, not continuous");
}

TEST_F(QueueSnapshotsTest, shouldTakeASnapshotWhenOnlyOneSideIsQuoted)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.00)});
    EXPECT_EQ(state(), "09:30:03 with none, joined never, continuous");
    feed.snapshots(live, {level2("09:30:06").ask(10.00)});
    EXPECT_EQ(state(), "09:30:06 with none, joined never, continuous");
}

// --- batches --------------------------------------------------------------------------------------------------

TEST_F(QueueSnapshotsTest, shouldTakeTheLastRecordWhateverTheKindOfTheBatch)
{
    int minute = 30;
    for (const int kind : {history, moreHistory, live, 2, -1}) {
        const std::string clock = fmt::format("09:{}:", ++minute);
        feed.snapshots(kind, {auction(clock + "09"), trading(clock + "03")});
        feed.queues(kind, {bestQueues(clock + "09"), bestQueues(clock + "03")});
        EXPECT_EQ(state(), fmt::format("{0}03 with {0}03, joined {0}03, continuous", clock)) << kind;
    }
}

TEST_F(QueueSnapshotsTest, shouldDoNothingWhenABatchIsEmptyOrItsLastRecordOfAnotherType)
{
    feed.snapshots(live, {trading("09:30:03")});
    feed.queues(live, {bestQueues("09:30:03")});
    for (const int kind : {history, moreHistory, live}) {
        feed.snapshots(kind, {});
        feed.snapshots(kind, {trading("09:31:00"), nullptr});
        feed.snapshots(kind, {trading("09:31:00"), level1("09:31:03").bid(10.00)});
        feed.snapshots(kind, {trading("09:31:00"), bestQueues("09:31:03")});
        feed.queues(kind, {});
        feed.queues(kind, {bestQueues("09:31:00"), nullptr});
        feed.queues(kind, {bestQueues("09:31:00"), trading("09:31:03")});
    }
    EXPECT_EQ(state(), "09:30:03 with 09:30:03, joined 09:30:03, continuous");
}

TEST_F(QueueSnapshotsTest, shouldRaiseNoUpdateWhenSnapshotsAreJoined)
{
    feed.snapshots(live, {trading("09:30:03")});
    feed.queues(live, {bestQueues("09:30:03").bid(0.0, {100})});
    EXPECT_EQ(model.m_updateFlags, 0);
    EXPECT_FALSE(readQueues(model).updated);
}

} // namespace
