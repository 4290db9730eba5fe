#include "tests/tessimodel/thousandmodel.h"

namespace {

using namespace tests;

class ThousandHistoriesTest : public ThousandTest {
protected:
    const Records ordersOfTheDay{
        order(1).buy(10.00).shares(500), order(2).sell(10.02).shares(300), order(3).buy(10.02).shares(100),
        order(4).buy(9.99).shares(200),  order(5).sell(10.03).shares(700),
    };
    const Records tradesOfTheDay{fill(3, 2).at(10.02).shares(100), cancelOfBuy(4).shares(200)};
    const std::string bookOfTheDay = "bid 10.00 5h x1 (+5)\nask 10.02 2h x1 (-1)\nask 10.03 7h x1 (+7)\n";
};

// --- which history comes first --------------------------------------------------------------------------------

TEST_F(ThousandHistoriesTest, shouldGiveTheSameBookWhenTheOtherHistoryComesFirst)
{
    feed.orders(history, ordersOfTheDay);
    feed.trades(history, tradesOfTheDay);
    EXPECT_EQ(bookText(model), bookOfTheDay);

    model.clear();
    feed.trades(history, tradesOfTheDay);
    feed.orders(history, ordersOfTheDay);
    EXPECT_EQ(bookText(model), bookOfTheDay);
}

TEST_F(ThousandHistoriesTest, shouldBuildTheBookWhenBothHistoriesAreIn)
{
    feed.orders(history, ordersOfTheDay);
    EXPECT_EQ(model.m_loadedHistory, 2);
    EXPECT_EQ(model.m_dataReady, 2);
    EXPECT_FALSE(model.isDataAllReadly());
    EXPECT_EQ(model.m_updateFlags, 0);
    EXPECT_EQ(levelsText(model.m_book), "");
    EXPECT_EQ(model.m_orders.size(), 5u);

    feed.trades(history, tradesOfTheDay);
    EXPECT_EQ(model.m_loadedHistory, 3);
    EXPECT_TRUE(model.isDataAllReadly());
    EXPECT_EQ(model.m_updateFlags, 1);
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 1:500\nask 1002 2:300-100\nask 1003 5:700\n");
}

TEST_F(ThousandHistoriesTest, shouldWaitForTheOrdersWhenTradesComeFirst)
{
    feed.trades(history, tradesOfTheDay);
    EXPECT_EQ(model.m_loadedHistory, 1);
    EXPECT_EQ(model.m_dataReady, 1);
    EXPECT_EQ(model.m_updateFlags, 0);
    EXPECT_EQ(model.m_transactions.size(), 2u);
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
    feed.orders(history, ordersOfTheDay);
    EXPECT_TRUE(model.isDataAllReadly());
    EXPECT_EQ(model.m_updateFlags, 1);
}

TEST_F(ThousandHistoriesTest, shouldDoNothingOnTheCallersThreadWhenDelivered)
{
    feed.holdBack();
    feed.begin(ordersOfTheDay, tradesOfTheDay);
    EXPECT_EQ(model.m_loadedHistory, 0);
    EXPECT_TRUE(model.m_orders.empty());
    feed.run();
    EXPECT_EQ(bookText(model), bookOfTheDay);
}

TEST_F(ThousandHistoriesTest, shouldRaiseTheRebuiltFlagWhenTicksAreSuppressedToo)
{
    Thousand quiet(true, 1);
    quiet.setStock(keyOf("SZ", "000001"));
    BookFeed(terminal, quiet).begin(ordersOfTheDay, tradesOfTheDay);
    EXPECT_EQ(quiet.m_updateFlags, 1);
    EXPECT_EQ(bookText(quiet), bookOfTheDay);
}

// --- live ticks before the book is built ----------------------------------------------------------------------

TEST_F(ThousandHistoriesTest, shouldBuildWithALiveOrderWhenItIsInTheListByThen)
{
    feed.orders(history, {order(1).buy(10.00)});
    feed.orders(live, {order(2).buy(10.01)});
    EXPECT_EQ(model.m_orders.size(), 2u);
    EXPECT_EQ(levelsText(model.m_book), "");
    feed.trades(history, {});
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 1:100\nbid 1001 2:100\n");
}

TEST_F(ThousandHistoriesTest, shouldLoseALiveOrderWhenTheHistoryThatFollowsLacksIt)
{
    feed.orders(live, {order(2).buy(10.01)});
    EXPECT_EQ(model.m_orders.size(), 1u);
    feed.begin({order(1).buy(10.00)});
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 1:100\n");
}

TEST_F(ThousandHistoriesTest, shouldReplayALiveTradeWhenItIsInTheListByThen)
{
    feed.trades(history, {});
    feed.trades(live, {fill(1, 2).at(10.00).shares(40)});
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
    feed.orders(history, {order(1).buy(10.00)});
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 1:100-40\n");
    EXPECT_EQ(model.m_tickLastPrice, 10.00);
}

// --- the same stream again ------------------------------------------------------------------------------------

TEST_F(ThousandHistoriesTest, shouldAddWithoutRebuildWhenMoreHistoryComes)
{
    feed.begin({order(1).buy(10.00)}, {});
    const auto level = model.m_book.getLevel(true, 10.00);
    feed.orders(moreHistory, {order(2).buy(10.00), order(3).sell(10.02).shares(300)});
    feed.trades(moreHistory, {fill(9, 3).at(10.02).shares(100), cancelOfBuy(1)});
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 2:100\nask 1002 3:300-100\n");
    EXPECT_EQ(model.m_book.getLevel(true, 10.00), level);
    EXPECT_EQ(model.m_orders.size(), 3u);
    EXPECT_EQ(model.m_transactions.size(), 2u);
    EXPECT_EQ(model.m_updateFlags, 1);
}

TEST_F(ThousandHistoriesTest, shouldChangeNothingInTheBookWhenABatchIsRepeated)
{
    feed.begin(ordersOfTheDay, tradesOfTheDay);
    const std::string levels = levelsText(model.m_book);
    feed.orders(moreHistory, ordersOfTheDay);
    feed.trades(moreHistory, tradesOfTheDay);
    EXPECT_EQ(levelsText(model.m_book), levels);
    EXPECT_EQ(bookText(model), bookOfTheDay);
    EXPECT_EQ(model.m_orders.size(), 10u) << "the list keeps what was received";
}

TEST_F(ThousandHistoriesTest, shouldRebuildFromTheHeldTradesWhenOrdersBeginAnew)
{
    feed.begin(ordersOfTheDay, tradesOfTheDay);
    feed.orders(history, {order(2).sell(10.05).shares(800), order(8).buy(9.98)});
    EXPECT_EQ(levelsText(model.m_book), "bid 998 8:100\nask 1005 2:800-100\n");
    EXPECT_EQ(model.m_orders.size(), 2u);
    EXPECT_EQ(model.m_transactions.size(), 2u);
}

TEST_F(ThousandHistoriesTest, shouldRebuildFromTheHeldOrdersWhenTradesBeginAnew)
{
    feed.begin(ordersOfTheDay, tradesOfTheDay);
    feed.trades(history, {fill(1, 9).at(10.00).shares(200)});
    EXPECT_EQ(levelsText(model.m_book), "bid 999 4:200\nbid 1000 1:500-200\nbid 1002 3:100\nask 1002 2:300\n"
                                        "ask 1003 5:700\n");
    EXPECT_EQ(model.m_dealVolumes.size(), 2u);
    EXPECT_EQ(model.m_orders.size(), 5u);
}

// Only a history's beginning replays what the other stream holds.
TEST_F(ThousandHistoriesTest, shouldNotReplayTheHeldStreamWhenMoreHistoryCompletesThePair)
{
    feed.orders(history, {order(1).buy(10.00)});
    feed.trades(moreHistory, {fill(1, 2).at(10.00).shares(40)});
    EXPECT_TRUE(model.isDataAllReadly());
    EXPECT_EQ(levelsText(model.m_book), "");
    EXPECT_EQ(model.m_book.parkedTrades(), 2u);
    EXPECT_EQ(model.m_tickLastPrice, 10.00) << "trades that were offered, applied or not";

    model.clear();
    feed.trades(history, {fill(1, 2).at(10.00).shares(40)});
    feed.orders(moreHistory, {order(1).buy(10.00)});
    EXPECT_TRUE(model.isDataAllReadly());
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 1:100\n") << "the held trade is not replayed";
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
}

// --- orders that were dealt before we saw them ----------------------------------------------------------------

TEST_F(ThousandHistoriesTest, shouldSkipOrdersAndTradesOfThemAloneWhenTheyAreConsumed)
{
    const Records orders{order(1).buy(10.00), order(2).sell(10.00), order(3).buy(9.99)};
    const Records trades{fill(1, 2).at(10.00)};
    feed.begin(orders, trades);
    EXPECT_EQ(levelsText(model.m_book), "bid 999 3:100\n");
    EXPECT_EQ(model.m_book.m_orderPriceKeys.size(), 1u);
    EXPECT_TRUE(model.m_book.m_seenTrades.empty());
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX) << "a skipped trade gives no last price";

