#include "indexui/tessimodel/cmodeldepththousand_queue.h"

#include "tests/support/layout.h"
#include "tests/tessimodel/pricelevel.h"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>

namespace {

using namespace tests;

TEST(SingleQueue, shouldBeAnEmptyBidWhenNew)
{
    TC::SingleQueue level;
    EXPECT_EQ(levelText(level), "[] 0 x0 (0) dead");
    EXPECT_TRUE(level.m_isBid);
    EXPECT_EQ(level.m_price, 0.0);
    EXPECT_EQ(level.m_timetag, 0);

    TC::SingleQueue ask(10.02, false);
    EXPECT_EQ(levelText(ask), "[] 0 x0 (0) dead");
    EXPECT_FALSE(ask.m_isBid);
    EXPECT_EQ(ask.m_price, 10.02);
}

TEST(SingleQueue, shouldKeepMembersInOrderWhenLaidOut)
{
    const TC::SingleQueue q;
    EXPECT_TRUE(standInOrder(q.m_mutex, q.m_quotes, q.m_active, q.m_isBid, q.m_timetag, q.m_price, q.m_volume,
                             q.m_number, q.m_lastChange));
    const TC::SingleQuote o;
    EXPECT_TRUE(standInOrder(o.timetag, o.seq, o.volume, o.dealVolume, o.status));
    const TC::EntrustData r;
    EXPECT_TRUE(standInOrder(r.price, r.volume, r.delta, r.number));
    EXPECT_EQ(r.number, -1);
}

// --- orders ---------------------------------------------------------------------------------------------------

TEST(SingleQueue, shouldCountOrdersAndVolumeWhenOrdersCome)
{
    PriceLevel level;
    EXPECT_TRUE(level.add(order(3).shares(500)));
    EXPECT_EQ(level.text(), "[3:500] 500 x1 (+500)");
    EXPECT_EQ(level.rowText(), "10.00 5h x1 (+5)");
    EXPECT_TRUE(level.add(order(8).shares(250)));
    EXPECT_EQ(level.text(), "[3:500 8:250] 750 x2 (+250)");
    EXPECT_EQ(level.rowText(), "10.00 7h x2 (+2)");
}

TEST(SingleQueue, shouldChangeNothingWhenSeqIsThereAlready)
{
    PriceLevel level;
    level.add(order(3).shares(500).time("09:30:00"));
    EXPECT_FALSE(level.add(order(3).shares(900).time("09:31:00")));
    EXPECT_EQ(level.text(), "[3:500] 500 x1 (+500)");
    EXPECT_EQ(level.rowText(), "10.00 5h x1 (+5)");
    EXPECT_EQ(level.queue.m_timetag, timeOf("09:30:00"));
}

TEST(SingleQueue, shouldQueueBySeqWhenOrderComesLate)
{
    PriceLevel level;
    level.add(order(9).shares(100).time("09:31:00"));
    level.add(order(4).shares(200).time("09:30:00"));
    EXPECT_EQ(level.text(), "[4:200 9:100] 300 x2 (+200)");
    EXPECT_EQ(level.queue.m_timetag, timeOf("09:31:00")) << "the newest time stays";
}

TEST(SingleQueue, shouldShowOneHandWhenOrderIsSmallerThanAHand)
{
    PriceLevel level;
    level.add(order(1).shares(30));
    EXPECT_EQ(level.rowText(), "10.00 1h x1 (+1)");
    level.add(order(2).shares(0));
    EXPECT_EQ(level.text(), "[1:30 2:0] 30 x2 (0)");
    EXPECT_EQ(level.rowText(), "10.00 1h x2 (+1)") << "an order of nothing shows as a hand too";
    level.add(order(3).shares(69));
    EXPECT_EQ(level.rowText(), "10.00 1h x3 (+1)") << "99 shares";
    level.add(order(4).shares(199));
    EXPECT_EQ(level.rowText(), "10.00 2h x4 (+1)") << "298 shares, cut off, not rounded";
}

TEST(SingleQueue, shouldShowTheLevelsPriceWhenOrderHasAnother)
{
    PriceLevel level;
    level.add(order(1).buy(10.004));
    EXPECT_EQ(level.row->price, 10.0);
}

TEST(SingleQueue, shouldCutChangeTo32BitsWhenOrderIsHuge)
{
    PriceLevel level;
    level.add(order(1).shares((1LL << 32) + 500));
    EXPECT_EQ(level.text(), "[1:4294967796] 4294967796 x1 (+500)");
    EXPECT_EQ(level.rowText(), "10.00 42949677h x1 (+5)");
}

TEST(SingleQueue, shouldChangeWithoutRowWhenRowIsEmpty)
{
    PriceLevel level;
    level.row.reset();
    EXPECT_TRUE(level.add(order(1).shares(300)));
    EXPECT_TRUE(level.take(fill(1, 0).shares(100)));
    EXPECT_EQ(level.text(), "[1:300-100] 200 x1 (-100)");
}

// --- copies ---------------------------------------------------------------------------------------------------

TEST(SingleQueue, shouldLeaveSourceAloneWhenCopyChanges)
{
    PriceLevel level(false);
    level.add(order(1).shares(300).time("09:30:05"));
    level.add(order(2).shares(200));
    level.take(fill(0, 1).shares(100));

    TC::SingleQueue copy(level.queue);
    EXPECT_EQ(levelText(copy), "[1:300-100 2:200] 400 x2 (-100)");
    EXPECT_FALSE(copy.m_isBid);
    EXPECT_EQ(copy.m_price, 10.0);
    EXPECT_EQ(copy.m_timetag, timeOf("09:30:05"));
    EXPECT_EQ(copy.m_quotes.at(1)->status, -1);
    EXPECT_EQ(copy.m_quotes.at(2)->timetag, timeOf("09:30:00"));

    copy.deal(fill(0, 1).shares(50), level.row, 100);
    copy.correctQueue(0);
    EXPECT_EQ(levelText(copy), "[] 0 x0 (-50)");
    EXPECT_EQ(level.text(), "[1:300-100 2:200] 400 x2 (-100)");
}

TEST(SingleQueue, shouldHaveALockOfItsOwnWhenCopied)
{
    PriceLevel level;
    const std::lock_guard held(level.queue.m_mutex);
    TC::SingleQueue copy(level.queue);
    bool taken = false;
    std::thread([&] { taken = copy.m_mutex.try_lock() && (copy.m_mutex.unlock(), true); }).join();
    EXPECT_TRUE(taken);
}

TEST(SingleQueue, shouldShareOrdersWhenQuotesAreAskedFor)
{
    PriceLevel level;
    level.add(order(1).shares(300));
    TC::SingleQueue::Quotes quotes;
    quotes[99] = std::make_shared<TC::SingleQuote>();
    level.queue.getQuotes(quotes);
    ASSERT_EQ(quotes.size(), 1u) << "what stood in the map before is gone";
    EXPECT_EQ(quotes.at(1), level.queue.m_quotes.at(1));

    level.take(fill(1, 0).shares(100));
    EXPECT_EQ(quotes.at(1)->dealVolume, 100);
}

TEST(SingleQueue, shouldKeepOrdersWhenTheyAreCopiedOntoThemselves)
{
    PriceLevel level;
    level.add(order(1).shares(300));
    level.queue.getQuotes(level.queue.m_quotes);
    EXPECT_EQ(level.text(), "[1:300] 300 x1 (+300)");
}

} // namespace
