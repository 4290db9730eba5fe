// The parameter table over days made by hand.

#include "recording/dayfolder.h"
#include "tests/tessi/command.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace {

using namespace tests;

std::shared_ptr<quoter::QuoterDepthData> snapshot(const Snapshot<quoter::QuoterDepthData>& built)
{
    return built;
}

std::shared_ptr<quoter::QuoteAux> book(const std::string& clock, double bidAverage, __int64 bidShares,
                                       double askAverage, __int64 askShares)
{
    return std::make_shared<quoter::QuoteAux>(
        quoter::QuoteAux{timeOf(clock), bidAverage, bidShares, askAverage, askShares});
}

// A stock that closed at 10.00 the day before. It opens at 10.02, falls to 9.98 and rises to 10.05, in snapshots of
// 09:30:03, :06 and :12; in that of :09 nothing is traded. The first trade is a buyer's, the second a seller's, and of
// the third the feed does not say.
HandmadeDay smallDay()
{
    HandmadeDay day;
    day.instrument().upStopPrice = 11.0;
    day.instrument().downStopPrice = 9.0;
    day.instrument().doubleFields = {{3015, 5e6}, {3016, 1e6}};
    const auto at = [](const char* clock) { return level2(clock).lastClose(10.0).open(10.02); };
    day << snapshot(level2("09:20:00").status(12).lastClose(10.0)) << fill(1, 2).at(10.02).shares(300).flag(1)
        << snapshot(at("09:30:03").high(10.02).low(10.02).last(10.02).volume(300).amount(3006))
        << book("09:30:03", 9.90, 40000, 10.20, 50000) << fill(3, 4).at(9.98).shares(500).flag(2).time("09:30:04")
        << snapshot(at("09:30:06").high(10.02).low(9.98).last(9.98).volume(800).amount(7996))
        << book("09:30:06", 9.80, 41000, 10.30, 52000)
        << snapshot(at("09:30:09").high(10.02).low(9.98).last(9.98).volume(800).amount(7996))
        << fill(5, 6).at(10.05).shares(1200).time("09:30:10")
        << snapshot(at("09:30:12").high(10.05).low(9.98).last(10.05).volume(2000).amount(20056))
        << book("09:30:12", 9.85, 45000, 10.25, 53000);
    return day;
}

class ParamPanelsTest : public ::testing::Test {
protected:
    ParamPanelsTest() { write(smallDay().recorded(), "day"); }

    void write(const recording::RecordedDay& day, const char* name) const
    {
        recording::writeDay(day, m_scratch.path(name), recording::Compression::None);
    }

    Outcome replay(const std::string& arguments) const { return m_scratch.tessi("replay day " + arguments); }

    // The first row of that label in CSV, without it: value, number, colour. Empty when there is none.
    std::string row(const std::string& label, const std::string& arguments) const
    {
        std::istringstream lines(replay("--panel params --format csv " + arguments).out);
        for (std::string line; std::getline(lines, line);) {
            if (line.rfind(label + ",", 0) == 0)
                return line.substr(label.size() + 1);
        }
        return {};
    }

    Scratch m_scratch;
};

const char kTableAfterTheDay[] = "label      value\n"
                                 "最新       10.05\n"
                                 "均价       10.03\n"
                                 "涨跌        0.05\n"
                                 "换手       0.20%\n"
                                 "涨幅       0.50%\n"
                                 "今开       10.02\n"
                                 "总手          20\n"
                                 "最高       10.05\n"
                                 "现手          12\n"
                                 "最低        9.98\n"
                                 "总额      2.01万\n"
                                 "昨收       10.00\n"
                                 "涨停       11.00\n"
                                 "跌停        9.00\n"
                                 "总笔           3\n"
                                 "每笔        6.67\n"
                                 "内盘           5\n"
                                 "外盘           3\n"
                                 "\n"
                                 "总股本     500万\n"
                                 "流通盘     100万\n"
                                 "总市值    5025万\n"
                                 "流通市值  1005万\n";

TEST_F(ParamPanelsTest, shouldShowTheStocksRowsWhenTheDayIsOver)
{
    const Outcome run = replay("--panel params");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, kTableAfterTheDay);
    EXPECT_EQ(run.err, "");
}

TEST_F(ParamPanelsTest, shouldShowTheSameTableWhenPartOfTheDayIsHistory)
{
    for (const char* until : {"09:20:00", "09:30:04", "09:30:07", "09:30:12", "23:59:59"})
        EXPECT_EQ(replay(std::string("--panel params --history-until ") + until).out, kTableAfterTheDay) << until;
}

