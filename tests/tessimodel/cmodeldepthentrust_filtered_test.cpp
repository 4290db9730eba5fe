#include "tests/tessimodel/orderlist.h"

#include <climits>

namespace {

using namespace tests;

using OrderListFilteredTest = OrderListTest;

// --- a cancel is filtered by its order ------------------------------------------------------------------------

TEST_F(OrderListFilteredTest, shouldMeasureACancelByItsOrderWhenFiltered)
{
    feed.orders(history, {order(1).buy(10.00).shares(1000), order(2).sell(10.00).shares(100)});
    feed.trades(history, {cancelOfBuy(1).shares(100), cancelOfSell(2).at(10.00).shares(1000)});
    filter(atLeastHands(10));
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels 1");
    filter({.handsMode = 2, .hands = 1, .connective = 1});
    EXPECT_EQ(shownSeqs(*model), "orders 2 cancels 2");
    filter({.hands = INT_MAX, .amount = 10000});
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels 1");
}

TEST_F(OrderListFilteredTest, shouldTakeACancelsOwnTimeWhenFiltered)
{
    feed.orders(history, {order(1).buy(10.00).time("09:10:00"), order(2).buy(10.00).time("09:40:00")});
    feed.trades(history, {cancelOfBuy(1).time("09:40:00"), cancelOfBuy(2).time("09:50:00")});
    filter({.startTime = dayTime("09:30:00"), .endTime = dayTime("09:45:00")});
    EXPECT_EQ(shownSeqs(*model), "orders 2 cancels 1");
}

TEST_F(OrderListFilteredTest, shouldTakeTheLatestOrderWhenItsSeqCameTwice)
{
    feed.orders(history, {order(1).buy(10.00).shares(1000), order(1).sell(10.00).shares(100)});
    feed.trades(history, {cancelOfBuy(1)});
    filter(atLeastHands(5));
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels");
    filter({.showSellCancel = false});
    EXPECT_EQ(shownSeqs(*model), "orders 1 1 cancels");
    filter({.showBuyCancel = false});
    EXPECT_EQ(shownSeqs(*model), "orders 1 1 cancels 1");
}

TEST_F(OrderListFilteredTest, shouldHideACancelWhenItsOrderWasNeverSeen)
{
    feed.orders(history, {order(1).buy(10.00)});
    feed.trades(history, {cancelOfBuy(9), cancelOfSell(8), cancelOfBuy(1)});
    EXPECT_EQ(model->m_cancels.size(), 3);
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels 1");
    filter({.handsMode = 9, .amountMode = 9});
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels 1");
}

TEST_F(OrderListFilteredTest, shouldShowACancelOnceTheListIsFilteredAnewWhenItsOrderCameLater)
{
    feed.trades(history, {cancelOfBuy(1), cancelOfBuy(2)});
    feed.orders(live, {order(1).buy(10.00)});
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels");
    filter({});
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels 1");
    feed.orders(moreHistory, {order(2).buy(10.00)});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 cancels 1 2");
}

TEST_F(OrderListFilteredTest, shouldFindTheOrderByTheLowBitsOfItsSeqWhenACancelIsFiltered)
{
    feed.orders(history, {order((3LL << 32) + 5).buy(10.00), order(1LL << 32).buy(9.99)});
    feed.trades(history, {cancelOfBuy(5), Trade(0, 0, 3)});
    EXPECT_EQ(shownSeqs(*model), "orders 5 0 cancels 5 0");
}

// --- when it is looked at -------------------------------------------------------------------------------------

TEST_F(OrderListFilteredTest, shouldTestALiveRowOnceAndLeaveTheOthersWhenItComes)
{
    feed.orders(history, {order(1).buy(10.00), order(2).buy(10.00).shares(500)});
    feed.trades(history, {cancelOfBuy(1)});
    model->m_filter = atLeastHands(5); // not by setFilterParam, so that nothing has been filtered anew
    feed.orders(live, {order(3).buy(10.00)});
    feed.orders(live, {order(4).buy(10.00).shares(500)});
    feed.trades(live, {cancelOfBuy(3)});
    feed.trades(live, {cancelOfBuy(4)});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 4 cancels 1 4");
    EXPECT_EQ(model->m_orderCount, 4);
    EXPECT_EQ(model->m_cancels.size(), 3);
}

TEST_F(OrderListFilteredTest, shouldLeaveTheOtherRowsWhenATradeHistoryComes)
{
    feed.orders(history, {order(1).buy(10.00), order(2).buy(10.00).shares(500)});
    feed.trades(history, {cancelOfBuy(1)});
    model->m_filter = atLeastHands(5);
    feed.trades(moreHistory, {cancelOfBuy(1), cancelOfBuy(2)});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 cancels 1 2");
    feed.trades(history, {cancelOfBuy(1), cancelOfBuy(2)});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 cancels 2");
}

TEST_F(OrderListFilteredTest, shouldFilterAllRowsAnewWhenAnOrderHistoryComes)
{
    feed.orders(history, {order(1).buy(10.00), order(2).buy(10.00).shares(500)});
    feed.trades(history, {cancelOfBuy(1), cancelOfBuy(2), cancelOfBuy(3)});
    model->m_filter = atLeastHands(5);
    feed.orders(moreHistory, {order(3).buy(10.00).shares(500)});
    EXPECT_EQ(shownSeqs(*model), "orders 2 3 cancels 2 3");
}

TEST_F(OrderListFilteredTest, shouldFilterByTheOneListWhenAskedDirectly)
{
    feed.orders(history, {order(1).buy(10.00), order(2).buy(10.00).shares(500)});
    feed.trades(history, {cancelOfBuy(1)});
    model->m_filter = atLeastHands(5);
    EXPECT_FALSE(model->passFilter(model->m_orders[0]));
    EXPECT_TRUE(model->passFilter(model->m_orders[1]));
    EXPECT_FALSE(model->passFilter(model->m_cancels[0]));
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 cancels 1");
    model->datasFilter();
    EXPECT_EQ(shownSeqs(*model), "orders 2 cancels");
}

} // namespace
