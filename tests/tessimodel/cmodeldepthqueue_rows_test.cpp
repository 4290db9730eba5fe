#include "tests/tessimodel/queuemodel.h"

#include <cfloat>
#include <cmath>

namespace {

using namespace tests;

// The rows that a pair of snapshots makes.
class QueueRowsTest : public QueueTest {
protected:
    // Joins the two, which are made as of one and the same new time.
    void join(Snapshot<quoter::QuoterDepthData> snapshot, BestQueues queues)
    {
        const std::shared_ptr<quoter::QuoterDepthData> quote = snapshot;
        const std::shared_ptr<quoter::LevelOrderData> levelOrder = queues;
        quote->timetag = levelOrder->timetag = timeOf("09:30:00") + ++m_joined;
        feed.snapshots(live, {quote});
        feed.queues(live, {levelOrder});
        ASSERT_EQ(model.m_rawTimetag, quote->timetag);
    }

    // All ten levels with real prices.
    static Snapshot<quoter::QuoterDepthData> fullBook()
    {
        auto snapshot = level2();
        const std::shared_ptr<quoter::QuoterDepthData> record = snapshot;
        for (int i = 0; i < 10; ++i) {
            record->bidPrice[i] = 10.00 - i * 0.01;
            record->askPrice[i] = 10.01 + i * 0.01;
            record->bidVolume[i] = record->askVolume[i] = 100 * (i + 1);
        }
        return snapshot;
    }

