#include "indexui/tessimodel/cmodeltransaction.h"

#include "Formula/formulaparam.h"
#include "quoter/brovanquoteralldata.h"
#include "quoter/levelorderdata.h"
#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/support/layout.h"
#include "tests/support/records.h"
#include "tests/tessimodel/transactionrows.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <limits>

namespace {

using namespace tests;

class TransactionTest : public ::testing::Test {
protected:
    void follow(const std::string& market, const std::string& code, const std::set<int>& types = {})
    {
        terminal.instruments.add(stock(market, code, types));
        model.setStock(keyOf(market, code));
    }

    standin::Terminal terminal;
    Transactions model;
};

// --- set-up ---------------------------------------------------------------------------------------------------

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

// --- the request ----------------------------------------------------------------------------------------------

// A request with a strange value in every field.
TC::CFormulaParam nonsense()
{
    TC::CFormulaParam param;
    param.subscriptionId = 7;
    param.market = "m";
    param.stockCode = "c";
    param.rangeFlags = 3;
    param.dataName = "d";
    param.beginTime = {1, 2};
    param.endTime = {3, 4};
    param.period = 5;
    return param;
}

TEST_F(TransactionTest, shouldAskForTheLastTradingDayWhenRequested)
{
    terminal.instruments.setLastTradingDay(20240301);
    follow("SZ", "000001");
    TC::CFormulaParam param = nonsense();
    model.getParams(param);
    EXPECT_EQ(param.subscriptionId, 7);
    EXPECT_EQ(param.market, "SZ");
    EXPECT_EQ(param.stockCode, "000001");
    EXPECT_EQ(param.rangeFlags, 0);
    EXPECT_EQ(param.dataName, "QUOTERVOL");
    EXPECT_EQ(param.beginTime, (quoter::TimeSeq{timeOf("00:00:00"), 0}));
    EXPECT_EQ(param.endTime, quoter::TimeSeq::TIME_LASTED);
    EXPECT_EQ(param.period, 60000);
}

TEST_F(TransactionTest, shouldLeaveRequestAsItWasWhenWithoutInstrument)
{
    TC::CFormulaParam param = nonsense();
    model.getParams(param);
    EXPECT_EQ(param.subscriptionId, 7);
    EXPECT_EQ(param.market, "m");
    EXPECT_EQ(param.stockCode, "c");
    EXPECT_EQ(param.rangeFlags, 3);
    EXPECT_EQ(param.dataName, "d");
    EXPECT_EQ(param.beginTime, (quoter::TimeSeq{1, 2}));
    EXPECT_EQ(param.endTime, (quoter::TimeSeq{3, 4}));
    EXPECT_EQ(param.period, 5);
}

// --- rows -----------------------------------------------------------------------------------------------------

TEST_F(TransactionTest, shouldTakeWholeVolumeAsABuyWhenRowIsTheFirst)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(9.00).volume(500).bid(9.00)});
    EXPECT_EQ(rowsText(model), "09:30:00 9 +500 of 500 B\n");
}

TEST_F(TransactionTest, shouldFillEveryFieldWhenSnapshotIsOfEitherLevel)
{
    follow("SZ", "000001");
    model.history({level1("09:30:01.999").last(10.02).volume(500).bid(10.01).ask(10.03).status(13),
                   level2("09:30:04.001").last(10.03).volume(700).bid(10.02).ask(10.04).status(18)});
    ASSERT_EQ(model.m_datas.size(), 2);
    const TC::TransData& first = model.m_datas[0];
    EXPECT_EQ(first.timetag, timeOf("09:30:01") / 1000);
    EXPECT_EQ(first.price, 10.02);
    EXPECT_EQ(first.bidPrice, 10.01);
    EXPECT_EQ(first.askPrice, 10.03);
    EXPECT_EQ(first.tradeStatus, 13);
    const TC::TransData& second = model.m_datas[1];
    EXPECT_EQ(second.timetag, timeOf("09:30:04") / 1000);
    EXPECT_EQ(second.price, 10.03);
    EXPECT_EQ(second.volume, 200);
    EXPECT_EQ(second.totalVolume, 700);
    EXPECT_EQ(second.bidPrice, 10.02);
    EXPECT_EQ(second.askPrice, 10.04);
    EXPECT_EQ(second.tradeStatus, 18);
}

