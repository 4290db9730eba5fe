#pragma once

#include "indexui/tessimodel/detail/batch.h"

namespace TC {

struct CFormulaParam;

namespace detail {

// A stream of snapshots, and the refresh period in milliseconds that it is asked for with.
struct StreamRequest {
    const char* name;
    int period;
};

inline constexpr StreamRequest kQuotes{"QUOTER", 50};
inline constexpr StreamRequest kQuotesByVolume{"QUOTERVOL", 60000};

// Fills a request for the instrument's stream from 00:00:00 of its market's last trading day on, open ended.
// Without an instrument the request stays as it was. The day is worked out in the zone of the process, which must be
// UTC+8.
void fillRequest(CFormulaParam& param, const InstrumentPtr& stock, const StreamRequest& stream);

} // namespace detail
} // namespace TC
