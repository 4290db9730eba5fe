#include "tests/tessimodel/tickbook.h"

// How a tick-built book takes trades and cancels, whatever its levels are.
namespace {

using namespace tests;

template <class Book>
class TickBookTrades : public ::testing::Test {};

TYPED_TEST_SUITE(TickBookTrades, BothBooks, BookNames);

TYPED_TEST(TickBookTrades, shouldTouchTwoLevelsWhenBothOrdersAreKnown)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.02).shares(300), order(2).sell(10.02).shares(500));
    EXPECT_EQ(story.answer(fill(1, 2).shares(200).at(10.02)), "taken, flags 4");
    EXPECT_EQ(story.levels(), "bid 1002 1:300-200\nask 1002 2:500-200\n");
}

TYPED_TEST(TickBookTrades, shouldTakeTheLevelAwayWhenItRunsOut)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.02).shares(200), order(2).sell(10.02).shares(500));
    EXPECT_EQ(story.answer(fill(1, 2).shares(200)), "taken, flags 6") << "one level went, the other changed";
    EXPECT_EQ(story.levels(), "ask 1002 2:500-200\n");
    EXPECT_EQ(story.answer(cancelOfSell(2).shares(300)), "taken, flags 2");
    EXPECT_EQ(story.levels(), "");
}

TYPED_TEST(TickBookTrades, shouldBeginAnewWhenAPriceComesBackAfterItsLevelWent)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.001).shares(200), fill(1, 9).shares(200), order(2).buy(10.004).shares(300));
    EXPECT_EQ(totalsText(*story.book.getLevel(true, 10.00)), "[2:300] 300 x1");
    EXPECT_EQ(story.book.getLevel(true, 10.00)->m_price, 10.004);
}

TYPED_TEST(TickBookTrades, shouldTouchOneLevelWhenTradeIsACancel)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.00).shares(300), order(2).buy(10.00).shares(200), order(3).sell(10.02));
    EXPECT_EQ(story.answer(cancelOfBuy(1).shares(300)), "taken, flags 4");
    EXPECT_EQ(story.levels(), "bid 1000 2:200\nask 1002 3:100\n");
    EXPECT_EQ(story.waitingToBuy() + story.waitingToSell(), "") << "the side of seq 0 waits for nothing";
}

TYPED_TEST(TickBookTrades, shouldReachMarketOrdersThroughTheirSeqWhenTheyTrade)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(0).kind(2).shares(300), order(2).sell(10.02).shares(500));
    EXPECT_EQ(story.answer(fill(1, 2).shares(100)), "taken, flags 4");
    EXPECT_EQ(story.levels(), "bid -2 1:300-100\nask 1002 2:500-100\n");
    EXPECT_EQ(story.answer(fill(1, 3).shares(200)), "taken, flags 2");
}

TYPED_TEST(TickBookTrades, shouldFindTheOrderWhereItStandsWhenTheTradesPriceIsAnother)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.05).shares(300), fill(1, 9).at(10.00));
    EXPECT_EQ(story.levels(), "bid 1005 1:300-100\n");
}

// --- what was seen --------------------------------------------------------------------------------------------

// Two fills of the same two orders do not happen twice by contract: the second counts as a repetition, even with
// another price and size.
TYPED_TEST(TickBookTrades, shouldDropTheSecondTradeWhenThePairTradedBefore)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.02).shares(900), order(2).sell(10.02).shares(900), fill(1, 2).shares(100));
    EXPECT_EQ(story.answer(fill(1, 2).shares(200).at(10.01).time("09:31:00")), "refused, flags 0");
    EXPECT_EQ(story.levels(), "bid 1002 1:900-100\nask 1002 2:900-100\n");
    EXPECT_EQ(story.book.m_lastTimetag, timeOf("09:30:00")) << "a trade seen already does not move the book's time";
    EXPECT_EQ(story.answer(fill(1, 3).shares(200)), "taken, flags 4") << "another pair";
}

