#pragma once

#include "bench/operations.h"
#include "bench/tickstream.h"

namespace bench {

// The thousand-level book by itself, and the yardstick that it is measured against.
std::vector<Operation> bookOperations();

// Ticks for a book of `levels` standing levels on each side, otherwise alike: what a tick costs must not depend on
// them.
TickOptions streamOfLevels(int levels, int liveEvents);

} // namespace bench
