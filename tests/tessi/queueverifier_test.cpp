#include "apps/tessi/queueverifier.h"

#include "exchange/simulator.h"
#include "quoter/levelorderdata.h"
#include "tests/tessi/handmadeday.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace {

using namespace tests;
using recording::Stream;
using tessi::QueueFault;

tessi::VerifiedQueues verified(const HandmadeDay& day)
{
    return tessi::verifyQueues(day.recorded());
}

// "3 of 4 match; ask 10.02: market orders (order 5 kind 7 800@10.02)"
std::string figures(const tessi::VerifiedQueues& queues)
{
    std::string text = fmt::format("{} of {} match", queues.matches, queues.rows);
    for (const tessi::QueueMiss& miss : queues.misses) {
        text += fmt::format("; {} {:.2f}: {}", miss.isBid ? "bid" : "ask", miss.price, tessi::nameOf(miss.fault));
        for (const tessi::RestingOrder& order : miss.explainedBy)
            text += fmt::format(" (order {} kind {} {}@{:.2f})", order.seq, order.kind, order.shares, order.price);
    }
    return text;
}

// Bids at 10.00 of 300 and 200 shares, one of 700 behind at 9.99; 500 and 400 are offered at 10.02.
HandmadeDay quiet()
{
    HandmadeDay day;
    day << order(1).buy(10.00).shares(300).time("09:30:00.100") << order(2).buy(9.99).shares(700).time("09:30:00.200")
        << order(3).sell(10.02).shares(500).time("09:30:00.300") << order(4).buy(10.00).shares(200).time("09:30:00.400")
        << order(5).sell(10.02).shares(400).time("09:30:00.500");
    return day;
}

TEST(QueueVerifier, shouldMatchBothSidesWhenTheSizesStandInTheOrderOfTime)
{
    HandmadeDay day = quiet();
    day << bestQueues("09:30:03").bid(10.00, {300, 200}).ask(10.02, {500, 400});
    EXPECT_EQ(figures(verified(day)), "2 of 2 match");
}

TEST(QueueVerifier, shouldMissWhenTheSizesAreNotTheBooks)
{
    struct Row {
        const char* what;
        double price;
        std::vector<int> sizes;
    };
    const Row rows[] = {{"a share more", 10.00, {300, 201}},       {"a share less", 10.00, {299, 200}},
                        {"in the wrong order", 10.00, {200, 300}}, {"an order less", 10.00, {200}},
                        {"an order more", 10.00, {300, 200, 100}}, {"of another price", 9.99, {300, 200}},
                        {"where nothing rests", 9.98, {300, 200}}, {"of the other side", 10.02, {500, 400}}};
    for (const Row& row : rows) {
        HandmadeDay day = quiet();
        day << bestQueues("09:30:03").bid(row.price, row.sizes).ask(10.02, {500, 400});
        EXPECT_EQ(figures(verified(day)), fmt::format("1 of 2 match; bid {:.2f}: unexplained", row.price)) << row.what;
    }
}

TEST(QueueVerifier, shouldCompareTheLiveSizesWhenOrdersHaveTradedOrGone)
{
    HandmadeDay day = quiet();
    day << order(6).sell(10.00).shares(120).time("09:30:01") << fill(1, 6).at(10.00).shares(120).time("09:30:01")
        << bestQueues("09:30:03").bid(10.00, {180, 200}) << cancelOfBuy(1).shares(180).time("09:30:04")
        << bestQueues("09:30:06").bid(10.00, {200});
    EXPECT_EQ(figures(verified(day)), "2 of 2 match");
}

TEST(QueueVerifier, shouldMatchTheQueueAtThePriceWhenAnotherIsTheBest)
{
    HandmadeDay day = quiet();
    day << order(6).buy(10.01).shares(900).time("09:30:02") << bestQueues("09:30:03").bid(10.00, {300, 200})
        << bestQueues("09:30:03").bid(9.99, {700});
    EXPECT_EQ(figures(verified(day)), "2 of 2 match");
}