TEST_F(TransactionTest, shouldTakeSnapshotWhenTheBrokerDelivers)
{
    const auto brokers = [](const char* clock, double price, int volume) {
        auto record = std::make_shared<zolv::BrovanQuoterAllData>();
        record->timetag = timeOf(clock);
        record->lastPrice = price;
        record->volume = volume;
        return record;
    };
    follow("SZ", "000001");
    model.history({brokers("09:30:00", 10, 5)});
    EXPECT_TRUE(model.live({brokers("09:30:03", 10.01, 7)}));
    EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n"
                               "09:30:03 10.01 +2 of 7 B\n");
}

TEST_F(TransactionTest, shouldTruncateTowardZeroWhenTimeIsBeforeTheEpoch)
{
    const std::shared_ptr<quoter::QuoterAllData> record = level1().last(1).volume(1);
    record->timetag = -1999;
    TC::TransData row;
    model.convert(record, row);
    EXPECT_EQ(row.timetag, -1);
}

TEST_F(TransactionTest, shouldTakeLastPriceWhenBestPriceIsMissing)
{
    for (const double missing : {0.0, 1e-5, -1e-5, DBL_MAX}) {
        TC::TransData row;
        const std::shared_ptr<quoter::QuoterDepthData> depth = level2().last(10.02).volume(1).bid(missing).ask(missing);
        model.convert(depth, row);
        EXPECT_EQ(row.bidPrice, 10.02) << missing;
        EXPECT_EQ(row.askPrice, 10.02) << missing;
        const std::shared_ptr<quoter::QuoterAllData> all = level1().last(10.03).volume(1).bid(missing).ask(missing);
        model.convert(all, row);
        EXPECT_EQ(row.bidPrice, 10.03) << missing;
        EXPECT_EQ(row.askPrice, 10.03) << missing;
    }
    TC::TransData row;
    const std::shared_ptr<quoter::QuoterDepthData> cheap = level2().last(10.02).volume(1).bid(2e-5).ask(3e-5);
    model.convert(cheap, row);
    EXPECT_EQ(row.bidPrice, 2e-5);
    EXPECT_EQ(row.askPrice, 3e-5);
}

struct DirectionCase {
    const char* what;
    double lastPrice;
    double price;
    double bid;
    const char* direction;
};

TEST_F(TransactionTest, shouldTellDirectionWhenTickArrives)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const DirectionCase cases[] = {
        {"the price rose", 10.00, 10.01, 10.01, "B"},
        {"the price fell", 10.00, 9.99, 9.98, "S"},
        {"still, above the bid", 10.00, 10.00, 9.99, "B"},
        {"still, at the bid", 10.00, 10.00, 10.00, "S"},
        {"still, below the bid", 10.00, 10.00, 10.01, "S"},
        {"still, without a bid", 10.00, 10.00, 0, "S"},
        {"still, with a bid of no value", 10.00, 10.00, DBL_MAX, "S"},
        {"up by the tolerance itself, above the bid", 0.0, 1e-5, -1.0, "B"},
        {"up by the tolerance itself, at the bid", 0.0, 1e-5, 0, "S"},
        {"up by twice the tolerance, at the bid", 0.0, 2e-5, 0, "B"},
        {"down by the tolerance itself, above the bid", 1e-5, 0.0, -1.0, "B"},
        {"down by twice the tolerance, above the bid", 2e-5, 0.0, -1.0, "S"},
        {"the price is no number", 10.00, nan, 9.99, "B"},
    };
    follow("SZ", "000001");
    for (const DirectionCase& c : cases) {
        SCOPED_TRACE(c.what);
        model.history(
            {level1("09:30:00").last(c.lastPrice).volume(1), level1("09:30:03").last(c.price).volume(2).bid(c.bid)});
        ASSERT_EQ(model.m_datas.size(), 2);
        EXPECT_EQ(model.m_datas[1].isBuy ? "B" : "S", std::string(c.direction));
    }
}

