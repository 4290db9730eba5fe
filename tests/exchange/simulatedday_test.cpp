// Whole simulated days, held against a replay that knows nothing of the simulator.

#include "exchange/simulator.h"

#include "quoter/levelthousanddata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"
#include "tests/exchange/daychecker.h"
#include "tests/exchange/dayfingerprint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <set>
#include <stdexcept>
#include <tuple>

namespace exchange {

namespace {

using recording::Event;
using recording::RecordedDay;
using recording::Stream;

// Days that differ in more than their chance: quiet and wild, cheap and dear, busy and empty.
SimulationOptions optionsOf(int seed)
{
    SimulationOptions options;
    options.seed = static_cast<std::uint64_t>(seed);
    options.ordersPerDay = std::array{2500, 4000, 1200, 3000, 300}.at(static_cast<std::size_t>(seed % 5));
    options.lastClose = std::array{42.50, 9.10, 3.33, 118.00}.at(static_cast<std::size_t>(seed % 4));
    options.dayVolatility = std::array{12, 40, 150}.at(static_cast<std::size_t>(seed % 3));
    options.marketOrdersPerMille = seed % 2 == 0 ? 8 : 120;
    return options;
}

class SimulatedDay : public ::testing::TestWithParam<int> {};

} // namespace

TEST_P(SimulatedDay, shouldAgreeWithAPlainReplayOfItsTicksWhenASnapshotIsTaken)
{
    const RecordedDay day = simulateDay(optionsOf(GetParam()));
    checkDay(day);
}

TEST_P(SimulatedDay, shouldShowTheVolumeOfAllTradesWhenTheDayEnds)
{
    const RecordedDay day = simulateDay(optionsOf(GetParam()));
    __int64 traded = 0;
    const quoter::QuoterDepthData* last = nullptr;
    for (const Event& event : day.events) {
        if (const auto* trade = dynamic_cast<const quoter::TransactionData*>(event.record.get()))
            traded += trade->transKind == 3 ? 0 : trade->volume;
        if (event.stream == Stream::Snapshots)
            last = dynamic_cast<const quoter::QuoterDepthData*>(event.record.get());
    }
    ASSERT_TRUE(last);
    EXPECT_GT(traded, 0);
    EXPECT_EQ(last->volume, traded);
    EXPECT_EQ(last->tradeStatus, 15);
    EXPECT_EQ(last->timetag - day.events.front().record->timetag, 6 * 3'600'000 + 3000) << "09:00 to 15:00:03";
    EXPECT_EQ(day.events.back().stream, Stream::Aux);
}

TEST_P(SimulatedDay, shouldBeTheSameOnlyWhenTheSeedIsTheSame)
{
    SimulationOptions options = optionsOf(GetParam());
    const auto first = dayFingerprint(simulateDay(options));
    EXPECT_EQ(dayFingerprint(simulateDay(options)), first);
    options.seed += 1000;
    EXPECT_NE(dayFingerprint(simulateDay(options)), first);
}

INSTANTIATE_TEST_SUITE_P(Seeds, SimulatedDay, ::testing::Range(1, 21));

TEST(DefaultDay, shouldAgreeWithAPlainReplayOfItsTicksWhenASnapshotIsTaken)
{
    const RecordedDay day = simulateDay({});
    checkDay(day);
}

// The same bytes with every compiler, optimisation and sanitizer. The number is set anew only when the simulated day
// was meant to change, and then the changelog has a line that says so; any other difference is a fault.
TEST(DefaultDay, shouldKeepItsFingerprintWhenTheBuildDiffers)
{
    EXPECT_EQ(dayFingerprint(simulateDay({})), 1980119005133581987U);
}

// A price at which a tenth of it has ticks enough.
TEST(DearDay, shouldFillAThousandLevelsOfASideWhenThePriceIsHigh)
{
    for (const std::uint64_t seed : {1U, 2U, 3U}) {
        SimulationOptions options;
        options.seed = seed;
        options.lastClose = 500.00;
        options.ordersPerDay = 20'000;
        std::size_t full = 0;
        std::size_t both = 0;
        std::size_t most = 0;
        for (const Event& event : simulateDay(options).events) {
            const auto* const record = dynamic_cast<const quoter::LevelThousandData*>(event.record.get());
            if (!record)
                continue;
            const auto [fewer, more] = std::minmax({record->bidPrices.size(), record->askPrices.size()});
            full += more == 1000 ? 1U : 0U;
            both += fewer == 1000 ? 1U : 0U;
            most = std::max(most, more);
        }
        EXPECT_EQ(most, 1000U) << "seed " << seed;
        EXPECT_GT(full, 100U) << "seed " << seed;
        if (seed == 1) {
            EXPECT_GT(both, 100U) << "other days drift away from one of their limits";
        }
    }
}

TEST(SmallDay, shouldHoldTogetherWhenHardlyAnyoneTrades)
{
    for (int orders = 1; orders <= 40; ++orders) {
        SimulationOptions options;
        options.ordersPerDay = orders;
        options.marketOrdersPerMille = 500;
        options.lastClose = 1.00;
        options.dayVolatility = 200;
        const RecordedDay day = simulateDay(options);
        checkDay(day);
        EXPECT_GE(std::count_if(day.events.begin(), day.events.end(),
                                [](const Event& event) { return event.stream == Stream::Snapshots; }),
                  8)
            << "one for each phase";
    }
}

TEST(SimulatedInstrument, shouldDescribeTheStockWhenTheOptionsNameIt)
{
    SimulationOptions options;
    options.ordersPerDay = 1;
    options.code = "009123";
    options.name = "样本";
    options.lastClose = 9.10;
    options.tradingDay = 20240229;
    const RecordedDay day = simulateDay(options);
    EXPECT_EQ(day.tradingDay, 20240229);
    EXPECT_EQ(day.streams.size(), 8U);
    EXPECT_EQ(day.instrument.market, "SZ");
    EXPECT_EQ(day.instrument.code, "009123");
    EXPECT_EQ(day.instrument.name, "样本");
    EXPECT_EQ(day.instrument.lastClose, 9.10);
    EXPECT_EQ(day.instrument.upStopPrice, 10.01);
    EXPECT_EQ(day.instrument.downStopPrice, 8.19);
    EXPECT_EQ(day.instrument.priceTick, 0.01);
    EXPECT_EQ(day.instrument.types, std::set<int>{100003});
    EXPECT_EQ(day.instrument.doubleFields.at(3015), 2.4e9);
    EXPECT_EQ(day.instrument.doubleFields.at(3016), 1.8e9);
}

TEST(SimulationOptions, shouldGiveADayWhenTheyLieAtTheEdgeOfTheirRange)
{
    const auto highestSeed = std::numeric_limits<std::uint64_t>::max();
    for (const auto& [seed, date, code] :
         {std::tuple(std::uint64_t{0}, 19700102, "0"), std::tuple(highestSeed, 20380118, "azAZ09azAZ09")}) {
        SimulationOptions options;
        options.seed = seed;
        options.tradingDay = date;
        options.code = code;
        options.ordersPerDay = 200;
        const RecordedDay day = simulateDay(options);
        checkDay(day);
        EXPECT_EQ(day.instrument.code, code);
        EXPECT_GT(day.events.front().record->timetag, 0);
    }
}

TEST(SimulationProgress, shouldRiseToTheEndWhenADayIsSimulated)
{
    SimulationOptions options;
    options.ordersPerDay = 10;
    int last = -1;
    int calls = 0;
    int total = 0;
    simulateDay(options, [&](int done, int of) {
        EXPECT_GT(done, last);
        last = done;
        total = of;
        ++calls;
    });
    EXPECT_EQ(last, total);
    EXPECT_GT(calls, 300);
}

TEST(SimulationOptions, shouldNameTheOptionWhenItIsOutOfRange)
{
    struct Row {
        const char* name;
        void (*spoil)(SimulationOptions&);
    };
    const Row rows[] = {
        {"code must be 1 to 12", [](SimulationOptions& options) { options.code = ""; }},
        {"code must be 1 to 12", [](SimulationOptions& options) { options.code = "0090010090010"; }},
        {"code must be 1 to 12", [](SimulationOptions& options) { options.code = "009/01"; }},
        {"code must be 1 to 12", [](SimulationOptions& options) { options.code = "009 01"; }},
        {"code must be 1 to 12", [](SimulationOptions& options) { options.code = "样"; }},
        {"code must be 1 to 12", [](SimulationOptions& options) { options.code = std::string("00\0001", 4); }},
        {"tradingDay must be a calendar date from 19700102 to 20380118",
         [](SimulationOptions& options) { options.tradingDay = 20240230; }},
        {"tradingDay", [](SimulationOptions& options) { options.tradingDay = 19700101; }},
        {"tradingDay", [](SimulationOptions& options) { options.tradingDay = 20380119; }},
        {"tradingDay", [](SimulationOptions& options) { options.tradingDay = 0; }},
        {"tradingDay", [](SimulationOptions& options) { options.tradingDay = -20240315; }},
        {"tradingDay", [](SimulationOptions& options) { options.tradingDay = std::numeric_limits<int>::max(); }},
        {"lastClose", [](SimulationOptions& options) { options.lastClose = 0.99; }},
        {"lastClose", [](SimulationOptions& options) { options.lastClose = 5000.01; }},
        {"lastClose", [](SimulationOptions& options) { options.lastClose = 10.005; }},
        {"lastClose", [](SimulationOptions& options) { options.lastClose = std::nan(""); }},
        {"totalShares", [](SimulationOptions& options) { options.totalShares = 0; }},
        {"floatShares", [](SimulationOptions& options) { options.floatShares = options.totalShares + 1; }},
        {"ordersPerDay", [](SimulationOptions& options) { options.ordersPerDay = 0; }},
        {"ordersPerDay", [](SimulationOptions& options) { options.ordersPerDay = 1'000'001; }},
        {"medianHands", [](SimulationOptions& options) { options.medianHands = 0; }},
        {"dayVolatility", [](SimulationOptions& options) { options.dayVolatility = 201; }},
        {"marketOrdersPerMille", [](SimulationOptions& options) { options.marketOrdersPerMille = -1; }},
    };
    for (const Row& row : rows) {
        SimulationOptions options;
        row.spoil(options);
        try {
            simulateDay(options);
            ADD_FAILURE() << row.name << " was accepted";
        } catch (const std::invalid_argument& error) {
            EXPECT_NE(std::string(error.what()).find(row.name), std::string::npos) << error.what();
        }
    }
}

} // namespace exchange
