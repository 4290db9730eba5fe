#include "exchange/simulator.h"
#include "quoter/levelorderdata.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "recording/dayfolder.h"
#include "tests/support/recordeddays.h"
#include "tests/tessi/command.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace {

using namespace tests;

// A day whose book the ticks tell whole: without market orders, which rest unseen.
recording::RecordedDay limitOrdersOnly()
{
    exchange::SimulationOptions options;
    options.ordersPerDay = 1200;
    options.marketOrdersPerMille = 0;
    return exchange::simulateDay(options);
}

void write(const recording::RecordedDay& day, const Scratch& scratch, const std::string& name)
{
    recording::writeDay(day, scratch.path(name), recording::Compression::None);
}

// 100 shares more in the newest buy order at a price that a snapshot of the morning shows.
recording::RecordedDay withAChangedOrder()
{
    recording::RecordedDay day = limitOrdersOnly();
    auto event = day.events.begin() + static_cast<std::ptrdiff_t>(day.events.size() / 3);
    event = std::find_if(event, day.events.end(),
                         [](const recording::Event& e) { return e.stream == recording::Stream::Snapshots; });
    const double price = static_cast<quoter::QuoterDepthData&>(*event->record).bidPrice[0];
    while (event != day.events.begin()) {
        --event;
        const auto order = std::dynamic_pointer_cast<quoter::OrderData>(event->record);
        if (order && order->bsFlag == quoter::kSideBuy && std::abs(order->price - price) < 1e-5) {
            order->volume += 100;
            break;
        }
    }
    return day;
}

TEST(Verify, shouldSucceedWhenEverySnapshotIsAStateOfTheBook)
{
    const Scratch scratch;
    write(limitOrdersOnly(), scratch, "day");
    const Outcome run = scratch.tessi("verify day");
    EXPECT_EQ(run.exitCode, 0) << run.out;
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 8) << "three headers, the day thrice, two blank lines";
    EXPECT_EQ(run.err, "");
}

TEST(Verify, shouldFailAndShowBothBooksWhenATickWasChanged)
{
    const Scratch scratch;
    write(limitOrdersOnly(), scratch, "good");
    write(withAChangedOrder(), scratch, "bad");
    const Outcome run = scratch.tessi("verify good bad");
    EXPECT_EQ(run.exitCode, 1);
    const auto divergence = run.out.find("the first snapshot without a match");
    ASSERT_NE(divergence, std::string::npos) << run.out;
    EXPECT_EQ(run.out.find("the first snapshot without a match", divergence + 1), std::string::npos);
    EXPECT_NE(run.out.find("no resting order explains it", divergence), std::string::npos) << run.out;
    const std::string books = run.out.substr(divergence);
    EXPECT_NE(books.find("side  price"), std::string::npos) << books;
    EXPECT_NE(books.find("\n*  "), std::string::npos) << "lines that differ are marked: " << books;
    EXPECT_NE(books.find("\n   ask"), std::string::npos) << "others are not: " << books;
}

TEST(Verify, shouldSucceedWhenNoMoreSnapshotsMissThanAllowed)
{
    const Scratch scratch;
    write(withAChangedOrder(), scratch, "day");
    const auto day = nlohmann::json::parse(scratch.tessi("verify day --json").out).at(0);
    const int misses = day.at("snapshots").get<int>() - day.at("rawMatches").get<int>();
    ASSERT_GT(misses, 0);
    const std::string allowQueues = "verify day --allow-queues 1000 --allow ";
    EXPECT_EQ(scratch.tessi(allowQueues + std::to_string(misses - 1)).exitCode, 1);
    EXPECT_EQ(scratch.tessi(allowQueues + std::to_string(misses)).exitCode, 0);
}