TEST(QueueVerifier, shouldTellTheSidesApartWhenBothHavePassedThePrice)
{
    HandmadeDay day = quiet();
    day << bestQueues("09:30:03").bid(10.00, {300, 200}) << cancelOfBuy(1).shares(300).time("09:30:04")
        << cancelOfBuy(4).shares(200).time("09:30:04") << order(6).sell(10.00).shares(600).time("09:30:05")
        << bestQueues("09:30:06").ask(10.00, {600}) << bestQueues("09:30:09").bid(10.00, {600});
    EXPECT_EQ(figures(verified(day)), "2 of 3 match; bid 10.00: unexplained");
}

TEST(QueueVerifier, shouldCompareTheFirstFiftyWhenMoreOrdersWait)
{
    HandmadeDay day;
    std::vector<int> sizes;
    for (int seq = 1; seq <= 60; ++seq) {
        day << order(seq).sell(10.02).shares(100 * seq).time("09:30:00");
        sizes.push_back(100 * seq);
    }
    const std::vector<int> first(sizes.begin(), sizes.begin() + 50);
    const std::vector<int> tooShort(sizes.begin(), sizes.begin() + 49);
    day << bestQueues("09:30:03").ask(10.02, first) << bestQueues("09:30:06").ask(10.02, tooShort)
        << bestQueues("09:30:09").ask(10.02, sizes);
    const tessi::VerifiedQueues result = verified(day);
    // Of 49 orders the book has had just these, before the 50th came: but not behind the first record.
    EXPECT_EQ(figures(result), "1 of 3 match; ask 10.02: out of order; ask 10.02: unexplained");
    EXPECT_EQ(result.misses[0].rightOrders, 49u);
}

TEST(QueueVerifier, shouldNotGoBackWhenARecordShowsAStateThatHasPassed)
{
    HandmadeDay day = quiet();
    day << order(6).buy(10.00).shares(100).time("09:30:02") << order(7).buy(10.00).shares(150).time("09:30:02")
        << bestQueues("09:30:03").bid(10.00, {300, 200, 100, 150}) << bestQueues("09:30:06").bid(10.00, {300, 200, 100})
        << bestQueues("09:30:09").bid(10.00, {300, 200, 100, 150});
    EXPECT_EQ(figures(verified(day)), "2 of 3 match; bid 10.00: out of order");
}

TEST(QueueVerifier, shouldWantOneStateForBothSidesWhenARecordHasThem)
{
    HandmadeDay day = quiet();
    day << cancelOfBuy(4).shares(200).time("09:30:02") << cancelOfSell(3).shares(500).time("09:30:02")
        << bestQueues("09:30:03").bid(10.00, {300, 200}).ask(10.02, {400});
    EXPECT_EQ(figures(verified(day)), "1 of 2 match; ask 10.02: other state")
        << "each is the book's at a time of its own";
}

TEST(QueueVerifier, shouldMatchEveryRecordWhenOneIsRepeated)
{
    HandmadeDay day = quiet();
    day << bestQueues("09:30:03").bid(10.00, {300, 200}) << bestQueues("09:30:03").bid(10.00, {300, 200});
    EXPECT_EQ(figures(verified(day)), "2 of 2 match");
}

TEST(QueueVerifier, shouldMatchTheOthersWhenOneRecordFitsByChanceMuchLater)
{
    HandmadeDay day = quiet();
    day << bestQueues("09:30:03").bid(10.00, {300, 200}) << bestQueues("09:30:06").bid(10.00, {100})
        << order(6).buy(10.00).shares(50).time("09:30:07") << bestQueues("09:30:09").bid(10.00, {300, 200, 50})
        << order(7).buy(10.00).shares(60).time("09:30:10") << bestQueues("09:30:12").bid(10.00, {300, 200, 50, 60});
    for (const int seq : {1, 4, 6, 7})
        day << cancelOfBuy(seq).time("09:30:13");
    day << order(8).buy(10.00).shares(100).time("09:30:14");
    EXPECT_EQ(figures(verified(day)), "3 of 4 match; bid 10.00: out of order");
}

