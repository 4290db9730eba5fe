#pragma once

#include "tests/tessimodel/oracle/thousand/thousandstreams.h"

#include <vector>

namespace tests::oracle::thousand {

inline constexpr int kSteps = 200;

// What happens to a model of the thousand-level snapshot, with everything that can go wrong mixed in. The same seed
// gives the same steps.
std::vector<ThousandStep> makeThousandSteps(unsigned long long seed);

} // namespace tests::oracle::thousand
