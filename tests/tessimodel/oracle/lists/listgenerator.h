#pragma once

#include "tests/tessimodel/oracle/lists/liststreams.h"

#include <vector>

namespace tests::oracle::lists {

inline constexpr int kSteps = 200;

// What happens to a panel's list: mostly an opened session that goes on, with everything that can go wrong mixed in.
// The same seed gives the same steps.
std::vector<ListStep> makeOrderListSteps(unsigned long long seed);
std::vector<ListStep> makeTradeListSteps(unsigned long long seed);

} // namespace tests::oracle::lists
