#pragma once

#include <limits>

// Doubles in the place of a price that are none.
namespace tests {

inline constexpr double kNoPrice = std::numeric_limits<double>::max(); // as records and models mark a missing one
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

} // namespace tests
