#pragma once

#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/quotekeeper.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <algorithm>

// How a price level takes an order, a trade or a cancel. A Keeper says how orders get in and out (quotekeeper.h). The
// caller holds the level's lock, or nobody else knows the level.
namespace TC {

// The number of orders, which each type of level names its own way. Found by the type's namespace: a further type of
// level brings its own beside it.
inline int& orderCount(SingleQueue& level)
{
    return level.m_number;
}

} // namespace TC

namespace TC::detail {

// Shares and orders that a level gains or loses; panels may be reading the totals.
template <class Level>
void gain(Level& level, __int64 shares)
{
    writeLive(level.m_volume, sum64(level.m_volume, shares));
    writeLive(orderCount(level), orderCount(level) + 1);
}

template <class Level>
void loseShares(Level& level, __int64 shares)
{
    writeLive(level.m_volume, difference64(level.m_volume, shares));
}

template <class Level>
void loseOrder(Level& level)
{
    writeLive(orderCount(level), orderCount(level) - 1);
}

inline __int64 liveSize(const SingleQuote& quote)
{
    return difference64(quote.volume, quote.dealVolume);
}

// Puts an order in. False when its seq is here already.
template <class Level, class Keeper>
bool addQuote(Level& level, const quoter::OrderData& order, const Keeper& keeper)
{
    Quotes& quotes = level.m_quotes;
    const std::size_t before = quotes.size();
    // Orders come by ascending seq, so the place is nearly always behind the last one.
    keeper.insert(quotes, order.timetag, order.seq, order.volume);
    if (quotes.size() == before)
        return false;
    gain(level, order.volume);
    return true;
}

template <class Level, class Keeper>
void dropQuote(Level& level, Quotes::iterator quote, const Keeper& keeper)
{
    loseShares(level, liveSize(*quote->second));
    loseOrder(level);
    keeper.erase(level.m_quotes, quote);
}

// A cancel takes exactly one order, wherever it stands, with all that is left of it. False when it is not here.
template <class Level, class Keeper>
bool dropCancelled(Level& level, __int64 seq, const Keeper& keeper)
{
    const auto quote = keeper.find(level.m_quotes, seq);
    if (quote == level.m_quotes.end())
        return false;
    dropQuote(level, quote, keeper);
    return true;
}

// First in, first out: every order older than the one that traded has gone unseen. They go also when it turns out that
// the order itself is not here.
template <class Level, class Keeper>
void dropOlder(Level& level, __int64 seq, const Keeper& keeper)
{
    Quotes& quotes = level.m_quotes;
    while (!quotes.empty() && quotes.begin()->first < seq)
        dropQuote(level, quotes.begin(), keeper);
}

// The change of a row: what is below one hand shows as one. No change leaves the mark as it is.
inline void writeDelta(EntrustData& row, int change, int unit)
{
    if (change < 0)
        writeLive(row.delta, change > -unit ? -1 : change / unit);
    else if (change > 0)
        writeLive(row.delta, handsFloor(change, unit));
}

// SingleQueue::order.
template <class Keeper>
bool addOrder(SingleQueue& level, const quoter::OrderData& order, EntrustData* row, int unit, const Keeper& keeper)
{
    if (!addQuote(level, order, keeper))
        return false;
    writeLive(level.m_active, true);
    writeLive(level.m_lastChange, low32(order.volume));
    if (order.timetag > level.m_timetag)
        writeLive(level.m_timetag, order.timetag);
    if (row) {
        writeLive(row->price, level.m_price);
        writeLive(row->volume, handsFloor(level.m_volume, unit));
        writeLive(row->delta, handsFloor(level.m_lastChange, unit));
        writeLive(row->number, level.m_number);
    }
    return true;
}

// Gives the order that stands first its share of a trade. It goes when nothing of it is left.
template <class Level, class Keeper>
void fillFirst(Level& level, Quotes::iterator first, __int64 shares, __int64 timetag, const Keeper& keeper)
{
    SingleQuote& quote = *first->second;
    loseShares(level, shares);
    writeLive(quote.dealVolume, sum32(quote.dealVolume, low32(shares)));
    if (quote.dealVolume < quote.volume) {
        writeLive(quote.timetag, timetag);
        writeLive(quote.status, -1);
    } else {
        loseOrder(level);
        keeper.erase(level.m_quotes, first);
    }
}

// Finds the order that a trade is of and gives it as many shares as `sharesFor` says of it; a cancel drops it. False
// when it is not here: a fill has then dropped the older orders all the same. One that used the level up counts as
// taken.
template <class Level, class Keeper, class SharesFor>
bool takeFromQueue(Level& level, const quoter::TransactionData& trade, const Keeper& keeper, const SharesFor& sharesFor)
{
    Quotes& quotes = level.m_quotes;
    if (quotes.empty())
        return false;
    const __int64 seq = level.m_isBid ? trade.buySeq : trade.sellSeq;
    if (trade.transKind == quoter::kTransKindCancel)
        return dropCancelled(level, seq, keeper);
    dropOlder(level, seq, keeper);
    if (quotes.empty())
        return true;
    const auto first = quotes.begin();
    if (first->first > seq)
        return false;
    fillFirst(level, first, sharesFor(*first->second), trade.timetag, keeper);
    return true;
}

// SingleQueue::deal. An order gives what it has, at most.
template <class Keeper>
bool takeTrade(SingleQueue& level, const quoter::TransactionData& trade, EntrustData* row, int unit,
               const Keeper& keeper)
{
    const auto whatItHas = [&](const SingleQuote& quote) { return std::min(liveSize(quote), trade.volume); };
    if (!takeFromQueue(level, trade, keeper, whatItHas))
        return false;

    writeLive(level.m_lastChange, difference32(0, low32(trade.volume)));
    if (level.m_volume < 1 || level.m_number < 1)
        writeLive(level.m_active, false);
    else if (trade.timetag > level.m_timetag)
        writeLive(level.m_timetag, trade.timetag);
    if (row) {
        writeLive(row->volume, handsFloor(level.m_volume, unit));
        writeDelta(*row, level.m_lastChange, unit);
        writeLive(row->number, level.m_number);
    }
    return true;
}

} // namespace TC::detail
