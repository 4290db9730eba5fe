#pragma once

#include "exchange/random.h"
#include "exchange/tradingday.h"

#include <algorithm>

namespace exchange {

// The numbering of the channel that carries the stock: orders and trades of all its stocks share one sequence from
// 1, so that one stock sees gaps which grow with the time between its own events.
//
// Fits 32 bits: the other stocks take at most some 15 million numbers in a day, our own a few for each order.
class Channel {
public:
    explicit Channel(const Random& random)
        : m_random(random)
    {}

    // The number of an event of our stock at `now`, which never falls.
    __int64 next(DayTime now)
    {
        // Nothing is numbered while the exchange rests: a long silence counts as a short one.
        const DayTime silence = std::min(now - m_lastTime, kLongestSilence);
        m_lastTime = now;
        m_lastSeq += 1 + static_cast<__int64>(silence) * m_random.below(kOthersPerSecond) / 1000;
        return m_lastSeq;
    }

private:
    static constexpr DayTime kLongestSilence = clockTime(0, 1);
    static constexpr int kOthersPerSecond = 1000; // at most

    Random m_random;
    DayTime m_lastTime = kOpeningAuction;
    __int64 m_lastSeq = 0;
};

} // namespace exchange
