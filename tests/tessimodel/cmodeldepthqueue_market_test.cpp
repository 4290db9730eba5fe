#include "tests/tessimodel/queuemodel.h"

namespace {

using namespace tests;

// Which batches the order queues take: callbacks carry no instrument, so that the model's own decides.
class QueueMarketTest : public QueueTest {
protected:
    std::string ticks() const
    {
        return levelsText(model.m_book) + fmt::format("{} orders, {} trades, {} dealt, loaded {}, flags {}",
                                                      model.m_orders.size(), model.m_transactions.size(),
                                                      model.m_dealVolumes.size(), model.m_loadedHistory.load(),
                                                      model.m_updateFlags.load());
    }

    // One batch of every stream and kind.
    void deliverAll()
    {
        for (const int kind : {history, moreHistory, live}) {
            feed.orders(kind, {order(21).buy(11.00)});
            feed.trades(kind, {fill(21, 22)});
        }
        feed.snapshots(live, {level2("09:30:06").bid(10.00, 7)});
        feed.queues(live, {bestQueues("09:30:06").bid(0.0, {100})});
    }
};

TEST_F(QueueMarketTest, shouldKeepNoTickWhenTheMarketIsNotShenzhenToTheLetter)
{
    for (const char* market : {"SH", "BJ", "sz", "SZSE", "S", "ZS"}) {
        SCOPED_TRACE(market);
        terminal.instruments.add(stock(market, "000001"));
        model.setStock(keyOf(market, "000001"));
        ASSERT_NE(model.m_stock, nullptr);
        deliverAll();
        EXPECT_EQ(ticks(), "0 orders, 0 trades, 0 dealt, loaded 0, flags 0");
    }
}

TEST_F(QueueMarketTest, shouldKeepWhatItHasWhenAHistoryOfAnotherMarketBegins)
{
    feed.begin({order(1).buy(10.00)}, {fill(1, 2).shares(40)});
    const std::string before = ticks();
    terminal.instruments.add(stock("SH", "600000"));
    model.setStock(keyOf("SH", "600000"));
    deliverAll();
    EXPECT_EQ(ticks(), before);
    EXPECT_EQ(before, "bid 1000 1:100-40\n1 orders, 1 trades, 2 dealt, loaded 3, flags 1");
}

TEST_F(QueueMarketTest, shouldJoinSnapshotsWhateverTheMarket)
{
    terminal.instruments.add(stock("SH", "600000"));
    model.setStock(keyOf("SH", "600000"));
    deliverAll();
    EXPECT_EQ(model.m_rawTimetag, timeOf("09:30:06"));
    EXPECT_EQ(slotsText(model.m_bids), "0: bare\n1-9: bid 0 0, 1 of 100 [0:100]\n");
}

TEST_F(QueueMarketTest, shouldTakeNothingAtAllWhenThereIsNoInstrument)
{
    model.setStock("nobody knows this");
    deliverAll();
    EXPECT_EQ(ticks(), "0 orders, 0 trades, 0 dealt, loaded 0, flags 0");
    EXPECT_EQ(model.m_quoter, nullptr);
    EXPECT_EQ(model.m_levelOrder, nullptr);
    EXPECT_FALSE(model.m_continuous);
    EXPECT_EQ(model.m_rawTimetag, 0);
}

TEST_F(QueueMarketTest, shouldDropAQueueWhenTheInstrumentWentAfterASnapshot)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.00)});
    ASSERT_TRUE(model.m_continuous);
    model.setStock("nobody knows this");
    feed.queues(live, {bestQueues("09:30:03")});
    EXPECT_EQ(model.m_levelOrder, nullptr);
}

// A batch that waited while the model moved on goes to the instrument that is there by then: clear() and a wait for
// the strand belong between two instruments.
TEST_F(QueueMarketTest, shouldBelongToTheInstrumentThatIsThereWhenABatchHadToWait)
{
    feed.holdBack();
    feed.begin({order(1).buy(10.00)});
    model.setStock(keyOf("SZ", "000002"));
    feed.run();
    EXPECT_EQ(ticks(), "bid 1000 1:100\n1 orders, 0 trades, 0 dealt, loaded 3, flags 1");
    EXPECT_EQ(model.m_book.m_stock->code, "000002");
}

// The task has a copy of the list of records.
TEST_F(QueueMarketTest, shouldTakeTheBatchAsItWasPostedWhenTheCallerReusesIt)
{
    Records orders{order(1).buy(10.00)};
    Records trades{fill(1, 2).shares(40)};
    Records snapshots{level2("09:30:03").bid(10.00)};
    Records queues{bestQueues("09:30:03")};
    model.entrustCallback(0, history, orders);
    model.transactionCallback(0, history, trades);
    model.quoterCallback(0, live, snapshots);
    model.queueCallback(0, live, queues);
    for (Records* const batch : {&orders, &trades, &snapshots, &queues})
        batch->clear();
    EXPECT_EQ(ticks(), "0 orders, 0 trades, 0 dealt, loaded 0, flags 0") << "nothing is done before the strand runs";
    EXPECT_EQ(model.m_quoter, nullptr);
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(ticks(), "bid 1000 1:100-40\n1 orders, 1 trades, 2 dealt, loaded 3, flags 1");
    EXPECT_EQ(model.m_rawTimetag, timeOf("09:30:03"));
}

} // namespace
