#pragma once

#include "utils/int64.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>

namespace recording {

// Turns the times of a day into times of the clock on the wall, at a multiple of real time.
class Pace {
public:
    using Clock = std::chrono::steady_clock;

    explicit Pace(double speed)
        : m_speed(speed)
    {}

    bool isPaused() const { return !(m_speed > 0); }
    bool hasLimit() const { return m_speed < std::numeric_limits<double>::infinity(); }

    // The day's clock goes on from its last record at the new speed.
    void setSpeed(double speed)
    {
        m_speed = speed;
        if (m_last)
            m_anchor = Anchor{Clock::now(), *m_last};
    }

    // When the record of `timetag` is due. The first one is due now. Not while paused.
    Clock::time_point due(__int64 timetag)
    {
        if (!m_anchor)
            m_anchor = Anchor{Clock::now(), timetag};
        // A year apart is enough for any pace, and far from what the clock cannot hold.
        constexpr double kLongest = 365.0 * 24 * 3600 * 1000;
        const double apart = (static_cast<double>(timetag) - static_cast<double>(m_anchor->timetag)) / m_speed;
        return m_anchor->wall + std::chrono::duration_cast<Clock::duration>(
                                    std::chrono::duration<double, std::milli>(std::clamp(apart, 0.0, kLongest)));
    }

    void passed(__int64 timetag) { m_last = timetag; }

private:
    struct Anchor {
        Clock::time_point wall;
        __int64 timetag;
    };

    double m_speed;
    std::optional<Anchor> m_anchor;
    std::optional<__int64> m_last;
};

} // namespace recording
