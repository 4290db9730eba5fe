#include "tests/tessimodel/bookmodels.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {

using namespace tests;

// What a snapshot leaves behind in the model: rows, limits, last price, and when it counts at all.
template <class Model>
class BookModelSnapshotTest : public BookModelTest<Model> {
protected:
    std::string rows() const { return bookText(this->model.m_snapshotBids, this->model.m_snapshotAsks); }
};

TYPED_TEST_SUITE(BookModelSnapshotTest, BookModels, BookModelNames);

TYPED_TEST(BookModelSnapshotTest, shouldKeepTenLevelsAndTheirLimitsWhenASnapshotComes)
{
    this->feed.snapshots(live, {level2("09:30:03")
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
    EXPECT_EQ(this->rows(), "bid 9.91 20h x? (0)\nbid 9.92 19h x? (0)\nbid 9.93 18h x? (0)\nbid 9.94 17h x? (0)\n"
                            "bid 9.95 16h x? (0)\nbid 9.96 15h x? (0)\nbid 9.97 14h x? (0)\nbid 9.98 13h x? (0)\n"
                            "bid 9.99 12h x? (0)\nbid 10.00 11h x? (0)\nask 10.02 21h x? (0)\nask 10.03 22h x? (0)\n");
    EXPECT_EQ(this->model.m_snapshotBids.begin()->first, 991);
    EXPECT_EQ(this->model.m_bidCeiling, 10.00);
    EXPECT_EQ(this->model.m_askFloor, 10.02);
    EXPECT_EQ(this->model.m_quoterLastPrice, 10.01);
    EXPECT_EQ(this->model.m_quoterTimetag, timeOf("09:30:03"));
    EXPECT_TRUE(this->model.m_continuous);
}

TYPED_TEST(BookModelSnapshotTest, shouldReplaceAllRowsWhenTheNextSnapshotComes)
{
    this->feed.snapshots(live, {level2("09:30:03").bids({{10.00, 11}, {9.99, 12}}).ask(10.02, 21)});
    this->feed.snapshots(live, {level2("09:30:06").bid(9.98, 5)});
    EXPECT_EQ(this->rows(), "bid 9.98 5h x? (0)\n");
    EXPECT_EQ(this->model.m_bidCeiling, 9.98);
    EXPECT_EQ(this->model.m_askFloor, 10000000000.0);
}

TYPED_TEST(BookModelSnapshotTest, shouldAcceptASnapshotWhenItHasOneSideOnly)
{
    this->feed.snapshots(live, {level2("09:30:03").bid(10.00, 5)});
    EXPECT_TRUE(this->model.m_continuous);
    EXPECT_TRUE(this->model.m_snapshotAsks.empty());
    EXPECT_EQ(this->model.m_askFloor, 10000000000.0);
    this->feed.snapshots(live, {level2("09:30:06").ask(10.02, 5)});
    EXPECT_TRUE(this->model.m_snapshotBids.empty());
    EXPECT_EQ(this->model.m_bidCeiling, 0.0);
    EXPECT_EQ(this->model.m_askFloor, 10.02);
}

TYPED_TEST(BookModelSnapshotTest, shouldSkipLevelsWithoutAPriceAndGoOnWhenTheyStandInTheMiddle)
{
    constexpr double kNone = std::numeric_limits<double>::max();
    this->feed.snapshots(live, {level2("09:30:03")
                                    .bids({{10.00, 1}, {0, 2}, {9.98, 3}, {kNone, 4}, {0.00001, 5}, {9.95, 6}})
                                    .asks({{kNone, 1}, {10.03, 2}, {0, 9}, {10.05, 4}})});
    EXPECT_EQ(this->rows(), "bid 9.95 6h x? (0)\nbid 9.98 3h x? (0)\nbid 10.00 1h x? (0)\nask 10.03 2h x? (0)\n"
                            "ask 10.05 4h x? (0)\n");
    EXPECT_EQ(this->model.m_askFloor, 10.03);
}

TYPED_TEST(BookModelSnapshotTest, shouldFindTheLimitsWhenLevelsAreOutOfOrder)
{
    this->feed.snapshots(
        live, {level2("09:30:03").bids({{9.98, 1}, {10.00, 2}, {9.99, 3}}).asks({{10.05, 1}, {10.02, 2}, {10.03, 3}})});
    EXPECT_EQ(this->model.m_bidCeiling, 10.00);
    EXPECT_EQ(this->model.m_askFloor, 10.02);
}

TYPED_TEST(BookModelSnapshotTest, shouldCutVolumesTo32BitsAndKeyOddPricesWhenLevelsAreStrange)
{
    this->feed.snapshots(live,
                         {level2("09:30:03").bids({{10.00, (1LL << 32) + 5}, {NAN, 7}, {1e300, 8}, {10.001, 9}})});
    ASSERT_EQ(this->model.m_snapshotBids.size(), 2u);
    EXPECT_EQ(this->model.m_snapshotBids.at(INT_MIN)->volume, 8) << "prices without a key share one";
    EXPECT_EQ(this->model.m_snapshotBids.at(1000)->volume, 9) << "the later level of a key stays";
    this->feed.snapshots(live, {level2("09:30:06").bids({{10.00, (1LL << 32) + 5}})});
    EXPECT_EQ(this->model.m_snapshotBids.at(1000)->volume, 5);
}

// --- which snapshots count ------------------------------------------------------------------------------------

TYPED_TEST(BookModelSnapshotTest, shouldTakeTheLastRecordOnlyWhenABatchHasMore)
{
    for (const int kind : {history, moreHistory, live, 2}) {
        SCOPED_TRACE(kind);
        this->model.clear();
        Records hundred;
        for (int i = 0; i < 99; ++i)
            hundred.push_back(level2("09:30:01").last(9).bid(9.00, 5).ask(9.01, 5));
        hundred.push_back(level2("09:30:03").last(10.01).bid(10.00, 5));
        this->feed.snapshots(kind, hundred);
        EXPECT_EQ(this->rows(), "bid 10.00 5h x? (0)\n");
        EXPECT_EQ(this->model.m_quoterLastPrice, 10.01);
    }
}

TYPED_TEST(BookModelSnapshotTest, shouldDropASnapshotWhenItIsNotNewerThanTheLast)
{
    this->feed.snapshots(live, {level2("09:30:03").last(10.01).volume(100).bid(10.00, 5).ask(10.02, 5)});
    for (const char* time : {"09:30:03", "09:30:02"}) {
        this->feed.snapshots(live, {level2(time).last(11.01).volume(900).bid(11.00, 7)});
        this->feed.snapshots(history, {level2(time).last(11.01).volume(900).bid(11.00, 7)});
        this->feed.snapshots(live, {level2(time).bid(11.00, 7).ask(11.00, 7)});
    }
    EXPECT_EQ(this->rows(), "bid 10.00 5h x? (0)\nask 10.02 5h x? (0)\n");
    EXPECT_EQ(this->model.m_quoterLastPrice, 10.01);
    EXPECT_EQ(this->model.m_quoterLastVolume, 0);
    EXPECT_TRUE(this->model.m_continuous) << "an old auction says nothing";
}

TYPED_TEST(BookModelSnapshotTest, shouldDropItButKnowThatItIsAnAuctionWhenOneComes)
{
    this->model.m_loadedHistory = 3; // as if ticks were in: what is taken would raise an update
    this->feed.snapshots(live, {level2("14:56:57").last(10.01).volume(100).bid(10.00, 5).ask(10.02, 5)});
    EXPECT_EQ(this->model.m_updateFlags.exchange(0), 1);
    this->feed.snapshots(live, {level2("14:57:03").last(10.05).volume(300).bid(10.01, 9).ask(10.01, 9)});
    EXPECT_FALSE(this->model.m_continuous);
    EXPECT_EQ(this->rows(), "bid 10.00 5h x? (0)\nask 10.02 5h x? (0)\n");
    EXPECT_EQ(this->model.m_quoterTimetag, timeOf("14:56:57"));
    EXPECT_EQ(this->model.m_quoterLastPrice, 10.01);
    EXPECT_EQ(this->model.m_quoterLastVolume, 0);
    EXPECT_EQ(this->model.m_updateFlags, 0);
    this->feed.snapshots(live, {level2("14:57:00").bid(10.00, 6)});
    EXPECT_TRUE(this->model.m_continuous) << "newer than the last one that counted";
    EXPECT_EQ(this->rows(), "bid 10.00 6h x? (0)\n");
}

TYPED_TEST(BookModelSnapshotTest, shouldTakeTheNewLoanPriceFromTheNextSnapshotOnWhenSet)
{
    this->feed.snapshots(live, {level2("09:30:03").last(10.01).alternativeLast(20.01).bid(10.00)});
    this->model.setNewLoan(true);
    EXPECT_EQ(this->model.m_quoterLastPrice, 10.01);
    this->feed.snapshots(live, {level2("09:30:06").last(10.02).alternativeLast(20.02).bid(10.00)});
    EXPECT_EQ(this->model.m_quoterLastPrice, 20.02);
    this->model.clear();
    EXPECT_TRUE(this->model.m_isNewLoan) << "a clear keeps it";
    this->feed.snapshots(live, {level2("09:30:03").last(10.01).alternativeLast(20.01).bid(10.00)});
    EXPECT_EQ(this->model.m_quoterLastPrice, 20.01);
}

} // namespace
