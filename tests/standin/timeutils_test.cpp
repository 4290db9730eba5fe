#include "utils/timeutils.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <climits>

using utils::d8_getSecondFromZero;
using utils::isInCallAuction;
using utils::millisecondsToTime;
using utils::timeToMilliseconds;

TEST(TimeUtils, shouldCountAtUtcPlus8WhenConverted)
{
    EXPECT_EQ(timeToMilliseconds(1970, 1, 1, 8, 0, 0), 0);
    EXPECT_EQ(timeToMilliseconds(1970, 1, 1, 0, 0, 0), -28'800'000);
    EXPECT_EQ(timeToMilliseconds(2023, 2, 1, 9, 30, 0), 1'675'215'000'000);
    EXPECT_EQ(timeToMilliseconds(2024, 2, 29, 23, 59, 59), 1'709'222'399'000);
    EXPECT_EQ(millisecondsToTime(1'675'215'000'000), 20'230'201'093'000);
    EXPECT_EQ(millisecondsToTime(0), 19'700'101'080'000);
}

TEST(TimeUtils, shouldCutMillisecondsTowardsThePastWhenShown)
{
    EXPECT_EQ(millisecondsToTime(1'675'215'000'999), 20'230'201'093'000);
    EXPECT_EQ(millisecondsToTime(1'675'214'999'999), 20'230'201'092'959);
    EXPECT_EQ(millisecondsToTime(-1), 19'700'101'075'959);
    EXPECT_EQ(millisecondsToTime(-28'800'001), 19'691'231'235'959);
}

TEST(TimeUtils, shouldComeBackToTheSameNumberWhenConvertedThereAndBack)
{
    EXPECT_TRUE(rc::check([] {
        const int year = *rc::gen::inRange(1601, 9999);
        const int month = *rc::gen::inRange(1, 13);
        const int day = *rc::gen::inRange(1, 29);
        const int hour = *rc::gen::inRange(0, 24);
        const int minute = *rc::gen::inRange(0, 60);
        const int second = *rc::gen::inRange(0, 60);
        const __int64 shown = ((((year * 100LL + month) * 100 + day) * 100 + hour) * 100 + minute) * 100 + second;
        const __int64 ms = timeToMilliseconds(year, month, day, hour, minute, second);
        RC_ASSERT(millisecondsToTime(ms) == shown);
        RC_ASSERT(d8_getSecondFromZero(ms / 1000) == (hour * 60 + minute) * 60 + second);
    }));
}

TEST(TimeUtils, shouldGiveSecondsOfTheDayWhenAnySecondIsAsked)
{
    EXPECT_EQ(d8_getSecondFromZero(0), 8 * 3600);
    EXPECT_EQ(d8_getSecondFromZero(-28'800), 0);
    EXPECT_EQ(d8_getSecondFromZero(-28'801), 86'399);
    EXPECT_EQ(d8_getSecondFromZero(57'599), 86'399);
    EXPECT_EQ(d8_getSecondFromZero(57'600), 0);
    EXPECT_EQ(d8_getSecondFromZero(1'675'215'000), 34'200);
}

TEST(TimeUtils, shouldStayDefinedWhenTimeIsAtTheEndOfTheRange)
{
    // 2^63 seconds are 55,808 beyond a whole number of days.
    EXPECT_EQ(d8_getSecondFromZero(LLONG_MAX), (55'807 + 28'800) % 86'400);
    EXPECT_EQ(d8_getSecondFromZero(LLONG_MIN), 86'400 - 55'808 + 28'800);
    EXPECT_EQ(millisecondsToTime(LLONG_MAX), 0);
    EXPECT_EQ(millisecondsToTime(LLONG_MIN), 0);
}

TEST(TimeUtils, shouldHoldAnAuctionOnlyWhenTimeIsInTheExchangesHours)
{
    for (const char* const market : {"SH", "SZ", "BJ"}) {
        for (const int time : {91500, 92459, 145700, 145959})
            EXPECT_TRUE(isInCallAuction(market, time)) << market << time;
        for (const int time : {0, 91459, 92500, 93000, 145659, 150000, 90000, 160500})
            EXPECT_FALSE(isInCallAuction(market, time)) << market << time;
    }
    for (const int time : {90000, 91959, 160000, 160959})
        EXPECT_TRUE(isInCallAuction("HK", time)) << time;
    for (const int time : {85959, 92000, 145800, 155959, 161000})
        EXPECT_FALSE(isInCallAuction("HK", time)) << time;
    for (const char* const market : {"", "SHFE", "CFFEX", "sh", "HKEX"})
        EXPECT_FALSE(isInCallAuction(market, 91600)) << market;
}
