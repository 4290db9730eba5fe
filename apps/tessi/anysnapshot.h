#pragma once

#include "apps/tessi/session.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"

#include <memory>

// What snapshots of both levels have in common; 0 of a record that is none.
namespace tessi {

// Calls `use` with a snapshot of either level, and passes over any other record.
template <class Use>
void withSnapshot(const std::shared_ptr<quoter::QuoterBase>& record, const Use& use)
{
    if (const auto level2 = std::dynamic_pointer_cast<quoter::QuoterDepthData>(record))
        use(level2);
    else if (const auto level1 = std::dynamic_pointer_cast<quoter::QuoterAllData>(record))
        use(level1);
}

inline __int64 volumeOf(const std::shared_ptr<quoter::QuoterBase>& record)
{
    __int64 volume = 0;
    withSnapshot(record, [&volume](const auto& snapshot) { volume = snapshot->volume; });
    return volume;
}

inline double amountOf(const std::shared_ptr<quoter::QuoterBase>& record)
{
    double amount = 0;
    withSnapshot(record, [&amount](const auto& snapshot) { amount = snapshot->amount; });
    return amount;
}

inline bool isAfterHours(const std::shared_ptr<quoter::QuoterBase>& record)
{
    int status = 0;
    withSnapshot(record, [&status](const auto& snapshot) { status = snapshot->tradeStatus; });
    return status >= kAfterHoursStatus;
}

} // namespace tessi
