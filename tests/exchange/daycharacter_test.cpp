#include "exchange/daycharacter.h"

#include "exchange/random.h"
#include "exchange/simulationoptions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace exchange {

namespace {

std::vector<int> drawnSorted(int DayCharacter::*figure, const SimulationOptions& options)
{
    std::vector<int> drawn;
    for (std::uint64_t seed = 0; seed < 2000; ++seed) {
        Random random(seed);
        drawn.push_back(DayCharacter::draw(options, random).*figure);
    }
    std::sort(drawn.begin(), drawn.end());
    return drawn;
}

} // namespace

TEST(DayCharacter, shouldFillItsRangesAndKeepToThemWhenSeedsDiffer)
{
    SimulationOptions options;
    options.dayVolatility = 100;
    struct Row {
        const char* name;
        int DayCharacter::*figure;
        int least, usual, most, near;
    };
    const Row rows[] = {
        {"orders", &DayCharacter::orders, 24'250, 25'000, 25'750, 30},
        {"volatility", &DayCharacter::volatility, 50, 100, 200, 5},
        {"takers", &DayCharacter::takers, 290, 350, 410, 5},
    };
    for (const Row& row : rows) {
        const std::vector<int> drawn = drawnSorted(row.figure, options);
        EXPECT_GE(drawn.front(), row.least) << row.name;
        EXPECT_LE(drawn.front(), row.least + row.near) << row.name;
        EXPECT_NEAR(drawn[drawn.size() / 2], row.usual, 2 * row.near) << row.name;
        EXPECT_GE(drawn.back(), row.most - row.near) << row.name;
        EXPECT_LE(drawn.back(), row.most) << row.name;
    }
}

TEST(DayCharacter, shouldLeaveSmallNumbersAsTheyAreWhenThereIsNothingToVary)
{
    SimulationOptions options;
    options.ordersPerDay = 1;
    options.dayVolatility = 0;
    EXPECT_EQ(drawnSorted(&DayCharacter::orders, options), std::vector<int>(2000, 1));
    EXPECT_EQ(drawnSorted(&DayCharacter::volatility, options), std::vector<int>(2000, 0));
}

TEST(DayCharacter, shouldStayInRangeWhenTheOptionsAreLargest)
{
    SimulationOptions options;
    options.ordersPerDay = 1'000'000;
    options.dayVolatility = 200;
    EXPECT_LE(drawnSorted(&DayCharacter::orders, options).back(), 1'030'000);
    EXPECT_LE(drawnSorted(&DayCharacter::volatility, options).back(), 400);
}

} // namespace exchange