TEST(QueueVerifier, shouldMissWhenTheBookHasTheQueueAtQuiteAnotherTime)
{
    HandmadeDay day = quiet();
    day << bestQueues("09:30:03").bid(10.00, {300, 200, 100}) << order(6).buy(10.00).shares(100).time("09:30:14");
    EXPECT_EQ(figures(verified(day)), "0 of 1 match; bid 10.00: unexplained") << "more than ten seconds behind it";
}

TEST(QueueVerifier, shouldMatchWhenTheTicksBeforeTheRecordAreDeliveredLate)
{
    HandmadeDay day = quiet();
    day << order(6).buy(10.00).shares(100).time("09:31:00") << order(7).buy(10.00).shares(150).time("09:25:00")
        << bestQueues("09:31:00").bid(10.00, {300, 200, 100, 150}) << cancelOfBuy(7).shares(150).time("09:25:00");
    EXPECT_EQ(figures(verified(day)), "1 of 1 match");
}

TEST(QueueVerifier, shouldPlaceTheRecordByItsGoodSideWhenTheOtherMatchesByChance)
{
    HandmadeDay day = quiet();
    day << order(6).sell(0).kind(6).shares(100).time("09:30:01") << cancelOfBuy(1).shares(300).time("09:30:02")
        << bestQueues("09:30:03").bid(10.00, {200}).ask(10.02, {500, 400, 100})
        << cancelOfSell(6).time("09:30:04").shares(100) << order(7).buy(10.00).shares(50).time("09:30:05")
        << order(8).sell(10.02).shares(100).time("09:30:06");
    EXPECT_EQ(figures(verified(day)), "1 of 2 match; ask 10.02: market orders (order 6 kind 6 100@10.02)")
        << "the asks are the book's a little later";
}

TEST(QueueVerifier, shouldPlaceTheRecordByEitherSideWhenTheStatesOfBothAlternate)
{
    HandmadeDay day = quiet();
    // The book has the bids, then the asks, then the bids once more.
    day << order(6).buy(10.00).shares(50).time("09:30:01") << order(7).sell(10.02).shares(100).time("09:30:01")
        << cancelOfSell(7).shares(100).time("09:30:01") << cancelOfBuy(6).shares(50).time("09:30:01")
        << bestQueues("09:30:03").bid(10.00, {300, 200}).ask(10.02, {500, 400, 100})
        << bestQueues("09:30:06").bid(10.00, {300, 200}).ask(10.02, {500, 400});
    EXPECT_EQ(figures(verified(day)), "3 of 4 match; ask 10.02: other state");
}

TEST(QueueVerifier, shouldNotExplainAMissWhenTheMarketOrderWentBeforeThePreviousRecord)
{
    HandmadeDay day = quiet();
    day << order(6).buy(0).kind(6).shares(800).time("09:30:01") << cancelOfBuy(6).shares(800).time("09:30:02")
        << order(7).sell(10.02).shares(100).time("09:30:02") << bestQueues("09:30:03").ask(10.02, {500, 400, 100})
        << bestQueues("09:30:06").bid(10.00, {300, 200, 800});
    EXPECT_EQ(figures(verified(day)), "1 of 2 match; bid 10.00: unexplained");
}

TEST(QueueVerifier, shouldNotExplainAMissWhenTheBookHasAnOrderMore)
{
    HandmadeDay day = quiet();
    day << order(6).buy(0).kind(6).shares(800).time("09:30:01") << bestQueues("09:30:03").bid(10.00, {300, 800});
    EXPECT_EQ(figures(verified(day)), "0 of 1 match; bid 10.00: unexplained");
}

TEST(QueueVerifier, shouldExplainAMissWhenAMarketOrderRestsAmongTheOthers)
{
    HandmadeDay day = quiet();
    day << order(6).sell(0).kind(6).shares(800).time("09:30:01") << order(7).sell(10.02).shares(100).time("09:30:02")
        << bestQueues("09:30:03").ask(10.02, {500, 400, 800, 100}).bid(10.00, {300, 200})
        << bestQueues("09:30:06").ask(10.02, {500, 400, 100, 800});
    EXPECT_EQ(figures(verified(day)), "1 of 3 match; ask 10.02: market orders (order 6 kind 6 800@10.02); "
                                      "ask 10.02: unexplained")
        << "it stands where its number puts it";
}

