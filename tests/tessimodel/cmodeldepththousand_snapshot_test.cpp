#include "tests/tessimodel/thousandmodel.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {

using namespace tests;

// What a snapshot leaves behind in the model: rows, limits, last price, and when it counts at all.
class ThousandSnapshotTest : public ThousandTest {
protected:
    std::string rows() const { return bookText(model.m_snapshotBids, model.m_snapshotAsks); }
    int takeFlags() { return model.m_updateFlags.exchange(0); }
};

TEST_F(ThousandSnapshotTest, shouldKeepTenLevelsAndTheirLimitsWhenASnapshotComes)
{
    feed.snapshots(live, {level2("09:30:03")
                              .last(10.01)
                              .bids({{10.00, 11},
                                     {9.99, 12},
                                     {9.98, 13},
                                     {9.97, 14},
                                     {9.96, 15},
                                     {9.95, 16},
                                     {9.94, 17},
                                     {9.93, 18},
                                     {9.92, 19},
                                     {9.91, 20}})
                              .asks({{10.02, 21}, {10.03, 22}})});
    EXPECT_EQ(rows(), "bid 9.91 20h x? (0)\nbid 9.92 19h x? (0)\nbid 9.93 18h x? (0)\nbid 9.94 17h x? (0)\n"
                      "bid 9.95 16h x? (0)\nbid 9.96 15h x? (0)\nbid 9.97 14h x? (0)\nbid 9.98 13h x? (0)\n"
                      "bid 9.99 12h x? (0)\nbid 10.00 11h x? (0)\nask 10.02 21h x? (0)\nask 10.03 22h x? (0)\n");
    EXPECT_EQ(model.m_snapshotBids.begin()->first, 991);
    EXPECT_EQ(model.m_bidCeiling, 10.00);
    EXPECT_EQ(model.m_askFloor, 10.02);
    EXPECT_EQ(model.m_quoterLastPrice, 10.01);
    EXPECT_EQ(model.m_quoterTimetag, timeOf("09:30:03"));
    EXPECT_TRUE(model.m_continuous);
}

TEST_F(ThousandSnapshotTest, shouldReplaceAllRowsWhenTheNextSnapshotComes)
{
    feed.snapshots(live, {level2("09:30:03").bids({{10.00, 11}, {9.99, 12}}).ask(10.02, 21)});
    feed.snapshots(live, {level2("09:30:06").bid(9.98, 5)});
    EXPECT_EQ(rows(), "bid 9.98 5h x? (0)\n");
    EXPECT_EQ(model.m_bidCeiling, 9.98);
    EXPECT_EQ(model.m_askFloor, 10000000000.0);
}

TEST_F(ThousandSnapshotTest, shouldAcceptASnapshotWhenItHasOneSideOnly)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.00, 5)});
    EXPECT_TRUE(model.m_continuous);
    EXPECT_TRUE(model.m_snapshotAsks.empty());
    EXPECT_EQ(model.m_askFloor, 10000000000.0);
    feed.snapshots(live, {level2("09:30:06").ask(10.02, 5)});
    EXPECT_TRUE(model.m_snapshotBids.empty());
    EXPECT_EQ(model.m_bidCeiling, 0.0);
    EXPECT_EQ(model.m_askFloor, 10.02);
}

TEST_F(ThousandSnapshotTest, shouldSkipLevelsWithoutAPriceAndGoOnWhenTheyStandInTheMiddle)
{
    constexpr double kNone = std::numeric_limits<double>::max();
    feed.snapshots(live, {level2("09:30:03")
                              .bids({{10.00, 1}, {0, 2}, {9.98, 3}, {kNone, 4}, {0.00001, 5}, {9.95, 6}})
                              .asks({{kNone, 1}, {10.03, 2}, {0, 9}, {10.05, 4}})});
    EXPECT_EQ(rows(), "bid 9.95 6h x? (0)\nbid 9.98 3h x? (0)\nbid 10.00 1h x? (0)\nask 10.03 2h x? (0)\n"
                      "ask 10.05 4h x? (0)\n");
    EXPECT_EQ(model.m_askFloor, 10.03);
}

TEST_F(ThousandSnapshotTest, shouldFindTheLimitsWhenLevelsAreOutOfOrder)
{
    feed.snapshots(
        live, {level2("09:30:03").bids({{9.98, 1}, {10.00, 2}, {9.99, 3}}).asks({{10.05, 1}, {10.02, 2}, {10.03, 3}})});
    EXPECT_EQ(model.m_bidCeiling, 10.00);
    EXPECT_EQ(model.m_askFloor, 10.02);
}

