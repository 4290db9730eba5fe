#pragma once

#include "recording/recordedday.h"
#include "utils/int64.h"

#include <map>
#include <string>
#include <vector>

namespace tests {

// What the statistics panels must show of a day, worked out a second time from the records of one of its snapshot
// streams: own loops in whole price ticks, nothing of the library.
class PlainSnapshots {
public:
    // `afterHours`: trades at a fixed price after the close, with a volume of its own.
    PlainSnapshots(const recording::RecordedDay& day, recording::Stream stream, bool afterHours);

    struct Level {
        __int64 ticks, hands;
    };
    struct Shot {
        __int64 time, shares, hands;
        int status;
        double last, lastClose;
        std::vector<Level> asks, bids; // best first
    };

    // One step of the day's volume, in the direction that the price before tells.
    struct Tick {
        __int64 ticks, hands;
        bool isBuy;
        __int64 sharesBefore, sharesAfter; // of the day
    };

    struct Row {
        __int64 buy = 0;
        __int64 sell = 0;
    };

    // The book of the last snapshot up to `time`, with what each level has changed since the one before, the last price
    // and the latest growth of the volume: "ask 3: 1005 x 20 +19\n". At the end of the fixed-price phase, all of these
    // are the close's.
    std::string statusText(__int64 time) const;

    std::vector<Tick> ticks() const;
    std::map<__int64, Row, std::greater<>> distribution() const; // by price in ticks, highest first

    // The last cumulative volume that counts.
    __int64 lastHands() const;

    const std::vector<Shot>& shots() const { return m_shots; }
    double priceTick() const { return m_tick; }
    __int64 ticksOf(double price) const;

private:
    static constexpr int kFixedPrice = 22;
    static constexpr int kFixedPriceEnded = 23;

    template <class Record>
    void read(const Record& record, int unit);
    bool counts(const Shot& shot) const { return !m_afterHours || shot.status < kFixedPrice; }
    __int64 latestGrowth(std::size_t shot) const;
    std::string textOf(std::size_t shot) const;

    const double m_tick;
    const double m_lastClose;
    const bool m_afterHours;
    const bool m_isIndex;
    std::vector<Shot> m_shots;
};

// A line of statusText.
std::string levelText(const char* side, int level, __int64 ticks, __int64 hands, __int64 change);
std::string figuresText(__int64 lastTicks, __int64 tickHands);

} // namespace tests
