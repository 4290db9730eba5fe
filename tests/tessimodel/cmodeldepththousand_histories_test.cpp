#include "tests/tessimodel/thousandmodel.h"

namespace {

using namespace tests;

class ThousandHistoriesTest : public ThousandTest, protected HistoriesOfADay {
protected:
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

TEST_F(ThousandHistoriesTest, shouldBeReadyWhenBothHistoriesAreIn)
{
    feed.orders(history, ordersOfTheDay);
    EXPECT_EQ(model.m_dataReady, 2);
    EXPECT_FALSE(model.isDataAllReadly());
    feed.trades(history, tradesOfTheDay);
    EXPECT_EQ(model.m_dataReady, 3);
    EXPECT_TRUE(model.isDataAllReadly());

    model.clear();
    feed.trades(history, tradesOfTheDay);
    EXPECT_EQ(model.m_dataReady, 1);
    EXPECT_FALSE(model.isDataAllReadly());
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX) << "the trades wait for the orders";
    feed.orders(history, ordersOfTheDay);
    EXPECT_TRUE(model.isDataAllReadly());
}

// --- live ticks before the book is built ----------------------------------------------------------------------

TEST_F(ThousandHistoriesTest, shouldTakeTheLastPriceOfALiveTradeOnlyWhenItIsReplayed)
{
    feed.trades(history, {});
    feed.trades(live, {fill(1, 2).at(10.00).shares(40)});
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
    feed.orders(history, {order(1).buy(10.00)});
    EXPECT_EQ(model.m_tickLastPrice, 10.00);
}

// --- the same stream again ------------------------------------------------------------------------------------

TEST_F(ThousandHistoriesTest, shouldBeReadyWhenMoreHistoryCompletesThePair)
{
    feed.orders(history, {order(1).buy(10.00)});
    feed.trades(moreHistory, {fill(1, 2).at(10.00).shares(40)});
    EXPECT_TRUE(model.isDataAllReadly());
    EXPECT_EQ(model.m_tickLastPrice, 10.00) << "trades that were offered, applied or not";

    model.clear();
    feed.trades(history, {fill(1, 2).at(10.00).shares(40)});
    feed.orders(moreHistory, {order(1).buy(10.00)});
    EXPECT_TRUE(model.isDataAllReadly());
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX) << "the held trade is not replayed";
}

// --- orders that were dealt before we saw them ----------------------------------------------------------------

TEST_F(ThousandHistoriesTest, shouldGetNoLastPriceWhenATradeIsOfConsumedOrdersAlone)
{
    const Records orders{order(1).buy(10.00), order(2).sell(10.00), order(3).buy(9.99)};
    const Records trades{fill(1, 2).at(10.00)};
    feed.begin(orders, trades);
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);

    model.clear();
    feed.trades(history, trades);
    feed.orders(history, orders);
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
}

TEST_F(ThousandHistoriesTest, shouldGetALastPriceWhenOneOrderOfATradeIsNotConsumed)
{
    feed.begin({order(1).buy(10.00).shares(300), order(2).sell(10.00)}, {fill(1, 2).at(10.00)});
    EXPECT_EQ(model.m_tickLastPrice, 10.00);
}

// With nothing consumed every trade is offered, even one without any order.
TEST_F(ThousandHistoriesTest, shouldGetALastPriceOfATradeWithoutOrdersOnlyWhenNothingIsConsumed)
{
    feed.begin({order(1).buy(10.00)}, {fill(0, 0).at(9.50)});
    EXPECT_EQ(model.m_tickLastPrice, 9.50);
    feed.begin({order(1).buy(10.00), order(2).buy(9.00)}, {cancelOfBuy(2), fill(0, 0).at(9.70)});
    EXPECT_EQ(model.m_tickLastPrice, 9.50);
    feed.orders(history, {order(1).buy(10.00)});
    EXPECT_EQ(model.m_tickLastPrice, 9.70) << "with order 2 gone from the history";
}

TEST_F(ThousandHistoriesTest, shouldShowWhatIsLeftWhenAnOrderIsPartlyDealt)
{
    feed.begin({order(1).buy(10.00).shares(500)}, {fill(1, 8).at(10.00).shares(200), fill(1, 9).at(10.00).shares(299)});
    EXPECT_EQ(bookText(model), "bid 10.00 1h x1 (-2)\n");
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
