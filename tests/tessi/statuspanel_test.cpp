// The book summary over days made by hand.

#include "tests/tessi/handmadeday.h"
#include "tests/tessi/paneltest.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

using namespace tests;

std::shared_ptr<quoter::QuoterDepthData> snapshot(const Snapshot<quoter::QuoterDepthData>& built)
{
    return built;
}

// An auction, and three snapshots of which in the last nothing is traded: its ask has gone up a tick, and the level
// that was the best has become the second. Level 1 has a quote at the end.
HandmadeDay smallDay()
{
    HandmadeDay day;
    std::shared_ptr<quoter::QuoterAllData> quote =
        level1("09:30:09").last(10.02).lastClose(10.0).volume(1300).ask(10.03, 1500).bid(10.01, 700);
    const auto at = [](const char* clock) { return level2(clock).lastClose(10.0).last(10.02); };
    day << snapshot(level2("09:20:00").status(12).lastClose(10.0).bids({{10.01, 500}, {0, 300}}).ask(10.01, 500))
        << snapshot(at("09:30:03")
                        .volume(1000)
                        .asks({{10.02, 600}, {10.03, 1200}, {10.05, 50}})
                        .bids({{10.01, 400}, {10.0, 900}}))
        << snapshot(at("09:30:06")
                        .volume(1300)
                        .asks({{10.02, 300}, {10.03, 1500}, {10.05, 50}})
                        .bids({{10.01, 700}, {9.99, 100}, {9.98, 100}}))
        << snapshot(at("09:30:09")
                        .volume(1300)
                        .asks({{10.03, 1500}, {10.04, 200}, {10.05, 2050}})
                        .bids({{10.02, 100}, {10.01, 700}, {9.99, 100}}))
        << quote;
    return day;
}

// The asks above the third and the bids below it, of a day of which nobody has more.
const char kNoAsks[] = "ask      10                     \n"
                       "ask       9                     \n"
                       "ask       8                     \n"
                       "ask       7                     \n"
                       "ask       6                     \n"
                       "ask       5                     \n"
                       "ask       4                     \n";
const char kNoBids[] = "bid       4                     \n"
                       "bid       5                     \n"
                       "bid       6                     \n"
                       "bid       7                     \n"
                       "bid       8                     \n"
                       "bid       9                     \n"
                       "bid      10                     \n";

// Without the blanks at the ends of lines.
std::string stripped(std::string text)
{
    for (std::size_t at = text.find(" \n"); at != std::string::npos; at = text.find(" \n"))
        text.erase(at, 1);
    return text;
}

std::string ladder(const std::string& levels, const std::string& foot)
{
    const std::size_t bids = levels.find("bid");
    return stripped("side  level  price  hands  change\n" + (kNoAsks + levels.substr(0, bids)) + levels.substr(bids) +
                    kNoBids + "\n" + foot + "\n");
}

const std::string kAfterTheDay = ladder("ask       3  10.05     20     +19\n"
                                        "ask       2  10.04      2\n"
                                        "ask       1  10.03     15\n"
                                        "bid       1  10.02      1\n"
                                        "bid       2  10.01      7\n"
                                        "bid       3   9.99      1\n",
                                        "last price 10.02, last close 10.00, latest tick 3");

class StatusPanelTest : public PanelTest {
protected:
    StatusPanelTest()
        : PanelTest("status", smallDay().recorded())
    {}
};

TEST_F(StatusPanelTest, shouldShowTenLevelsWithTheirChangesWhenTheDayIsOver)
{
    for (const char* history :
         {"", "--history-until 09:20:00", "--history-until 09:30:07", "--history-until 23:00:00"}) {
        const Outcome run = shown(history);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.out, kAfterTheDay) << history;
        EXPECT_EQ(run.err, "");
    }
}

TEST_F(StatusPanelTest, shouldShowTheMomentsBookWhenATimeIsGiven)
{
    const std::string shownAt6 = ladder("ask       3  10.05      1\n"
                                        "ask       2  10.03     15      +3\n"
                                        "ask       1  10.02      3      -3\n"
                                        "bid       1  10.01      7      +3\n"
                                        "bid       2   9.99      1\n"
                                        "bid       3   9.98      1\n",
                                        "last price 10.02, last close 10.00, latest tick 3; as it stood at the "
                                        "snapshot of 09:30:06");
    for (const char* at : {"09:30:06", "09:30:08", "09:30:08 --history-until 09:30:05", "09:30:06 --until 15:00:00",
                           "09:30:08 --history-until 23:00:00"})
        EXPECT_EQ(shown(std::string("--at ") + at).out, shownAt6) << at;
}

// The levels of an auction: the price on both sides, and below it what is left over, which has no price.
TEST_F(StatusPanelTest, shouldShowWhatAnAuctionLeavesOverWhenItIsLookedAt)
{
    const std::string auction = shown("--at 09:29:59").out;
    EXPECT_NE(auction.find("ask       1  10.01      5\n"
                           "bid       1  10.01      5\n"
                           "bid       2             3\n"
                           "bid       3\n"),
              std::string::npos)
        << auction;
    EXPECT_NE(auction.find("\nlast price 10.00, last close 10.00, latest tick 0; as it stood at the snapshot of "
                           "09:20:00\n"),
              std::string::npos)
        << "before the first trade the last close is the last price\n"
        << auction;
}

