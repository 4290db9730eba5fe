#pragma once

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "IndexUtils/quotefields.h"

#include <memory>
#include <optional>

// The size of the latest step of the day volume, found by going back through a batch of snapshots. Records of other
// types are passed over.
namespace TC::detail {

// A snapshot's volume of the day, in the form that the instrument asks for.
struct DayVolume {
    bool isNewLoan = false;

    template <class Snapshot>
    __int64 operator()(const std::shared_ptr<Snapshot>& record) const
    {
        return getVolumeEx(isNewLoan, record);
    }
};

// What the search depends on.
struct VolumeStepRules {
    bool hasAfterHours = false; // the instrument has an after-hours phase, which counts its volume from nothing
    bool isMainland = false;    // a step from one phase into the other is none
};

// The last step of the continuous phase: from the newest snapshot of that phase back to the nearest with less volume.
template <class Snapshot>
std::optional<int> continuousStep(const RecordList& records, DayVolume dayVolume)
{
    std::shared_ptr<Snapshot> newest;
    for (auto record = records.crbegin(); record != records.crend(); ++record) {
        const auto snapshot = recordAs<Snapshot>(*record);
        if (!snapshot)
            continue;
        if (!newest) {
            if (!isAfterHours(snapshot->tradeStatus))
                newest = snapshot;
        } else if (dayVolume(snapshot) < dayVolume(newest)) {
            return low32(difference64(dayVolume(newest), dayVolume(snapshot)));
        }
    }
    return std::nullopt;
}

// The snapshot from which a step to `last`, the newest of the batch, is counted: the nearest before it with less
// volume. Null when there is none.
template <class Snapshot>
std::shared_ptr<Snapshot> baseOfStep(const RecordList& records, const std::shared_ptr<Snapshot>& last,
                                     DayVolume dayVolume)
{
    for (auto record = records.crbegin() + 1; record != records.crend(); ++record) {
        auto snapshot = recordAs<Snapshot>(*record);
        if (snapshot && dayVolume(snapshot) < dayVolume(last))
            return snapshot;
    }
    return nullptr;
}

// The step that led to `last`, the newest snapshot of the batch.
template <class Snapshot>
std::optional<int> latestStep(const RecordList& records, const std::shared_ptr<Snapshot>& last,
                              const VolumeStepRules& rules, DayVolume dayVolume)
{
    const __int64 volume = dayVolume(last);
    for (auto record = records.crbegin() + 1; record != records.crend(); ++record) {
        const auto snapshot = recordAs<Snapshot>(*record);
        if (!snapshot)
            continue;
        const int status = snapshot->tradeStatus;
        if (rules.hasAfterHours && entersAfterHours(status, last->tradeStatus))
            return low32(volume);
        if (!rules.hasAfterHours && isAfterHoursPhase(status))
            continue;
        if (dayVolume(snapshot) >= volume)
            continue;
        if (rules.isMainland && isAfterHoursPhase(status) != isAfterHoursPhase(last->tradeStatus))
            continue;
        return low32(difference64(volume, dayVolume(snapshot)));
    }
    return std::nullopt;
}

} // namespace TC::detail
