// The distribution of the volume over days made by hand.

#include "tests/tessi/handmadeday.h"
#include "tests/tessi/paneltest.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using namespace tests;

// Closed at 10.00 the day before. The first tick is above that and so bought, an unchanged price is bought too, and a
// lower one sold. At 10.01 stand 40 hands, a bar's full length.
template <class Record, class Level>
HandmadeDay dayOf(const Level& at)
{
    HandmadeDay day;
    const auto add = [&](const char* clock, double last, __int64 shares) {
        const std::shared_ptr<Record> record = at(clock).last(last).volume(shares);
        day << record;
    };
    add("09:20:00", 10.02, 0);
    add("09:25:03", 10.02, 1000); // bought
    add("09:30:03", 10.01, 2000); // sold
    add("09:30:06", 10.01, 4500); // bought
    add("09:30:09", 10.01, 4500); // nothing
    add("09:30:12", 9.99, 4600);  // sold
    add("09:30:15", 10.01, 5100); // bought
    add("09:30:18", 9.99, 5150);  // less than a hand: the day volume stays at 51
    return day;
}

HandmadeDay smallDay()
{
    return dayOf<quoter::QuoterDepthData>([](const char* clock) { return level2(clock); });
}

std::string times(int count, const char* glyph)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += glyph;
    return text;
}

const std::string kShown = "price  buy  sell  total\n"
                           "10.02   10     0     10  " +
                           times(10, "█") +
                           "\n"
                           "10.01   30    10     40  " +
                           times(30, "█") + times(10, "░") +
                           "\n"
                           " 9.99    0     1      1  ░\n"
                           "\n"
                           "total 51 at 3 prices: █ bought 40, ░ sold 11; largest 40\n";

class DistributionPanelTest : public PanelTest {
protected:
    DistributionPanelTest()
        : PanelTest("distribution", smallDay().recorded())
    {}
};

TEST_F(DistributionPanelTest, shouldShowABarForEachPriceWhenTheDayIsOver)
{
    for (const char* history :
         {"", "--history-until 09:25:03", "--history-until 09:30:10", "--history-until 23:00:00"}) {
        const Outcome run = shown(history);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.out, kShown) << history;
        EXPECT_EQ(run.err, "");
    }
}

TEST_F(DistributionPanelTest, shouldShowTheSameWhenTheDayHasLevel1Alone)
{
    HandmadeDay day = dayOf<quoter::QuoterAllData>([](const char* clock) { return level1(clock); });
    recording::RecordedDay recorded = day.recorded();
    recorded.streams = {recording::Stream::Quotes};
    write(recorded, "level1");
    EXPECT_EQ(shownOf("level1").out, kShown);
}

TEST_F(DistributionPanelTest, shouldShowWhatWasTradedByThenWhenTheDayIsCut)
{
    EXPECT_EQ(shown("--until 09:30:06").out, "price  buy  sell  total\n"
                                             "10.02   10     0     10  " +
                                                 times(40, "█") + "\n10.01    0    10     10  " + times(40, "░") +
                                                 "\n\ntotal 20 at 2 prices: █ bought 10, ░ sold 10; largest 10\n");
}

TEST_F(DistributionPanelTest, shouldGivePlainColumnsWhenFormatIsForPrograms)
{
    EXPECT_EQ(shown("--format csv").out, "price,buy,sell,total\n10.02,10,0,10\n10.01,30,10,40\n9.99,0,1,1\n");
    const auto rows = nlohmann::json::parse(shown("--format json").out);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[1].dump(), R"({"buy":30,"price":10.01,"sell":10,"total":40})");
}

TEST_F(DistributionPanelTest, shouldColourThePartsOfABarWhenStdoutIsATerminal)
{
    if (!m_scratch.canHaveATerminal())
        GTEST_SKIP() << "no pseudo-terminal can be had here";
    const std::string coloured =
        m_scratch.onATerminal("env -u NO_COLOR", "replay day --panel distribution 2>/dev/null").out;
    EXPECT_NE(coloured.find("\n10.01   30    10     40  \033[31m" + times(30, "█") + "\033[0m\033[32m" +
                            times(10, "░") + "\033[0m\r"),
              std::string::npos)
        << coloured;
    EXPECT_NE(coloured.find("\n 9.99    0     1      1  \033[32m░\033[0m\r"), std::string::npos) << coloured;
}

// What is traded at the fixed price counts anew, and is no part of the distribution.
TEST_F(DistributionPanelTest, shouldLeaveOutFixedPriceTradingWhenTheInstrumentHasIt)
{
    HandmadeDay day = smallDay();
    day.instrument().types = {100003, 10006};
    for (const auto& [clock, shares] : {std::pair("15:05:00", 0), std::pair("15:20:00", 7000)}) {
        const std::shared_ptr<quoter::QuoterDepthData> record = level2(clock).status(22).last(10.01).volume(shares);
        day << record;
    }
    write(day.recorded(), "late");
    EXPECT_EQ(shownOf("late").out, kShown);
}

TEST_F(DistributionPanelTest, shouldSayWhyNothingIsShownWhenNothingWasTraded)
{
    const Outcome run = shown("--until 09:25:00");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "price  buy  sell  total\n");
    EXPECT_EQ(run.err, "tessi: note: no snapshot shows a trade\n");

    HandmadeDay none;
    none << order(1).buy(10.0);
    recording::RecordedDay day = none.recorded();
    day.streams = {recording::Stream::Orders};
    write(day, "none");
    EXPECT_EQ(shownOf("none").err,
              "tessi: note: the day has no stream quotes\ntessi: note: no snapshot shows a trade\n");
}

// An index has snapshots before its first value, without a price. It has risen from there: the first step is bought.
TEST_F(DistributionPanelTest, shouldShowNoRowWithoutAPriceWhenAnIndexHasNoValueYet)
{
    HandmadeDay day("SH", "000001");
    day.instrument().isIndex = true;
    const auto add = [&](const char* clock, double last, __int64 shares) {
        const std::shared_ptr<quoter::QuoterAllData> quote = level1(clock).last(last).lastClose(3000).volume(shares);
        day << quote;
    };
    add("09:15:03", 0, 0);
    add("09:25:03", 2990.5, 150000);
    add("09:30:03", 2980.5, 250000);
    recording::RecordedDay recorded = day.recorded();
    recorded.streams = {recording::Stream::Quotes};
    write(recorded, "index");
    EXPECT_EQ(shownOf("index").out, "  price   buy  sell  total\n"
                                    "2990.50  1500     0   1500  " +
                                        times(40, "█") +
                                        "\n"
                                        "2980.50     0  1000   1000  " +
                                        times(27, "░") +
                                        "\n\ntotal 2500 at 2 prices: █ bought 1500, ░ sold 1000; largest 1500\n");

    const Outcome early = shownOf("index", "--until 09:20:00");
    EXPECT_EQ(early.out, "price  buy  sell  total\n");
    EXPECT_EQ(early.err, "tessi: note: no snapshot shows a trade\n");
}

TEST_F(DistributionPanelTest, shouldFailWithUsageWhenOptionsDoNotFit)
{
    for (const char* option : {"--at 09:30:00", "--today 20240304", "--level1", "--depth 3", "--png p.png"}) {
        const Outcome run = shown(option);
        EXPECT_EQ(run.exitCode, 2) << option;
        EXPECT_NE(run.err.find("--panel distribution takes no " + std::string(option).substr(0, 4)), std::string::npos)
            << run.err;
    }
}

} // namespace