    std::string bids() const { return slotsText(model.m_bids); }
    std::string asks() const { return slotsText(model.m_asks); }

private:
    int m_joined = 0;
};

// Only a level without a usable price fills its row. That is wanted.
TEST_F(QueueRowsTest, shouldBeBareWhenPricesAreReal)
{
    join(fullBook(), bestQueues().bid(10.00, {100, 200}).ask(10.01, {300}));
    EXPECT_EQ(bids(), "0-9: bare\n");
    EXPECT_EQ(asks(), "0-9: bare\n");
}

TEST_F(QueueRowsTest, shouldBeFilledWhenTheirLevelHasNoPrice)
{
    join(level2().bids({{10.00, 5}, {0.0, 700}, {9.98, 6}}).asks({{0.0, 300}, {10.02, 4}, {0.0, 200}}),
         bestQueues().bid(10.00, {100}).ask(10.02, {300}));
    EXPECT_EQ(bids(), "0: bare\n1: bid 0 700, 0 of 0 []\n2: bare\n3-9: bid 0 0, 0 of 0 []\n");
    EXPECT_EQ(asks(), "0: ask 0 300, 0 of 0 []\n1: bare\n2: ask 0 200, 0 of 0 []\n3-9: ask 0 0, 0 of 0 []\n");
}

TEST_F(QueueRowsTest, shouldBeFilledToTheLastLevelWhenItHasNoPrice)
{
    auto snapshot = fullBook();
    const std::shared_ptr<quoter::QuoterDepthData> record = snapshot;
    record->bidPrice[9] = 0;
    record->askPrice[0] = DBL_MAX;
    join(snapshot, bestQueues().bid(5.00, {1}).ask(5.00, {1}));
    EXPECT_EQ(bids(), "0-8: bare\n9: bid 0 1000, 0 of 0 []\n");
    EXPECT_EQ(asks(), "0: ask 1.8e+308 100, 0 of 0 []\n1-9: bare\n");
    EXPECT_EQ(model.m_asks[0]->m_price, DBL_MAX);
}

struct PriceCase {
    double price;
    bool isFilled;
};

TEST_F(QueueRowsTest, shouldTakeAPriceForNoneWithinTheTolerance)
{
    const PriceCase cases[] = {
        {0.0, true},
        {0.00001, true},
        {-0.00001, true},
        {0.00002, false},
        {-0.00002, false},
        {DBL_MAX, true},
        {-DBL_MAX, false},
        {1e308, false},
        {static_cast<double>(NAN), false},
        {static_cast<double>(INFINITY), false},
    };
    for (const PriceCase& c : cases) {
        join(level2().bids({{10.00, 5}, {c.price, 7}}).asks({{10.01, 5}, {c.price, 8}}),
             bestQueues().bid(5, {}).ask(5, {}));
        for (const auto& row : {model.m_bids[1], model.m_asks[1]}) {
            EXPECT_EQ(row->m_valid, c.isFilled) << c.price;
            EXPECT_EQ(row->m_price, c.isFilled ? c.price : 0.0) << c.price;
        }
        EXPECT_EQ(model.m_bids[1]->m_volume, c.isFilled ? 7 : 0) << c.price;
        EXPECT_EQ(model.m_asks[1]->m_volume, c.isFilled ? 8 : 0) << c.price;
    }
}

// --- the queues -----------------------------------------------------------------------------------------------

// Each side has one queue price, which every level is compared with.
TEST_F(QueueRowsTest, shouldGetTheQueueAtEveryLevelThatIsNearItsPrice)
{
    join(level2().bids({{10.00, 5}, {0.0, 700}}).asks({{0.0, 300}, {10.02, 4}}),
         bestQueues().bid(0.0, {100, 200}).ask(0.0, {300}));
    EXPECT_EQ(bids(), "0: bare\n1: bid 0 700, 2 of 300 [0:100 1:200]\n2-9: bid 0 0, 2 of 300 [0:100 1:200]\n");
    EXPECT_EQ(asks(), "0: ask 0 300, 1 of 300 [0:300]\n1: bare\n2-9: ask 0 0, 1 of 300 [0:300]\n");
    EXPECT_NE(model.m_bids[2], model.m_bids[3]);
}

TEST_F(QueueRowsTest, shouldLookAtItsOwnSidesPriceWhenTheQueuesDiffer)
{
    join(level2().bid(10.00), bestQueues().bid(0.0, {100}).ask(10.01, {300}));
    EXPECT_EQ(bids(), "0: bare\n1-9: bid 0 0, 1 of 100 [0:100]\n");
    EXPECT_EQ(asks(), "0-9: ask 0 0, 0 of 0 []\n");
    join(level2().ask(10.00), bestQueues().bid(10.00, {100}).ask(0.0, {300}));
    EXPECT_EQ(bids(), "0-9: bid 0 0, 0 of 0 []\n");
    EXPECT_EQ(asks(), "0: bare\n1-9: ask 0 0, 1 of 300 [0:300]\n");
}

// A real price gets no queue, though it is the queue's very own.
TEST_F(QueueRowsTest, shouldGetNoQueueWhenTheRowIsBare)
{
    join(level2().bid(10.00), bestQueues().bid(10.00, {100, 200}));
    EXPECT_EQ(snapshotRowText(model.m_bids[0]), "bare");
}

struct NearCase {
    double tick, queuePrice;
    bool isNear;
};

TEST_F(QueueRowsTest, shouldCallAPriceNearWhenItIsLessThanATickAway)
{
    const NearCase cases[] = {
        {0.01, 0.0, true},     {0.01, 0.009, true}, {0.01, -0.009, true}, {0.01, 0.01, false}, {0.01, -0.01, false},
        {0.005, 0.009, false}, {1e-9, 0.0, true},   {1e-9, 1e-6, false},  {0.0, 0.0, false},
    };
    for (const NearCase& c : cases) {
        model.m_priceTick = c.tick;
        join(level2().bid(10.00), bestQueues().bid(c.queuePrice, {100}).ask(c.queuePrice, {200}));
        EXPECT_EQ(model.m_bids[1]->m_count, c.isNear ? 1 : 0) << c.queuePrice << " by " << c.tick;
        EXPECT_EQ(model.m_asks[1]->m_count, c.isNear ? 1 : 0) << c.queuePrice << " by " << c.tick;
    }
}

TEST_F(QueueRowsTest, shouldGetTheQueueWhenBothPricesAreMissing)
{
    join(level2().bids({{10.00, 1}, {DBL_MAX, 7}}), bestQueues().bid(DBL_MAX, {100}));
    EXPECT_EQ(snapshotRowText(model.m_bids[1]), "bid 1.8e+308 7, 1 of 100 [0:100]");
    EXPECT_EQ(snapshotRowText(model.m_bids[2]), "bid 0 0, 0 of 0 []");
}

// --- slots ----------------------------------------------------------------------------------------------------

TEST_F(QueueRowsTest, shouldBeMadeAnewWhenTheNextPairComes)
{
    join(level2().bid(10.00), bestQueues().bid(0.0, {100, 200, 300}));
    const auto bid = model.m_bids[1];
    const auto ask = model.m_asks[1];
    join(level2().bid(10.00), bestQueues().bid(0.0, {50}));
    EXPECT_EQ(bids(), "0: bare\n1-9: bid 0 0, 1 of 50 [0:50]\n");
    EXPECT_NE(model.m_bids[1], bid);
    EXPECT_NE(model.m_asks[1], ask);
    EXPECT_EQ(snapshotRowText(bid), "bid 0 0, 3 of 600 [0:100 1:200 2:300]") << "whoever holds a row keeps it";
    join(fullBook(), bestQueues().bid(0.0, {50}));
    EXPECT_EQ(bids() + asks(), "0-9: bare\n0-9: bare\n");
}

// The slots are written behind the length, which nothing ever raises.
TEST_F(QueueRowsTest, shouldStayOfLengthZeroWhenSlotsAreWritten)
{
    join(level2().bid(10.00), bestQueues().bid(0.0, {100}));
    for (const TC::OrderQueueRows* const rows : {&model.m_bids, &model.m_asks}) {
        EXPECT_EQ(rows->size(), 0u);
        EXPECT_EQ(rows->begin(), rows->end());
        EXPECT_NE((*rows)[9], nullptr);
    }
}

} // namespace
