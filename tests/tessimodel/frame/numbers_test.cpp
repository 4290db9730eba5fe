#include "indexui/tessimodel/detail/numbers.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cfloat>
#include <climits>
#include <cstring>

namespace {

using namespace TC::detail;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Numbers, shouldCountAsEqualWhenDifferenceIsTheToleranceItself)
{
    EXPECT_TRUE(isEqual(0.0, 1e-5));
    EXPECT_TRUE(isEqual(1e-5, 0.0));
    EXPECT_FALSE(isGreater(1e-5, 0.0));
    EXPECT_FALSE(isLess(0.0, 1e-5));

    const double justAbove = std::nextafter(1e-5, 1.0);
    EXPECT_FALSE(isEqual(0.0, justAbove));
    EXPECT_TRUE(isGreater(justAbove, 0.0));
    EXPECT_TRUE(isLess(0.0, justAbove));
}

TEST(Numbers, shouldOrderNothingWhenOneIsNoNumber)
{
    EXPECT_FALSE(isEqual(kNaN, kNaN));
    EXPECT_FALSE(isGreater(kNaN, 0.0));
    EXPECT_FALSE(isLess(kNaN, 0.0));
    EXPECT_FALSE(isEqual(kInfinity, kInfinity)) << "their difference is no number";
    EXPECT_TRUE(isGreater(kInfinity, 0.0));
}

TEST(Numbers, shouldBeExactlyOneOfThreeWhenBothAreNumbers)
{
    EXPECT_TRUE(rc::check("less, equal or greater", [](double a, double b) {
        RC_PRE(std::isfinite(a - b));
        RC_ASSERT(isLess(a, b) + isEqual(a, b) + isGreater(a, b) == 1);
        RC_ASSERT(isLess(a, b) == isGreater(b, a));
    }));
}

TEST(Numbers, shouldDifferOnlyWhenBeyondTheToleranceAndBothAreNumbers)
{
    EXPECT_FALSE(isDifferent(0.0, 1e-5));
    EXPECT_TRUE(isDifferent(0.0, std::nextafter(1e-5, 1.0)));
    EXPECT_TRUE(isDifferent(kInfinity, 0.0));
    EXPECT_FALSE(isDifferent(kNaN, 0.0));
    EXPECT_FALSE(isDifferent(kInfinity, kInfinity));
}

TEST(Numbers, shouldTellHowFarApartFiguresAreWhenTheyWrap)
{
    EXPECT_EQ(distance64(3, 10), 7);
    EXPECT_EQ(distance64(10, 3), 7);
    EXPECT_EQ(distance64(LLONG_MAX, -1), LLONG_MIN) << "wraps, and its opposite does too";
    EXPECT_EQ(distance64(LLONG_MIN, 1), LLONG_MAX);
}

