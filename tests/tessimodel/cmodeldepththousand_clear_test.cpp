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

TEST_F(ThousandClearTest, shouldDropTicksAndBookWhenCleared)
{
    givenBusyModel();
    model.clear();
    EXPECT_TRUE(model.m_orders.empty() && model.m_transactions.empty() && model.m_dealVolumes.empty());
    EXPECT_EQ(levelsText(model.m_book) + bookText(model.m_book), "");
    EXPECT_EQ(model.m_book.parkedTrades(), 0u);
    EXPECT_TRUE(model.m_book.m_seenTrades.empty());
    EXPECT_FALSE(model.isDataAllReadly());
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
    model.clear();
    EXPECT_EQ(kept(), "bid 10.00 2h x1 (-1)\nask 10.02 4h x1 (-1)\nask 10.03 1h x1 (+1)\n");
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

TEST_F(ThousandClearTest, shouldLeaveNothingWhenNobodyReadTheRows)
{
    feed.begin({order(1).buy(10.00)});
    model.clear();
    EXPECT_EQ(kept(), "nothing kept");
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
