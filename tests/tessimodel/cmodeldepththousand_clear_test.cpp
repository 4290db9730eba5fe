#include "tests/tessimodel/thousandmodel.h"
#include "utils/stockkey.h"

#include <boost/weak_ptr.hpp>

namespace {

using namespace tests;

const std::string kKey = utils::zlStockKey("SZ", "000001");

class ThousandClearTest : public ThousandTest {
protected:
    // A book with something in every member, polled once.
    void givenBusyModel()
    {
        model.setNewLoan(true);
        feed.snapshots(history, {level2("09:29:57").volume(10).bid(10.00), level2("09:30:00").volume(30).bid(10.00)});
        feed.begin({order(1).buy(10.00).shares(300), order(2).sell(10.02).shares(500), order(3).sell(10.03)},
                   {fill(1, 2).at(10.02).shares(100), fill(8, 9)});
        feed.snapshots(live, {level2("09:30:03").alternativeLast(10.02).volume(70).bid(10.00, 2).ask(10.02, 4)});
        readBook(model);
        feed.orders(live, {order(4).buy(9.99)});
    }

    std::string kept() const
    {
        TC::EntrustRows asks;
        TC::EntrustRows bids;
        return bookManager()->getData(kKey, asks, bids) ? bookText(bids, asks) : "nothing kept";
    }
};

TEST_F(ThousandClearTest, shouldDropAllDataAndRaiseAnUpdateWhenCleared)
{
    givenBusyModel();
    model.m_reserved = 5;
    model.m_afterHoursVolume = 5;
    model.clear();
    EXPECT_EQ(model.m_updateFlags, 1);
    EXPECT_EQ(model.m_loadedHistory, 0);
    EXPECT_EQ(model.m_dataReady, 0);
    EXPECT_TRUE(model.m_orders.empty() && model.m_transactions.empty() && model.m_dealVolumes.empty());
    EXPECT_EQ(bookText(model.m_bidRows, model.m_askRows), "");
    EXPECT_EQ(bookText(model.m_snapshotBids, model.m_snapshotAsks), "");
    EXPECT_EQ(model.m_askFloor, 10000000000.0);
    EXPECT_EQ(model.m_bidCeiling, 0.0);
    EXPECT_EQ(model.m_reserved, 0);
    EXPECT_EQ(model.m_quoterTimetag, 0);
    EXPECT_FALSE(model.m_continuous);
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
    EXPECT_EQ(model.m_tickLastVolume, 0);
    EXPECT_EQ(model.m_quoterLastPrice, DBL_MAX);
    EXPECT_EQ(model.m_quoterLastVolume, 0);
    EXPECT_EQ(model.m_quoterVolumeTime, 0);
    EXPECT_EQ(model.m_afterHoursVolume, 0);
    EXPECT_EQ(model.m_quoter, nullptr);
    EXPECT_EQ(levelsText(model.m_book) + bookText(model.m_book), "");
    EXPECT_EQ(model.m_book.parkedTrades(), 0u);
    EXPECT_TRUE(model.m_book.m_seenTrades.empty());
}

TEST_F(ThousandClearTest, shouldKeepInstrumentAndSettingsWhenCleared)
{
    givenBusyModel();
    model.clear();
    EXPECT_EQ(model.getStockKey(), keyOf("SZ", "000001"));
    EXPECT_TRUE(model.m_isNewLoan);
    EXPECT_FALSE(model.m_suppressTickFlags);
    EXPECT_EQ(model.m_priceTick, 0.01) << "taken from the instrument anew";
    EXPECT_EQ(model.m_lastClose, 10.0);
    EXPECT_EQ(model.m_volumeUnit, 100);
    EXPECT_EQ(model.m_book.m_stock, model.m_stock);
    EXPECT_EQ(model.m_book.m_priceTick, 0.01);

    Thousand quiet(true, 3);
    quiet.clear();
    EXPECT_TRUE(quiet.m_suppressTickFlags);
    EXPECT_EQ(quiet.m_modelId, 3);
    EXPECT_EQ(quiet.m_updateFlags, 1) << "also without an instrument";
}

TEST_F(ThousandClearTest, shouldTakeTheSameDayAgainWhenCleared)
{
    givenBusyModel();
    model.clear();
    feed.orders(live, {order(1).buy(11.00)});
    EXPECT_EQ(levelsText(model.m_book), "");
    givenBusyModel();
    EXPECT_EQ(levelsText(model.m_book), "bid 999 4:100\nbid 1000 1:300-100\nask 1002 2:500-100\nask 1003 3:100\n");
    EXPECT_EQ(model.m_quoterTimetag, timeOf("09:30:03"));
}

// --- rows for the next view -----------------------------------------------------------------------------------

TEST_F(ThousandClearTest, shouldLeaveTheRowsAsLastReadWhenCleared)
{
    givenBusyModel();
    const auto row = model.m_bidRows.at(1000);
    model.clear();
    EXPECT_EQ(kept(), "bid 10.00 2h x1 (-1)\nask 10.02 4h x1 (-1)\nask 10.03 1h x1 (+1)\n");
    TC::EntrustRows bids;
    ASSERT_TRUE(bookManager()->getBids(kKey, bids));
    EXPECT_EQ(bids.at(1000), row) << "the row objects themselves";
}

TEST_F(ThousandClearTest, shouldShowTheRowsItLeftWhenHistoriesAreNotInAgain)
{
    givenBusyModel();
    model.clear();
    const BookReading reading = readBook(model);
    EXPECT_EQ(reading.flags, 3);
    EXPECT_EQ(bookText(reading.bids, reading.asks),
              "bid 10.00 2h x1 (-1)\nask 10.02 4h x1 (-1)\nask 10.03 1h x1 (+1)\n");
    EXPECT_EQ(reading.lastPrice, DBL_MAX);
    feed.begin({order(21).buy(8.00)});
    EXPECT_EQ(bookText(model), "bid 8.00 1h x1 (+1)\n");
}

TEST_F(ThousandClearTest, shouldKeepRowsOfOneSideWhenTheOtherIsEmpty)
{
    feed.begin({order(1).buy(10.00)});
    readBook(model);
    model.clear();
    EXPECT_EQ(kept(), "bid 10.00 1h x1 (+1)\n");
}

TEST_F(ThousandClearTest, shouldLeaveNothingWhenNobodyReadTheRows)
{
    feed.begin({order(1).buy(10.00)});
    model.clear();
    EXPECT_EQ(kept(), "nothing kept");
}

TEST_F(ThousandClearTest, shouldKeepWhatWasLeftWhenAnEmptyModelIsCleared)
{
    givenBusyModel();
    model.clear();
    model.clear();
    EXPECT_EQ(kept(), "bid 10.00 2h x1 (-1)\nask 10.02 4h x1 (-1)\nask 10.03 1h x1 (+1)\n");
}

TEST_F(ThousandClearTest, shouldLeaveNothingWhenTheModelHasNoInstrumentAnyMore)
{
    givenBusyModel();
    model.setStock("nobody knows this");
    model.clear();
    EXPECT_EQ(kept(), "nothing kept");
    EXPECT_EQ(bookText(model.m_bidRows, model.m_askRows), "");
}

// The instrument of that moment names the rows: a change of instrument needs a clear before it.
TEST_F(ThousandClearTest, shouldLeaveTheRowsUnderTheNewNameWhenTheInstrumentChangedFirst)
{
    givenBusyModel();
    model.setStock(keyOf("SZ", "000002"));
    model.clear();
    EXPECT_EQ(kept(), "nothing kept");
    EXPECT_TRUE(bookManager()->checkData(utils::zlStockKey("SZ", "000002")));
}

TEST_F(ThousandClearTest, shouldLeaveItsRowsWhenAModelDies)
{
    {
        Thousand shortLived;
        shortLived.setStock(keyOf("SZ", "000001"));
        BookFeed(terminal, shortLived).begin({order(1).buy(10.00)});
        readBook(shortLived);
    }
    EXPECT_EQ(kept(), "bid 10.00 1h x1 (+1)\n");
}

// --- what was big is freed later ------------------------------------------------------------------------------

TEST_F(ThousandClearTest, shouldFreeTicksAndLevelsOnTheReleaseStrandWhenCleared)
{
    givenBusyModel();
    const std::weak_ptr<quoter::OrderData> tick = model.m_orders.front();
    const std::weak_ptr<quoter::TransactionData> trade = model.m_transactions.front();
    const std::weak_ptr<TC::SingleQueue> level = model.m_book.getLevel(true, 10.00);
    const boost::weak_ptr<TC::EntrustData> snapshotRow = model.m_snapshotBids.at(1000);
    model.clear();
    EXPECT_TRUE(model.m_orders.empty() && model.m_transactions.empty() && model.m_snapshotBids.empty());
    EXPECT_EQ(levelsText(model.m_book), "");
    EXPECT_FALSE(tick.expired() || trade.expired() || level.expired() || snapshotRow.expired());

    EXPECT_TRUE(terminal.strands.drain("data_release"));
    EXPECT_TRUE(tick.expired());
    EXPECT_TRUE(trade.expired());
    EXPECT_TRUE(level.expired());
    EXPECT_TRUE(snapshotRow.expired());
}

TEST_F(ThousandClearTest, shouldFreeTheOldTicksOnTheReleaseStrandWhenHistoriesBeginAnew)
{
    givenBusyModel();
    const std::weak_ptr<quoter::OrderData> tick = model.m_orders.front();
    const std::weak_ptr<quoter::TransactionData> trade = model.m_transactions.front();
    feed.orders(history, {});
    feed.trades(history, {});
    EXPECT_TRUE(model.m_orders.empty() && model.m_transactions.empty());
    EXPECT_FALSE(tick.expired() || trade.expired());
    terminal.strands.drain("data_release");
    EXPECT_TRUE(tick.expired());
    EXPECT_TRUE(trade.expired());
}

TEST_F(ThousandClearTest, shouldKeepRowsAndOrdersForAPanelThatHoldsThemWhenCleared)
{
    givenBusyModel();
    const auto row = model.m_bidRows.at(1000);
    const auto level = model.getQueue(false, 10.03);
    model.clear();
    terminal.strands.drain("data_release");
    EXPECT_EQ(rowText(*row), "10.00 2h x1 (-1)");
    EXPECT_EQ(queueText(level), "3:100");
}

} // namespace
