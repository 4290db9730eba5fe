#pragma once

#include "bench/operations.h"

namespace bench {

// Recorded days from disk, and what they are measured against.
std::vector<Operation> readingOperations();

} // namespace bench
