#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

// The table as it stood at one snapshot of the past.
namespace {

using namespace tests;
using TC::RP_TRADE_COUNT;
using TC::RP_VOLUME_PER_TRADE;

class ParamRefreshTest : public ParamStreamTest {
protected:
    // An entry of the history for the moment, as if its snapshot had been live.
    TC::STodayParamHistory& remember(const std::string& clock)
    {
        TC::STodayParamHistory& entry = model.m_history[timeOf(clock)];
        entry.high = 10.45;
        entry.low = 9.55;
        entry.curVolume = 125;
        entry.tradeCount = 8;
        return entry;
    }
};

TEST_P(ParamRefreshTest, shouldWriteTheseRowsWhenTheMomentIsNotRemembered)
{
    follow(plainStock());
    EXPECT_EQ(writtenByRefresh(ordinarySnapshot("10:00:00")), kOrdinaryPrices + "RP_HIGH 10.60 rise\n"
                                                                                "RP_LOW 9.90 fall\n"
                                                                                "RP_TOTAL_VOLUME 5000\n"
                                                                                "RP_TOTAL_AMOUNT 525.00万\n"
                                                                                "RP_OPEN_INTEREST 13\n"
                                                                                "RP_TOTAL_MARKET_VALUE 21亿\n"
                                                                                "RP_FLOAT_MARKET_VALUE 5250万\n"
                                                                                "RP_TURNOVER 10.00%\n");
}

TEST_P(ParamRefreshTest, shouldWriteTheCountsOfTheMomentWhenItIsRemembered)
{
    follow(plainStock());
    remember("10:00:00");
    EXPECT_EQ(writtenByRefresh(ordinarySnapshot("10:00:00")), kOrdinaryPrices + "RP_HIGH 10.45 rise\n"
                                                                                "RP_LOW 9.55 fall\n"
                                                                                "RP_TRADE_COUNT 8\n"
                                                                                "RP_VOLUME_PER_TRADE 625.00\n"
                                                                                "RP_TOTAL_VOLUME 5000\n"
                                                                                "RP_CURRENT_VOLUME 125\n"
                                                                                "RP_TOTAL_AMOUNT 525.00万\n"
                                                                                "RP_OPEN_INTEREST 13\n"
                                                                                "RP_TOTAL_MARKET_VALUE 21亿\n"
                                                                                "RP_FLOAT_MARKET_VALUE 5250万\n"
                                                                                "RP_TURNOVER 10.00%\n");
}

TEST_P(ParamRefreshTest, shouldWriteTheBookFiguresWhenTheMomentHasThem)
{
    follow(plainStock());
    TC::STodayParamHistory& entry = remember("10:00:00");
    const auto bookRows = [this] {
        const std::string rows = writtenByRefresh(ordinarySnapshot("10:00:00"));
        std::string text;
        for (const auto id : {TC::RP_TOTAL_BID, TC::RP_BID_AVERAGE, TC::RP_TOTAL_ASK, TC::RP_ASK_AVERAGE})
            text += lineOf(rows, id) + "; ";
        return text;
    };
    entry.totalBidVolume = entry.totalAskVolume = 7;
    EXPECT_EQ(bookRows(), "; ; ; ; ") << "an average that is missing leaves the total out too";
    entry.bidAveragePrice = 9.5;
    entry.totalBidVolume = 1234567;
    EXPECT_EQ(bookRows(), "RP_TOTAL_BID 1234567; RP_BID_AVERAGE 9.50 fall; ; ; ");
    entry.askAveragePrice = 10.5;
    entry.totalAskVolume = -8;
    EXPECT_EQ(bookRows(),
              "RP_TOTAL_BID 1234567; RP_BID_AVERAGE 9.50 fall; RP_TOTAL_ASK -8; RP_ASK_AVERAGE 10.50 rise; ");
    entry.bidAveragePrice = kNoPrice;
    entry.askAveragePrice = 0;
    EXPECT_EQ(bookRows(), "; ; RP_TOTAL_ASK -8; RP_ASK_AVERAGE 0.00 fall; ") << "zero is not missing";
    entry.bidAveragePrice = 0;
    entry.askAveragePrice = kNoPrice;
    EXPECT_EQ(bookRows(), "RP_TOTAL_BID 1234567; RP_BID_AVERAGE 0.00 fall; ; ; ");
}

// High and low are those of the moment, and where it is not remembered those of the record: neither is guarded.
TEST_P(ParamRefreshTest, shouldShowPricesOfTheDayWhenThereAreNone)
{
    follow(plainStock());
    const auto record = level1("10:00:00").last(10).open(0).high(kNoPrice).low(0).volume(5);
    std::string rows = writtenByRefresh(record);
    EXPECT_EQ(lineOf(rows, TC::RP_OPEN), "RP_OPEN 0.00 fall");
    EXPECT_EQ(lineOf(rows, TC::RP_HIGH), "RP_HIGH -- rise");
    EXPECT_EQ(lineOf(rows, TC::RP_LOW), "RP_LOW 0.00 fall");
    TC::STodayParamHistory& entry = remember("10:00:00");
    entry.high = 0;
    entry.low = kNoPrice;
    rows = writtenByRefresh(level1("10:00:00").last(10).open(kNoPrice).high(10.50).low(9.50).volume(5));
    EXPECT_EQ(lineOf(rows, TC::RP_OPEN), "RP_OPEN -- rise");
    EXPECT_EQ(lineOf(rows, TC::RP_HIGH), "RP_HIGH 0.00 fall");
    EXPECT_EQ(lineOf(rows, TC::RP_LOW), "RP_LOW -- rise");
}

TEST_P(ParamRefreshTest, shouldLeaveTheCountsAloneWhenTheMomentIsNotRemembered)
{
    follow(plainStock());
    calc(ordinarySnapshot("10:00:00"));
    EXPECT_EQ(textOf(model, RP_TRADE_COUNT), "1");
    writtenByRefresh(level1("10:00:01").last(10).volume(4000));
    EXPECT_EQ(textOf(model, RP_TRADE_COUNT), "1");
    EXPECT_EQ(textOf(model, RP_VOLUME_PER_TRADE), "5000.00");
    EXPECT_EQ(textOf(model, TC::RP_CURRENT_VOLUME), "5000");
    EXPECT_EQ(textOf(model, TC::RP_TOTAL_VOLUME), "4000");
}

TEST_P(ParamRefreshTest, shouldShowTheRejectedTextWhenTheMomentHadNoTrade)
{
    follow(plainStock());
    remember("10:00:00").tradeCount = 0;
    EXPECT_EQ(lineOf(writtenByRefresh(level1("10:00:00").volume(500)), RP_VOLUME_PER_TRADE),
              "RP_VOLUME_PER_TRADE 非法值");
    remember("10:00:00").tradeCount = -2;
    EXPECT_EQ(lineOf(writtenByRefresh(level1("10:00:00").volume(500)), RP_VOLUME_PER_TRADE),
              "RP_VOLUME_PER_TRADE -250.00");
}

// The entry keeps 32 bits of what was shown live, and the row shows what the entry has.
TEST_P(ParamRefreshTest, shouldShowTheRememberedCurrentVolumeWhenTheRecordGivesAnother)
{
    follow(plainStock());
    calc(level1("10:00:00").last(10).volume(2147483648));
    EXPECT_EQ(lineOf(writtenByRefresh(level1("10:00:00").last(10).volume(2147483648)), TC::RP_CURRENT_VOLUME),
              "RP_CURRENT_VOLUME -2147483648");
    remember("10:00:00").curVolume = 0;
    EXPECT_EQ(lineOf(writtenByRefresh(level1("10:00:00").last(10).volume(5)), TC::RP_CURRENT_VOLUME),
              "RP_CURRENT_VOLUME 0");
}

// After hours too it is the record's own volume, unlike a live snapshot's.
TEST_P(ParamRefreshTest, shouldDivideTheRecordsOwnVolumeWhenAfterHours)
{
    follow(afterHoursStockA());
    calc(level1("14:59:57").last(10).volume(500));
    calc(level1("15:05:00").last(10).volume(30).status(22));
    EXPECT_EQ(textOf(model, RP_VOLUME_PER_TRADE), "500.00");
    EXPECT_EQ(lineOf(writtenByRefresh(level1("15:05:00").last(10).volume(30).status(22)), RP_VOLUME_PER_TRADE),
              "RP_VOLUME_PER_TRADE 30.00");
}

TEST_P(ParamRefreshTest, shouldChangeNoCounterAndNoPreviousSnapshotWhenLookingBack)
{
    follow(afterHoursStockA());
    calc(level1("10:00:00").last(10).volume(500));
    calc(level1("10:00:03").last(10).volume(600));
    model.quoteAuxCallback(summary("10:00:06"));
    const auto before = previous();
    const auto lastOfTrading = model.m_lastContinuous;
    const std::string history = historyText(model);
    for (const char* clock : {"10:00:00", "10:00:06"}) {
        EXPECT_TRUE(model.refresh(of(level1(clock).last(11).volume(900))));
        EXPECT_TRUE(model.refresh(of(level1(clock).last(11).volume(30).status(22))));
    }
    EXPECT_EQ(previous(), before);
    EXPECT_EQ(model.m_lastContinuous, lastOfTrading);
    EXPECT_EQ(model.m_tradeCount, 2);
    EXPECT_EQ(historyText(model), history);
    EXPECT_EQ(model.m_pendingAux.size(), 1U);
    EXPECT_EQ(model.m_lastClose, 10);
}

// No gate: the same volume and the same price are written again.
TEST_P(ParamRefreshTest, shouldWriteAllRowsWhenNothingMoved)
{
    follow(plainStock());
    calc(ordinarySnapshot("10:00:00"));
    const std::string once = writtenByRefresh(ordinarySnapshot("10:00:00"));
    EXPECT_EQ(lineOf(once, TC::RP_LAST), "RP_LAST 10.50 rise");
    EXPECT_EQ(lineOf(once, TC::RP_RISE), "RP_RISE 5.00% rise");
    EXPECT_EQ(writtenByRefresh(ordinarySnapshot("10:00:00")), once);
}

// What a look back wrote stays until a live snapshot writes that row: the price only when it moves.
TEST_P(ParamRefreshTest, shouldKeepThePastPriceWhenTheNextLivePriceStayed)
{
    follow(plainStock());
    calc(level1("10:00:00").last(10).volume(500));
    calc(level1("10:00:03").last(10.50).volume(600));
    model.refresh(of(level1("10:00:00").last(10).volume(500)));
    calc(level1("10:00:06").last(10.50).volume(700));
    EXPECT_EQ(textOf(model, TC::RP_LAST), "10.00");
    EXPECT_EQ(textOf(model, TC::RP_TOTAL_VOLUME), "700");
    calc(level1("10:00:09").last(10.51).volume(800));
    EXPECT_EQ(textOf(model, TC::RP_LAST), "10.51");
}

TEST_P(ParamRefreshTest, shouldLeaveSettlementsAloneWhenLookingBack)
{
    for (const auto& description : {bond(), future(), plainStock(), iopvFund()}) {
        follow(description);
        remember("10:00:00");
        const std::string rows = writtenByRefresh(ordinarySnapshot("10:00:00"));
        EXPECT_EQ(lineOf(rows, TC::RP_SETTLE), "");
        EXPECT_EQ(lineOf(rows, TC::RP_DIRTY_SETTLE), "");
        EXPECT_EQ(lineOf(rows, TC::RP_TRADE_STATUS), "") << "of marked ones only";
    }
}

// A look back at the snapshot that has just come writes what it wrote, but for the settlements.
TEST_P(ParamRefreshTest, shouldWriteTheRowsOfALiveSnapshotButItsSettlementsWhenTheMomentIsItsOwn)
{
    terminal.instruments.add(receipt());
    const auto record = ordinarySnapshot("10:00:00");
    for (const auto& description : {plainStock(), receiptStock(), iopvFund(), bond(), hkStock(), future()}) {
        SCOPED_TRACE(description.market + description.code);
        model.clear();
        follow(description);
        std::string live = written(record);
        for (const auto id : {TC::RP_SETTLE, TC::RP_DIRTY_SETTLE}) {
            const std::string line = lineOf(live, id) + '\n';
            ASSERT_NE(line, "\n");
            live.erase(live.find(line), line.size());
        }
        const std::string past = writtenByRefresh(record);
        EXPECT_EQ(past, live);
    }
}

TEST_P(ParamRefreshTest, shouldWriteTheRowsOfItsClassWhenInstrumentHasSome)
{
    terminal.instruments.add(receipt());
    follow(receiptStock());
    const std::string stockRows = writtenByRefresh(level1().last(10).volume(5));
    EXPECT_EQ(lineOf(stockRows, TC::RP_GDR_PREMIUM), "RP_GDR_PREMIUM +5.00% rise");
    EXPECT_EQ(lineOf(stockRows, TC::RP_IOPV), "");
    follow(iopvFund());
    EXPECT_EQ(lineOf(writtenByRefresh(level1().volume(5).iopv(9.12345)), TC::RP_IOPV), "RP_IOPV 9.1235 fall");
    EXPECT_EQ(lineOf(writtenByRefresh(level1().volume(5).iopv(0)), TC::RP_IOPV), "");
    EXPECT_EQ(lineOf(writtenByRefresh(level1().volume(5).iopv(kNoPrice)), TC::RP_IOPV), "");
    follow(bond());
    EXPECT_EQ(lineOf(writtenByRefresh(level1().last(101.6).volume(5)), TC::RP_FLOAT_MARKET_VALUE),
              "RP_FLOAT_MARKET_VALUE 508万");
    follow(hkStock());
    EXPECT_EQ(lineOf(writtenByRefresh(level1().volume(500000)), TC::RP_TURNOVER), "RP_TURNOVER 10.00%");
    follow(future());
    const std::string futureRows = writtenByRefresh(level1().volume(5).status(0).lastSettlement(3480));
    EXPECT_EQ(lineOf(futureRows, TC::RP_TURNOVER), "");
    EXPECT_EQ(lineOf(futureRows, TC::RP_OPEN_INTEREST), "RP_OPEN_INTEREST 0");
    EXPECT_EQ(lineOf(futureRows, TC::RP_LAST_SETTLE), "RP_LAST_SETTLE 3480.0");
    model.setLastClose(0);
    EXPECT_EQ(lineOf(writtenByRefresh(level1().volume(5).high(2)), TC::RP_AMPLITUDE), "");
    terminal.answers.setNewBondsAuth(true);
    follow(newLoanBond());
    EXPECT_EQ(lineOf(writtenByRefresh(level1().last(11).alternativeLast(12).volume(5)), TC::RP_LAST),
              "RP_LAST 12.00 rise");
}

TEST_P(ParamRefreshTest, shouldShowDashesWhenTheBrokersFloatIsExactlyOne)
{
    terminal.answers.setDataCenterBrovanQuoteMode(true);
    standin::InstrumentDescription description = plainStock();
    description.doubleFields[3016] = 1;
    follow(description);
    EXPECT_EQ(lineOf(writtenByRefresh(level1().volume(5)), TC::RP_TURNOVER), "RP_TURNOVER --    ");
}

TEST_P(ParamRefreshTest, shouldPassOverLevel2AndShowLevel1WhenThereIsNoVolume)
{
    follow(afterHoursStockA());
    const auto record = level1("09:20:00").last(10.50).status(12);
    const bool isLevel1 = GetParam() == 1;
    EXPECT_EQ(lineOf(writtenByRefresh(record), TC::RP_TRADE_STATUS), isLevel1 ? "RP_TRADE_STATUS 开盘集合竞价" : "");
    EXPECT_EQ(writtenByRefresh(record).empty(), !isLevel1);
    EXPECT_TRUE(model.refresh(of(record)));
    EXPECT_NE(writtenByRefresh(level1("09:20:00").last(10.50).volume(-1)), "");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamRefreshTest, ::testing::Values(1, 2), levelName);

} // namespace
