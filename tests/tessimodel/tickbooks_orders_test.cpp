#include "tests/tessimodel/tickbook.h"

#include <climits>
#include <cmath>
#include <limits>

// How a tick-built book takes orders, whatever its levels are.
namespace {

using namespace tests;

template <class Book>
class TickBookOrders : public ::testing::Test {};

TYPED_TEST_SUITE(TickBookOrders, BothBooks, BookNames);

TYPED_TEST(TickBookOrders, shouldHoldNothingAndBeDirtyWhenNew)
{
    const TypeParam fresh;
    EXPECT_EQ(fresh.m_lastTimetag, 0);
    EXPECT_TRUE(fresh.m_bidsDirty);
    EXPECT_TRUE(fresh.m_asksDirty);
    EXPECT_EQ(fresh.m_stock, nullptr);
    EXPECT_EQ(fresh.m_priceTick, 0.001);
    EXPECT_EQ(fresh.m_volumeUnit, 1);
    EXPECT_EQ(fresh.m_lastBuySeq, 0);
    EXPECT_EQ(fresh.m_lastSellSeq, 0);
    EXPECT_EQ(levelsText(fresh), "");
}

TYPED_TEST(TickBookOrders, shouldTellLevelsFromChangesInPlaceWhenOrdersCome)
{
    BookStory<TypeParam> story;
    EXPECT_EQ(story.answer(order(1).buy(10.00).shares(300)), "taken, flags 2");
    EXPECT_EQ(story.answer(order(2).buy(10.00).shares(200)), "taken, flags 4");
    EXPECT_EQ(story.answer(order(3).sell(10.02).shares(500)), "taken, flags 2");
    EXPECT_EQ(story.levels(), "bid 1000 1:300 2:200\nask 1002 3:500\n");
    EXPECT_EQ(totalsText(*story.book.getLevel(true, 10.00)), "[1:300 2:200] 500 x2");
    EXPECT_EQ(story.book.m_lastBuySeq, 2);
    EXPECT_EQ(story.book.m_lastSellSeq, 3);
}

TYPED_TEST(TickBookOrders, shouldGiveALevelItsSideAndFirstPriceWhenItAppears)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.001), order(2).buy(10.004), order(3).buy(9.996), order(4).sell(10.02));
    EXPECT_EQ(story.levels(), "bid 1000 1:100 2:100 3:100\nask 1002 4:100\n");
    EXPECT_EQ(story.book.m_bidLevels.at(1000)->m_price, 10.001) << "the price as its first order gave it";
    EXPECT_TRUE(story.book.m_bidLevels.at(1000)->m_isBid);
    EXPECT_FALSE(story.book.m_askLevels.at(1002)->m_isBid);
}

TYPED_TEST(TickBookOrders, shouldAddToTheFlagsThatStandWhenATickIsTaken)
{
    BookStory<TypeParam> story;
    EXPECT_EQ(story.answer(order(1).buy(10).shares(300), 1), "taken, flags 3");
    EXPECT_EQ(story.answer(fill(1, 9), 3), "taken, flags 7");
}

TYPED_TEST(TickBookOrders, shouldRefuseWithoutATraceWhenOrderIsACancelOrOfNoUse)
{
    BookStory<TypeParam> story;
    story.book.m_bidsDirty = story.book.m_asksDirty = false;
    for (const Order& refused : {order(1).buy(10).flag(3), order(2).buy(10).kind(0), order(3).sell(10).kind(3),
                                 order(4).buy(10).flag(3).kind(2), order(5).buy(10).flag(0).kind(0)})
        EXPECT_EQ(story.answer(refused, 8), "refused, flags 8");
    EXPECT_EQ(story.levels(), "");
    EXPECT_EQ(story.book.m_lastTimetag, 0);
    EXPECT_EQ(story.book.m_lastBuySeq, 0);
    EXPECT_EQ(story.book.m_lastSellSeq, 0);
    EXPECT_TRUE(story.book.m_orderPriceKeys.empty());
    EXPECT_FALSE(story.book.m_bidsDirty || story.book.m_asksDirty);
}

