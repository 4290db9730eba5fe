#include "recording/dayfolder.h"
#include "tests/tessi/command.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using namespace tests;

// Order 1 trades twice and is cancelled, 2 is traded in full, 4 only waits.
HandmadeDay shenzhenDay()
{
    HandmadeDay day;
    day << order(1).buy(10.00).shares(1000).time("09:30:00.100")
        << order(2).sell(10.00).shares(300).time("09:30:01.020")
        << fill(1, 2).at(10.00).shares(300).time("09:30:01.020") << order(3).sell(9.99).shares(150).time("09:30:02")
        << fill(1, 3).at(10.00).shares(150).time("09:30:02") << order(4).sell(10.05).shares(200).time("09:30:03")
        << cancelOfBuy(1).shares(550).time("09:30:04.250");
    return day;
}

// Order 12 is traded in full at once, so that nothing but its trade is known; 11 is deleted, which both streams tell.
HandmadeDay shanghaiDay()
{
    HandmadeDay day("SH", "600000");
    day << order(11).buy(10.00).shares(500).time("09:30:00.040")
        << fill(11, 12).at(10.00).shares(200).time("09:30:01.500")
        << order(11).flag(3).kind(0).shares(300).time("09:30:05.010")
        << cancelOfBuy(11).shares(300).time("09:30:05.010");
    return day;
}

class TraceTest : public ::testing::Test {
protected:
    TraceTest()
    {
        recording::writeDay(shenzhenDay().recorded(), m_scratch.path("sz"), recording::Compression::None);
        recording::writeDay(shanghaiDay().recorded(), m_scratch.path("sh"), recording::Compression::None);
    }

    Outcome trace(const std::string& arguments) const { return m_scratch.tessi("trace " + arguments); }

    Scratch m_scratch;
};

