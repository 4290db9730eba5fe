#include "tests/tessimodel/encounter.h"
#include "tests/tessimodel/tradelist.h"

#include <boost/thread/lock_guard.hpp>

#include <chrono>
#include <thread>

namespace {

using namespace tests;

using Callback = void (TC::CModelDepthTransaction::*)(int, int, const TradeList::Batch&);

// A model whose work is done by a thread, and that follows another instrument as soon as the first record of a batch is
// in. That meets the batch in its middle nearly always, but for a thread that sleeps too long.
class TradeMidBatchTest : public ::testing::Test {
protected:
    TradeMidBatchTest() { terminal.strands.runOnPool(1); }

    // A new model with one row and one snapshot that could be matched, and no flag.
    void givenAModel()
    {
        model = boost::make_shared<TradeList>();
        model->setStock(keyOf("SZ", "000001"));
        model->append(model->m_stock, dealt("09:30:01", 10.00, 1));
        model->append(model->m_stock, dealt("09:30:04", 10.00, 1));
        model->append(model->m_stock, snapshot("09:30:03", 10.00, 1));
    }

    // Delivers more history and changes the instrument meanwhile. True when part of the records was taken by then.
    bool meetsTheMiddle(Callback callback, const Records& records)
    {
        givenAModel();
        const int before = taken();
        const int all = before + static_cast<int>(records.size());
        ((*model).*callback)(0, moreHistory, batchFor("SZ", "000001", records));
        const auto end = std::chrono::steady_clock::now() + kLong;
        while (taken() == before && std::chrono::steady_clock::now() < end)
            std::this_thread::yield();
        model->setStock(keyOf("SZ", "000002"));
        terminal.strands.waitIdle();
        return taken() < all;
    }

    // Rows and snapshots.
    int taken() const
    {
        const boost::lock_guard<boost::recursive_mutex> lock(model->m_mutex);
        return model->m_rows.size() + model->m_quotes.size();
    }

    BookTerminal terminal;
    boost::shared_ptr<TradeList> model;
};

// What is taken stays, and nothing follows: no match, no flag, and live trades go on waiting for the history.
TEST_F(TradeMidBatchTest, shouldEndTheBatchWithNothingFurtherWhenTheInstrumentChanges)
{
    const std::shared_ptr<quoter::QuoterBase> trade = dealt("09:30:05", 10.00, 1);
    Records snapshots;
    for (int i = 2; i < 50000; ++i)
        snapshots.push_back(snapshot("09:30:06", 10.00, i));
    for (const auto& [callback, records] :
         {std::pair<Callback, Records>(&TC::CModelDepthTransaction::transactionCallback, Records(200000, trade)),
          std::pair<Callback, Records>(&TC::CModelDepthTransaction::quoterCallback, snapshots)}) {
        bool met = false;
        for (int attempt = 0; attempt < 100 && !met; ++attempt)
            met = meetsTheMiddle(callback, records);
        ASSERT_TRUE(met);
        EXPECT_EQ(pairsText(*model), "");
        EXPECT_EQ(model->m_lastMatchedQuote, -1);
        EXPECT_FALSE(model->m_changed);
        EXPECT_FALSE(model->m_historyLoaded);
    }
}

} // namespace
