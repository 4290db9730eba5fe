#pragma once

#include "apps/tessi/ordertrace.h"

#include <iosfwd>

namespace tessi {

// The order, its trades and cancels line by line with what is left after each, and the sums.
void printTrace(std::ostream& out, const OrderTrace& trace, double priceTick, bool colours);

// The same as one object; "order" and "left" are null without a record.
void printTraceJson(std::ostream& out, const OrderTrace& trace);

} // namespace tessi
