#pragma once

#include "bench/operations.h"

namespace bench {

// The model of the thousand-level snapshots, and the yardsticks that it is measured against.
std::vector<Operation> levelModelOperations();

} // namespace bench
