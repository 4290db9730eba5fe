#include "indexui/tessimodel/cmodeldepthqueue_level.h"

#include "tests/support/layout.h"
#include "tests/tessimodel/pricelevel.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace tests;

using WholeLevel = BareLevel<TC::OrderQueue>;

TEST(OrderQueue, shouldBeABareBidWhenNew)
{
    TC::OrderQueue row;
    EXPECT_EQ(totalsText(row), "[] 0 x0 dead");
    EXPECT_TRUE(row.m_isBid);
    EXPECT_EQ(row.m_price, 0.0);
    EXPECT_EQ(row.m_queueVolume, 0);

    TC::OrderQueue ask(10.02, false);
    EXPECT_EQ(totalsText(ask), "[] 0 x0 dead") << "no level is valid before it has an order";
    EXPECT_FALSE(ask.m_isBid);
    EXPECT_EQ(ask.m_price, 10.02);
    EXPECT_EQ(ask.m_queueVolume, 0);
}

TEST(OrderQueue, shouldKeepMembersInOrderWhenLaidOut)
{
    const TC::OrderQueue q;
    EXPECT_TRUE(
        standInOrder(q.m_mutex, q.m_quotes, q.m_valid, q.m_isBid, q.m_price, q.m_volume, q.m_count, q.m_queueVolume));
}

TEST(OrderQueue, shouldKeepItsPriceWhenOrderHasAnother)
{
    WholeLevel level;
    level.add(order(1).buy(10.004));
    EXPECT_EQ(level.queue.m_price, 10.0);
    EXPECT_EQ(level.queue.m_queueVolume, 0) << "this is for the queues of snapshots";
}

// --- fills ----------------------------------------------------------------------------------------------------

TEST(OrderQueueFill, shouldSayThatMoreWasDealtThanTheOrderHadWhenAFillIsLarger)
{
    WholeLevel level;
    level.given(order(3).shares(500), order(5).shares(2000));
    const auto held = level.queue.m_quotes.at(3);
    EXPECT_TRUE(level.take(fill(3, 7).shares(200)));
    EXPECT_TRUE(level.take(fill(3, 8).shares(900)));
    EXPECT_EQ(held->dealVolume, 1100);
    EXPECT_EQ(held->volume, 500);
    EXPECT_EQ(level.text(), "[5:2000] 1400 x1");
}

