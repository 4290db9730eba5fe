#include "tests/tessimodel/tickbook.h"

namespace {

using namespace tests;

class ThousandBookTradesTest : public TickBookTest {};

TEST_F(ThousandBookTradesTest, shouldTouchTwoLevelsWhenBothOrdersAreKnown)
{
    given(order(1).buy(10.02).shares(300), order(2).sell(10.02).shares(500));
    EXPECT_EQ(answer(fill(1, 2).shares(200).at(10.02)), "taken, flags 4");
    EXPECT_EQ(levelsText(book), "bid 1002 1:300-200\nask 1002 2:500-200\n");
    EXPECT_EQ(bookText(book), "bid 10.02 1h x1 (-2)\nask 10.02 3h x1 (-2)\n");
}

TEST_F(ThousandBookTradesTest, shouldTakeTheLevelAndItsRowAwayWhenItRunsOut)
{
    given(order(1).buy(10.02).shares(200), order(2).sell(10.02).shares(500));
    EXPECT_EQ(answer(fill(1, 2).shares(200)), "taken, flags 6") << "one level went, the other changed";
    EXPECT_EQ(levelsText(book), "ask 1002 2:500-200\n");
    EXPECT_EQ(bookText(book), "ask 10.02 3h x1 (-2)\n");
    EXPECT_EQ(answer(cancelOfSell(2).shares(300)), "taken, flags 2");
    EXPECT_EQ(levelsText(book) + bookText(book), "");
}

TEST_F(ThousandBookTradesTest, shouldTouchOneLevelWhenTradeIsACancel)
{
    given(order(1).buy(10.00).shares(300), order(2).buy(10.00).shares(200), order(3).sell(10.02));
    EXPECT_EQ(answer(cancelOfBuy(1).shares(300)), "taken, flags 4");
    EXPECT_EQ(levelsText(book), "bid 1000 2:200\nask 1002 3:100\n");
    EXPECT_EQ(book.parkedTrades(), 0u) << "the side of seq 0 waits for nothing";
}

TEST_F(ThousandBookTradesTest, shouldReachMarketOrdersThroughTheirSeqWhenTheyTrade)
{
    given(order(1).buy(0).kind(2).shares(300), order(2).sell(10.02).shares(500));
    EXPECT_EQ(answer(fill(1, 2).shares(100)), "taken, flags 4");
    EXPECT_EQ(levelsText(book), "bid -2 1:300-100\nask 1002 2:500-100\n");
    EXPECT_EQ(bookText(book), "ask 10.02 4h x1 (-1)\n");
    EXPECT_EQ(answer(fill(1, 3).shares(200)), "taken, flags 2") << "a level without a row goes like any";
}

TEST_F(ThousandBookTradesTest, shouldFindTheOrderWhereItStandsWhenTheTradesPriceIsAnother)
{
    given(order(1).buy(10.05).shares(300));
    given(fill(1, 9).at(10.00));
    EXPECT_EQ(levelsText(book), "bid 1005 1:300-100\n");
}

// --- what was seen --------------------------------------------------------------------------------------------

// Two fills of the same two orders do not happen twice by contract: the second counts as a repetition, even with
// another price and size.
TEST_F(ThousandBookTradesTest, shouldDropTheSecondTradeWhenThePairTradedBefore)
{
    given(order(1).buy(10.02).shares(900), order(2).sell(10.02).shares(900), fill(1, 2).shares(100));
    EXPECT_EQ(answer(fill(1, 2).shares(200).at(10.01).time("09:31:00")), "refused, flags 0");
    EXPECT_EQ(levelsText(book), "bid 1002 1:900-100\nask 1002 2:900-100\n");
    EXPECT_EQ(book.m_lastTimetag, timeOf("09:30:00")) << "a trade seen already does not move the book's time";
    EXPECT_EQ(answer(fill(1, 3).shares(200)), "taken, flags 4") << "another pair";
}

// Seqs are known without their side: a trade that has them the wrong way round meets the level at that price, here
// one whose orders are all older.
TEST_F(ThousandBookTradesTest, shouldLookAtTheSamePriceWhenATradeHasItsSeqsTheWrongWayRound)
{
    given(order(1).buy(10.02).shares(900), order(2).sell(10.02).shares(900));
    EXPECT_EQ(answer(fill(2, 1).shares(200)), "taken, flags 2");
    EXPECT_EQ(levelsText(book), "ask 1002 2:900\n");
}

TEST_F(ThousandBookTradesTest, shouldKeyTradesByBuyAndSellSeqWhenSeen)
{
    offer(fill(3, 4));
    offer(cancelOfSell(7));
    offer(cancelOfBuy(7));
    EXPECT_EQ(book.m_seenTrades.size(), 3u);
    EXPECT_TRUE(book.m_seenTrades.contains((3LL << 32) + 4));
    EXPECT_TRUE(book.m_seenTrades.contains(7));
    EXPECT_TRUE(book.m_seenTrades.contains(7LL << 32));
}

TEST_F(ThousandBookTradesTest, shouldChangeNothingWhenATradeIsRefusedButMoveTheTime)
{
    given(order(5).buy(10.00), order(5).sell(10.02));
    EXPECT_EQ(answer(fill(3, 4).time("09:31:00")), "refused, flags 0");
    EXPECT_EQ(levelsText(book), "bid 1000 5:100\nask 1002 5:100\n");
    EXPECT_EQ(book.m_lastTimetag, timeOf("09:31:00"));
    EXPECT_EQ(answer(fill(3, 6).time("09:30:30")), "refused, flags 0");
    EXPECT_EQ(book.m_lastTimetag, timeOf("09:31:00")) << "time goes on only";
}

// --- trades that wait -----------------------------------------------------------------------------------------

TEST_F(ThousandBookTradesTest, shouldWaitForTheOrderWhenTradeComesFirst)
{
    given(order(3).buy(9.99));
    EXPECT_EQ(answer(fill(5, 0).shares(40)), "refused, flags 0");
    EXPECT_EQ(pendingText(book.m_pendingBuy), "5: 40\n");
    EXPECT_EQ(pendingText(book.m_pendingSell), "");
    EXPECT_EQ(book.parkedTrades(), 1u);

    EXPECT_EQ(answer(order(5).buy(10.00)), "taken, flags 2");
    EXPECT_EQ(levelsText(book), "bid 999 3:100\nbid 1000 5:100-40\n");
    EXPECT_EQ(bookText(book), "bid 9.99 1h x1 (+1)\nbid 10.00 1h x1 (-1)\n");
    EXPECT_EQ(book.parkedTrades(), 0u);
}

TEST_F(ThousandBookTradesTest, shouldComeAndGoInOneCallWhenTheWaitingTradeTakesTheWholeOrder)
{
    given(order(3).buy(9.99));
    offer(fill(5, 0));
    book.m_bidsDirty = false;
    EXPECT_EQ(answer(order(5).buy(10.00)), "taken, flags 2");
    EXPECT_EQ(levelsText(book), "bid 999 3:100\n");
    EXPECT_EQ(bookText(book), "bid 9.99 1h x1 (+1)\n");
    EXPECT_TRUE(book.m_bidsDirty);
}

TEST_F(ThousandBookTradesTest, shouldSayThatALevelWentWhenAnOldLevelDiesWithTheNewOrder)
{
    given(order(3).buy(10.00));
    offer(fill(5, 0));
    EXPECT_EQ(answer(order(5).buy(10.00)), "taken, flags 2") << "the fill of 5 takes the older 3 with it";
    EXPECT_EQ(levelsText(book), "");
}

TEST_F(ThousandBookTradesTest, shouldOfferWaitingTradesInTurnWhenTheOrderComes)
{
    offer(fill(5, 1).shares(30));
    offer(fill(5, 2).shares(70));
    offer(fill(5, 3).shares(50));
    EXPECT_EQ(pendingText(book.m_pendingBuy), "5: 30 70 50\n");
    EXPECT_EQ(answer(order(5).buy(10.00)), "taken, flags 2");
    EXPECT_EQ(levelsText(book), "");
    EXPECT_EQ(pendingText(book.m_pendingBuy), "5: 50\n");
}

TEST_F(ThousandBookTradesTest, shouldForgetTheTradeOnASideWhenItsOrderShouldHaveCome)
{
    given(order(5).buy(10.00));
    EXPECT_EQ(answer(fill(3, 9)), "refused, flags 0");
    EXPECT_EQ(pendingText(book.m_pendingBuy), "");
    EXPECT_EQ(pendingText(book.m_pendingSell), "9: 100\n") << "the other side still waits";
    EXPECT_EQ(book.forgottenTrades(), 1);
    EXPECT_EQ(answer(fill(5, 8)), "taken, flags 2");
    EXPECT_EQ(answer(cancelOfBuy(5)), "refused, flags 0") << "its level has gone";
    EXPECT_EQ(pendingText(book.m_pendingBuy), "");
}

TEST_F(ThousandBookTradesTest, shouldWaitForTheOtherSideOnlyWhenOneSideTookIt)
{
    given(order(5).buy(10.00).shares(300));
    EXPECT_EQ(answer(fill(5, 7)), "taken, flags 4");
    EXPECT_EQ(pendingText(book.m_pendingBuy), "");
    EXPECT_EQ(pendingText(book.m_pendingSell), "7: 100\n");
    EXPECT_EQ(answer(order(7).sell(10.00).shares(300)), "taken, flags 2");
    EXPECT_EQ(levelsText(book), "bid 1000 5:300-100\nask 1000 7:300-100\n");
}

// Key 0 stands for "no such order", so that only trades that waited find an order at a price of 0.
TEST_F(ThousandBookTradesTest, shouldReachALevelOfKeyZeroOnlyWhenTheTradeWaited)
{
    offer(fill(5, 0).shares(40));
    given(order(5).buy(0.0));
    EXPECT_EQ(levelsText(book), "bid 0 5:100-40\n");
    EXPECT_EQ(answer(fill(5, 9).shares(20)), "refused, flags 0");
    EXPECT_EQ(answer(cancelOfBuy(5)), "refused, flags 0");
    EXPECT_EQ(levelsText(book), "bid 0 5:100-40\n");
    EXPECT_EQ(bookText(book), "");
}

TEST_F(ThousandBookTradesTest, shouldWaitWhenTheLevelRefusesAndTheSeqIsAboveAll)
{
    given(order(9).buy(10.02).flag(0), order(12).buy(10.02).flag(0), cancelOfSell(9));
    EXPECT_EQ(answer(fill(3, 9)), "refused, flags 0") << "order 9 has gone from its level";
    EXPECT_EQ(pendingText(book.m_pendingSell), "9: 100\n") << "seqs of these asks are not counted";
    EXPECT_EQ(levelsText(book), "ask 1002 12:100\n");
}

// The level loses its older orders although it refuses the fill: the book neither tells nor corrects the row.
TEST_F(ThousandBookTradesTest, shouldLoseOlderOrdersUnseenWhenTheFillIsRefused)
{
    given(order(1).buy(10.00), order(3).buy(10.00), order(7).buy(10.00), cancelOfBuy(3));
    book.m_bidsDirty = false;
    EXPECT_EQ(answer(fill(3, 9)), "refused, flags 0");
    EXPECT_FALSE(book.m_bidsDirty);
    EXPECT_EQ(levelsText(book), "bid 1000 7:100\n");
    EXPECT_EQ(bookText(book), "bid 10.00 2h x2 (-1)\n");
    EXPECT_EQ(answer(order(8).buy(10.00)), "taken, flags 4");
    EXPECT_EQ(bookText(book), "bid 10.00 2h x2 (+1)\n") << "the next tick puts the row right";
}

TEST_F(ThousandBookTradesTest, shouldChangeNothingWhenEverythingIsOfferedTwice)
{
    const auto offerAll = [&] {
        offer(order(1).buy(10.02).shares(300));
        offer(order(2).sell(10.02).shares(100));
        offer(order(3).sell(10.03).shares(700));
        offer(fill(1, 2).shares(100));
        offer(cancelOfSell(3).shares(700));
        offer(order(4).sell(10.03).shares(200));
    };
    offerAll();
    const std::string once = levelsText(book) + bookText(book);
    EXPECT_EQ(once, "bid 1002 1:300-100\nask 1003 4:200\nbid 10.02 2h x1 (-1)\nask 10.03 2h x1 (+2)\n");
    offerAll();
    EXPECT_EQ(levelsText(book) + bookText(book), once);
}

TEST_F(ThousandBookTradesTest, shouldReachAnOrderOfSeqZeroWhenABrokenFeedHasOne)
{
    given(order(0).sell(10.02).flag(0));
    EXPECT_EQ(answer(cancelOfBuy(9)), "taken, flags 2") << "the side that the cancel does not have names order 0";
    EXPECT_EQ(levelsText(book), "");
}

TEST_F(ThousandBookTradesTest, shouldKeepAPanelsQueueWholeWhenItsLevelGoesWithOrdersLeft)
{
    given(order(1).buy(10.00).shares(300), order(2).buy(10.00).shares(0));
    const auto held = book.getLevel(true, 10.00);
    EXPECT_EQ(answer(fill(1, 9).shares(300)), "taken, flags 2") << "no shares are left, though an order is";
    EXPECT_EQ(levelText(*held), "[2:0] 0 x1 (-300) dead");
    given(order(3).buy(10.00).shares(100));
    EXPECT_EQ(answer(cancelOfBuy(2)), "refused, flags 0") << "order 2 went with its level";
    EXPECT_EQ(levelsText(book), "bid 1000 3:100\n");
}

} // namespace
