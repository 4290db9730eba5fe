// Simulated days of the classes of instruments, from the command line.

#include "recording/dayfolder.h"
#include "tests/tessi/command.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tests;
using nlohmann::json;

// The summary of the day in the folder.
json summaryOf(const Scratch& scratch)
{
    const Outcome shown = scratch.tessi("replay day --format json");
    EXPECT_EQ(shown.exitCode, 0) << shown.err;
    return json::parse(shown.out);
}

// The summary of a simulated day.
json summaryOf(const Scratch& scratch, const std::string& arguments, int orders = 300)
{
    const Outcome made = scratch.tessi("simulate day --orders " + std::to_string(orders) + " " + arguments);
    EXPECT_EQ(made.exitCode, 0) << arguments << "\n" << made.err;
    return summaryOf(scratch);
}

TEST(Simulate, shouldListEveryClassWhenAskedForHelp)
{
    const std::string help = Scratch().tessi("simulate --help").out;
    for (const char* line : {"  stock            SZ   009001      42.50    0.01  Shenzhen stock\n",
                             "  fund             SZ   199001      1.250   0.001  Shenzhen fund",
                             "  future           IF   IF2406     3560.0     0.2  index future",
                             "  cicc-index       CICC CI9001    1280.50    0.01  index of market CICC"})
        EXPECT_NE(help.find(line), std::string::npos) << line << help;
}

TEST(Simulate, shouldTakeCodeAndLastCloseOfTheClassWhenNoneIsGiven)
{
    struct Row {
        const char* arguments;
        const char* market;
        const char* code;
        double lastClose;
    };
    const Row rows[] = {{"", "SZ", "009001", 42.50},
                        {"--class stock", "SZ", "009001", 42.50},
                        {"--class hk-stock", "HK", "99001", 62.50},
                        {"--class fund --last-close 2.345", "SZ", "199001", 2.345},
                        {"--code SM2501 --class commodity-future", "SHFE", "SM2501", 3650},
                        {"--class option --code 10009902 --last-close 0.0375", "SHO", "10009902", 0.0375}};
    for (const Row& row : rows) {
        const json summary = summaryOf(Scratch(), row.arguments);
        EXPECT_EQ(summary.at("market"), row.market) << row.arguments;
        EXPECT_EQ(summary.at("code"), row.code) << row.arguments;
        EXPECT_EQ(summary.at("last_close"), row.lastClose) << row.arguments;
    }
}

TEST(Simulate, shouldWriteTheSameBytesWhenTheOptionsAreTheSame)
{
    const Scratch scratch;
    for (const char* name : {"stock", "after-hours-a", "gdr", "future"}) {
        const std::string arguments = std::string(" --orders 300 --class ") + name;
        ASSERT_EQ(scratch.tessi("simulate one" + arguments).exitCode, 0) << name;
        ASSERT_EQ(scratch.tessi("simulate two" + arguments).exitCode, 0) << name;
        EXPECT_EQ(scratch.inShell("diff -r one two && rm -r one two").exitCode, 0) << name;
    }
}

TEST(Simulate, shouldWriteTheReceiptIntoTheDayWhenTheStockHasOne)
{
    const Scratch scratch;
    ASSERT_EQ(scratch.tessi("simulate day --class gdr --orders 300").exitCode, 0);
    const json file = json::parse(readFile(scratch.folder() / "day/instrument.json"));
    ASSERT_EQ(file.at("related").size(), 1u);
    EXPECT_EQ(file.at("related")[0].at("market"), "LSE");
    EXPECT_EQ(file.at("related")[0].at("code"), file.at("instrument").at("gdrCode"));

    ASSERT_EQ(scratch.tessi("simulate plain --orders 300").exitCode, 0);
    EXPECT_FALSE(json::parse(readFile(scratch.folder() / "plain/instrument.json")).contains("related"));
}

