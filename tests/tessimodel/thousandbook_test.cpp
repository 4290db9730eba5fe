#include "tests/support/layout.h"
#include "tests/tessimodel/tickbook.h"

namespace {

using namespace tests;

// What the thousand-level book has beside its levels: the rows that panels get. The rest is told by TickBookOrders and
// TickBookTrades.

TEST_F(ThousandBookTest, shouldKeepMembersInOrderWhenLaidOut)
{
    const TC::ThousandBook& b = book;
    EXPECT_TRUE(standInOrder(b.m_lastTimetag, b.m_bidsDirty, b.m_asksDirty, b.m_mutex, b.m_stock, b.m_priceTick,
                             b.m_volumeUnit, b.m_orderPriceKeys, b.m_bidLevels, b.m_askLevels, b.m_lastBuySeq,
                             b.m_lastSellSeq, b.m_bidRows, b.m_askRows, b.m_seenTrades, b.m_pendingBuy,
                             b.m_pendingSell));
}

// --- rows -----------------------------------------------------------------------------------------------------

TEST_F(ThousandBookTest, shouldHaveARowPerLevelWhenOrdersCome)
{
    EXPECT_EQ(bookText(book), "");
    given(order(1).buy(10.00).shares(300), order(2).buy(10.00).shares(200), order(3).sell(10.02).shares(500));
    EXPECT_EQ(bookText(book), "bid 10.00 5h x2 (+2)\nask 10.02 5h x1 (+5)\n");
}

TEST_F(ThousandBookTest, shouldShowTheLevelsFirstPriceWhenPricesAreWithinATick)
{
    given(order(1).buy(10.001), order(2).buy(10.004));
    EXPECT_EQ(book.m_bidRows.at(1000)->price, 10.001);
}

TEST_F(ThousandBookTest, shouldHaveRowsOnlyForKeysAboveZeroWhenOrdersCome)
{
    given(order(1).buy(10.00).kind(2), order(2).buy(10.00).kind(7), order(3).buy(0.0), order(4).buy(0.004),
          order(5).buy(-1.0), order(6).buy(1e300), order(7).buy(0.006));
    EXPECT_EQ(book.m_bidLevels.size(), 6u);
    ASSERT_EQ(book.m_bidRows.size(), 1u);
    EXPECT_EQ(book.m_bidRows.begin()->first, 1);
}

TEST_F(ThousandBookTest, shouldChangeTheRowsOfBothLevelsWhenOrdersTrade)
{
    given(order(1).buy(10.02).shares(300), order(2).sell(10.02).shares(500), fill(1, 2).shares(200).at(10.02));
    EXPECT_EQ(bookText(book), "bid 10.02 1h x1 (-2)\nask 10.02 3h x1 (-2)\n");
}

TEST_F(ThousandBookTest, shouldTakeTheRowAwayWhenItsLevelRunsOut)
{
    given(order(1).buy(10.02).shares(200), order(2).sell(10.02).shares(500), fill(1, 2).shares(200));
    EXPECT_EQ(bookText(book), "ask 10.02 3h x1 (-2)\n");
    given(cancelOfSell(2).shares(300));
    EXPECT_EQ(bookText(book), "");
}

TEST_F(ThousandBookTest, shouldShowOnlyThePricedSideWhenAMarketOrderTrades)
{
    given(order(1).buy(0).kind(2).shares(300), order(2).sell(10.02).shares(500), fill(1, 2).shares(100));
    EXPECT_EQ(bookText(book), "ask 10.02 4h x1 (-1)\n");
    EXPECT_EQ(answer(fill(1, 3).shares(200)), "taken, flags 2") << "a level without a row goes like any";
}

TEST_F(ThousandBookTest, shouldShowWhatIsLeftWhenAWaitingTradeMeetsItsOrder)
{
    given(order(3).buy(9.99));
    offer(fill(5, 0).shares(40));
    EXPECT_EQ(bookText(book), "bid 9.99 1h x1 (+1)\n");
    given(order(5).buy(10.00));
    EXPECT_EQ(bookText(book), "bid 9.99 1h x1 (+1)\nbid 10.00 1h x1 (-1)\n");
    offer(fill(7, 0));
    given(order(7).buy(10.01));
    EXPECT_EQ(bookText(book), "bid 9.99 1h x1 (+1)\nbid 10.00 1h x1 (-1)\n") << "this one came and went at once";
}

// The level loses its older orders although it refuses the fill: the book does not correct the row.
TEST_F(ThousandBookTest, shouldLeaveTheRowWhenTheFillIsRefused)
{
    given(order(1).buy(10.00), order(3).buy(10.00), order(7).buy(10.00), cancelOfBuy(3));
    EXPECT_EQ(answer(fill(3, 9)), "refused, flags 0");
    EXPECT_EQ(bookText(book), "bid 10.00 2h x2 (-1)\n");
    given(order(8).buy(10.00));
    EXPECT_EQ(bookText(book), "bid 10.00 2h x2 (+1)\n") << "the next tick puts the row right";
}

TEST_F(ThousandBookTest, shouldLeaveTheRowsWhenTicksAreOfferedAgain)
{
    given(order(1).buy(10.02).shares(300), order(2).sell(10.02).shares(100), fill(1, 2).shares(100));
    offer(order(1).buy(10.02).shares(300));
    offer(fill(1, 2).shares(100));
    EXPECT_EQ(bookText(book), "bid 10.02 2h x1 (-1)\n");
}

// --- trades that wait, emptying -------------------------------------------------------------------------------

TEST_F(ThousandBookTest, shouldCountTradesThatWaitAndThatWereForgottenWhenTheirOrderIsMissing)
{
    given(order(5).buy(10.00));
    EXPECT_EQ(answer(fill(3, 9)), "refused, flags 0");
    EXPECT_EQ(book.parkedTrades(), 1u) << "the sell side still waits";
    EXPECT_EQ(book.forgottenTrades(), 1);
    offer(fill(6, 10));
    EXPECT_EQ(book.parkedTrades(), 3u) << "once for each side";
    given(order(6).buy(10.00));
    EXPECT_EQ(book.parkedTrades(), 2u);
    offer(cancelOfSell(4));
    EXPECT_EQ(book.parkedTrades(), 3u) << "the side of seq 0 waits for nothing";
    EXPECT_EQ(book.forgottenTrades(), 1);
    book.clearPending();
    EXPECT_EQ(book.parkedTrades(), 0u);
    EXPECT_EQ(book.forgottenTrades(), 0);
}

TEST_F(ThousandBookTest, shouldForgetRowsWithTheirLevelsWhenTheBookIsCleared)
{
    given(order(1).buy(10.00).shares(300), order(2).sell(10.02));
    book.clearPending();
    EXPECT_EQ(bookText(book), "bid 10.00 3h x1 (+3)\nask 10.02 1h x1 (+1)\n");
    book.clearBook();
    EXPECT_EQ(bookText(book), "");
    given(order(1).buy(10.00));
    EXPECT_EQ(bookText(book), "bid 10.00 1h x1 (+1)\n");
}

TEST_F(ThousandBookTest, shouldKeepItsInstrumentWhenAllIsCleared)
{
    given(order(1).buy(10.00));
    book.clearAll();
    EXPECT_EQ(book.m_stock, stock);
    EXPECT_EQ(answer(order(1).buy(10.00)), "taken, flags 2");
}

} // namespace
