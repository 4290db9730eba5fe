#include "tests/tessimodel/tradelist.h"

namespace {

using namespace tests;

class TradeHistoriesTest : public TradeListTest {
protected:
    std::string rows() const { return rowsText(model->m_rows); }
    std::size_t parked() const { return model->m_pendingTransactions.size(); }
};

// --- live trades before the history --------------------------------------------------------------------------

TEST_F(TradeHistoriesTest, shouldParkLiveTradesWhenTheHistoryIsNotIn)
{
    feed.trades(live, {dealt("09:29:00", 10.00, 1)});
    feed.trades(live, {cancelOfBuy(3)});
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(parked(), 2u);
    EXPECT_FALSE(tookChange());
    EXPECT_FALSE(model->m_historyLoaded);
}

TEST_F(TradeHistoriesTest, shouldPutParkedTradesBehindTheHistoryWhateverTheirTimes)
{
    feed.trades(live, {dealt("09:29:00", 10.00, 1)});
    feed.trades(live, {dealt("09:45:00", 10.01, 2)});
    feed.trades(live, {cancelOfBuy(3)});
    feed.trades(live, {dealt("09:31:00", 10.02, 3)});
    feed.trades(history, {dealt("09:30:00", 10.03, 4), dealt("09:40:00", 10.04, 5)});
    EXPECT_EQ(rows(), "0 09:30:00 10.03 4h B1 S2\n"
                      "1 09:40:00 10.04 5h B1 S2\n"
                      "2 09:29:00 10.00 1h B1 S2\n"
                      "3 09:45:00 10.01 2h B1 S2\n"
                      "4 09:31:00 10.02 3h B1 S2\n");
    EXPECT_EQ(parked(), 0u);
    EXPECT_TRUE(model->m_historyLoaded);
    EXPECT_TRUE(tookChange());
}

TEST_F(TradeHistoriesTest, shouldMatchParkedTradesTooWhenTheHistoryComes)
{
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 2)});
    feed.trades(live, {dealt("09:30:01", 10.00, 1)});
    feed.trades(live, {dealt("09:30:04", 10.00, 1)});
    EXPECT_EQ(pairsText(*model), "");
    feed.trades(history, {dealt("09:30:00", 10.00, 1)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 1)\n");
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
}

TEST_F(TradeHistoriesTest, shouldTakeLiveTradesAtOnceWhenTheHistoryIsIn)
{
    feed.trades(history, {dealt("09:30:00", 10.00, 1)});
    tookChange();
    feed.trades(live, {dealt("09:29:00", 10.01, 2)});
    EXPECT_EQ(rows(), "0 09:30:00 10.00 1h B1 S2\n1 09:29:00 10.01 2h B1 S2\n");
    EXPECT_EQ(parked(), 0u);
    EXPECT_TRUE(tookChange());
}

TEST_F(TradeHistoriesTest, shouldCountAsHistoryWhenMoreHistoryComesFirst)
{
    feed.trades(live, {dealt("09:31:00", 10.01, 2)});
    feed.trades(moreHistory, {dealt("09:30:00", 10.00, 1)});
    EXPECT_EQ(rows(), "0 09:30:00 10.00 1h B1 S2\n1 09:31:00 10.01 2h B1 S2\n");
    EXPECT_TRUE(model->m_historyLoaded);
    EXPECT_TRUE(tookChange());
}

TEST_F(TradeHistoriesTest, shouldCountAsHistoryWhenNoRecordOfTheBatchIsATrade)
{
    feed.trades(live, {dealt("09:31:00", 10.01, 2)});
    feed.trades(moreHistory, {order(1)});
    EXPECT_EQ(rows(), "0 09:31:00 10.01 2h B1 S2\n");
    EXPECT_TRUE(model->m_historyLoaded);
}

// An empty history lets live trades through, but those that are parked wait for one with records.
TEST_F(TradeHistoriesTest, shouldLeaveParkedTradesWaitingWhenTheHistoryIsEmpty)
{
    feed.trades(live, {dealt("09:31:00", 10.01, 2)});
    feed.trades(history, {});
    EXPECT_TRUE(model->m_historyLoaded);
    EXPECT_TRUE(tookChange());
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(parked(), 1u);
    feed.trades(live, {dealt("09:32:00", 10.02, 3)});
    EXPECT_EQ(rows(), "0 09:32:00 10.02 3h B1 S2\n");
    feed.trades(moreHistory, {dealt("09:30:00", 10.00, 1)});
    EXPECT_EQ(rows(), "0 09:32:00 10.02 3h B1 S2\n1 09:30:00 10.00 1h B1 S2\n2 09:31:00 10.01 2h B1 S2\n");
}

// --- batches of trades ---------------------------------------------------------------------------------------

