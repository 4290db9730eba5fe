#include "Formula/formulaparam.h"
#include "tests/support/layout.h"
#include "tests/support/logtext.h"
#include "tests/support/requests.h"
#include "tests/tessimodel/handcases.h"
#include "tests/tessimodel/orderlist.h"

#include <cfloat>
#include <type_traits>

namespace {

using namespace tests;

using OrderListSetUpTest = OrderListTest;

static_assert(!std::is_polymorphic_v<TC::CModelDepthEntrust>);
static_assert(std::is_base_of_v<boost::enable_shared_from_this<TC::CModelDepthEntrust>, TC::CModelDepthEntrust>);

// --- construction ---------------------------------------------------------------------------------------------

TEST_F(OrderListSetUpTest, shouldHoldNothingWhenNew)
{
    const auto fresh = boost::make_shared<OrderList>();
    EXPECT_EQ(fresh->m_stock, nullptr);
    EXPECT_EQ(fresh->m_priceTick, 0.001);
    EXPECT_EQ(fresh->m_lastClose, DBL_MAX);
    EXPECT_EQ(fresh->m_volumeUnit, 1);
    EXPECT_EQ(fresh->m_orderCount, 0);
    EXPECT_EQ(allText(*fresh) + shownText(*fresh), "");
    EXPECT_TRUE(fresh->m_transactionsBySeq.empty() && fresh->m_orderIndexBySeq.empty());
    EXPECT_EQ(takeFlags(*fresh), "none");
    EXPECT_NE(fresh->m_strand, nullptr);
    expectConsistent(*fresh);
}

TEST_F(OrderListSetUpTest, shouldShowTheWholeTradingDayWhenFilterIsNew)
{
    const TC::SDepthFilterParam& filter = model->m_filter;
    EXPECT_EQ(filter.reserved0, 0);
    EXPECT_EQ(filter.reserved1, 0);
    EXPECT_EQ(filter.handsMode, 0);
    EXPECT_EQ(filter.hands, 0);
    EXPECT_EQ(filter.connective, 0);
    EXPECT_EQ(filter.amountMode, 0);
    EXPECT_EQ(filter.amount, 0);
    EXPECT_EQ(filter.startTime, dayTime("09:00:00"));
    EXPECT_EQ(filter.endTime, dayTime("16:10:00"));
    EXPECT_TRUE(filter.showBuyOrder && filter.showSellOrder && filter.showBuyCancel && filter.showSellCancel);
}

TEST_F(OrderListSetUpTest, shouldKeepMembersInOrderWhenLaidOut)
{
    const OrderList& m = *model;
    EXPECT_TRUE(standInOrder(
        m.m_stock, m.m_priceTick, m.m_lastClose, m.m_volumeUnit, m.m_orderCount, m.m_filteredOrderCount,
        m.m_filteredCancelCount, m.m_ordersChanged, m.m_transactionsChanged, m.m_mutex, m.m_strand, m.m_orders,
        m.m_cancels, m.m_filteredOrders, m.m_filteredCancels, m.m_transactionsBySeq, m.m_orderIndexBySeq, m.m_filter));
    const TC::DepthOrderData o;
    EXPECT_TRUE(standInOrder(o.time, o.price, o.hands, o.volume, o.seq, o.bsFlag, o.orderKind));
    const TC::DepthCancelData c;
    EXPECT_TRUE(standInOrder(c.time, c.price, c.hands, c.volume, c.seq));
    const TC::SDepthFilterParam f;
    EXPECT_TRUE(standInOrder(f.reserved0, f.reserved1, f.handsMode, f.hands, f.connective, f.amountMode, f.amount,
                             f.startTime, f.endTime, f.showBuyOrder, f.showSellOrder, f.showBuyCancel,
                             f.showSellCancel));
}

// --- the instrument -------------------------------------------------------------------------------------------

TEST_F(OrderListSetUpTest, shouldTakeSharesPerHandFromTheTypesWhenSetUp)
{
    expectHandsByType(terminal, *model);
}

TEST_F(OrderListSetUpTest, shouldTakeTickAndLastCloseFromTheInstrumentWhenKnown)
{
    auto bond = stock("SH", "113001", {126});
    bond.priceTick = 0.005;
    bond.lastClose = 101.5;
    const auto detail = terminal.instruments.add(bond);
    model->setStock(keyOf("SH", "113001"));
    EXPECT_EQ(model->m_stock, detail);
    EXPECT_EQ(model->m_priceTick, 0.005);
    EXPECT_EQ(model->m_lastClose, 101.5);
    EXPECT_EQ(takeFlags(*model), "none");
}

TEST_F(OrderListSetUpTest, shouldFallBackWhenKeyIsUnknown)
{
    follow("SH", "113001", {126});
    model->setStock("nobody knows this");
    EXPECT_EQ(model->m_stock, nullptr);
    EXPECT_EQ(model->m_priceTick, 0.001);
    EXPECT_EQ(model->m_lastClose, DBL_MAX);
    EXPECT_EQ(model->m_volumeUnit, 1);
}

TEST_F(OrderListSetUpTest, shouldWorkOutTheSettingsAnewWhenAsked)
{
    model->m_priceTick = 7;
    model->m_lastClose = 7;
    model->m_volumeUnit = 7;
    model->initStockParams();
    EXPECT_EQ(model->m_priceTick, 0.01);
    EXPECT_EQ(model->m_lastClose, 10.0);
    EXPECT_EQ(model->m_volumeUnit, 100);
    model->m_stock.reset();
    model->initStockParams();
    EXPECT_EQ(model->m_priceTick, 0.001);
    EXPECT_EQ(model->m_lastClose, DBL_MAX);
    EXPECT_EQ(model->m_volumeUnit, 1);
}

TEST_F(OrderListSetUpTest, shouldKeepRowsAndFilterWhenInstrumentChanges)
{
    filter(atLeastHands(2));
    feed.orders(history, {order(1).buy(10.00).shares(300), order(2).buy(9.99)});
    feed.trades(history, {cancelOfBuy(1).shares(300)});
    takeFlags(*model);
    const std::string rows = allText(*model);
    follow("SH", "600000");
    EXPECT_EQ(allText(*model), rows);
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels 1");
    EXPECT_EQ(tradesText(*model, 1), "1+0 x300 cancel");
    EXPECT_EQ(model->m_filter.hands, 2);
    EXPECT_EQ(takeFlags(*model), "none");
}

// --- the request ----------------------------------------------------------------------------------------------

TEST_F(OrderListSetUpTest, shouldAskForTheLastTradingDayWhenRequested)
{
    terminal.instruments.setLastTradingDay("SZ", 20240301);
    TC::CFormulaParam param = strangeRequest();
    model->getParams(param);
    EXPECT_EQ(requestText(param), requestText(requestByVolume("SZ", "000001", timeOf("00:00:00"))));
}

TEST_F(OrderListSetUpTest, shouldLeaveTheRequestAsItWasWhenThereIsNoInstrument)
{
    TC::CFormulaParam param = strangeRequest();
    model->setStock("nobody knows this");
    model->getParams(param);
    EXPECT_EQ(requestText(param), requestText(strangeRequest()));
    boost::make_shared<OrderList>()->getParams(param);
    EXPECT_EQ(requestText(param), requestText(strangeRequest()));
    follow("SZ", "000001");
    model->clear();
    model->getParams(param);
    EXPECT_EQ(requestText(param), requestText(strangeRequest()));
}

// --- the log --------------------------------------------------------------------------------------------------

TEST_F(OrderListSetUpTest, shouldLogNothingWhenBatchesAreDelivered)
{
    const Records orders{order(1).buy(10.00), order(2).buy(10.00), order(3).buy(10.00)};
    const Records trades{fill(1, 4), fill(2, 4), cancelOfBuy(3)};
    for (const int kind : {history, moreHistory, live}) {
        feed.orders(kind, orders);
        feed.trades(kind, trades);
    }
    feed.request("SZ", "000002");
    feed.orders(history, orders);
    model->clear();
    EXPECT_EQ(logTexts(terminal), std::vector<std::string>());
}

} // namespace
