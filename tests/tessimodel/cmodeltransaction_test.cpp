#include "indexui/tessimodel/cmodeltransaction.h"

#include "Formula/formulaparam.h"
#include "tests/support/layout.h"
#include "tests/support/records.h"
#include "tests/support/requests.h"
#include "tests/tessimodel/transactiontest.h"

#include <cfloat>

namespace {

using namespace tests;

// --- set-up -------------------------------------------------------------------------------------------------------

TEST_F(TransactionTest, shouldHoldNothingWhenNew)
{
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_EQ(model.m_lastClose, DBL_MAX);
    EXPECT_TRUE(model.m_datas.isEmpty());
    EXPECT_FALSE(model.m_updated || model.m_afterHoursType || model.m_afterHoursTypeSz || model.m_isMainland ||
                 model.m_inAfterHours || model.m_isSgt || model.m_isHgt || model.m_isHkMarket);
}

TEST_F(TransactionTest, shouldTakePriceTickAndLastCloseWhenInstrumentIsKnown)
{
    follow("SZ", "000001");
    EXPECT_EQ(model.m_priceTick, 0.01);
    EXPECT_EQ(model.m_lastClose, 10.0);
    EXPECT_FALSE(model.m_updated);
}

TEST_F(TransactionTest, shouldFallBackWhenKeyIsUnknown)
{
    follow("SH", "688001", {277});
    model.history({level1().last(10).volume(5)});
    model.m_inAfterHours = true;
    model.m_isSgt = model.m_isHgt = model.m_isHkMarket = model.m_afterHoursTypeSz = true;
    model.setStock("nobody knows this");
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_EQ(model.m_lastClose, DBL_MAX);
    EXPECT_FALSE(model.m_afterHoursType || model.m_afterHoursTypeSz || model.m_isMainland || model.m_isSgt ||
                 model.m_isHgt || model.m_isHkMarket);
    EXPECT_FALSE(model.m_inAfterHours);
    EXPECT_EQ(model.m_datas.size(), 1) << "setStock leaves the rows alone";
    EXPECT_TRUE(model.m_updated) << "and the mark too";
}

struct MarketCase {
    const char* market;
    bool mainland, hgt, sgt, hk;
};

TEST_F(TransactionTest, shouldClassifyByWholeMarketNameWhenSetUp)
{
    const MarketCase cases[] = {
        {"SH", true, false, false, false},       {"SZ", true, false, false, false},
        {"BJ", true, false, false, false},       {"SSE", true, false, false, false},
        {"SZSE", true, false, false, false},     {"sh", false, false, false, false},
        {"SHO", false, false, false, false},     {"HGT", false, true, false, false},
        {"SSEHKEX", false, true, false, false},  {"SGT", false, false, true, false},
        {"SZSEHKEX", false, false, true, false}, {"HK", false, false, false, true},
        {"HKX", false, false, false, false},     {"S", false, false, false, false},
    };
    for (const MarketCase& c : cases) {
        SCOPED_TRACE(c.market);
        follow(c.market, "00700");
        EXPECT_EQ(model.m_isMainland, c.mainland);
        EXPECT_EQ(model.m_isHgt, c.hgt);
        EXPECT_EQ(model.m_isSgt, c.sgt);
        EXPECT_EQ(model.m_isHkMarket, c.hk);
        EXPECT_EQ(model.isHkStock(), c.hgt || c.sgt || c.hk);
    }
}

TEST_F(TransactionTest, shouldBeAConnectStockWhenServiceSaysSo)
{
    auto both = stock("HK", "00005");
    both.hasHGT = true;
    both.hasSGT = true;
    terminal.instruments.add(both);
    model.setStock(keyOf("HK", "00005"));
    EXPECT_TRUE(model.m_isHgt);
    EXPECT_TRUE(model.m_isSgt);
    EXPECT_TRUE(model.m_isHkMarket);

    auto shanghaiOnly = stock("SH", "600000");
    shanghaiOnly.hasHGT = true;
    terminal.instruments.add(shanghaiOnly);
    model.setStock(keyOf("SH", "600000"));
    EXPECT_TRUE(model.m_isHgt);
    EXPECT_FALSE(model.m_isSgt);
    EXPECT_TRUE(model.isHkStock());
}

// The Shenzhen type is asked for with the market "SZ", whatever the instrument's own market is.
TEST_F(TransactionTest, shouldAskForShenzhenTypeByLiteralMarketWhenSetUp)
{
    follow("SZSE", "300001", {10006});
    EXPECT_FALSE(model.m_afterHoursTypeSz) << "the type of SZSE 300001 does not count";

    terminal.instruments.add(stock("SZ", "300001", {10006}));
    model.setStock(keyOf("SZSE", "300001"));
    EXPECT_TRUE(model.m_afterHoursTypeSz) << "the type of SZ 300001 does";
    EXPECT_FALSE(model.m_afterHoursType);

    follow("SH", "688001", {277});
    EXPECT_TRUE(model.m_afterHoursType);
    EXPECT_FALSE(model.m_afterHoursTypeSz);
}

// The service is asked about a link only where the market does not say it already.
TEST_F(TransactionTest, shouldAskForConnectLinksOnlyWhenMarketDoesNotTell)
{
    const std::pair<const char*, int> cases[] = {{"SZ", 2},      {"HK", 2},  {"HGT", 1},
                                                 {"SSEHKEX", 1}, {"SGT", 1}, {"SZSEHKEX", 1}};
    for (const auto& [market, queries] : cases) {
        const auto before = terminal.instruments.connectQueries();
        follow(market, "00700");
        EXPECT_EQ(terminal.instruments.connectQueries() - before, static_cast<std::size_t>(queries)) << market;
    }
    const auto before = terminal.instruments.connectQueries();
    model.setStock("nobody");
    EXPECT_EQ(terminal.instruments.connectQueries(), before);
}

// --- the request --------------------------------------------------------------------------------------------------

TEST_F(TransactionTest, shouldAskForTheLastTradingDayWhenRequested)
{
    terminal.instruments.setLastTradingDay(20240301);
    follow("SZ", "000001");
    TC::CFormulaParam param = strangeRequest();
    model.getParams(param);
    EXPECT_EQ(requestText(param), requestText(requestByVolume("SZ", "000001", timeOf("00:00:00"))));
}

TEST_F(TransactionTest, shouldLeaveRequestAsItWasWhenWithoutInstrument)
{
    TC::CFormulaParam param = strangeRequest();
    model.getParams(param);
    EXPECT_EQ(requestText(param), requestText(strangeRequest()));
}

// --- clear, copies, rows ------------------------------------------------------------------------------------------

TEST_F(TransactionTest, shouldKeepInstrumentWhenCleared)
{
    follow("SZ", "000001");
    model.history({level1().last(10).volume(5)});
    model.m_updated = false;
    model.m_priceTick = 7;
    model.m_lastClose = 7;
    model.clear();
    EXPECT_TRUE(model.m_datas.isEmpty());
    EXPECT_TRUE(model.m_updated);
    EXPECT_NE(model.m_stock, nullptr);
    EXPECT_EQ(model.m_priceTick, 0.01);
    EXPECT_EQ(model.m_lastClose, 10.0);

    model.setStock("nobody");
    model.m_lastClose = 7;
    model.clear();
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_EQ(model.m_lastClose, DBL_MAX);
}

TEST_F(TransactionTest, shouldShareRowsUntilOneChangesWhenCopied)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(5)});
    model.m_updated = true;
    model.m_inAfterHours = true;
    Transactions copy = model;
    ASSERT_FALSE(model.m_datas.isDetached()) << "the copy shares the list";
    EXPECT_EQ(copy.m_stock, model.m_stock);
    EXPECT_TRUE(copy.m_inAfterHours);
    EXPECT_EQ(copy.m_lastClose, 10.0);
    EXPECT_TRUE(copy.m_isMainland && copy.m_updated);

    model.live({level1("09:30:03").last(10.01).volume(7)});
    EXPECT_TRUE(model.m_datas.isDetached());
    EXPECT_TRUE(copy.m_datas.isDetached());
    EXPECT_EQ(rowsText(copy), "09:30:00 10 +5 of 5 B\n");
    EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n"
                               "09:30:03 10.01 +2 of 7 B\n");

    copy = model;
    EXPECT_FALSE(model.m_datas.isDetached());
    copy.clear();
    EXPECT_EQ(model.m_datas.size(), 2);
}

