#include "tests/support/layout.h"
#include "tests/tessimodel/tickbook.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {

using namespace tests;

class ThousandBookTest : public TickBookTest {};

TEST_F(ThousandBookTest, shouldHoldNothingAndBeDirtyWhenNew)
{
    TC::ThousandBook fresh;
    EXPECT_EQ(fresh.m_lastTimetag, 0);
    EXPECT_TRUE(fresh.m_bidsDirty);
    EXPECT_TRUE(fresh.m_asksDirty);
    EXPECT_EQ(fresh.m_stock, nullptr);
    EXPECT_EQ(fresh.m_priceTick, 0.001);
    EXPECT_EQ(fresh.m_volumeUnit, 1);
    EXPECT_EQ(levelsText(fresh) + bookText(fresh), "");
}

TEST_F(ThousandBookTest, shouldKeepMembersInOrderWhenLaidOut)
{
    const TC::ThousandBook& b = book;
    EXPECT_TRUE(standInOrder(b.m_lastTimetag, b.m_bidsDirty, b.m_asksDirty, b.m_mutex, b.m_stock, b.m_priceTick,
                             b.m_volumeUnit, b.m_orderPriceKeys, b.m_bidLevels, b.m_askLevels, b.m_lastBuySeq,
                             b.m_lastSellSeq, b.m_bidRows, b.m_askRows, b.m_seenTrades, b.m_pendingBuy,
                             b.m_pendingSell));
}

// --- orders ---------------------------------------------------------------------------------------------------

TEST_F(ThousandBookTest, shouldTellLevelsFromChangesInPlaceWhenOrdersCome)
{
    EXPECT_EQ(answer(order(1).buy(10.00).shares(300)), "taken, flags 2");
    EXPECT_EQ(answer(order(2).buy(10.00).shares(200)), "taken, flags 4");
    EXPECT_EQ(answer(order(3).sell(10.02).shares(500)), "taken, flags 2");
    EXPECT_EQ(levelsText(book), "bid 1000 1:300 2:200\nask 1002 3:500\n");
    EXPECT_EQ(bookText(book), "bid 10.00 5h x2 (+2)\nask 10.02 5h x1 (+5)\n");
    EXPECT_EQ(book.m_lastBuySeq, 2);
    EXPECT_EQ(book.m_lastSellSeq, 3);
}

TEST_F(ThousandBookTest, shouldAddToTheFlagsThatStandWhenOrderIsTaken)
{
    flags = 1;
    EXPECT_TRUE(book.appendOrder(stock, order(1).buy(10), flags, true));
    EXPECT_EQ(flags, 3);
}

TEST_F(ThousandBookTest, shouldRefuseWithoutATraceWhenOrderIsACancelOrOfNoUse)
{
    for (const Order& refused : {order(1).buy(10).flag(3), order(2).buy(10).kind(0), order(3).sell(10).kind(3)})
        EXPECT_EQ(answer(refused), "refused, flags 0");
    EXPECT_EQ(levelsText(book), "");
    EXPECT_EQ(book.m_lastTimetag, 0);
    EXPECT_EQ(book.m_lastBuySeq, 0);
    EXPECT_TRUE(book.m_orderPriceKeys.empty());
}

TEST_F(ThousandBookTest, shouldRefuseBeforeItLooksAtTheInstrumentWhenOrderIsOfNoUse)
{
    book.m_stock.reset();
    EXPECT_EQ(answer(order(1).buy(10).kind(0)), "refused, flags 0");
}

TEST_F(ThousandBookTest, shouldRaiseOnlyTheForeignFlagWhenInstrumentDiffers)
{
    const auto sameCode = terminal.instruments.add(tests::stock("SH", "000001"));
    const auto sameMarket = terminal.instruments.add(tests::stock("SZ", "000002"));
    for (const auto& other : {sameCode, sameMarket, std::shared_ptr<ztservice::CInstrumentDetail>()}) {
        book.m_stock = other;
        flags = 7;
        EXPECT_FALSE(book.appendOrder(stock, order(1).buy(10), flags, true));
        EXPECT_EQ(flags, 16);
        flags = 7;
        EXPECT_FALSE(book.appendTransaction(stock, fill(1, 2), flags, true));
        EXPECT_EQ(flags, 16);
    }
    EXPECT_EQ(book.m_lastTimetag, 0);
    EXPECT_TRUE(book.m_seenTrades.empty());
}

TEST_F(ThousandBookTest, shouldTakeTheInstrumentByNameWhenItsRecordIsAnother)
{
    book.m_stock = terminal.instruments.add(tests::stock("SZ", "000001"));
    ASSERT_NE(book.m_stock, stock);
    EXPECT_EQ(answer(order(1).buy(10)), "taken, flags 2");
}

// --- the seq test ---------------------------------------------------------------------------------------------