TEST_F(TransactionTest, shouldNotLookAtTheAskWhenTellingDirection)
{
    follow("SZ", "000001");
    model.history({level1().last(10).volume(1), level1().last(10).volume(2).bid(10).ask(10)});
    EXPECT_FALSE(model.m_datas[1].isBuy);
    model.history({level1().last(10).volume(1), level1().last(10).volume(2).bid(9).ask(9)});
    EXPECT_TRUE(model.m_datas[1].isBuy);
}

TEST_F(TransactionTest, shouldDropSnapshotWhenNothingWasTradedYet)
{
    follow("SZ", "000001");
    EXPECT_FALSE(model.live({level1().last(10).volume(0)}));
    EXPECT_FALSE(model.m_updated);
    EXPECT_TRUE(model.m_datas.isEmpty());
}

TEST_F(TransactionTest, shouldReportAnUpdateWithoutARowWhenVolumeStoodStillOrFell)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(500)});
    for (const int volume : {500, 499, -1}) {
        model.m_updated = false;
        EXPECT_TRUE(model.live({level1("09:30:03").last(11).volume(volume)})) << volume;
        EXPECT_TRUE(model.m_updated) << volume;
    }
    EXPECT_EQ(rowsText(model), "09:30:00 10 +500 of 500 B\n");
}

// Counts beyond 32 bits compare on the wrapped figures.
TEST_F(TransactionTest, shouldCompareWrappedFiguresWhenVolumeExceeds32Bits)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(2147483600)});
    EXPECT_TRUE(model.live({level1("09:30:03").last(10).volume(2147483700)})); // wraps to a negative figure
    EXPECT_EQ(model.m_datas.size(), 1);

    model.history({level1("09:30:00").last(10).volume(4294967296 + 10)});
    EXPECT_EQ(rowsText(model), "09:30:00 10 +10 of 10 B\n");

    // Whole 64 bits are tested for "nothing traded": a multiple of 2^32 has traded, and shows 0.
    model.history({level1("09:30:00").last(10).volume(4294967296)});
    EXPECT_EQ(rowsText(model), "09:30:00 10 +0 of 0 B\n");

    // The step from one end of the range to the other wraps too.
    model.history({level1("09:30:00").last(10).volume(2147483648), level1("09:30:03").last(10).volume(2147483647)});
    EXPECT_EQ(rowsText(model), "09:30:00 10 +-2147483648 of -2147483648 B\n"
                               "09:30:03 10 +-1 of 2147483647 S\n");
}

TEST_F(TransactionTest, shouldDropRecordWhenItIsOfAnotherType)
{
    follow("SZ", "000001");
    EXPECT_FALSE(model.live({std::make_shared<quoter::LevelOrderData>()}));
    EXPECT_FALSE(model.live({order(1).buy(10).shares(100)}));
    EXPECT_FALSE(model.live({nullptr}));
    EXPECT_FALSE(model.m_updated);
    model.history({nullptr, order(1).buy(10), level2("09:30:00").last(10).volume(5), fill(1, 2).at(10)});
    EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n");
}

// --- batches --------------------------------------------------------------------------------------------------

TEST_F(TransactionTest, shouldTakeNothingWhenWithoutInstrument)
{
    for (const int kind : {0, 1, 3}) {
        EXPECT_FALSE(model.quoterCallBack(0, kind, {level1().last(10).volume(5)}));
        EXPECT_FALSE(model.quoterCallBack(0, kind, {}));
    }
    EXPECT_TRUE(model.m_datas.isEmpty());
    EXPECT_FALSE(model.m_updated);
}

