#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

#include <limits>

// Trades, current volume and the history that remembers them; volumes at the ends of 64 bits.
namespace {

using namespace tests;
using TC::RP_CURRENT_VOLUME;
using TC::RP_TOTAL_VOLUME;
using TC::RP_TRADE_COUNT;
using TC::RP_TURNOVER;
using TC::RP_VOLUME_PER_TRADE;

constexpr __int64 kMost = std::numeric_limits<__int64>::max();
constexpr __int64 kLeast = std::numeric_limits<__int64>::min();

using ParamVolumesTest = ParamStreamTest;

TEST_P(ParamVolumesTest, shouldShowTheCountAndNoQuotientWhenNothingWasTraded)
{
    follow(plainStock());
    const std::string rows = written(level1().last(10).volume(0));
    EXPECT_EQ(lineOf(rows, RP_TRADE_COUNT), "RP_TRADE_COUNT 0");
    EXPECT_EQ(lineOf(rows, RP_VOLUME_PER_TRADE), "");
    EXPECT_EQ(lineOf(rows, RP_CURRENT_VOLUME), "");
    EXPECT_EQ(historyText(model), "");
}

TEST_P(ParamVolumesTest, shouldRememberASnapshotOnlyWhenItAddsVolume)
{
    follow(plainStock());
    calc(level1("09:15:00").last(10).volume(0));
    calc(level1("09:15:03").last(10).high(10.10).low(9.90).volume(500));
    calc(level1("09:15:06").last(10).high(10.20).low(9.80).volume(500));
    calc(level1("09:15:09").last(10).high(10.20).low(9.80).volume(400));
    EXPECT_EQ(textOf(model, RP_CURRENT_VOLUME), "500");
    calc(level1("09:15:12").last(10).high(10.30).low(9.70).volume(450));
    EXPECT_EQ(historyText(model), "09:15:03 +500 #1 9.9..10.1\n"
                                  "09:15:12 +50 #2 9.7..10.3\n");
}

TEST_P(ParamVolumesTest, shouldReplaceTheEntryWhenTheSameMomentComesAgain)
{
    follow(plainStock());
    model.quoteAuxCallback(summary("10:00:00"));
    calc(level1("10:00:00").last(10).high(10.10).low(9.90).volume(500));
    calc(level1("10:00:03").last(10).volume(510));
    calc(level1("10:00:00").last(10).high(10.20).low(9.80).volume(540));
    EXPECT_EQ(historyText(model), "10:00:00 +30 #3 9.8..10.2 bid 9.5 x 70 ask 10.5 x 80\n"
                                  "10:00:03 +10 #2 0..0\n");
}

// There is no entry to put it into, so it waits on.
TEST_P(ParamVolumesTest, shouldLeaveTheSummaryWaitingWhenItsSnapshotAddsNoVolume)
{
    follow(plainStock());
    calc(level1("09:15:00").last(10).volume(500));
    model.quoteAuxCallback(summary("09:15:03"));
    EXPECT_TRUE(calc(level1("09:15:03").last(10).volume(500)));
    EXPECT_EQ(historyText(model), "09:15:00 +500 #1 0..0\n");
    EXPECT_EQ(model.m_pendingAux.size(), 1U);
    calc(level1("09:15:03").last(10).volume(501));
    EXPECT_EQ(historyText(model), "09:15:00 +500 #1 0..0\n"
                                  "09:15:03 +1 #2 0..0 bid 9.5 x 70 ask 10.5 x 80\n");
}

TEST_P(ParamVolumesTest, shouldSubtractWhenUnmarkedInstrumentEntersPhase22)
{
    follow(plainStock());
    calc(level1("14:59:57").last(10).volume(500));
    const std::string rows = written(level1("15:05:00").last(10).volume(700).status(22));
    EXPECT_EQ(lineOf(rows, RP_CURRENT_VOLUME), "RP_CURRENT_VOLUME 200");
    EXPECT_EQ(lineOf(rows, RP_TRADE_COUNT), "RP_TRADE_COUNT 2");
    EXPECT_EQ(lineOf(rows, RP_VOLUME_PER_TRADE), "RP_VOLUME_PER_TRADE 350.00");
}

TEST_P(ParamVolumesTest, shouldDivideInDoublesWhenVolumeIsOdd)
{
    follow(plainStock());
    calc(level1().last(10).volume(1));
    calc(level1().last(10).volume(2));
    EXPECT_EQ(lineOf(written(level1().last(10).volume(5)), RP_VOLUME_PER_TRADE), "RP_VOLUME_PER_TRADE 1.67");
}

TEST_P(ParamVolumesTest, shouldShowAllDigitsAndRememberTheLow32BitsWhenCurrentVolumeIsLarge)
{
    follow(plainStock());
    EXPECT_EQ(lineOf(written(level1("10:00:00").last(10).volume(2147483648)), RP_CURRENT_VOLUME),
              "RP_CURRENT_VOLUME 2147483648");
    EXPECT_EQ(lineOf(written(level1("10:00:03").last(10).volume(2147483648 + 4294967301)), RP_CURRENT_VOLUME),
              "RP_CURRENT_VOLUME 4294967301");
    EXPECT_EQ(historyText(model), "10:00:00 +-2147483648 #1 0..0\n"
                                  "10:00:03 +5 #2 0..0\n");
}

TEST_P(ParamVolumesTest, shouldShowAllOfAVolumeWhenItIsTheLargest)
{
    standin::InstrumentDescription description = afterHoursStockA();
    description.doubleFields[3016] = 1e20;
    follow(description);
    const std::string rows = written(level1("10:00:00").last(10).volume(kMost));
    EXPECT_EQ(lineOf(rows, RP_TOTAL_VOLUME), "RP_TOTAL_VOLUME 9223372.04万亿");
    EXPECT_EQ(lineOf(rows, RP_CURRENT_VOLUME), "RP_CURRENT_VOLUME 9223372036854775807");
    EXPECT_EQ(lineOf(rows, RP_VOLUME_PER_TRADE), "RP_VOLUME_PER_TRADE 9223372036854776000.00");
    EXPECT_EQ(lineOf(rows, RP_TURNOVER), "RP_TURNOVER 922.34%") << "hands become shares as doubles";
    const std::string afterHours = written(level1("15:05:00").last(10).volume(kMost).status(22));
    EXPECT_EQ(lineOf(afterHours, TC::RP_AFTER_HOURS_VOLUME), "RP_AFTER_HOURS_VOLUME 9223372万亿");
    EXPECT_EQ(lineOf(afterHours, RP_TURNOVER), "RP_TURNOVER 922.34%");
}

// The difference of two volumes wraps; a current volume that wraps below zero is none.
TEST_P(ParamVolumesTest, shouldCountAndShowNoCurrentVolumeWhenTheDifferenceWraps)
{
    follow(plainStock());
    calc(level1("10:00:00").last(10).volume(-10));
    const std::string rows = written(level1("10:00:03").last(10).volume(kMost));
    EXPECT_EQ(lineOf(rows, RP_TRADE_COUNT), "RP_TRADE_COUNT 1");
    EXPECT_EQ(lineOf(rows, RP_CURRENT_VOLUME), "");
    EXPECT_EQ(historyText(model), "");
}

TEST_P(ParamVolumesTest, shouldShowAWrappedCurrentVolumeWhenTheDayFallsByMoreThanItCanHold)
{
    follow(plainStock());
    calc(level1("09:15:00").last(10).volume(kMost));
    EXPECT_EQ(lineOf(written(level1("09:15:03").last(10).volume(kLeast)), RP_CURRENT_VOLUME), "RP_CURRENT_VOLUME 1");
    EXPECT_EQ(historyText(model), "09:15:00 +-1 #1 0..0\n"
                                  "09:15:03 +1 #1 0..0\n");
}

TEST_P(ParamVolumesTest, shouldWrapInTheHistoryPassTooWhenVolumesAreFarApart)
{
    follow(plainStock());
    EXPECT_EQ(writtenByPass({level1("10:00:00").volume(kLeast), level1("10:00:03").volume(kMost), level1("10:00:06")}),
              "");
    EXPECT_EQ(historyText(model), "10:00:00 +0 #1 0..0\n"
                                  "10:00:03 +-1 #2 0..0\n");
    EXPECT_EQ(writtenByPass({level1("10:00:00").volume(kMost), level1("10:00:06")}),
              "RP_CURRENT_VOLUME 9223372036854775807\n");
}

TEST_P(ParamVolumesTest, shouldWrapTheCountWhenItIsFull)
{
    follow(plainStock());
    model.m_tradeCount = std::numeric_limits<int>::max();
    const std::string rows = written(level1().last(10).volume(5));
    EXPECT_EQ(lineOf(rows, RP_TRADE_COUNT), "RP_TRADE_COUNT -2147483648");
    EXPECT_EQ(lineOf(rows, RP_VOLUME_PER_TRADE), "");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamVolumesTest, ::testing::Values(1, 2), levelName);

} // namespace