TEST_F(TradeHistoriesTest, shouldTakeOnlyTheLastTradeWhenPushedLive)
{
    feed.trades(history, {});
    for (const int kind : {live, 2, -1, 7})
        feed.trades(kind, {dealt("09:30:00", 10.00, 9), dealt("09:30:00", 10.00, kind + 2)});
    EXPECT_EQ(rows(), "0 09:30:00 10.00 3h B1 S2\n"
                      "1 09:30:00 10.00 4h B1 S2\n"
                      "2 09:30:00 10.00 1h B1 S2\n"
                      "3 09:30:00 10.00 9h B1 S2\n");
}

TEST_F(TradeHistoriesTest, shouldBeginAnewWhenAHistoryComesAndGoOnWhenMoreComes)
{
    feed.trades(history, {dealt("09:30:00", 10.00, 1), dealt("09:30:01", 10.01, 2)});
    feed.trades(moreHistory, {dealt("09:30:02", 10.02, 3)});
    EXPECT_EQ(model->m_rowCount, 3);
    feed.trades(history, {dealt("09:30:03", 9.99, 4)});
    EXPECT_EQ(rows(), "0 09:30:03 9.99 4h B1 S2\n");
    EXPECT_EQ(directionsText(*model), "9.99 -1 down\n");
    EXPECT_EQ(chainsText(model->m_buyChains), "1: 0\n");
}

TEST_F(TradeHistoriesTest, shouldSkipOtherRecordsWhenABatchHoldsThem)
{
    feed.trades(history, {order(1), dealt("09:30:00", 10.00, 1), nullptr, level2(), dealt("09:30:01", 10.01, 2)});
    EXPECT_EQ(model->m_rowCount, 2);
    tookChange();
    feed.trades(live, {dealt("09:30:02", 10.01, 2), order(1)});
    feed.trades(live, {dealt("09:30:02", 10.01, 2), nullptr});
    EXPECT_EQ(model->m_rowCount, 2);
    EXPECT_FALSE(tookChange());
}

TEST_F(TradeHistoriesTest, shouldParkNothingWhenALiveRecordIsNoTrade)
{
    feed.trades(live, {order(1)});
    feed.trades(live, {nullptr});
    EXPECT_EQ(parked(), 0u);
}

TEST_F(TradeHistoriesTest, shouldDoNothingWhenAnEmptyBatchIsNoHistory)
{
    feed.trades(moreHistory, {});
    feed.trades(live, {});
    EXPECT_FALSE(model->m_historyLoaded);
    EXPECT_FALSE(tookChange());
    feed.trades(history, {dealt("09:30:00", 10.00, 1)});
    tookChange();
    feed.trades(moreHistory, {});
    feed.trades(live, {});
    EXPECT_EQ(model->m_rowCount, 1);
    EXPECT_FALSE(tookChange());
}

TEST_F(TradeHistoriesTest, shouldEmptyRowsAndPairsWhenAnEmptyHistoryComes)
{
    feed.trades(history, {dealt("09:30:00", 10.00, 1), dealt("09:30:04", 10.00, 1)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 1)});
    tookChange();
    feed.trades(history, {});
    EXPECT_EQ(rows() + rowsText(model->m_filteredRows), "");
    EXPECT_EQ(model->m_rowCount, 0);
    EXPECT_EQ(chainsText(model->m_buyChains) + chainsText(model->m_sellChains) + minutesText(*model), "");
    EXPECT_EQ(pairsText(*model), "");
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
    EXPECT_EQ(model->m_quotes.size(), 1);
    EXPECT_TRUE(tookChange());
}

// --- what triggers nothing -----------------------------------------------------------------------------------

TEST_F(TradeHistoriesTest, shouldNeitherMatchNorRaiseTheFlagWhenALiveTradeMakesNoRow)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:04", 10.00, 1)});
    tookChange();
    model->append(model->m_stock, snapshot("09:30:03", 10.00, 1));
    feed.trades(live, {cancelOfSell(2).time("09:30:05")});
    feed.trades(live, {dealt("09:30:05", 10.00, 0)});
    EXPECT_EQ(pairsText(*model), "");
    EXPECT_FALSE(tookChange());
    feed.trades(live, {dealt("09:30:05", 10.00, 1)});
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n");
    EXPECT_TRUE(tookChange());
}

TEST_F(TradeHistoriesTest, shouldRaiseTheFlagWhenAHistoryIsOfCancelsOnly)
{
    feed.trades(history, {cancelOfBuy(1), dealt("09:30:00", 10.00, 0)});
    EXPECT_EQ(rows(), "");
    EXPECT_TRUE(model->m_historyLoaded);
    EXPECT_TRUE(tookChange());
}

// --- orders --------------------------------------------------------------------------------------------------

TEST_F(TradeHistoriesTest, shouldKeepTheLastOrderOfASeqAndTellNobodyWhenOrdersCome)
{
    feed.orders(history, {order(1).shares(100), order(2), nullptr, level2(), order(1).shares(300)});
    feed.orders(moreHistory, {order(3)});
    feed.orders(live, {order(4), order(2).shares(900)});
    EXPECT_EQ(model->m_orders.size(), 3u);
    EXPECT_EQ(model->getOrder(1)->volume, 300);
    EXPECT_EQ(model->getOrder(2)->volume, 900);
    EXPECT_EQ(model->getOrder(4), nullptr) << "of a live push the last counts";
    EXPECT_FALSE(tookChange());
    feed.orders(live, {order(5), fill(1, 2)});
    feed.orders(live, {});
    feed.orders(moreHistory, {});
    EXPECT_EQ(model->m_orders.size(), 3u);
}

