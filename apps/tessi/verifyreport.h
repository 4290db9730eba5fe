#pragma once

#include "apps/tessi/bookverifier.h"

#include <iosfwd>
#include <vector>

namespace tessi {

// Two tables with a line for each day, of its book and of its pairs; below them, for each day that differs, the first
// divergence with both books side by side. With `misses` every snapshot without a match and every pair without one is
// listed.
void printVerified(std::ostream& out, const std::vector<VerifiedDay>& days, bool misses, bool colours);

// An array of one object a day, with the figures of the tables; with `misses` each object lists them.
void printVerifiedJson(std::ostream& out, const std::vector<VerifiedDay>& days, bool misses);

} // namespace tessi
