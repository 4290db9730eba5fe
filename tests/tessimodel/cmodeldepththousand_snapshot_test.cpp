#include "tests/tessimodel/thousandmodel.h"

namespace {

using namespace tests;

// What only the tick-built book does with a snapshot.
class ThousandSnapshotTest : public ThousandTest {
protected:
    int takeFlags() { return model.m_updateFlags.exchange(0); }
};

// --- updates --------------------------------------------------------------------------------------------------

TEST_F(ThousandSnapshotTest, shouldRaiseNothingWhenHistoriesAreNotIn)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.00)});
    EXPECT_EQ(takeFlags(), 0);
    feed.orders(history, {});
    feed.snapshots(live, {level2("09:30:06").bid(10.00)});
    EXPECT_EQ(takeFlags(), 0);
    EXPECT_EQ(model.m_quoterTimetag, timeOf("09:30:06"));
}

TEST_F(ThousandSnapshotTest, shouldRaiseRebuiltWhenTheBookHasSeenNoTick)
{
    feed.begin();
    takeFlags();
    feed.snapshots(live, {level2("09:30:03").bid(10.00)});
    EXPECT_EQ(takeFlags(), 1);
}

TEST_F(ThousandSnapshotTest, shouldRaiseChangedInPlaceOnlyWhenNewerThanEveryTick)
{
    feed.begin({order(1).buy(10.00).time("09:30:03")});
    takeFlags();
    feed.snapshots(live, {level2("09:30:02").bid(10.00)});
    feed.snapshots(live, {level2("09:30:03").bid(10.00)});
    EXPECT_EQ(takeFlags(), 0);
    feed.snapshots(live, {level2("09:30:03.001").bid(10.00)});
    EXPECT_EQ(takeFlags(), 4);
}

TEST_F(ThousandSnapshotTest, shouldRaiseAnyWayWhenTicksAreSuppressed)
{
    Thousand quiet(true, 1);
    quiet.setStock(keyOf("SZ", "000001"));
    BookFeed quietFeed(terminal, quiet);
    quietFeed.snapshots(live, {level2("09:30:01").bid(10.00)});
    EXPECT_EQ(quiet.m_updateFlags, 0) << "before the histories";
    quietFeed.begin({order(1).buy(10.00).time("09:30:30")});
    quiet.m_updateFlags = 0;
    quietFeed.snapshots(live, {level2("09:30:03").bid(10.00)});
    EXPECT_EQ(quiet.m_updateFlags.exchange(0), 2);
    quietFeed.begin();
    quiet.m_updateFlags = 0;
    quietFeed.snapshots(live, {level2("09:30:06").bid(10.00)});
    EXPECT_EQ(quiet.m_updateFlags, 1);
}

TEST_F(ThousandSnapshotTest, shouldLeaveTheBookAloneWhenASnapshotComes)
{
    feed.begin({order(1).buy(10.00).shares(300), order(2).sell(10.02).shares(500)});
    feed.snapshots(live, {level2("09:40:00").bids({{9.99, 7}, {9.98, 7}}).ask(10.00, 7)});
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 1:300\nask 1002 2:500\n");
    EXPECT_EQ(bookText(model.m_book), "bid 10.00 3h x1 (+3)\nask 10.02 5h x1 (+5)\n");
}

// The earlier records of a first push settle only what the base is, not the step.
TEST_F(ThousandSnapshotTest, shouldShowNoStepWhenTheFirstPushHasEarlierRecords)
{
    feed.snapshots(live, {level2("09:30:01").volume(100).bid(10.00), level2("09:30:02").volume(300).bid(10.00)});
    EXPECT_EQ(model.m_quoterLastVolume, 0);
    EXPECT_EQ(model.m_quoterVolumeTime, timeOf("09:30:02"));
    EXPECT_EQ(model.m_quoter->volume, 300);
}

} // namespace
