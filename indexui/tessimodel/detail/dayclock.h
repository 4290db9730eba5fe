#pragma once

#include "indexui/tessimodel/detail/numbers.h"
#include "utils/int64.h"
#include "utils/timeutils.h"

namespace TC::detail {

// Tells the time of day of a second. Rows come in runs of one second, for which the terminal is asked once.
class DayClock {
public:
    int millisecondsAt(__int64 second)
    {
        if (!m_isAsked || second != m_second) {
            m_milliseconds = product32(utils::d8_getSecondFromZero(second), kMsPerSecond);
            m_second = second;
            m_isAsked = true;
        }
        return m_milliseconds;
    }

private:
    static constexpr int kMsPerSecond = 1000;

    __int64 m_second = 0;
    int m_milliseconds = 0;
    bool m_isAsked = false;
};

} // namespace TC::detail
