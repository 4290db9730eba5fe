#pragma once

#include "indexui/tessimodel/detail/markets.h"
#include "indexui/tessimodel/detail/volumestep.h"
#include "IndexUtils/instrumentdetails.h"
#include "quoter/quoterdepthdata.h"

// How a book model follows the latest step of the day volume, over the members that the models share by name
// (m_stock, m_quoter, m_quoterLastVolume, m_hasAfterHours, m_afterHoursVolume). The caller holds m_mutex.
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
        if (const auto step = continuousStep<quoter::QuoterDepthData>(records, dayVolume))
            model.m_afterHoursVolume = *step;
    }
    if (const auto step = latestStep(records, last, rules, dayVolume))
        model.m_quoterLastVolume = *step;
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
    } else if (isAfterHours(last->tradeStatus) && model.m_quoter && !isAfterHours(model.m_quoter->tradeStatus)) {
        model.m_afterHoursVolume = model.m_quoterLastVolume;
        model.m_quoterLastVolume = low32(dayVolume(last));
    }
}

} // namespace TC::detail
