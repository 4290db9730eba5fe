#include "apps/tessi/bookverifier.h"

#include "exchange/instrumentclass.h"
#include "exchange/simulator.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <algorithm>

namespace {

using namespace tests;
using recording::Stream;
using Side = std::vector<std::pair<double, __int64>>;

// A snapshot of continuous trading in shares, sides from the best level on.
std::shared_ptr<quoter::QuoterDepthData> shown(const std::string& clock, __int64 dayVolume, const Side& bids,
                                               const Side& asks)
{
    std::shared_ptr<quoter::QuoterDepthData> record = level2(clock).volume(dayVolume);
    for (std::size_t i = 0; i < bids.size(); ++i)
        std::tie(record->bidPrice[i], record->bidVolume[i]) = bids[i];
    for (std::size_t i = 0; i < asks.size(); ++i)
        std::tie(record->askPrice[i], record->askVolume[i]) = asks[i];
    return record;
}

tessi::VerifiedDay verified(const HandmadeDay& day)
{
    return tessi::verifyDay(day.recorded());
}

std::string figures(const tessi::VerifiedDay& day)
{
    return fmt::format("{} of {} match, {} of {} corrected", day.rawMatches, day.snapshots, day.correctedMatches,
                       day.newer);
}

// "order 3 kind 7 500@10.02", or "nothing"
std::string explanation(const tessi::Miss& miss)
{
    std::string text;
    for (const tessi::RestingOrder& order : miss.explainedBy)
        text += fmt::format("{}order {} kind {} {}@{:.2f}", text.empty() ? "" : ", ", order.seq, order.kind,
                            order.shares, order.price);
    return text.empty() ? "nothing" : text;
}

// 300 shares bid at 10.00, 500 offered at 10.02.
HandmadeDay quiet()
{
    HandmadeDay day;
    day << order(1).buy(10.00).shares(300).time("09:30:00.100")
        << order(2).sell(10.02).shares(500).time("09:30:00.200");
    return day;
}

TEST(BookVerifier, shouldMatchByStateWhenSnapshotIsOlderThanItsStamp)
{
    HandmadeDay day = quiet();
    day << order(3).buy(10.01).shares(200).time("09:30:02.500") << shown("09:30:03", 0, {{10.00, 300}}, {{10.02, 500}});
    EXPECT_EQ(figures(verified(day)), "1 of 1 match, 1 of 1 corrected");
}

TEST(BookVerifier, shouldMatchByStateWhenSnapshotKnowsALaterTick)
{
    HandmadeDay day = quiet();
    day << shown("09:30:03", 0, {{10.01, 200}, {10.00, 300}}, {{10.02, 500}})
        << order(3).buy(10.01).shares(200).time("09:30:03.010");
    EXPECT_EQ(figures(verified(day)), "1 of 1 match, 0 of 0 corrected") << "the ticks are newer than the stamp";
}

TEST(BookVerifier, shouldTellTheSameLevelsApartWhenTheDayVolumeDiffers)
{
    HandmadeDay day = quiet();
    day << order(3).sell(10.00).shares(100).time("09:30:01") << fill(1, 3).at(10.00).shares(100).time("09:30:01")
        << order(4).buy(10.00).shares(100).time("09:30:02") << shown("09:30:03", 100, {{10.00, 300}}, {{10.02, 500}})
        << shown("09:30:06", 200, {{10.00, 300}}, {{10.02, 500}});
    const tessi::VerifiedDay result = verified(day);
    EXPECT_EQ(result.rawMatches, 1u);
    ASSERT_EQ(result.misses.size(), 1u);
    EXPECT_EQ(result.misses[0].timetag, timeOf("09:30:06"));
    EXPECT_FALSE(result.misses[0].hasVolume);
}

TEST(BookVerifier, shouldNotGoBackWhenSnapshotShowsAStateThatHasPassed)
{
    HandmadeDay day = quiet();
    day << order(3).buy(10.01).shares(200).time("09:30:02")
        << shown("09:30:03", 0, {{10.01, 200}, {10.00, 300}}, {{10.02, 500}})
        << shown("09:30:06", 0, {{10.00, 300}}, {{10.02, 500}});
    EXPECT_EQ(figures(verified(day)), "1 of 2 match, 2 of 2 corrected");
}

TEST(BookVerifier, shouldMissWhenTheBookHasALevelThatTheSnapshotLacks)
{
    HandmadeDay day = quiet();
    day << order(3).buy(9.99).shares(200).time("09:30:02") << shown("09:30:03", 0, {{10.00, 300}}, {{10.02, 501}})
        << shown("09:30:06", 0, {{9.99, 200}}, {{10.02, 500}});
    EXPECT_EQ(figures(verified(day)), "0 of 2 match, 2 of 2 corrected");
}

TEST(BookVerifier, shouldExplainAMissWhenAMarketOrderRests)
{
    HandmadeDay day = quiet();
    day << order(3).sell(0).kind(7).shares(800).time("09:30:01") << fill(1, 3).at(10.00).shares(300).time("09:30:01")
        << shown("09:30:03", 300, {}, {{10.00, 500}, {10.02, 500}});
    const tessi::VerifiedDay result = verified(day);
    EXPECT_EQ(figures(result), "0 of 1 match, 1 of 1 corrected");
    ASSERT_EQ(result.misses.size(), 1u);
    EXPECT_EQ(explanation(result.misses[0]), "order 3 kind 7 500@10.00");
    EXPECT_EQ(result.missesByMarketOrders(), 1u);
}

TEST(BookVerifier, shouldExplainNothingWhenTheMarketOrderTradedAtAnotherPrice)
{
    HandmadeDay day = quiet();
    day << order(3).sell(0).kind(7).shares(800).time("09:30:01") << fill(1, 3).at(10.00).shares(300).time("09:30:01")
        << shown("09:30:03", 300, {}, {{10.01, 500}, {10.02, 500}});
    const tessi::VerifiedDay result = verified(day);
    ASSERT_EQ(result.misses.size(), 1u);
    EXPECT_EQ(explanation(result.misses[0]), "nothing");
}

TEST(BookVerifier, shouldExplainEachPriceByAsFewOrdersAsWillDoWhenMarketOrdersRest)
{
    HandmadeDay day = quiet();
    day << order(3).buy(0).kind(6).shares(200).time("09:30:01") << order(4).buy(0).kind(6).shares(300).time("09:30:01")
        << order(5).buy(0).kind(6).shares(500).time("09:30:01")
        << shown("09:30:03", 0, {{10.00, 800}, {9.99, 500}}, {{10.02, 500}});
    const tessi::VerifiedDay result = verified(day);
    ASSERT_EQ(result.misses.size(), 1u);
    EXPECT_EQ(explanation(result.misses[0]),
              "order 5 kind 6 500@9.99, order 3 kind 6 200@10.00, order 4 kind 6 300@10.00");
}

TEST(BookVerifier, shouldExplainAPriceWhenManyMarketOrdersRestThere)
{
    HandmadeDay day = quiet();
    for (const int seq : {3, 4, 5, 6, 7})
        day << order(seq).buy(0).kind(6).shares(100 << seq).time("09:30:01");
    day << shown("09:30:03", 0, {{10.00, 300 + 800 + 1600 + 3200 + 6400 + 12800}}, {{10.02, 500}});
    const tessi::VerifiedDay result = verified(day);
    ASSERT_EQ(result.misses.size(), 1u);
    EXPECT_EQ(result.misses[0].explainedBy.size(), 5u);
}

TEST(BookVerifier, shouldExplainWithTheOrderThatTradedThereWhenOthersFitAsWell)
{
    HandmadeDay day = quiet();
    day << order(3).sell(0).kind(6).shares(200).time("09:30:01")
        << order(4).sell(0).kind(7).shares(500).time("09:30:02") << fill(1, 4).at(10.00).shares(300).time("09:30:02")
        << shown("09:30:03", 300, {}, {{10.00, 200}, {10.01, 200}, {10.02, 500}});
    const tessi::VerifiedDay result = verified(day);
    ASSERT_EQ(result.misses.size(), 1u);
    EXPECT_EQ(explanation(result.misses[0]), "order 4 kind 7 200@10.00, order 3 kind 6 200@10.01");
}

TEST(BookVerifier, shouldExplainAMissWhenTheBookLostALimitOrder)
{
    HandmadeDay day = quiet();
    day << order(5).buy(9.99).shares(400).time("09:30:01") << order(4).buy(9.98).shares(700).time("09:30:01")
        << shown("09:30:03", 0, {{10.00, 300}, {9.99, 400}, {9.98, 700}}, {{10.02, 500}});
    const tessi::VerifiedDay result = verified(day);
    ASSERT_EQ(result.misses.size(), 1u) << "a number below one that was there makes the book drop the order";
    EXPECT_EQ(explanation(result.misses[0]), "order 4 kind 1 700@9.98");
    EXPECT_EQ(result.missesByOtherOrders(), 1u);
}

TEST(BookVerifier, shouldExplainNothingWhenTheSharesAreNotExactlyAnOrders)
{
    HandmadeDay day = quiet();
    day << order(3).buy(0).kind(6).shares(200).time("09:30:01") << shown("09:30:03", 0, {{10.00, 501}}, {{10.02, 500}})
        << shown("09:30:06", 0, {{10.00, 200}}, {{10.02, 500}});
    const tessi::VerifiedDay result = verified(day);
    ASSERT_EQ(result.misses.size(), 2u);
    EXPECT_EQ(explanation(result.misses[0]), "nothing");
    EXPECT_EQ(explanation(result.misses[1]), "nothing") << "the book has more than the snapshot";
    EXPECT_EQ(result.missesUnexplained(), 2u);
}

TEST(BookVerifier, shouldShowTheNearestStateWhenNothingExplainsTheMiss)
{
    HandmadeDay day = quiet();
    day << order(3).sell(10.01).shares(900).time("09:30:02") << order(4).buy(9.90).shares(100).time("09:30:02")
        << shown("09:30:03", 0, {{10.00, 300}}, {{10.01, 901}, {10.02, 500}});
    const tessi::VerifiedDay result = verified(day);
    ASSERT_EQ(result.misses.size(), 1u);
    const tessi::BestLevels& book = result.misses[0].book;
    ASSERT_EQ(book.asks.size(), 2u);
    EXPECT_EQ(book.asks[0].volume, 900);
    EXPECT_EQ(book.bids.size(), 1u) << "the order behind it takes the book further away";
}

TEST(BookVerifier, shouldCountTradesWhenTheyNeverMeetTheirOrder)
{
    HandmadeDay day = quiet();
    day << fill(1, 9).at(10.00).shares(100).time("09:30:01") << fill(-7, 2).at(10.02).shares(100).time("09:30:01");
    const tessi::VerifiedDay result = verified(day);
    EXPECT_EQ(result.parked, 1u) << "order 9 may still come";
    EXPECT_EQ(result.forgotten, 1) << "an order below 1 will not";
}

TEST(BookVerifier, shouldLeaveOutSnapshotsWhenTheyAreNotOfContinuousTrading)
{
    HandmadeDay day = quiet();
    day << shown("09:29:57", 0, {{10.00, 300}}, {{10.02, 500}}) << shown("09:30:03", 0, {{10.00, 300}}, {{10.00, 300}})
        << shown("09:30:06", 0, {}, {});
    EXPECT_EQ(figures(verified(day)), "0 of 0 match, 0 of 0 corrected");
}

TEST(BookVerifier, shouldMatchEverySnapshotWhenNoMarketOrderRests)
{
    exchange::SimulationOptions options;
    options.ordersPerDay = 2500;
    options.marketOrdersPerMille = 0;
    const tessi::VerifiedDay result = tessi::verifyDay(exchange::simulateDay(options));
    EXPECT_GT(result.snapshots, 1000u);
    EXPECT_EQ(result.rawMatches, result.snapshots);
    EXPECT_EQ(result.newer, result.snapshots) << "a simulated snapshot stands behind older ticks only";
    EXPECT_EQ(result.correctedMatches, result.newer);
    EXPECT_EQ(result.parked, 0u);
    EXPECT_EQ(result.forgotten, 0);
}

TEST(BookVerifier, shouldAgreeWithTheSnapshotsWhenTheDayIsOfAnyClassWithTicks)
{
    for (const exchange::InstrumentClass& row : exchange::instrumentClasses()) {
        exchange::SimulationOptions options = exchange::SimulationOptions::of(row.name);
        options.ordersPerDay = 800;
        const recording::RecordedDay day = exchange::simulateDay(options);
        if (std::find(day.streams.begin(), day.streams.end(), Stream::Orders) == day.streams.end())
            continue;
        const tessi::VerifiedDay result = tessi::verifyDay(day);
        EXPECT_GT(result.snapshots, 300u) << row.name;
        EXPECT_EQ(result.rawMatches + result.missesByMarketOrders(), result.snapshots) << row.name;
        EXPECT_EQ(result.correctedMatches, result.newer) << row.name;
        if (row.market == "SH") { // whose market orders look like limit orders
            EXPECT_EQ(result.rawMatches, result.snapshots) << row.name;
        }
    }
}

TEST(BookVerifier, shouldExplainEveryMissWhenMarketOrdersRest)
{
    for (const std::uint64_t seed : {1u, 2u, 3u}) {
        exchange::SimulationOptions options;
        options.seed = seed;
        options.ordersPerDay = 2500;
        options.marketOrdersPerMille = 30;
        const tessi::VerifiedDay result = tessi::verifyDay(exchange::simulateDay(options));
        EXPECT_GT(result.misses.size(), 10u);
        EXPECT_EQ(result.rawMatches + result.misses.size(), result.snapshots);
        EXPECT_EQ(result.missesByMarketOrders(), result.misses.size());
        EXPECT_EQ(result.correctedMatches, result.newer);
    }
}

// Whatever a book that lost ticks shows, a newer snapshot puts the read right.
TEST(BookVerifier, shouldCorrectEveryReadWhenTicksWereDropped)
{
    for (const std::uint64_t seed : {4u, 5u}) {
        exchange::SimulationOptions options;
        options.seed = seed;
        options.ordersPerDay = 2500;
        recording::RecordedDay day = exchange::simulateDay(options);
        int ticks = 0;
        std::erase_if(day.events, [&ticks](const recording::Event& event) {
            const bool isTick = event.stream == Stream::Orders || event.stream == Stream::Trades;
            return isTick && ++ticks % 40 == 0;
        });
        const tessi::VerifiedDay result = tessi::verifyDay(day);
        EXPECT_LT(result.rawMatches, result.snapshots / 2);
        EXPECT_GT(result.newer, 1000u);
        EXPECT_EQ(result.correctedMatches, result.newer);
    }
}

} // namespace
