#include "indexui/tessimodel/cmodeldepththousand_book.h"

#include "indexui/tessimodel/detail/bookside.h"
#include "indexui/tessimodel/detail/levelsteps.h"
#include "indexui/tessimodel/detail/release.h"
#include "indexui/tessimodel/detail/tickbook.h"
#include "indexui/tessimodel/liveread.h"

#include <boost/make_shared.hpp>
#include <boost/thread/lock_guard.hpp>

#include <iterator>

namespace TC {

using namespace detail;

namespace {

using Lock = boost::lock_guard<RecursiveLock>;

// A change mark shows for so long, in the time of the ticks; at the next millisecond it is gone.
constexpr __int64 kFadeMs = 3001;

} // namespace

// One side of the book as the common steps see it: levels with their rows.
template <bool IsBid>
class ThousandBook::Side : public BookSide<Side<IsBid>, ThousandBook, IsBid> {
public:
    using BookSide<Side, ThousandBook, IsBid>::BookSide;

    bool add(Place* place, const OrderPtr& order, OrderPlace& own)
    {
        const LentLock lock = this->lockOf(place);
        return addOrder(*place->queue, *order, place->row, m_book.m_volumeUnit, this->keeper(own));
    }

    bool deal(Place* place, const TradePtr& trade, OrderPlace& own)
    {
        const LentLock lock = this->lockOf(place);
        return takeTrade(*place->queue, *trade, place->row, m_book.m_volumeUnit, this->keeper(own));
    }

    bool isDead(Place* place) const { return !place->queue->m_active; }

    void changed(Place* place)
    {
        if (m_book.m_marksKnown)
            m_book.noteMark(*place, IsBid);
    }

    void forget() { ++m_book.m_forgotten; }

    // The row stands before the row of the level that follows.
    Place opened(Levels::iterator level)
    {
        keysChanged() = true;
        return level->first > 0 ? withRow(level, openRow(std::next(level), level->first))
                                : withRow(level, rows().end());
    }

    Place placeAt(Levels::iterator level) const { return withRow(level, rows().find(level->first)); }

    void closing(Place& place)
    {
        keysChanged() = true;
        if (place.row)
            m_book.m_spareRows.erase(rows(), place.rowEntry);
    }

private:
    using BookSide<Side, ThousandBook, IsBid>::m_book;

    bool& keysChanged() { return IsBid ? m_book.m_bidKeysChanged : m_book.m_askKeysChanged; }
    EntrustRows& rows() const { return IsBid ? m_book.m_bidRows : m_book.m_askRows; }

    EntrustRows::iterator openRow(Levels::iterator nextLevel, int key)
    {
        const auto nextRow = nextLevel == this->levels().end() ? rows().end() : this->placeOf(nextLevel).rowEntry;
        return m_book.m_spareRows.insert(
            rows(), nextRow, key, [] { return boost::make_shared<EntrustData>(); },
            [](EntrustData& row) {
                const EntrustData fresh;
                writeLive(row.price, fresh.price);
                writeLive(row.volume, fresh.volume);
                writeLive(row.delta, fresh.delta);
                writeLive(row.number, fresh.number);
            });
    }

