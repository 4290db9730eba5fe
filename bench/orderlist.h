#pragma once

#include "bench/operations.h"

namespace bench {

// The order list: orders and trades that it takes, its filter and its end.
std::vector<Operation> orderListOperations();

} // namespace bench
