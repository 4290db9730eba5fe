#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/support/requests.h"
#include "tests/tessimodel/paramstreams.h"

#include <limits>

// The writers of rows by themselves, and the small operations of the table.
namespace {

using namespace tests;
using TC::ERealtimeParam;
using TC::RP_CHANGE;
using TC::RP_LAST;
using TC::RP_RISE;
using utils::EFormatNumberFlag;

using ParamWriterTest = TodayParamTest;

TEST_F(ParamWriterTest, shouldKeepTheColourWhenKeyIsEmpty)
{
    model.setParam(RP_LAST, "10.02", "some_key");
    EXPECT_EQ(textOf(model, RP_LAST), "10.02");
    EXPECT_EQ(colourOf(model, RP_LAST), "some_key");
    model.setParam(RP_LAST, "", "");
    EXPECT_EQ(textOf(model, RP_LAST), "");
    EXPECT_EQ(colourOf(model, RP_LAST), "some_key");
    model.setParam(RP_LAST, "10.03", QString());
    EXPECT_EQ(textOf(model, RP_LAST), "10.03");
    EXPECT_EQ(colourOf(model, RP_LAST), "some_key");
    EXPECT_EQ(labelOf(model, RP_LAST), "最新");
}

TEST_F(ParamWriterTest, shouldIgnoreAnIdWhenItIsNotInTheTable)
{
    const std::string table = tableText(model);
    for (const int id : {-1, 17, 41, 43, 44, 45, 54, 1024, 1028, 1053, std::numeric_limits<int>::max(),
                         std::numeric_limits<int>::min()}) {
        model.setParam(static_cast<ERealtimeParam>(id), "text", "key");
        model.setParam(static_cast<ERealtimeParam>(id), utils::FORMAT_NUMBER_PERCENT, 10, 5);
        model.setParam(static_cast<ERealtimeParam>(id), utils::FORMAT_NUMBER_PLAIN, 0, 5);
    }
    EXPECT_EQ(model.m_params.size(), 49U);
    EXPECT_EQ(tableText(model), table);
}

struct DifferenceCase {
    EFormatNumberFlag flag;
    double value;
    double base;
    const char* row;
};

TEST_F(ParamWriterTest, shouldShowTheRatioWhenTheFlagAsksForItElseTheDifference)
{
    follow(plainStock());
    constexpr EFormatNumberFlag kRatio = utils::FORMAT_NUMBER_PERCENT;
    constexpr EFormatNumberFlag kPlainNumber = utils::FORMAT_NUMBER_PLAIN;
    constexpr EFormatNumberFlag kUnit = utils::FORMAT_NUMBER_UNIT;
    constexpr auto kBoth = static_cast<EFormatNumberFlag>(0x50000);
    const DifferenceCase cases[] = {
        {kRatio, 10.50, 10, "RP_RISE 5.00% rise"},
        {kRatio, 9.50, 10, "RP_RISE -5.00% fall"},
        {kRatio, 10, 10, "RP_RISE 0.00% equal"},
        {kRatio, 9.50, -10, "RP_RISE -195.00% rise"}, // the sign of the quotient, the colour of the difference
        {kRatio, 1.1e-5, 10, "RP_RISE -100.00% fall"},
        {kRatio, 10, 0, "RP_RISE 非法值 rise"},
        {kRatio, -10, 0, "RP_RISE 非法值 fall"},
        {kRatio, kNoPrice, 10, "RP_RISE 非法值 rise"},
        {kRatio, kNaN, 10, "RP_RISE 非法值 equal"},
        {kRatio, kInfinity, 10, "RP_RISE 非法值 rise"},
        {kRatio, 10, kNoPrice, "RP_RISE -100.00% fall"},
        {kRatio, 10, kNaN, "RP_RISE 非法值 equal"},
        {kRatio, 0, 10, "RP_RISE 0.00% equal"}, // no price, no fall
        {kRatio, 1e-5, 10, "RP_RISE 0.00% equal"},
        {kRatio, -1e-5, 0, "RP_RISE 0.00% equal"},
        {kRatio, 0, kNaN, "RP_RISE 0.00% equal"},
        {kPlainNumber, 10.50, 10, "RP_RISE 0.50 rise"},
        {kPlainNumber, 9.50, 10, "RP_RISE -0.50 fall"},
        {kPlainNumber, 10.000009, 10, "RP_RISE 0.00 equal"},
        {kPlainNumber, 10, 0, "RP_RISE 10.00 rise"},
        {kPlainNumber, kNoPrice, 10, "RP_RISE -- rise"},
        {kPlainNumber, 10, kNoPrice, "RP_RISE -- fall"},
        {kPlainNumber, 0, 10, "RP_RISE 0.00 equal"},
        {kPlainNumber, -1e-5, kNoPrice, "RP_RISE 0.00 equal"},
        {kUnit, 20010, 10, "RP_RISE 20000.00 rise"}, // only the flag of ratios is looked at
        {kUnit, 0, 10, "RP_RISE 0.00 equal"},
        {kBoth, 10.50, 10, "RP_RISE 0.50 rise"},
        {kBoth, 0, 10, "RP_RISE 0.00 equal"},
    };
    for (const auto& [flag, value, base, row] : cases) {
        EXPECT_EQ(writtenBy(model, [&, flag = flag, value = value,
                                    base = base] { model.setParam(RP_RISE, flag, value, base); }),
                  row + std::string("\n"))
            << flag << ' ' << value << ' ' << base;
    }
}

TEST_F(ParamWriterTest, shouldShowDifferencesByTheNewTickWhenTheTickChanges)
{
    model.setParam(RP_CHANGE, utils::FORMAT_NUMBER_PLAIN, 10.5, 10);
    EXPECT_EQ(textOf(model, RP_CHANGE), "0.500");
    follow(future());
    model.setParam(RP_CHANGE, utils::FORMAT_NUMBER_PLAIN, 10.5, 10);
    EXPECT_EQ(textOf(model, RP_CHANGE), "0.5");
    model.m_priceTick = 1e-6;
    model.setParam(RP_CHANGE, utils::FORMAT_NUMBER_PLAIN, 9e-6, 10);
    EXPECT_EQ(textOf(model, RP_CHANGE), "0.000000") << "no price is no change, though the tick would show one";
}

TEST_F(ParamWriterTest, shouldAskForTheLastTradingDayOfQuotesWhenRequested)
{
    terminal.instruments.setLastTradingDay(20240301);
    TC::CFormulaParam param = strangeRequest();
    model.getParams(param);
    EXPECT_EQ(requestText(param), requestText(strangeRequest())) << "no instrument, no request";
    follow(plainStock());
    model.getParams(param);
    EXPECT_EQ(requestText(param), requestText(requestOfQuotes("SH", "600000", timeOf("00:00:00"))));
}

class ParamSmallOperationsTest : public ParamStreamTest {};

TEST_P(ParamSmallOperationsTest, shouldRewriteNoRowWhenLastCloseIsSet)
{
    follow(plainStock());
    calc(level1("10:00:00").last(10.50).volume(500));
    EXPECT_EQ(writtenBy(model, [this] { model.setLastClose(10.40); }), "");
    EXPECT_EQ(model.m_lastClose, 10.40);
    EXPECT_EQ(textOf(model, RP_CHANGE), "0.50");
    calc(level1("10:00:03").last(10.51).open(10.30).volume(501));
    EXPECT_EQ(textOf(model, RP_CHANGE), "0.11");
    EXPECT_EQ(textOf(model, RP_RISE), "1.06%");
    EXPECT_EQ(colourOf(model, TC::RP_OPEN), kFall);
    for (const double value : {0.0, -1.0, kNoPrice, kInfinity}) {
        model.setLastClose(value);
        EXPECT_EQ(model.m_lastClose, value);
    }
}

// Changes go with the price; the prices of the day go with every snapshot.
TEST_P(ParamSmallOperationsTest, shouldKeepChangesOfTheOldBaseWhenLastCloseIsSetAndThePriceStayed)
{
    follow(plainStock());
    calc(level1("10:00:00").last(10.50).open(10.45).high(10.60).low(10.20).lastSettlement(10.20).volume(500));
    EXPECT_EQ(colourOf(model, TC::RP_OPEN), kRise);
    model.setLastClose(10.70);
    const std::string rows =
        written(level1("10:00:03").last(10.50).open(10.45).high(10.70).low(10.20).lastSettlement(10.20).volume(501));
    EXPECT_EQ(lineOf(rows, TC::RP_OPEN), "RP_OPEN 10.45 fall");
    EXPECT_EQ(lineOf(rows, TC::RP_HIGH), "RP_HIGH 10.70 equal");
    EXPECT_EQ(lineOf(rows, TC::RP_LOW), "RP_LOW 10.20 fall");
    for (const ERealtimeParam id : {RP_LAST, RP_CHANGE, RP_RISE, TC::RP_CHANGE_SETTLE, TC::RP_RISE_SETTLE})
        EXPECT_EQ(lineOf(rows, id), "") << nameOf(id);
    EXPECT_EQ(textOf(model, RP_CHANGE), "0.50");
    EXPECT_EQ(textOf(model, RP_RISE), "5.00%");
    EXPECT_EQ(colourOf(model, RP_RISE), kRise);
}

TEST_P(ParamSmallOperationsTest, shouldBeValidWhenASnapshotCameSinceTheClear)
{
    EXPECT_FALSE(model.isDataValid());
    follow(plainStock());
    EXPECT_FALSE(model.isDataValid());
    model.quoterCallback(0, 1, {order(1).buy(10)});
    EXPECT_FALSE(model.isDataValid());
    calc(level1("10:00:00").last(10.50).volume(500));
    EXPECT_TRUE(model.isDataValid());
    follow(afterHoursStockA());
    EXPECT_TRUE(model.isDataValid()) << "setStock forgets no snapshot";
    model.clear();
    EXPECT_FALSE(model.isDataValid());
}

TEST_P(ParamSmallOperationsTest, shouldForgetTheDayAndKeepTheTextsWhenQuoterDataIsCleared)
{
    follow(afterHoursStockA());
    calc(level1("10:00:00").last(10.50).volume(500));
    model.quoteAuxCallback(summary("10:00:03"));
    EXPECT_EQ(writtenBy(model, [this] { model.clearQuoterData(); }), "");
    EXPECT_EQ(model.m_tradeCount, 0);
    EXPECT_EQ(previous(), nullptr);
    EXPECT_EQ(model.m_lastContinuous, nullptr);
    EXPECT_TRUE(model.m_history.empty());
    EXPECT_TRUE(model.m_pendingAux.empty());
    EXPECT_EQ(model.m_lastClose, 10);
}

TEST_P(ParamSmallOperationsTest, shouldStartTheDayAnewWhenCleared)
{
    follow(plainStock());
    const auto snapshot = level1("10:00:00").last(10.50).high(10.60).low(9.90).volume(500);
    const std::string rows = written(snapshot);
    EXPECT_FALSE(calc(snapshot));
    model.clear();
    EXPECT_EQ(written(snapshot), rows);
    EXPECT_EQ(historyText(model), "10:00:00 +500 #1 9.9..10.6\n");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamSmallOperationsTest, ::testing::Values(1, 2), levelName);

} // namespace
