#include "quoter/transactiondata.h"
#include "tests/tessimodel/orderlist.h"

#include <boost/weak_ptr.hpp>

#include <cfloat>
#include <memory>

namespace {

using namespace tests;

class OrderListClearTest : public OrderListTest {
protected:
    void givenRows()
    {
        feed.orders(history, {order(1).buy(10.00), order(2).sell(10.00)});
        feed.trades(history, {fill(1, 2), cancelOfBuy(1)});
    }

    // One of everything that is freed later.
    struct Watched {
        boost::weak_ptr<TC::DepthOrderData> order;
        boost::weak_ptr<TC::DepthCancelData> cancel;
        std::weak_ptr<quoter::TransactionData> trade;
    };

    Watched watch() const
    {
        return {model->m_orders.at(0), model->m_cancels.value(0), model->m_transactionsBySeq.at(1).at(0)};
    }
};

// --- clear ----------------------------------------------------------------------------------------------------

TEST_F(OrderListClearTest, shouldDropAllDataAndTheInstrumentWhenCleared)
{
    givenRows();
    takeFlags(*model);
    model->clear();
    EXPECT_EQ(allText(*model) + shownText(*model), "");
    EXPECT_TRUE(model->m_orders.empty() && model->m_filteredOrders.empty());
    EXPECT_TRUE(model->m_cancels.empty() && model->m_filteredCancels.empty());
    EXPECT_TRUE(model->m_transactionsBySeq.empty() && model->m_orderIndexBySeq.empty());
    EXPECT_EQ(model->m_stock, nullptr);
    EXPECT_EQ(model->m_priceTick, 0.001);
    EXPECT_EQ(model->m_lastClose, DBL_MAX);
    EXPECT_EQ(model->m_volumeUnit, 1);
    EXPECT_EQ(takeFlags(*model), "orders trades");
}

TEST_F(OrderListClearTest, shouldEmptyEveryMarketsCancelsWhenCleared)
{
    for (const char* market : {"SH", "SZ", "BJ"}) {
        follow(market, "600000");
        givenRows();
        EXPECT_NE(model->m_filteredCancelCount, 0);
        model->clear();
        EXPECT_EQ(allText(*model) + shownText(*model), "") << market;
    }
}

TEST_F(OrderListClearTest, shouldRaiseBothFlagsWhenAnEmptyModelIsCleared)
{
    model->clear();
    EXPECT_EQ(takeFlags(*model), "orders trades");
    model->clear();
    EXPECT_EQ(takeFlags(*model), "orders trades") << "also without an instrument";
}

// A panel that lowers the flags while the rows are still there reads these; it must be told again.
TEST_F(OrderListClearTest, shouldHaveBothFlagsUpWhenAPanelLoweredThemInTheMiddle)
{
    givenRows();
    std::string shown = "nothing";
    const auto followed = model->m_stock;
    model->m_stock.reset(followed.get(), [&](const ztservice::CInstrumentDetail*) {
        takeFlags(*model);
        shown = shownSeqs(*model);
    });
    model->clear();
    EXPECT_EQ(shown, "orders 1 2 cancels 1") << "the instrument goes before the rows";
    EXPECT_EQ(takeFlags(*model), "orders trades");
    EXPECT_EQ(shownSeqs(*model), "orders cancels");
}

TEST_F(OrderListClearTest, shouldKeepTheFilterWhenCleared)
{
    TC::SDepthFilterParam param = atLeastHands(5);
    param.reserved0 = 7;
    param.showSellCancel = false;
    filter(param);
    model->clear();
    EXPECT_EQ(model->m_filter.hands, 5);
    EXPECT_EQ(model->m_filter.reserved0, 7);
    EXPECT_FALSE(model->m_filter.showSellCancel);
    follow("SZ", "000001");
    feed.orders(history, {order(1).buy(10.00), order(2).buy(10.00).shares(500)});
    EXPECT_EQ(shownSeqs(*model), "orders 2 cancels");
}

TEST_F(OrderListClearTest, shouldTakeTheDayAgainOnlyOnceAnInstrumentIsSetWhenCleared)
{
    givenRows();
    model->clear();
    takeFlags(*model);
    givenRows();
    EXPECT_EQ(allText(*model), "");
    EXPECT_EQ(takeFlags(*model), "none");
    follow("SZ", "000001");
    givenRows();
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 cancels 1");
    OrderList::OrderRow found;
    ASSERT_TRUE(model->getOrderData(2, found));
    EXPECT_EQ(rowText(*found), "2 S 10.00 x100 1h 09:30:00");
}

TEST_F(OrderListClearTest, shouldDropABatchThatWaitsWhenCleared)
{
    feed.holdBack();
    givenRows();
    model->clear();
    takeFlags(*model);
    feed.run();
    EXPECT_EQ(allText(*model), "");
    EXPECT_EQ(takeFlags(*model), "none");
}

// --- what was big is freed later ------------------------------------------------------------------------------

TEST_F(OrderListClearTest, shouldFreeRowsAndTradesOnTheReleaseStrandWhenCleared)
{
    givenRows();
    const Watched rows = watch();
    model->clear();
    EXPECT_TRUE(model->m_orders.empty() && model->m_cancels.empty() && model->m_transactionsBySeq.empty());
    EXPECT_FALSE(rows.order.expired() || rows.cancel.expired() || rows.trade.expired());
    EXPECT_TRUE(terminal.strands.drain("data_release"));
    EXPECT_TRUE(rows.order.expired());
    EXPECT_TRUE(rows.cancel.expired());
    EXPECT_TRUE(rows.trade.expired());
}

TEST_F(OrderListClearTest, shouldFreeEachStreamsRowsOnTheReleaseStrandWhenItsHistoryBeginsAnew)
{
    for (const bool ordersBringCancels : {true, false}) {
        follow(ordersBringCancels ? "SH" : "SZ", "600000");
        givenRows();
        const Watched rows = watch();
        terminal.strands.drain("data_release");

        feed.orders(history, {});
        EXPECT_TRUE(model->m_orders.empty());
        EXPECT_EQ(model->m_cancels.empty(), ordersBringCancels);
        EXPECT_FALSE(rows.order.expired() || rows.cancel.expired());
        terminal.strands.drain("data_release");
        EXPECT_TRUE(rows.order.expired());
        EXPECT_EQ(rows.cancel.expired(), ordersBringCancels);
        EXPECT_FALSE(rows.trade.expired());

        feed.trades(history, {});
        EXPECT_TRUE(model->m_transactionsBySeq.empty() && model->m_cancels.empty());
        EXPECT_FALSE(rows.trade.expired());
        EXPECT_EQ(rows.cancel.expired(), ordersBringCancels);
        terminal.strands.drain("data_release");
        EXPECT_TRUE(rows.trade.expired());
        EXPECT_TRUE(rows.cancel.expired());
    }
}

TEST_F(OrderListClearTest, shouldKeepARowForAPanelThatHoldsItWhenCleared)
{
    givenRows();
    const auto order = model->getOrderData(0, false);
    const auto cancel = model->getCancelData(0);
    OrderList::Trades trades;
    ASSERT_TRUE(model->getTransactionData(1, trades));
    model->clear();
    terminal.strands.drain("data_release");
    EXPECT_EQ(rowText(*order), "1 B 10.00 x100 1h 09:30:00");
    EXPECT_EQ(rowText(*cancel), "1 0.00 x100 1h 09:30:00");
    EXPECT_EQ(trades.size(), 2u);
    EXPECT_EQ(trades.front()->sellSeq, 2);
}

// --- the model's life -----------------------------------------------------------------------------------------

TEST_F(OrderListClearTest, shouldFreeItsRowsOnTheReleaseStrandWhenAModelDies)
{
    givenRows();
    const Watched rows = watch();
    model.reset();
    EXPECT_FALSE(rows.order.expired() || rows.cancel.expired() || rows.trade.expired());
    terminal.strands.drain("data_release");
    EXPECT_TRUE(rows.order.expired());
    EXPECT_TRUE(rows.cancel.expired());
    EXPECT_TRUE(rows.trade.expired());
}

TEST_F(OrderListClearTest, shouldLiveUntilItsWorkIsDoneWhenItsLastHolderLetsGo)
{
    for (const bool byOrders : {true, false}) {
        auto owner = boost::make_shared<OrderList>();
        owner->setStock(keyOf("SZ", "000001"));
        const boost::weak_ptr<OrderList> alive = owner;
        const auto batch = batchFor("SZ", "000001", {order(1).buy(10.00), cancelOfBuy(1)});
        if (byOrders)
            owner->entrustCallback(0, history, batch);
        else
            owner->transactionCallback(0, history, batch);
        owner.reset();
        ASSERT_FALSE(alive.expired()) << "the queued task holds the model";
        EXPECT_EQ(alive.lock()->m_orderCount + alive.lock()->m_cancels.size(), 0) << "no work is done inline";
        terminal.strands.drain("modulegroup");
        EXPECT_TRUE(alive.expired());
    }
}

TEST_F(OrderListClearTest, shouldDoTheWorkOnTheStrandInPostingOrderWhenBatchesWait)
{
    feed.holdBack();
    givenRows();
    feed.orders(live, {order(3).buy(10.00)});
    feed.trades(live, {cancelOfBuy(3)});
    EXPECT_EQ(allText(*model), "") << "the callbacks only post";
    EXPECT_EQ(takeFlags(*model), "none");
    feed.run();
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 3 cancels 1 3");
}

} // namespace
