#pragma once

#include "bench/operations.h"

namespace bench {

// The model of the order queues: its tick-built book, and the pairs of snapshots that it joins.
std::vector<Operation> queueModelOperations();

} // namespace bench
