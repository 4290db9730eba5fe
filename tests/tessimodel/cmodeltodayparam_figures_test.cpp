#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

// The figures that need more than one look: prices that are missing, the after-hours totals, turnover, trades, current
// volume.
namespace {

using namespace tests;
using TC::RP_AFTER_HOURS_AMOUNT;
using TC::RP_AFTER_HOURS_VOLUME;
using TC::RP_AMPLITUDE;
using TC::RP_CURRENT_VOLUME;
using TC::RP_HIGH;
using TC::RP_LOW;
using TC::RP_OPEN;
using TC::RP_TOTAL_AMOUNT;
using TC::RP_TOTAL_VOLUME;
using TC::RP_TRADE_COUNT;
using TC::RP_TURNOVER;
using TC::RP_VOLUME_PER_TRADE;

// Open, high and low, one by one: the level-1 stream leaves a row as it is where it has no price, the level-2 stream
// writes whatever it has.
struct DayPriceCase {
    double price;
    const char* level1; // what stands behind the row's name, "" when it is not written
    const char* level2;
};

const DayPriceCase kDayPrices[] = {
    {10.50, "10.50 rise", "10.50 rise"},
    {9.50, "9.50 fall", "9.50 fall"},
    {10, "10.00 equal", "10.00 equal"},
    {-9.50, "-9.50 fall", "-9.50 fall"},
    {0, "", "0.00 fall"},
    {1e-5, "", "0.00 fall"},
    {-1e-5, "", "0.00 fall"},
    {1.1e-5, "0.00 fall", "0.00 fall"},
    {kNoPrice, "", "-- rise"},
    {-kNoPrice, "-- fall", "-- fall"},
    {kInfinity, "-- rise", "-- rise"},
    {kNaN, "-- equal", "-- equal"},
};

class ParamDayPricesTest : public ParamStreamTest {
protected:
    static std::string line(const char* name, const std::string& text) { return text.empty() ? "" : name + text; }
};

TEST_P(ParamDayPricesTest, shouldLeaveTheRowInLevel1AndWriteItInLevel2WhenTheDayHasNoSuchPrice)
{
    follow(plainStock());
    __int64 volume = 0;
    for (const auto& [price, atLevel1, atLevel2] : kDayPrices) {
        const char* expected = GetParam() == 1 ? atLevel1 : atLevel2;
        const std::string open = written(level1().open(price).high(10.50).low(9.50).volume(++volume));
        EXPECT_EQ(lineOf(open, RP_OPEN), line("RP_OPEN ", expected)) << price;
        EXPECT_EQ(lineOf(open, RP_HIGH), "RP_HIGH 10.50 rise");
        EXPECT_EQ(lineOf(open, RP_LOW), "RP_LOW 9.50 fall");
        const std::string high = written(level1().open(10).high(price).low(9.50).volume(++volume));
        EXPECT_EQ(lineOf(high, RP_OPEN), "RP_OPEN 10.00 equal");
        EXPECT_EQ(lineOf(high, RP_HIGH), line("RP_HIGH ", expected)) << price;
        EXPECT_EQ(lineOf(high, RP_LOW), "RP_LOW 9.50 fall");
        const std::string low = written(level1().open(10).high(10.50).low(price).volume(++volume));
        EXPECT_EQ(lineOf(low, RP_OPEN), "RP_OPEN 10.00 equal");
        EXPECT_EQ(lineOf(low, RP_HIGH), "RP_HIGH 10.50 rise");
        EXPECT_EQ(lineOf(low, RP_LOW), line("RP_LOW ", expected)) << price;
    }
}

TEST_P(ParamDayPricesTest, shouldShowAmplitudeOfWhatTheSnapshotHasWhenLastCloseIsKnown)
{
    follow(plainStock());
    const auto amplitude = [this](double high, double low) {
        return lineOf(written(level1().last(10).high(high).low(low).volume(5), true), RP_AMPLITUDE);
    };
    EXPECT_EQ(amplitude(10.60, 9.90), "RP_AMPLITUDE 7.00%");
    EXPECT_EQ(amplitude(0, 0), "RP_AMPLITUDE 0.00%");
    EXPECT_EQ(amplitude(9.90, 10.60), "RP_AMPLITUDE -7.00%");
    EXPECT_EQ(amplitude(kNoPrice, 10), "RP_AMPLITUDE 非法值");
    model.setLastClose(-10);
    EXPECT_EQ(amplitude(10.60, 9.90), "RP_AMPLITUDE -7.00%");
    model.setLastClose(1e-5);
    EXPECT_EQ(amplitude(10.60, 9.90), "");
    model.setLastClose(kNoPrice);
    EXPECT_EQ(amplitude(10.60, 9.90), "RP_AMPLITUDE 0.00%");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamDayPricesTest, ::testing::Values(1, 2), levelName);

class ParamAfterHoursTest : public ParamStreamTest {
protected:
    static std::string totalsOf(const std::string& rows)
    {
        std::string text;
        for (const TC::ERealtimeParam id :
             {RP_TOTAL_VOLUME, RP_TOTAL_AMOUNT, RP_AFTER_HOURS_VOLUME, RP_AFTER_HOURS_AMOUNT}) {
            const std::string line = lineOf(rows, id);
            text += line.empty() ? "" : line + '\n';
        }
        return text;
    }

