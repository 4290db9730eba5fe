#include "recording/dayfolder.h"
#include "tests/tessi/command.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

using namespace tests;

// A small day: two limit orders a side, a sell that trades, a snapshot that knows of it, and behind that an order
// that rests without a row and one that shows.
HandmadeDay smallDay()
{
    std::shared_ptr<quoter::QuoterDepthData> snapshot =
        level2("09:30:06").bid(10.00, 180).ask(10.02, 500).last(10.00).volume(120);
    HandmadeDay day;
    day << order(1).buy(10.00).shares(300).time("09:30:00.100") << order(2).buy(9.99).shares(1000).time("09:30:00.200")
        << order(3).sell(10.02).shares(500).time("09:30:00.300")
        << order(4).sell(10.05).shares(250).time("09:30:00.400") << order(5).sell(10.00).shares(120).time("09:30:05")
        << fill(1, 5).at(10.00).shares(120).time("09:30:05") << snapshot
        << order(6).buy(0).kind(6).shares(700).time("09:30:06.500") << order(7).buy(10.00).shares(60).time("09:30:07");
    return day;
}

class BookPanelsTest : public ::testing::Test {
protected:
    BookPanelsTest()
    {
        recording::writeDay(smallDay().recorded(), m_scratch.path("day"), recording::Compression::None);
    }

    Outcome replay(const std::string& arguments) const { return m_scratch.tessi("replay day " + arguments); }

    Scratch m_scratch;
};

TEST_F(BookPanelsTest, shouldShowAsksAboveBidsWhenLadderIsPrinted)
{
    EXPECT_EQ(replay("--panel book").out, "side  price  hands  change  orders  total\n"
                                          "ask   10.05      2               1      7\n"
                                          "ask   10.02      5               1      5\n"
                                          "last  10.00      1\n"
                                          "bid   10.00      2      +1       2      2\n"
                                          "bid    9.99     10               1     12\n");
}

TEST_F(BookPanelsTest, shouldKeepTheBestLevelsWhenDepthIsGiven)
{
    EXPECT_EQ(replay("--panel book --depth 1 --format csv").out, "side,price,hands,change,orders,total\n"
                                                                 "ask,10.02,5,,1,5\n"
                                                                 "last,10.00,1,,,\n"
                                                                 "bid,10.00,2,1,2,2\n");
}

TEST_F(BookPanelsTest, shouldStopBeforeTheFirstRecordWhenUntilIsGiven)
{
    EXPECT_EQ(replay("--panel book --format csv --until 09:30:05").out, "side,price,hands,change,orders,total\n"
                                                                        "ask,10.05,2,2,1,7\n"
                                                                        "ask,10.02,5,5,1,5\n"
                                                                        "bid,10.00,3,3,1,3\n"
                                                                        "bid,9.99,10,10,1,13\n");
}

TEST_F(BookPanelsTest, shouldListOrdersOldestFirstWhenQueueIsPrinted)
{
    EXPECT_EQ(replay("--panel queue --side bid --price 10").out,
              "no  seq  time          shares  dealt  left  ahead  status\n"
              " 1    1  09:30:05.000     300    120   180      0  part dealt\n"
              " 2    7  09:30:07.000      60      0    60    180  whole\n"
              "\n"
              "2 orders with 240 shares\n");
    EXPECT_EQ(replay("--panel queue --side ask --price 10.02 --format json").out,
              "[\n {\"no\": 1, \"seq\": 3, \"time\": \"09:30:00.300\", \"shares\": 500, \"dealt\": 0, "
              "\"left\": 500, \"ahead\": 0, \"status\": \"whole\"}\n]\n");
}

TEST_F(BookPanelsTest, shouldSayWhyWhenNothingIsThere)
{
    const Outcome queue = replay("--panel queue --side ask --price 10.00");
    EXPECT_EQ(queue.exitCode, 0);
    EXPECT_EQ(queue.out, "no  seq  time  shares  dealt  left  ahead  status\n");
    EXPECT_NE(queue.err.find("no ask rests at 10.00"), std::string::npos) << queue.err;
    EXPECT_NE(replay("--panel book --until 09:00:00").err.find("no order rests"), std::string::npos);
    EXPECT_NE(replay("--panel ticks --until 09:30:06").err.find("no snapshot shows a trade"), std::string::npos);
}

