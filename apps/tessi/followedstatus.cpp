#include "apps/tessi/followedstatus.h"

#include "apps/tessi/anysnapshot.h"
#include "Formula/formulaparam.h"
#include "recording/recordedday.h"
#include "utils/stockkey.h"

#include <QString>

#include <algorithm>

namespace tessi {

FollowedStatus::FollowedStatus(const recording::RecordedDay& day, recording::Stream snapshots)
    : m_stream(snapshots)
    , m_panelThread(utils::CSingletonT<net::RPCEngine>::instance()->getStrand("panel"))
{
    model.setStock(QString::fromStdString(utils::zlStockKey(day.instrument.market, day.instrument.code)));
}

void FollowedStatus::subscribe(recording::DataLayer& data)
{
    TC::CFormulaParam request;
    model.getParams(request);
    data.subscribe(request, m_stream, [this](int batchKind, const recording::RecordBatch& records) {
        m_panelThread->post([this, batchKind, records] {
            if (batchKind == 0)
                m_snapshots.clear();
            m_snapshots.insert(m_snapshots.end(), records.begin(), records.end());
            model.quoterCallBack(0, batchKind, records);
        });
    });
}

std::optional<__int64> FollowedStatus::showAt(__int64 timetag)
{
    const auto isSeen = [timetag](const auto& snapshot) { return snapshot->timetag <= timetag; };
    const auto found = std::find_if(m_snapshots.rbegin(), m_snapshots.rend(), isSeen);
    if (found == m_snapshots.rend())
        return std::nullopt;
    const auto before = std::next(found);
    const auto index = static_cast<std::size_t>(std::distance(found, m_snapshots.rend())) - 1;
    model.connectTickData(*found, before == m_snapshots.rend() ? nullptr : *before, tickVolumeAt(index));
    return (*found)->timetag;
}

// The day volume's latest growth. Where it counts anew after hours, all that it shows first is one tick.
__int64 FollowedStatus::tickVolumeAt(std::size_t snapshot) const
{
    const bool countsAnew = model.m_hasAfterHours || model.m_hasAfterHoursSz;
    for (; snapshot > 0; --snapshot) {
        const auto& now = m_snapshots[snapshot];
        const auto& before = m_snapshots[snapshot - 1];
        if (countsAnew && isAfterHours(now) && !isAfterHours(before))
            return volumeOf(now);
        if (volumeOf(before) < volumeOf(now))
            return volumeOf(now) - volumeOf(before);
    }
    return 0;
}

} // namespace tessi