TEST_F(ThousandBookTest, shouldRefuseWhenSeqIsNotAboveAllOfItsSide)
{
    given(order(5).buy(10.00), order(7).sell(10.02));
    EXPECT_EQ(answer(order(5).buy(10.00).time("09:31:00")), "refused, flags 0") << "a repetition";
    EXPECT_EQ(answer(order(4).buy(9.99).time("09:31:00")), "refused, flags 0") << "an order that comes late is lost";
    EXPECT_EQ(answer(order(6).sell(10.03).time("09:31:00")), "refused, flags 0");
    EXPECT_EQ(levelsText(book), "bid 1000 5:100\nask 1002 7:100\n");
    EXPECT_EQ(book.m_lastTimetag, timeOf("09:30:00")) << "a refused order does not move the book's time";
    EXPECT_EQ(answer(order(6).buy(10.01)), "taken, flags 2") << "the sides count apart";
}

TEST_F(ThousandBookTest, shouldCompareWholeSeqsWhenTheyNeedMoreThan32Bits)
{
    given(order((1LL << 32) + 5).buy(10.00));
    EXPECT_EQ(answer(order(6).buy(10.00)), "refused, flags 0");
    EXPECT_EQ(answer(order((1LL << 32) + 6).buy(10.00)), "taken, flags 4");
}

// Any flag but 1, 2 and 3 is an ask whose seq is not tested: 0, and the cancel of a sell, 4, too.
TEST_F(ThousandBookTest, shouldBeAnAskWithoutSeqTestWhenFlagIsNeitherBuyNorSell)
{
    given(order(9).sell(10.02));
    for (const int flag : {0, 4, 5, -1}) {
        SCOPED_TRACE(flag);
        EXPECT_EQ(answer(order(flag + 2).buy(10.02).flag(flag)), "taken, flags 4");
    }
    EXPECT_EQ(levelsText(book), "ask 1002 1:100 2:100 6:100 7:100 9:100\n");
    EXPECT_EQ(book.m_lastSellSeq, 9);
    EXPECT_EQ(answer(order(2).buy(10.02).flag(0)), "refused, flags 0") << "the level has this seq";
}

TEST_F(ThousandBookTest, shouldKeepTheNewKeyWhenLevelRefusesARepeatedOrder)
{
    given(order(2).buy(10.02).flag(0), order(3).sell(10.05));
    EXPECT_EQ(answer(order(2).buy(10.05).flag(0)), "taken, flags 4") << "another level does not know the seq";
    book.m_asksDirty = false;
    EXPECT_EQ(answer(order(2).buy(10.02).flag(0).time("09:32:00")), "refused, flags 0");
    EXPECT_FALSE(book.m_asksDirty);
    EXPECT_EQ(book.m_lastTimetag, timeOf("09:32:00"));
    EXPECT_EQ(book.m_orderPriceKeys.at(2), 1002);
}

// --- price keys -----------------------------------------------------------------------------------------------

struct KeyCase {
    double tick, price;
    int key;
};

TEST_F(ThousandBookTest, shouldKeyPricesInWholeTicksWhenOrdersCome)
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
    for (const KeyCase& c : cases) {
        book.clearAll();
        book.m_priceTick = c.tick;
        EXPECT_EQ(answer(order(1).buy(c.price)), "taken, flags 2");
        EXPECT_EQ(levelsText(book), "bid " + std::to_string(c.key) + " 1:100\n") << c.price << " by " << c.tick;
        EXPECT_EQ(book.m_bidRows.size(), c.key > 0 ? 1u : 0u) << c.price << " by " << c.tick;
    }
}

TEST_F(ThousandBookTest, shouldShareALevelWhenPricesAreWithinATick)
{
    given(order(1).buy(10.001), order(2).buy(10.004), order(3).buy(9.996));
    EXPECT_EQ(levelsText(book), "bid 1000 1:100 2:100 3:100\n");
    EXPECT_EQ(book.m_bidLevels.at(1000)->m_price, 10.001) << "the price as its first order gave it";
    EXPECT_EQ(book.m_bidRows.at(1000)->price, 10.001);
}

TEST_F(ThousandBookTest, shouldHaveALevelPerKindWithoutRowWhenOrdersHaveNoPrice)
{
    given(order(1).buy(10.00).kind(2), order(2).buy(10.00).kind(4), order(3).buy(10.00).kind(5),
          order(4).buy(10.00).kind(6), order(5).buy(10.00).kind(7), order(6).buy(11.00).kind(2),
          order(7).sell(10.00).kind(2));
    EXPECT_EQ(levelsText(book), "bid -7 5:100\nbid -6 4:100\nbid -5 3:100\nbid -4 2:100\nbid -2 1:100 6:100\n"
                                "ask -2 7:100\n");
    EXPECT_EQ(bookText(book), "");
}

TEST_F(ThousandBookTest, shouldTakeThePriceWhenKindIsUnknown)
{
    given(order(1).buy(10.00).kind(8), order(2).buy(10.00).kind(-2));
    EXPECT_EQ(levelsText(book), "bid 1000 1:100 2:100\n");
}