    model.clear();
    feed.trades(history, trades);
    feed.orders(history, orders);
    EXPECT_EQ(levelsText(model.m_book), "bid 999 3:100\n");
    EXPECT_EQ(model.m_book.m_orderPriceKeys.size(), 1u);
    EXPECT_TRUE(model.m_book.m_seenTrades.empty());
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
    EXPECT_EQ(model.m_orders.size(), 3u) << "the list keeps consumed orders";
}

TEST_F(ThousandHistoriesTest, shouldApplyATradeWhenOneOfItsOrdersIsNotConsumed)
{
    feed.begin({order(1).buy(10.00).shares(300), order(2).sell(10.00)}, {fill(1, 2).at(10.00)});
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 1:300-100\n");
    EXPECT_EQ(model.m_tickLastPrice, 10.00);
    EXPECT_EQ(model.m_book.m_pendingSell.count(2), 1u) << "the consumed order never came";
}

// With nothing consumed every trade is offered, even one without any order.
TEST_F(ThousandHistoriesTest, shouldOfferTradesWithoutOrdersOnlyWhenNothingIsConsumed)
{
    feed.begin({order(1).buy(10.00)}, {fill(0, 0).at(9.50)});
    EXPECT_EQ(model.m_tickLastPrice, 9.50);
    feed.begin({order(1).buy(10.00), order(2).buy(9.00)}, {cancelOfBuy(2), fill(0, 0).at(9.70)});
    EXPECT_EQ(model.m_tickLastPrice, 9.50);
    feed.orders(history, {order(1).buy(10.00)});
    EXPECT_EQ(model.m_tickLastPrice, 9.70) << "with order 2 gone from the history";
}

