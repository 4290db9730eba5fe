#include "Formula/formulaparam.h"
#include "tests/tessimodel/encounter.h"
#include "tests/tessimodel/orderlist.h"

#include <boost/thread/locks.hpp>

#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <vector>

namespace {

using namespace tests;
using namespace std::chrono_literals;

using OrderListConcurrent = OrderListTest;

// --- the lock -------------------------------------------------------------------------------------------------

TEST_F(OrderListConcurrent, shouldWaitForTheLockWhenReadOrChanged)
{
    feed.orders(history, {order(1).buy(10.00)});
    feed.trades(history, {cancelOfBuy(1)});
    OrderList& m = *model;
    const std::vector<std::function<void()>> operations{
        [&] { m.setStock(keyOf("SZ", "000001")); },
        [&] { m.initStockParams(); },
        [&] {
            TC::CFormulaParam param;
            m.getParams(param);
        },
        [&] { filter({}); },
        [&] { m.getOrderData(0, true); },
        [&] { m.getOrderData(0, false); },
        [&] {
            OrderList::OrderRow found;
            m.getOrderData(1, found);
        },
        [&] { m.getCancelData(0); },
        [&] {
            OrderList::Trades trades;
            m.getTransactionData(1, trades);
        },
        [&] { m.tracebackOrderSeq(0); },
        [&] { m.tracebackCancelSeq(0); },
        [&] { m.doEntrust(0, live, batchFor("SZ", "000001", {})); },
        [&] { m.doTransaction(0, live, batchFor("SZ", "000001", {})); },
        [&] { m.datasFilter(); },
        [&] { m.clearEntrusts(); },
        [&] { m.clearTransactions(); },
        [&] { m.clear(); },
    };
    expectToWait(m.m_mutex, operations);
}

TEST_F(OrderListConcurrent, shouldTakeALivePushAtOnceWhenAPanelReads)
{
    boost::unique_lock<boost::recursive_mutex> reading(model->m_mutex);
    auto pushed = start([&] {
        model->entrustCallback(0, live, batchFor("SZ", "000001", {order(1).buy(10.00)}));
        model->transactionCallback(0, live, batchFor("SZ", "000001", {cancelOfBuy(1)}));
    });
    EXPECT_EQ(pushed.wait_for(kLong), std::future_status::ready);
    reading.unlock();
    feed.run();
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels 1");
}

// The filter is there before the lock is: it counts at once for the rows of a batch that is being taken.
TEST_F(OrderListConcurrent, shouldTakeANewFilterAtOnceWhenTheListIsBusy)
{
    feed.orders(history, {order(1).buy(10.00)});
    boost::unique_lock<boost::recursive_mutex> busy(model->m_mutex);
    auto set = start([&] { filter(nothing()); });
    const auto end = std::chrono::steady_clock::now() + kLong;
    while (model->passFilter(model->m_orders[0]) && std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
    EXPECT_FALSE(model->passFilter(model->m_orders[0]));
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels") << "filtered anew only with the lock";
    EXPECT_NE(set.wait_for(0s), std::future_status::ready);
    busy.unlock();
    set.wait();
    EXPECT_EQ(shownSeqs(*model), "orders cancels");
}

// --- a batch in work ------------------------------------------------------------------------------------------

TEST_F(OrderListConcurrent, shouldFilterTheRestByWhatIsSetThenWhenAFilterComesInMidBatch)
{
    const Records cancels(100'000, cancelOfBuy(1));
    const Encounter encounter{
        .prepare =
            [&] {
                filter({});
                feed.orders(history, {order(1).buy(10.00)});
            },
        .work = [&] { model->doTransaction(0, history, batchFor("SZ", "000001", cancels)); },
        .done = [&] { return model->m_filteredCancelCount; },
        .all = static_cast<int>(cancels.size()),
        .intrude = [&] { filter(nothing()); },
    };
    ASSERT_TRUE(meet(model->m_mutex, encounter));
    EXPECT_EQ(model->m_cancels.size(), 100'000);
    EXPECT_EQ(model->m_filteredCancelCount, 0);
}

TEST_F(OrderListConcurrent, shouldStopAnOrderHistoryWhenTheInstrumentChangesInItsMiddle)
{
    const Records orders(200'000, order(1).buy(10.00));
    int then = 0;
    const Encounter encounter{
        .prepare =
            [&] {
                filter({});
                feed.orders(history, {order(2).buy(10.00)});
                takeFlags(*model);
                model->m_filter = nothing(); // whoever filters anew hides the row that is shown
            },
        .work = [&] { model->doEntrust(0, moreHistory, batchFor("SZ", "000001", orders)); },
        .done = [&] { return model->m_orderCount - 1; },
        .all = static_cast<int>(orders.size()),
        .intrude =
            [&] {
                then = model->m_orderCount;
                model->setStock(keyOf("SZ", "000002"));
            },
    };
    ASSERT_TRUE(meet(model->m_mutex, encounter));
    EXPECT_EQ(model->m_orderCount, then) << "not one record more";
    EXPECT_EQ(shownSeqs(*model), "orders 2 cancels");
    EXPECT_EQ(takeFlags(*model), "none");
}

TEST_F(OrderListConcurrent, shouldStopATradeHistoryWhenTheInstrumentGoesInItsMiddle)
{
    const Records cancels(100'000, cancelOfBuy(1));
    int then = 0;
    const Encounter encounter{
        .prepare = [&] { takeFlags(*model); },
        .work = [&] { model->doTransaction(0, history, batchFor("SZ", "000001", cancels)); },
        .done = [&] { return model->m_cancels.size(); },
        .all = static_cast<int>(cancels.size()),
        .intrude =
            [&] {
                then = model->m_cancels.size();
                model->setStock("nobody knows this");
            },
    };
    ASSERT_TRUE(meet(model->m_mutex, encounter));
    EXPECT_EQ(model->m_cancels.size(), then) << "not one record more";
    EXPECT_EQ(takeFlags(*model), "none");
}

} // namespace
