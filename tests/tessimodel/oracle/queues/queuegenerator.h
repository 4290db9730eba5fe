#pragma once

#include "tests/tessimodel/oracle/queues/queuestreams.h"

#include <vector>

namespace tests::oracle::queues {

inline constexpr int kSteps = 200;

// What happens to a model of the order queues: mostly an opened session of a Shenzhen instrument that goes on, with
// everything that can go wrong mixed in. The same seed gives the same steps.
std::vector<ModelStep> makeModelSteps(unsigned long long seed);

} // namespace tests::oracle::queues