TEST(Verify, shouldListWhatExplainsTheMissesWhenAsked)
{
    const Scratch scratch;
    ASSERT_EQ(scratch.tessi("simulate day --seed 2 --orders 2500").exitCode, 0);
    EXPECT_EQ(scratch.tessi("verify day").out.find("snapshots without a match"), std::string::npos);
    const Outcome run = scratch.tessi("verify day --misses");
    EXPECT_NE(run.out.find("snapshots without a match"), std::string::npos) << run.out;

    const auto day = nlohmann::json::parse(scratch.tessi("verify day --misses --json").out).at(0);
    const auto& misses = day.at("misses");
    ASSERT_EQ(misses.size(), day.at("missesByMarketOrders").get<std::size_t>());
    ASSERT_FALSE(misses.empty());
    const auto& order = misses.at(0).at("explainedBy").at(0);
    const std::string seq = std::to_string(order.at("seq").get<long long>());
    EXPECT_NE(run.out.find("order " + seq + " (kind"), std::string::npos) << seq;
    EXPECT_TRUE(order.at("kind") == 6 || order.at("kind") == 7) << order;
    EXPECT_GT(order.at("price").get<double>(), 0) << "where the exchange has it";
    EXPECT_GT(order.at("shares").get<long long>(), 0);
    EXPECT_TRUE(order.at("side") == "bid" || order.at("side") == "ask");
}

TEST(Verify, shouldFailWhenARowOfTheOrderQueuesIsNoStateOfTheBook)
{
    const Scratch scratch;
    recording::RecordedDay day = limitOrdersOnly();
    for (auto event = day.events.begin() + static_cast<std::ptrdiff_t>(day.events.size() / 2);; ++event) {
        const auto record = std::dynamic_pointer_cast<quoter::LevelOrderData>(event->record);
        if (record && !record->askQueue.empty()) {
            ++record->askQueue.front();
            break;
        }
    }
    write(day, scratch, "day");
    EXPECT_EQ(scratch.tessi("verify day").exitCode, 1);
    EXPECT_EQ(scratch.tessi("verify day --allow 1000").exitCode, 1) << "allows snapshots only";
    EXPECT_EQ(scratch.tessi("verify day --allow-queues 1").exitCode, 0);
    const auto verified = nlohmann::json::parse(scratch.tessi("verify day --json").out).at(0);
    EXPECT_EQ(verified.at("snapshots"), verified.at("rawMatches"));
    EXPECT_EQ(verified.at("queueMissesUnexplained"), 1);
    EXPECT_EQ(verified.at("queueMatches"), verified.at("queueRows").get<int>() - 1);
}

// Two bids at 10.00, of 300 and 200 shares.
HandmadeDay twoBids()
{
    HandmadeDay day;
    day << order(1).buy(10.00).shares(300).time("09:30:00") << order(4).buy(10.00).shares(200).time("09:30:00");
    return day;
}

TEST(Verify, shouldFailWhenARowDiffersByMoreThanMarketOrders)
{
    HandmadeDay market = twoBids();
    market << order(5).buy(0).kind(6).shares(100).time("09:30:01")
           << bestQueues("09:30:03").bid(10.00, {300, 200, 100});
    HandmadeDay lost = twoBids();
    lost << order(3).buy(10.00).shares(100).time("09:30:01") << bestQueues("09:30:03").bid(10.00, {300, 100, 200});
    HandmadeDay back = twoBids();
    back << order(5).buy(10.00).shares(100).time("09:30:01") << bestQueues("09:30:03").bid(10.00, {300, 200, 100})
         << bestQueues("09:30:06").bid(10.00, {300, 200}) << bestQueues("09:30:09").bid(10.00, {300, 200, 100});
    struct Row {
        const char* misses;
        const HandmadeDay& day;
        int exitCode;
    };
    const Row rows[] = {{"queueMissesByMarketOrders", market, 0},
                        {"queueMissesByOtherOrders", lost, 1},
                        {"queueMissesOutOfOrder", back, 1}};
    for (const Row& row : rows) {
        const Scratch scratch;
        write(row.day.recorded(), scratch, "day");
        const Outcome run = scratch.tessi("verify day --json --allow 1000");
        EXPECT_EQ(run.exitCode, row.exitCode) << row.misses;
        EXPECT_EQ(nlohmann::json::parse(run.out).at(0).at(row.misses), 1) << run.out;
        EXPECT_EQ(scratch.tessi("verify day --allow-queues 1").exitCode, 0) << row.misses;
    }
}

