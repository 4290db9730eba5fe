#include "tests/tessimodel/oracle/lists/naivetradelist.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <cmath>
#include <set>

namespace tests::oracle::lists {

bool isOrderSpecial(const RecordPtr& order)
{
    return order && std::set<int>{2, 4, 5, 6, 7}.contains(order->orderKind);
}

std::string orderSpecialName(const RecordPtr& order)
{
    static const std::map<int, std::string> names = {
        {2, "即时成交剩余撤销"}, {3, "ETF基金申报"},  {4, "最优五档即时成交剩余撤销"},
        {5, "全额成交或撤销"},   {6, "本方最优价格"}, {7, "对手方最优价格"},
    };
    return order && names.contains(order->orderKind) ? names.at(order->orderKind) : "";
}

NaiveTradeList::Row NaiveTradeList::getData(int index) const
{
    if (index < 0 || index >= m_rowCount)
        return nullptr;
    return m_filteredRows.at(static_cast<std::size_t>(index));
}

NaiveTradeList::SeqPair NaiveTradeList::find(int second) const
{
    const auto found = m_seqPairs.find(second);
    return found == m_seqPairs.end() ? SeqPair{-1, -1} : found->second;
}

int NaiveTradeList::startOfMinute(int second) const
{
    int start = 0;
    for (const auto& [minute, number] : m_minuteIndex) {
        if (minute <= second)
            start = number;
    }
    return start == -1 ? 0 : start;
}

int NaiveTradeList::find(int second, bool forward) const
{
    if (m_rowCount == 0)
        return -1;
    for (int i = startOfMinute(second); i < m_rowCount; ++i) {
        const __int64 time = m_filteredRows.at(static_cast<std::size_t>(i))->time;
        if (forward && time > second)
            return i - 1 < 0 ? 0 : i - 1;
        if (!forward && time >= second)
            return i;
    }
    return m_filteredRows.back()->time == second ? m_rowCount - 1 : -1;
}

bool NaiveTradeList::tryFind(const NaiveTick* tick, SeqPair& rows) const
{
    if (!tick)
        return false;
    if (!m_quotes.empty() && tick->timetag <= secondOf(*m_quotes.back()))
        return false;
    const int firstFree = m_seqPairs.empty() ? 0 : m_seqPairs.rbegin()->second.second + 1;
    if (firstFree >= m_rowCount)
        return false;
    __int64 sum = 0;
    for (int i = m_rowCount - 1; i >= firstFree; --i) {
        sum += m_filteredRows.at(static_cast<std::size_t>(i))->hands;
        if (sum >= tick->volume) {
            rows = {i, m_rowCount - 1};
            return true;
        }
    }
    rows = {firstFree, m_rowCount - 1};
    return true;
}

int NaiveTradeList::tracebackSeq(int index) const
{
    return traceback(m_filteredRows, index);
}

RecordPtr NaiveTradeList::getOrder(__int64 seq) const
{
    const auto found = m_orders.find(seq);
    return found == m_orders.end() ? nullptr : found->second;
}

int NaiveTradeList::chainSum(const Row& row, bool isBuy, bool forward) const
{
    const auto linkOf = [isBuy, forward](const NaiveTradeRow& from) {
        if (isBuy)
            return forward ? from.nextBuyIndex : from.prevBuyIndex;
        return forward ? from.nextSellIndex : from.prevSellIndex;
    };
    int sum = 0;
    int link = linkOf(*row);
    int links = 0;
    for (; links < m_rowCount && link >= 0 && link < m_rowCount; ++links) {
        const NaiveTradeRow& next = *m_filteredRows.at(static_cast<std::size_t>(link));
        sum = plus32(sum, next.volume);
        link = linkOf(next);
    }
    m_counters.longWalks += links > 0 && links == m_rowCount ? 1 : 0;
    return sum;
}

int NaiveTradeList::getEntrustVolume(const Row& row, bool isBuy) const
{
    if (!row)
        return -1;
    const RecordPtr order = getOrder(isBuy ? row->buySeq : row->sellSeq);
    ++(order ? m_counters.knownOrders : m_counters.unknownOrders);
    if (order)
        return roundedHands(narrow(order->volume), m_volumeUnit);
    const int others = plus32(chainSum(row, isBuy, false), chainSum(row, isBuy, true));
    return roundedHands(plus32(row->volume, others), m_volumeUnit);
}

int NaiveTradeList::getDataKind(const Row& row, bool isBuy) const
{
    const auto kindOf = [this, isBuy](const NaiveTradeRow& of) {
        const int prev = isBuy ? of.prevBuyIndex : of.prevSellIndex;
        const int next = isBuy ? of.nextBuyIndex : of.nextSellIndex;
        if (prev == -1)
            return next != prev ? 1 : 0;
        const Row a = getData(prev);
        const bool isNear = getData(plus32(prev, 1)).get() == &of;
        if (a && std::abs(a->price - of.price) < m_priceTick * 0.5)
            return isNear ? 1 : 2;
        return isNear ? 4 : 3;
    };
    const int kind = row ? kindOf(*row) : 0;
    ++m_counters.dealKinds[kind];
    return kind;
}

NaiveTradeList::Pairs::const_iterator NaiveTradeList::covering(int index) const
{
    for (auto pair = m_seqPairs.begin(); pair != m_seqPairs.end(); ++pair) {
        if (pair->second.first <= index && index <= pair->second.second)
            return pair;
    }
    return m_seqPairs.end();
}

NaiveTradeList::SeqPair NaiveTradeList::getCurrSeqPair(int index) const
{
    const auto pair = covering(index);
    return pair == m_seqPairs.end() ? SeqPair{-1, -1} : pair->second;
}

NaiveTradeList::SeqPair NaiveTradeList::getNextSeqPair(int index) const
{
    const auto pair = covering(index);
    if (pair == m_seqPairs.end())
        return {-1, -1};
    const auto next = std::next(pair);
    return next == m_seqPairs.end() ? pair->second : next->second;
}

NaiveTradeList::SeqPair NaiveTradeList::getPreSeqPair(int index) const
{
    const auto pair = covering(index);
    if (pair == m_seqPairs.end())
        return {-1, -1};
    return pair == m_seqPairs.begin() ? pair->second : std::prev(pair)->second;
}

int NaiveTradeList::getCurrQuoterTimgtag(int index) const
{
    const auto pair = covering(index);
    return pair == m_seqPairs.end() ? -1 : pair->first;
}

int NaiveTradeList::greatestKeyUpTo(int second) const
{
    int greatest = -1;
    for (const auto& [key, pair] : m_seqPairs) {
        if (key <= second)
            greatest = key;
    }
    return greatest;
}

int NaiveTradeList::getNextQuoterTimgtag(int second) const
{
    const auto found = m_seqPairs.find(second);
    if (found != m_seqPairs.end() && std::next(found) != m_seqPairs.end())
        return std::next(found)->first;
    return greatestKeyUpTo(second);
}

int NaiveTradeList::getPreQuoterTimgtag(int second) const
{
    const auto found = m_seqPairs.find(second);
    if (found != m_seqPairs.end() && found != m_seqPairs.begin())
        return std::prev(found)->first;
    return greatestKeyUpTo(second);
}

bool NaiveTradeList::setViewTimeRange(int start, int end)
{
    m_viewStartTime = start;
    m_viewEndTime = end;
    return recalcMaxMinSeqAndPrice();
}

bool NaiveTradeList::recalcMaxMinSeqAndPrice()
{
    bool isChanged = false;
    int s = find(m_viewStartTime).first;
    if (s == -1)
        s = find(m_viewStartTime, false);
    if (s != m_startIndex) {
        m_startIndex = s;
        isChanged = true;
    }
    int e = find(m_viewEndTime).second;
    if (e == -1) {
        e = find(m_viewEndTime, true);
        if (s != -1 && e == -1)
            e = m_rowCount - 1;
    }
    if (e != m_endIndex) {
        m_endIndex = e;
        isChanged = true;
    }
    return recalcMaxMinPrice() || isChanged;
}

bool NaiveTradeList::recalcMaxMinPrice()
{
    int sum = 0;
    double highest = 0;
    double lowest = 0;
    bool isFirst = true;
    for (int i = m_startIndex; i <= m_endIndex; ++i) {
        const Row row = getData(i);
        if (!row) {
            sum = plus32(sum, -1);
            continue;
        }
        sum = plus32(sum, row->hands);
        if (isFirst)
            highest = lowest = row->price;
        else if (row->price - highest > 1e-5)
            highest = row->price;
        else if (lowest - row->price > 1e-5)
            lowest = row->price;
        isFirst = false;
    }
    int height = plus32(narrow(static_cast<__int64>(m_endIndex) - m_startIndex + 1), sum);
    if (m_startIndex == -1 && m_endIndex == -1)
        height = 1;
    const auto differs = [](double a, double b) { return std::abs(a - b) > 1e-5; };
    const bool isChanged = height != m_totalHeight || differs(highest, m_maxPrice) || differs(lowest, m_minPrice);
    m_totalHeight = height;
    m_maxPrice = highest;
    m_minPrice = lowest;
    m_counters.viewChanges += isChanged ? 1 : 0;
    m_counters.viewsOfRows += isFirst ? 0 : 1;
    return isChanged;
}

} // namespace tests::oracle::lists
