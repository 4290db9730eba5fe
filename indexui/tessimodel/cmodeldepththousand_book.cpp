#include "indexui/tessimodel/cmodeldepththousand_book.h"

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

// The lock of a level, if a panel may know it. One that was never given out needs none beside the book's.
class LentLock {
public:
    LentLock(SingleQueue& level, bool isLent)
        : m_mutex(isLent ? &level.m_mutex : nullptr)
    {
        if (m_mutex) [[unlikely]]
            m_mutex->lock();
    }

    LentLock(const LentLock&) = delete;
    LentLock& operator=(const LentLock&) = delete;

    ~LentLock()
    {
        if (m_mutex)
            m_mutex->unlock();
    }

private:
    boost::recursive_mutex* m_mutex;
};

} // namespace

// One side of the book as the common steps see it: levels with their rows. Which side it is, is part of the type: every
// tick goes through here.
template <bool IsBid>
class ThousandBook::Side {
public:
    explicit Side(ThousandBook& book)
        : m_book(book)
    {}

    Place* find(int key)
    {
        if (Place* const slot = places().slot(key))
            return slot->queue ? slot : nullptr;
        return findFar(key);
    }

    [[gnu::noinline]] Place* open(int key, double price)
    {
        const auto level = m_book.m_spareLevels.insert(
            levels(), following(key), key, [&] { return std::make_shared<SingleQueue>(price, IsBid); },
            [&](SingleQueue& queue) { queue.renew(price, IsBid); });
        const auto row = key > 0 ? openRow(std::next(level), key) : rows().end();
        keysChanged() = true;
        if (!places().slot(key) && places().reach(key))
            enterAll();
        Place* const slot = places().slot(key);
        Place& place = slot ? *slot : m_book.m_farPlace;
        place = placeAt(level, row);
        return &place;
    }

    std::shared_ptr<SingleQueue> lend(int key)
    {
        const Place* const place = find(key);
        if (!place)
            return nullptr;
        place->queue->m_lent = true;
        return place->levelEntry->second;
    }

    [[gnu::noinline]] void close(Place* place)
    {
        leaveQuotes(*place->queue);
        if (place->row)
            m_book.m_spareRows.erase(rows(), place->rowEntry);
        if (place->queue->m_lent)
            place->levelEntry->second.reset(); // it is not used again: a panel read it by its own lock
        m_book.m_spareLevels.erase(levels(), place->levelEntry);
        keysChanged() = true;
        *place = {};
    }

    bool add(Place* place, const OrderPtr& order, OrderPlace& own)
    {
        const LentLock lock(*place->queue, place->queue->m_lent);
        return addOrder(*place->queue, *order, place->row, m_book.m_volumeUnit, keeper(own));
    }

    bool deal(Place* place, const TradePtr& trade, OrderPlace& own)
    {
        const LentLock lock(*place->queue, place->queue->m_lent);
        return takeTrade(*place->queue, *trade, place->row, m_book.m_volumeUnit, keeper(own));
    }

    bool isDead(Place* place) const { return !place->queue->m_active; }

    void changed(Place* place)
    {
        if (m_book.m_marksKnown)
            m_book.noteMark(*place, IsBid);
    }

    Pending& pending() { return IsBid ? m_book.m_pendingBuy : m_book.m_pendingSell; }
    __int64 lastSeq() const { return IsBid ? m_book.m_lastBuySeq : m_book.m_lastSellSeq; }
    void markDirty() { (IsBid ? m_book.m_bidsDirty : m_book.m_asksDirty) = true; }
    void forget() { ++m_book.m_forgotten; }

private:
    BookKeeper keeper(OrderPlace& own) const { return {m_book.m_quoteStore, own, IsBid}; }

    bool& keysChanged() { return IsBid ? m_book.m_bidKeysChanged : m_book.m_askKeysChanged; }

    [[gnu::noinline]] Place* findFar(int key)
    {
        const auto level = levels().find(key);
        if (level == levels().end())
            return nullptr;
        m_book.m_farPlace = placeOf(level);
        return &m_book.m_farPlace;
    }

    // The level before which a new one of that key stands. Most new levels are the best of their side.
    Levels::iterator following(int key)
    {
        if (levels().empty() || levels().rbegin()->first < key)
            return levels().end();
        return key < levels().begin()->first ? levels().begin() : levels().upper_bound(key);
    }

    // The row stands before the row of the level that follows.
    EntrustRows::iterator openRow(Levels::iterator nextLevel, int key)
    {
        const auto nextRow = nextLevel == levels().end() ? rows().end() : placeOf(nextLevel).rowEntry;
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

    Place placeAt(Levels::iterator level, EntrustRows::iterator row) const
    {
        return {level->second.get(), row == rows().end() ? nullptr : row->second.get(), level, row};
    }

    Place placeOf(Levels::iterator level) const
    {
        const Place* const slot = places().slot(level->first);
        return slot && slot->queue ? *slot : placeAt(level, rows().find(level->first));
    }

    // A level may go with orders left, when some are of no volume or less. A panel that holds the level keeps them.
    void leaveQuotes(SingleQueue& queue)
    {
        OrderPlace nowhere;
        const BookKeeper leaving = keeper(nowhere);
        if (queue.m_lent) {
            for (auto quote = queue.m_quotes.begin(); quote != queue.m_quotes.end(); ++quote)
                leaving.forget(quote);
            return;
        }
        while (!queue.m_quotes.empty())
            leaving.erase(queue.m_quotes, queue.m_quotes.begin());
    }

    // After the busy range has grown.
    void enterAll()
    {
        for (auto level = levels().begin(); level != levels().end(); ++level) {
            if (Place* const slot = places().slot(level->first))
                *slot = placeOf(level);
        }
    }

    Levels& levels() const { return IsBid ? m_book.m_bidLevels : m_book.m_askLevels; }
    EntrustRows& rows() const { return IsBid ? m_book.m_bidRows : m_book.m_askRows; }
    BusyRange<Place>& places() const { return IsBid ? m_book.m_bidPlaces : m_book.m_askPlaces; }

    ThousandBook& m_book;
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
    if (!(order->bsFlag == quoter::kSideBuy ? enter<true>(order, flags) : enter<false>(order, flags)))
        return false;
    if (refresh)
        fadeDue();
    return true;
}

template <bool IsBid>
bool ThousandBook::enter(const Order& order, int& flags)
{
    if (order->seq == 0)
        m_hasSeqZero = true;
    OrderPlace& place = m_orderPriceKeys[order->seq];
    place.key = bookKey(*order, m_priceTick);
    return placeOrder(Side<IsBid>(*this), order, place, flags);
}

[[gnu::flatten]] bool ThousandBook::appendTransaction(const Stock& stock, const Trade& trade, int& flags, bool refresh)
{
    const Lock lock(m_mutex);
    if (!admitTrade(*this, stock, *trade, flags))
        return false;
    advanceTime(*this, trade->timetag);
    if (!refresh)
        m_marksKnown = false;

    const bool bidTook = this->trade<true>(trade->buySeq, trade, flags);
    const bool askTook = this->trade<false>(trade->sellSeq, trade, flags);
    if (refresh)
        fadeDue();
    return bidTook || askTook;
}

template <bool IsBid>
bool ThousandBook::trade(__int64 seq, const Trade& trade, int& flags)
{
    // The side that a cancel does not have is not worth a search: no exchange numbers an order 0.
    OrderPlace* const own = seq != 0 || m_hasSeqZero ? placeOfOrder(*this, seq) : nullptr;
    return dealOrPark(Side<IsBid>(*this), own, seq, trade, flags);
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
