#include "indexui/tessimodel/cmodeldepthholographic.h"

#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/tradeside.h"
#include "quoter/quoterdepthdata.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace TC {

using namespace detail;

namespace {

using SeqPairs = std::map<int, CModelDepthTransaction::SeqPair>;

// The first snapshot whose rows cover the index. Pairs may overlap, so that only a walk finds it.
SeqPairs::const_iterator pairOfRow(const SeqPairs& pairs, int index)
{
    return std::find_if(pairs.begin(), pairs.end(), [index](const auto& entry) {
        const auto& [first, last] = entry.second;
        return first <= index && index <= last;
    });
}

// Of the second if it is a snapshot's, else of the latest before it; the end when there is none.
SeqPairs::const_iterator pairUpTo(const SeqPairs& pairs, int second)
{
    const auto above = pairs.upper_bound(second);
    return above == pairs.begin() ? pairs.end() : std::prev(above);
}

SeqPairs::const_iterator nextOrSame(const SeqPairs& pairs, SeqPairs::const_iterator entry)
{
    return std::next(entry) == pairs.end() ? entry : std::next(entry);
}

SeqPairs::const_iterator previousOrSame(const SeqPairs& pairs, SeqPairs::const_iterator entry)
{
    return entry == pairs.begin() ? entry : std::prev(entry);
}

} // namespace

void CModelDepthHolographic::clear()
{
    m_viewStartTime = -1;
    m_viewEndTime = -1;
    m_startIndex = -1;
    m_endIndex = -1;
    m_maxPrice = 0;
    m_minPrice = 0;
    CModelDepthTransaction::clear();
}

int CModelDepthHolographic::getStartIndex() const
{
    return m_startIndex;
}

int CModelDepthHolographic::getEndIndex() const
{
    return m_endIndex;
}

void CModelDepthHolographic::setFullHeightHandle(const int& handle)
{
    m_fullHeightHandle = handle;
}

bool CModelDepthHolographic::setViewTimeRange(const int& start, const int& end)
{
    m_viewStartTime = start;
    m_viewEndTime = end;
    return recalcMaxMinSeqAndPrice();
}

bool CModelDepthHolographic::recalcMaxMinSeqAndPrice()
{
    int start = find(m_viewStartTime).first;
    if (start == -1)
        start = find(m_viewStartTime, false);
    int end = find(m_viewEndTime).second;
    if (end == -1)
        end = find(m_viewEndTime, true);
    if (start != -1 && end == -1)
        end = lastIndex();

    const bool rowsChanged = start != m_startIndex || end != m_endIndex;
    m_startIndex = start;
    m_endIndex = end;
    return recalcMaxMinPrice() || rowsChanged;
}

int CModelDepthHolographic::lastIndex() const
{
    const ModelLock lock(m_mutex);
    return m_rowCount - 1;
}

bool CModelDepthHolographic::recalcMaxMinPrice()
{
    int height = 1;
    double maxPrice = 0;
    double minPrice = 0;
    if (m_startIndex != -1 || m_endIndex != -1) {
        bool isFirst = true;
        height = sum32(difference32(m_endIndex, m_startIndex), 1);
        for (int i = m_startIndex; i <= m_endIndex; ++i) {
            const Row row = getData(i);
            height = sum32(height, row ? row->hands : -1);
            if (!row)
                continue;
            if (isFirst || isGreater(row->price, maxPrice))
                maxPrice = row->price;
            if (isFirst || isLess(row->price, minPrice))
                minPrice = row->price;
            isFirst = false;
        }
    }
    const bool changed =
        height != m_totalHeight || isDifferent(maxPrice, m_maxPrice) || isDifferent(minPrice, m_minPrice);
    m_totalHeight = height;
    m_maxPrice = maxPrice;
    m_minPrice = minPrice;
    return changed;
}

bool CModelDepthHolographic::findSeq(int second, int volume, SeqPair& rows)
{
    {
        const ModelLock lock(m_mutex);
        const auto entry = m_seqPairs.find(second);
        rows = entry == m_seqPairs.end() ? kNoPair : entry->second;
        if (entry != m_seqPairs.end())
            return true;
    }
    return volume > 0 && tryMatch(second, volume, rows);
}