    Place withRow(Levels::iterator level, EntrustRows::iterator row) const
    {
        return {level->second.get(), row == rows().end() ? nullptr : row->second.get(), level, row};
    }
};

ThousandBook::ThousandBook()
    : m_priceTick(kDefaultPriceTick)
{}

ThousandBook::~ThousandBook() = default;

// Flattened, as appendTransaction is: every tick goes through here, and the calls would cost as much as the work.
[[gnu::flatten]] bool ThousandBook::appendOrder(const Stock& stock, const Order& order, int& flags, bool refresh)
{
    if (!isBookOrder(*order))
        return false;
    const Lock lock(m_mutex);
    if (!admitOrder(*this, stock, *order, flags))
        return false;
    advanceTime(*this, order->timetag);
    if (!refresh)
        m_marksKnown = false;
    if (!(order->bsFlag == quoter::kSideBuy ? placeOrder(Side<true>(*this), order, flags)
                                            : placeOrder(Side<false>(*this), order, flags)))
        return false;
    if (refresh)
        fadeDue();
    return true;
}

[[gnu::flatten]] bool ThousandBook::appendTransaction(const Stock& stock, const Trade& trade, int& flags, bool refresh)
{
    const Lock lock(m_mutex);
    if (!admitTrade(*this, stock, *trade, flags))
        return false;
    advanceTime(*this, trade->timetag);
    if (!refresh)
        m_marksKnown = false;

    Side<true> bids(*this);
    Side<false> asks(*this);
    const bool bidTook = dealOrPark(bids, bids.placeOfOrder(trade->buySeq), trade->buySeq, trade, flags);
    const bool askTook = dealOrPark(asks, asks.placeOfOrder(trade->sellSeq), trade->sellSeq, trade, flags);
    if (refresh)
        fadeDue();
    return bidTook || askTook;
}

void ThousandBook::refreshDecay()
{
    const Lock lock(m_mutex);
    m_fading.clear();
    m_marksKnown = true;
    fadeAll<true>();
    fadeAll<false>();
}

template <bool IsBid>
void ThousandBook::fadeAll()
{
    Side<IsBid> side(*this);
    for (const auto& row : IsBid ? m_bidRows : m_askRows) {
        if (Place* const place = side.find(row.first))
            fade(*place, IsBid);
    }
}

// As refreshDecay(), for the marks that are due alone.
void ThousandBook::fadeDue()
{
    if (!m_marksKnown) {
        refreshDecay();
        return;
    }
    const __int64 now = m_lastTimetag;
    while (m_fading.hasDue(now, kFadeMs)) {
        const FadeQueue::Mark mark = m_fading.takeFirst();
        if (mark.isBid)
            fadeMarked<true>(mark);
        else
            fadeMarked<false>(mark);
    }
}

template <bool IsBid>
void ThousandBook::fadeMarked(const FadeQueue::Mark& mark)
{
    Side<IsBid> side(*this);
    Place* const place = side.find(mark.key);
    // Else the level has changed since, or gone.
    if (place && place->queue->m_markedSince == mark.since)
        fade(*place, IsBid);
}

// Takes the change mark off a row whose level has been quiet for long enough, or notes it for later.
void ThousandBook::fade(Place& place, bool isBid)
{
    place.queue->m_markedSince = SingleQueue::kNotMarked;
    if (readLive(place.row->delta) == 0)
        return;
    if (m_lastTimetag - place.queue->m_timetag >= kFadeMs)
        writeLive(place.row->delta, 0);
    else
        noteMark(place, isBid);
}

// The newest note of a level counts; with it the ones before are void.
void ThousandBook::noteMark(Place& place, bool isBid)
{
    SingleQueue& queue = *place.queue;
    if (!place.row || queue.m_markedSince == queue.m_timetag)
        return;
    queue.m_markedSince = queue.m_timetag;
    m_fading.note({queue.m_timetag, place.levelEntry->first, isBid});
}

void ThousandBook::clearBook()
{
    const Lock lock(m_mutex);
    releaseLater(m_orderPriceKeys, m_bidLevels, m_askLevels, m_bidRows, m_askRows, m_bidPlaces, m_askPlaces,
                 m_quoteStore.spare, m_spareLevels, m_spareRows);
    m_fading.clear();
    m_marksKnown = true;
    m_hasSeqZero = false;
    m_lastBuySeq = 0;
    m_lastSellSeq = 0;
    m_lastTimetag = 0;
    m_bidsDirty = true;
    m_asksDirty = true;
    m_bidKeysChanged = true;
    m_askKeysChanged = true;
}

void ThousandBook::clearPending()
{
    const Lock lock(m_mutex);
    releaseLater(m_seenTrades, m_pendingBuy, m_pendingSell);
    m_forgotten = 0;
}

void ThousandBook::clearAll()
{
    clearBook();
    clearPending();
}

std::shared_ptr<SingleQueue> ThousandBook::getLevel(bool isBid, double price)
{
    const Lock lock(m_mutex);
    const int key = priceKey(price, m_priceTick);
    return isBid ? Side<true>(*this).lend(key) : Side<false>(*this).lend(key);
}

int ThousandBook::correctNumber(bool isBid, double price, int shares, int unknown)
{
    const Lock lock(m_mutex);
    const int key = priceKey(price, m_priceTick);
    Place* const place = isBid ? Side<true>(*this).find(key) : Side<false>(*this).find(key);
    return place ? place->queue->correctNumber(shares) : unknown;
}

bool ThousandBook::copyRows(bool isBid, EntrustRows& rows, bool isLastCopy)
{
    const Lock lock(m_mutex);
    bool& dirty = isBid ? m_bidsDirty : m_asksDirty;
    bool& keysChanged = isBid ? m_bidKeysChanged : m_askKeysChanged;
    if (!dirty)
        return isLastCopy;
    if (keysChanged || !isLastCopy)
        rows = isBid ? m_bidRows : m_askRows;
    dirty = false;
    keysChanged = false;
    return true;
}

void ThousandBook::reserve(std::size_t orders, std::size_t trades)
{
    const Lock lock(m_mutex);
    m_orderPriceKeys.reserve(orders);
    m_seenTrades.reserve(trades);
}

std::size_t ThousandBook::parkedTrades()
{
    const Lock lock(m_mutex);
    std::size_t count = 0;
    for (const Pending* const side : {&m_pendingBuy, &m_pendingSell}) {
        for (const auto& [seq, trades] : *side)
            count += trades.size();
    }
    return count;
}

} // namespace TC