TYPED_TEST(TickBookOrders, shouldRefuseBeforeItLooksAtTheInstrumentWhenOrderIsOfNoUse)
{
    BookStory<TypeParam> story;
    story.book.m_stock.reset();
    for (const Order& refused : {order(1).buy(10).flag(3), order(1).buy(10).kind(0), order(1).buy(10).kind(3)})
        EXPECT_EQ(story.answer(refused), "refused, flags 0");
}

TYPED_TEST(TickBookOrders, shouldRaiseOnlyTheForeignFlagWhenInstrumentDiffers)
{
    BookStory<TypeParam> story;
    const auto sameCode = story.terminal.instruments.add(stock("SH", "000001"));
    const auto sameMarket = story.terminal.instruments.add(stock("SZ", "000002"));
    for (const auto& other : {sameCode, sameMarket, std::shared_ptr<ztservice::CInstrumentDetail>()}) {
        story.book.m_stock = other;
        EXPECT_EQ(story.answer(order(1).buy(10), 7), "refused, flags 16");
        EXPECT_EQ(story.answer(fill(1, 2), 7), "refused, flags 16");
    }
    EXPECT_EQ(story.book.m_lastTimetag, 0);
    EXPECT_EQ(story.book.m_lastBuySeq, 0);
    EXPECT_TRUE(story.book.m_seenTrades.empty());
}

TYPED_TEST(TickBookOrders, shouldTakeTheInstrumentByNameWhenItsRecordIsAnother)
{
    BookStory<TypeParam> story;
    story.book.m_stock = story.terminal.instruments.add(stock("SZ", "000001"));
    ASSERT_NE(story.book.m_stock, story.stock);
    EXPECT_EQ(story.answer(order(1).buy(10)), "taken, flags 2");
    EXPECT_EQ(story.answer(fill(1, 2)), "taken, flags 2");
}

// --- the seq test ---------------------------------------------------------------------------------------------

TYPED_TEST(TickBookOrders, shouldRefuseWhenSeqIsNotAboveAllOfItsSide)
{
    BookStory<TypeParam> story;
    story.given(order(5).buy(10.00), order(7).sell(10.02));
    EXPECT_EQ(story.answer(order(5).buy(10.00).time("09:31:00")), "refused, flags 0") << "a repetition";
    EXPECT_EQ(story.answer(order(4).buy(9.99).time("09:31:00")), "refused, flags 0")
        << "an order that comes late is lost";
    EXPECT_EQ(story.answer(order(6).sell(10.03).time("09:31:00")), "refused, flags 0");
    EXPECT_EQ(story.answer(order(7).sell(10.03).time("09:31:00")), "refused, flags 0");
    EXPECT_EQ(story.levels(), "bid 1000 5:100\nask 1002 7:100\n");
    EXPECT_EQ(story.book.m_lastTimetag, timeOf("09:30:00")) << "a refused order does not move the book's time";
    EXPECT_FALSE(story.book.m_orderPriceKeys.contains(4));
    EXPECT_EQ(story.answer(order(6).buy(10.01)), "taken, flags 2") << "the sides count apart";
}

TYPED_TEST(TickBookOrders, shouldCompareWholeSeqsWhenTheyNeedMoreThan32Bits)
{
    BookStory<TypeParam> story;
    story.given(order((1LL << 32) + 5).buy(10.00));
    EXPECT_EQ(story.answer(order(6).buy(10.00)), "refused, flags 0");
    EXPECT_EQ(story.answer(order((1LL << 32) + 6).buy(10.00)), "taken, flags 4");
}

TYPED_TEST(TickBookOrders, shouldRefuseWhenTheFirstSeqIsNotAboveZero)
{
    BookStory<TypeParam> story;
    EXPECT_EQ(story.answer(order(0).buy(10.00)), "refused, flags 0");
    EXPECT_EQ(story.answer(order(-1).sell(10.00)), "refused, flags 0");
    EXPECT_EQ(story.answer(order(-1).sell(10.00).flag(0)), "taken, flags 2");
}

