#pragma once

#include "utils/int64.h"
#include "utils/timeutils.h"

#include <string>

namespace recording {

// A trading day as the exchanges' clocks count it: the 24 hours of the date at UTC+8.
class DaySpan {
public:
    explicit DaySpan(int yyyymmdd)
        : m_date(yyyymmdd)
        , m_begin(utils::timeToMilliseconds(yyyymmdd / 10000, yyyymmdd / 100 % 100, yyyymmdd % 100, 0, 0, 0))
    {}

    // First and last millisecond of the day, since the epoch.
    __int64 begin() const { return m_begin; }
    __int64 last() const { return m_begin + kLength - 1; }

    // `timetag` is in milliseconds since the epoch.
    bool contains(__int64 timetag) const { return timetag >= m_begin && timetag < m_begin + kLength; }

    std::string text() const { return std::to_string(m_date); }

private:
    static constexpr __int64 kLength = 24LL * 60 * 60 * 1000;
    int m_date;
    __int64 m_begin;
};

} // namespace recording
