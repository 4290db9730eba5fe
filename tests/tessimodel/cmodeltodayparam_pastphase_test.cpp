#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

#include <map>

// A look back at the phases of a day, and the call by which a panel looks back.
namespace {

using namespace tests;

// The phase in words, as a look back writes it.
std::string statusRow(int status)
{
    const std::map<int, const char*> kPhases = {{1, "停牌"},          {11, "开盘前"},         {12, "开盘集合竞价"},
                                                {13, "连续交易"},     {14, "休市"},           {15, "竞价交易收盘"},
                                                {16, "波动性中断"},   {17, "临时停牌"},       {18, "收盘集合竞价"},
                                                {19, "盘中集合竞价"}, {20, "暂停交易至闭市"}, {21, "状态异常"},
                                                {22, "盘后定价交易"}, {23, "收盘"},           {24, "收盘"}};
    const auto phase = kPhases.find(status);
    return std::string("RP_TRADE_STATUS ") + (phase == kPhases.end() ? "未知" : phase->second) + '\n';
}

class ParamPastPhaseTest : public ParamStreamTest {
protected:
    std::string phaseRows(int status)
    {
        const std::string rows =
            writtenByRefresh(level1("15:05:00").last(10).volume(30000).amount(450000).status(status));
        std::string text;
        for (const auto id : {TC::RP_TRADE_STATUS, TC::RP_TOTAL_VOLUME, TC::RP_TOTAL_AMOUNT, TC::RP_AFTER_HOURS_VOLUME,
                              TC::RP_AFTER_HOURS_AMOUNT, TC::RP_TURNOVER}) {
            const std::string line = lineOf(rows, id);
            text += line.empty() ? "" : line + '\n';
        }
        return text;
    }
};

constexpr const char* kTradingTotals = "RP_TOTAL_VOLUME 3.00万\nRP_TOTAL_AMOUNT 45.00万\n";
constexpr const char* kTurnover = "RP_TURNOVER 60.00%\n";

TEST_P(ParamPastPhaseTest, shouldZeroTheAfterHoursRowsWhenThePhaseHasNotBegun)
{
    for (const auto& description : {afterHoursStockA(), afterHoursStockB()}) {
        follow(description);
        for (int status = -1; status < 22; ++status) {
            if (status != 15) {
                EXPECT_EQ(phaseRows(status), statusRow(status) + kTradingTotals +
                                                 "RP_AFTER_HOURS_VOLUME 0\nRP_AFTER_HOURS_AMOUNT 0\n" + kTurnover);
            }
        }
    }
}

// Between the close and the phase the rows stay as they are.
TEST_P(ParamPastPhaseTest, shouldLeaveTheAfterHoursRowsAloneWhenTheAuctionHasClosed)
{
    follow(afterHoursStockA());
    EXPECT_EQ(phaseRows(15), "RP_TRADE_STATUS 竞价交易收盘\n" + std::string(kTradingTotals) + kTurnover);
}

TEST_P(ParamPastPhaseTest, shouldShowTheTotalsOfBothPhasesWhenAfterHours)
{
    follow(afterHoursStockB());
    model.m_lastContinuous = of(level1("14:59:57").volume(500).amount(5000));
    for (const int status : {22, 23, 24}) {
        EXPECT_EQ(phaseRows(status),
                  statusRow(status) + "RP_TOTAL_VOLUME 500\nRP_TOTAL_AMOUNT 5000\n"
                                      "RP_AFTER_HOURS_VOLUME 3万\nRP_AFTER_HOURS_AMOUNT 45.00万\nRP_TURNOVER 1.00%\n");
    }
}

TEST_P(ParamPastPhaseTest, shouldLeaveTheDayTotalsAloneWhenTheLastOfTradingIsNotOfTheStream)
{
    follow(afterHoursStockA());
    const std::string alone = "RP_TRADE_STATUS 盘后定价交易\n"
                              "RP_AFTER_HOURS_VOLUME 3万\nRP_AFTER_HOURS_AMOUNT 45.00万\nRP_TURNOVER 0.00%\n";
    EXPECT_EQ(phaseRows(22), alone);
    const Written other = level1("14:59:57").volume(500).amount(5000);
    model.m_lastContinuous = GetParam() == 1 ? quoter::QuoterBasePtr(asLevel2(*other)) : other;
    EXPECT_EQ(phaseRows(22), alone);
}

TEST_P(ParamPastPhaseTest, shouldShowThePhaseLikeAnyWhenInstrumentIsNotMarked)
{
    follow(plainStock());
    model.m_lastContinuous = of(level1("14:59:57").volume(500).amount(5000));
    for (const int status : {13, 15, 22, 23})
        EXPECT_EQ(phaseRows(status), std::string(kTradingTotals) + kTurnover);
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamPastPhaseTest, ::testing::Values(1, 2), levelName);

using ParamConnectTest = TodayParamTest;

TEST_F(ParamConnectTest, shouldLookBackWhenThereIsAnInstrument)
{
    EXPECT_FALSE(model.connectTickData(level1("10:00:00").last(10.50).volume(5)));
    EXPECT_EQ(tableText(model), tableText(TodayParam()));
    follow(plainStock());
    EXPECT_TRUE(model.connectTickData(level1("10:00:00").last(10.50).volume(5)));
    EXPECT_EQ(textOf(model, TC::RP_LAST), "10.50");
    EXPECT_FALSE(model.isDataValid());
}

TEST_F(ParamConnectTest, shouldWriteNothingAndSayYesWhenRecordIsNoSnapshot)
{
    follow(afterHoursStockA());
    for (const quoter::QuoterBasePtr& foreign :
         {quoter::QuoterBasePtr(), quoter::QuoterBasePtr(order(1).buy(10)), quoter::QuoterBasePtr(fill(1, 2).at(10))}) {
        bool answer = false;
        EXPECT_EQ(writtenBy(model, [&] { answer = model.connectTickData(foreign); }), "");
        EXPECT_TRUE(answer);
        EXPECT_EQ(writtenBy(model, [&] { answer = model.refresh(foreign); }), "");
        EXPECT_TRUE(answer);
    }
}

} // namespace
