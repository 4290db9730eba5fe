#include "tests/support/recordeddays.h"
#include "tests/tessi/command.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using namespace tests;

struct Day {
    const char* folder;
    int date, orders, trades, cancels, snapshots, queues;
};

void PrintTo(const Day& day, std::ostream* out)
{
    *out << day.folder;
}

class RecordedDaysTest : public ::testing::TestWithParam<Day> {};

// From the exchange's own files to the rows of the tick list.
TEST_P(RecordedDaysTest, shouldGiveTheSourcesRecordsAndTicksWhenImported)
{
    const Day& day = GetParam();
    const std::filesystem::path source = recordedDay(day.folder);
    if (!std::filesystem::exists(source))
        GTEST_SKIP() << "no recorded day " << source;

    const Scratch scratch;
    const Outcome imported = scratch.tessi("import '" + source.string() + "' day");
    ASSERT_EQ(imported.exitCode, 0) << imported.err;

    const auto summary = nlohmann::json::parse(scratch.tessi("replay day --format json").out);
    EXPECT_EQ(summary.at("trading_day"), day.date);
    EXPECT_EQ(summary.at("records_in_orders"), day.orders);
    EXPECT_EQ(summary.at("trades"), day.trades);
    EXPECT_EQ(summary.at("cancels"), day.cancels);
    EXPECT_EQ(summary.at("records_in_trades"), day.trades + day.cancels);
    EXPECT_EQ(summary.at("records_in_snapshots"), day.snapshots);
    EXPECT_EQ(summary.value("records_in_queues", 0), day.queues);
    EXPECT_EQ(summary.at("traded_shares"), summary.at("day_volume"));
    const auto dayVolume = summary.at("day_volume").get<long long>();

    const Outcome replayed = scratch.tessi("replay day --panel ticks --format json");
    ASSERT_EQ(replayed.exitCode, 0) << replayed.err;
    const auto ticks = nlohmann::json::parse(replayed.out);
    ASSERT_FALSE(ticks.empty());
    long long sum = 0;
    for (const auto& tick : ticks)
        sum += tick.at("volume").get<long long>();
    EXPECT_EQ(ticks.back().at("total").get<long long>(), dayVolume / 100);
    EXPECT_EQ(sum, ticks.back().at("total").get<long long>());
}

// A Shanghai delete is an order record and a cancel; two rows of a queue file, one of each side, are one record.
INSTANTIATE_TEST_SUITE_P(Days, RecordedDaysTest,
                         ::testing::Values(Day{"szse-20171229-300446", 20171229, 2499, 1576, 530, 1877, 1249},
                                           Day{"szse-20170103-000001", 20170103, 23831, 13730, 4472, 4687, 3946},
                                           Day{"sse-20230201-600519", 20230201, 39067 + 15668, 27135, 15668, 5109, 0}),
                         [](const auto& param) { return testName(param.param.folder); });

} // namespace
