#include "exchange/tradingday.h"

#include "utils/timeutils.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace exchange {

TEST(TradingDay, shouldChangePhaseAtTheFirstMillisecondWhenTimePasses)
{
    struct Row {
        DayTime from;
        Phase phase;
        bool orders, cancels;
    };
    const Row rows[] = {
        {0, Phase::BeforeOpen, false, false},
        {kOpeningAuction, Phase::OpeningAuction, true, true},
        {kOpeningAuctionNoCancels, Phase::OpeningAuction, true, false},
        {kOpeningUncross, Phase::Break, false, false},
        {kMorning, Phase::Continuous, true, true},
        {kLunch, Phase::Break, false, false},
        {kAfternoon, Phase::Continuous, true, true},
        {kClosingAuction, Phase::ClosingAuction, true, false},
        {kClosingUncross, Phase::Closed, false, false},
    };
    const Row* before = nullptr;
    for (const Row& row : rows) {
        for (const DayTime time : {row.from, row.from + 1}) {
            EXPECT_EQ(phaseAt(time), row.phase) << time;
            EXPECT_EQ(ordersAllowed(time), row.orders) << time;
            EXPECT_EQ(cancelsAllowed(time), row.cancels) << time;
        }
        if (before) {
            EXPECT_EQ(phaseAt(row.from - 1), before->phase) << row.from;
        }
        before = &row;
    }
}

TEST(TradingDay, shouldStandStillWhileCancelsAreRefusedWhenPlanningACancel)
{
    struct Row {
        DayTime from, delay, expected;
    };
    for (const Row row : {
             Row{clockTime(9, 16), 60'000, clockTime(9, 17)},
             Row{clockTime(9, 19), 59'999, clockTime(9, 19, 59) + 999},
             Row{clockTime(9, 19), 60'000, kMorning},
             Row{clockTime(9, 22), 5'000, clockTime(9, 30, 5)},
             Row{clockTime(11, 29), 120'000, clockTime(13, 1)},
             Row{clockTime(9, 19), clockTime(2, 2), clockTime(13, 1)},
             Row{clockTime(14, 56), 59'999, clockTime(14, 56, 59) + 999},
             Row{clockTime(14, 56), 60'000, kClosingAuction},
             Row{clockTime(14, 58), 1, kClosingAuction},
             Row{clockTime(9, 15), clockTime(23, 0), kClosingAuction},
         })
        EXPECT_EQ(cancelTimeAfter(row.from, row.delay), row.expected) << row.from << " + " << row.delay;
}

TEST(TradingDay, shouldAgreeWithTheTerminalsClockWhenNamingMidnight)
{
    EXPECT_EQ(midnightOf(20240315), utils::timeToMilliseconds(2024, 3, 15, 0, 0, 0));
    EXPECT_EQ(midnightOf(20240229) + clockTime(15, 0, 3), utils::timeToMilliseconds(2024, 2, 29, 15, 0, 3));
    for (const int edge : {19700102, 20380118})
        EXPECT_EQ(midnightOf(edge), utils::timeToMilliseconds(edge / 10000, 1, edge % 100, 0, 0, 0)) << edge;
    for (const int nonsense : {0, -20240315, 20240230, 20241301, 20240100, 315, 19700101, 20380119, 20379999})
        EXPECT_THROW(midnightOf(nonsense), std::invalid_argument) << nonsense;
}

} // namespace exchange
