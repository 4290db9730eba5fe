#include "indexui/tessimodel/cmodeldepththousand.h"

#include "indexui/tessimodel/detail/snapshotrows.h"
#include "indexui/tessimodel/detail/snapshotstep.h"
#include "indexui/tessimodel/detail/tickhistory.h"
#include "quoter/quoterdepthdata.h"

namespace TC {

using namespace detail;

bool CModelDepthThousand::isContinousStatus(const std::shared_ptr<quoter::QuoterDepthData>& record) const
{
    return isContinuousTrading(*record);
}

void CModelDepthThousand::doQuoter(int, int batchKind, const Batch& batch)
{
    if (!stockFor(batch) || batch->records.empty())
        return;
    const auto last = recordAs<quoter::QuoterDepthData>(batch->records.back());
    if (!last || last->timetag <= m_quoterTimetag)
        return;
    m_continuous = isContinousStatus(last);
    if (!m_continuous)
        return; // an auction's prices are indicative
    m_quoterTimetag = last->timetag;
    const int flags = flagsOfSnapshot(last->timetag);

    const ModelLock lock(m_mutex);
    if (!isFor(batch, m_stock))
        return; // the model has moved on to another instrument meanwhile
    const DayVolume dayVolume{m_isNewLoan};
    m_quoterLastPrice = getLastPriceEx(dayVolume.isNewLoan, last);
    if (batchKind == kHistoryStart)
        m_quoterLastVolume = 0;
    if (isHistory(batchKind))
        takeHistoryStep(*this, batch->records, last, dayVolume);
    else
        takeLiveStep(*this, last, dayVolume);
    if (!m_quoter || dayVolume(m_quoter) < dayVolume(last)) {
        m_quoterVolumeTime = last->timetag;
        m_quoter = last;
    }
    m_askFloor = takeAsks(*last, m_priceTick, m_snapshotAsks);
    m_bidCeiling = takeBids(*last, m_priceTick, m_snapshotBids);
    m_updateFlags |= flags; // last: who takes them finds the rows of this snapshot
}

// What a snapshot raises. It shows only where it is newer than the ticks, unless ticks raise nothing themselves.
int CModelDepthThousand::flagsOfSnapshot(__int64 timetag) const
{
    const __int64 ticksTimetag = m_book.m_lastTimetag;
    if (m_loadedHistory != kBothLoaded || !(m_suppressTickFlags || timetag > ticksTimetag))
        return 0;
    if (ticksTimetag == 0)
        return kUpdateRebuilt;
    return m_suppressTickFlags ? kUpdateLevels : kUpdateInPlace;
}

} // namespace TC
