#pragma once

#include "utils/int64.h"

namespace quoter {

// Summary of the whole book beside a snapshot. It is no QuoterBase: it travels on a road of its own.
struct QuoteAux {
    __int64 timetag = 0; // milliseconds, the snapshot that it belongs to
    double bidAveragePrice = 0;
    __int64 totalBidVolume = 0;
    double askAveragePrice = 0;
    __int64 totalAskVolume = 0;
};

} // namespace quoter