TEST_F(TransactionTest, shouldStartAnewWhenHistoryBegins)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(5), level1("09:30:03").last(10.01).volume(7)});
    EXPECT_TRUE(model.history({level1("09:31:00").last(11).volume(50)}));
    EXPECT_EQ(rowsText(model), "09:31:00 11 +50 of 50 B\n");
}

TEST_F(TransactionTest, shouldAddToTheListWhenHistoryGoesOn)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(5)});
    EXPECT_TRUE(model.more({level1("09:30:03").last(10.01).volume(7), level1("09:30:06").last(10.00).volume(9)}));
    EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n"
                               "09:30:03 10.01 +2 of 7 B\n"
                               "09:30:06 10 +2 of 9 S\n");
}

TEST_F(TransactionTest, shouldTakeOnlyTheLastRecordWhenPushBundlesSeveral)
{
    follow("SZ", "000001");
    for (const int liveKind : {1, 2, 4, -1, 1000}) {
        model.history({level1("09:30:00").last(10).volume(5)});
        EXPECT_TRUE(model.quoterCallBack(
            9, liveKind, {level1("09:30:03").last(10.01).volume(7), level1("09:30:06").last(10.02).volume(9)}));
        EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n"
                                   "09:30:06 10.02 +4 of 9 B\n");
    }
}

TEST_F(TransactionTest, shouldFailWhenLastRecordOfAPushDoesNotCount)
{
    follow("SZ", "000001");
    EXPECT_FALSE(model.live({level1().last(10).volume(5), order(1).buy(10)}));
    EXPECT_TRUE(model.m_datas.isEmpty());
}

TEST_F(TransactionTest, shouldOnlyEmptyWhenHistoryIsEmpty)
{
    follow("SZ", "000001");
    model.history({level1().last(10).volume(5)});
    model.m_updated = false;
    EXPECT_TRUE(model.history({}));
    EXPECT_TRUE(model.m_datas.isEmpty());
    EXPECT_FALSE(model.m_updated);
}

TEST_F(TransactionTest, shouldChangeNothingWhenOtherBatchIsEmpty)
{
    follow("SZ", "000001");
    model.history({level1("09:30:00").last(10).volume(5)});
    model.m_updated = false;
    for (const int kind : {3, 1, 2, -5}) {
        EXPECT_TRUE(model.quoterCallBack(0, kind, {}));
        EXPECT_EQ(rowsText(model), "09:30:00 10 +5 of 5 B\n");
        EXPECT_FALSE(model.m_updated);
    }
}

TEST_F(TransactionTest, shouldReportAnUpdateWhenHistoryGivesNoRow)
{
    follow("SZ", "000001");
    EXPECT_TRUE(model.history({level1().last(10).volume(0), order(1).buy(10)}));
    EXPECT_TRUE(model.m_datas.isEmpty());
    EXPECT_TRUE(model.m_updated);

    model.m_updated = false;
    EXPECT_TRUE(model.more({level1().last(10).volume(0)}));
    EXPECT_TRUE(model.m_updated);
}

// --- after hours ----------------------------------------------------------------------------------------------

TEST_F(TransactionTest, shouldDropAfterHoursRecordsWhenMainlandStockHasNoSuchPhase)
{
    follow("SH", "600000");
    for (const int status : {22, 23, 24, 100})
        EXPECT_FALSE(model.live({level1().last(10).volume(5).status(status)})) << status;
    EXPECT_TRUE(model.live({level1().last(10).volume(5).status(21)}));
    EXPECT_TRUE(model.live({level1().last(10).volume(6).status(15)}));
    EXPECT_EQ(model.m_datas.size(), 2);
}

TEST_F(TransactionTest, shouldKeepAfterHoursRecordsWhenStockIsNotOfTheMainland)
{
    follow("HK", "00700");
    EXPECT_TRUE(model.live({level1("16:00:00").last(10).volume(5).status(13)}));
    EXPECT_TRUE(model.live({level1("16:00:03").last(10).volume(9).status(22)}));
    EXPECT_TRUE(model.live({level1("16:00:06").last(10).volume(11).status(15)}));
    EXPECT_EQ(rowsText(model), "16:00:00 10 +5 of 5 B\n"
                               "16:00:03 10 +4 of 9 S\n"
                               "16:00:06 10 +2 of 11 S\n");
    EXPECT_FALSE(model.m_inAfterHours);
}

