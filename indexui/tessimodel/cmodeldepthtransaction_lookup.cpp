#include "indexui/tessimodel/cmodeldepthtransaction.h"

#include "indexui/tessimodel/cmodeltransaction.h"
#include "indexui/tessimodel/detail/listrows.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/tradeside.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"

#include <algorithm>
#include <iterator>

namespace TC {

using namespace detail;

CModelDepthTransaction::Row CModelDepthTransaction::getData(int index) const
{
    const ModelLock lock(m_mutex);
    return rowAt(m_filteredRows, index);
}

CModelDepthTransaction::SeqPair CModelDepthTransaction::find(int second) const
{
    const ModelLock lock(m_mutex);
    const auto pair = m_seqPairs.find(second);
    return pair == m_seqPairs.end() ? kNoPair : pair->second;
}

// After a change of the filter the minutes' numbers are out of date, and the search may begin too late.
int CModelDepthTransaction::find(int second, bool forward) const
{
    const ModelLock lock(m_mutex);
    if (m_rowCount == 0)
        return -1;
    const auto minute = m_minuteIndex.upper_bound(second);
    const int start = minute == m_minuteIndex.begin() ? 0 : std::clamp(std::prev(minute)->second, 0, m_rowCount);
    const auto isBefore = [second, forward](const Row& row) {
        return forward ? row->time <= second : row->time < second;
    };
    // Trades come by time, but for those that waited for their history: behind these only a walk finds the first.
    const auto from = m_filteredRows.begin() + start;
    const auto end = m_filteredRows.end();
    const auto found =
        m_timesAscend ? std::partition_point(from, end, isBefore) : std::find_if_not(from, end, isBefore);
    if (found == end)
        return m_filteredRows.constLast()->time == second ? m_rowCount - 1 : -1;
    const auto index = static_cast<int>(found - m_filteredRows.begin());
    return forward ? std::max(index - 1, 0) : index;
}

bool CModelDepthTransaction::tryFind(const TransData* tick, SeqPair& rows) const
{
    if (!tick)
        return false;
    const ModelLock lock(m_mutex);
    if (!m_quotes.isEmpty() && tick->timetag <= toSeconds(m_quotes.constLast()->timetag))
        return false;
    const int firstFree = m_seqPairs.empty() ? 0 : m_seqPairs.rbegin()->second.second + 1;
    if (firstFree >= m_rowCount)
        return false;

    int index = m_rowCount;
    __int64 hands = 0;
    do {
        --index;
        hands += m_filteredRows.at(index)->hands;
    } while (hands < tick->volume && index > firstFree);
    rows = {index, m_rowCount - 1};
    return true;
}

int CModelDepthTransaction::tracebackSeq(int index) const
{
    const ModelLock lock(m_mutex);
    return runOfSecond(m_filteredRows, index);
}

std::shared_ptr<quoter::OrderData> CModelDepthTransaction::getOrder(__int64 seq) const
{
    const ModelLock lock(m_mutex);
    const auto order = m_orders.find(seq);
    return order == m_orders.end() ? nullptr : order->second;
}

int CModelDepthTransaction::getEntrustVolume(const Row& row, bool isBuy) const
{
    if (!row)
        return -1;
    const ModelLock lock(m_mutex);
    const TradeSide& side = tradeSide(isBuy);
    const auto order = m_orders.find((*row).*side.seq);
    if (order != m_orders.end())
        return handsRounded(low32(order->second->volume), m_volumeUnit);
    const int others = sum32(linkedShares(*row, side.prevIndex), linkedShares(*row, side.nextIndex));
    return handsRounded(sum32(row->volume, others), m_volumeUnit);
}

// What the rows that the links lead to have traded. A filter that refuses rows can lead the links astray, and in a
// circle: they end with as many steps as there are rows.
int CModelDepthTransaction::linkedShares(const DepthTransData& row, int DepthTransData::*link) const
{
    int shares = 0;
    int index = row.*link;
    for (int steps = 0; steps < m_rowCount && index >= 0 && index < m_rowCount; ++steps) {
        const DepthTransData& linked = *m_filteredRows.at(index);
        shares = sum32(shares, linked.volume);
        index = linked.*link;
    }
    return shares;
}

} // namespace TC