TEST(Verify, shouldSayThatNothingWasComparedWhenNoOrderQueueCanBe)
{
    HandmadeDay day = twoBids();
    day << bestQueues("09:30:03") << bestQueues("12:00:00").bid(10.00, {300, 200});
    const Scratch scratch;
    write(day.recorded(), scratch, "day");
    const Outcome run = scratch.tessi("verify day");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.err.find("no order queue of continuous trading"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("queue rows"), std::string::npos) << run.out;
}

TEST(Verify, shouldLeaveTheQueuesOutOfTheTablesWhenTheDayHasNone)
{
    const Scratch scratch;
    recording::RecordedDay day = limitOrdersOnly();
    std::erase(day.streams, recording::Stream::Queues);
    std::erase_if(day.events, [](const recording::Event& event) { return event.stream == recording::Stream::Queues; });
    write(day, scratch, "day");
    const Outcome run = scratch.tessi("verify day");
    EXPECT_EQ(run.exitCode, 0) << run.out;
    EXPECT_EQ(run.out.find("queue"), std::string::npos) << run.out;
}

TEST(Verify, shouldGiveAnObjectForEachDayWhenFormatIsJson)
{
    const Scratch scratch;
    write(limitOrdersOnly(), scratch, "one");
    write(withAChangedOrder(), scratch, "two");
    const Outcome run = scratch.tessi("verify one two --json");
    EXPECT_EQ(run.exitCode, 1);
    const auto days = nlohmann::json::parse(run.out);
    ASSERT_EQ(days.size(), 2u);
    for (const auto& day : days) {
        EXPECT_EQ(day.at("market"), "SZ");
        EXPECT_EQ(day.at("code"), "009001");
        EXPECT_EQ(day.at("day"), 20240315);
        for (const char* figure : {"snapshots", "rawMatches", "newer", "correctedMatches", "parked", "forgotten",
                                   "pairs", "pairMatches", "pairsRightRows", "queueRows", "queueMatches"})
            EXPECT_TRUE(day.at(figure).is_number_integer()) << figure;
        EXPECT_EQ(day.at("newer"), day.at("correctedMatches"));
    }
    EXPECT_EQ(days[0].at("rawMatches"), days[0].at("snapshots"));
    EXPECT_LT(days[1].at("rawMatches"), days[1].at("snapshots"));
}

TEST(Verify, shouldNameFileAndLineWhenADayIsSpoilt)
{
    const Scratch scratch;
    write(limitOrdersOnly(), scratch, "good");
    write(limitOrdersOnly(), scratch, "bad");
    std::string orders = readFile(scratch.path("bad/orders.csv"));
    const std::size_t line = orders.find('\n', orders.find('\n') + 1) + 1;
    writeFile(scratch.path("bad/orders.csv"), orders.insert(orders.find(',', line) + 1, "x"));
    const Outcome run = scratch.tessi("verify good bad");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("bad/orders.csv:3"), std::string::npos) << run.err;
    EXPECT_EQ(scratch.tessi("verify absent").exitCode, 3);
}

TEST(Verify, shouldFailWhenTheDayLacksAStream)
{
    for (const recording::Stream stream :
         {recording::Stream::Orders, recording::Stream::Trades, recording::Stream::Snapshots}) {
        const Scratch scratch;
        recording::RecordedDay day = limitOrdersOnly();
        std::erase(day.streams, stream);
        std::erase_if(day.events, [stream](const recording::Event& event) { return event.stream == stream; });
        write(day, scratch, "day");
        const Outcome run = scratch.tessi("verify day");
        EXPECT_EQ(run.exitCode, 3);
        EXPECT_NE(run.err.find(recording::streamName(stream)), std::string::npos) << run.err;
    }
}

TEST(Verify, shouldSayThatNothingWasComparedWhenTheDayHasNoContinuousTrading)
{
    const Scratch scratch;
    recording::RecordedDay day = limitOrdersOnly();
    const auto opening = std::find_if(day.events.begin(), day.events.end(), [](const recording::Event& event) {
        return event.stream == recording::Stream::Trades && event.record->timetag % 86400000 == 5100000; // 09:25
    });
    ASSERT_NE(opening, day.events.end());
    day.events.erase(opening, day.events.end());
    write(day, scratch, "day");
    const Outcome run = scratch.tessi("verify day");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.err.find("no snapshot of continuous trading"), std::string::npos) << run.err;
}

