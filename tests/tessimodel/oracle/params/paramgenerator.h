#pragma once

#include "tests/tessimodel/oracle/params/paramstreams.h"

#include <vector>

namespace tests::oracle::params {

inline constexpr int kParamSteps = 150;

// What happens to a parameter table over a day or more, with everything that can go wrong mixed in. The same seed gives
// the same steps.
std::vector<ParamStep> makeParamSteps(unsigned long long seed);

} // namespace tests::oracle::params