// Seqs are known without their side: a trade that has them the wrong way round meets the level at that price, here
// one whose orders are all older.
TYPED_TEST(TickBookTrades, shouldLookAtTheSamePriceWhenATradeHasItsSeqsTheWrongWayRound)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.02).shares(900), order(2).sell(10.02).shares(900));
    EXPECT_EQ(story.answer(fill(2, 1).shares(200)), "taken, flags 2");
    EXPECT_EQ(story.levels(), "ask 1002 2:900\n");
}

TYPED_TEST(TickBookTrades, shouldKeyTradesByBuyAndSellSeqWhenSeen)
{
    BookStory<TypeParam> story;
    story.offer(fill(3, 4));
    story.offer(cancelOfSell(7));
    story.offer(cancelOfBuy(7));
    story.offer(fill(-2, -1));
    EXPECT_EQ(story.book.m_seenTrades.size(), 4u);
    EXPECT_TRUE(story.book.m_seenTrades.contains((3LL << 32) + 4));
    EXPECT_TRUE(story.book.m_seenTrades.contains(7));
    EXPECT_TRUE(story.book.m_seenTrades.contains(7LL << 32));
    EXPECT_TRUE(story.book.m_seenTrades.contains(-2 * (1LL << 32) - 1)) << "the sell seq keeps its sign";
}

TYPED_TEST(TickBookTrades, shouldChangeNothingWhenATradeIsRefusedButMoveTheTime)
{
    BookStory<TypeParam> story;
    story.given(order(5).buy(10.00), order(5).sell(10.02));
    story.book.m_bidsDirty = story.book.m_asksDirty = false;
    EXPECT_EQ(story.answer(fill(3, 4).time("09:31:00")), "refused, flags 0");
    EXPECT_EQ(story.levels(), "bid 1000 5:100\nask 1002 5:100\n");
    EXPECT_FALSE(story.book.m_bidsDirty || story.book.m_asksDirty);
    EXPECT_EQ(story.book.m_lastTimetag, timeOf("09:31:00"));
    EXPECT_EQ(story.answer(fill(3, 6).time("09:30:30")), "refused, flags 0");
    EXPECT_EQ(story.book.m_lastTimetag, timeOf("09:31:00")) << "time goes on only";
}

// --- trades that wait -----------------------------------------------------------------------------------------

TYPED_TEST(TickBookTrades, shouldWaitForTheOrderWhenTradeComesFirst)
{
    BookStory<TypeParam> story;
    story.given(order(3).buy(9.99));
    EXPECT_EQ(story.answer(fill(5, 0).shares(40)), "refused, flags 0");
    EXPECT_EQ(story.waitingToBuy(), "5: 40\n");
    EXPECT_EQ(story.waitingToSell(), "");

    EXPECT_EQ(story.answer(order(5).buy(10.00)), "taken, flags 2");
    EXPECT_EQ(story.levels(), "bid 999 3:100\nbid 1000 5:100-40\n");
    EXPECT_EQ(story.waitingToBuy(), "");
}

TYPED_TEST(TickBookTrades, shouldWaitForAnAskWhenItsCancelComesFirst)
{
    BookStory<TypeParam> story;
    story.given(order(3).sell(10.01));
    EXPECT_EQ(story.answer(cancelOfSell(5)), "refused, flags 0");
    EXPECT_EQ(story.waitingToBuy(), "");
    EXPECT_EQ(story.waitingToSell(), "5: 100\n");
    EXPECT_EQ(story.answer(order(5).sell(10.01)), "taken, flags 4") << "it came and went, the level stays";
    EXPECT_EQ(story.levels(), "ask 1001 3:100\n");
    EXPECT_EQ(story.waitingToSell(), "");
}

// Only orders of its own side can be waited for: the seqs of the sides are apart.
TYPED_TEST(TickBookTrades, shouldGoOnWaitingWhenAnOrderOfTheOtherSideHasTheSeq)
{
    BookStory<TypeParam> story;
    story.offer(fill(5, 0).shares(40));
    story.given(order(5).sell(10.02));
    EXPECT_EQ(story.levels(), "ask 1002 5:100\n");
    EXPECT_EQ(story.waitingToBuy(), "5: 40\n");
}