TEST(Verify, shouldFailWithUsageWhenArgumentsAreWrong)
{
    const Scratch scratch;
    for (const char* arguments : {"verify", "verify ''", "verify day --allow -1", "verify day --allow x",
                                  "verify day --allow-queues -1", "verify day --format json"}) {
        const Outcome run = scratch.tessi(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments << "\n" << run.err;
        EXPECT_EQ(run.out, "") << arguments;
    }
}

struct Day {
    const char* folder;
    int snapshots, rawMatches, pairs, pairMatches, pairsRightRows, wholeHands, carried, oddLots, noRow;
    nlohmann::json queueRows, queueMatches; // null without the stream
};

void PrintTo(const Day& day, std::ostream* out)
{
    *out << day.folder;
}

class VerifyRecordedDays : public ::testing::TestWithParam<Day> {};

// The exchange's own snapshots against the book from its own ticks. What does not match are orders of market kinds,
// which the book does not show; and whatever the ticks say, a newer snapshot puts the read right.
TEST_P(VerifyRecordedDays, shouldMatchAllButWhatMarketOrdersExplainWhenDayIsReal)
{
    const Day& day = GetParam();
    const std::filesystem::path source = recordedDay(day.folder);
    if (!std::filesystem::exists(source))
        GTEST_SKIP() << "no recorded day " << source;

    const Scratch scratch;
    ASSERT_EQ(scratch.tessi("import '" + source.string() + "' day").exitCode, 0);
    const int misses = day.snapshots - day.rawMatches;
    const Outcome run = scratch.tessi("verify day --json --allow " + std::to_string(misses));
    EXPECT_EQ(run.exitCode, 0) << run.out;
    const auto verified = nlohmann::json::parse(run.out).at(0);
    EXPECT_EQ(verified.at("snapshots"), day.snapshots);
    EXPECT_EQ(verified.at("rawMatches"), day.rawMatches);
    EXPECT_EQ(verified.at("missesByMarketOrders"), misses);
    EXPECT_GT(verified.at("newer"), 1000);
    EXPECT_EQ(verified.at("correctedMatches"), verified.at("newer"));
    EXPECT_EQ(verified.at("forgotten"), 0);
    EXPECT_EQ(verified.at("pairs"), day.pairs);
    EXPECT_EQ(verified.at("pairMatches"), day.pairMatches);
    EXPECT_EQ(verified.at("pairsRightRows"), day.pairsRightRows);
    const auto& faults = verified.at("pairFaults");
    EXPECT_EQ(faults.at("wholeHands"), day.wholeHands);
    EXPECT_EQ(faults.at("carried"), day.carried);
    EXPECT_EQ(faults.at("oddLots"), day.oddLots);
    EXPECT_EQ(faults.at("noRow"), day.noRow);
    EXPECT_EQ(verified.at("queueRows"), day.queueRows);
    EXPECT_EQ(verified.at("queueMatches"), day.queueMatches);
    if (day.queueRows != nullptr) {
        EXPECT_EQ(verified.at("queueMissesByMarketOrders"), day.queueRows.get<int>() - day.queueMatches.get<int>());
    }
    EXPECT_EQ(day.pairMatches + day.wholeHands + day.carried + day.oddLots + day.noRow, day.pairs);

    EXPECT_EQ(scratch.tessi("verify '" + source.string() + "' --json --allow 1000").out, run.out)
        << "files of the exchange are imported on the way";
}

INSTANTIATE_TEST_SUITE_P(
    Days, VerifyRecordedDays,
    ::testing::Values(Day{"szse-20171229-300446", 1851, 1841, 855, 852, 850, 2, 0, 0, 1, 2482, 2477},
                      Day{"szse-20170103-000001", 4621, 4354, 3446, 3368, 3427, 70, 7, 0, 1, 7876, 7844},
                      Day{"sse-20230201-600519", 4841, 4841, 4542, 4498, 4494, 18, 22, 2, 2, nullptr, nullptr}),
    [](const auto& param) { return testName(param.param.folder); });

} // namespace