TEST_F(StatusPanelTest, shouldShowFiveLevelsWhenLevel1IsAskedForOrAllThereIs)
{
    const std::string five = stripped("side  level  price  hands  change\n"
                                      "ask       5\nask       4\nask       3\nask       2\n"
                                      "ask       1  10.03     15\n"
                                      "bid       1  10.01      7\n"
                                      "bid       2\nbid       3\nbid       4\nbid       5\n"
                                      "\n"
                                      "last price 10.02, last close 10.00, latest tick 0\n");
    EXPECT_EQ(shown("--level1").out, five);

    recording::RecordedDay day = smallDay().recorded();
    std::erase_if(day.events, [](const auto& event) { return event.stream != recording::Stream::Quotes; });
    day.streams = {recording::Stream::Quotes};
    write(day, "level1");
    EXPECT_EQ(shownOf("level1").out, five);
}

TEST_F(StatusPanelTest, shouldGiveAllLevelsWhenFormatIsForPrograms)
{
    const Outcome csv = shown("--format csv --at 09:30:06");
    EXPECT_EQ(csv.out.substr(0, csv.out.find("ask,8")), "side,level,price,hands,change\nask,10,,,\nask,9,,,\n");
    EXPECT_NE(csv.out.find("\nask,1,10.02,3,-3\nbid,1,10.01,7,3\nbid,2,9.99,1,\n"), std::string::npos) << csv.out;
    EXPECT_EQ(csv.err, "tessi: note: last price 10.02, last close 10.00, latest tick 3; as it stood at the snapshot of "
                       "09:30:06\n");
    const Outcome json = shown("--format json");
    EXPECT_EQ(json.err, "tessi: note: last price 10.02, last close 10.00, latest tick 3\n");
    const auto rows = nlohmann::json::parse(json.out);
    ASSERT_EQ(rows.size(), 20U);
    EXPECT_EQ(rows[9].dump(), R"({"change":null,"hands":15,"level":1,"price":10.03,"side":"ask"})");
    EXPECT_EQ(rows[7].dump(), R"({"change":19,"hands":20,"level":3,"price":10.05,"side":"ask"})");
}

TEST_F(StatusPanelTest, shouldColourTheSidesWhenStdoutIsATerminal)
{
    if (!m_scratch.canHaveATerminal())
        GTEST_SKIP() << "no pseudo-terminal can be had here";
    const std::string coloured = m_scratch.onATerminal("env -u NO_COLOR", "replay day --panel status 2>/dev/null").out;
    EXPECT_NE(coloured.find("\033[32mask       2  10.04      2\033[0m"), std::string::npos) << coloured;
    EXPECT_NE(coloured.find("\033[31mbid       1  10.02      1\033[0m"), std::string::npos) << coloured;
}

// The phase of fixed-price trading ends with status 23: the panel goes back to the close's book and tick.
TEST_F(StatusPanelTest, shouldShowTheBookOfTheCloseWhenFixedPriceTradingHasEnded)
{
    HandmadeDay day("SZ", "300001");
    day.instrument().types = {100003, 10006};
    const auto at = [](const char* clock, int status) {
        return level2(clock).status(status).last(10.02).lastClose(10);
    };
    day << snapshot(at("14:56:57", 13).volume(5000).ask(10.03, 800).bid(10.01, 900))
        << snapshot(at("15:00:03", 15).volume(5700).ask(10.03, 300).bid(10.02, 200))
        << snapshot(at("15:05:00", 22).volume(0).ask(10.04, 100).bid(10.0, 100))
        << snapshot(at("15:20:00", 22).volume(400).ask(10.04, 600).bid(10.0, 700))
        << snapshot(at("15:30:00", 23).volume(400).ask(10.05, 100).bid(10.0, 100));
    write(day.recorded(), "late");
    const auto late = [this](const std::string& arguments) { return shownOf("late", arguments).out; };
    struct Case {
        const char* at;
        const char* best;
        const char* tick;
    };
    const char kClose[] = "ask       1  10.03      3      -5\nbid       1  10.02      2\n";
    const Case cases[] = {
        {"15:00:03", kClose, "latest tick 7"},
        {"15:05:00", "ask       1  10.04      1\nbid       1  10.00      1\n", "latest tick 0"},
        {"15:29:59", "ask       1  10.04      6      +5\nbid       1  10.00      7      +6\n", "latest tick 4"},
        {"15:30:00", kClose, "latest tick 7"}};
    for (const Case& moment : cases) {
        for (const char* history :
             {"", " --history-until 15:00:00", " --history-until 15:10:00", " --history-until 23:00:00"}) {
            const std::string text = late(std::string("--at ") + moment.at + history);
            EXPECT_NE(text.find(moment.best), std::string::npos) << moment.at << history << "\n" << text;
            EXPECT_NE(text.find(moment.tick), std::string::npos) << moment.at << history << "\n" << text;
        }
    }
    for (const char* history : {"", " --history-until 15:10:00", " --history-until 23:00:00"}) {
        EXPECT_NE(late(history).find(kClose), std::string::npos) << history << "\n" << late(history);
        EXPECT_NE(late(history).find("latest tick 7"), std::string::npos) << history << "\n" << late(history);
    }
}