// A short list is freed where it stands: nothing goes to the strand that frees big containers.
TEST_F(TransactionTest, shouldFreeRowsInPlaceWhenCleared)
{
    terminal.strands.runByHand();
    follow("SZ", "000001");
    model.history({level1().last(10).volume(5)});
    model.clear();
    model.history({level1().last(10).volume(5)});
    model.history({});
    EXPECT_FALSE(terminal.strands.drain("data_release"));
}

// The list is detached before its last row is read, also when the snapshot then adds nothing.
TEST_F(TransactionTest, shouldDetachTheListWhenSnapshotIsComparedWithASharedRow)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(5)});
    const Transactions copy = model;
    model.live({level1("09:30:03").last(10).volume(5)});
    EXPECT_TRUE(model.m_datas.isDetached());
    EXPECT_EQ(rowsText(copy), rowsText(model));
}

TEST(TransData, shouldCompareByTimeAloneWhenOtherFieldsDiffer)
{
    TC::TransData a;
    EXPECT_EQ(a.timetag, 0);
    EXPECT_EQ(a.price, 0);
    EXPECT_EQ(a.totalVolume, 0);
    EXPECT_EQ(a.volume, 0);
    EXPECT_EQ(a.askPrice, 0);
    EXPECT_EQ(a.bidPrice, 0);
    EXPECT_TRUE(a.isBuy);
    EXPECT_EQ(a.tradeStatus, 10);

    TC::TransData b;
    b.price = 1;
    b.totalVolume = 3;
    b.askPrice = 4;
    b.bidPrice = 5;
    b.tradeStatus = 6;
    b.volume = 2;
    b.isBuy = false;
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a < b);
    b.timetag = -1;
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(b < a);
}