    quoter::QuoterBasePtr ofOtherStream(const Written& record) const
    {
        return GetParam() == 1 ? quoter::QuoterBasePtr(asLevel2(*record)) : record;
    }
};

TEST_P(ParamAfterHoursTest, shouldTellTheTotalsOfADayWhenInstrumentIsMarked)
{
    follow(afterHoursStockA());
    EXPECT_EQ(totalsOf(written(level1("14:59:57").last(10).volume(12345).amount(1.2e7).status(21))),
              "RP_TOTAL_VOLUME 1.23万\nRP_TOTAL_AMOUNT 1200.00万\n");
    EXPECT_EQ(totalsOf(written(level1("15:05:00").last(10).volume(30).amount(30000.5).status(22))),
              "RP_TOTAL_VOLUME 1.23万\nRP_TOTAL_AMOUNT 1200.00万\n"
              "RP_AFTER_HOURS_VOLUME 30\nRP_AFTER_HOURS_AMOUNT 3.00万\n");
    EXPECT_EQ(totalsOf(written(level1("15:30:00").last(10).volume(15000).amount(1.5e7).status(23))),
              "RP_TOTAL_VOLUME 1.23万\nRP_TOTAL_AMOUNT 1200.00万\n"
              "RP_AFTER_HOURS_VOLUME 2万\nRP_AFTER_HOURS_AMOUNT 1500.00万\n");
}

TEST_P(ParamAfterHoursTest, shouldShowNoDayTotalsWhenThePhaseIsAllThatIsKnown)
{
    follow(afterHoursStockB());
    EXPECT_EQ(totalsOf(written(level1("15:05:00").last(10).volume(30).amount(300).status(22))),
              "RP_AFTER_HOURS_VOLUME 30\nRP_AFTER_HOURS_AMOUNT 300\n");
}

TEST_P(ParamAfterHoursTest, shouldShowNoDayTotalsWhenTheLastOfTradingIsOfTheOtherStream)
{
    follow(afterHoursStockA());
    model.calc(ofOtherStream(level1("14:59:57").last(10).volume(500).amount(5000)), false);
    const std::string rows = written(level1("15:05:00").last(10).volume(30).amount(300).status(22));
    EXPECT_EQ(totalsOf(rows), "RP_AFTER_HOURS_VOLUME 30\nRP_AFTER_HOURS_AMOUNT 300\n");
    EXPECT_EQ(lineOf(rows, RP_TURNOVER), "RP_TURNOVER 0.00%");
}

TEST_P(ParamAfterHoursTest, shouldShowDayTotalsOfTheRecordWhenInstrumentIsNotMarked)
{
    follow(plainStock());
    EXPECT_EQ(totalsOf(written(level1("15:05:00").last(10).volume(30).amount(300).status(22))),
              "RP_TOTAL_VOLUME 30\nRP_TOTAL_AMOUNT 300\n");
}

// A snapshot without a trade is kept too, and its zeros are then the day's.
TEST_P(ParamAfterHoursTest, shouldShowZeroTotalsWhenTheLastOfTradingHadNoVolume)
{
    follow(afterHoursStockA());
    calc(level1("09:15:00").volume(0).amount(0).status(12));
    EXPECT_EQ(totalsOf(written(level1("15:05:00").last(10).volume(30).amount(300).status(22))),
              "RP_TOTAL_VOLUME 0\nRP_TOTAL_AMOUNT 0\nRP_AFTER_HOURS_VOLUME 30\nRP_AFTER_HOURS_AMOUNT 300\n");
}

// What was shown in an auction without more volume is not the last of trading.
TEST_P(ParamAfterHoursTest, shouldKeepTheLastOfTradingWhenSnapshotWasShownWithoutVolume)
{
    follow(afterHoursStockA());
    calc(level1("14:56:57").last(10).volume(500).amount(5000));
    calc(level1("14:58:00").last(10).volume(500).amount(7777).status(18));
    calc(level1("15:00:00").last(10).volume(500).amount(8888).status(15), true);
    EXPECT_EQ(totalsOf(written(level1("15:05:00").last(10).volume(30).amount(300).status(22))),
              "RP_TOTAL_VOLUME 500\nRP_TOTAL_AMOUNT 5000\nRP_AFTER_HOURS_VOLUME 30\nRP_AFTER_HOURS_AMOUNT 300\n");
}

TEST_P(ParamAfterHoursTest, shouldCountFromZeroWhenTheAfterHoursPhaseBegins)
{
    follow(afterHoursStockA());
    calc(level1("14:59:57").last(10).volume(500));
    EXPECT_EQ(lineOf(written(level1("15:05:00").last(10).volume(700).status(22)), RP_CURRENT_VOLUME),
              "RP_CURRENT_VOLUME 700");
    EXPECT_EQ(lineOf(written(level1("15:05:03").last(10).volume(750).status(22)), RP_CURRENT_VOLUME),
              "RP_CURRENT_VOLUME 50");
    EXPECT_EQ(lineOf(written(level1("15:05:06").last(10).volume(760).status(23)), RP_CURRENT_VOLUME),
              "RP_CURRENT_VOLUME 10");
    EXPECT_EQ(lineOf(written(level1("15:05:09").last(10).volume(780).status(14)), RP_CURRENT_VOLUME),
              "RP_CURRENT_VOLUME 20");
    EXPECT_EQ(lineOf(written(level1("15:05:12").last(10).volume(5).status(24)), RP_CURRENT_VOLUME),
              "RP_CURRENT_VOLUME 5");
    EXPECT_EQ(historyText(model), "14:59:57 +500 #1 0..0\n"
                                  "15:05:00 +700 #1 0..0\n"
                                  "15:05:03 +50 #1 0..0\n"
                                  "15:05:06 +10 #1 0..0\n"
                                  "15:05:09 +20 #2 0..0\n"
                                  "15:05:12 +5 #2 0..0\n");
}

TEST_P(ParamAfterHoursTest, shouldShowTheWholeVolumeWhenTheFirstSnapshotOfAllIsAfterHours)
{
    follow(afterHoursStockB());
    EXPECT_EQ(lineOf(written(level1("15:05:00").last(10).volume(30).status(22)), RP_CURRENT_VOLUME),
              "RP_CURRENT_VOLUME 30");
}

// After hours the volume per trade is that of the snapshot before, whichever phase it is of.
TEST_P(ParamAfterHoursTest, shouldDivideTheVolumeOfTheSnapshotBeforeWhenAfterHours)
{
    follow(afterHoursStockA());
    calc(level1("14:59:54").last(10).volume(100));
    EXPECT_EQ(lineOf(written(level1("14:59:57").last(10).volume(500)), RP_VOLUME_PER_TRADE),
              "RP_VOLUME_PER_TRADE 250.00");
    EXPECT_EQ(lineOf(written(level1("15:05:00").last(10).volume(30).status(22)), RP_VOLUME_PER_TRADE),
              "RP_VOLUME_PER_TRADE 250.00");
    EXPECT_EQ(lineOf(written(level1("15:05:03").last(10).volume(70).status(22)), RP_VOLUME_PER_TRADE),
              "RP_VOLUME_PER_TRADE 15.00");
}

TEST_P(ParamAfterHoursTest, shouldLeaveVolumePerTradeAloneWhenThereIsNoSnapshotBefore)
{
    follow(afterHoursStockA());
    model.calc(ofOtherStream(level1("14:59:57").last(10).volume(500)), false);
    const std::string rows = written(level1("15:05:00").last(10).volume(30).status(22));
    EXPECT_EQ(lineOf(rows, RP_TRADE_COUNT), "RP_TRADE_COUNT 1");
    EXPECT_EQ(lineOf(rows, RP_VOLUME_PER_TRADE), "");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamAfterHoursTest, ::testing::Values(1, 2), levelName);

class ParamTurnoverTest : public ParamStreamTest {
protected:
    void followWithFloat(standin::InstrumentDescription description, double floatShares)
    {
        description.doubleFields[3016] = floatShares;
        follow(description);
        model.clearQuoterData();
    }

