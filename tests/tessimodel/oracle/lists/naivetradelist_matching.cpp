#include "tests/tessimodel/oracle/lists/naivetradelist.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <cmath>

namespace tests::oracle::lists {

namespace {

constexpr __int64 kWorst = 1410065408;

__int64 distance(__int64 a, __int64 b)
{
    const __int64 d = minus(a, b);
    return d < 0 ? minus(0, d) : d;
}

} // namespace

int NaiveTradeList::tryMatch(int instrument)
{
    if (m_lastMatchedQuote + 1 >= quoteCount())
        return 1;
    int start = 0;
    if (m_lastMatchedQuote != -1) {
        const auto last = m_seqPairs.find(keyOf(quoteAt(m_lastMatchedQuote)));
        if (last == m_seqPairs.end())
            return 1;
        start = last->second.second + 1;
    }
    if (start >= m_rowCount)
        return 1;
    bool ranOut = false;
    while (!ranOut && m_lastMatchedQuote + 1 < quoteCount()) {
        if (!isFollowed(instrument)) {
            ++m_counters.foreignMatches;
            return -1;
        }
        ranOut = !matchNext(start);
    }
    return ranOut ? leaveOpen(instrument) : 2;
}

__int64 NaiveTradeList::targetOf(int quote) const
{
    const Record& cur = quoteAt(quote);
    if (quote == 0)
        return cur.volume;
    const Record& prev = quoteAt(quote - 1);
    if ((m_isType277 || m_isType10006) && prev.tradeStatus < 22 && cur.tradeStatus >= 22) {
        ++m_counters.wholeTargets;
        return cur.volume;
    }
    return minus(cur.volume, prev.volume);
}

void NaiveTradeList::reprice(const RecordPtr& snapshot, double price)
{
    m_newPrices[snapshot->id] = price;
    const int next = m_lastMatchedQuote + 1;
    m_counters.repricedNext += next < quoteCount() && quoteAt(next).id == snapshot->id ? 1 : 0;
}

double NaiveTradeList::lastPriceOf(const Record& quote) const
{
    const auto changed = m_newPrices.find(quote.id);
    return changed == m_newPrices.end() ? quote.price : changed->second;
}

// False when the rows ran out.
bool NaiveTradeList::matchNext(int& start)
{
    const Record& cur = quoteAt(m_lastMatchedQuote + 1);
    const __int64 target = targetOf(m_lastMatchedQuote + 1);
    __int64 sum = 0;
    __int64 bestDifference = kWorst;
    int best = -1;
    bool isTie = false;
    bool isLater = false;
    bool isWorse = false;
    for (int i = start; i < m_rowCount && !isLater && !isWorse; ++i) {
        const NaiveTradeRow& row = *m_filteredRows.at(static_cast<std::size_t>(i));
        if (row.time > secondOf(cur)) {
            isLater = true;
            continue;
        }
        sum += row.volume;
        if (!(std::abs(row.price - lastPriceOf(cur)) <= 1e-5))
            continue;
        const __int64 handsSoFar = sum < m_volumeUnit ? 1 : sum / m_volumeUnit;
        const __int64 difference = distance(target, handsSoFar);
        if (difference > bestDifference) {
            isWorse = true;
            continue;
        }
        isTie = best >= 0 && difference == bestDifference;
        best = i;
        bestDifference = difference;
    }
    if (!isLater && !isWorse) {
        m_counters.ranOff += best >= 0 ? 1 : 0;
        return false;
    }
    ++(isLater ? m_counters.closedByTime : m_counters.closedByDifference);
    if (best >= 0) {
        ++m_counters.closedPairs;
        m_counters.ties += isTie ? 1 : 0;
        m_counters.exactPairs += bestDifference == 0 ? 1 : 0;
        writePair(cur, {start, best});
        start = best + 1;
    } else {
        ++m_counters.emptyPairs;
        const int p = start - 1 < 0 ? 0 : start - 1;
        writePair(cur, {p, p});
    }
    ++m_lastMatchedQuote;
    return true;
}

void NaiveTradeList::writePair(const Record& quote, SeqPair pair)
{
    m_counters.overwrittenPairs += m_seqPairs.contains(keyOf(quote)) ? 1 : 0;
    m_seqPairs[keyOf(quote)] = pair;
}

int NaiveTradeList::leaveOpen(int instrument)
{
    if (!isFollowed(instrument))
        return -1;
    int firstFree = 0;
    if (m_lastMatchedQuote != -1) {
        const auto last = m_seqPairs.find(keyOf(quoteAt(m_lastMatchedQuote)));
        firstFree = last == m_seqPairs.end() ? 0 : last->second.second + 1;
    }
    if (firstFree < m_rowCount && m_lastMatchedQuote + 1 < quoteCount()) {
        ++m_counters.openPairs;
        m_seqPairs[keyOf(quoteAt(m_lastMatchedQuote + 1))] = {firstFree, m_rowCount - 1};
    }
    return 2;
}

// Whether the next snapshot has an open pair.
bool NaiveTradeList::isWaiting() const
{
    const int next = m_lastMatchedQuote + 1;
    return next < quoteCount() && m_seqPairs.contains(keyOf(quoteAt(next)));
}

bool NaiveTradeList::findSeq(int second, int volume, SeqPair& rows)
{
    const auto found = m_seqPairs.find(second);
    if (found != m_seqPairs.end()) {
        rows = found->second;
        return true;
    }
    if (volume > 0 && tryMatch(second, volume, rows))
        return true;
    rows = {-1, -1};
    return false;
}

bool NaiveTradeList::tryMatch(int second, int volume, SeqPair& rows)
{
    if (m_seqPairs.empty())
        return false;
    const auto found = m_seqPairs.upper_bound(second);
    if (found == m_seqPairs.end()) {
        const int l = m_seqPairs.rbegin()->second.second;
        if (l + 1 >= m_rowCount)
            return false;
        ++m_counters.restOfRows;
        rows = {l + 1, m_rowCount - 1};
        return true;
    }
    const auto [f, l] = found->second;
    if (f == l) {
        rows = {l, l};
        return true;
    }
    __int64 sum = 0;
    __int64 bestDifference = kWorst;
    for (int i = f; i <= l; ++i) {
        sum += m_rows.at(static_cast<std::size_t>(i))->volume;
        const __int64 handsSoFar = sum < m_volumeUnit ? 1 : sum / m_volumeUnit;
        const __int64 difference = distance(volume, handsSoFar);
        if (difference > bestDifference)
            return answerSplit(found, second, {f, i - 1}, i, rows);
        bestDifference = difference;
    }
    ++m_counters.splitsToTheEnd;
    return answerSplit(found, second, {f, l}, l, rows);
}

// Older than the last matched snapshot.
bool NaiveTradeList::isClosed(int key) const
{
    return m_lastMatchedQuote >= 0 && key < keyOf(quoteAt(m_lastMatchedQuote));
}

bool NaiveTradeList::answerSplit(Pairs::iterator found, int second, SeqPair answer, int newFirst, SeqPair& rows)
{
    rows = answer;
    if (isClosed(found->first)) {
        ++m_counters.splits;
        m_seqPairs[second] = answer;
        found->second.first = newFirst;
    } else {
        ++m_counters.openSplits;
    }
    return true;
}

} // namespace tests::oracle::lists