TEST(Numbers, shouldKeepAllBitsOfHandsWhenAskedForThem)
{
    EXPECT_EQ(handsFloor64(599'999'999'999, 100), 5'999'999'999);
    EXPECT_EQ(handsFloor64(99, 100), 1);
    EXPECT_EQ(handsFloor64(-500, 100), 1);
    EXPECT_EQ(handsFloor(599'999'999'999, 100), 1'705'032'703) << "the low 32 bits of the same";
}

TEST(Numbers, shouldBeMissingWhenWithinToleranceOfTheLargestDouble)
{
    static_assert(kNoValue == DBL_MAX);
    unsigned long long bits = 0;
    std::memcpy(&bits, &kNoValue, sizeof bits);
    EXPECT_EQ(bits, 0x7fefffffffffffffULL);
    EXPECT_TRUE(isMissing(DBL_MAX));
    EXPECT_FALSE(isMissing(-DBL_MAX));
    EXPECT_FALSE(isMissing(std::nextafter(DBL_MAX, 0.0)));
    EXPECT_FALSE(isMissing(kInfinity));
    EXPECT_FALSE(isMissing(kNaN));

    EXPECT_FALSE(isUsable(DBL_MAX));
    EXPECT_FALSE(isUsable(0.0));
    EXPECT_FALSE(isUsable(-1e-5));
    EXPECT_TRUE(isUsable(1.1e-5));
    EXPECT_TRUE(isUsable(-10.0));
}

TEST(Numbers, shouldKeepLow32BitsWhenNarrowed)
{
    EXPECT_EQ(low32(5), 5);
    EXPECT_EQ(low32(-5), -5);
    EXPECT_EQ(low32(2147483647LL), INT_MAX);
    EXPECT_EQ(low32(2147483648LL), INT_MIN);
    EXPECT_EQ(low32(4294967296LL), 0);
    EXPECT_EQ(low32(10000000000LL), 1410065408);
    EXPECT_EQ(low32(LLONG_MIN), 0);
    EXPECT_EQ(low32(LLONG_MAX), -1);
}

TEST(Numbers, shouldWrapWhenSumOrDifferenceDoesNotFit)
{
    EXPECT_EQ(sum32(2, 3), 5);
    EXPECT_EQ(sum32(INT_MAX, 1), INT_MIN);
    EXPECT_EQ(sum32(INT_MIN, -1), INT_MAX);
    EXPECT_EQ(difference32(2, 3), -1);
    EXPECT_EQ(difference32(INT_MIN, 1), INT_MAX);
    EXPECT_EQ(difference32(INT_MAX, -1), INT_MIN);
    EXPECT_EQ(difference32(0, INT_MIN), INT_MIN);
}

TEST(Numbers, shouldTruncateTowardZeroOrGiveTheLowestWhenConverted)
{
    EXPECT_EQ(truncated32(1.9), 1);
    EXPECT_EQ(truncated32(-1.9), -1);
    EXPECT_EQ(truncated32(2147483647.9), INT_MAX);
    EXPECT_EQ(truncated32(-2147483648.9), INT_MIN);
    for (const double unfit : {2147483648.0, -2147483649.0, 1e300, -1e300, kInfinity, -kInfinity, kNaN, DBL_MAX})
        EXPECT_EQ(truncated32(unfit), INT_MIN) << unfit;
}

TEST(Numbers, shouldKeyWholeTicksWhenPriceIsKeyed)
{
    EXPECT_EQ(priceKey(10.23, 0.01), 1023);
    EXPECT_EQ(priceKey(10.234999, 0.01), 1023);
    EXPECT_EQ(priceKey(10.236, 0.01), 1024);
    EXPECT_EQ(priceKey(0.0, 0.01), 0);
    EXPECT_EQ(priceKey(-0.02, 0.01), -1) << "truncates toward zero after the half is added";
    for (int ticks = 1; ticks < 100000; ++ticks)
        ASSERT_EQ(priceKey(ticks / 100.0, 0.01), ticks);

    EXPECT_EQ(priceKey(10.0, 0.0), INT_MIN);
    EXPECT_EQ(priceKey(0.0, 0.0), INT_MIN);
    EXPECT_EQ(priceKey(kNaN, 0.01), INT_MIN);
    EXPECT_EQ(priceKey(kInfinity, 0.01), INT_MIN);
    EXPECT_EQ(priceKey(1e12, 0.01), INT_MIN);
}

TEST(Numbers, shouldShowAtLeastOneHandWhenSharesBecomeHands)
{
    struct Case {
        __int64 shares;
        int unit, floor, rounded;
    };
    const Case cases[] = {{0, 100, 1, 1},   {-500, 100, 1, 1}, {30, 100, 1, 1},  {99, 100, 1, 1},  {100, 100, 1, 1},
                          {149, 100, 1, 1}, {150, 100, 1, 2},  {199, 100, 1, 2}, {250, 100, 2, 3}, {15, 10, 1, 2},
                          {0, 1, 1, 1},     {7, 1, 7, 7},      {10, 10, 1, 1},   {9, 10, 1, 1}};
    for (const Case& c : cases) {
        EXPECT_EQ(handsFloor(c.shares, c.unit), c.floor) << c.shares << " by " << c.unit;
        EXPECT_EQ(handsRounded(c.shares, c.unit), c.rounded) << c.shares << " by " << c.unit;
    }
    EXPECT_EQ(handsFloor(LLONG_MAX, 1), -1);
    EXPECT_EQ(handsRounded(LLONG_MAX, 1), INT_MIN);
}

TEST(Numbers, shouldCutMillisecondsTowardZeroWhenTurnedIntoSeconds)
{
    EXPECT_EQ(toSeconds(1999), 1);
    EXPECT_EQ(toSeconds(-1999), -1);
    EXPECT_EQ(toSeconds(LLONG_MIN), LLONG_MIN / 1000);
}

} // namespace
