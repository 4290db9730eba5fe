#include "indexui/tessimodel/cmodeldepthtransaction.h"

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "indexui/tessimodel/liveread.h"
#include "quoter/quoterdepthdata.h"

#include <algorithm>
#include <bit>

namespace TC {

using namespace detail;

namespace {

// Nearly every pair is written behind all others or over the last of them.
void setPair(std::map<int, CModelDepthTransaction::SeqPair>& pairs, int second, CModelDepthTransaction::SeqPair rows)
{
    if (!pairs.empty() && pairs.rbegin()->first == second)
        pairs.rbegin()->second = rows;
    else
        pairs.insert_or_assign(pairs.end(), second, rows);
}

} // namespace

int CModelDepthTransaction::tryMatch(const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    ModelLock lock(m_mutex);
    if (m_lastMatchedQuote + 1 >= m_quotes.size())
        return kNothingToDo;
    int start = 0;
    if (m_lastMatchedQuote != -1) {
        const auto matched = m_seqPairs.find(secondOfQuote(m_lastMatchedQuote));
        if (matched == m_seqPairs.end())
            return kNothingToDo;
        start = matched->second.second + 1;
    }
    if (start >= m_rowCount)
        return kNothingToDo;
    // Whatever was emptied while the lock was free ends the loop.
    for (;;) {
        if (!isSameInstrument(m_stock, stock))
            return kForeign;
        if (m_lastMatchedQuote + 1 >= m_quotes.size())
            return kRanToEnd;
        if (!matchNextQuote(start)) {
            openPair();
            return kRanToEnd;
        }
        lock.unlock(); // panels get in between two snapshots
        lock.lock();
    }
}

// What was traded since the snapshot before. In the after-hours phase the day's volume counts anew.
__int64 CModelDepthTransaction::targetOfQuote(int quote) const
{
    const quoter::QuoterDepthData& current = *m_quotes.at(quote);
    if (quote == 0)
        return current.volume;
    const quoter::QuoterDepthData& previous = *m_quotes.at(quote - 1);
    const bool countsAnew =
        (m_isType277 || m_isType10006) && entersAfterHours(previous.tradeStatus, current.tradeStatus);
    return countsAnew ? current.volume : difference64(current.volume, previous.volume);
}

// The running volume is compared only where a row has the snapshot's last price: its latest trade must. The nearest
// such row is the last of the snapshot, the later one of two that are equally near; but only a later second or a row
// that is farther off shows that the snapshot has no more. Until then nothing is decided, and the search goes on with
// the rows to come.
bool CModelDepthTransaction::matchNextQuote(int& start)
{
    const int quote = m_lastMatchedQuote + 1;
    const __int64 second = toSeconds(m_quotes.at(quote)->timetag);
    const double lastPrice = readLive(m_quotes.at(quote)->lastPrice);
    const __int64 target = targetOfQuote(quote);
    // The very same price, bit by bit: the book summary may give a snapshot without one the last close.
    const bool isSamePrice = std::bit_cast<__int64>(m_search.lastPrice) == std::bit_cast<__int64>(lastPrice);
    if (m_search.quote != quote || m_search.start != start || !isSamePrice)
        m_search = {quote, start, lastPrice, start};

    bool isClosed = false;
    for (; m_search.next < m_rowCount && !isClosed; ++m_search.next) {
        const DepthTransData& row = *m_filteredRows.at(m_search.next);
        isClosed = row.time > second;
        m_search.shares = sum64(m_search.shares, row.volume);
        if (isClosed || !isEqual(row.price, lastPrice))
            continue;
        const __int64 difference = distance64(target, handsFloor64(m_search.shares, m_volumeUnit));
        isClosed = difference > m_search.bestDifference;
        if (!isClosed) {
            m_search.best = m_search.next;
            m_search.bestDifference = difference;
        }
    }
    if (!isClosed)
        return false;

    if (m_search.best != -1) {
        setPair(m_seqPairs, secondOfQuote(quote), {start, m_search.best});
        start = m_search.best + 1;
    } else {
        // No row is its own: it stands at the row before.
        const int before = std::max(start - 1, 0);
        setPair(m_seqPairs, secondOfQuote(quote), {before, before});
    }
    m_lastMatchedQuote = quote;
    return true;
}

// Gives the rows that are left to the snapshot that comes next, until it is decided.
void CModelDepthTransaction::openPair()
{
    const int firstFree = lastOfMatchedQuote() + 1;
    if (firstFree < m_rowCount)
        setPair(m_seqPairs, secondOfQuote(m_lastMatchedQuote + 1), {firstFree, m_rowCount - 1});
}

int CModelDepthTransaction::lastOfMatchedQuote() const
{
    if (m_lastMatchedQuote == -1)
        return -1;
    const auto matched = m_seqPairs.find(secondOfQuote(m_lastMatchedQuote));
    return matched == m_seqPairs.end() ? -1 : matched->second.second;
}

int CModelDepthTransaction::secondOfQuote(int quote) const
{
    return low32(toSeconds(m_quotes.at(quote)->timetag));
}

} // namespace TC
