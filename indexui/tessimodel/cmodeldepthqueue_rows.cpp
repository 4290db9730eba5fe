#include "indexui/tessimodel/cmodeldepthqueue.h"

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/markets.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/queuerows.h"
#include "indexui/tessimodel/detail/snapshotrows.h"
#include "quoter/levelorderdata.h"
#include "quoter/quoterdepthdata.h"

#include <cmath>

namespace TC {

using namespace detail;

namespace {

template <class Snapshot>
bool isNewer(const Snapshot& record, const std::shared_ptr<Snapshot>& held)
{
    return !held || record.timetag > held->timetag;
}

// A level of a snapshot with what its side's queue says.
struct SnapshotLevel {
    double price;
    __int64 volume;
    double queuePrice;
    const std::vector<int>& queue;
};

// A row shows a level that has no price; one with an ordinary price stays bare. That is wanted, and so is that each
// level's price is held against the one price that the side has a queue for.
std::shared_ptr<OrderQueue> makeRow(const SnapshotLevel& level, bool isBid, double priceTick)
{
    auto row = std::make_shared<OrderQueue>();
    if (isUsable(level.price))
        return row;
    row->m_price = level.price;
    row->m_volume = level.volume;
    row->m_valid = true;
    row->m_isBid = isBid;
    if (std::abs(level.price - level.queuePrice) < priceTick)
        row->assignQueue(level.queue);
    return row;
}

} // namespace

bool CModelDepthQueue::isContinousStatus(const std::shared_ptr<quoter::QuoterDepthData>& record) const
{
    return isContinuousTrading(*record);
}

void CModelDepthQueue::doQuoter(int, int, const Records& records)
{
    const auto last = lastAs<quoter::QuoterDepthData>(records);
    const ModelLock lock(m_mutex);
    if (!m_stock || !last || !isNewer(*last, m_quoter))
        return;
    m_continuous = isContinuousTrading(*last);
    if (!m_continuous)
        return;
    m_quoter = last;
    joinSnapshots();
}

void CModelDepthQueue::doQueue(int, int, const Records& records)
{
    const auto last = lastAs<quoter::LevelOrderData>(records);
    const ModelLock lock(m_mutex);
    if (!m_stock || !last || !isNewer(*last, m_levelOrder) || !m_continuous)
        return;
    m_levelOrder = last;
    joinSnapshots();
}

// Two snapshots belong together when they are of the very same millisecond.
void CModelDepthQueue::joinSnapshots()
{
    if (m_quoter && m_levelOrder && m_quoter->timetag == m_levelOrder->timetag)
        updateRaw();
}

void CModelDepthQueue::updateRaw()
{
    const quoter::QuoterDepthData& levels = *m_quoter;
    const quoter::LevelOrderData& queues = *m_levelOrder;
    m_rawTimetag = levels.timetag;
    for (std::size_t i = 0; i < OrderQueueRows::kSlots; ++i) {
        m_asks[i] =
            makeRow({levels.askPrice[i], levels.askVolume[i], queues.askPrice, queues.askQueue}, false, m_priceTick);
        m_bids[i] =
            makeRow({levels.bidPrice[i], levels.bidVolume[i], queues.bidPrice, queues.bidQueue}, true, m_priceTick);
    }
}

bool CModelDepthQueue::checkUpdate(int& flags, OrderQueueList& bids, OrderQueueList&)
{
    ModelLock lock(m_mutex, boost::defer_lock);
    const int taken = takeFlags(*this, lock);
    if (taken == 0)
        return false;
    getBids(bids);
    flags = taken;
    return true;
}

void CModelDepthQueue::getBids(OrderQueueList& rows)
{
    const ModelLock lock(m_mutex);
    if (!m_stock || !isShenzhenMarket(m_stock->market))
        return;
    const bool isBookBuilt = m_loadedHistory == kBothLoaded;
    if (isBookBuilt && m_book.m_lastTimetag >= m_rawTimetag)
        return;
    rows.clear();
    appendShown(m_bids, rows, [&](double price) { return isBookBuilt && m_book.getLevel(true, price); });
}

void CModelDepthQueue::getAsks(OrderQueueList&) {}

} // namespace TC
