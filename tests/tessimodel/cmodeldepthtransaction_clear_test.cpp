#include "tests/tessimodel/tradelist.h"

#include <boost/weak_ptr.hpp>

#include <cfloat>

namespace {

using namespace tests;

class TradeClearTest : public TradeListTest {
protected:
    // Something in every member.
    void givenABusyModel()
    {
        feed.trades(live, {dealt("09:30:05", 10.00, 1)});
        feed.orders(history, {order(1), order(2)});
        feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:04", 10.00, 1)});
        feed.snapshots(history, {snapshot("09:30:03", 10.00, 1), snapshot("09:30:06", 10.00, 9)});
        filter(atLeastHands(1));
        tookChange();
    }

    std::string rowsOfAnyKind() const
    {
        return rowsText(model->m_rows) + rowsText(model->m_filteredRows) + chainsText(model->m_buyChains) +
               chainsText(model->m_sellChains) + minutesText(*model);
    }
};

TEST_F(TradeClearTest, shouldDropAllDataAndRaiseTheFlagWhenCleared)
{
    givenABusyModel();
    model->clear();
    EXPECT_EQ(rowsOfAnyKind() + pairsText(*model), "");
    EXPECT_EQ(model->m_rowCount, 0);
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
    EXPECT_TRUE(model->m_orders.empty() && model->m_quotes.isEmpty());
    EXPECT_FALSE(model->m_historyLoaded);
    EXPECT_TRUE(tookChange());
}

TEST_F(TradeClearTest, shouldKeepInstrumentAndFilterWhenCleared)
{
    follow(stock("SH", "688001", {277, 10006, 126}));
    filter(atLeastHands(7));
    model->m_priceTick = 7;
    model->m_lastClose = 7;
    const auto followed = model->m_stock;
    model->clear();
    EXPECT_EQ(model->m_stock, followed);
    EXPECT_EQ(model->m_filter.hands, 7);
    EXPECT_EQ(model->m_priceTick, 0.01) << "taken from the instrument anew";
    EXPECT_EQ(model->m_lastClose, 10.0);
    EXPECT_EQ(model->m_volumeUnit, 10);
    EXPECT_TRUE(model->m_isType277 && model->m_isType10006);
}

TEST_F(TradeClearTest, shouldFallBackWhenClearedWithoutInstrument)
{
    givenABusyModel();
    model->setStock("nobody knows this");
    model->m_lastClose = 7;
    model->clear();
    EXPECT_EQ(rowsOfAnyKind(), "");
    EXPECT_EQ(model->m_priceTick, 0.001);
    EXPECT_EQ(model->m_lastClose, DBL_MAX);
    EXPECT_EQ(model->m_volumeUnit, 1);
    EXPECT_TRUE(tookChange());
}

TEST_F(TradeClearTest, shouldParkLiveTradesAgainWhenCleared)
{
    givenABusyModel();
    model->clear();
    feed.trades(live, {dealt("09:30:07", 10.00, 1)});
    EXPECT_EQ(rowsOfAnyKind(), "");
    EXPECT_EQ(model->m_pendingTransactions.size(), 1u);
}

TEST_F(TradeClearTest, shouldForgetParkedTradesWhenCleared)
{
    feed.trades(live, {dealt("09:30:05", 10.00, 1)});
    model->clear();
    EXPECT_TRUE(model->m_pendingTransactions.empty());
    feed.trades(history, {dealt("09:30:01", 10.00, 2)});
    EXPECT_EQ(rowsText(model->m_rows), "0 09:30:01 10.00 2h B1 S2\n");
}

TEST_F(TradeClearTest, shouldTakeTheSameDayAgainWhenCleared)
{
    givenABusyModel();
    const std::string before = rowsOfAnyKind() + linksText(*model) + pairsText(*model);
    model->clear();
    filter({});
    givenABusyModel();
    EXPECT_EQ(rowsOfAnyKind() + linksText(*model) + pairsText(*model), before);
}

// --- one stream ----------------------------------------------------------------------------------------------

TEST_F(TradeClearTest, shouldDropRowsAndPairsOnlyWhenTradesAreCleared)
{
    givenABusyModel();
    model->clearTransactions();
    EXPECT_EQ(rowsOfAnyKind() + pairsText(*model), "");
    EXPECT_EQ(model->m_rowCount, 0);
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
    EXPECT_EQ(model->m_orders.size(), 2u);
    EXPECT_EQ(model->m_quotes.size(), 2);
    EXPECT_TRUE(model->m_historyLoaded);
    EXPECT_FALSE(tookChange());
}

TEST_F(TradeClearTest, shouldDropSnapshotsAndPairsOnlyWhenSnapshotsAreCleared)
{
    givenABusyModel();
    const std::string rows = rowsOfAnyKind();
    model->clearQuotes();
    EXPECT_TRUE(model->m_quotes.isEmpty());
    EXPECT_EQ(pairsText(*model), "");
    EXPECT_EQ(model->m_lastMatchedQuote, -1);
    EXPECT_EQ(rowsOfAnyKind(), rows);
    EXPECT_EQ(model->m_orders.size(), 2u);
    EXPECT_FALSE(tookChange());
}

TEST_F(TradeClearTest, shouldDropOrdersOnlyWhenOrdersAreCleared)
{
    givenABusyModel();
    const std::string rest = rowsOfAnyKind() + pairsText(*model);
    model->clearEntrusts();
    EXPECT_TRUE(model->m_orders.empty());
    EXPECT_EQ(rowsOfAnyKind() + pairsText(*model), rest);
    EXPECT_EQ(model->m_lastMatchedQuote, 0);
    EXPECT_EQ(model->m_quotes.size(), 2);
    EXPECT_FALSE(tookChange());
}

TEST_F(TradeClearTest, shouldKeepParkedTradesWhenOneStreamIsCleared)
{
    feed.trades(live, {dealt("09:30:05", 10.00, 1)});
    model->clearTransactions();
    model->clearQuotes();
    model->clearEntrusts();
    EXPECT_EQ(model->m_pendingTransactions.size(), 1u);
}

// --- what was big is freed later -----------------------------------------------------------------------------

TEST_F(TradeClearTest, shouldFreeAllOnTheReleaseStrandWhenCleared)
{
    givenABusyModel();
    const boost::weak_ptr<TC::DepthTransData> row = model->m_rows.front();
    const std::weak_ptr<quoter::OrderData> order = model->getOrder(1);
    const std::weak_ptr<quoter::QuoterDepthData> quote = model->m_quotes.front();
    model->clear();
    EXPECT_FALSE(row.expired() || order.expired() || quote.expired());
    EXPECT_TRUE(terminal.strands.drain("data_release"));
    EXPECT_TRUE(row.expired() && order.expired() && quote.expired());
}

TEST_F(TradeClearTest, shouldFreeSnapshotsAtOnceWhenOnlyTheyAreCleared)
{
    givenABusyModel();
    const std::weak_ptr<quoter::QuoterDepthData> quote = model->m_quotes.front();
    model->clearQuotes();
    EXPECT_TRUE(quote.expired());
}

TEST_F(TradeClearTest, shouldFreeTheOldRowsOnTheReleaseStrandWhenHistoriesBeginAnew)
{
    givenABusyModel();
    const boost::weak_ptr<TC::DepthTransData> row = model->m_rows.front();
    const std::weak_ptr<quoter::OrderData> order = model->getOrder(1);
    terminal.strands.drain("data_release");
    feed.trades(history, {});
    feed.orders(history, {});
    EXPECT_TRUE(model->m_rows.isEmpty() && model->m_orders.empty());
    EXPECT_FALSE(row.expired() || order.expired());
    terminal.strands.drain("data_release");
    EXPECT_TRUE(row.expired() && order.expired());
}

TEST_F(TradeClearTest, shouldFreeItsRowsOnTheReleaseStrandWhenAModelDies)
{
    givenABusyModel();
    const boost::weak_ptr<TC::DepthTransData> row = model->m_rows.front();
    model.reset();
    EXPECT_FALSE(row.expired());
    terminal.strands.drain("data_release");
    EXPECT_TRUE(row.expired());
}

TEST_F(TradeClearTest, shouldLeaveARowToThePanelThatHoldsItWhenCleared)
{
    givenABusyModel();
    const TradeList::Row row = model->getData(1);
    model->clear();
    terminal.strands.drain("data_release");
    EXPECT_EQ(rowsText({row}), "0 09:30:04 10.00 1h B1 S2\n");
}

} // namespace
