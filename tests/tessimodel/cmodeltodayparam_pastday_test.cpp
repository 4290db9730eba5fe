#include "tests/tessimodel/todayparam.h"

namespace {

using namespace tests;
using namespace TC;

constexpr __int64 kDay = 86400;

// The last close of the day on display, which may be a past one.
class TodayParamPastDayTest : public TodayParamTest {
protected:
    TodayParamPastDayTest()
    {
        terminal.instruments.setLastTradingDay(20240301);
        terminal.instruments.setLastTradingDay("HK", 20240304);
        followFrom("SH");
    }

    void followFrom(const std::string& market)
    {
        auto instrument = stock(market, "600001");
        instrument.lastClose = 10.2;
        follow(instrument);
    }

    void display(__int64 seconds)
    {
        model.m_historyDateSource = [seconds] { return static_cast<int>(seconds); };
    }

    // "9.50 by 9.5": row and base after the record, from "7" by 7 and a colour that stays.
    std::string after(const std::shared_ptr<quoter::QuoterBase>& record)
    {
        model.m_lastClose = 7;
        model.m_params[RP_LAST_CLOSE].text = "7";
        model.m_params[RP_LAST_CLOSE].colorKey = "kept";
        model.updateHistoryLastClose(record);
        EXPECT_EQ(colourOf(model, RP_LAST_CLOSE), "kept");
        std::ostringstream text;
        text << textOf(model, RP_LAST_CLOSE) << " by " << model.m_lastClose;
        return text.str();
    }

    __int64 today = timeOf("00:00:00") / 1000;
    std::shared_ptr<quoter::QuoterBase> all = level1().last(10).lastClose(9.5);
    std::shared_ptr<quoter::QuoterBase> depth = level2().last(10).lastClose(9.6);
    std::shared_ptr<quoter::QuoterBase> broker = brokerLevel1().last(10).lastClose(9.7);
    std::shared_ptr<quoter::QuoterBase> foreign = order(1).buy(9.8);
};

const std::string kAsItWas = "7 by 7";

TEST_F(TodayParamPastDayTest, shouldTakeTheRecordsLastCloseWhenThePastIsShown)
{
    for (const __int64 day : {today - 1, today - kDay, today - 365 * kDay, __int64{0}, __int64{-1}}) {
        display(day);
        EXPECT_EQ(after(all), "9.50 by 9.5") << day;
        EXPECT_EQ(after(depth), "9.60 by 9.6") << day;
        EXPECT_EQ(after(broker), "9.70 by 9.7") << day;
        EXPECT_EQ(after(foreign), kAsItWas) << day;
        EXPECT_EQ(after(nullptr), kAsItWas) << day;
        EXPECT_EQ(after(level1().last(10)), "0.00 by 0") << "as the record has it";
    }
}

TEST_F(TodayParamPastDayTest, shouldTakeTheInstrumentsLastCloseWhenTheLastTradingDayIsShown)
{
    display(today);
    for (const auto& record : {all, depth, broker, foreign, std::shared_ptr<quoter::QuoterBase>()})
        EXPECT_EQ(after(record), "10.20 by 10.2");
}

TEST_F(TodayParamPastDayTest, shouldLeaveTheLastCloseWhenALaterDayIsShown)
{
    for (const __int64 day : {today + 1, today + kDay}) {
        display(day);
        for (const auto& record : {all, depth, broker, foreign, std::shared_ptr<quoter::QuoterBase>()})
            EXPECT_EQ(after(record), kAsItWas) << day;
    }
}

TEST_F(TodayParamPastDayTest, shouldCompareWithTheTradingDayOfTheMarketWhenMarketsDiffer)
{
    display(today);
    followFrom("HK");
    EXPECT_EQ(after(all), "9.50 by 9.5") << "three days past in Hong Kong";
    display(today + 3 * kDay);
    EXPECT_EQ(after(all), "10.20 by 10.2");
    followFrom("SZ");
    EXPECT_EQ(after(all), kAsItWas);
}

TEST_F(TodayParamPastDayTest, shouldLeaveTheLastCloseWhenNobodyTellsTheDay)
{
    EXPECT_EQ(after(all), kAsItWas);
    EXPECT_EQ(after(depth), kAsItWas);
    EXPECT_EQ(after(nullptr), kAsItWas);
    display(today);
    ASSERT_EQ(after(all), "10.20 by 10.2");
    model.m_historyDateSource.clear();
    EXPECT_EQ(after(all), kAsItWas);
}

TEST_F(TodayParamPastDayTest, shouldLeaveTheLastCloseWhenWithoutInstrument)
{
    model.setStock("nobody knows this");
    for (const __int64 day : {today - kDay, today, today + kDay}) {
        display(day);
        EXPECT_EQ(after(all), kAsItWas);
    }
}

// --- as batches come ----------------------------------------------------------------------------------------------

TEST_F(TodayParamPastDayTest, shouldMeasureThePastDayByItsOwnLastCloseWhenAHistoryComes)
{
    display(today - kDay);
    const auto early = level1("09:30:00").last(9.7).volume(3).lastClose(1);
    const auto late = level1("14:56:00").last(9.975).volume(5).lastClose(9.5);
    model.history({early, late});
    EXPECT_EQ(textOf(model, RP_LAST_CLOSE), "9.50") << "of the last record";
    EXPECT_EQ(textOf(model, RP_RISE), "5.00%");
    EXPECT_EQ(colourOf(model, RP_RISE), kRise);
    EXPECT_EQ(colourOf(model, RP_LAST), kRise);

    display(today);
    model.history({early, late});
    EXPECT_EQ(textOf(model, RP_LAST_CLOSE), "10.20");
    EXPECT_EQ(colourOf(model, RP_LAST), kFall);
}

TEST_F(TodayParamPastDayTest, shouldKeepTheLastCloseWhenBatchIsNoHistory)
{
    int asked = 0;
    model.m_historyDateSource = [this, &asked] {
        ++asked;
        return static_cast<int>(today - kDay);
    };
    for (const int kind : {1, 2, 3, -1})
        model.quoterCallback(0, kind, {all});
    model.history({});
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(textOf(model, RP_LAST_CLOSE), "10.20");
    EXPECT_EQ(model.m_lastClose, 10.2);
    model.history({all});
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(textOf(model, RP_LAST_CLOSE), "9.50");
}

} // namespace
