#pragma once

#include "utils/int64.h"

#include <climits>

// Arithmetic of the naive book: it wraps where a width runs out, and a double that does not fit an int is INT_MIN.
namespace tests::oracle {

inline __int64 plus(__int64 a, __int64 b)
{
    return static_cast<__int64>(static_cast<unsigned long long>(a) + static_cast<unsigned long long>(b));
}

inline __int64 minus(__int64 a, __int64 b)
{
    return static_cast<__int64>(static_cast<unsigned long long>(a) - static_cast<unsigned long long>(b));
}

inline int narrow(__int64 value)
{
    return static_cast<int>(value);
}

inline int plus32(int a, int b)
{
    return narrow(static_cast<__int64>(a) + b);
}

inline int times32(int a, int b)
{
    return narrow(static_cast<__int64>(a) * b);
}

inline int truncated(double value)
{
    const bool fits = value > -2147483649.0 && value < 2147483648.0;
    return fits ? static_cast<int>(value) : INT_MIN;
}

inline int priceKeyOf(double price, double tick)
{
    return truncated(price / tick + 0.5);
}

// Shares as hands in a row: never less than one.
inline int handFigure(__int64 shares, int unit)
{
    return shares >= unit ? narrow(shares / unit) : 1;
}

} // namespace tests::oracle