TEST_F(ParamPanelsTest, shouldShowTheMomentsTableWhenATimeIsGiven)
{
    EXPECT_EQ(replay("--panel params --level2 --at 09:30:08").out, "label      value\n"
                                                                   "最新        9.98\n"
                                                                   "均价       10.00\n"
                                                                   "涨跌       -0.02\n"
                                                                   "换手       0.08%\n"
                                                                   "涨幅      -0.20%\n"
                                                                   "今开       10.02\n"
                                                                   "总手           8\n"
                                                                   "最高       10.02\n"
                                                                   "现手           5\n"
                                                                   "最低        9.98\n"
                                                                   "总额        7996\n"
                                                                   "昨收       10.00\n"
                                                                   "涨停       11.00\n"
                                                                   "跌停        9.00\n"
                                                                   "总笔           2\n"
                                                                   "每笔        4.00\n"
                                                                   "内盘           5\n"
                                                                   "外盘           3\n"
                                                                   "\n"
                                                                   "总卖         520\n"
                                                                   "均价       10.30\n"
                                                                   "\n"
                                                                   "总买         410\n"
                                                                   "均价        9.80\n"
                                                                   "\n"
                                                                   "总股本     500万\n"
                                                                   "流通盘     100万\n"
                                                                   "总市值    4990万\n"
                                                                   "流通市值   998万\n"
                                                                   "\n"
                                                                   "as it stood at the snapshot of 09:30:06\n");
}

// A snapshot in which nothing was traded has no counts to show: the one before it has.
TEST_F(ParamPanelsTest, shouldTakeTheLatestSnapshotThatTradedWhenATimeIsGiven)
{
    struct Case {
        const char* at;
        const char* count;
        const char* last;
        const char* inner;
    };
    const Case cases[] = {{"09:30:03", "1", "10.02", "0"}, {"09:30:05", "1", "10.02", "0"},
                          {"09:30:06", "2", "9.98", "5"},  {"09:30:11", "2", "9.98", "5"},
                          {"09:30:12", "3", "10.05", "5"}, {"15:00:00", "3", "10.05", "5"}};
    const auto valueIn = [](const std::string& row) { return row.substr(0, row.find(',')); };
    for (const Case& moment : cases) {
        for (const char* history : {"", " --history-until 09:30:10", " --history-until 23:00:00"}) {
            const std::string at = std::string("--at ") + moment.at + history;
            EXPECT_EQ(valueIn(row("总笔", at)), moment.count) << at;
            EXPECT_EQ(valueIn(row("最新", at)), moment.last) << at;
            EXPECT_EQ(valueIn(row("内盘", at)), moment.inner) << at;
            EXPECT_EQ(valueIn(row("外盘", at)), "3") << at;
        }
    }
    EXPECT_EQ(row("现手", "--at 09:30:05 --until 09:30:06"), "3,15,ic_clr_modulegroup_default_text,0");
}

TEST_F(ParamPanelsTest, shouldFailWhenNothingWasTradedUpToTheTime)
{
    for (const char* at : {"09:30:02", "09:00:00", "09:30:03 --until 09:30:03"}) {
        const Outcome run = replay(std::string("--panel params --at ") + at);
        EXPECT_EQ(run.exitCode, 3) << at;
        EXPECT_EQ(run.out, "") << at;
        EXPECT_EQ(run.err, "tessi: day: --at " + std::string(at).substr(0, 8) + ": nothing had been traded by then\n");
    }
}

TEST_F(ParamPanelsTest, shouldGiveNumbersAndColourKeysWhenFormatIsForPrograms)
{
    const std::string csv = replay("--panel params --format csv").out;
    EXPECT_EQ(csv.substr(0, csv.find("均价")), "label,value,id,colour,marked\n"
                                               "最新,10.05,0,ic_clr_entrust_text_rise,0\n");
    EXPECT_NE(csv.find("\n外盘,3,25,ic_clr_entrust_text_rise,0\n"
                       ",,,,\n"
                       "总股本,500万,26,ic_clr_modulegroup_default_text,0\n"),
              std::string::npos)
        << csv;
    EXPECT_NE(csv.find("\n总市值,5025万,28,ic_clr_entrust_amount,1\n"), std::string::npos) << csv;

    const auto rows = nlohmann::json::parse(replay("--panel params --format json --at 09:30:06").out);
    ASSERT_EQ(rows.size(), 23u);
    EXPECT_EQ(rows[0].dump(),
              R"({"colour":"ic_clr_entrust_text_fall","id":0,"label":"最新","marked":0,"value":"9.98"})");
    EXPECT_EQ(rows[18].dump(), R"({"colour":"","id":null,"label":"","marked":null,"value":""})");
}

