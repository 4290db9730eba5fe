#pragma once

#include "utils/int64.h"

#include <cmath>
#include <limits>

// The library's rules for numbers: tolerances, missing values, price keys, hands, 32-bit arithmetic.
//
// Prices are compared by these functions only, never by a raw ==. A NaN is equal to nothing, greater than nothing
// and less than nothing.
namespace TC::detail {

// Two doubles are equal up to this difference, the difference itself included.
inline constexpr double kTolerance = 1e-5;

// Stands for "no value" in the double fields of records and models.
inline constexpr double kNoValue = std::numeric_limits<double>::max();

inline constexpr double kDefaultPriceTick = 0.001;

inline bool isEqual(double a, double b)
{
    return std::abs(a - b) <= kTolerance;
}

inline bool isGreater(double a, double b)
{
    return a - b > kTolerance;
}

inline bool isLess(double a, double b)
{
    return a - b < -kTolerance;
}

// Apart by more than the tolerance. A NaN is not, else a figure that is one would change for ever.
inline bool isDifferent(double a, double b)
{
    return std::abs(a - b) > kTolerance;
}

// The very same price, to the last bit: for prices as keys. A NaN is not even itself.
inline bool isSamePrice(double a, double b)
{
    return a == b;
}

inline bool isZero(double value)
{
    return isEqual(value, 0.0);
}

inline bool isMissing(double value)
{
    return isEqual(value, kNoValue);
}

// A price that something can be worked out from: neither missing nor zero.
inline bool isUsable(double price)
{
    return !isMissing(price) && !isZero(price);
}

// The low 32 bits of a 64-bit figure, as a signed number. Volumes beyond 2147483647 wrap; that is accepted.
constexpr int low32(__int64 value)
{
    return static_cast<int>(value);
}

// Arithmetic in 32 and in 64 bits that wraps where the plain operators would be undefined.
constexpr int sum32(int a, int b)
{
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}

constexpr int difference32(int a, int b)
{
    return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

constexpr int product32(int a, int b)
{
    return static_cast<int>(static_cast<unsigned>(a) * static_cast<unsigned>(b));
}

constexpr __int64 sum64(__int64 a, __int64 b)
{
    return static_cast<__int64>(static_cast<unsigned long long>(a) + static_cast<unsigned long long>(b));
}

constexpr __int64 difference64(__int64 a, __int64 b)
{
    return static_cast<__int64>(static_cast<unsigned long long>(a) - static_cast<unsigned long long>(b));
}

// How far two figures lie apart. The lowest number has no positive counterpart and stays as it is.
constexpr int distance32(int a, int b)
{
    const int difference = difference32(a, b);
    return difference < 0 ? difference32(0, difference) : difference;
}

constexpr __int64 distance64(__int64 a, __int64 b)
{
    const __int64 difference = difference64(a, b);
    return difference < 0 ? difference64(0, difference) : difference;
}

// Truncates toward zero. What does not fit, NaN included, gives the lowest int, as the processor's own conversion
// does.
constexpr int truncated32(double value)
{
    constexpr double kFirstAbove = 2147483648.0;
    constexpr double kFirstBelow = -2147483649.0;
    return value > kFirstBelow && value < kFirstAbove ? static_cast<int>(value) : std::numeric_limits<int>::min();
}

// A price in whole ticks: half a tick is added and the rest cut off toward zero, which rounds to nearest for prices
// that are not negative. A price or tick that gives no such number has the lowest int as key.
constexpr int priceKey(double price, double priceTick)
{
    return truncated32(price / priceTick + 0.5);
}

// Shares to hands, truncated. Any volume below one hand, none included, counts as one hand: a row never shows less.
// `sharesPerHand` is at least 1.
constexpr __int64 handsFloor64(__int64 shares, int sharesPerHand)
{
    return shares >= sharesPerHand ? shares / sharesPerHand : 1;
}

constexpr int handsFloor(__int64 shares, int sharesPerHand)
{
    return low32(handsFloor64(shares, sharesPerHand));
}

// Shares to hands, rounded to nearest. Below one hand as above.
constexpr int handsRounded(__int64 shares, int sharesPerHand)
{
    return shares >= sharesPerHand ? truncated32(static_cast<double>(shares) / sharesPerHand + 0.5) : 1;
}

// A record's milliseconds as the seconds that rows hold, truncated toward zero.
constexpr __int64 toSeconds(__int64 milliseconds)
{
    return milliseconds / 1000;
}

} // namespace TC::detail
