#pragma once

#include "apps/tessi/table.h"

#include <iosfwd>

namespace recording {
struct RecordedDay;
}

namespace tessi {

// What a day holds: the instrument, its prices and totals, and the records of each stream. Volumes in shares. As JSON
// one object, whose figures are numbers.
void printSummary(std::ostream& out, const recording::RecordedDay& day, Format format);

} // namespace tessi
