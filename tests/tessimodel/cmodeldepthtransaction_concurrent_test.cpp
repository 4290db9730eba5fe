#include "Formula/formulaparam.h"
#include "indexui/tessimodel/cmodeltransaction.h"
#include "tests/tessimodel/encounter.h"
#include "tests/tessimodel/tradelist.h"

#include <boost/thread/locks.hpp>

#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <vector>

namespace {

using namespace tests;
using namespace std::chrono_literals;

class TradeListConcurrent : public TradeViewTest {
protected:
    // Two rows of the same orders, of which the first has a snapshot.
    void givenRows()
    {
        feed.orders(history, {order(1), order(2)});
        feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:04", 10.00, 1)});
        feed.snapshots(history, {snapshot("09:30:03", 10.00, 1)});
    }
};

// --- the lock -------------------------------------------------------------------------------------------------

TEST_F(TradeListConcurrent, shouldWaitForTheLockWhenRead)
{
    givenRows();
    const TradeView& m = *model;
    const TradeView::Row row = m.getData(1);
    const int second = secondOf("09:30:03");
    const std::vector<std::function<void()>> operations{
        [&] { m.getData(0); },
        [&] { m.find(second); },
        [&] { m.find(second, true); },
        [&] { m.find(second, false); },
        [&] {
            TC::TransData tick;
            tick.timetag = second + 3;
            TradeView::SeqPair rows;
            m.tryFind(&tick, rows);
        },
        [&] { m.tracebackSeq(0); },
        [&] { m.getOrder(1); },
        [&] { m.getEntrustVolume(row, true); },
        [&] { m.getEntrustVolume(row, false); },
        [&] { m.getDataKind(row, true); },
        [&] { m.getDataKind(row, false); },
        [&] { m.getCurrSeqPair(0); },
        [&] { m.getNextSeqPair(0); },
        [&] { m.getPreSeqPair(0); },
        [&] { m.getCurrQuoterTimgtag(0); },
        [&] { m.getNextQuoterTimgtag(second); },
        [&] { m.getPreQuoterTimgtag(second); },
        [&] {
            TC::CFormulaParam param;
            m.getParams(param);
        },
    };
    expectToWait(m.m_mutex, operations);
}

TEST_F(TradeListConcurrent, shouldWaitForTheLockWhenChanged)
{
    givenRows();
    TradeView& m = *model;
    const auto stock = m.m_stock;
    const std::vector<std::function<void()>> operations{
        [&] { m.setStock(keyOf("SZ", "000001")); },
        [&] { m.initStockParams(); },
        [&] { filter({}); },
        [&] {
            TradeView::SeqPair rows;
            m.findSeq(secondOf("09:30:03"), 0, rows);
        },
        [&] {
            TradeView::SeqPair rows;
            m.tryMatch(secondOf("09:30:02"), 1, rows);
        },
        [&] { m.tryMatch(stock); },
        [&] { m.append(stock, static_cast<std::shared_ptr<quoter::TransactionData>>(fill(1, 2))); },
        [&] { m.doEntrust(0, live, batchFor("SZ", "000001", {})); },
        [&] { m.doTransaction(0, live, batchFor("SZ", "000001", {})); },
        [&] { m.doQuoter(0, live, batchFor("SZ", "000001", {})); },
        [&] { m.clearEntrusts(); },
        [&] { m.clearTransactions(); },
        [&] { m.clearQuotes(); },
        [&] { m.clear(); },
    };
    expectToWait(m.m_mutex, operations);
}

TEST_F(TradeListConcurrent, shouldWaitForTheLockWhenTheViewMoves)
{
    givenRows();
    const int second = secondOf("09:30:03");
    expectToWait(model->m_mutex, {[&] { model->setViewTimeRange(second, second); }});
    model->m_viewEndTime = secondOf("09:30:04");
    expectToWait(model->m_mutex, {[&] { model->recalcMaxMinSeqAndPrice(); }});
    EXPECT_EQ(model->getEndIndex(), 1);
    expectToWait(model->m_mutex, {[&] { model->recalcMaxMinPrice(); }});
}

// The filter is there before the lock is: it counts at once for the rows of a batch that is being taken.
TEST_F(TradeListConcurrent, shouldTakeANewFilterAtOnceWhenTheListIsBusy)
{
    givenRows();
    boost::unique_lock<boost::recursive_mutex> busy(model->m_mutex);
    auto set = start([&] { filter(nothing()); });
    const auto end = std::chrono::steady_clock::now() + kLong;
    while (model->passFilter(model->m_rows[0]) && std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
    EXPECT_FALSE(model->passFilter(model->m_rows[0]));
    EXPECT_EQ(model->m_rowCount, 2) << "filtered anew only with the lock";
    EXPECT_NE(set.wait_for(0s), std::future_status::ready);
    busy.unlock();
    set.wait();
    EXPECT_EQ(model->m_rowCount, 0);
    EXPECT_TRUE(model->m_filteredRows.isEmpty());
}

// --- work that is under way -----------------------------------------------------------------------------------

TEST_F(TradeListConcurrent, shouldFilterTheRestByWhatIsSetThenWhenAFilterComesInMidBatch)
{
    const Records trades(50'000, dealt("09:30:01", 10.00, 1));
    const Encounter encounter{
        .prepare = [&] { filter({}); },
        .work = [&] { model->doTransaction(0, history, batchFor("SZ", "000001", trades)); },
        .done = [&] { return model->m_rowCount; },
        .all = static_cast<int>(trades.size()),
        .intrude = [&] { filter(nothing()); },
    };
    ASSERT_TRUE(meet(model->m_mutex, encounter));
    EXPECT_EQ(model->m_rows.size(), 50'000);
    EXPECT_EQ(model->m_rowCount, 0);
}

// The lock is given back after each snapshot, so that a panel need not wait for a whole day of them.
TEST_F(TradeListConcurrent, shouldEndWithThePairsSoFarWhenTheInstrumentChangesBetweenTwoSnapshots)
{
    constexpr int kSnapshots = 200'000; // more than one core does before it turns to another thread
    filter({.startTime = 0, .endTime = 24 * 3600 * 1000});
    const auto stock = model->m_stock;
    for (__int64 i = 0; i <= kSnapshots; ++i) {
        const std::shared_ptr<quoter::TransactionData> trade = dealt("09:30:00", 10.00, 1);
        trade->timetag += i * 1000;
        model->append(stock, trade);
        const std::shared_ptr<quoter::QuoterDepthData> quote = snapshot("09:30:00", 10.00, i + 1);
        quote->timetag += i * 1000;
        if (i < kSnapshots)
            model->append(stock, quote);
    }
    int answer = 0;
    int then = 0;
    const Encounter encounter{
        .prepare =
            [&] {
                model->m_seqPairs.clear();
                model->m_lastMatchedQuote = -1;
                tookChange();
            },
        .work = [&] { answer = model->tryMatch(stock); },
        .done = [&] { return model->m_lastMatchedQuote + 1; },
        .all = kSnapshots,
        .intrude =
            [&] {
                then = model->m_lastMatchedQuote + 1;
                model->setStock(keyOf("SZ", "000002"));
            },
    };
    ASSERT_TRUE(meet(model->m_mutex, encounter));
    EXPECT_EQ(answer, -1);
    EXPECT_EQ(model->m_lastMatchedQuote + 1, then) << "not one snapshot more";
    EXPECT_EQ(model->m_seqPairs.size(), static_cast<std::size_t>(then)) << "and no open pair";
    int row = 0;
    for (const auto& [second, rows] : model->m_seqPairs) {
        ASSERT_EQ(rows, std::pair(row, row));
        ++row;
    }
    EXPECT_FALSE(tookChange());
}

} // namespace
