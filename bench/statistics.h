#pragma once

#include "bench/operations.h"

namespace bench {

// The book summary and the distribution of the day's volume, fed with the snapshots of a day.
std::vector<Operation> statisticsOperations();

} // namespace bench
