#include "utils/timeutils.h"

#include <chrono>

// All times count at UTC+8 without daylight saving, so plain calendar arithmetic does: no zone is asked.

namespace utils {

namespace {

constexpr __int64 kMsPerSecond = 1000;
constexpr __int64 kSecondsPerDay = 24LL * 60 * 60;
constexpr __int64 kZoneSeconds = 8LL * 60 * 60;

__int64 floorDiv(__int64 value, __int64 divisor)
{
    const __int64 quotient = value / divisor;
    return quotient * divisor > value ? quotient - 1 : quotient;
}

struct WallClock {
    __int64 day;      // days since the epoch, at UTC+8
    int secondsOfDay; // 0 to 86399
};

// Shifts after the split into days, so that no time near either end of the range overflows.
WallClock wallClock(__int64 seconds)
{
    __int64 day = seconds / kSecondsPerDay;
    __int64 rest = seconds % kSecondsPerDay + kZoneSeconds;
    if (rest < 0) {
        rest += kSecondsPerDay;
        --day;
    } else if (rest >= kSecondsPerDay) {
        rest -= kSecondsPerDay;
        ++day;
    }
    return {day, static_cast<int>(rest)};
}

} // namespace

__int64 timeToMilliseconds(int year, int month, int day, int hour, int minute, int second)
{
    using namespace std::chrono;
    const sys_days date{std::chrono::year{year} / month / day};
    const __int64 seconds = date.time_since_epoch().count() * kSecondsPerDay + hour * 3600LL + minute * 60LL + second;
    return (seconds - kZoneSeconds) * kMsPerSecond;
}

__int64 millisecondsToTime(__int64 ms)
{
    using namespace std::chrono;
    const WallClock clock = wallClock(floorDiv(ms, kMsPerSecond));
    // The calendar covers some 65,000 years; days beyond it have no date to show.
    constexpr __int64 kLastDay = 10'000'000;
    if (clock.day > kLastDay || clock.day < -kLastDay)
        return 0;
    const year_month_day date{sys_days{days{clock.day}}};
    const __int64 ymd = static_cast<int>(date.year()) * 10000LL + static_cast<unsigned>(date.month()) * 100LL +
                        static_cast<unsigned>(date.day());
    const __int64 hms =
        clock.secondsOfDay / 3600 * 10000LL + clock.secondsOfDay / 60 % 60 * 100LL + clock.secondsOfDay % 60;
    return ymd * 1'000'000 + hms;
}

int d8_getSecondFromZero(__int64 seconds)
{
    return wallClock(seconds).secondsOfDay;
}

bool isInCallAuction(const std::string& market, int hhmmss)
{
    const auto within = [hhmmss](int from, int to) { return from <= hhmmss && hhmmss < to; };
    if (market == "SH" || market == "SZ" || market == "BJ" || market == "SSE" || market == "SZSE")
        return within(91500, 92500) || within(145700, 150000);
    if (market == "HK")
        return within(90000, 92000) || within(160000, 161000);
    return false;
}

} // namespace utils
