#include "tests/support/layout.h"
#include "tests/support/logtext.h"
#include "tests/tessimodel/thousandmodel.h"

#include <set>
#include <string>
#include <vector>

namespace {

using namespace tests;

class ThousandSetUpTest : public ::testing::Test {
protected:
    // Puts an instrument there, also in place of the one with its name, and follows it.
    void follow(const std::string& market, const std::string& code, const std::set<int>& types = {})
    {
        terminal.instruments.add(stock(market, code, types));
        model.setStock(keyOf(market, code));
    }

    BookTerminal terminal;
    Thousand model;
};

// --- construction ---------------------------------------------------------------------------------------------

TEST_F(ThousandSetUpTest, shouldKeepMembersInOrderWhenLaidOut)
{
    const Thousand& m = model;
    EXPECT_TRUE(standInOrder(m.m_modelId, m.m_priceTick, m.m_lastClose, m.m_volumeUnit, m.m_mutex, m.m_strand,
                             m.m_stock, m.m_suppressTickFlags, m.m_continuous, m.m_loadedHistory, m.m_updateFlags,
                             m.m_dataReady, m.m_orders, m.m_transactions, m.m_snapshotAsks, m.m_snapshotBids,
                             m.m_dealVolumes, m.m_askRows, m.m_bidRows, m.m_askFloor, m.m_bidCeiling, m.m_book,
                             m.m_reserved, m.m_quoterTimetag, m.m_tickLastPrice, m.m_tickLastVolume,
                             m.m_quoterLastPrice, m.m_quoterLastVolume, m.m_quoterVolumeTime, m.m_quoter, m.m_isNewLoan,
                             m.m_hasAfterHours, m.m_afterHoursVolume));
}

// --- the instrument -------------------------------------------------------------------------------------------

TEST_F(ThousandSetUpTest, shouldKeepAllDataWhenInstrumentChanges)
{
    follow("SZ", "000001");
    BookFeed feed(terminal, model);
    feed.begin({order(1).buy(10.00).shares(300)}, {fill(1, 2).at(10.00).shares(100)});
    feed.snapshots(live, {level2("09:30:03").last(10.01).volume(5).bid(10.00, 7)});
    model.setStock(keyOf("SZ", "000002"));
    EXPECT_EQ(levelsText(model.m_book), "bid 1000 1:300-100\n");
    EXPECT_EQ(model.m_orders.size(), 1u);
    EXPECT_EQ(model.m_transactions.size(), 1u);
    EXPECT_EQ(model.m_snapshotBids.size(), 1u);
    EXPECT_EQ(model.m_quoterTimetag, timeOf("09:30:03"));
    EXPECT_EQ(model.m_loadedHistory, 3);
    EXPECT_TRUE(model.isDataAllReadly());
}

// --- the log --------------------------------------------------------------------------------------------------

TEST_F(ThousandSetUpTest, shouldLogAtOnceAndWhateverTheBatchsInstrumentWhenPosted)
{
    follow("SZ", "000001");
    BookFeed feed(terminal, model, "SH", "600000");
    feed.holdBack();
    feed.orders(history, {order(1).buy(10), nullptr});
    EXPECT_EQ(logTexts(terminal),
              std::vector{batchLine(&model, "TC::CModelDepthThousand::entrustCallback", 2, "20240301093000-0")});
}

TEST_F(ThousandSetUpTest, shouldLogNothingWhenBatchIsNull)
{
    follow("SZ", "000001");
    model.entrustCallback(0, 0, nullptr);
    model.transactionCallback(0, 0, nullptr);
    model.quoterCallback(0, 0, nullptr);
    EXPECT_EQ(logTexts(terminal), std::vector<std::string>());
}

} // namespace
