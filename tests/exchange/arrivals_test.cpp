#include "exchange/arrivals.h"

#include "exchange/random.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace exchange {

TEST(Arrivals, shouldGiveExactlyTheAskedNumberInOrderWhenDrawn)
{
    for (const int count : {1, 2, 7, 100, 25'000}) {
        Random random(3);
        const std::vector<DayTime> times = drawArrivals(count, random);
        EXPECT_EQ(times.size(), static_cast<std::size_t>(count));
        EXPECT_TRUE(std::is_sorted(times.begin(), times.end()));
        EXPECT_TRUE(std::all_of(times.begin(), times.end(), ordersAllowed));
        EXPECT_TRUE(std::all_of(times.begin(), times.end(), [](DayTime time) { return time % 10 == 0; }));
    }
}

TEST(Arrivals, shouldRushInWhenASessionBegins)
{
    Random random(3);
    const std::vector<DayTime> times = drawArrivals(25'000, random);
    const auto within = [&times](DayTime from, DayTime to) {
        return std::count_if(times.begin(), times.end(), [=](DayTime time) { return time >= from && time < to; });
    };
    const DayTime second = clockTime(0, 0, 1);
    for (const DayTime begin : {kOpeningAuction, kMorning, kAfternoon})
        EXPECT_GT(within(begin, begin + second), 4 * within(begin + 30 * second, begin + 31 * second)) << begin;
}

} // namespace exchange
