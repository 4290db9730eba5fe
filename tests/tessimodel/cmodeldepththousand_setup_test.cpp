#include "tests/support/layout.h"
#include "tests/support/logtext.h"
#include "tests/tessimodel/handcases.h"
#include "tests/tessimodel/thousandmodel.h"
#include "utils/stockkey.h"

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

TEST_F(ThousandSetUpTest, shouldHoldNothingWhenNew)
{
    EXPECT_EQ(model.m_modelId, -1);
    EXPECT_FALSE(model.m_suppressTickFlags);
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_EQ(model.m_lastClose, DBL_MAX);
    EXPECT_EQ(model.m_volumeUnit, 1);
    EXPECT_EQ(model.m_askFloor, 10000000000.0);
    EXPECT_EQ(model.m_bidCeiling, 0.0);
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX);
    EXPECT_EQ(model.m_quoterLastPrice, DBL_MAX);
    EXPECT_EQ(model.m_updateFlags, 0);
    EXPECT_EQ(model.m_loadedHistory, 0);
    EXPECT_FALSE(model.isDataAllReadly());
    EXPECT_FALSE(model.m_isNewLoan || model.m_continuous || model.m_hasAfterHours);
    EXPECT_EQ(model.getStockKey(), QString());
    EXPECT_EQ(bookText(model), "no update");
}

TEST_F(ThousandSetUpTest, shouldTakeFlagAndIdWhenGiven)
{
    const Thousand quiet(true, 12);
    EXPECT_TRUE(quiet.m_suppressTickFlags);
    EXPECT_EQ(quiet.m_modelId, 12);
}

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

TEST_F(ThousandSetUpTest, shouldTakeSharesPerHandFromTheTypesWhenSetUp)
{
    expectHandsByType(terminal, model);
}

TEST_F(ThousandSetUpTest, shouldTakeTheAfterHoursPhaseFromTheTypesWhenSetUp)
{
    const struct {
        const char* market;
        std::set<int> types;
        bool hasAfterHours;
    } cases[] = {{"SH", {}, false},
                 {"SH", {277}, true},
                 {"SZ", {10006}, true},
                 {"SSE", {277, 10006, 100016}, true},
                 {"SH", {100016, 126}, false}};
    for (const auto& c : cases) {
        follow(c.market, "600001", c.types);
        EXPECT_EQ(model.m_hasAfterHours, c.hasAfterHours) << c.market;
    }
    terminal.instruments.add(stock("SZ", "600002", {277, 10006}));
    follow("SH", "600002");
    EXPECT_FALSE(model.m_hasAfterHours) << "the types of another market's instrument";
}

TEST_F(ThousandSetUpTest, shouldGiveTheBookItsSettingsWhenInstrumentIsKnown)
{
    auto bond = stock("SH", "113001", {126});
    bond.priceTick = 0.005;
    bond.lastClose = 101.5;
    terminal.instruments.add(bond);
    model.setStock(keyOf("SH", "113001"));
    EXPECT_EQ(model.m_priceTick, 0.005);
    EXPECT_EQ(model.m_lastClose, 101.5);
    EXPECT_EQ(model.m_book.m_stock, model.m_stock);
    EXPECT_EQ(model.m_book.m_priceTick, 0.005);
    EXPECT_EQ(model.m_book.m_volumeUnit, 10);
    EXPECT_EQ(model.getStockKey(), keyOf("SH", "113001"));
    EXPECT_EQ(model.m_updateFlags, 0);
}

TEST_F(ThousandSetUpTest, shouldFallBackWhenKeyIsUnknown)
{
    follow("SH", "688001", {277, 126});
    model.setStock("nobody knows this");
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_EQ(model.m_volumeUnit, 1);
    EXPECT_FALSE(model.m_hasAfterHours);
    EXPECT_EQ(model.m_lastClose, DBL_MAX);
    EXPECT_EQ(model.m_book.m_stock, nullptr);
    EXPECT_EQ(model.m_book.m_priceTick, 0.001);
    EXPECT_EQ(model.m_book.m_volumeUnit, 1);
    EXPECT_EQ(model.getStockKey(), QString());
}

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

TEST_F(ThousandSetUpTest, shouldRaiseAnUpdateWhenTheManagerHoldsRowsOfTheInstrument)
{
    const std::string key = utils::zlStockKey("SZ", "000001");
    bookManager()->setData(key, {}, {});
    follow("SZ", "000002");
    EXPECT_EQ(model.m_updateFlags, 0) << "rows of another instrument";
    model.m_updateFlags = 4;
    follow("SZ", "000001");
    EXPECT_EQ(model.m_updateFlags, 1) << "in place of what was there";
}

