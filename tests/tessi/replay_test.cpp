#include "tests/tessi/command.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>

namespace {

using namespace tests;

// One small simulated day for all tests of this file.
class ReplayTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_scratch = new Scratch;
        const Outcome run = s_scratch->tessi("simulate day --seed 5 --orders 800");
        ASSERT_EQ(run.exitCode, 0) << run.err;
        ASSERT_EQ(run.out, "") << "data go to stdout, talk to stderr";
    }

    static void TearDownTestSuite()
    {
        delete s_scratch;
        s_scratch = nullptr;
    }

    static Outcome tessi(const std::string& arguments) { return s_scratch->tessi(arguments); }

    static Scratch* s_scratch;
};

Scratch* ReplayTest::s_scratch = nullptr;

TEST_F(ReplayTest, shouldSumUpToTheDaysVolumeWhenTicksArePrinted)
{
    const Outcome run = tessi("replay day --panel ticks --format json");
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const auto rows = nlohmann::json::parse(run.out);
    ASSERT_GT(rows.size(), 50u);
    long long sum = 0;
    for (const auto& row : rows)
        sum += row.at("volume").get<long long>();
    EXPECT_EQ(sum, rows.back().at("total").get<long long>());

    const auto summary = nlohmann::json::parse(tessi("replay day --format json").out);
    EXPECT_EQ(summary.at("day_volume").get<long long>() / 100, sum) << "the day's shares in whole hands";
}

TEST_F(ReplayTest, shouldShowTheSameRowsWhenPartOfTheDayIsHistory)
{
    const std::string live = tessi("replay day --panel ticks --format csv").out;
    ASSERT_FALSE(live.empty());
    for (const char* until : {"09:25:00", "10:30:00", "23:59:59"})
        EXPECT_EQ(tessi(std::string("replay day --panel ticks --format csv --history-until ") + until).out, live)
            << until;
}

TEST_F(ReplayTest, shouldPrintTheSameRowsWhenFormatsDiffer)
{
    const std::string table = tessi("replay day --panel ticks").out;
    const std::string csv = tessi("replay day --panel ticks --format csv").out;
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), std::count(csv.begin(), csv.end(), '\n'));
    EXPECT_EQ(csv.substr(0, csv.find('\n')), "time,price,volume,total,side,bid,ask,status");
    EXPECT_EQ(table.find('\033'), std::string::npos) << "no colours where stdout is no terminal";
}

TEST_F(ReplayTest, shouldReplayTheSameWhenDayIsCompressed)
{
    ASSERT_EQ(tessi("simulate packed --seed 5 --orders 800 --zstd").exitCode, 0);
    EXPECT_TRUE(std::filesystem::exists(s_scratch->path("packed/trades.csv.zst")));
    EXPECT_EQ(tessi("replay packed --panel ticks").out, tessi("replay day --panel ticks").out);
    EXPECT_EQ(tessi("replay packed").out, tessi("replay day").out);
}

TEST_F(ReplayTest, shouldWriteTheSameBytesWhenSeedIsTheSame)
{
    ASSERT_EQ(tessi("simulate again --seed 5 --orders 800").exitCode, 0);
    ASSERT_EQ(tessi("simulate other --seed 6 --orders 800").exitCode, 0);
    for (const auto& file : std::filesystem::directory_iterator(s_scratch->path("day")))
        EXPECT_EQ(readFile(file), readFile(s_scratch->path("again") / file.path().filename())) << file;
    EXPECT_NE(readFile(s_scratch->path("day/trades.csv")), readFile(s_scratch->path("other/trades.csv")));
}

TEST_F(ReplayTest, shouldColourRowsWhenStdoutIsATerminal)
{
    if (!s_scratch->canHaveATerminal())
        GTEST_SKIP() << "no pseudo-terminal can be had here";
    const std::string arguments = "replay day --panel ticks 2>/dev/null";
    const std::string coloured = s_scratch->onATerminal("env -u NO_COLOR", arguments).out;
    EXPECT_NE(coloured.find("\033[31m"), std::string::npos) << "a buy is red";
    EXPECT_NE(coloured.find("\033[32m"), std::string::npos) << "a sell is green";
    EXPECT_NE(s_scratch->onATerminal("NO_COLOR=", arguments).out.find("\033[31m"), std::string::npos);
    EXPECT_EQ(s_scratch->onATerminal("NO_COLOR=1", arguments).out.find('\033'), std::string::npos);
}

TEST_F(ReplayTest, shouldShowProgressOnlyWhenStderrIsATerminal)
{
    if (!s_scratch->canHaveATerminal())
        GTEST_SKIP() << "no pseudo-terminal can be had here";
    const std::string shown = s_scratch->onATerminal("", "replay day --panel ticks >/dev/null").out;
    EXPECT_NE(shown.find("replaying ["), std::string::npos) << shown;
    EXPECT_NE(shown.find("%"), std::string::npos);
    EXPECT_EQ(shown.substr(shown.size() - 4), "\r\033[K") << "it removes itself";
    EXPECT_EQ(tessi("replay day --panel ticks").err, "");
}

} // namespace
