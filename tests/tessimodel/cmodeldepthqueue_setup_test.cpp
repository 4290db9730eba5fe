#include "net/rpcengine.h"
#include "tests/support/layout.h"
#include "tests/support/logtext.h"
#include "tests/tessimodel/handcases.h"
#include "tests/tessimodel/queuemodel.h"
#include "utils/csingletont.h"

#include <cfloat>
#include <string>
#include <vector>

namespace {

using namespace tests;

class QueueSetUpTest : public ::testing::Test {
protected:
    void follow(const standin::InstrumentDescription& instrument)
    {
        terminal.instruments.add(instrument);
        model.setStock(keyOf(instrument.market, instrument.code));
    }

    BookTerminal terminal;
    Queue model;
};

// --- construction ---------------------------------------------------------------------------------------------

TEST_F(QueueSetUpTest, shouldHoldNothingWhenNew)
{
    EXPECT_EQ(model.m_modelId, -1);
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_EQ(model.m_lastClose, DBL_MAX);
    EXPECT_EQ(model.m_volumeUnit, 1);
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_FALSE(model.m_suppressTickFlags);
    EXPECT_FALSE(model.m_continuous);
    EXPECT_EQ(model.m_loadedHistory, 0);
    EXPECT_EQ(model.m_updateFlags, 0);
    EXPECT_TRUE(model.m_dealVolumes.empty() && model.m_orders.empty() && model.m_transactions.empty());
    EXPECT_EQ(model.m_rawTimetag, 0);
    EXPECT_EQ(model.m_quoter, nullptr);
    EXPECT_EQ(model.m_levelOrder, nullptr);
    EXPECT_EQ(levelsText(model.m_book), "");
    EXPECT_EQ(model.m_book.m_stock, nullptr);
    EXPECT_FALSE(readQueues(model).updated);
}

TEST_F(QueueSetUpTest, shouldHaveTenEmptySlotsAndNoLengthWhenNew)
{
    EXPECT_EQ(slotsText(model.m_bids) + slotsText(model.m_asks), "0-9: none\n0-9: none\n");
    EXPECT_EQ(model.m_bids.size(), 0u);
    EXPECT_EQ(model.m_bids.begin(), model.m_bids.end());
    EXPECT_EQ(model.m_asks.begin(), model.m_asks.end());
}

TEST_F(QueueSetUpTest, shouldTakeFlagAndIdWhenGiven)
{
    const Queue quiet(true, 12);
    EXPECT_TRUE(quiet.m_suppressTickFlags);
    EXPECT_EQ(quiet.m_modelId, 12);
}

TEST_F(QueueSetUpTest, shouldWorkOnTheStrandOfTheModelsWhenMade)
{
    EXPECT_NE(model.m_strand, nullptr);
    EXPECT_EQ(model.m_strand, utils::CSingletonT<net::RPCEngine>::instance()->getStrand("modulegroup"));
}

TEST_F(QueueSetUpTest, shouldKeepMembersInOrderWhenLaidOut)
{
    const Queue& m = model;
    EXPECT_TRUE(standInOrder(m.m_modelId, m.m_priceTick, m.m_lastClose, m.m_volumeUnit, m.m_mutex, m.m_strand,
                             m.m_stock, m.m_suppressTickFlags, m.m_continuous, m.m_loadedHistory, m.m_updateFlags,
                             m.m_dealVolumes, m.m_orders, m.m_transactions, m.m_bids, m.m_asks, m.m_book,
                             m.m_rawTimetag, m.m_quoter, m.m_levelOrder));
}

// --- the instrument -------------------------------------------------------------------------------------------

TEST_F(QueueSetUpTest, shouldTakeSharesPerHandFromTheTypesWhenSetUp)
{
    expectHandsWithoutShanghaisRule(terminal, model);
}

TEST_F(QueueSetUpTest, shouldGiveTheBookItsSettingsWhenInstrumentIsKnown)
{
    auto bond = stock("SZ", "123001", {100017});
    bond.priceTick = 0.005;
    bond.lastClose = 101.5;
    follow(bond);
    EXPECT_EQ(model.m_priceTick, 0.005);
    EXPECT_EQ(model.m_lastClose, 101.5);
    EXPECT_EQ(model.m_volumeUnit, 10);
    ASSERT_NE(model.m_stock, nullptr);
    EXPECT_EQ(model.m_book.m_stock, model.m_stock);
    EXPECT_EQ(model.m_book.m_priceTick, 0.005);
    EXPECT_EQ(model.m_book.m_volumeUnit, 10);
    EXPECT_EQ(model.m_updateFlags, 0);
}

TEST_F(QueueSetUpTest, shouldFallBackWhenKeyIsUnknown)
{
    auto bond = stock("SZ", "123001", {100017});
    bond.lastClose = 101.5;
    follow(bond);
    model.setStock("nobody knows this");
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_EQ(model.m_lastClose, DBL_MAX);
    EXPECT_EQ(model.m_volumeUnit, 1);
    EXPECT_EQ(model.m_book.m_stock, nullptr);
    EXPECT_EQ(model.m_book.m_priceTick, 0.001);
    EXPECT_EQ(model.m_book.m_volumeUnit, 1);
}

TEST_F(QueueSetUpTest, shouldKeepAllDataWhenInstrumentChanges)
{
    follow(stock("SZ", "000001"));
    BookFeed feed(terminal, model);
    feed.begin({order(1).buy(10.00).shares(300)}, {fill(1, 2).shares(100)});
    feed.trades(live, {fill(7, 8)});
    feed.snapshots(live, {level2("09:30:03").bid(10.00, 7)});
    feed.queues(live, {bestQueues("09:30:03").bid(0.0, {100})});
    const std::string bids = slotsText(model.m_bids);
    model.setStock(keyOf("SZ", "000002"));
    EXPECT_EQ(model.m_stock->code, "000002");
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 1:300-100\n");
    EXPECT_EQ(model.m_book.m_pendingBuy.size(), 1u);
    EXPECT_EQ(model.m_book.m_seenTrades.size(), 2u);
    EXPECT_EQ(model.m_orders.size(), 1u);
    EXPECT_EQ(model.m_transactions.size(), 2u);
    EXPECT_EQ(model.m_dealVolumes.size(), 2u);
    EXPECT_EQ(model.m_loadedHistory, 3);
    EXPECT_EQ(model.m_updateFlags, 1);
    EXPECT_TRUE(model.m_continuous);
    EXPECT_EQ(model.m_rawTimetag, timeOf("09:30:03"));
    EXPECT_NE(model.m_quoter, nullptr);
    EXPECT_NE(model.m_levelOrder, nullptr);
    EXPECT_EQ(slotsText(model.m_bids), bids);
}

// --- the log --------------------------------------------------------------------------------------------------

TEST_F(QueueSetUpTest, shouldLogBatchesOfTwoAndMoreWhenTheyAreQueues)
{
    follow(stock("SZ", "000001"));
    BookFeed feed(terminal, model);
    feed.queues(moreHistory, {bestQueues("09:30:06"), bestQueues("09:30:07")});
    EXPECT_EQ(logTexts(terminal), std::vector{batchLine(&model, "TC::CModelDepthQueue::queueCallback", 2,
                                                        "20240301093006-20240301093007")});
}

TEST_F(QueueSetUpTest, shouldLogAtOnceAndWhateverTheMarketWhenPosted)
{
    follow(stock("SH", "600000"));
    BookFeed feed(terminal, model);
    feed.holdBack();
    feed.orders(history, {order(1).buy(10), nullptr});
    ASSERT_EQ(logTexts(terminal).size(), 1u);
    EXPECT_EQ(logTexts(terminal).front(), logLine(&model, "[TC::CModelDepthQueue::entrustCallback] data return, key: "
                                                          "SH_600000, count: 2, range: 20240301093000-0"));
}

TEST_F(QueueSetUpTest, shouldLogNothingWhenQueuesAreOneOrNoneOrTheLogDoesNotTakeThem)
{
    BookFeed feed(terminal, model);
    feed.queues(history, {bestQueues(), bestQueues()});
    follow(stock("SZ", "000001"));
    feed.queues(live, {bestQueues()});
    feed.queues(history, {});
    terminal.log.setLevel(30000);
    feed.queues(history, {bestQueues(), bestQueues()});
    EXPECT_EQ(logTexts(terminal), std::vector<std::string>());
    terminal.log.setLevel(20000);
    feed.queues(history, {bestQueues(), bestQueues()});
    EXPECT_EQ(logTexts(terminal).size(), 1u);
}

} // namespace
