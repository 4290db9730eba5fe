// The panels of the order queues and of the thousand-level snapshot.

#include "recording/dayfolder.h"
#include "tests/support/thousandrecord.h"
#include "tests/tessi/command.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

using namespace tests;

// Two bids at 10.00, one at 9.99, one of a market kind; one ask; and behind them every kind of snapshot, twice.
HandmadeDay smallDay()
{
    const auto levels = [](const std::string& clock) -> std::shared_ptr<quoter::QuoterDepthData> {
        return level2(clock).bids({{10.00, 500}, {9.99, 1000}}).ask(10.02, 500).last(10.00).volume(100);
    };
    const auto allLevels = [](const std::string& clock, int secondBid) -> std::shared_ptr<quoter::LevelThousandData> {
        return thousand(clock)
            .bids({{10.00, 500, 2}, {9.99, secondBid, 2}, {9.98, 400, 2}})
            .asks({{10.02, 500, 1}, {10.04, 800, 3}});
    };
    HandmadeDay day;
    day << order(1).buy(10.00).shares(300).time("09:30:00.100") << order(2).buy(9.99).shares(1000).time("09:30:00.200")
        << order(3).sell(10.02).shares(500).time("09:30:00.300") << order(4).buy(10.00).shares(200).time("09:30:00.400")
        << order(5).buy(0).kind(6).shares(700).time("09:30:00.500") << levels("09:30:03")
        << bestQueues("09:30:03").bid(10.00, {300, 200}).ask(10.02, {500});
    day << allLevels("09:30:03", 1000) << levels("09:30:06") << allLevels("09:30:06", 1300);
    return day;
}

class QueuePanelsTest : public ::testing::Test {
protected:
    QueuePanelsTest() { write(smallDay().recorded(), "day"); }

    void write(const recording::RecordedDay& day, const std::string& name) const
    {
        recording::writeDay(day, m_scratch.path(name), recording::Compression::None);
    }

    void writeWithout(recording::Stream stream, const std::string& name) const
    {
        recording::RecordedDay day = smallDay().recorded();
        std::erase(day.streams, stream);
        std::erase_if(day.events, [stream](const recording::Event& event) { return event.stream == stream; });
        write(day, name);
    }

    Outcome replay(const std::string& arguments) const { return m_scratch.tessi("replay " + arguments); }

    Scratch m_scratch;
};

TEST_F(QueuePanelsTest, shouldShowTheBooksQueuesAndBareSlotsWhenPricesAreOrdinary)
{
    const std::string out = replay("day --panel queue10").out;
    EXPECT_EQ(out.substr(0, out.find("slot")), "what  side  level  state  price  volume  orders  first orders\n"
                                               "book  ask       1         10.02     500       1  500\n"
                                               "book  bid       1         10.00     500       2  300 200\n"
                                               "book  bid       2          9.99    1000       1  1000\n");
    const auto rows = nlohmann::json::parse(replay("day --panel queue10 --format json").out);
    ASSERT_EQ(rows.size(), 23u) << "three levels of the book, and twenty slots";
    int bare = 0;
    int valid = 0;
    for (const auto& row : rows) {
        bare += row.at("state") == "bare" ? 1 : 0;
        valid += row.at("state") == "valid" ? 1 : 0;
    }
    EXPECT_EQ(bare, 3) << "a level with an ordinary price";
    EXPECT_EQ(valid, 17) << "a level without one";
    EXPECT_NE(out.find("\nslots of 09:30:03.000; checkUpdate: flags "), std::string::npos) << out;
    EXPECT_NE(out.find(", 0 bids, 0 asks\n"), std::string::npos) << out;
}

TEST_F(QueuePanelsTest, shouldShowAsManyLevelsWhenDepthIsGiven)
{
    const auto rows = nlohmann::json::parse(replay("day --panel queue10 --depth 1 --format json").out);
    EXPECT_EQ(rows.size(), 22u);
}