// Only a closed pair is split: the rows of the latest snapshots are still being matched. A pair is split before the row
// with which the running hands move away from the volume; where they never do, its last row starts the rest.
bool CModelDepthHolographic::tryMatch(int second, int volume, SeqPair& rows)
{
    const ModelLock lock(m_mutex);
    if (m_seqPairs.empty())
        return false;
    const auto following = m_seqPairs.upper_bound(second);
    if (following == m_seqPairs.end()) {
        const int firstFree = m_seqPairs.rbegin()->second.second + 1;
        if (firstFree >= m_rowCount)
            return false;
        rows = {firstFree, m_rowCount - 1};
        return true;
    }

    const auto [first, last] = following->second;
    if (first == last) {
        rows = following->second;
        return true;
    }
    rows = {first, last};
    int rest = last;
    __int64 shares = 0;
    __int64 best = kFarthest;
    for (int i = first; i <= last; ++i) {
        shares = sum64(shares, m_rows.at(i)->volume);
        const __int64 difference = distance64(volume, handsFloor64(shares, m_volumeUnit));
        if (difference > best) {
            rows = {first, i - 1};
            rest = i;
            break;
        }
        best = difference;
    }
    if (m_lastMatchedQuote >= 0 && following->first < secondOfQuote(m_lastMatchedQuote)) {
        m_seqPairs.insert_or_assign(following, second, rows);
        following->second.first = rest;
    }
    return true;
}

E_DEAL_KIND CModelDepthHolographic::getDataKind(const Row& row, bool isBuy) const
{
    if (!row)
        return DEAL_SINGLE;
    const ModelLock lock(m_mutex);
    const TradeSide& side = tradeSide(isBuy);
    const int prevIndex = (*row).*side.prevIndex;
    if (prevIndex == -1)
        return (*row).*side.nextIndex == -1 ? DEAL_SINGLE : DEAL_NEAR_SAME_PRICE;

    const Row previous = getData(prevIndex);
    const bool isNear = getData(sum32(prevIndex, 1)) == row;
    const bool isSamePrice = previous && std::abs(previous->price - row->price) < m_priceTick * 0.5;
    if (isSamePrice)
        return isNear ? DEAL_NEAR_SAME_PRICE : DEAL_FAR_SAME_PRICE;
    return isNear ? DEAL_NEAR_OTHER_PRICE : DEAL_FAR_OTHER_PRICE;
}

CModelDepthTransaction::SeqPair CModelDepthHolographic::getCurrSeqPair(const int& index) const
{
    const ModelLock lock(m_mutex);
    const auto entry = pairOfRow(m_seqPairs, index);
    return entry == m_seqPairs.end() ? kNoPair : entry->second;
}

CModelDepthTransaction::SeqPair CModelDepthHolographic::getNextSeqPair(const int& index) const
{
    const ModelLock lock(m_mutex);
    const auto entry = pairOfRow(m_seqPairs, index);
    return entry == m_seqPairs.end() ? kNoPair : nextOrSame(m_seqPairs, entry)->second;
}

CModelDepthTransaction::SeqPair CModelDepthHolographic::getPreSeqPair(const int& index) const
{
    const ModelLock lock(m_mutex);
    const auto entry = pairOfRow(m_seqPairs, index);
    return entry == m_seqPairs.end() ? kNoPair : previousOrSame(m_seqPairs, entry)->second;
}

int CModelDepthHolographic::getCurrQuoterTimgtag(const int& index) const
{
    const ModelLock lock(m_mutex);
    const auto entry = pairOfRow(m_seqPairs, index);
    return entry == m_seqPairs.end() ? -1 : entry->first;
}

int CModelDepthHolographic::getNextQuoterTimgtag(const int& second) const
{
    const ModelLock lock(m_mutex);
    const auto entry = pairUpTo(m_seqPairs, second);
    if (entry == m_seqPairs.end())
        return -1;
    return entry->first == second ? nextOrSame(m_seqPairs, entry)->first : entry->first;
}

int CModelDepthHolographic::getPreQuoterTimgtag(const int& second) const
{
    const ModelLock lock(m_mutex);
    const auto entry = pairUpTo(m_seqPairs, second);
    if (entry == m_seqPairs.end())
        return -1;
    return entry->first == second ? previousOrSame(m_seqPairs, entry)->first : entry->first;
}

} // namespace TC
