#include "tests/support/layout.h"
#include "tests/tessimodel/tickbook.h"

namespace {

using namespace tests;

// What is the order queues' own way of keeping a book; the rest is told by TickBookOrders and TickBookTrades.
class QueueBookTest : public ::testing::Test, protected BookStory<TC::QueueBook> {};

TEST_F(QueueBookTest, shouldKeepMembersInOrderWhenLaidOut)
{
    const TC::QueueBook& b = book;
    EXPECT_TRUE(standInOrder(b.m_lastTimetag, b.m_bidsDirty, b.m_asksDirty, b.m_mutex, b.m_stock, b.m_priceTick,
                             b.m_volumeUnit, b.m_orderPriceKeys, b.m_bidLevels, b.m_askLevels, b.m_lastBuySeq,
                             b.m_lastSellSeq, b.m_seenTrades, b.m_pendingBuy, b.m_pendingSell));
}

// --- fills of more than the order has -------------------------------------------------------------------------

TEST_F(QueueBookTest, shouldHaveLessThanItsOrdersWhenAFillIsLargerThanItsOrder)
{
    given(order(1).buy(10.00).shares(100), order(2).buy(10.00).shares(300));
    EXPECT_EQ(answer(fill(1, 9).shares(250)), "taken, flags 4");
    EXPECT_EQ(totalsText(*book.getLevel(true, 10.00)), "[2:300] 150 x1");
    EXPECT_EQ(answer(cancelOfBuy(2)), "taken, flags 2");
    EXPECT_EQ(levels(), "");
}

TEST_F(QueueBookTest, shouldGoWithOrdersInItWhenAFillTakesMoreThanTheLevelHas)
{
    given(order(1).buy(10.00).shares(100), order(2).buy(10.00).shares(300));
    const auto held = book.getLevel(true, 10.00);
    EXPECT_EQ(answer(fill(1, 9).shares(500)), "taken, flags 2");
    EXPECT_EQ(levels(), "");
    EXPECT_EQ(totalsText(*held), "[2:300] -100 x1 dead");
    EXPECT_EQ(answer(cancelOfBuy(2)), "refused, flags 0") << "order 2 went with its level";
    EXPECT_EQ(answer(order(3).buy(10.00).shares(700)), "taken, flags 2");
    EXPECT_EQ(answer(fill(2, 8).shares(10)), "refused, flags 0") << "the new level begins with order 3";
    EXPECT_EQ(totalsText(*book.getLevel(true, 10.00)), "[3:700] 700 x1");
}

TEST_F(QueueBookTest, shouldGoAtOnceWhenATradeThatWaitedTakesMoreThanTheLevelHas)
{
    given(order(8).buy(10.00).flag(0).shares(300));
    offer(fill(0, 5).shares(450));
    EXPECT_EQ(waitingToSell(), "5: 450\n");
    EXPECT_EQ(answer(order(5).sell(10.00)), "taken, flags 2");
    EXPECT_EQ(levels(), "") << "order 8 stands behind it, and the level has -50 shares";
}

TEST_F(QueueBookTest, shouldTakeTheWholeVolumeOffTheLevelWhenItNeedsMoreThan32Bits)
{
    given(order(1).buy(10.00).shares(10'000'000'000));
    EXPECT_EQ(answer(fill(1, 9).shares((1LL << 32) + 100)), "taken, flags 4");
    EXPECT_EQ(totalsText(*book.getLevel(true, 10.00)), "[1:10000000000-100] 5705032604 x1");
}

// --- hands, emptying ------------------------------------------------------------------------------------------

TEST_F(QueueBookTest, shouldCountInSharesWhateverAHandHas)
{
    for (const int unit : {0, 1, 10, 100, -1}) {
        book.clearBook();
        book.clearPending();
        book.m_volumeUnit = unit;
        given(order(1).buy(10.00).shares(155), fill(1, 2).shares(30));
        EXPECT_EQ(totalsText(*book.getLevel(true, 10.00)), "[1:155-30] 125 x1") << unit;
    }
}

TEST_F(QueueBookTest, shouldTakeNothingWhenAllWasClearedUntilItHasAnInstrumentAgain)
{
    given(order(1).buy(10.00));
    book.clearAll();
    EXPECT_EQ(book.m_stock, nullptr);
    EXPECT_EQ(answer(order(1).buy(10.00)), "refused, flags 16");
    EXPECT_EQ(answer(fill(1, 2)), "refused, flags 16");
    book.m_stock = stock;
    EXPECT_EQ(answer(order(1).buy(10.00)), "taken, flags 2");
}

} // namespace
