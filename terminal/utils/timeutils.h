#pragma once

#include "terminal_api.h"
#include "utils/int64.h"

#include <string>

// Times of the exchanges. All of them count at UTC+8, whatever the zone of the process, without daylight
// saving. Safe from any thread.
namespace utils {

// Milliseconds since the epoch of a wall clock time. The fields are calendar values (month and day from 1).
TERMINAL_API __int64 timeToMilliseconds(int year, int month, int day, int hour, int minute, int second);

// The wall clock time of `ms` (milliseconds since the epoch) as the number yyyyMMddHHmmss, for logs and for
// `% 1000000`, which gives HHmmss. Milliseconds are cut off towards the past.
TERMINAL_API __int64 millisecondsToTime(__int64 ms);

// Seconds since midnight, 0 to 86399, of a time in SECONDS since the epoch.
TERMINAL_API int d8_getSecondFromZero(__int64 seconds);

// True while `market` holds a call auction at the wall clock time `hhmmss` (a number such as 92500): for the
// mainland exchanges from 09:15:00 up to, not including, 09:25:00, and from 14:57:00 to 15:00:00; for Hong
// Kong from 09:00:00 to 09:20:00 and from 16:00:00 to 16:10:00. False for markets that are not known.
TERMINAL_API bool isInCallAuction(const std::string& market, int hhmmss);

} // namespace utils