// Any flag but 1, 2 and 3 is an ask whose seq is not tested: 0, and the cancel of a sell, 4, too.
TYPED_TEST(TickBookOrders, shouldBeAnAskWithoutSeqTestWhenFlagIsNeitherBuyNorSell)
{
    BookStory<TypeParam> story;
    story.given(order(9).sell(10.02));
    for (const int flag : {0, 4, 5, -1}) {
        SCOPED_TRACE(flag);
        EXPECT_EQ(story.answer(order(flag + 2).buy(10.02).flag(flag)), "taken, flags 4");
    }
    EXPECT_EQ(story.levels(), "ask 1002 1:100 2:100 6:100 7:100 9:100\n");
    EXPECT_EQ(story.book.m_lastSellSeq, 9);
    EXPECT_EQ(story.book.m_lastBuySeq, 0);
    EXPECT_EQ(story.answer(order(2).buy(10.02).flag(0)), "refused, flags 0") << "the level has this seq";
    EXPECT_EQ(story.answer(order(12).buy(10.02).flag(0)), "taken, flags 4");
    EXPECT_EQ(story.book.m_lastSellSeq, 9) << "nor does such an order count as the highest";
}

TYPED_TEST(TickBookOrders, shouldKeepTheNewKeyWhenLevelRefusesARepeatedOrder)
{
    BookStory<TypeParam> story;
    story.given(order(2).buy(10.02).flag(0), order(3).sell(10.05));
    EXPECT_EQ(story.answer(order(2).buy(10.05).flag(0)), "taken, flags 4") << "another level does not know the seq";
    story.book.m_asksDirty = false;
    EXPECT_EQ(story.answer(order(2).buy(10.02).flag(0).time("09:32:00")), "refused, flags 0");
    EXPECT_FALSE(story.book.m_asksDirty);
    EXPECT_EQ(story.book.m_lastTimetag, timeOf("09:32:00"));
    EXPECT_EQ(story.book.m_orderPriceKeys.at(2), 1002);
    EXPECT_EQ(story.answer(cancelOfSell(2)), "taken, flags 2") << "which is where it is looked for now";
    EXPECT_EQ(story.levels(), "ask 1005 2:100 3:100\n");
}

// --- price keys -----------------------------------------------------------------------------------------------

struct KeyCase {
    double tick, price;
    int key;
};

TYPED_TEST(TickBookOrders, shouldKeyPricesInWholeTicksWhenOrdersCome)
{
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    const KeyCase cases[] = {
        {0.01, 10.23, 1023},
        {0.01, 10.234, 1023},
        {0.01, 10.236, 1024},
        {0.25, 10.125, 41},
        {0.25, 10.124, 40},
        {0.25, -10.125, -40},
        {0.01, -1.0, -99},
        {0.01, 0.0, 0},
        {0.01, 0.004, 0},
        {0.01, 0.006, 1},
        {0.01, NAN, INT_MIN},
        {0.01, kInfinite, INT_MIN},
        {0.01, 1e300, INT_MIN},
        {0.0, 10.0, INT_MIN},
        {0.0, 0.0, INT_MIN},
        {0.01, -kInfinite, INT_MIN},
        {1.0, 2147483646.0, INT_MAX - 1},
        {1.0, 2147483648.0, INT_MIN},
        {0.01, std::numeric_limits<double>::max(), INT_MIN},
    };
    BookStory<TypeParam> story;
    for (const KeyCase& c : cases) {
        story.book.clearBook();
        story.book.m_priceTick = c.tick;
        EXPECT_EQ(story.answer(order(1).buy(c.price)), "taken, flags 2");
        EXPECT_EQ(story.levels(), "bid " + std::to_string(c.key) + " 1:100\n") << c.price << " by " << c.tick;
        EXPECT_EQ(story.book.m_orderPriceKeys.at(1), c.key);
    }
}