TEST(QueueVerifier, shouldExplainAMissWhenAMarketOrderIsTheOnlyOneThere)
{
    HandmadeDay day = quiet();
    day << order(6).sell(0).kind(7).shares(800).time("09:30:01") << fill(1, 6).at(10.00).shares(300).time("09:30:01")
        << fill(4, 6).at(10.00).shares(200).time("09:30:01") << bestQueues("09:30:03").ask(10.00, {300})
        << bestQueues("09:30:06").ask(10.01, {300});
    EXPECT_EQ(figures(verified(day)), "0 of 2 match; ask 10.00: market orders (order 6 kind 7 300@10.00); "
                                      "ask 10.01: unexplained")
        << "it rests where it traded";
}

TEST(QueueVerifier, shouldExplainAMissWhenTheMarketOrderGoesAfterTheNextRecordOfTheOtherSide)
{
    HandmadeDay day = quiet();
    day << bestQueues("09:30:03").bid(10.00, {300, 200}) << order(6).sell(0).kind(6).shares(800).time("09:30:04")
        << order(7).sell(10.02).shares(100).time("09:30:05")
        << bestQueues("09:30:06").ask(10.02, {500, 400, 800, 100}).bid(10.00, {300, 200})
        << cancelOfSell(6).shares(800).time("09:30:07")
        << bestQueues("09:30:09").ask(10.02, {500, 400, 100}).bid(10.00, {300, 200});
    EXPECT_EQ(figures(verified(day)), "4 of 5 match; ask 10.02: market orders (order 6 kind 6 800@10.02)")
        << "the bids alone do not tell when";
}

TEST(QueueVerifier, shouldExplainAMissWhenTheMarketOrderIsTheLastOfFifty)
{
    HandmadeDay day;
    std::vector<int> sizes;
    for (int seq = 1; seq <= 80; ++seq) {
        const bool isMarketKind = seq == 50;
        day << order(seq).sell(10.02).kind(isMarketKind ? 7 : 1).shares(100 * seq).time("09:30:00");
        sizes.push_back(100 * seq);
    }
    sizes.resize(50);
    day << bestQueues("09:30:03").ask(10.02, sizes);
    EXPECT_EQ(figures(verified(day)), "0 of 1 match; ask 10.02: market orders (order 50 kind 7 5000@10.02)");
}

TEST(QueueVerifier, shouldExplainAMissWhenTheBookLostALimitOrder)
{
    HandmadeDay day = quiet();
    day << order(9).buy(10.00).shares(100).time("09:30:01") << order(8).buy(10.00).shares(150).time("09:30:01")
        << bestQueues("09:30:03").bid(10.00, {300, 200, 150, 100});
    EXPECT_EQ(figures(verified(day)), "0 of 1 match; bid 10.00: other orders (order 8 kind 1 150@10.00)")
        << "a number below one that was there makes the book drop the order";
}

TEST(QueueVerifier, shouldTellWhereTheNearestStateDiffersWhenNothingExplainsTheMiss)
{
    HandmadeDay day = quiet();
    day << order(6).buy(10.00).shares(100).time("09:30:01") << bestQueues("09:30:03").bid(10.00, {300, 200, 101})
        << order(7).buy(10.00).shares(150).time("09:30:04");
    const tessi::VerifiedQueues result = verified(day);
    EXPECT_EQ(figures(result), "0 of 1 match; bid 10.00: unexplained");
    EXPECT_EQ(result.misses[0].rightOrders, 2u);
    EXPECT_EQ(result.misses[0].book, (std::vector<__int64>{300, 200}));
}

TEST(QueueVerifier, shouldLeaveOutRowsWhenTheyAreNotOfContinuousTradingOrHoldNoOrder)
{
    HandmadeDay day = quiet();
    day << bestQueues("09:29:57").bid(10.00, {1}).ask(10.02, {1})
        << bestQueues("09:30:03").bid(10.00, {}).ask(10.02, {500, 400}) << bestQueues("12:00:00").bid(10.00, {1})
        << level2("14:57:00").status(18) << bestQueues("14:57:03").bid(10.00, {1});
    EXPECT_EQ(figures(verified(day)), "1 of 1 match");
}