TEST_F(ParamPanelsTest, shouldColourTheRowsOfRiseAndFallWhenStdoutIsATerminal)
{
    if (!m_scratch.canHaveATerminal())
        GTEST_SKIP() << "no pseudo-terminal can be had here";
    const std::string shown = m_scratch.onATerminal("env -u NO_COLOR", "replay day --panel params 2>/dev/null").out;
    EXPECT_NE(shown.find("\033[31m最新       10.05\033[0m"), std::string::npos) << shown;
    EXPECT_NE(shown.find("\033[32m最低        9.98\033[0m"), std::string::npos) << shown;
    EXPECT_NE(shown.find("\n昨收       10.00\r"), std::string::npos) << shown;
}

TEST_F(ParamPanelsTest, shouldTakeLevel1WhenTheDayHasNoLevel2)
{
    HandmadeDay day;
    std::shared_ptr<quoter::QuoterAllData> quote =
        level1("09:30:03").open(10.0).high(10.1).low(9.9).last(10.1).volume(200).amount(2010).lastClose(10.0);
    day << quote;
    recording::RecordedDay recorded = day.recorded();
    recorded.instrument.types = {};
    recorded.streams = {recording::Stream::Quotes};
    write(recorded, "level1");
    const Outcome run = m_scratch.tessi("replay level1 --panel params --format csv");
    EXPECT_EQ(run.err, "");
    EXPECT_NE(run.out.find("最新,10.10,0,ic_clr_entrust_text_rise,0\n"
                           "均价,10.05,1,ic_clr_entrust_text_rise,0\n"),
              std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find("\n总手,2,14,"), std::string::npos) << run.out;
    EXPECT_EQ(run.out.find("内盘"), std::string::npos) << "the default list has no such row\n" << run.out;
}

// The snapshot of 09:30:03 has not seen the trade of the second before, and a day of 350 shares shows as 3 hands.
TEST_F(ParamPanelsTest, shouldCountWhatTheSnapshotHasSeenWhenATimeIsGiven)
{
    HandmadeDay day;
    day << fill(1, 2).at(10.0).shares(350).flag(1).time("09:30:01")
        << fill(3, 4).at(10.0).shares(200).flag(2).time("09:30:02")
        << snapshot(level2("09:30:03").high(10.0).low(10.0).last(10.0).volume(350).amount(3500))
        << snapshot(level2("09:30:06").high(10.0).low(10.0).last(10.0).volume(550).amount(5500));
    write(day.recorded(), "odd");
    const auto rows = [this](const std::string& at) {
        return m_scratch.tessi("replay odd --panel params --format csv --at " + at).out;
    };
    EXPECT_NE(rows("09:30:05").find("\n均价,10.00,1,"), std::string::npos) << rows("09:30:05");
    EXPECT_NE(rows("09:30:05").find("\n内盘,0,24,"), std::string::npos) << rows("09:30:05");
    EXPECT_NE(rows("09:30:05").find("\n外盘,3,25,"), std::string::npos) << rows("09:30:05");
    EXPECT_NE(rows("09:30:06").find("\n均价,10.00,1,"), std::string::npos) << rows("09:30:06");
    EXPECT_NE(rows("09:30:06").find("\n内盘,2,24,"), std::string::npos) << rows("09:30:06");
}

TEST_F(ParamPanelsTest, shouldLeaveInnerAndOuterEmptyWhenNoTradeIsMarked)
{
    HandmadeDay day;
    day << fill(1, 2).at(10.0).shares(100) << snapshot(level2("09:30:03").last(10.0).volume(100).amount(1000));
    write(day.recorded(), "unmarked");
    const std::string rows = m_scratch.tessi("replay unmarked --panel params --format csv").out;
    EXPECT_NE(rows.find("\n内盘,,24,"), std::string::npos) << rows;
    EXPECT_NE(rows.find("\n外盘,,25,"), std::string::npos) << rows;
}

// CSV and JSON have no line below the rows.
TEST_F(ParamPanelsTest, shouldTellTheSnapshotsTimeWhenFormatIsForPrograms)
{
    for (const char* format : {"csv", "json"}) {
        const Outcome run = replay(std::string("--panel params --at 09:30:08 --format ") + format);
        EXPECT_EQ(run.err, "tessi: note: as it stood at the snapshot of 09:30:06\n");
        EXPECT_EQ(run.out.find("as it stood"), std::string::npos) << run.out;
    }
    EXPECT_EQ(replay("--panel params --at 09:30:08").err, "");
}