// --- reading and emptying -------------------------------------------------------------------------------------

TEST_F(ThousandBookTest, shouldMarkOnlyTheSideThatChangedWhenTicksCome)
{
    book.m_bidsDirty = book.m_asksDirty = false;
    given(order(1).buy(10.00).shares(300));
    EXPECT_TRUE(book.m_bidsDirty);
    EXPECT_FALSE(book.m_asksDirty);
    given(order(2).sell(10.02).shares(300));
    book.m_bidsDirty = book.m_asksDirty = false;
    given(cancelOfSell(2));
    EXPECT_FALSE(book.m_bidsDirty);
    EXPECT_TRUE(book.m_asksDirty);
}

TEST_F(ThousandBookTest, shouldFindTheLevelByKeyWhenPriceIsAskedFor)
{
    given(order(1).buy(10.00), order(2).buy(10.00).kind(2));
    const auto level = book.getLevel(true, 10.00);
    EXPECT_EQ(queueText(level), "1:100");
    EXPECT_EQ(book.getLevel(true, 10.004), level);
    EXPECT_EQ(book.getLevel(true, 9.996), level);
    EXPECT_EQ(queueText(book.getLevel(true, 10.01)), "none");
    EXPECT_EQ(queueText(book.getLevel(false, 10.00)), "none");
    EXPECT_EQ(queueText(book.getLevel(true, NAN)), "none");
    EXPECT_EQ(queueText(book.getLevel(true, -0.025)), "2:100") << "the market orders' level has key -2";
}

TEST_F(ThousandBookTest, shouldForgetLevelsAndSeqsButNotTradesWhenTheBookIsCleared)
{
    given(order(1).buy(10.00).shares(300), order(2).sell(10.02), fill(1, 2));
    offer(fill(8, 9));
    book.m_bidsDirty = book.m_asksDirty = false;
    book.clearBook();
    EXPECT_EQ(levelsText(book) + bookText(book), "");
    EXPECT_TRUE(book.m_orderPriceKeys.empty());
    EXPECT_EQ(book.m_lastBuySeq, 0);
    EXPECT_EQ(book.m_lastSellSeq, 0);
    EXPECT_EQ(book.m_lastTimetag, 0);
    EXPECT_TRUE(book.m_bidsDirty && book.m_asksDirty);
    EXPECT_EQ(book.m_seenTrades.size(), 2u);
    EXPECT_EQ(pendingText(book.m_pendingBuy), "8: 100\n");
    EXPECT_EQ(pendingText(book.m_pendingSell), "9: 100\n");
    EXPECT_EQ(book.m_stock, stock);

    EXPECT_EQ(answer(order(1).buy(10.00)), "taken, flags 2") << "a cleared book takes the same seqs again";
}

TEST_F(ThousandBookTest, shouldForgetTradesOnlyWhenPendingIsCleared)
{
    given(order(1).buy(10.00).shares(300), order(2).sell(10.02), fill(1, 2));
    offer(fill(8, 9));
    book.clearPending();
    EXPECT_TRUE(book.m_seenTrades.empty());
    EXPECT_EQ(book.parkedTrades(), 0u);
    EXPECT_EQ(levelsText(book), "bid 1000 1:300-100\n");
    EXPECT_EQ(answer(fill(1, 2)), "taken, flags 4") << "the trade counts as new";
}

TEST_F(ThousandBookTest, shouldForgetAllButTheInstrumentWhenAllIsCleared)
{
    given(order(1).buy(10.00).shares(300), order(2).sell(10.02), fill(1, 2));
    offer(fill(8, 9));
    book.clearAll();
    EXPECT_EQ(levelsText(book) + bookText(book), "");
    EXPECT_TRUE(book.m_seenTrades.empty());
    EXPECT_EQ(book.parkedTrades(), 0u);
    EXPECT_EQ(book.m_stock, stock);
    EXPECT_EQ(book.m_priceTick, 0.01);
    EXPECT_EQ(book.m_volumeUnit, 100);
}

TEST_F(ThousandBookTest, shouldFindEveryLevelWhenTheFirstPriceIsFarFromTheMarket)
{
    given(order(1).buy(100'000.00));
    for (int seq = 2; seq <= 300; ++seq)
        given(order(seq).buy(10.00 + seq * 0.01));
    for (int seq = 2; seq <= 300; ++seq)
        EXPECT_EQ(queueText(book.getLevel(true, 10.00 + seq * 0.01)), std::to_string(seq) + ":100");
    EXPECT_EQ(queueText(book.getLevel(true, 100'000.00)), "1:100");
    EXPECT_EQ(book.m_bidLevels.size(), 300u);
    EXPECT_EQ(answer(cancelOfBuy(1)), "taken, flags 2");
    EXPECT_EQ(answer(cancelOfBuy(300)), "taken, flags 2");
    EXPECT_EQ(book.m_bidRows.size(), 298u);
}

} // namespace
