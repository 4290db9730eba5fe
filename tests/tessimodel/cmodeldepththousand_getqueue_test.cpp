#include "tests/tessimodel/thousandmodel.h"

namespace {

using namespace tests;

// The orders at one price. The ticks are of 09:30:00.
class ThousandGetQueueTest : public ThousandTest {
protected:
    ThousandGetQueueTest()
    {
        feed.begin({order(1).buy(10.00).shares(300), order(2).buy(10.00).shares(250), order(3).buy(9.99).shares(30),
                    order(4).sell(10.02).shares(500), order(5).buy(0).kind(2)});
    }

    std::shared_ptr<TC::SingleQueue> own(bool isBid, double price) { return model.m_book.getLevel(isBid, price); }
};

TEST_F(ThousandGetQueueTest, shouldBeTheBooksOwnLevelWhenNoSnapshotIsNewer)
{
    EXPECT_EQ(queueText(model.getQueue(true, 10.00)), "1:300 2:250");
    EXPECT_EQ(model.getQueue(true, 10.00), own(true, 10.00));
    EXPECT_EQ(model.getQueue(true, 10.004), own(true, 10.00));
    feed.snapshots(live, {level2("09:30:00").bid(10.00, 99)});
    EXPECT_EQ(model.getQueue(true, 10.00), own(true, 10.00)) << "a snapshot of the same time is not newer";
}

TEST_F(ThousandGetQueueTest, shouldBeEmptyWhenTheBookHasNoSuchLevel)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.01, 5).ask(10.03, 5)});
    EXPECT_EQ(queueText(model.getQueue(true, 10.01)), "none") << "even when the snapshot shows it";
    EXPECT_EQ(queueText(model.getQueue(false, 10.03)), "none");
    EXPECT_EQ(queueText(model.getQueue(false, 10.00)), "none");
}

TEST_F(ThousandGetQueueTest, shouldBeACopyCutFromTheFrontWhenTheSnapshotShowsLess)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.00, 2)});
    const auto queue = model.getQueue(true, 10.00);
    EXPECT_EQ(levelText(*queue), "[2:250-50] 200 x1 (+250)");
    EXPECT_NE(queue, own(true, 10.00));
    EXPECT_EQ(levelText(*own(true, 10.00)), "[1:300 2:250] 550 x2 (+250)");
}

TEST_F(ThousandGetQueueTest, shouldBeACopyFilledUpWhenTheSnapshotShowsMore)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.00, 2006).ask(10.02, 6)});
    EXPECT_EQ(levelText(*model.getQueue(true, 10.00)), "[1:300 2:250 3:100000 4:100000 5:50] 200600 x5 (+250)");
    EXPECT_EQ(levelText(*model.getQueue(false, 10.02)), "[4:500 5:100] 600 x2 (+500)");
}

TEST_F(ThousandGetQueueTest, shouldBeTheLevelItselfWhenTheSnapshotShowsTheSameHands)
{
    feed.snapshots(live, {level2("09:30:03").bids({{10.00, 5}, {9.99, 1}})});
    EXPECT_EQ(model.getQueue(true, 10.00), own(true, 10.00)) << "550 shares show as 5 hands";
    EXPECT_EQ(model.getQueue(true, 9.99), own(true, 9.99)) << "and 30 as one";
}

TEST_F(ThousandGetQueueTest, shouldBeTheLevelItselfWhenTheSnapshotDoesNotShowThePrice)
{
    feed.snapshots(live, {level2("09:30:03").bid(9.98, 5)});
    EXPECT_EQ(model.getQueue(true, 10.00), own(true, 10.00));
    EXPECT_EQ(model.getQueue(false, 10.02), own(false, 10.02));
    EXPECT_EQ(queueText(model.getQueue(true, -0.025)), "5:100") << "market orders are in no snapshot";
}

// Each level is compared by its own time, whatever came at others.
TEST_F(ThousandGetQueueTest, shouldGoByTheLevelsOwnTimeWhenOtherLevelsChanged)
{
    feed.snapshots(live, {level2("09:30:03").bids({{10.00, 2}, {9.99, 7}})});
    feed.orders(live, {order(11).buy(9.99).shares(100).time("09:30:04")});
    EXPECT_EQ(model.getQueue(true, 9.99), own(true, 9.99));
    EXPECT_EQ(queueText(model.getQueue(true, 10.00)), "2:250-50");
    feed.trades(live, {fill(1, 9).shares(100).time("09:30:04")});
    EXPECT_EQ(model.getQueue(true, 10.00), own(true, 10.00));
}

TEST_F(ThousandGetQueueTest, shouldHaveNoOrdersWhenTheSnapshotShowsNoVolume)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.00, 0)});
    EXPECT_EQ(levelText(*model.getQueue(true, 10.00)), "[] 0 x0 (+250)");
}

TEST_F(ThousandGetQueueTest, shouldBeEmptyWhenThereIsNoInstrument)
{
    Thousand lost;
    EXPECT_EQ(queueText(lost.getQueue(true, 10.00)), "none");
}

TEST_F(ThousandGetQueueTest, shouldCountNoVolumeAsNoHandsWhenTheLevelHasNone)
{
    feed.orders(live, {order(6).buy(9.98).shares(0)});
    feed.snapshots(live, {level2("09:30:03").bid(9.98, 1)});
    EXPECT_NE(model.getQueue(true, 9.98), own(true, 9.98));
    EXPECT_EQ(levelText(*model.getQueue(true, 9.98)), "[6:0 7:100] 100 x2 (0)");
}

TEST_F(ThousandGetQueueTest, shouldCompareInThirtyTwoBitsWhenALevelIsHuge)
{
    feed.orders(live, {order(6).buy(9.98).shares((1LL << 32) + 500)});
    feed.snapshots(live, {level2("09:30:03").bid(9.98, 5)});
    EXPECT_EQ(model.getQueue(true, 9.98), own(true, 9.98));
}

TEST_F(ThousandGetQueueTest, shouldLeaveTheLevelsToTheBookWhenRowsAreCorrected)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.00, 7)});
    const long holders = model.m_book.m_bidLevels.at(1000).use_count();
    readBook(model);
    EXPECT_EQ(model.m_book.m_bidLevels.at(1000).use_count(), holders);
    EXPECT_EQ(model.m_bidRows.at(1000)->volume, 7);
}

} // namespace
