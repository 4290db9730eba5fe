#pragma once

#include "quoter/orderdata.h"
#include "tests/support/records.h"

#include <chrono>
#include <cstdlib>

// What tests of several threads feed their models with.
namespace tests {

// One second, or as many as TESSI_STRESS_SECONDS says.
inline std::chrono::seconds stressTime()
{
    const char* const seconds = std::getenv("TESSI_STRESS_SECONDS");
    return std::chrono::seconds(seconds ? std::strtol(seconds, nullptr, 10) : 1);
}

// A market that never ends: orders around 10.00, their fills and cancels, and snapshots that are now older and now
// newer than the ticks.
class EndlessDay {
public:
    Order nextOrder()
    {
        m_time += 10;
        const int ticks = static_cast<int>(random() % 40);
        Order next(++m_seq);
        // A few market orders among them, and now and then a price far off.
        next.kind(random() % 50 == 0 ? 2 : 1).shares(static_cast<__int64>(1 + random() % 3000));
        const double price = random() % 400 == 0 ? 500.0 : 9.80 + 0.01 * ticks;
        (random() % 2 == 0 ? next.buy(price) : next.sell(price));
        return at(next);
    }

    Trade nextTrade()
    {
        m_time += 10;
        const int buySeq = recent();
        const int sellSeq = recent();
        switch (random() % 4) {
        case 0:
            return at(cancelOfBuy(buySeq));
        case 1:
            return at(cancelOfSell(sellSeq));
        default:
            return at(fill(buySeq, sellSeq).at(10.00).shares(static_cast<__int64>(1 + random() % 1000)));
        }
    }

    Snapshot<quoter::QuoterDepthData> nextSnapshot()
    {
        const double best = 9.90 + 0.01 * static_cast<double>(random() % 20);
        const __int64 hands = static_cast<__int64>(random() % 4000);
        auto next = level2();
        next.last(best).volume(++m_dayVolume).bids({{best, hands}, {best - 0.03, 7}, {best - 0.05, 9}});
        if (random() % 5 != 0)
            next.asks({{best + (random() % 6 == 0 ? 0 : 0.02), hands + 1}, {best + 0.04, 3}});
        const std::shared_ptr<quoter::QuoterDepthData> record = next;
        record->timetag = m_time + static_cast<__int64>(random() % 40) - 20;
        return next;
    }

    struct History {
        Records orders;
        Records trades;
        Records snapshots;
    };

    // The next `count` records of each stream.
    History nextHistory(int count)
    {
        History next;
        for (int i = 0; i < count; ++i) {
            next.orders.push_back(nextOrder());
            next.trades.push_back(nextTrade());
            next.snapshots.push_back(nextSnapshot());
        }
        return next;
    }

private:
    template <class Tick>
    Tick at(Tick tick) const
    {
        const std::shared_ptr<quoter::QuoterBase> record = tick;
        record->timetag = m_time;
        return tick;
    }

    int recent() { return static_cast<int>(m_seq) - static_cast<int>(random() % 50) + 2; }
    unsigned random() { return m_random = m_random * 1664525U + 1013904223U, m_random >> 8; }

    unsigned m_random = 1;
    __int64 m_time = timeOf("09:30:00");
    __int64 m_seq = 0;
    __int64 m_dayVolume = 0;
};

} // namespace tests
