#pragma once

#include "bench/operations.h"

namespace bench {

// The trade list: histories and live trades with their matching, its lookups, its filter and its end.
std::vector<Operation> tradeListOperations();

} // namespace bench
