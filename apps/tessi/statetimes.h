#pragma once

#include "apps/tessi/placement.h"
#include "utils/int64.h"

#include <vector>

namespace tessi {

// A record and the ticks that it contains are stamped within this time, in ms. The exchange's stamps of the two are up
// to some 3 seconds apart; the rest is room.
inline constexpr __int64 kStampWindow = 10'000;

// When the states of a walk through a day's ticks held. State 0 is the one before the first tick, state n the one after
// the nth. Where stamps go back, as those of an auction that is delivered late, time stands still. One thread.
class StateTimes {
public:
    // Of the next tick.
    void add(__int64 timetag);

    // The states that held at some time within the window around this one; never none.
    StateRange around(__int64 timetag) const;

private:
    std::vector<__int64> m_latest; // by tick, the latest stamp up to it
};

} // namespace tessi
