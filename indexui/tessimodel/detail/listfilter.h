#pragma once

#include "indexui/tessimodel/depthfilter.h"
#include "indexui/tessimodel/detail/dayclock.h"
#include "utils/int64.h"

// The tests of a tick list's filter that both lists share. In the header, since each record is tested.
namespace TC::detail {

enum FilterMode { kAtLeast = 0, kMoreThan = 1, kEqualTo = 2 }; // the last of hands only

// The time of day of a row, in seconds since the epoch, lies within the filter's, both ends included.
inline bool isInTimeOfDay(const SDepthFilterParam& filter, __int64 time, DayClock& clock)
{
    const int timeOfDay = clock.millisecondsAt(time);
    return timeOfDay >= filter.startTime && timeOfDay <= filter.endTime;
}

inline bool areHandsIn(const SDepthFilterParam& filter, int hands)
{
    switch (filter.handsMode) {
    case kAtLeast:
        return hands >= filter.hands;
    case kMoreThan:
        return hands > filter.hands;
    default:
        return hands == filter.hands;
    }
}

// The size passes. A mode that is not known lets every size pass, whatever the other mode says.
inline bool isInSizeRange(const SDepthFilterParam& filter, int hands, double amount)
{
    if (filter.handsMode < kAtLeast || filter.handsMode > kEqualTo || filter.amountMode < kAtLeast ||
        filter.amountMode > kMoreThan)
        return true;
    const bool enoughHands = areHandsIn(filter, hands);
    if (enoughHands == (filter.connective == 0))
        return enoughHands; // the amount cannot change it
    return filter.amountMode == kAtLeast ? amount >= filter.amount : amount > filter.amount;
}

} // namespace TC::detail