TEST(OrderQueueFill, shouldWrapWhatIsDealtWhenFillsAddUpToMoreThan32Bits)
{
    WholeLevel level;
    level.given(order(3).shares(5'000'000'000));
    EXPECT_TRUE(level.take(fill(3, 7).shares(INT_MAX)));
    EXPECT_TRUE(level.take(fill(3, 8).shares(11)));
    EXPECT_EQ(level.queue.m_quotes.at(3)->dealVolume, INT_MIN + 10);
    EXPECT_EQ(level.queue.m_volume, 5'000'000'000 - INT_MAX - 11);
}

TEST(OrderQueueFill, shouldWrapItsVolumeWhenOrdersAddUpToMoreThan64Bits)
{
    WholeLevel level;
    level.given(order(3).shares(LLONG_MAX), order(5).shares(1));
    EXPECT_EQ(level.queue.m_volume, LLONG_MIN);
    EXPECT_TRUE(level.queue.m_valid) << "an order makes a level valid, whatever the sum";
    EXPECT_TRUE(level.take(fill(3, 7).shares(1)));
    EXPECT_EQ(level.queue.m_volume, LLONG_MAX);
    EXPECT_TRUE(level.queue.m_valid);
}

struct ValidCase {
    const char* what;
    __int64 shares;
    const char* left;
};

// A level lives while it has both orders and shares. Here the fill takes the level's last order.
TEST(OrderQueueFill, shouldBeInvalidWhenNoOrderIsLeftWhateverTheVolume)
{
    const ValidCase cases[] = {
        {"all of it", 100, "[] 0 x0 dead"},
        {"more than it has", 150, "[] -50 x0 dead"},
        {"less than nothing, and 100 in the low half", 100 - (1LL << 32), "[] 4294967296 x0 dead"},
    };
    for (const ValidCase& c : cases) {
        WholeLevel level;
        level.given(order(3).shares(100));
        EXPECT_TRUE(level.take(fill(3, 7).shares(c.shares))) << c.what;
        EXPECT_EQ(level.text(), c.left) << c.what;
    }
}

TEST(OrderQueueFill, shouldBecomeInvalidOnlyWithTheNextTradeWhenAnOrderRevivedIt)
{
    WholeLevel level;
    level.given(order(3).shares(100), order(5).shares(50), order(7).shares(60));
    EXPECT_TRUE(level.take(fill(3, 9).shares(400)));
    EXPECT_EQ(level.text(), "[5:50 7:60] -190 x2 dead");
    EXPECT_TRUE(level.add(order(8).shares(100)));
    EXPECT_EQ(level.text(), "[5:50 7:60 8:100] -90 x3");
    EXPECT_TRUE(level.take(cancelOfBuy(5)));
    EXPECT_EQ(level.text(), "[7:60 8:100] -140 x2 dead");
}

// Only an order revives a level.
TEST(OrderQueueFill, shouldStayInvalidWhenATradeMakesItsVolumePositiveAgain)
{
    WholeLevel level;
    level.given(order(3).shares(100), order(5).shares(50), order(7).shares(60));
    level.take(fill(3, 9).shares(400));
    EXPECT_TRUE(level.take(fill(5, 9).shares(-1000)));
    EXPECT_EQ(level.text(), "[5:50--1000 7:60] 810 x2 dead");
    EXPECT_TRUE(level.take(cancelOfBuy(7)));
    EXPECT_EQ(level.text(), "[5:50--1000] 750 x1 dead");
    EXPECT_TRUE(level.add(order(8).shares(10)));
    EXPECT_EQ(level.text(), "[5:50--1000 8:10] 760 x2");
}

TEST(OrderQueueFill, shouldTakeOffMoreThanAnOrderCameWithWhenItWasDealtLessThanNothing)
{
    WholeLevel level;
    level.given(order(3).shares(500), order(5).shares(200));
    level.take(fill(3, 7).shares(-100));
    EXPECT_EQ(level.text(), "[3:500--100 5:200] 800 x2");
    EXPECT_TRUE(level.take(fill(5, 7).shares(50)));
    EXPECT_EQ(level.text(), "[5:200-50] 150 x1") << "600 live shares went with order 3";
}

// --- a snapshot's queue ---------------------------------------------------------------------------------------

std::string rowOf(TC::OrderQueue& row)
{
    return "[" + queueText(row) + "] " + std::to_string(row.m_count) + " of " + std::to_string(row.m_queueVolume);
}

TEST(OrderQueueAssign, shouldNumberTheOrdersFromZeroWhenAssigned)
{
    TC::OrderQueue row;
    row.assignQueue({300, 0, 200});
    EXPECT_EQ(rowOf(row), "[0:300 1:0 2:200] 3 of 500");
    const TC::SingleQuote& quote = *row.m_quotes.at(2);
    EXPECT_EQ(quote.seq, 2);
    EXPECT_EQ(quote.timetag, 0);
    EXPECT_EQ(quote.dealVolume, 0);
    EXPECT_EQ(quote.status, 1);
}

TEST(OrderQueueAssign, shouldLeaveVolumePriceAndValidWhenAssigned)
{
    TC::OrderQueue row(10.02, false);
    row.m_volume = 77;
    row.assignQueue({300, 200});
    EXPECT_EQ(row.m_volume, 77);
    EXPECT_EQ(row.m_price, 10.02);
    EXPECT_FALSE(row.m_valid);
    EXPECT_FALSE(row.m_isBid);
    row.m_valid = true;
    row.assignQueue({});
    EXPECT_TRUE(row.m_valid);
}

TEST(OrderQueueAssign, shouldStartCountingAnewWhenAssignedAgain)
{
    TC::OrderQueue row;
    row.assignQueue({300, 200, 100});
    row.assignQueue({50, 60});
    EXPECT_EQ(rowOf(row), "[0:50 1:60] 2 of 110");
    row.assignQueue({});
    EXPECT_EQ(rowOf(row), "[] 0 of 0");
}

TEST(OrderQueueAssign, shouldEraseOnlyUpToTheFirstGapWhenTheQueueIsShorter)
{
    TC::OrderQueue row;
    for (const int seq : {0, 1, 2, 4, 5})
        row.appendQuote(order(seq).shares(10));
    row.assignQueue({70});
    EXPECT_EQ(rowOf(row), "[0:70 4:10 5:10] 1 of 70");
}

TEST(OrderQueueAssign, shouldWriteOverTheOrderThatIsThereWhenItsPositionIsTaken)
{
    TC::OrderQueue row;
    row.appendQuote(order(0).shares(500));
    row.dealQuote(fill(0, 0).shares(100).time("09:31:00"));
    const auto held = row.m_quotes.at(0);
    ASSERT_EQ(held->status, -1);
    row.assignQueue({300});
    EXPECT_EQ(row.m_quotes.at(0), held);
    EXPECT_EQ(held->volume, 300);
    EXPECT_EQ(held->dealVolume, 0);
    EXPECT_EQ(held->status, 1);
    EXPECT_EQ(held->timetag, 0);
    EXPECT_EQ(held->seq, 0);
}

TEST(OrderQueueAssign, shouldKeepTheSignAndWrapTheSumWhenVolumesAreBroken)
{
    TC::OrderQueue row;
    row.assignQueue({-5, INT_MAX, 10});
    EXPECT_EQ(rowOf(row), "[0:-5 1:2147483647 2:10] 3 of -2147483644");
}

} // namespace