TEST_F(ThousandSnapshotTest, shouldCutVolumesTo32BitsAndKeyOddPricesWhenLevelsAreStrange)
{
    feed.snapshots(live, {level2("09:30:03").bids({{10.00, (1LL << 32) + 5}, {NAN, 7}, {1e300, 8}, {10.001, 9}})});
    ASSERT_EQ(model.m_snapshotBids.size(), 2u);
    EXPECT_EQ(model.m_snapshotBids.at(INT_MIN)->volume, 8) << "prices without a key share one";
    EXPECT_EQ(model.m_snapshotBids.at(1000)->volume, 9) << "the later level of a key stays";
    feed.snapshots(live, {level2("09:30:06").bids({{10.00, (1LL << 32) + 5}})});
    EXPECT_EQ(model.m_snapshotBids.at(1000)->volume, 5);
}

// --- which snapshots count ------------------------------------------------------------------------------------

TEST_F(ThousandSnapshotTest, shouldTakeTheLastRecordOnlyWhenABatchHasMore)
{
    for (const int kind : {history, moreHistory, live, 2}) {
        SCOPED_TRACE(kind);
        model.clear();
        Records hundred;
        for (int i = 0; i < 99; ++i)
            hundred.push_back(level2("09:30:01").last(9).bid(9.00, 5).ask(9.01, 5));
        hundred.push_back(level2("09:30:03").last(10.01).bid(10.00, 5));
        feed.snapshots(kind, hundred);
        EXPECT_EQ(rows(), "bid 10.00 5h x? (0)\n");
        EXPECT_EQ(model.m_quoterLastPrice, 10.01);
    }
}

TEST_F(ThousandSnapshotTest, shouldDropASnapshotWhenItIsNotNewerThanTheLast)
{
    feed.snapshots(live, {level2("09:30:03").last(10.01).volume(100).bid(10.00, 5).ask(10.02, 5)});
    for (const char* time : {"09:30:03", "09:30:02"}) {
        feed.snapshots(live, {level2(time).last(11.01).volume(900).bid(11.00, 7)});
        feed.snapshots(history, {level2(time).last(11.01).volume(900).bid(11.00, 7)});
        feed.snapshots(live, {level2(time).bid(11.00, 7).ask(11.00, 7)});
    }
    EXPECT_EQ(rows(), "bid 10.00 5h x? (0)\nask 10.02 5h x? (0)\n");
    EXPECT_EQ(model.m_quoterLastPrice, 10.01);
    EXPECT_EQ(model.m_quoterLastVolume, 0);
    EXPECT_TRUE(model.m_continuous) << "an old auction says nothing";
}

TEST_F(ThousandSnapshotTest, shouldDropItButKnowThatItIsAnAuctionWhenOneComes)
{
    feed.begin();
    feed.snapshots(live, {level2("14:56:57").last(10.01).volume(100).bid(10.00, 5).ask(10.02, 5)});
    takeFlags();
    feed.snapshots(live, {level2("14:57:03").last(10.05).volume(300).bid(10.01, 9).ask(10.01, 9)});
    EXPECT_FALSE(model.m_continuous);
    EXPECT_EQ(rows(), "bid 10.00 5h x? (0)\nask 10.02 5h x? (0)\n");
    EXPECT_EQ(model.m_quoterTimetag, timeOf("14:56:57"));
    EXPECT_EQ(model.m_quoterLastPrice, 10.01);
    EXPECT_EQ(model.m_quoterLastVolume, 0);
    EXPECT_EQ(takeFlags(), 0);
    feed.snapshots(live, {level2("14:57:00").bid(10.00, 6)});
    EXPECT_TRUE(model.m_continuous) << "newer than the last one that counted";
    EXPECT_EQ(rows(), "bid 10.00 6h x? (0)\n");
}

TEST_F(ThousandSnapshotTest, shouldTakeTheNewLoanPriceFromTheNextSnapshotOnWhenSet)
{
    feed.snapshots(live, {level2("09:30:03").last(10.01).alternativeLast(20.01).bid(10.00)});
    model.setNewLoan(true);
    EXPECT_EQ(model.m_quoterLastPrice, 10.01);
    feed.snapshots(live, {level2("09:30:06").last(10.02).alternativeLast(20.02).bid(10.00)});
    EXPECT_EQ(model.m_quoterLastPrice, 20.02);
    model.clear();
    EXPECT_TRUE(model.m_isNewLoan) << "a clear keeps it";
    feed.snapshots(live, {level2("09:30:03").last(10.01).alternativeLast(20.01).bid(10.00)});
    EXPECT_EQ(model.m_quoterLastPrice, 20.01);
}

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

} // namespace