    std::string turnover(__int64 volume, int status = 13)
    {
        return lineOf(written(level1().last(10).volume(volume).status(status), true), RP_TURNOVER);
    }
};

TEST_P(ParamTurnoverTest, shouldCountSharesInsteadOfHandsWhenInHongKong)
{
    followWithFloat(plainStock(), 1e6);
    EXPECT_EQ(turnover(1234), "RP_TURNOVER 12.34%");
    EXPECT_EQ(turnover(1234, 22), "RP_TURNOVER 12.34%");
    followWithFloat(hkStock(), 1e6);
    EXPECT_EQ(turnover(1234), "RP_TURNOVER 0.12%");
}

TEST_P(ParamTurnoverTest, shouldCountHandsAlsoInHongKongWhenAfterHours)
{
    followWithFloat(ordinary("HK", "00700", {277}), 1e6);
    EXPECT_EQ(turnover(1234), "RP_TURNOVER 0.12%");
    EXPECT_EQ(turnover(30, 22), "RP_TURNOVER 12.34%") << "of the last snapshot of trading";
}

TEST_P(ParamTurnoverTest, shouldBeZeroWhenAfterHoursWithoutASnapshotOfTrading)
{
    followWithFloat(afterHoursStockA(), 1e6);
    EXPECT_EQ(turnover(30, 22), "RP_TURNOVER 0.00%");
}

TEST_P(ParamTurnoverTest, shouldLeaveTheRowAloneWhenThereIsNoFloat)
{
    for (const double none : {0.0, 1e-5, -1e-5}) {
        followWithFloat(plainStock(), none);
        EXPECT_EQ(turnover(1234), "") << none;
    }
    followWithFloat(plainStock(), -1e6);
    EXPECT_EQ(turnover(1234), "RP_TURNOVER -12.34%");
    followWithFloat(plainStock(), 1.1e-5);
    EXPECT_EQ(turnover(0), "RP_TURNOVER 0.00%");
}

// A float of 1 is how the broker says that it does not know.
TEST_P(ParamTurnoverTest, shouldShowDashesWhenTheBrokersFloatIsExactlyOne)
{
    terminal.answers.setDataCenterBrovanQuoteMode(true);
    followWithFloat(plainStock(), 1);
    EXPECT_EQ(turnover(1234), "RP_TURNOVER --    ");
    followWithFloat(afterHoursStockA(), 1);
    EXPECT_EQ(turnover(30, 22), "RP_TURNOVER --    ");
    followWithFloat(hkStock(), 1);
    EXPECT_EQ(turnover(1), "RP_TURNOVER --    ");
    for (const double nearlyOne : {1 + 1e-9, 1 - 1e-9}) {
        followWithFloat(plainStock(), nearlyOne);
        EXPECT_EQ(turnover(1), "RP_TURNOVER 10000.00%");
    }
}

TEST_P(ParamTurnoverTest, shouldShowARatioOfOneWhenQuotesAreNotTheBrokers)
{
    followWithFloat(plainStock(), 1);
    EXPECT_EQ(turnover(1), "RP_TURNOVER 10000.00%");
    terminal.answers.setUserBrovanQuoteMode(true);
    EXPECT_EQ(turnover(1), "RP_TURNOVER 10000.00%") << "the user's choice is not asked";
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamTurnoverTest, ::testing::Values(1, 2), levelName);

} // namespace
