#pragma once

#include "indexui/tessimodel/detail/batch.h"

namespace TC::detail {

// Shares in one hand of an instrument, 10 for bonds and their like, else 100: by its types alone, as the order queues
// count, and with Shanghai's further types, as the book and the tick lists do.
int sharesPerHandByType(const ztservice::CInstrumentDetail& stock);
int sharesPerHand(const ztservice::CInstrumentDetail& stock);

} // namespace TC::detail
