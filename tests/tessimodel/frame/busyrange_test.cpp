#include "indexui/tessimodel/detail/busyrange.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Range = TC::detail::BusyRange<int>;

TEST(BusyRange, shouldCoverNothingWhenNew)
{
    Range range;
    EXPECT_EQ(range.slot(1), nullptr);
    EXPECT_EQ(range.slot(std::numeric_limits<int>::min()), nullptr);
}

TEST(BusyRange, shouldKeepValuesWhenItGrowsBothWays)
{
    Range range;
    ASSERT_TRUE(range.reach(10'000));
    *range.slot(10'000) = 7;
    ASSERT_TRUE(range.reach(5'000));
    *range.slot(5'000) = 5;
    ASSERT_TRUE(range.reach(20'000));
    EXPECT_EQ(*range.slot(10'000), 7);
    EXPECT_EQ(*range.slot(5'000), 5);
    EXPECT_EQ(*range.slot(20'000), 0);
}

TEST(BusyRange, shouldStayAsItIsWhenKeyIsCovered)
{
    Range range;
    range.reach(1'000);
    EXPECT_FALSE(range.reach(1'000));
    EXPECT_FALSE(range.reach(1'001));
}

TEST(BusyRange, shouldCoverNoMarketOrdersWhenAsked)
{
    Range range;
    EXPECT_FALSE(range.reach(0));
    EXPECT_FALSE(range.reach(-7));
    range.reach(3);
    EXPECT_NE(range.slot(1), nullptr);
    EXPECT_EQ(range.slot(0), nullptr);
    EXPECT_EQ(range.slot(-7), nullptr);
}

TEST(BusyRange, shouldNeverGetWiderThanItMayWhenKeysAreFarApart)
{
    Range range;
    range.reach(100'000);
    int lowest = 100'000;
    while (range.slot(lowest - 1))
        --lowest;
    const int highest = lowest + static_cast<int>(Range::kWidest) - 1;
    EXPECT_FALSE(range.reach(highest + 1));
    EXPECT_FALSE(range.reach(std::numeric_limits<int>::max()));
    ASSERT_TRUE(range.reach(highest));
    EXPECT_NE(range.slot(lowest), nullptr);
    EXPECT_EQ(range.slot(lowest - 1), nullptr);
    EXPECT_EQ(range.slot(highest + 1), nullptr);
}

TEST(BusyRange, shouldReachTheTopOfAllKeysWhenItBeginsThere)
{
    constexpr int kTop = std::numeric_limits<int>::max();
    Range range;
    ASSERT_TRUE(range.reach(kTop));
    EXPECT_NE(range.slot(kTop), nullptr);
    EXPECT_EQ(range.slot(std::numeric_limits<int>::min()), nullptr);
}

TEST(BusyRange, shouldBeAsNewWhenSwappedWithANewOne)
{
    Range range;
    range.reach(500);
    Range other;
    range.swap(other);
    EXPECT_EQ(range.slot(500), nullptr);
    EXPECT_NE(other.slot(500), nullptr);
}

TEST(BusyRange, shouldMoveWhenManyKeysLieBeyondIt)
{
    Range range;
    range.reach(10'000'000);
    int tries = 0;
    while (!range.reach(1'000) && tries < 1'000)
        ++tries;
    EXPECT_GT(tries, 10) << "a few stray prices do not move it";
    EXPECT_NE(range.slot(1'000), nullptr);
    EXPECT_EQ(range.slot(10'000'000), nullptr);
}

} // namespace
