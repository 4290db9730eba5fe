#include "tests/tessimodel/orderlist.h"

namespace {

using namespace tests;

// What the kinds of a delivery do, and what becomes of batches that are empty, of another instrument or full of what
// does not belong there.
class OrderListBatchesTest : public OrderListTest {
protected:
    // Order 1 with its cancel, order 2, and a trade between both; no flag is up.
    void givenRows()
    {
        feed.orders(history, {order(1).buy(10.00), order(2).sell(10.00)});
        feed.trades(history, {fill(1, 2), cancelOfBuy(1)});
        takeFlags(*model);
    }

    // "orders 1 2 cancels 1 trades 1 2": all rows by their seqs, and the seqs that trades touched.
    std::string state() const
    {
        std::string text = "orders";
        for (const auto& row : model->m_orders)
            text += " " + std::to_string(row->seq);
        text += " cancels";
        for (const auto& row : model->m_cancels)
            text += " " + std::to_string(row->seq);
        text += " trades";
        for (const auto& [seq, trades] : model->m_transactionsBySeq)
            text += " " + std::to_string(seq);
        return text;
    }
};

// --- the kinds ------------------------------------------------------------------------------------------------

TEST_F(OrderListBatchesTest, shouldStartAnewWhenAHistoryBegins)
{
    givenRows();
    feed.orders(history, {order(3).buy(10.00)});
    EXPECT_EQ(state(), "orders 3 cancels 1 trades 1 2");
    EXPECT_EQ(takeFlags(*model), "orders trades");
    OrderList::OrderRow found;
    EXPECT_FALSE(model->getOrderData(1, found));
    feed.trades(history, {fill(3, 4)});
    EXPECT_EQ(state(), "orders 3 cancels trades 3 4");
    EXPECT_EQ(takeFlags(*model), "trades");
}

TEST_F(OrderListBatchesTest, shouldAddAllWhenMoreHistoryComes)
{
    givenRows();
    feed.orders(moreHistory, {order(3).buy(10.00), order(4).buy(10.00)});
    EXPECT_EQ(state(), "orders 1 2 3 4 cancels 1 trades 1 2");
    EXPECT_EQ(takeFlags(*model), "orders trades");
    feed.trades(moreHistory, {fill(3, 5), cancelOfSell(2)});
    EXPECT_EQ(state(), "orders 1 2 3 4 cancels 1 2 trades 1 2 3 5");
    EXPECT_EQ(tradesText(*model, 2), "1+2 x100 0+2 x100 cancel");
    EXPECT_EQ(takeFlags(*model), "trades");
}

TEST_F(OrderListBatchesTest, shouldTakeMoreHistoryWhenItComesFirst)
{
    feed.trades(moreHistory, {fill(1, 2), cancelOfBuy(1)});
    EXPECT_EQ(takeFlags(*model), "trades");
    feed.orders(moreHistory, {order(1).buy(10.00), order(2).sell(10.00)});
    EXPECT_EQ(state(), "orders 1 2 cancels 1 trades 1 2");
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 cancels 1");
    EXPECT_EQ(takeFlags(*model), "orders trades");
}

// Earlier records of a push are dropped on purpose: a feed pushes ticks one by one.
TEST_F(OrderListBatchesTest, shouldTakeOnlyTheLastRecordWhenAPushIsLive)
{
    int seq = 0;
    std::string orders;
    std::string trades;
    for (const int kind : {1, 2, 4, -1, -3, 30, 1000}) {
        feed.orders(kind, {order(500).buy(10.00), order(501).buy(10.00), order(++seq).buy(10.00)});
        EXPECT_EQ(takeFlags(*model), "orders trades");
        feed.trades(kind, {fill(500, 501), cancelOfBuy(501), cancelOfBuy(seq)});
        EXPECT_EQ(takeFlags(*model), "trades");
        orders += " " + std::to_string(seq);
    }
    EXPECT_EQ(state(), "orders" + orders + " cancels" + orders + " trades" + orders);
}

TEST_F(OrderListBatchesTest, shouldNotReadTheFirstNumberWhenCalled)
{
    for (const int first : {3, 1, -7}) {
        model->entrustCallback(first, history, batchFor("SZ", "000001", {order(1).buy(10.00)}));
        model->transactionCallback(first, history, batchFor("SZ", "000001", {cancelOfBuy(1)}));
    }
    feed.run();
    EXPECT_EQ(state(), "orders 1 cancels 1 trades 1");
}

// Nobody empties the cancels of a market that is neither: they come again with each history.
TEST_F(OrderListBatchesTest, shouldKeepCancelsThroughNewHistoriesWhenTheMarketIsNeither)
{
    follow("BJ", "430047");
    feed.orders(history, {order(1).buy(10.00)});
    feed.trades(history, {cancelOfBuy(1)});
    feed.orders(history, {order(1).buy(10.00)});
    feed.trades(history, {cancelOfBuy(1)});
    EXPECT_EQ(state(), "orders 1 cancels 1 1 trades 1");
    EXPECT_EQ(shownSeqs(*model), "orders 1 cancels 1 1");
    feed.orders(history, {});
    feed.trades(history, {});
    EXPECT_EQ(state(), "orders cancels 1 1 trades");
    model->clear();
    EXPECT_EQ(state(), "orders cancels trades") << "the instrument goes first";
}

TEST_F(OrderListBatchesTest, shouldEmptyShanghaisCancelsWithTheOrderHistoryWhenItBegins)
{
    follow("SH", "600000");
    feed.orders(history, {order(1).buy(10.00), deletionOfBuy(1)});
    feed.trades(history, {cancelOfBuy(1)});
    feed.trades(history, {fill(1, 2)});
    EXPECT_EQ(state(), "orders 1 cancels 1 1 trades 1 2") << "not with the trade history";
    feed.orders(history, {order(3).buy(10.00)});
    EXPECT_EQ(state(), "orders 3 cancels trades 1 2");
}

// --- empty batches --------------------------------------------------------------------------------------------

TEST_F(OrderListBatchesTest, shouldEmptyAndRaiseTheFlagsWhenAnEmptyHistoryBegins)
{
    givenRows();
    feed.orders(history, {});
    EXPECT_EQ(state(), "orders cancels 1 trades 1 2");
    EXPECT_EQ(takeFlags(*model), "orders trades");
    feed.trades(history, {});
    EXPECT_EQ(state(), "orders cancels trades");
    EXPECT_EQ(takeFlags(*model), "trades");
    feed.orders(history, {});
    feed.trades(history, {});
    EXPECT_EQ(takeFlags(*model), "orders trades") << "also when nothing was there";
}

TEST_F(OrderListBatchesTest, shouldLeaveShownCancelsWhenAnEmptyOrderHistoryBegins)
{
    givenRows();
    feed.orders(history, {});
    EXPECT_EQ(shownSeqs(*model), "orders cancels 1") << "nothing is filtered anew";
    feed.orders(history, {nullptr});
    EXPECT_EQ(shownSeqs(*model), "orders cancels") << "a cancel without its order";
    EXPECT_EQ(state(), "orders cancels 1 trades 1 2");
}

TEST_F(OrderListBatchesTest, shouldChangeNothingWhenAnyOtherBatchIsEmpty)
{
    givenRows();
    for (const int kind : {moreHistory, live, 2, -1}) {
        feed.orders(kind, {});
        feed.trades(kind, {});
    }
    EXPECT_EQ(state(), "orders 1 2 cancels 1 trades 1 2");
    EXPECT_EQ(takeFlags(*model), "none");
}

// --- null and other types -------------------------------------------------------------------------------------

TEST_F(OrderListBatchesTest, shouldDropABatchWhenItIsNull)
{
    givenRows();
    for (const int kind : {history, moreHistory, live}) {
        model->entrustCallback(0, kind, nullptr);
        model->transactionCallback(0, kind, nullptr);
    }
    feed.run();
    EXPECT_EQ(state(), "orders 1 2 cancels 1 trades 1 2");
    EXPECT_EQ(takeFlags(*model), "none");
}

TEST_F(OrderListBatchesTest, shouldSkipRecordsOfOtherTypesWhenTheyAreInAHistory)
{
    for (const int kind : {history, moreHistory}) {
        feed.orders(kind, {nullptr, order(1).buy(10.00), fill(5, 6), level2(), order(2).buy(10.00), level1()});
        EXPECT_EQ(takeFlags(*model), "orders trades");
        feed.trades(kind, {level1(), fill(1, 2), order(7).buy(10.00), nullptr, cancelOfBuy(2), level2()});
        EXPECT_EQ(takeFlags(*model), "trades");
    }
    EXPECT_EQ(state(), "orders 1 2 1 2 cancels 2 2 trades 1 2");
}

TEST_F(OrderListBatchesTest, shouldRaiseTheFlagsWhenAHistoryHoldsNothingOfTheStream)
{
    givenRows();
    feed.orders(moreHistory, {fill(5, 6)});
    EXPECT_EQ(takeFlags(*model), "orders trades");
    feed.trades(moreHistory, {nullptr});
    EXPECT_EQ(takeFlags(*model), "trades");
    EXPECT_EQ(state(), "orders 1 2 cancels 1 trades 1 2");
}

TEST_F(OrderListBatchesTest, shouldDoNothingWhenTheLastRecordOfALivePushIsNoneOfTheStream)
{
    givenRows();
    feed.orders(live, {order(3).buy(10.00), nullptr});
    feed.orders(live, {order(3).buy(10.00), fill(3, 4)});
    feed.trades(live, {fill(3, 4), nullptr});
    feed.trades(live, {fill(3, 4), order(3).buy(10.00)});
    feed.trades(live, {cancelOfBuy(2), level2()});
    EXPECT_EQ(state(), "orders 1 2 cancels 1 trades 1 2");
    EXPECT_EQ(takeFlags(*model), "none");
}

// --- other instruments ----------------------------------------------------------------------------------------

TEST_F(OrderListBatchesTest, shouldDropABatchWholeWhenItIsOfAnotherInstrument)
{
    givenRows();
    for (const auto& [market, code] : {std::pair("SZ", "000002"),
                                       {"SH", "000001"},
                                       {"SZ", "0000010"},
                                       {"SZ", "00000"},
                                       {"sz", "000001"},
                                       {"", ""}}) {
        feed.request(market, code);
        for (const int kind : {history, moreHistory, live}) {
            for (const Records& records : {Records{}, Records{order(9).buy(10.00)}, Records{fill(8, 9)}}) {
                feed.orders(kind, records);
                feed.trades(kind, records);
            }
        }
    }
    EXPECT_EQ(state(), "orders 1 2 cancels 1 trades 1 2");
    EXPECT_EQ(takeFlags(*model), "none");
}

TEST_F(OrderListBatchesTest, shouldDropABatchWhenTheModelMovedOnWhileItWaited)
{
    givenRows();
    feed.holdBack();
    feed.orders(history, {order(3).buy(10.00)});
    feed.trades(history, {fill(3, 4)});
    model->setStock(keyOf("SZ", "000002"));
    feed.run();
    EXPECT_EQ(state(), "orders 1 2 cancels 1 trades 1 2");
    EXPECT_EQ(takeFlags(*model), "none");

    feed.holdBack();
    feed.orders(history, {order(3).buy(10.00)});
    model->setStock(keyOf("SZ", "000001"));
    feed.run();
    EXPECT_EQ(state(), "orders 3 cancels 1 trades 1 2") << "and it counts what is followed when the work is done";
}

TEST_F(OrderListBatchesTest, shouldTakeNothingWhenThereIsNoInstrument)
{
    model->setStock("nobody knows this");
    for (const auto& [market, code] : {std::pair("SZ", "000001"), {"", ""}}) {
        feed.request(market, code);
        for (const int kind : {history, moreHistory, live}) {
            feed.orders(kind, {order(1).buy(10.00)});
            feed.trades(kind, {fill(1, 2)});
        }
        feed.orders(history, {});
    }
    EXPECT_EQ(state(), "orders cancels trades");
    EXPECT_EQ(takeFlags(*model), "none");
}

TEST_F(OrderListBatchesTest, shouldTakeABatchWhenTheInstrumentWasDescribedAnew)
{
    feed.holdBack();
    feed.orders(history, {order(1).buy(10.00).shares(100)});
    follow("SZ", "000001", {100016});
    feed.run();
    EXPECT_EQ(shownText(*model), "order 1 B 10.00 x100 10h 09:30:00\n") << "the same name is the same instrument";
}

// --- one record at a time -------------------------------------------------------------------------------------

TEST_F(OrderListBatchesTest, shouldRefuseARecordWhenTheModelMovedOnInMidBatch)
{
    givenRows();
    const auto began = model->m_stock;
    for (const QString& key : {keyOf("SZ", "000002"), QString("nobody knows this")}) {
        model->setStock(key);
        EXPECT_FALSE(model->append(began, static_cast<std::shared_ptr<quoter::OrderData>>(order(3).buy(10.00))));
        EXPECT_FALSE(model->append(began, static_cast<std::shared_ptr<quoter::TransactionData>>(cancelOfBuy(2))));
        EXPECT_FALSE(model->append(nullptr, static_cast<std::shared_ptr<quoter::OrderData>>(order(3).buy(10.00))));
        EXPECT_FALSE(model->append(nullptr, static_cast<std::shared_ptr<quoter::TransactionData>>(cancelOfBuy(2))));
    }
    EXPECT_EQ(state(), "orders 1 2 cancels 1 trades 1 2");
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 cancels 1");
    EXPECT_EQ(takeFlags(*model), "none");
}

TEST_F(OrderListBatchesTest, shouldTakeARecordWhenItsInstrumentHasTheSameName)
{
    const auto began = model->m_stock;
    follow("SZ", "000001");
    ASSERT_NE(model->m_stock, began);
    EXPECT_TRUE(model->append(began, static_cast<std::shared_ptr<quoter::OrderData>>(order(3).buy(10.00))));
    EXPECT_TRUE(model->append(began, static_cast<std::shared_ptr<quoter::TransactionData>>(cancelOfBuy(3))));
    EXPECT_EQ(state(), "orders 3 cancels 3 trades 3");
    EXPECT_EQ(takeFlags(*model), "none") << "the worker raises them";
}

} // namespace
