#include "exchange/random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

namespace exchange {

// The first numbers that the published definitions of the two generators give for seed 0.
TEST(Random, shouldGiveTheNumbersOfItsDefinitionWhenSeeded)
{
    Random random(0);
    EXPECT_EQ(random.next(), 0x99ec5f36cb75f2b4U);
    EXPECT_EQ(random.next(), 0xbf6e1f784956452aU);
    EXPECT_EQ(random.next(), 0x1a5f849d4933e6e0U);
}

TEST(Random, shouldGiveOtherNumbersWhenTheSeedIsItsNeighbour)
{
    Random one(1);
    Random two(2);
    EXPECT_NE(one.next(), two.next());
}

TEST(Random, shouldSpreadEvenlyWhenDrawingBelow)
{
    Random random(7);
    std::array<int, 10> counts{};
    for (int i = 0; i < 100'000; ++i)
        ++counts.at(static_cast<std::size_t>(random.below(10)));
    for (const int count : counts)
        EXPECT_NEAR(count, 10'000, 500);
    EXPECT_EQ(random.below(1), 0);
}

TEST(Random, shouldHaveTheGivenDeviationWhenNormal)
{
    Random random(7);
    double sum = 0;
    double squares = 0;
    constexpr int kDraws = 100'000;
    for (int i = 0; i < kDraws; ++i) {
        const double drawn = random.normal(1000);
        EXPECT_LE(std::abs(drawn), 6000);
        sum += drawn;
        squares += drawn * drawn;
    }
    EXPECT_NEAR(sum / kDraws, 0, 15);
    EXPECT_NEAR(squares / kDraws, 1e6, 2e4);
    EXPECT_EQ(random.normal(0), 0);
}

TEST(Random, shouldHaveTheGivenMeanAndMedianWhenExponential)
{
    Random random(7);
    std::vector<int> drawn(100'000);
    double sum = 0;
    for (int& each : drawn) {
        each = random.exponential(10'000);
        sum += each;
    }
    std::sort(drawn.begin(), drawn.end());
    EXPECT_GE(drawn.front(), 0);
    EXPECT_NEAR(sum / 100'000, 10'000, 150);
    EXPECT_NEAR(drawn[50'000], 6'931, 150);
    EXPECT_NEAR(drawn[90'000], 23'026, 500);
}

TEST(Random, shouldHaveTheGivenMedianAndSpreadWhenLogNormal)
{
    Random random(7);
    std::vector<__int64> drawn(100'000);
    for (__int64& each : drawn)
        each = random.logNormal(1000, 512);
    std::sort(drawn.begin(), drawn.end());
    EXPECT_NEAR(static_cast<double>(drawn[50'000]), 1000, 30);
    EXPECT_NEAR(static_cast<double>(drawn[84'134]), 4000, 150); // one deviation up: two doublings
    EXPECT_NEAR(static_cast<double>(drawn[15'866]), 250, 15);
}

TEST(Random, shouldStayInRangeWhenTheArgumentsAreAtTheirBounds)
{
    Random random(7);
    for (int i = 0; i < 100'000; ++i) {
        EXPECT_GE(random.logNormal(1'000'000, 1000), 0);
        EXPECT_GE(random.exponential(30'000'000), 0);
    }
}

} // namespace exchange