// A price below zero has a level like any, and so have prices that no key fits: they are found through their seq.
TYPED_TEST(TickBookOrders, shouldReachLevelsOfAnyKeyButZeroWhenTheirOrdersTrade)
{
    for (const double price : {-1.0, 1e300, static_cast<double>(NAN)}) {
        BookStory<TypeParam> story;
        story.given(order(1).buy(price).shares(300), order(2).sell(price));
        EXPECT_EQ(story.answer(fill(1, 2)), "taken, flags 6") << price;
        EXPECT_EQ(story.book.m_bidLevels.size(), 1u);
        EXPECT_EQ(story.book.m_askLevels.size(), 0u);
    }
}

TYPED_TEST(TickBookOrders, shouldHaveALevelPerKindWhenOrdersHaveNoPrice)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.00).kind(2), order(2).buy(10.00).kind(4), order(3).buy(10.00).kind(5),
                order(4).buy(10.00).kind(6), order(5).buy(10.00).kind(7), order(6).buy(11.00).kind(2),
                order(7).sell(10.00).kind(2));
    EXPECT_EQ(story.levels(), "bid -7 5:100\nbid -6 4:100\nbid -5 3:100\nbid -4 2:100\nbid -2 1:100 6:100\n"
                              "ask -2 7:100\n");
}

TYPED_TEST(TickBookOrders, shouldTakeThePriceWhenKindIsUnknown)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.00).kind(8), order(2).buy(10.00).kind(-2), order(3).buy(10.00).kind(1));
    EXPECT_EQ(story.levels(), "bid 1000 1:100 2:100 3:100\n");
}

// --- reading and emptying -------------------------------------------------------------------------------------

TYPED_TEST(TickBookOrders, shouldMarkOnlyTheSideThatChangedWhenTicksCome)
{
    BookStory<TypeParam> story;
    story.book.m_bidsDirty = story.book.m_asksDirty = false;
    story.given(order(1).buy(10.00).shares(300));
    EXPECT_TRUE(story.book.m_bidsDirty);
    EXPECT_FALSE(story.book.m_asksDirty);
    story.book.m_bidsDirty = false;
    story.given(order(2).sell(10.02).shares(300));
    EXPECT_FALSE(story.book.m_bidsDirty);
    EXPECT_TRUE(story.book.m_asksDirty);
    story.book.m_asksDirty = false;
    story.given(cancelOfSell(2));
    EXPECT_FALSE(story.book.m_bidsDirty);
    EXPECT_TRUE(story.book.m_asksDirty);
    story.book.m_asksDirty = false;
    story.given(fill(1, 2));
    EXPECT_TRUE(story.book.m_bidsDirty);
    EXPECT_FALSE(story.book.m_asksDirty);
}

TYPED_TEST(TickBookOrders, shouldKeepTheNewestTimeWhenOrdersComeLate)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.00).time("09:31:00"), order(2).buy(10.00).time("09:30:59"));
    EXPECT_EQ(story.book.m_lastTimetag, timeOf("09:31:00"));
    story.given(fill(1, 9).time("09:31:02"));
    EXPECT_EQ(story.book.m_lastTimetag, timeOf("09:31:02"));
}

TYPED_TEST(TickBookOrders, shouldFindTheLevelByKeyWhenPriceIsAskedFor)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.00), order(2).buy(10.00).kind(2));
    const auto level = story.book.getLevel(true, 10.00);
    EXPECT_EQ(queueText(level), "1:100");
    EXPECT_EQ(story.book.getLevel(true, 10.004), level);
    EXPECT_EQ(story.book.getLevel(true, 9.996), level);
    EXPECT_EQ(queueText(story.book.getLevel(true, 10.01)), "none");
    EXPECT_EQ(queueText(story.book.getLevel(false, 10.00)), "none");
    EXPECT_EQ(queueText(story.book.getLevel(true, NAN)), "none");
    EXPECT_EQ(queueText(story.book.getLevel(true, -0.025)), "2:100") << "the market orders' level has key -2";
}