class AfterHoursTest : public TransactionTest, public ::testing::WithParamInterface<bool> {
protected:
    void followTypeWithPhase()
    {
        if (GetParam())
            follow("SH", "688001", {277});
        else
            follow("SZ", "300001", {10006});
    }

    void tradeIntoThePhase()
    {
        model.history({level1("14:59:57").last(10).volume(500), level1("15:05:00").last(10).volume(30).status(22)});
    }
};

TEST_P(AfterHoursTest, shouldCountFromNothingWhenPhaseBegins)
{
    followTypeWithPhase();
    tradeIntoThePhase();
    model.live({level1("15:05:03").last(10).volume(70).status(22)});
    model.live({level1("15:30:00").last(10).volume(75).status(23)});
    EXPECT_EQ(rowsText(model), "14:59:57 10 +500 of 500 B\n"
                               "15:05:00 10 +30 of 30 S\n"
                               "15:05:03 10 +40 of 70 S\n"
                               "15:30:00 10 +5 of 75 S\n");
    EXPECT_TRUE(model.m_inAfterHours);
}

TEST_P(AfterHoursTest, shouldTreatStatusOfTheCloseAsNoiseOnlyWhenPhaseHasBegun)
{
    followTypeWithPhase();
    EXPECT_TRUE(model.live({level1("15:00:00").last(10).volume(500).status(15)}));
    model.live({level1("15:05:00").last(10).volume(30).status(22)});
    EXPECT_FALSE(model.live({level1("15:05:03").last(10).volume(600).status(15)}));
    EXPECT_TRUE(model.live({level1("15:05:06").last(10).volume(600).status(14)}));
}

TEST_P(AfterHoursTest, shouldNotEnterThePhaseWhenFirstRowIsOfIt)
{
    followTypeWithPhase();
    model.history({level1("15:05:00").last(10).volume(30).status(22)});
    EXPECT_FALSE(model.m_inAfterHours);
    model.live({level1("15:05:03").last(10).volume(70).status(22)});
    EXPECT_EQ(rowsText(model), "15:05:00 10 +30 of 30 B\n"
                               "15:05:03 10 +40 of 70 S\n");
    EXPECT_FALSE(model.m_inAfterHours);
}

// Once for each list: a second step into the phase is an ordinary difference.
TEST_P(AfterHoursTest, shouldSubtractWhenPhaseBeginsAgain)
{
    followTypeWithPhase();
    tradeIntoThePhase();
    model.live({level1("15:05:03").last(10).volume(40).status(14)});
    model.live({level1("15:05:06").last(10).volume(45).status(22)});
    EXPECT_EQ(model.m_datas.last().volume, 5);
}

TEST_P(AfterHoursTest, shouldStayInThePhaseWhenCleared)
{
    followTypeWithPhase();
    tradeIntoThePhase();
    model.clear();
    EXPECT_TRUE(model.m_inAfterHours);
    EXPECT_FALSE(model.live({level1("15:06:00").last(10).volume(500).status(15)})) << "still noise after clear";
}

TEST_P(AfterHoursTest, shouldLeaveThePhaseWhenHistoryBeginsOrInstrumentIsSet)
{
    followTypeWithPhase();
    tradeIntoThePhase();
    model.history({});
    EXPECT_FALSE(model.m_inAfterHours);

    tradeIntoThePhase();
    model.more({});
    EXPECT_TRUE(model.m_inAfterHours);
    followTypeWithPhase();
    EXPECT_FALSE(model.m_inAfterHours);
}

INSTANTIATE_TEST_SUITE_P(BothTypes, AfterHoursTest, ::testing::Bool(),
                         [](const auto& param) { return param.param ? "Type277" : "Type10006"; });

// --- clear, copies, rows --------------------------------------------------------------------------------------

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