TYPED_TEST(TickBookTrades, shouldComeAndGoInOneCallWhenTheWaitingTradeTakesTheWholeOrder)
{
    BookStory<TypeParam> story;
    story.given(order(3).buy(9.99));
    story.offer(fill(5, 0));
    story.book.m_bidsDirty = false;
    EXPECT_EQ(story.answer(order(5).buy(10.00)), "taken, flags 2");
    EXPECT_EQ(story.levels(), "bid 999 3:100\n");
    EXPECT_TRUE(story.book.m_bidsDirty);
    EXPECT_EQ(story.book.m_orderPriceKeys.at(5), 1000);
}

TYPED_TEST(TickBookTrades, shouldSayThatALevelWentWhenAnOldLevelDiesWithTheNewOrder)
{
    BookStory<TypeParam> story;
    story.given(order(3).buy(10.00));
    story.offer(fill(5, 0));
    EXPECT_EQ(story.answer(order(5).buy(10.00)), "taken, flags 2") << "the fill of 5 takes the older 3 with it";
    EXPECT_EQ(story.levels(), "");
}

TYPED_TEST(TickBookTrades, shouldOfferWaitingTradesInTurnWhenTheOrderComes)
{
    BookStory<TypeParam> story;
    story.offer(fill(5, 1).shares(30));
    story.offer(fill(5, 2).shares(70));
    story.offer(fill(5, 3).shares(50));
    EXPECT_EQ(story.waitingToBuy(), "5: 30 70 50\n");
    EXPECT_EQ(story.answer(order(5).buy(10.00)), "taken, flags 2");
    EXPECT_EQ(story.levels(), "");
    EXPECT_EQ(story.waitingToBuy(), "5: 50\n");
}

TYPED_TEST(TickBookTrades, shouldForgetTheTradeOnASideWhenItsOrderShouldHaveCome)
{
    BookStory<TypeParam> story;
    story.given(order(5).buy(10.00));
    EXPECT_EQ(story.answer(fill(3, 9)), "refused, flags 0");
    EXPECT_EQ(story.waitingToBuy(), "");
    EXPECT_EQ(story.waitingToSell(), "9: 100\n") << "the other side still waits";
    EXPECT_EQ(story.answer(fill(5, 8)), "taken, flags 2");
    EXPECT_EQ(story.answer(cancelOfBuy(5)), "refused, flags 0") << "its level has gone";
    EXPECT_EQ(story.waitingToBuy(), "");
}

TYPED_TEST(TickBookTrades, shouldDropACancelWhenItsOrderIsOnNoLevel)
{
    BookStory<TypeParam> story;
    story.given(order(5).buy(10.00), order(6).buy(10.00), order(7).sell(10.02).shares(300), fill(5, 7));
    EXPECT_EQ(story.answer(cancelOfBuy(5)), "refused, flags 0") << "dealt in full before";
    EXPECT_EQ(story.answer(cancelOfBuy(4)), "refused, flags 0") << "not known at all";
    EXPECT_EQ(story.answer(cancelOfSell(6)), "refused, flags 0") << "of the other side";
    EXPECT_EQ(story.levels(), "bid 1000 6:100\nask 1002 7:300-100\n");
    EXPECT_EQ(story.waitingToBuy() + story.waitingToSell(), "");
}

TYPED_TEST(TickBookTrades, shouldWaitForTheOtherSideOnlyWhenOneSideTookIt)
{
    BookStory<TypeParam> story;
    story.given(order(5).buy(10.00).shares(300));
    EXPECT_EQ(story.answer(fill(5, 7)), "taken, flags 4");
    EXPECT_EQ(story.waitingToBuy(), "");
    EXPECT_EQ(story.waitingToSell(), "7: 100\n");
    EXPECT_EQ(story.answer(order(7).sell(10.00).shares(300)), "taken, flags 2");
    EXPECT_EQ(story.levels(), "bid 1000 5:300-100\nask 1000 7:300-100\n");
}

