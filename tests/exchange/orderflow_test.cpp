// What a day's character makes of its orders. The figures are sums over many draws, and the bounds are wide.

#include "exchange/orderflow.h"

#include "exchange/daycharacter.h"
#include "exchange/instrumentclass.h"
#include "exchange/simulationoptions.h"
#include "tests/exchange/builders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace exchange {

namespace {

constexpr PriceBand kBand = PriceBand::around(4250);

// Of 10,000 orders of a day on which the value stays, those that trade with a narrow book.
int ordersThatTake(int takers)
{
    OrderBook book(kBand);
    book.enter(order(1).buy(4249).shares(100));
    book.enter(order(2).sell(4251).shares(100));
    SimulationOptions options;
    options.marketOrdersPerMille = 0;
    OrderFlow flow(options, instrumentClass("stock"), DayCharacter{10'000, 0, takers}, kBand, Random(1));
    int taking = 0;
    for (int i = 0; i < 10'000; ++i) {
        const Order drawn = flow.draw(book, Phase::Continuous);
        taking += drawn.side == Side::Buy ? drawn.price >= 4251 : drawn.price <= 4249;
    }
    return taking;
}

// How far the orders of a day's end are off the last close, as the mean of many days.
int meanMove(int volatility)
{
    constexpr int kDays = 60;
    const OrderBook book(kBand);
    int sum = 0;
    for (int day = 0; day < kDays; ++day) {
        OrderFlow flow({}, instrumentClass("stock"), DayCharacter{1000, volatility, 350}, kBand,
                       Random(static_cast<std::uint64_t>(day)));
        std::vector<Ticks> prices;
        for (int i = 0; i < 1000; ++i)
            prices.push_back(flow.draw(book, Phase::OpeningAuction).price);
        std::nth_element(prices.begin() + 800, prices.begin() + 900, prices.end());
        sum += std::abs(prices[900] - kBand.lastClose);
    }
    return sum / kDays;
}

} // namespace

TEST(OrderFlow, shouldTradeMoreWhenTheDayHasMoreTakers)
{
    EXPECT_NEAR(ordersThatTake(290), 2900, 150);
    EXPECT_NEAR(ordersThatTake(410), 4100, 150);
}

TEST(OrderFlow, shouldMoveTheValueFurtherWhenTheDayIsVolatile)
{
    EXPECT_LT(meanMove(0), 5);
    EXPECT_GT(meanMove(10), 20);
    EXPECT_GT(meanMove(40), 2 * meanMove(10));
}

} // namespace exchange
