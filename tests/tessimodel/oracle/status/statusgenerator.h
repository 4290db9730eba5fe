#pragma once

#include "tests/tessimodel/oracle/status/statusstreams.h"

#include <vector>

namespace tests::oracle::status {

inline constexpr int kStatusSteps = 150;

// What happens to a book summary over a day or more, with everything that can go wrong mixed in. The same seed gives
// the same steps.
std::vector<StatusStep> makeStatusSteps(unsigned long long seed);

} // namespace tests::oracle::status
