#include "tests/support/layout.h"
#include "tests/support/logtext.h"
#include "tests/tessimodel/quoterthousand.h"
#include "utils/stockkey.h"

#include <type_traits>
#include <vector>

namespace {

using namespace tests;

using QuoterThousandSetUpTest = QuoterThousandTest;

static_assert(std::is_same_v<decltype(QuoterThousand::m_quoterVolumeTime), int>, "narrow on purpose");
static_assert(std::is_same_v<decltype(QuoterThousand::m_reserved), __int64>);

// --- construction ---------------------------------------------------------------------------------------------

TEST_F(QuoterThousandSetUpTest, shouldHoldNoRecordWhenNew)
{
    const QuoterThousand fresh;
    EXPECT_EQ(fresh.m_thousand, nullptr);
    EXPECT_EQ(fresh.m_prevThousand, nullptr);
    EXPECT_TRUE(fresh.m_priceDeltas.isEmpty());
    EXPECT_EQ(fresh.m_reserved, 0);
    EXPECT_EQ(fresh.m_book.m_lastTimetag, 0);
    EXPECT_TRUE(fresh.m_orders.empty() && fresh.m_transactions.empty() && fresh.m_dealVolumes.empty());
    EXPECT_TRUE(fresh.m_bidRows.empty() && fresh.m_askRows.empty());
}

TEST_F(QuoterThousandSetUpTest, shouldKeepMembersInOrderWhenLaidOut)
{
    const QuoterThousand& m = model;
    EXPECT_TRUE(standInOrder(m.m_modelId, m.m_priceTick, m.m_lastClose, m.m_volumeUnit, m.m_mutex, m.m_strand,
                             m.m_stock, m.m_suppressTickFlags, m.m_continuous, m.m_hasAfterHours, m.m_afterHoursVolume,
                             m.m_loadedHistory, m.m_updateFlags, m.m_dataReady, m.m_orders, m.m_transactions,
                             m.m_snapshotAsks, m.m_snapshotBids, m.m_dealVolumes, m.m_askRows, m.m_bidRows,
                             m.m_askFloor, m.m_bidCeiling, m.m_book, m.m_reserved, m.m_quoterTimetag, m.m_tickLastPrice,
                             m.m_tickLastVolume, m.m_quoterLastPrice, m.m_quoterLastVolume, m.m_quoterVolumeTime,
                             m.m_quoter, m.m_thousand, m.m_prevThousand, m.m_isNewLoan, m.m_priceDeltas));
}

// --- the instrument -------------------------------------------------------------------------------------------

TEST_F(QuoterThousandSetUpTest, shouldKeepAllDataWhenInstrumentChanges)
{
    bidAt("09:30:00", 100);
    bidAt("09:30:01", 150);
    feed.snapshots(live, {level2("09:30:03").last(10.01).volume(5).bid(10.00, 7)});
    model.setStock(keyOf("SZ", "000002"));
    EXPECT_EQ(bookText(model), "bid 10.00 150h x1 (-50)\n");
    EXPECT_EQ(model.m_quoterTimetag, timeOf("09:30:03"));
    EXPECT_EQ(readBook(model, byRecord).lastPrice, 10.01);
}

// Only a record makes a poll true. The rows of an earlier view of the tick-built book are not shown.
TEST_F(QuoterThousandSetUpTest, shouldTellOfTheManagersRowsWithTheFirstRecordWhenThereAreSome)
{
    bookManager()->setData(utils::zlStockKey("SZ", "000001"), rowsAt(10.02, 4), rowsAt(10.00, 2));
    model.setStock(keyOf("SZ", "000001"));
    EXPECT_EQ(model.m_updateFlags, 1);
    EXPECT_EQ(bookText(model), "no update");
    bidAt("09:30:00", 100);
    const BookReading reading = readBook(model, byRecord);
    EXPECT_EQ(reading.flags, 1 | 4);
    EXPECT_EQ(bookText(reading.bids, reading.asks), "bid 10.00 100h x1 (0)\n");
}

// --- the strand -----------------------------------------------------------------------------------------------

TEST_F(QuoterThousandSetUpTest, shouldDoNothingOnTheCallersThreadWhenDelivered)
{
    feed.holdBack();
    bidAt("09:30:00", 100);
    feed.snapshots(live, {level2("09:30:00").bid(10.00)});
    EXPECT_EQ(model.m_thousand, nullptr);
    EXPECT_EQ(model.m_quoter, nullptr);
    EXPECT_EQ(model.m_updateFlags, 0);
    feed.run();
    EXPECT_NE(model.m_thousand, nullptr);
    EXPECT_NE(model.m_quoter, nullptr);
}

TEST_F(QuoterThousandSetUpTest, shouldWorkInTheOrderOfDeliveryWhenTheStrandRuns)
{
    feed.holdBack();
    bidAt("09:30:05", 100);
    bidAt("09:30:03", 150);
    feed.run();
    EXPECT_EQ(bookText(model), "bid 10.00 150h x1 (-50)\n");
}

TEST_F(QuoterThousandSetUpTest, shouldFreeItsRecordsWhenItDies)
{
    const std::shared_ptr<quoter::LevelThousandData> record = thousand().bid(10.00);
    {
        QuoterThousand shortLived;
        shortLived.setStock(keyOf("SZ", "000001"));
        BookFeed(terminal, shortLived).thousand(live, {record});
        EXPECT_GT(record.use_count(), 1);
    }
    terminal.strands.drain("data_release");
    EXPECT_EQ(record.use_count(), 1);
}

// --- the log --------------------------------------------------------------------------------------------------

TEST_F(QuoterThousandSetUpTest, shouldLogBatchesOfTwoAndMoreWhenTheyAreDelivered)
{
    feed.thousand(history, {thousand("09:30:00"), thousand("09:30:03")});
    feed.snapshots(live, {level2("10:00:00"), level2("10:00:03"), level2("10:00:06.500")});

    const std::string owner = "TC::CModelQuoterDepthThousand::";
    EXPECT_EQ(logTexts(terminal),
              (std::vector{batchLine(&model, owner + "ThousandDataCallback", 2, "20240301093000-20240301093003"),
                           batchLine(&model, owner + "quoterCallback", 3, "20240301100000-20240301100006")}));
    for (const auto& entry : terminal.log.lines())
        EXPECT_EQ(entry.level, 20000);
}

TEST_F(QuoterThousandSetUpTest, shouldLogAtOnceAndWhateverTheBatchsInstrumentWhenPosted)
{
    feed.holdBack();
    feed.request("SH", "600000");
    feed.thousand(live, {nullptr, thousand("09:30:03")});
    EXPECT_EQ(logTexts(terminal), std::vector{batchLine(&model, "TC::CModelQuoterDepthThousand::ThousandDataCallback",
                                                        2, "0-20240301093003")});
}

TEST_F(QuoterThousandSetUpTest, shouldLogNothingWhenBatchIsASingleRecordOrEmptyOrNull)
{
    for (const int kind : {history, moreHistory, live}) {
        feed.thousand(kind, {});
        feed.thousand(kind, {thousand()});
        feed.snapshots(kind, {});
        feed.snapshots(kind, {level2()});
    }
    model.ThousandDataCallback(0, history, nullptr);
    model.quoterCallback(0, history, nullptr);
    terminal.strands.drain("modulegroup");
    EXPECT_EQ(logTexts(terminal), std::vector<std::string>());
}

TEST_F(QuoterThousandSetUpTest, shouldLogNothingWhenThereIsNoInstrumentOrTheLogDoesNotTakeIt)
{
    model.setStock("nobody knows this");
    feed.thousand(history, {thousand(), thousand()});
    feed.snapshots(history, {level2(), level2()});
    model.setStock(keyOf("SZ", "000001"));
    terminal.log.setLevel(30000);
    feed.thousand(history, {thousand(), thousand()});
    feed.snapshots(history, {level2(), level2()});
    EXPECT_EQ(logTexts(terminal), std::vector<std::string>());
}

} // namespace