TEST_F(BookPanelsTest, shouldShowTheSameBookWhenPartOfTheDayIsHistory)
{
    const std::string live = replay("--panel queue --side bid --price 10").out;
    for (const char* until : {"09:30:01", "09:30:06", "23:59:59"})
        EXPECT_EQ(replay(std::string("--panel queue --side bid --price 10 --history-until ") + until).out, live);
}

TEST_F(BookPanelsTest, shouldFailWithUsageWhenOptionsDoNotFitThePanel)
{
    for (const char* arguments :
         {"--panel queue", "--panel queue --side bid", "--panel queue --price 10", "--side bid", "--price 10",
          "--depth 5", "--panel ticks --depth 5", "--panel book --side bid", "--panel book --depth 0",
          "--panel book --depth x", "--panel queue --side both --price 10", "--panel queue --side bid --price 0",
          "--panel queue --side bid --price x", "--panel queue --side bid --price 10.005", "--until 9:30"}) {
        const Outcome run = replay(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments;
        EXPECT_EQ(run.out, "") << arguments;
        EXPECT_NE(run.err, "") << arguments;
    }
}

// On a whole day, at several moments of it: the ladder is the book's, and the queues make up its rows.
TEST(BookPanels, shouldAgreeWithEachOtherWhenDayIsSimulated)
{
    const Scratch scratch;
    ASSERT_EQ(scratch.tessi("simulate day --seed 4 --orders 1500").exitCode, 0);
    for (const char* until : {"09:31:00", "10:47:31", "14:20:08"}) {
        const std::string moment = std::string(" --format json --until ") + until;
        const auto ladder = nlohmann::json::parse(scratch.tessi("replay day --panel book --depth 3" + moment).out);
        ASSERT_EQ(ladder.size(), 7u) << until;
        for (std::size_t i = 1; i < ladder.size(); ++i) {
            if (ladder[i].at("side") == ladder[i - 1].at("side")) {
                EXPECT_LT(ladder[i].at("price"), ladder[i - 1].at("price"));
            }
        }
        EXPECT_LT(ladder[4].at("price"), ladder[2].at("price")) << "the best bid is below the best ask";
        for (const auto& row : ladder) {
            if (row.at("side") == "last")
                continue;
            const auto queue = nlohmann::json::parse(scratch
                                                         .tessi("replay day --panel queue --side " +
                                                                row.at("side").get<std::string>() + " --price " +
                                                                row.at("price").dump() + moment)
                                                         .out);
            long long left = 0;
            for (const auto& order : queue)
                left += order.at("left").get<long long>();
            EXPECT_EQ(left / 100, row.at("hands").get<long long>()) << until << row;
        }
    }
}

// Change marks and last figures follow the order in which ticks are applied, which a history changes; the book must
// not.
TEST(BookPanels, shouldShowTheSameLevelsWhenPartOfTheDayIsHistory)
{
    const Scratch scratch;
    ASSERT_EQ(scratch.tessi("simulate day --seed 4 --orders 1500").exitCode, 0);
    const auto levels = [&scratch](const std::string& arguments) {
        std::string text;
        for (const auto& row : nlohmann::json::parse(
                 scratch.tessi("replay day --panel book --format json --until 14:20:08" + arguments).out)) {
            if (row.at("side") != "last")
                text += row.at("side").get<std::string>() + " " + row.at("price").dump() + " " +
                        row.at("hands").dump() + " x" + row.at("orders").dump() + "\n";
        }
        return text;
    };
    const std::string live = levels("");
    EXPECT_GT(std::count(live.begin(), live.end(), '\n'), 50);
    for (const char* until : {"09:20:00", "10:00:00", "23:59:59"})
        EXPECT_EQ(levels(std::string(" --history-until ") + until), live) << until;
}

} // namespace
