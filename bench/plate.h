#pragma once

#include "bench/operations.h"

namespace bench {

// The watch plate on a canvas without a screen, and the same primitives drawn alone.
std::vector<Operation> plateOperations();

} // namespace bench