TEST(Simulate, shouldNameTheArgumentThatIsWrongWhenADayCannotBeMade)
{
    const std::pair<const char*, const char*> rows[] = {
        {"--class shares", "--class: no instrument class \"shares\"; there are stock, "},
        {"--class future --last-close 3560.1", "--last-close: must be a whole number of ticks of 0.2 for class future"},
        {"--last-close 5000.01", "--last-close: must be from 1.00 to 5000.00 for class stock"},
        {"--orders 0", "--orders: must be from 1 to 1000000"},
        {"--code a-b", "--code: must be 1 to 12 letters or digits"},
        {"--date 20240230", "--date: 20240230 is no date yyyymmdd"},
    };
    const Scratch scratch;
    for (const auto& [arguments, message] : rows) {
        const Outcome run = scratch.tessi(std::string("simulate day ") + arguments);
        EXPECT_NE(run.exitCode, 0) << arguments;
        EXPECT_NE(run.err.find(message), std::string::npos) << arguments << "\n" << run.err;
    }
    EXPECT_TRUE(std::filesystem::is_empty(scratch.folder()));
}

TEST(Summary, shouldTellTheVolumeAfterHoursApartWhenTheCountBeganAnew)
{
    const json summary = summaryOf(Scratch(), "--class after-hours-b");
    EXPECT_EQ(summary.at("day_volume"), summary.at("traded_shares"));
    EXPECT_GT(summary.at("volume_after_hours").get<long long>(), 0);
    EXPECT_EQ(summary.at("last_record"), "15:30:00");
    EXPECT_FALSE(summaryOf(Scratch(), "").contains("volume_after_hours"));
}

TEST(Summary, shouldLeaveTheDayWithoutVolumeWhenOrdersMeetAfterHoursAlone)
{
    for (const char* name : {"after-hours-a", "after-hours-b"}) {
        const json summary = summaryOf(Scratch(), std::string("--class ") + name, 1);
        EXPECT_EQ(summary.at("traded_shares"), 0) << name;
        EXPECT_EQ(summary.at("day_volume"), 0) << name;
        EXPECT_GT(summary.value("volume_after_hours", 0), 0) << name;
    }
}

TEST(Summary, shouldTellAfterHoursByTheStatusWhenVolumesFall)
{
    struct Row {
        const char* story;
        const char* market;
        std::vector<std::pair<int, int>> snapshots; // status and volume
        int dayVolume;
        int volumeAfterHours; // 0 without the line
    };
    const Row rows[] = {
        {"a stale snapshot among the others", "SZ", {{13, 500}, {13, 400}, {13, 900}}, 900, 0},
        {"a stale snapshot at the end", "SZ", {{13, 500}, {15, 400}}, 400, 0},
        {"more after hours than in the day", "SH", {{13, 500}, {15, 600}, {22, 0}, {22, 700}, {23, 800}}, 600, 800},
        {"a Hong Kong stock", "HK", {{15, 600}, {22, 0}, {23, 300}}, 600, 300},
        {"a future with its open interest for a status", "IF", {{120'000, 5}, {120'010, 9}}, 9, 0},
        {"an option with its open interest for a status", "SHO", {{21, 5}, {23, 9}}, 9, 0},
    };
    for (const Row& row : rows) {
        HandmadeDay day(row.market, "009001");
        int second = 0;
        for (const auto& [status, volume] : row.snapshots) {
            const std::string clock = "15:10:0" + std::to_string(second++);
            const std::shared_ptr<quoter::QuoterDepthData> snapshot = level2(clock).status(status).volume(volume);
            day << snapshot;
        }
        const Scratch scratch;
        recording::writeDay(day.recorded(), scratch.path("day"), recording::Compression::None);
        const json summary = summaryOf(scratch);
        EXPECT_EQ(summary.at("day_volume"), row.dayVolume) << row.story;
        EXPECT_EQ(summary.value("volume_after_hours", 0), row.volumeAfterHours) << row.story;
        EXPECT_EQ(summary.contains("volume_after_hours"), row.volumeAfterHours > 0) << row.story;
    }
}

TEST(Summary, shouldTakeTheLevelOneQuotesWhenTheDayHasNoOthers)
{
    const json summary = summaryOf(Scratch(), "--class index");
    EXPECT_GT(summary.at("day_volume").get<long long>(), 0);
    EXPECT_LT(summary.at("low").get<double>(), summary.at("high").get<double>());
}

} // namespace
