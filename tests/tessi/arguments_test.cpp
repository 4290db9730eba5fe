#include "tests/tessi/command.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;

TEST(Arguments, shouldExplainWhenAskedForHelp)
{
    const Scratch scratch;
    for (const char* arguments :
         {"--help", "simulate --help", "import --help", "replay --help", "trace --help", "verify --help"}) {
        const Outcome run = scratch.tessi(arguments);
        EXPECT_EQ(run.exitCode, 0) << arguments;
        EXPECT_NE(run.out.find("Usage:"), std::string::npos) << arguments;
        EXPECT_EQ(run.err, "") << arguments;
    }
    EXPECT_NE(scratch.tessi("--help").out.find("Exit codes"), std::string::npos);
}

TEST(Arguments, shouldTellItsVersionWhenAsked)
{
    const Outcome run = Scratch().tessi("--version");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out.substr(0, 6), "tessi ");
}

TEST(Arguments, shouldFailWithUsageWhenArgumentsAreWrong)
{
    const Scratch scratch;
    for (const char* arguments : {"",
                                  "nonsense",
                                  "replay",
                                  "replay a b",
                                  "replay . --panel nonsense",
                                  "replay . --format xml",
                                  "replay . --speed -1",
                                  "replay . --history-until 25:00:00",
                                  "replay . --history-until 9:30",
                                  "replay . --history-until 09:30:0x",
                                  "simulate",
                                  "simulate day --seed x",
                                  "simulate day --orders 0",
                                  "simulate day --date 20240230",
                                  "simulate day --date 20500103",
                                  "simulate day --seed -1",
                                  "simulate ''",
                                  "import . day --date 20231301",
                                  "import . day --date -5",
                                  "simulate day --last-close 0",
                                  "simulate day --class nonsense",
                                  "simulate day --class Fund",
                                  "simulate day --class ''",
                                  "simulate day --class",
                                  "simulate day --class future --last-close 3560.1",
                                  "simulate day --class fund --last-close 501",
                                  "simulate day --class option --code a-b",
                                  "import .",
                                  "import . . extra"}) {
        const Outcome run = scratch.tessi(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments << "\n" << run.err;
        EXPECT_EQ(run.out, "") << arguments;
        EXPECT_NE(run.err, "") << arguments;
    }
    EXPECT_TRUE(std::filesystem::is_empty(scratch.folder()));
}

} // namespace
