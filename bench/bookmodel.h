#pragma once

#include "bench/operations.h"

namespace bench {

// The model of the thousand-level book as the data layer feeds it and a panel reads it.
std::vector<Operation> bookModelOperations();

} // namespace bench