// Key 0 stands for "no such order", so that only trades that waited find an order at a price of 0.
TYPED_TEST(TickBookTrades, shouldReachALevelOfKeyZeroOnlyWhenTheTradeWaited)
{
    BookStory<TypeParam> story;
    story.offer(fill(5, 0).shares(40));
    story.given(order(5).buy(0.0));
    EXPECT_EQ(story.levels(), "bid 0 5:100-40\n");
    EXPECT_EQ(story.answer(fill(5, 9).shares(20)), "refused, flags 0");
    EXPECT_EQ(story.answer(cancelOfBuy(5)), "refused, flags 0");
    EXPECT_EQ(story.levels(), "bid 0 5:100-40\n");
}

TYPED_TEST(TickBookTrades, shouldWaitWhenTheLevelRefusesAndTheSeqIsAboveAll)
{
    BookStory<TypeParam> story;
    story.given(order(9).buy(10.02).flag(0), order(12).buy(10.02).flag(0), cancelOfSell(9));
    EXPECT_EQ(story.answer(fill(3, 9)), "refused, flags 0") << "order 9 has gone from its level";
    EXPECT_EQ(story.waitingToSell(), "9: 100\n") << "seqs of these asks are not counted";
    EXPECT_EQ(story.levels(), "ask 1002 12:100\n");
}

// The level loses its older orders although it refuses the fill: the book does not tell, and the fill is lost.
TYPED_TEST(TickBookTrades, shouldLoseOlderOrdersUnseenWhenTheFillIsRefused)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.00), order(3).buy(10.00), order(7).buy(10.00), cancelOfBuy(3));
    story.book.m_bidsDirty = false;
    EXPECT_EQ(story.answer(fill(3, 9)), "refused, flags 0");
    EXPECT_FALSE(story.book.m_bidsDirty);
    EXPECT_EQ(story.levels(), "bid 1000 7:100\n");
    EXPECT_EQ(story.waitingToBuy(), "") << "order 7 came after it";
    EXPECT_EQ(story.answer(order(8).buy(10.00)), "taken, flags 4");
    EXPECT_EQ(totalsText(*story.book.getLevel(true, 10.00)), "[7:100 8:100] 200 x2");
}

TYPED_TEST(TickBookTrades, shouldChangeNothingWhenEverythingIsOfferedTwice)
{
    BookStory<TypeParam> story;
    const auto offerAll = [&] {
        story.offer(order(1).buy(10.02).shares(300));
        story.offer(order(2).sell(10.02).shares(100));
        story.offer(order(3).sell(10.03).shares(700));
        story.offer(fill(1, 2).shares(100));
        story.offer(cancelOfSell(3).shares(700));
        story.offer(order(4).sell(10.03).shares(200));
    };
    offerAll();
    EXPECT_EQ(story.levels(), "bid 1002 1:300-100\nask 1003 4:200\n");
    offerAll();
    EXPECT_EQ(story.levels(), "bid 1002 1:300-100\nask 1003 4:200\n");
}

TYPED_TEST(TickBookTrades, shouldReachAnOrderOfSeqZeroWhenABrokenFeedHasOne)
{
    BookStory<TypeParam> story;
    story.given(order(0).sell(10.02).flag(0));
    EXPECT_EQ(story.answer(cancelOfBuy(9)), "taken, flags 2") << "the side that the cancel does not have names order 0";
    EXPECT_EQ(story.levels(), "");
}

TYPED_TEST(TickBookTrades, shouldKeepAPanelsQueueWholeWhenItsLevelGoesWithOrdersLeft)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.00).shares(300), order(2).buy(10.00).shares(0));
    const auto held = story.book.getLevel(true, 10.00);
    EXPECT_EQ(story.answer(fill(1, 9).shares(300)), "taken, flags 2") << "no shares are left, though an order is";
    EXPECT_EQ(totalsText(*held), "[2:0] 0 x1 dead");
    story.given(order(3).buy(10.00).shares(100));
    EXPECT_EQ(story.answer(cancelOfBuy(2)), "refused, flags 0") << "order 2 went with its level";
    EXPECT_EQ(story.levels(), "bid 1000 3:100\n");
}

} // namespace
