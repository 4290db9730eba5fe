#pragma once

#include "indexui/tessimodel/detail/busyrange.h"
#include "indexui/tessimodel/detail/nodepool.h"
#include "indexui/tessimodel/detail/orderplace.h"
#include "indexui/tessimodel/detail/quotekeeper.h"
#include "indexui/tessimodel/detail/tickbook.h"

#include <boost/thread/recursive_mutex.hpp>

#include <memory>
#include <utility>

namespace TC::detail {

// The lock of a level, if somebody outside may know it. One that was never given out needs none beside the book's.
class LentLock {
public:
    LentLock(boost::recursive_mutex& mutex, bool isLent)
        : m_mutex(isLent ? &mutex : nullptr)
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

// The levels of one side of a book: where they are, how they appear and go, and how their memory comes again. The part
// of a Side (tickbook.h) that is the same for every book; which side it is, is part of the type, since every tick goes
// through here.
//
// Own is the book's Side, derived from this. It says what stands beside a level, as members of the book's Place, which
// holds at least the level (`queue`, null for none) and its entry in the map (`levelEntry`):
//
//     Place opened(Levels::iterator level);   // a level has just appeared
//     Place placeAt(Levels::iterator level);  // a level is there
//     void closing(Place&);                   // a level is about to go
//
// The book's members go by the names m_priceTick, m_orderPriceKeys, m_hasSeqZero, m_farPlace, m_spareLevels,
// m_quoteStore, m_bidLevels, m_bidPlaces, m_pendingBuy, m_lastBuySeq, m_bidsDirty and those of the other side. Its
// levels have m_mutex, m_quotes, m_lent and renew().
template <class Own, class Book, bool IsBid>
class BookSide {
public:
    using Place = typename Book::Place;
    using Levels = typename Book::Levels;
    using Level = typename Levels::mapped_type::element_type;

    explicit BookSide(Book& book)
        : m_book(book)
    {}

    OrderPlace& note(const quoter::OrderData& order)
    {
        if (order.seq == 0)
            m_book.m_hasSeqZero = true;
        OrderPlace& place = m_book.m_orderPriceKeys[order.seq];
        place.key = bookKey(order, m_book.m_priceTick);
        return place;
    }

    // The order that a cancel does not have is not worth a search: no exchange numbers an order 0.
    OrderPlace* placeOfOrder(__int64 seq)
    {
        if (seq == 0 && !m_book.m_hasSeqZero)
            return nullptr;
        const auto found = m_book.m_orderPriceKeys.find(seq);
        return found == m_book.m_orderPriceKeys.end() ? nullptr : &found->second;
    }

    Place* find(int key)
    {
        if (Place* const slot = places().slot(key))
            return slot->queue ? slot : nullptr;
        return findFar(key);
    }

    [[gnu::noinline]] Place* open(int key, double price)
    {
        const auto level = m_book.m_spareLevels.insert(
            levels(), following(key), key, [&] { return std::make_shared<Level>(price, IsBid); },
            [&](Level& queue) { queue.renew(price, IsBid); });
        const Place opened = own().opened(level);
        if (!places().slot(key) && places().reach(key))
            enterAll();
        Place* const slot = places().slot(key);
        Place& place = slot ? *slot : m_book.m_farPlace;
        place = opened;
        return &place;
    }

    // Gives a level out: its own lock is needed from now on.
    std::shared_ptr<Level> lend(int key)
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
        own().closing(*place);
        if (place->queue->m_lent)
            place->levelEntry->second.reset(); // it is not used again: its holder reads it by its own lock
        m_book.m_spareLevels.erase(levels(), place->levelEntry);
        *place = {};
    }

    auto& pending() { return IsBid ? m_book.m_pendingBuy : m_book.m_pendingSell; }
    __int64 lastSeq() const { return IsBid ? m_book.m_lastBuySeq : m_book.m_lastSellSeq; }
    void markDirty() { (IsBid ? m_book.m_bidsDirty : m_book.m_asksDirty) = true; }

protected:
    static LentLock lockOf(Place* place) { return {place->queue->m_mutex, place->queue->m_lent}; }
    BookKeeper keeper(OrderPlace& order) const { return {m_book.m_quoteStore, order, IsBid}; }
    Levels& levels() const { return IsBid ? m_book.m_bidLevels : m_book.m_askLevels; }

    Place placeOf(typename Levels::iterator level)
    {
        const Place* const slot = places().slot(level->first);
        return slot && slot->queue ? *slot : own().placeAt(level);
    }

    Book& m_book;

private:
    Own& own() { return static_cast<Own&>(*this); }
    BusyRange<Place>& places() const { return IsBid ? m_book.m_bidPlaces : m_book.m_askPlaces; }

    [[gnu::noinline]] Place* findFar(int key)
    {
        const auto level = levels().find(key);
        if (level == levels().end())
            return nullptr;
        m_book.m_farPlace = placeOf(level);
        return &m_book.m_farPlace;
    }

    // The level before which a new one of that key stands. Most new levels are the best of their side.
    typename Levels::iterator following(int key)
    {
        if (levels().empty() || levels().rbegin()->first < key)
            return levels().end();
        return key < levels().begin()->first ? levels().begin() : levels().upper_bound(key);
    }

    // A level may go with orders left: some are of no volume or less, or a trade took more than its order had. Whoever
    // holds the level keeps them.
    void leaveQuotes(Level& queue)
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
};

} // namespace TC::detail
