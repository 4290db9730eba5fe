#pragma once

#include "tests/tessimodel/oracle/distribution/distributionstreams.h"

#include <vector>

namespace tests::oracle::distribution {

inline constexpr int kDistributionSteps = 150;

// What happens to a distribution over a day or more, with everything that can go wrong mixed in. The same seed gives
// the same steps.
std::vector<DistributionStep> makeDistributionSteps(unsigned long long seed);

} // namespace tests::oracle::distribution