TEST_F(TraceTest, shouldTellTheWholeStoryWhenOrderIsNamed)
{
    const Outcome run = trace("sz --order 1");
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "row  time      side  kind  price  hands  shares  seq\n"
                       "  0  09:30:00  B           10.00     10    1000    1\n"
                       "\n"
                       "event   time          price  shares  counterpart  left after it\n"
                       "trade   09:30:01.020  10.00     300            2            700\n"
                       "trade   09:30:02.000  10.00     150            3            550\n"
                       "cancel  09:30:04.250            550                           0\n"
                       "\n"
                       "order 1: traded 450 in 2 trades, cancelled 550, left 0\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(TraceTest, shouldTellOfTheSameOrderWhenItsRowIsNamed)
{
    EXPECT_EQ(trace("sz --row 0").out, trace("sz --order 1").out);
    EXPECT_EQ(trace("sz --row 3 --json").out, trace("sz --order 4 --json").out);
}

TEST_F(TraceTest, shouldEndWithTheSumsWhenNothingHasTouchedTheOrder)
{
    EXPECT_EQ(trace("sz --order 4").out, "row  time      side  kind  price  hands  shares  seq\n"
                                         "  3  09:30:03  S           10.05      2     200    4\n"
                                         "\n"
                                         "order 4: traded 0 in 0 trades, cancelled 0, left 200\n");
}

TEST_F(TraceTest, shouldGiveAnObjectWhenFormatIsJson)
{
    const auto traced = nlohmann::json::parse(trace("sz --order 1 --json").out);
    EXPECT_EQ(traced, nlohmann::json::parse(R"({
        "seq": 1,
        "order": {"row": 0, "time": "09:30:00.100", "side": "B", "kind": "", "price": 10.0, "hands": 10, "shares": 1000},
        "trades": [{"time": "09:30:01.020", "price": 10.0, "shares": 300, "counterpart": 2},
                   {"time": "09:30:02.000", "price": 10.0, "shares": 150, "counterpart": 3}],
        "cancels": [{"time": "09:30:04.250", "shares": 550}],
        "traded": 450, "cancelled": 550, "left": 0})"));
}

TEST_F(TraceTest, shouldCountADeleteOnceWhenBothStreamsTellIt)
{
    const auto traced = nlohmann::json::parse(trace("sh --order 11 --json").out);
    EXPECT_EQ(traced.at("cancels").size(), 1u);
    EXPECT_EQ(traced.at("cancelled"), 300);
    EXPECT_EQ(traced.at("left"), 0);
}

TEST_F(TraceTest, shouldTellTheMillisecondsOfTheDeleteWhenMarketIsShanghai)
{
    const auto traced = nlohmann::json::parse(trace("sh --order 11 --json").out);
    EXPECT_EQ(traced.at("order").at("time"), "09:30:00.040");
    EXPECT_EQ(traced.at("cancels").at(0).at("time"), "09:30:05.010");
}

TEST_F(TraceTest, shouldTellTheTimeOfEachCancelWhenAnOrderHasSeveral)
{
    HandmadeDay day;
    day << order(1).buy(10.00).shares(1000).time("09:30:00") << cancelOfBuy(1).shares(300).time("09:30:04.100")
        << cancelOfBuy(2).shares(100).time("09:30:04.150") << cancelOfBuy(1).shares(200).time("09:30:04.200")
        << cancelOfBuy(1).shares(500).time("09:30:05.300");
    recording::writeDay(day.recorded(), m_scratch.path("several"), recording::Compression::None);
    const auto traced = nlohmann::json::parse(trace("several --order 1 --json").out);
    EXPECT_EQ(traced.at("cancels"), nlohmann::json::parse(R"([{"time": "09:30:04.100", "shares": 300},
        {"time": "09:30:04.200", "shares": 200}, {"time": "09:30:05.300", "shares": 500}])"));
}

TEST_F(TraceTest, shouldShowTheTradesAndSayWhyWhenOrderHasNoRecord)
{
    const Outcome run = trace("sh --order 12");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "event  time          price  shares  counterpart  left after it\n"
                       "trade  09:30:01.500  10.00     200           11\n"
                       "\n"
                       "order 12: traded 200 in 1 trade, cancelled 0, left not known\n");
    EXPECT_NE(run.err.find("no record of order 12"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("traded in full at once"), std::string::npos) << run.err;
    const auto traced = nlohmann::json::parse(trace("sh --order 12 --json").out);
    EXPECT_TRUE(traced.at("order").is_null());
    EXPECT_TRUE(traced.at("left").is_null());
    EXPECT_EQ(traced.at("traded"), 200);
}

// Traded in full at once explains a missing record only where nothing was left to cancel.
TEST_F(TraceTest, shouldBlameImmediateTradesOnlyWhenShanghaiHasNothingElseOfTheOrder)
{
    struct Case {
        const char* name;
        const char* market;
        bool isTraded;
        bool isCancelled;
        const char* note;
    };
    for (const Case& expected :
         {Case{"traded", "SH", true, false,
               "only its trades: Shanghai does not report an order that is traded in full at once"},
          Case{"cancelled", "SH", false, true, "only its cancel"},
          Case{"both", "SH", true, true, "only its trades and its cancel"},
          Case{"shenzhen", "SZ", true, false, "only its trades"}}) {
        HandmadeDay day(expected.market, expected.market == std::string("SH") ? "600000" : "000001");
        day << order(1).buy(10.00).shares(500).time("09:30:00");
        if (expected.isTraded)
            day << fill(1, 2).at(10.00).shares(200).time("09:30:01");
        if (expected.isCancelled)
            day << order(2).flag(4).kind(0).shares(300).time("09:30:05");
        recording::writeDay(day.recorded(), m_scratch.path(expected.name), recording::Compression::None);
        const Outcome run = trace(std::string(expected.name) + " --order 2");
        EXPECT_EQ(run.err, std::string("tessi: note: the day has no record of order 2, ") + expected.note + "\n");
    }
}

TEST_F(TraceTest, shouldFailWithUsageWhenThereIsNoSuchOrder)
{
    EXPECT_NE(trace("sz --order 5").err.find("the day has no order 5"), std::string::npos);
    EXPECT_NE(trace("sz --row 4").err.find("the order list has no row 4"), std::string::npos);
    for (const char* arguments :
         {"sz --order 5", "sz --row 4", "sz", "sz --order 1 --row 0", "sz --order 0", "sz --order x", "sz --row -1",
          "sz --order 99999999999", "--order 1", "'' --order 1"}) {
        const Outcome run = trace(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments << "\n" << run.err;
        EXPECT_EQ(run.out, "") << arguments;
        EXPECT_NE(run.err, "") << arguments;
    }
    EXPECT_EQ(trace("absent --order 1").exitCode, 3);
}

} // namespace
