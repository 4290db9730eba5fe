#include "exchange/afterhours.h"

#include "exchange/instrumentclass.h"
#include "exchange/simulationoptions.h"

#include <gtest/gtest.h>

namespace exchange {

TEST(AfterHours, shouldTradeAtTheCloseAloneWhenOrdersMeet)
{
    constexpr Ticks kClose = 2840;
    AfterHours market(SimulationOptions::of("after-hours-b"), instrumentClass("after-hours-b"), Random(1));
    DayStatistics day;
    day.add({{2, 1, 2900, 300}, {3, 4, kClose, 200}});

    EXPECT_EQ(market.shown(day).volume, 0);
    EXPECT_EQ(market.shown(day).amountInTicks, 0);
    Shares before = 0;
    int trades = 0;
    for (int beat = 0; beat < 500; ++beat) {
        market.play(kClose);
        const DayStatistics shown = market.shown(day);
        ASSERT_EQ(shown.amountInTicks, shown.volume * kClose);
        ASSERT_EQ(shown.volume % 100, 0);
        trades += shown.volume > before ? 1 : 0;
        before = shown.volume;
    }
    EXPECT_GT(trades, 100);
    const DayStatistics shown = market.shown(day);
    EXPECT_EQ(shown.high, 2900) << "the day's prices stay";
    EXPECT_EQ(shown.last, kClose);
    EXPECT_EQ(shown.buys, day.buys);
}

} // namespace exchange
