#pragma once

#include "apps/tessi/bookverifier.h"

#include <iosfwd>
#include <vector>

namespace tessi {

// Tables with a line for each day, of its book, of its pairs and, when a day has the stream, of its order queues; below
// them, for each day that differs, the first divergence with both books side by side. With `misses` every snapshot,
// pair and queue without a match is listed.
void printVerified(std::ostream& out, const std::vector<VerifiedDay>& days, bool misses, bool colours);

// An array of one object a day, with the figures of the tables; with `misses` each object lists them.
void printVerifiedJson(std::ostream& out, const std::vector<VerifiedDay>& days, bool misses);

} // namespace tessi
