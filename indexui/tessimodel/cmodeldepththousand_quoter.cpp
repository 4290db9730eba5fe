#include "indexui/tessimodel/cmodeldepththousand.h"

#include "indexui/tessimodel/detail/snapshotrows.h"
#include "indexui/tessimodel/detail/snapshotstep.h"
#include "quoter/quoterdepthdata.h"

namespace TC {

using namespace detail;

bool CModelDepthThousand::isContinousStatus(const std::shared_ptr<quoter::QuoterDepthData>& record) const
{
    return isContinuousTrading(*record);
}

void CModelDepthThousand::doQuoter(int, int batchKind, const Batch& batch)
{
    takeSnapshots(*this, batch, [&](const DepthPtr& last, DayVolume dayVolume) {
        if (batchKind == kHistoryStart)
            m_quoterLastVolume = 0;
        if (isHistory(batchKind))
            takeHistoryStep(*this, batch->records, last, dayVolume);
        else
            takeLiveStep(*this, last, dayVolume);
        // In a history it is the base already, so that its time does not count.
        if (!m_quoter || dayVolume(m_quoter) < dayVolume(last)) {
            m_quoterVolumeTime = last->timetag;
            m_quoter = last;
        }
    });
}

} // namespace TC
