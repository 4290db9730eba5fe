#include "apps/tessi/statetimes.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace {

// "1-3": the states from one to before the other that held near the time, in seconds.
std::string around(const std::vector<int>& ticks, int second)
{
    tessi::StateTimes times;
    for (const int tick : ticks)
        times.add(1000LL * tick);
    const tessi::StateRange range = times.around(1000LL * second);
    return fmt::format("{}-{}", range.from, range.to);
}

TEST(StateTimes, shouldGiveTheStatesWithinTenSecondsWhenTicksHaveStamps)
{
    struct Row {
        const char* what;
        std::vector<int> ticks;
        int second;
        const char* states;
    };
    const Row rows[] = {
        {"no tick", {}, 100, "0-1"},
        {"a tick that is too late", {111}, 100, "0-1"},
        {"a tick that is just early enough", {110}, 100, "0-2"},
        {"a state that ended just late enough", {80, 90}, 100, "1-3"},
        {"a state that ended too early", {80, 89}, 100, "2-3"},
        {"a state that lasts", {10, 500}, 100, "1-2"},
        {"all of a second", {50, 100, 100, 100, 200}, 100, "1-5"},
        {"ticks that come late", {60, 100, 20, 21, 130}, 100, "1-5"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(around(row.ticks, row.second), row.states) << row.what;
}

} // namespace