// Snapshots may go on after the close without a phase whose volume counts anew.
TEST_F(StatusPanelTest, shouldCountTheTickFromTheCloseWhenThereIsNoFixedPriceTrading)
{
    HandmadeDay day("SZ", "000001");
    day << snapshot(level2("15:00:03").status(15).last(10.02).lastClose(10).volume(5700).bid(10.02, 200))
        << snapshot(level2("15:05:00").status(22).last(10.02).lastClose(10).volume(6000).bid(10.02, 200));
    write(day.recorded(), "plain");
    const std::string text = shownOf("plain", "--at 15:05:00").out;
    EXPECT_NE(text.find("latest tick 3;"), std::string::npos) << text;
}

TEST_F(StatusPanelTest, shouldShowBlankLevelsWhenAStocksBookIsEmpty)
{
    HandmadeDay day("SZ", "000001");
    day << snapshot(level2("09:14:00").status(11).lastClose(10.0));
    write(day.recorded(), "blank");
    const Outcome run = shownOf("blank");
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 23) << run.out;
    EXPECT_NE(run.out.find("\nask       1\nbid       1\n"), std::string::npos) << run.out;
    EXPECT_EQ(run.err, "");
}

TEST_F(StatusPanelTest, shouldSayWhyNothingIsShownWhenThereIsNoSnapshot)
{
    const Outcome early = shown("--at 09:19:59");
    EXPECT_EQ(early.exitCode, 3);
    EXPECT_EQ(early.err, "tessi: day: --at 09:19:59: no snapshot had come by then\n");
    const Outcome until = shown("--until 09:20:00");
    EXPECT_EQ(until.exitCode, 0);
    EXPECT_EQ(until.out, "side  level  price  hands  change\n");
    EXPECT_EQ(until.err, "tessi: note: no snapshot had come\n");

    HandmadeDay none;
    none << order(1).buy(10.0);
    recording::RecordedDay day = none.recorded();
    day.streams = {recording::Stream::Orders};
    write(day, "none");
    EXPECT_EQ(shownOf("none").err, "tessi: note: the day has no stream quotes\ntessi: note: no snapshot had come\n");
    EXPECT_EQ(shownOf("none", "--level1").err,
              "tessi: note: the day has no stream quotes\ntessi: note: no snapshot had come\n");
}

TEST_F(StatusPanelTest, shouldGiveAnIndexsFiguresInOneLineWhenThereIsNoBook)
{
    HandmadeDay day("SH", "000001");
    day.instrument().isIndex = true;
    const std::shared_ptr<quoter::QuoterAllData> first = level1("09:30:03").last(2990).lastClose(3000).volume(100000);
    const std::shared_ptr<quoter::QuoterAllData> latest =
        level1("09:30:08").last(3010.5).lastClose(3000).volume(250000);
    day << first << latest;
    recording::RecordedDay recorded = day.recorded();
    recorded.streams = {recording::Stream::Quotes};
    write(recorded, "index");

    const Outcome run = shownOf("index");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "side  level  price  hands  change\n");
    EXPECT_EQ(run.err, "tessi: note: an index has no book; last price 3010.50, last close 3000.00, latest tick 1500\n");
    EXPECT_EQ(
        shownOf("index", "--format json --at 09:30:07").err,
        "tessi: note: an index has no book; last price 2990.00, last close 3000.00, latest tick 0; as it stood at "
        "the snapshot of 09:30:03\n");
    EXPECT_EQ(shownOf("index", "--until 09:30:03").err, "tessi: note: no snapshot had come\n");
}

TEST_F(StatusPanelTest, shouldFailWithUsageWhenOptionsDoNotFit)
{
    struct Case {
        const char* arguments;
        const char* fault;
    };
    const Case cases[] = {{"--today 20240304", "--panel status takes no --today"},
                          {"--level2", "--panel status takes no --level2"},
                          {"--depth 3", "--panel status takes no --depth"},
                          {"--png p.png", "--panel status takes no --png"},
                          {"--at 9:30", "--at: 9:30 is no time HH:MM:SS"},
                          {"--at 09:30:07 --until 09:30:06", "--at is later than --until"}};
    for (const auto& [arguments, fault] : cases) {
        const Outcome run = shown(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments;
        EXPECT_EQ(run.out, "") << arguments;
        EXPECT_NE(run.err.find(fault), std::string::npos) << run.err;
    }
    EXPECT_NE(m_scratch.tessi("replay day --panel params --level1").err.find("--panel params takes no --level1"),
              std::string::npos);
}

} // namespace