TYPED_TEST(TickBookOrders, shouldForgetLevelsAndSeqsButNotTradesWhenTheBookIsCleared)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.00).shares(300), order(2).sell(10.02), fill(1, 2));
    story.offer(fill(8, 9));
    story.book.m_bidsDirty = story.book.m_asksDirty = false;
    story.book.clearBook();
    EXPECT_EQ(story.levels(), "");
    EXPECT_TRUE(story.book.m_orderPriceKeys.empty());
    EXPECT_EQ(story.book.m_lastBuySeq, 0);
    EXPECT_EQ(story.book.m_lastSellSeq, 0);
    EXPECT_EQ(story.book.m_lastTimetag, 0);
    EXPECT_TRUE(story.book.m_bidsDirty && story.book.m_asksDirty);
    EXPECT_EQ(story.book.m_seenTrades.size(), 2u);
    EXPECT_EQ(story.waitingToBuy(), "8: 100\n");
    EXPECT_EQ(story.waitingToSell(), "9: 100\n");
    EXPECT_EQ(story.book.m_stock, story.stock);

    EXPECT_EQ(story.answer(order(1).buy(10.00)), "taken, flags 2") << "a cleared book takes the same seqs again";
    EXPECT_EQ(story.answer(order(8).buy(10.01).shares(300)), "taken, flags 2");
    EXPECT_EQ(story.levels(), "bid 1000 1:100\nbid 1001 8:300-100\n") << "the trade had waited all along";
}

TYPED_TEST(TickBookOrders, shouldForgetTradesOnlyWhenPendingIsCleared)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.00).shares(300), order(2).sell(10.02), fill(1, 2));
    story.offer(fill(8, 9));
    story.book.m_bidsDirty = story.book.m_asksDirty = false;
    story.book.clearPending();
    EXPECT_TRUE(story.book.m_seenTrades.empty());
    EXPECT_EQ(story.waitingToBuy() + story.waitingToSell(), "");
    EXPECT_EQ(story.levels(), "bid 1000 1:300-100\n");
    EXPECT_FALSE(story.book.m_bidsDirty || story.book.m_asksDirty);
    EXPECT_EQ(story.answer(fill(1, 2)), "taken, flags 4") << "the trade counts as new";
}

TYPED_TEST(TickBookOrders, shouldForgetBookAndTradesWhenAllIsCleared)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(10.00).shares(300), order(2).sell(10.02), fill(1, 2));
    story.offer(fill(8, 9));
    story.book.clearAll();
    EXPECT_EQ(story.levels() + story.waitingToBuy() + story.waitingToSell(), "");
    EXPECT_TRUE(story.book.m_seenTrades.empty());
    EXPECT_EQ(story.book.m_lastBuySeq, 0);
    EXPECT_EQ(story.book.m_priceTick, 0.01);
    EXPECT_EQ(story.book.m_volumeUnit, 100);
}

TYPED_TEST(TickBookOrders, shouldFindEveryLevelWhenTheFirstPriceIsFarFromTheMarket)
{
    BookStory<TypeParam> story;
    story.given(order(1).buy(100'000.00));
    for (int seq = 2; seq <= 300; ++seq)
        story.given(order(seq).buy(10.00 + seq * 0.01));
    for (int seq = 2; seq <= 300; ++seq)
        EXPECT_EQ(queueText(story.book.getLevel(true, 10.00 + seq * 0.01)), std::to_string(seq) + ":100");
    EXPECT_EQ(queueText(story.book.getLevel(true, 100'000.00)), "1:100");
    EXPECT_EQ(story.book.m_bidLevels.size(), 300u);
    EXPECT_EQ(story.answer(cancelOfBuy(1)), "taken, flags 2");
    EXPECT_EQ(story.answer(cancelOfBuy(300)), "taken, flags 2");
    EXPECT_EQ(story.book.m_bidLevels.size(), 298u);
}

} // namespace
