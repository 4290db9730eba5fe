#pragma once

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "IndexUtils/quotefields.h"

#include <cstddef>
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

// Where the newest snapshot of the continuous phase stands in the batch.
template <class Snapshot>
std::optional<std::size_t> newestContinuous(const RecordList& records)
{
    for (std::size_t i = records.size(); i-- > 0;) {
        const auto* const snapshot = recordAs<Snapshot>(records[i].get());
        if (snapshot && !isAfterHours(snapshot->tradeStatus))
            return i;
    }
    return std::nullopt;
}

// The snapshot from which a step to `snapshot` is counted: the nearest before `position` with less volume. Null when
// there is none.
template <class Snapshot>
std::shared_ptr<Snapshot> baseOfStep(const RecordList& records, std::size_t position,
                                     const std::shared_ptr<Snapshot>& snapshot, DayVolume dayVolume)
{
    for (std::size_t i = position; i-- > 0;) {
        auto base = recordAs<Snapshot>(records[i]);
        if (base && dayVolume(base) < dayVolume(snapshot))
            return base;
    }
    return nullptr;
}

// The step that led to the snapshot at `position`, whatever the phases.
template <class Snapshot>
std::optional<__int64> stepAt(const RecordList& records, std::size_t position, DayVolume dayVolume)
{
    const auto snapshot = recordAs<Snapshot>(records[position]);
    const auto base = baseOfStep(records, position, snapshot, dayVolume);
    if (!base)
        return std::nullopt;
    return difference64(dayVolume(snapshot), dayVolume(base));
}

// The step that led to `last`, the newest snapshot of the batch.
template <class Snapshot>
std::optional<__int64> latestStep(const RecordList& records, const std::shared_ptr<Snapshot>& last,
                                  const VolumeStepRules& rules, DayVolume dayVolume)
{
    const __int64 volume = dayVolume(last);
    for (auto record = records.crbegin() + 1; record != records.crend(); ++record) {
        const auto snapshot = recordAs<Snapshot>(*record);
        if (!snapshot)
            continue;
        const int status = snapshot->tradeStatus;
        if (rules.hasAfterHours && entersAfterHours(status, last->tradeStatus))
            return volume;
        if (!rules.hasAfterHours && isAfterHoursPhase(status))
            continue;
        if (dayVolume(snapshot) >= volume)
            continue;
        if (rules.isMainland && isAfterHoursPhase(status) != isAfterHoursPhase(last->tradeStatus))
            continue;
        return difference64(volume, dayVolume(snapshot));
    }
    return std::nullopt;
}

} // namespace TC::detail
