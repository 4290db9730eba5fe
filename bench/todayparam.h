#pragma once

#include "bench/operations.h"

namespace bench {

// The table of the day, and the number formats that it is measured against.
std::vector<Operation> todayParamOperations();

} // namespace bench