TEST(QueueVerifier, shouldHaveNoRowsWhenTheDayHasNoOrderQueues)
{
    EXPECT_EQ(figures(verified(quiet())), "0 of 0 match");
}

exchange::SimulationOptions options(std::uint64_t seed, int marketOrdersPerMille)
{
    exchange::SimulationOptions options;
    options.seed = seed;
    options.ordersPerDay = 2500;
    options.marketOrdersPerMille = marketOrdersPerMille;
    return options;
}

TEST(QueueVerifier, shouldMatchEveryRowWhenNoMarketOrderRests)
{
    for (const std::uint64_t seed : {1u, 2u, 3u}) {
        const tessi::VerifiedQueues result = tessi::verifyQueues(exchange::simulateDay(options(seed, 0)));
        EXPECT_GT(result.rows, 2000u);
        EXPECT_EQ(result.matches, result.rows) << "seed " << seed;
    }
}

// A side that market orders spoil may by chance look like that of another moment and lead its record there.
TEST(QueueVerifier, shouldExplainNearlyEveryMissWhenMarketOrdersRest)
{
    for (const std::uint64_t seed : {1u, 2u, 3u}) {
        const tessi::VerifiedQueues result = tessi::verifyQueues(exchange::simulateDay(options(seed, 30)));
        EXPECT_GT(result.misses.size(), 10u);
        EXPECT_EQ(result.matches + result.misses.size(), result.rows);
        EXPECT_GE(result.count(QueueFault::MarketOrders) * 50, result.misses.size() * 49) << "seed " << seed;
    }
}

// Where market orders spoil two records in a row, a whole one behind them that fits by chance must not push them aside.
TEST(QueueVerifier, shouldExplainEveryMissWhenTheSimulatedDayIsTheDefaultOne)
{
    const tessi::VerifiedQueues result = tessi::verifyQueues(exchange::simulateDay({}));
    EXPECT_GT(result.misses.size(), 100u);
    EXPECT_EQ(result.count(QueueFault::MarketOrders), result.misses.size());
}

std::vector<std::shared_ptr<quoter::LevelOrderData>> queuesOf(const recording::RecordedDay& day)
{
    std::vector<std::shared_ptr<quoter::LevelOrderData>> records;
    for (const recording::Event& event : day.events) {
        if (event.stream == Stream::Queues)
            records.push_back(std::static_pointer_cast<quoter::LevelOrderData>(event.record));
    }
    return records;
}

// Each record gets the contents of one some ten minutes earlier: whatever matches then does so by chance.
TEST(QueueVerifier, shouldMatchNextToNothingWhenTheContentsOfTheRecordsAreLate)
{
    constexpr std::size_t kLate = 200;
    recording::RecordedDay day = exchange::simulateDay(options(5, 0));
    const auto records = queuesOf(day);
    ASSERT_GT(records.size(), 2 * kLate);
    for (std::size_t i = records.size(); i-- > kLate;) {
        const __int64 timetag = records[i]->timetag;
        *records[i] = *records[i - kLate];
        records[i]->timetag = timetag;
    }
    const tessi::VerifiedQueues all = tessi::verifyQueues(day);
    // The records before them are as they were, and may be of the same time.
    EXPECT_LT(all.matches, 2 * kLate + all.rows / 50) << all.matches << " of " << all.rows;
    EXPECT_EQ(all.count(QueueFault::MarketOrders) + all.count(QueueFault::OtherOrders), 0u);
}

TEST(QueueVerifier, shouldMissOneRowWhenOneSizeOfARealisticDayIsChanged)
{
    recording::RecordedDay day = exchange::simulateDay(options(4, 0));
    const auto records = queuesOf(day);
    ++records.at(records.size() / 2)->bidQueue.back();
    const tessi::VerifiedQueues result = tessi::verifyQueues(day);
    EXPECT_EQ(result.matches, result.rows - 1);
    EXPECT_EQ(result.count(QueueFault::Unknown), 1u);
}

} // namespace