TEST(TransData, shouldCopyEveryFieldWhenAssigned)
{
    TC::TransData source;
    source.timetag = 1;
    source.price = 2;
    source.totalVolume = 3;
    source.volume = 4;
    source.askPrice = 5;
    source.bidPrice = 6;
    source.isBuy = false;
    source.tradeStatus = 7;
    TC::TransData copied;
    copied = source;
    TC::TransData moved;
    moved = std::move(source);
    for (const TC::TransData& row : {copied, moved}) {
        EXPECT_EQ(row.timetag, 1);
        EXPECT_EQ(row.price, 2);
        EXPECT_EQ(row.totalVolume, 3);
        EXPECT_EQ(row.volume, 4);
        EXPECT_EQ(row.askPrice, 5);
        EXPECT_EQ(row.bidPrice, 6);
        EXPECT_FALSE(row.isBuy);
        EXPECT_EQ(row.tradeStatus, 7);
    }
}

TEST_F(TransactionTest, shouldKeepContractOrderWhenMembersAreLaidOut)
{
    const TC::TransData row;
    EXPECT_TRUE(standInOrder(row.timetag, row.price, row.totalVolume, row.volume, row.askPrice, row.bidPrice, row.isBuy,
                             row.tradeStatus));
    EXPECT_TRUE(standInOrder(model.m_stock, model.m_priceTick, model.m_lastClose, model.m_datas, model.m_updated,
                             model.m_afterHoursType, model.m_afterHoursTypeSz, model.m_isMainland, model.m_inAfterHours,
                             model.m_isSgt, model.m_isHgt, model.m_isHkMarket));
}

} // namespace