// The settlement price comes after the close, in a snapshot in which nothing is traded.
TEST_F(ParamPanelsTest, shouldNotKnowWhatCameLaterWhenATimeIsGiven)
{
    HandmadeDay day("IF", "IF2403");
    const auto at = [](const char* clock) { return level2(clock).lastSettlement(10.0).last(10.0).volume(3); };
    day << snapshot(at("14:59:57")) << snapshot(at("15:00:03").status(15)) << snapshot(at("15:10:00").settlement(10.5));
    write(day.recorded(), "future");
    const auto rows = [this](const std::string& moment) {
        return m_scratch.tessi("replay future --panel params --format csv --at " + moment).out;
    };
    const std::string later = rows("15:10:00");
    EXPECT_NE(later.find("\n今结,10.50,20,"), std::string::npos) << later;
    const std::string before = rows("15:09:59");
    EXPECT_EQ(before.find("10.50"), std::string::npos) << before;
    EXPECT_NE(before.find("\n今结,,20,"), std::string::npos) << before;
}

// The instrument record is today's: its last close is another one than that of the recorded day.
class PastDayTest : public ParamPanelsTest {
protected:
    PastDayTest()
    {
        HandmadeDay day = smallDay();
        day.instrument().lastClose = 20.0;
        write(day.recorded(), "past");
    }

    std::string rows(const std::string& arguments) const
    {
        return m_scratch.tessi("replay past --panel params --format csv " + arguments).out;
    }
};

TEST_F(PastDayTest, shouldTakeTheRecordsLastCloseWhenTodayIsLater)
{
    const std::string past = rows("--today 20240304");
    EXPECT_NE(past.find("最新,10.05,0,ic_clr_entrust_text_rise,0\n"
                        "均价,10.03,1,ic_clr_entrust_text_rise,0\n"
                        "涨跌,0.05,2,ic_clr_entrust_text_rise,0\n"
                        "换手,0.20%,30,ic_clr_modulegroup_default_text,0\n"
                        "涨幅,0.50%,4,ic_clr_entrust_text_rise,0\n"),
              std::string::npos)
        << past;
    EXPECT_NE(past.find("\n昨收,10.00,7,"), std::string::npos) << past;
    EXPECT_NE(past.find("\n最低,9.98,11,ic_clr_entrust_text_fall,0\n"), std::string::npos) << past;
    EXPECT_NE(past.find("\n总笔,3,12,"), std::string::npos) << past;

    const std::string moment = rows("--today 20240304 --at 09:30:06");
    EXPECT_NE(moment.find("\n涨跌,-0.02,2,ic_clr_entrust_text_fall,0\n"), std::string::npos) << moment;
}

TEST_F(PastDayTest, shouldTakeTheInstrumentsLastCloseWhenTheDayIsTheLatest)
{
    for (const char* history : {"", "--history-until 09:30:07", "--history-until 23:00:00"}) {
        const std::string latest = rows(history);
        EXPECT_NE(latest.find("\n涨跌,-9.95,2,ic_clr_entrust_text_fall,0\n"), std::string::npos) << history << latest;
        EXPECT_NE(latest.find("\n昨收,20.00,7,"), std::string::npos) << history << latest;
    }
}

TEST_F(ParamPanelsTest, shouldFailWithUsageWhenOptionsDoNotFit)
{
    struct Case {
        const char* arguments;
        const char* fault;
    };
    const char kAllHistory[] = "--today takes neither --history-until nor --speed";
    const Case cases[] = {{"--panel params --at 9:30", "--at: 9:30 is no time HH:MM:SS"},
                          {"--panel params --at 09:30:07 --until 09:30:06", "--at is later than --until"},
                          {"--panel params --today 20240230", "--today: 20240230 is no date"},
                          {"--panel params --today 20240301", "not later than the recorded day 20240301"},
                          {"--panel params --today 20240229", "not later than the recorded day 20240301"},
                          {"--panel params --today 20240304 --history-until 10:00:00", kAllHistory},
                          {"--panel params --today 20240304 --speed 1000", kAllHistory},
                          {"--panel params --depth 5", "--panel params takes no --depth"},
                          {"--panel index --at 09:30:03", "--panel index takes no --at"},
                          {"--panel index --level2", "--panel index takes no --level2"},
                          {"--panel book --today 20240304", "--panel book takes no --today"},
                          {"--at 09:30:03", "a summary takes no --at"},
                          {"--level2", "a summary takes no --level2"}};
    for (const auto& [arguments, fault] : cases) {
        const Outcome run = replay(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments;
        EXPECT_EQ(run.out, "") << arguments;
        EXPECT_NE(run.err.find(fault), std::string::npos) << run.err;
    }
}

} // namespace
