#pragma once

#include "terminal_api.h"
#include "utils/int64.h"

namespace quoter {

// A place in a stream: a time in milliseconds since the epoch, and a sequence within it.
struct TERMINAL_API TimeSeq {
    __int64 time = 0;
    __int64 sequence = 0;

    friend bool operator==(const TimeSeq&, const TimeSeq&) = default;

    // The open end of a range: the stream goes on.
    static const TimeSeq TIME_LASTED;
};

} // namespace quoter