TEST_F(ThousandHistoriesTest, shouldApplyInFullAndBringDownWhenAnOrderIsPartlyDealt)
{
    feed.begin({order(1).buy(10.00).shares(500)}, {fill(1, 8).at(10.00).shares(200), fill(1, 9).at(10.00).shares(299)});
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 1:500-499\n");
    EXPECT_EQ(bookText(model), "bid 10.00 1h x1 (-2)\n");
    feed.trades(moreHistory, {fill(1, 10).at(10.00).shares(1)});
    EXPECT_EQ(levelsText(model.m_book), "");
}

TEST_F(ThousandHistoriesTest, shouldSelectAnewWhenMoreOrdersCome)
{
    feed.begin({}, {fill(1, 2).at(10.00), fill(5, 6).shares(40)});
    feed.orders(moreHistory, {order(1).buy(10.00), order(5).buy(9.99)});
    EXPECT_EQ(levelsText(model.m_book), "bid 999 5:100-40\n") << "order 1 is consumed; the trade of order 5 had waited";
}

// --- deal volumes ---------------------------------------------------------------------------------------------

TEST_F(ThousandHistoriesTest, shouldConsumeTheOrderWhenItWasCancelledWhateverItsSize)
{
    feed.begin({order(1).buy(10.00).shares(500000000), order(2).buy(9.99)}, {cancelOfBuy(1).shares(1)});
    EXPECT_EQ(model.m_dealVolumes.at(1), 1000000000);
    EXPECT_EQ(levelsText(model.m_book), "bid 999 2:100\n");
    EXPECT_FALSE(model.m_book.m_orderPriceKeys.contains(1));
}

// The sums are of 32 bits: three cancels of one order wrap below zero, so that it counts as not dealt; the book takes
// it, and its cancel takes it off.
TEST_F(ThousandHistoriesTest, shouldWrapWhenCancelsOfAnOrderAreRepeated)
{
    feed.begin({order(1).buy(10.00)}, {cancelOfBuy(1), cancelOfBuy(1), cancelOfBuy(1)});
    EXPECT_EQ(model.m_dealVolumes.at(1), -1294967296);
    EXPECT_TRUE(model.m_book.m_orderPriceKeys.contains(1));
    EXPECT_EQ(levelsText(model.m_book), "");
}

