#pragma once

#include "bench/operations.h"

namespace bench {

// Reads a recorded day from disk; one operation is a row, a line of any of its streams.
Body prepareReadDay();

// The same files with the least that has to be done: read the bytes, split them, convert each number.
Body prepareBareLoop();

} // namespace bench
