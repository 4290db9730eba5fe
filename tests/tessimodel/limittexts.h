#pragma once

#include <limits>

namespace tests {

// A limit and what its row shows at a tick of 0.01: 0 and 100000 stand for none.
struct LimitText {
    double limit;
    const char* text;
};

inline constexpr LimitText kLimitTexts[] = {
    {0, "-"},
    {1e-5, "-"},
    {-1e-5, "-"},
    {0.000011, "0.00"},
    {-0.000011, "0.00"},
    {0.01, "0.01"},
    {-9, "-9.00"},
    {13.57, "13.57"},
    {99999.99, "99999.99"},
    {99999.999995, "-"},
    {100000, "-"},
    {100000.000005, "-"},
    {100000.01, "100000.01"},
    {-100000, "-100000.00"},
    {std::numeric_limits<double>::max(), "--"},
};

} // namespace tests
