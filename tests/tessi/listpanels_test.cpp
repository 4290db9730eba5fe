#include "recording/dayfolder.h"
#include "tests/tessi/command.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>

namespace {

using namespace tests;

std::shared_ptr<quoter::QuoterDepthData> shown(const std::string& clock, double last, __int64 dayVolume)
{
    return level2(clock).bid(9.98).ask(10.03).last(last).volume(dayVolume);
}

// Orders 1 to 4 come in one second, 4 sells at any price; 3 is cancelled after it has traded, 6 takes two buys.
HandmadeDay smallDay()
{
    HandmadeDay day;
    day << order(1).buy(10.00).shares(300).time("09:30:00.100") << order(2).buy(9.99).shares(1000).time("09:30:00.200")
        << order(3).sell(10.02).shares(500).time("09:30:00.300")
        << order(4).sell(0).kind(7).shares(250).time("09:30:00.400")
        << fill(1, 4).at(10.00).shares(250).time("09:30:00.400") << shown("09:30:03", 10.00, 250)
        << order(5).buy(10.02).shares(150).time("09:30:04") << fill(5, 3).at(10.02).shares(150).time("09:30:04")
        << cancelOfSell(3).shares(350).time("09:30:05") << shown("09:30:06", 10.02, 400)
        << order(6).sell(9.99).shares(850).time("09:30:07") << fill(1, 6).at(10.00).shares(50).time("09:30:07")
        << fill(2, 6).at(9.99).shares(800).time("09:30:07") << cancelOfBuy(2).shares(200).time("09:30:08")
        << shown("09:30:09", 9.99, 1250);
    return day;
}

class ListPanelsTest : public ::testing::Test {
protected:
    ListPanelsTest()
    {
        recording::writeDay(smallDay().recorded(), m_scratch.path("day"), recording::Compression::None);
    }

    Outcome replay(const std::string& arguments) const { return m_scratch.tessi("replay day " + arguments); }

    // The values of one column, separated by blanks.
    std::string column(const std::string& name, const std::string& arguments) const
    {
        return columnOf("day", name, arguments);
    }

    std::string columnOf(const std::string& folder, const std::string& name, const std::string& arguments) const
    {
        std::string values;
        const Outcome run = m_scratch.tessi("replay " + folder + " --format json " + arguments);
        for (const auto& row : nlohmann::json::parse(run.out)) {
            const auto& cell = row.at(name);
            values += (values.empty() ? "" : " ") + (cell.is_string() ? cell.get<std::string>() : cell.dump());
        }
        return values;
    }

