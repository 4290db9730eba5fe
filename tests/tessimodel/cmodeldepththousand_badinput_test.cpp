#include "tests/tessimodel/thousandmodel.h"

namespace {

using namespace tests;

// Batches that are empty, of another instrument or full of what does not belong there.
class ThousandBadInputTest : public ThousandTest {
protected:
    std::string state() const
    {
        return levelsText(model.m_book) + std::to_string(model.m_orders.size()) + " orders, " +
               std::to_string(model.m_transactions.size()) + " trades, loaded " +
               std::to_string(model.m_loadedHistory) + ", ready " + std::to_string(model.m_dataReady) + ", flags " +
               std::to_string(model.m_updateFlags);
    }
};

// --- empty batches --------------------------------------------------------------------------------------------

TEST_F(ThousandBadInputTest, shouldBeReadyWhenEmptyHistoriesBegin)
{
    feed.orders(moreHistory, {});
    feed.trades(moreHistory, {});
    EXPECT_EQ(state(), "0 orders, 0 trades, loaded 0, ready 0, flags 0");
    feed.orders(history, {});
    EXPECT_EQ(state(), "0 orders, 0 trades, loaded 2, ready 2, flags 0");
    feed.trades(history, {});
    EXPECT_EQ(state(), "0 orders, 0 trades, loaded 3, ready 3, flags 1");
}

TEST_F(ThousandBadInputTest, shouldKeepSnapshotsWhenABatchOfSnapshotsIsEmpty)
{
    feed.snapshots(live, {level2("09:30:03").last(10.01).bid(10.00)});
    for (const int kind : {history, moreHistory, live, 2, -1})
        feed.snapshots(kind, {});
    EXPECT_EQ(model.m_quoterTimetag, timeOf("09:30:03"));
    EXPECT_EQ(model.m_snapshotBids.size(), 1u);
}

// --- null and other types -------------------------------------------------------------------------------------

TEST_F(ThousandBadInputTest, shouldDropABatchWhenItIsNull)
{
    model.entrustCallback(0, 0, nullptr);
    model.transactionCallback(0, 0, nullptr);
    model.quoterCallback(0, 0, nullptr);
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(state(), "0 orders, 0 trades, loaded 0, ready 0, flags 0");
}

TEST_F(ThousandBadInputTest, shouldTakeNoSnapshotWhenTheLastRecordIsNone)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.00), nullptr});
    feed.snapshots(live, {level2("09:30:03").bid(10.00), level1("09:30:04").bid(10.00)});
    feed.snapshots(history, {level2("09:30:03").bid(10.00), order(2).buy(10.00)});
    EXPECT_EQ(model.m_quoterTimetag, 0);
    EXPECT_TRUE(model.m_snapshotBids.empty());
}

// --- other instruments ----------------------------------------------------------------------------------------

TEST_F(ThousandBadInputTest, shouldDropABatchWholeWhenItIsOfAnotherInstrument)
{
    feed.begin({order(1).buy(10.00)}, {fill(1, 2).shares(40)});
    feed.snapshots(live, {level2("09:30:03").last(10.01).bid(10.00)});
    const std::string before = state();
    for (const auto& [market, code] : {std::pair("SZ", "000002"), {"SH", "000001"}, {"SZ", "0000010"}, {"", ""}}) {
        feed.request(market, code);
        for (const int kind : {history, moreHistory, live}) {
            feed.orders(kind, {order(9).buy(10.00)});
            feed.trades(kind, {fill(1, 9)});
            feed.snapshots(kind, {level2("09:40:00").bid(11.00)});
        }
    }
    EXPECT_EQ(state(), before);
    EXPECT_EQ(model.m_quoterTimetag, timeOf("09:30:03"));
}

TEST_F(ThousandBadInputTest, shouldDropABatchWhenTheModelMovedOnWhileItWaited)
{
    feed.holdBack();
    feed.begin({order(1).buy(10.00)});
    feed.snapshots(live, {level2("09:30:03").bid(10.00)});
    model.setStock(keyOf("SZ", "000002"));
    feed.run();
    EXPECT_EQ(state(), "0 orders, 0 trades, loaded 0, ready 0, flags 0");
    EXPECT_EQ(model.m_quoterTimetag, 0);
}

TEST_F(ThousandBadInputTest, shouldTakeNothingWhenThereIsNoInstrument)
{
    model.setStock("nobody knows this");
    for (const auto& [market, code] : {std::pair("SZ", "000001"), {"", ""}}) {
        feed.request(market, code);
        feed.begin({order(1).buy(10.00)});
        feed.snapshots(live, {level2("09:30:03").bid(10.00)});
    }
    EXPECT_EQ(state(), "0 orders, 0 trades, loaded 0, ready 0, flags 0");
}

// A book of another instrument stops a batch at its first record; what the end of the work would have set does not
// come.
TEST_F(ThousandBadInputTest, shouldNotBeReadyWhenAHistoryIsStopped)
{
    feed.trades(history, {fill(1, 2).at(10.00).shares(40)});
    model.m_book.m_stock = terminal.instruments.add(stock("SZ", "000002"));
    feed.orders(history, {order(1).buy(10.00), order(2).buy(10.00)});
    EXPECT_EQ(state(), "1 orders, 1 trades, loaded 3, ready 1, flags 0");
    feed.orders(history, {});
    EXPECT_EQ(state(), "0 orders, 1 trades, loaded 3, ready 1, flags 0") << "the replay of the trades";
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
    EXPECT_FALSE(model.isDataAllReadly());
}

TEST_F(ThousandBadInputTest, shouldNotBeReadyWhenATradeHistoryIsStopped)
{
    feed.orders(history, {order(1).buy(10.00)});
    model.m_book.m_stock = terminal.instruments.add(stock("SZ", "000002"));
    feed.trades(history, {fill(1, 2).at(10.00).shares(40), fill(1, 3).shares(10)});
    EXPECT_EQ(state(), "1 orders, 2 trades, loaded 3, ready 2, flags 0") << "the build from the held orders";
    model.clear();

    feed.orders(history, {});
    model.m_book.m_stock.reset();
    feed.trades(history, {fill(1, 2).at(10.00).shares(40)});
    EXPECT_EQ(state(), "0 orders, 1 trades, loaded 3, ready 2, flags 1") << "flag 1 is that of the clear";
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
}

TEST_F(ThousandBadInputTest, shouldGetNoLastPriceWhenALiveTradeMeetsABookOfAnotherInstrument)
{
    feed.begin({order(1).buy(10.00)});
    model.m_book.m_stock = terminal.instruments.add(stock("SZ", "000002"));
    feed.trades(live, {fill(1, 2).at(10.00)});
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
}

} // namespace
