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
        takeVolumeStep(*this, batchKind, batch->records, last, dayVolume);
        if (advanceBase(*this, last, dayVolume))
            m_quoterVolumeTime = last->timetag;
    });
}

} // namespace TC