    Scratch m_scratch;
};

TEST_F(ListPanelsTest, shouldTellWhatBecameOfEachWhenOrdersAreListed)
{
    EXPECT_EQ(replay("--panel orders").out,
              "row  time      no  side  kind            price  hands  shares  seq  traded  cancelled  left\n"
              "  0  09:30:00   1  B                     10.00      3     300    1     300          0     0\n"
              "  1  09:30:00   2  B                      9.99     10    1000    2     800        200     0\n"
              "  2  09:30:00   3  S                     10.02      5     500    3     150        350     0\n"
              "  3  09:30:00   4  US    对手方最优价格   0.00      3     250    4     250          0     0\n"
              "  4  09:30:04   1  B                     10.02      2     150    5     150          0     0\n"
              "  5  09:30:07   1  S                      9.99      9     850    6     850          0     0\n");
}

TEST_F(ListPanelsTest, shouldShowTheOrderOfEachWhenCancelsAreListed)
{
    EXPECT_EQ(replay("--panel cancels").out, "time      no  side  kind  price  hands  shares  seq  ordered  traded\n"
                                             "09:30:05   1  S           10.02      4     350    3      500     150\n"
                                             "09:30:08   1  B            9.99      2     200    2     1000     800\n");
}

TEST_F(ListPanelsTest, shouldShowBothOrdersAndTheSnapshotWhenTradesAreListed)
{
    EXPECT_EQ(replay("--panel trades").out,
              "time      no  price  move  hands  shares  buy seq  sell seq  buy size  sell size  snapshot\n"
              "09:30:00   1  10.00  up        3     250        1         4         3          3  09:30:03\n"
              "09:30:04   1  10.02  up        2     150        5         3         2          5  09:30:06\n"
              "09:30:07   1  10.00  down      1      50        1         6         3          9  09:30:09\n"
              "09:30:07   2   9.99  down      8     800        2         6        10          9  09:30:09\n");
}

TEST_F(ListPanelsTest, shouldShowKindsAndPairsAboveTheRangeWhenViewIsPrinted)
{
    EXPECT_EQ(replay("--panel view").out,
              "row  time      price  hands  buy seq  buy kind   sell seq  sell kind   rows  snapshot\n"
              "  0  09:30:00  10.00      3        1  near same         4  single      0-0   09:30:03\n"
              "  1  09:30:04  10.02      2        5  single            3  single      1-1   09:30:06\n"
              "  2  09:30:07  10.00      1        1  far same          6  near same   2-3   09:30:09\n"
              "  3  09:30:07   9.99      8        2  single            6  near other  2-3   09:30:09\n"
              "\n"
              "highest 10.02, lowest 9.99, height 18\n");
}

TEST_F(ListPanelsTest, shouldViewOnlyTheRangeWhenTimesAreGiven)
{
    const Outcome run = replay("--panel view --from 09:30:02 --to 09:30:05");
    EXPECT_EQ(run.out, "row  time      price  hands  buy seq  buy kind  sell seq  sell kind  rows  snapshot\n"
                       "  1  09:30:04  10.02      2        5  single           3  single     1-1   09:30:06\n"
                       "\n"
                       "highest 10.02, lowest 10.02, height 3\n");
    EXPECT_EQ(column("row", "--panel view --from 09:30:06"), "1 2 3") << "a snapshot's second takes its rows";
    EXPECT_EQ(replay("--panel view --format csv").out.find("highest"), std::string::npos) << "rows alone";
}

TEST_F(ListPanelsTest, shouldFilterWhenOptionsAreGiven)
{
    struct Case {
        const char* arguments;
        const char* orders;
        const char* cancels;
        const char* trades; // by their shares
    };
    for (const Case& expected :
         {Case{"", "1 2 3 4 5 6", "3 2", "250 150 50 800"}, Case{"--min-hands 5", "2 3 6", "3 2", "800"},
          Case{"--min-hands 6", "2 6", "2", "800"}, Case{"--min-amount 5011", "2 6", "2", "800"},
          Case{"--min-amount 5009 --min-hands 10", "2", "2", ""},
          Case{"--min-amount 5009 --min-hands 10 --connective and", "2", "2", ""},
          Case{"--min-amount 9990 --min-hands 9 --connective or", "2 6", "2", ""},
          Case{"--min-amount 2501 --min-hands 3 --connective or", "1 2 3 4 6", "3 2", "250 800"},
          Case{"--min-hands 0", "1 2 3 4 5 6", "3 2", "250 150 50 800"},
          Case{"--from 09:30:04", "5 6", "3 2", "150 50 800"}, Case{"--to 09:30:05", "1 2 3 4 5", "3", "250 150"},
          Case{"--from 09:30:04 --to 09:30:04 --min-hands 2", "5", "", "150"}}) {
        EXPECT_EQ(column("seq", std::string("--panel orders ") + expected.arguments), expected.orders)
            << expected.arguments;
        EXPECT_EQ(column("seq", std::string("--panel cancels ") + expected.arguments), expected.cancels)
            << expected.arguments;
        EXPECT_EQ(column("shares", std::string("--panel trades ") + expected.arguments), expected.trades)
            << expected.arguments;
    }
}

// Orders without a price of their own have no side for the filter.
TEST_F(ListPanelsTest, shouldKeepASideAndMarketOrdersWhenSideIsGiven)
{
    EXPECT_EQ(column("seq", "--panel orders --side buy"), "1 2 4 5");
    EXPECT_EQ(column("seq", "--panel orders --side sell"), "3 4 6");
    EXPECT_EQ(column("seq", "--panel cancels --side buy"), "2");
    EXPECT_EQ(column("seq", "--panel cancels --side sell"), "3");
}

TEST_F(ListPanelsTest, shouldKeepRowNumbersAndMatchesWhenRowsAreFilteredAway)
{
    EXPECT_EQ(column("row", "--panel orders --min-hands 5"), "1 2 5");
    EXPECT_EQ(column("no", "--panel orders --min-hands 5"), "1 2 1") << "numbers count what is shown";
    EXPECT_EQ(column("snapshot", "--panel trades --min-hands 3"), "09:30:03 09:30:09");
    EXPECT_EQ(column("buy_size", "--panel trades --min-hands 3"), "3 10");
}

// Before the session, in it and after it: an order of each side, their trade, and a cancel of what is left.
TEST_F(ListPanelsTest, shouldListTheWholeDayWhenRecordsAreOutsideTheSession)
{
    HandmadeDay day;
    for (int part = 0; part < 3; ++part) {
        const std::string minute = std::array{"08:50", "10:00", "16:20"}.at(static_cast<std::size_t>(part));
        const int seq = 1 + 2 * part;
        day << order(seq).buy(10.00).shares(500).time(minute + ":01")
            << order(seq + 1).sell(10.00).shares(300).time(minute + ":02")
            << fill(seq, seq + 1).at(10.00).shares(300).time(minute + ":02")
            << shown(minute + ":03", 10.00, 300LL * seq) << cancelOfBuy(seq).shares(200).time(minute + ":04");
    }
    recording::writeDay(day.recorded(), m_scratch.path("long"), recording::Compression::None);
    struct Case {
        const char* arguments;
        const char* orders;
        const char* cancels;
        const char* trades; // by their buy orders, in the view too
    };
    for (const Case& expected : {Case{"", "1 2 3 4 5 6", "1 3 5", "1 3 5"},
                                 Case{"--from 00:00:00 --to 23:59:59", "1 2 3 4 5 6", "1 3 5", "1 3 5"},
                                 Case{"--from 08:00:00 --to 23:59:59", "1 2 3 4 5 6", "1 3 5", "1 3 5"},
                                 Case{"--to 08:59:59", "1 2", "1", "1"}, Case{"--from 16:15:00", "5 6", "5", "5"},
                                 Case{"--from 09:00:00 --to 16:10:00", "3 4", "3", "3"}}) {
        const std::string arguments = std::string(" ") + expected.arguments;
        EXPECT_EQ(columnOf("long", "seq", "--panel orders" + arguments), expected.orders) << arguments;
        EXPECT_EQ(columnOf("long", "cancelled", "--panel orders --side buy --to 08:59:59"), "200") << arguments;
        EXPECT_EQ(columnOf("long", "seq", "--panel cancels" + arguments), expected.cancels) << arguments;
        EXPECT_EQ(columnOf("long", "buy_seq", "--panel trades" + arguments), expected.trades) << arguments;
        EXPECT_EQ(columnOf("long", "buy_seq", "--panel view" + arguments), expected.trades) << arguments;
    }
    EXPECT_EQ(columnOf("long", "snapshot", "--panel trades"), "08:50:03 10:00:03 16:20:03");
}

TEST_F(ListPanelsTest, shouldListTheSameWhenPartOfTheDayIsHistory)
{
    for (const char* panel : {"orders", "cancels", "trades", "view"}) {
        const std::string arguments = std::string("--panel ") + panel;
        const std::string live = replay(arguments).out;
        for (const char* until : {"09:30:03", "09:30:05", "23:59:59"})
            EXPECT_EQ(replay(arguments + " --history-until " + until).out, live) << arguments << " " << until;
    }
}

// An empty snapshot before all trades is given row 0. The next one has that row too when both are decided in one go,
// and starts behind it when more records must come for it.
TEST_F(ListPanelsTest, shouldStartTheNextPairBehindRow0WhenAnEmptySnapshotIsDecidedAlone)
{
    HandmadeDay day;
    day << shown("09:15:00", 0, 0) << fill(1, 2).at(10.00).shares(300).time("09:30:01")
        << fill(3, 4).at(10.01).shares(100).time("09:30:02") << shown("09:30:03", 10.01, 400)
        << fill(5, 6).at(10.02).shares(200).time("09:30:05") << shown("09:30:06", 10.02, 600)
        << fill(7, 8).at(10.03).shares(200).time("09:30:07");
    recording::writeDay(day.recorded(), m_scratch.path("empty"), recording::Compression::None);
    struct Case {
        const char* history;
        const char* rows;
    };
    for (const Case& expected :
         {Case{"", "0-0 1-1 2-2 "}, Case{" --history-until 09:30:02", "0-0 1-1 2-2 "},
          Case{" --history-until 09:30:03", "0-0 1-1 2-2 "}, Case{" --history-until 09:30:05", "0-0 1-1 2-2 "},
          Case{" --history-until 09:30:06", "0-0 0-1 2-2 "}, Case{" --history-until 23:59:59", "0-0 0-1 2-2 "}}) {
        EXPECT_EQ(columnOf("empty", "rows", std::string("--panel view") + expected.history), expected.rows)
            << expected.history;
        EXPECT_EQ(columnOf("empty", "snapshot", std::string("--panel trades") + expected.history),
                  "09:15:00 09:30:03 09:30:06 ")
            << expected.history;
    }
}

TEST_F(ListPanelsTest, shouldStopBeforeTheFirstRecordWhenUntilIsGiven)
{
    EXPECT_EQ(column("left", "--panel orders --until 09:30:05"), "50 1000 350 0 0");
    EXPECT_EQ(column("seq", "--panel cancels --until 09:30:08"), "3");
    EXPECT_EQ(column("snapshot", "--panel trades --until 09:30:09"), "09:30:03 09:30:06  ");
}

TEST_F(ListPanelsTest, shouldSayWhyWhenNothingIsListed)
{
    struct Case {
        const char* arguments;
        const char* why;
    };
    for (const Case& expected : {Case{"--panel orders --min-hands 11", "no order passes the filter"},
                                 Case{"--panel cancels --min-hands 11", "no cancel of a known order passes the filter"},
                                 Case{"--panel trades --min-hands 11", "no trade passes the filter"},
                                 Case{"--panel view --until 09:30:00", "no trade is in view"}}) {
        const Outcome run = replay(expected.arguments);
        EXPECT_EQ(run.exitCode, 0) << expected.arguments;
        EXPECT_NE(run.err.find(expected.why), std::string::npos) << run.err;
        EXPECT_EQ(run.out.find('\n'), run.out.size() - 1) << "no foot below the names of the columns: " << run.out;
    }
}

TEST_F(ListPanelsTest, shouldFailWithUsageWhenOptionsDoNotFitThePanel)
{
    for (const char* arguments :
         {"--panel orders --side bid", "--panel queue --side buy --price 10", "--panel trades --side buy",
          "--panel view --side buy", "--panel view --min-hands 1", "--panel ticks --from 09:30:00", "--min-hands 1",
          "--panel book --min-amount 1", "--panel orders --min-hands -1", "--panel orders --min-hands x",
          "--panel orders --min-amount 3000000000", "--panel orders --connective or",
          "--panel orders --min-hands 1 --connective and",
          "--panel orders --connective xor --min-hands 1 --min-amount 1", "--panel orders --from 09:30",
          "--panel orders --from 09:30:01 --to 09:30:00", "--panel orders --price 10", "--panel orders --depth 1"}) {
        const Outcome run = replay(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments;
        EXPECT_EQ(run.out, "") << arguments;
        EXPECT_NE(run.err, "") << arguments;
    }
}

// What the lists say of a whole day, against its records.
TEST(ListPanels, shouldAccountForTheWholeDayWhenDayIsSimulated)
{
    const Scratch scratch;
    ASSERT_EQ(scratch.tessi("simulate day --seed 4 --orders 1500").exitCode, 0);
    const auto json = [&scratch](const std::string& arguments) {
        return nlohmann::json::parse(scratch.tessi("replay day --format json " + arguments).out);
    };
    const auto summary = json("");
    const auto sum = [](const nlohmann::json& rows, const char* column) {
        long long total = 0;
        for (const auto& row : rows)
            total += row.at(column).get<long long>();
        return total;
    };
    const auto orders = json("--panel orders");
    EXPECT_EQ(orders.size(), summary.at("records_in_orders").get<std::size_t>());
    EXPECT_EQ(sum(orders, "shares"), summary.at("ordered_shares").get<long long>());
    EXPECT_EQ(sum(orders, "traded"), 2 * summary.at("traded_shares").get<long long>()) << "a buy and a sell each";
    EXPECT_EQ(sum(orders, "cancelled"), summary.at("cancelled_shares").get<long long>());
    EXPECT_EQ(json("--panel cancels").size(), summary.at("cancels").get<std::size_t>());
    const auto trades = json("--panel trades");
    EXPECT_EQ(trades.size(), summary.at("trades").get<std::size_t>());
    EXPECT_EQ(sum(trades, "shares"), summary.at("traded_shares").get<long long>());
    EXPECT_EQ(json("--panel view").size(), trades.size());
}

} // namespace