TEST_F(QueuePanelsTest, shouldLeaveTheSlotsEmptyWhenNoPairOfSnapshotsCameYet)
{
    const std::string out = replay("day --panel queue10 --until 09:30:03").out;
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 1 + 3 + 20 + 2);
    EXPECT_NE(out.find("slot  bid      10  empty"), std::string::npos) << out;
    EXPECT_NE(out.find("no pair of snapshots yet"), std::string::npos) << out;
}

TEST_F(QueuePanelsTest, shouldSayWhichStreamIsMissingWhenTheDayLacksIt)
{
    writeWithout(recording::Stream::Queues, "no_queues");
    const Outcome queues = replay("no_queues --panel queue10");
    EXPECT_EQ(queues.exitCode, 0);
    EXPECT_NE(queues.err.find("the day has no stream queues"), std::string::npos) << queues.err;
    EXPECT_NE(queues.out.find("book  bid       1"), std::string::npos) << "the ticks are there: " << queues.out;

    writeWithout(recording::Stream::Thousand, "no_thousand");
    const Outcome thousand = replay("no_thousand --panel thousand");
    EXPECT_EQ(thousand.exitCode, 0);
    EXPECT_NE(thousand.err.find("the day has no stream thousand"), std::string::npos) << thousand.err;
    EXPECT_EQ(thousand.out, "side  price  hands  change  orders  total\n");
}

TEST_F(QueuePanelsTest, shouldSayThatTheModelFollowsShenzhenWhenTheDayIsOfShanghai)
{
    HandmadeDay shanghai("SH", "600000");
    shanghai << order(1).buy(10.00).shares(300).time("09:30:00");
    write(shanghai.recorded(), "shanghai");
    const Outcome run = replay("shanghai --panel queue10");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, "tessi: note: the model follows instruments of Shenzhen only\n");
}

TEST_F(QueuePanelsTest, shouldFailWithUsageWhenThePriceIsAboveAllPrices)
{
    for (const char* price : {"inf", "1e300", "30000000"}) {
        const Outcome run = replay(std::string("day --panel queue --side bid --price ") + price);
        EXPECT_EQ(run.exitCode, 2) << price;
        EXPECT_EQ(run.out, "") << price;
    }
}

TEST_F(QueuePanelsTest, shouldShowEveryLevelOfTheRecordWhenThousandIsPrinted)
{
    EXPECT_EQ(replay("day --panel thousand").out,
              "side  price  hands  change  orders  total\n"
              "ask   10.04      8               3     13\n"
              "ask   10.02      5               1      5\n"
              "last  10.00      0\n"
              "bid   10.00      5               2      5\n"
              "bid    9.99     13      -3       2     18\n"
              "bid    9.98      4               2     22\n"
              "\n"
              "change: hands of a second ago less those of now, so that growth is negative\n");
    EXPECT_EQ(replay("day --panel thousand --depth 1 --format csv").out, "side,price,hands,change,orders,total\n"
                                                                         "ask,10.02,5,,1,5\n"
                                                                         "last,10.00,0,,,\n"
                                                                         "bid,10.00,5,,2,5\n");
}

TEST_F(QueuePanelsTest, shouldShowTheTenLevelsWhenByQuoterIsAsked)
{
    EXPECT_EQ(replay("day --panel thousand --by-quoter --format csv").out, "side,price,hands,change,orders,total\n"
                                                                           "ask,10.02,5,,,5\n"
                                                                           "last,10.00,0,,,\n"
                                                                           "bid,10.00,5,,,5\n"
                                                                           "bid,9.99,10,-3,,15\n");
}

TEST_F(QueuePanelsTest, shouldFailWithUsageWhenOptionsDoNotFitThePanel)
{
    for (const char* arguments : {"day --by-quoter", "day --panel book --by-quoter", "day --panel queue10 --by-quoter",
                                  "day --panel queue10 --side bid", "day --panel thousand --price 10"}) {
        const Outcome run = replay(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments;
        EXPECT_NE(run.err, "") << arguments;
    }
}

} // namespace