TEST_F(TradeHistoriesTest, shouldEmptyTheOrdersWhenAHistoryComes)
{
    feed.orders(history, {order(1), order(2)});
    feed.orders(history, {order(3)});
    EXPECT_EQ(model->m_orders.size(), 1u);
    feed.orders(history, {});
    EXPECT_TRUE(model->m_orders.empty());
    EXPECT_FALSE(tookChange());
}

// --- another instrument --------------------------------------------------------------------------------------

TEST_F(TradeHistoriesTest, shouldDropTheWholeBatchWhenItIsOfAnotherInstrument)
{
    feed.trades(history, {dealt("09:30:00", 10.00, 1)});
    feed.orders(history, {order(1)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 1)});
    tookChange();
    const std::pair<const char*, const char*> others[] = {
        {"SZ", "000002"}, {"SH", "000001"}, {"SZ", "00000"}, {"", ""}};
    for (const auto& [market, code] : others) {
        feed.request(market, code);
        for (const int kind : {history, moreHistory, live}) {
            feed.trades(kind, {dealt("09:30:01", 10.00, 1)});
            feed.orders(kind, {order(2)});
            feed.snapshots(kind, {snapshot("09:30:06", 10.00, 2)});
        }
        feed.trades(history, {});
        feed.orders(history, {});
        feed.snapshots(history, {});
    }
    EXPECT_EQ(model->m_rowCount, 1);
    EXPECT_EQ(model->m_orders.size(), 1u);
    EXPECT_EQ(model->m_quotes.size(), 1);
    EXPECT_FALSE(tookChange());
}

TEST_F(TradeHistoriesTest, shouldTakeNothingWhenThereIsNoInstrument)
{
    model->setStock("nobody knows this");
    for (const auto& [market, code] : {std::pair("SZ", "000001"), std::pair("", "")}) {
        feed.request(market, code);
        feed.trades(live, {dealt("09:30:00", 10.00, 1)});
        feed.trades(history, {dealt("09:30:00", 10.00, 1)});
        feed.orders(history, {order(1)});
        feed.snapshots(history, {snapshot("09:30:03", 10.00, 1)});
    }
    EXPECT_TRUE(model->m_rows.isEmpty() && model->m_orders.empty() && model->m_quotes.isEmpty());
    EXPECT_EQ(parked(), 0u);
    EXPECT_FALSE(model->m_historyLoaded || tookChange());
}

TEST_F(TradeHistoriesTest, shouldDropWhatWasQueuedWhenTheInstrumentChangedBeforeItsTurn)
{
    feed.holdBack();
    feed.trades(history, {dealt("09:30:00", 10.00, 1)});
    model->setStock(keyOf("SZ", "000002"));
    feed.run();
    EXPECT_EQ(rows(), "");
    EXPECT_FALSE(model->m_historyLoaded || tookChange());
}

TEST_F(TradeHistoriesTest, shouldDropANullBatch)
{
    model->transactionCallback(0, history, nullptr);
    model->entrustCallback(0, history, nullptr);
    model->quoterCallback(0, live, nullptr);
    feed.run();
    EXPECT_FALSE(model->m_historyLoaded || tookChange());
}

TEST_F(TradeHistoriesTest, shouldAppendNothingWhenTheInstrumentIsAnotherByNow)
{
    const auto former = model->m_stock;
    feed.trades(history, {dealt("09:30:00", 10.00, 1)});
    for (const QString& key : {keyOf("SZ", "000002"), QString("nobody knows this")}) {
        model->setStock(key);
        EXPECT_EQ(model->append(former, dealt("09:30:01", 10.00, 1)), -1);
        EXPECT_EQ(model->append(former, cancelOfBuy(1)), -1) << "the instrument is tested first";
        EXPECT_EQ(model->append(former, order(1)), -1);
        EXPECT_EQ(model->append(former, snapshot("09:30:03", 10.00, 1)), -1);
    }
    EXPECT_EQ(rows(), "0 09:30:00 10.00 1h B1 S2\n");
    EXPECT_EQ(chainsText(model->m_buyChains), "1: 0\n");
    EXPECT_TRUE(model->m_orders.empty() && model->m_quotes.isEmpty());
}

TEST_F(TradeHistoriesTest, shouldGoOnWhenTheSameInstrumentWasChosenAgain)
{
    const auto former = model->m_stock;
    terminal.instruments.add(stock("SZ", "000001"));
    model->setStock(keyOf("SZ", "000001"));
    EXPECT_NE(model->m_stock, former);
    EXPECT_EQ(model->append(former, dealt("09:30:01", 10.00, 1)), 2) << "market and code tell, not the record";
}

} // namespace
