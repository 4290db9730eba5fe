#include "tests/tessimodel/queuemodel.h"

#include <cfloat>
#include <memory>

namespace {

using namespace tests;

class QueueClearTest : public QueueTest {
protected:
    // Something in every member.
    void givenBusyModel()
    {
        feed.begin({order(1).buy(10.00).shares(300), order(2).sell(10.02).shares(500)},
                   {fill(1, 2).shares(100), fill(8, 9)});
        feed.snapshots(live, {level2("09:30:03").bid(10.00, 2)});
        feed.queues(live, {bestQueues("09:30:03").bid(0.0, {100})});
        feed.orders(live, {order(4).buy(9.99)});
    }
};

TEST_F(QueueClearTest, shouldDropAllDataAndRaiseAnUpdateWhenCleared)
{
    givenBusyModel();
    ASSERT_EQ(model.m_updateFlags, 3);
    model.clear();
    EXPECT_EQ(model.m_updateFlags, 1) << "in place of what was there";
    EXPECT_EQ(model.m_loadedHistory, 0);
    EXPECT_TRUE(model.m_orders.empty() && model.m_transactions.empty() && model.m_dealVolumes.empty());
    EXPECT_EQ(model.m_rawTimetag, 0);
    EXPECT_EQ(model.m_quoter, nullptr);
    EXPECT_EQ(model.m_levelOrder, nullptr);
    EXPECT_FALSE(model.m_continuous);
    EXPECT_EQ(levelsText(model.m_book), "");
    EXPECT_TRUE(model.m_book.m_bidsDirty && model.m_book.m_asksDirty);
    EXPECT_EQ(model.m_book.m_lastTimetag, 0);
    EXPECT_EQ(model.m_book.m_lastBuySeq, 0);
    EXPECT_TRUE(model.m_book.m_orderPriceKeys.empty() && model.m_book.m_seenTrades.empty());
    EXPECT_TRUE(model.m_book.m_pendingBuy.empty() && model.m_book.m_pendingSell.empty());
}

TEST_F(QueueClearTest, shouldKeepTheRowsInTheirSlotsWhenCleared)
{
    givenBusyModel();
    const auto bid = model.m_bids[1];
    const auto ask = model.m_asks[9];
    model.clear();
    EXPECT_EQ(model.m_bids[1], bid);
    EXPECT_EQ(model.m_asks[9], ask);
    EXPECT_EQ(slotsText(model.m_bids), "0: bare\n1-9: bid 0 0, 1 of 100 [0:100]\n");
    EXPECT_EQ(model.m_bids.size(), 0u);
}

TEST_F(QueueClearTest, shouldKeepInstrumentAndSettingsWhenCleared)
{
    givenBusyModel();
    model.m_priceTick = 7;
    model.m_lastClose = 7;
    model.m_volumeUnit = 7;
    model.clear();
    EXPECT_EQ(model.m_stock->code, "000001");
    EXPECT_EQ(model.m_priceTick, 0.01) << "taken from the instrument anew";
    EXPECT_EQ(model.m_lastClose, 10.0);
    EXPECT_EQ(model.m_volumeUnit, 100);
    EXPECT_EQ(model.m_book.m_stock, model.m_stock) << "the book got it back";
    EXPECT_EQ(model.m_book.m_priceTick, 0.01);
    EXPECT_EQ(model.m_book.m_volumeUnit, 100);
}

TEST_F(QueueClearTest, shouldFallBackToItsDefaultsWhenItHasNoInstrument)
{
    Queue quiet(true, 3);
    quiet.m_priceTick = 7;
    quiet.m_lastClose = 7;
    quiet.m_volumeUnit = 7;
    quiet.clear();
    EXPECT_TRUE(quiet.m_suppressTickFlags);
    EXPECT_EQ(quiet.m_modelId, 3);
    EXPECT_EQ(quiet.m_priceTick, 0.001);
    EXPECT_EQ(quiet.m_lastClose, DBL_MAX);
    EXPECT_EQ(quiet.m_volumeUnit, 1);
    EXPECT_EQ(quiet.m_book.m_stock, nullptr);
    EXPECT_EQ(quiet.m_updateFlags, 1) << "also without an instrument";
}

TEST_F(QueueClearTest, shouldTakeTheSameDayAgainWhenCleared)
{
    givenBusyModel();
    model.clear();
    feed.orders(live, {order(1).buy(11.00)});
    EXPECT_EQ(levelsText(model.m_book), "") << "histories are to come again";
    givenBusyModel();
    EXPECT_EQ(levelsText(model.m_book), "bid 999 4:100\nbid 1000 1:300-100\nask 1002 2:500-100\n");
    EXPECT_EQ(model.m_rawTimetag, timeOf("09:30:03"));
}

// --- freed where it stands ------------------------------------------------------------------------------------

TEST_F(QueueClearTest, shouldFreeTicksAndLevelsInPlaceWhenCleared)
{
    givenBusyModel();
    const std::weak_ptr<quoter::OrderData> tick = model.m_orders.front();
    const std::weak_ptr<quoter::TransactionData> trade = model.m_transactions.front();
    const std::weak_ptr<TC::OrderQueue> level = model.m_book.m_bidLevels.at(999);
    const std::weak_ptr<quoter::LevelOrderData> queue = model.m_levelOrder;
    model.clear();
    EXPECT_TRUE(tick.expired() && trade.expired() && level.expired() && queue.expired());
    EXPECT_FALSE(terminal.strands.drain("data_release"));
}

TEST_F(QueueClearTest, shouldFreeTheOldTicksInPlaceWhenHistoriesBeginAnew)
{
    givenBusyModel();
    const std::weak_ptr<quoter::OrderData> tick = model.m_orders.front();
    const std::weak_ptr<quoter::TransactionData> trade = model.m_transactions.front();
    feed.orders(history, {});
    feed.trades(history, {});
    EXPECT_TRUE(tick.expired() && trade.expired());
    EXPECT_FALSE(terminal.strands.drain("data_release"));
}

TEST_F(QueueClearTest, shouldFreeEverythingInPlaceWhenItDies)
{
    std::weak_ptr<quoter::OrderData> tick;
    std::weak_ptr<TC::OrderQueue> row;
    std::shared_ptr<TC::OrderQueue> held;
    {
        Queue shortLived;
        shortLived.setStock(keyOf("SZ", "000001"));
        BookFeed shortFeed(terminal, shortLived);
        shortFeed.begin({order(1).buy(10.00), order(2).buy(10.01)});
        shortFeed.snapshots(live, {level2("09:30:03").bid(10.00)});
        shortFeed.queues(live, {bestQueues("09:30:03")});
        tick = shortLived.m_orders.front();
        row = shortLived.m_bids[0];
        held = shortLived.m_book.getLevel(true, 10.00);
    }
    EXPECT_TRUE(tick.expired());
    EXPECT_TRUE(row.expired());
    EXPECT_FALSE(terminal.strands.drain("data_release"));
    EXPECT_EQ(queueText(held), "1:100") << "a level that a caller holds stays whole";
}

TEST_F(QueueClearTest, shouldKeepALevelForTheCallerThatHoldsItWhenCleared)
{
    givenBusyModel();
    const auto level = model.m_book.getLevel(true, 10.00);
    model.clear();
    givenBusyModel();
    feed.trades(live, {cancelOfBuy(1)});
    EXPECT_EQ(totalsText(*level), "[1:300-100] 200 x1");
}

} // namespace