TEST_F(ThousandSetUpTest, shouldTakeTheNewLoanSwitchWhenSet)
{
    model.setNewLoan(true);
    EXPECT_TRUE(model.m_isNewLoan);
    EXPECT_EQ(model.m_updateFlags, 0);
    model.setNewLoan(false);
    EXPECT_FALSE(model.m_isNewLoan);
}

// --- continuous trading ---------------------------------------------------------------------------------------

TEST_F(ThousandSetUpTest, shouldTellAuctionsFromContinuousTradingWhenBestPricesAreSeen)
{
    EXPECT_TRUE(model.isContinousStatus(level2().bid(10.00).ask(10.01)));
    EXPECT_TRUE(model.isContinousStatus(level2().bid(10.00)));
    EXPECT_TRUE(model.isContinousStatus(level2().ask(10.01)));
    EXPECT_TRUE(model.isContinousStatus(level2().bid(10.02).ask(10.01))) << "crossed";
    EXPECT_FALSE(model.isContinousStatus(level2().bid(10.00).ask(10.00)));
    EXPECT_FALSE(model.isContinousStatus(level2().bid(10.00).ask(10.000005)));
    EXPECT_TRUE(model.isContinousStatus(level2().bid(10.00).ask(10.00002)));
    EXPECT_FALSE(model.isContinousStatus(level2()));
    EXPECT_FALSE(model.isContinousStatus(level2().bid(0.00001).ask(-0.00001)));
}

// --- the log --------------------------------------------------------------------------------------------------

TEST_F(ThousandSetUpTest, shouldLogBatchesOfTwoAndMoreWhenTheyAreDelivered)
{
    follow("SZ", "000001");
    BookFeed feed(terminal, model);
    feed.orders(history, {order(1).buy(10).time("09:15:01"), order(2).buy(10).time("09:25:02")});
    feed.trades(live, {fill(1, 2).time("09:30:03"), fill(1, 3).time("09:30:04"), fill(1, 4).time("09:30:05")});
    feed.snapshots(moreHistory, {level2("10:00:00"), level2("10:00:03.500")});

    const auto line = [&](const std::string& function, const std::string& message) {
        return logLine(&model, "[TC::CModelDepthThousand::" + function + "] data return, key: SZ_000001, " + message);
    };
    EXPECT_EQ(logTexts(terminal), (std::vector<std::string>{
                                      line("entrustCallback", "count: 2, range: 20240301091501-20240301092502"),
                                      line("transactionCallback", "count: 3, range: 20240301093003-20240301093005"),
                                      line("quoterCallback", "count: 2, range: 20240301100000-20240301100003"),
                                  }));
}

TEST_F(ThousandSetUpTest, shouldLogAtOnceAndWhateverTheBatchsInstrumentWhenPosted)
{
    follow("SZ", "000001");
    BookFeed feed(terminal, model, "SH", "600000");
    feed.holdBack();
    feed.orders(history, {order(1).buy(10), nullptr});
    ASSERT_EQ(logTexts(terminal).size(), 1u);
    EXPECT_EQ(logTexts(terminal).front(),
              logLine(&model, "[TC::CModelDepthThousand::entrustCallback] data return, key: "
                              "SZ_000001, count: 2, range: 20240301093000-0"));
}

TEST_F(ThousandSetUpTest, shouldLogNothingWhenBatchIsASingleRecordOrEmptyOrNull)
{
    follow("SZ", "000001");
    BookFeed feed(terminal, model);
    feed.begin();
    feed.orders(live, {order(1).buy(10)});
    feed.orders(history, {order(1).buy(10)});
    feed.trades(live, {fill(1, 2)});
    feed.snapshots(live, {level2()});
    model.entrustCallback(0, 0, nullptr);
    model.transactionCallback(0, 0, nullptr);
    model.quoterCallback(0, 0, nullptr);
    EXPECT_EQ(logTexts(terminal), std::vector<std::string>());
}

TEST_F(ThousandSetUpTest, shouldLogNothingWhenThereIsNoInstrumentOrTheLogDoesNotTakeIt)
{
    BookFeed feed(terminal, model);
    const Records two{order(1).buy(10), order(2).buy(10)};
    feed.orders(history, two);
    follow("SZ", "000001");
    terminal.log.setLevel(30000);
    feed.orders(history, two);
    feed.trades(history, two);
    feed.snapshots(history, two);
    EXPECT_EQ(logTexts(terminal), std::vector<std::string>());
}

} // namespace
