#pragma once

#include "exchange/order.h"
#include "exchange/random.h"

#include <vector>

namespace exchange {

// The contracts of a future or an option that are held: each trade may open a position on both sides, hand one over,
// or close one on both sides.
class OpenInterest {
public:
    explicit OpenInterest(const Random& random)
        : m_random(random)
    {}

    void add(const std::vector<Fill>& fills)
    {
        for (const Fill& fill : fills) {
            const int draw = m_random.below(100);
            if (draw < kOpening)
                m_contracts += fill.volume;
            else if (draw < kOpening + kClosing && m_contracts > fill.volume)
                m_contracts -= fill.volume;
        }
    }

    __int64 contracts() const { return m_contracts; } // always above 0

private:
    static constexpr int kOpening = 35; // per cent of the trades
    static constexpr int kClosing = 32;

    Random m_random;
    __int64 m_contracts = 120'000; // of the day before
};

} // namespace exchange