TEST_F(ThousandHistoriesTest, shouldSumDealtVolumePerOrderWhenTradeHistoryComes)
{
    feed.trades(history, {fill(1, 2).shares(100), fill(1, 3).shares(250), fill(0, 3).shares((1LL << 32) + 7)});
    EXPECT_EQ(model.m_dealVolumes.size(), 3u) << "seq 0 is no order";
    EXPECT_EQ(model.m_dealVolumes.at(1), 350);
    EXPECT_EQ(model.m_dealVolumes.at(2), 100);
    EXPECT_EQ(model.m_dealVolumes.at(3), 257);
    feed.trades(moreHistory, {fill(1, 4).shares(50)});
    EXPECT_EQ(model.m_dealVolumes.at(1), 400);
    feed.trades(live, {fill(1, 5).shares(50)});
    EXPECT_EQ(model.m_dealVolumes.at(1), 400) << "live trades do not count";
    EXPECT_FALSE(model.m_dealVolumes.contains(5));
    feed.trades(history, {fill(7, 8).shares(10)});
    EXPECT_EQ(model.m_dealVolumes.size(), 2u);
}

// --- last figures ---------------------------------------------------------------------------------------------

struct HandsCase {
    __int64 shares;
    int hands;
};

TEST_F(ThousandHistoriesTest, shouldRoundTheLastVolumeToHandsWhenHistoryEnds)
{
    const HandsCase cases[] = {{0, 0}, {1, 1}, {99, 1}, {100, 1}, {149, 1}, {150, 2}, {249, 2}, {250, 3}, {-5, 1}};
    for (const HandsCase& c : cases) {
        SCOPED_TRACE(c.shares);
        model.clear();
        feed.begin({}, {fill(1, 2).at(10.01).shares(700), fill(1, 3).at(10.02).shares(c.shares)});
        EXPECT_EQ(model.m_tickLastVolume, c.hands);
        model.clear();
        feed.trades(history, {fill(1, 2).at(10.01).shares(700), fill(1, 3).at(10.02).shares(c.shares)});
        feed.orders(history, {});
        EXPECT_EQ(model.m_tickLastVolume, c.hands);
        EXPECT_EQ(model.m_tickLastPrice, 10.02);
    }
}

TEST_F(ThousandHistoriesTest, shouldNotMoveTheLastPriceWhenTheLatestTradeIsACancel)
{
    feed.begin({order(1).buy(10.00).shares(900)},
               {fill(1, 2).at(10.02).shares(300), cancelOfBuy(1).at(1.11).shares(600)});
    EXPECT_EQ(model.m_tickLastPrice, 10.02);
    EXPECT_EQ(model.m_tickLastVolume, 3);
}

// The figure is converted at the end of each trade history, also one that offered no trade: it is divided once more.
TEST_F(ThousandHistoriesTest, shouldDivideTheLastVolumeAgainWhenAHistoryOffersNoTrade)
{
    feed.begin({}, {fill(1, 2).at(10.02).shares(2500000)});
    EXPECT_EQ(model.m_tickLastVolume, 25000);
    feed.trades(moreHistory, {cancelOfBuy(1)});
    EXPECT_EQ(model.m_tickLastVolume, 250);
    feed.trades(history, {});
    EXPECT_EQ(model.m_tickLastVolume, 3);
    feed.orders(history, {});
    EXPECT_EQ(model.m_tickLastVolume, 1);
    EXPECT_EQ(model.m_tickLastPrice, 10.02);
}

TEST_F(ThousandHistoriesTest, shouldLeaveTheLastVolumeWhenMoreOrdersCome)
{
    feed.begin({}, {fill(1, 2).at(10.02).shares(2500000)});
    feed.orders(moreHistory, {order(1).buy(10.00)});
    feed.trades(moreHistory, {});
    EXPECT_EQ(model.m_tickLastVolume, 25000);
}

TEST_F(ThousandHistoriesTest, shouldFadeMarksOnceWhenAHistoryEnds)
{
    feed.begin({order(1).buy(10.00).time("09:30:00"), order(2).buy(9.99).time("09:30:01"),
                order(3).sell(10.05).time("09:30:03.500")});
    EXPECT_EQ(bookText(model), "bid 9.99 1h x1 (+1)\nbid 10.00 1h x1 (0)\nask 10.05 1h x1 (+1)\n");
}

} // namespace
