#pragma once

#include "indexui/tessimodel/detail/markets.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/snapshotrows.h"
#include "indexui/tessimodel/detail/volumestep.h"
#include "indexui/tessimodel/updateflags.h"
#include "IndexUtils/instrumentdetails.h"
#include "quoter/quoterdepthdata.h"

// How a book model takes a snapshot and follows the latest step of the day volume, over the members that the models
// share by name. The steps are taken under m_mutex.
namespace TC::detail {

using DepthPtr = std::shared_ptr<quoter::QuoterDepthData>;

// Of a history: its newest snapshot is the base of the next step, and the latest step is looked for behind it. Where
// there is none, the figure stays.
template <class Model>
void takeHistoryStep(Model& model, const RecordList& records, const DepthPtr& last, DayVolume dayVolume)
{
    model.m_quoter = last;
    const VolumeStepRules rules{model.m_hasAfterHours,
                                model.m_stock && isMainlandMarket(getDetailMarket(model.m_stock))};
    if (model.m_hasAfterHours) {
        const auto newest = newestContinuous<quoter::QuoterDepthData>(records);
        if (const auto step = newest ? stepAt<quoter::QuoterDepthData>(records, *newest, dayVolume) : std::nullopt)
            model.m_afterHoursVolume = low32(*step);
    }
    if (const auto step = latestStep(records, last, rules, dayVolume))
        model.m_quoterLastVolume = low32(*step);
    // When the after-hours phase is over, the figure of the continuous phase is shown again.
    if (model.m_hasAfterHours && last->tradeStatus == kStatusAfterHoursClosed)
        model.m_quoterLastVolume = model.m_afterHoursVolume;
}

// Of a live snapshot: the step from the base. On the way into the after-hours phase the figure is kept for its end,
// and the phase's own volume shows.
template <class Model>
void takeLiveStep(Model& model, const DepthPtr& last, DayVolume dayVolume)
{
    if (model.m_quoter && dayVolume(model.m_quoter) < dayVolume(last))
        model.m_quoterLastVolume = low32(difference64(dayVolume(last), dayVolume(model.m_quoter)));
    if (!model.m_hasAfterHours)
        return;
    if (last->tradeStatus == kStatusAfterHoursClosed) {
        model.m_quoterLastVolume = model.m_afterHoursVolume;
    } else if (model.m_quoter && entersAfterHours(model.m_quoter->tradeStatus, last->tradeStatus)) {
        model.m_afterHoursVolume = model.m_quoterLastVolume;
        model.m_quoterLastVolume = low32(dayVolume(last));
    }
}

// Of a batch: a first history forgets the step before.
template <class Model>
void takeVolumeStep(Model& model, int batchKind, const RecordList& records, const DepthPtr& last, DayVolume dayVolume)
{
    if (batchKind == kHistoryStart)
        model.m_quoterLastVolume = 0;
    if (isHistory(batchKind))
        takeHistoryStep(model, records, last, dayVolume);
    else
        takeLiveStep(model, last, dayVolume);
}

// Makes a snapshot with which the day volume grew the base of the next step. In a history it is the base already:
// false.
template <class Model>
bool advanceBase(Model& model, const DepthPtr& last, DayVolume dayVolume)
{
    if (model.m_quoter && dayVolume(model.m_quoter) >= dayVolume(last))
        return false;
    model.m_quoter = last;
    return true;
}

// What a snapshot raises. It shows only where it is newer than the ticks, unless ticks raise nothing themselves.
template <class Model>
int flagsOfSnapshot(const Model& model, __int64 timetag)
{
    const __int64 ticksTimetag = model.m_book.m_lastTimetag;
    if (model.m_loadedHistory != kBothLoaded || !(model.m_suppressTickFlags || timetag > ticksTimetag))
        return 0;
    if (ticksTimetag == 0)
        return kUpdateRebuilt;
    return model.m_suppressTickFlags ? kUpdateLevels : kUpdateInPlace;
}

// Takes a batch of snapshots, of which only the last becomes rows: one that is newer than the last taken, and of
// continuous trading, since the prices of an auction are indicative. `takeStep` follows the day volume.
template <class Model, class TakeStep>
void takeSnapshots(Model& model, const BatchPtr& batch, const TakeStep& takeStep)
{
    // One lock over all: a reader must not find the verdict without the limits that belong to it, nor a model that
    // moves on to another instrument the time of this one's snapshot.
    const ModelLock lock(model.m_mutex);
    if (!isFor(batch, model.m_stock))
        return;
    const auto last = lastAs<quoter::QuoterDepthData>(batch->records);
    if (!last || last->timetag <= model.m_quoterTimetag)
        return;
    const bool isContinuous = isContinuousTrading(*last);
    model.m_continuous = isContinuous;
    if (!isContinuous)
        return;
    model.m_quoterTimetag = last->timetag;
    const int flags = flagsOfSnapshot(model, last->timetag);
    const DayVolume dayVolume{model.m_isNewLoan};
    model.m_quoterLastPrice = getLastPriceEx(dayVolume.isNewLoan, last);
    takeStep(last, dayVolume);
    model.m_askFloor = takeAsks(*last, model.m_priceTick, model.m_snapshotAsks);
    model.m_bidCeiling = takeBids(*last, model.m_priceTick, model.m_snapshotBids);
    model.m_updateFlags |= flags; // last: who takes them finds the rows of this snapshot
}

} // namespace TC::detail
