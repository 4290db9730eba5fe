#pragma once

#include "indexui/tessimodel/cmodeldepthqueue_level.h"
#include "indexui/tessimodel/detail/busyrange.h"
#include "indexui/tessimodel/detail/nodepool.h"
#include "indexui/tessimodel/detail/orderplace.h"
#include "indexui/tessimodel/detail/quotekeeper.h"
#include "indexui/tessimodel/detail/recursivelock.h"
#include "indexui/tessimodel/export.h"
#include "indexui/tessimodel/updateflags.h"

#include <atomic>
#include <cstddef>

namespace ztservice {
struct CInstrumentDetail;
}

namespace TC {

// The orders of one instrument at every price, built tick by tick, without rows: levels by price key as in
// ThousandBook, what was seen, and the trades that came before their order. Orders of the kinds without a usable price
// (2, 4, 5, 6, 7) have minus their kind as key.
//
// Every operation takes m_mutex. The public members are for reading under that lock; they are changed by the operations
// only, since private indices follow them. A level that is to be kept beyond the lock comes from getLevel, which notes
// that its own lock is needed from then on.
class TESSIMODEL_EXPORT QueueBook {
public:
    using Stock = std::shared_ptr<ztservice::CInstrumentDetail>;
    using Order = std::shared_ptr<quoter::OrderData>;
    using Trade = std::shared_ptr<quoter::TransactionData>;
    using Levels = std::map<int, std::shared_ptr<OrderQueue>>;
    using Pending = std::map<__int64, std::vector<Trade>>;

    QueueBook();
    QueueBook(const QueueBook&) = delete;
    QueueBook& operator=(const QueueBook&) = delete;
    ~QueueBook();

    // Applies an order of `stock`, which must be the book's. True when it entered the book; then `flags` gets
    // kUpdateLevels when a level appeared or went, else kUpdateInPlace.
    //
    // Refused: cancels (bsFlag 3) and the kinds 0 and 3; another instrument, which sets `flags` to
    // kForeignInstrument; a buy or sell order whose seq is not above all of its side before; any other whose seq its
    // level has. `order` is not null.
    bool appendOrder(const Stock& stock, const Order& order, int& flags);

    // Applies a trade or cancel to the levels of its buy and of its sell order. True when at least one of them took it,
    // with `flags` as above. A side whose order is still to come keeps the trade until then; one whose order should
    // have come by now forgets it. A second trade of the same two orders counts as a repetition and is dropped.
    // `trade` is not null.
    bool appendTransaction(const Stock& stock, const Trade& trade, int& flags);

    // Empties levels, seqs and time.
    void clearBook();

    // Forgets the trades seen and those waiting.
    void clearPending();

    // clearBook() and clearPending(), and the instrument goes too: the book takes nothing until it has one again.
    void clearAll();

    // The level at the key of `price`, or empty. It is the book's own and goes on changing.
    std::shared_ptr<OrderQueue> getLevel(bool isBid, double price);

    // Makes room for a day of at least that many orders and trades, so that no index grows in mid-day.
    void reserve(std::size_t orders, std::size_t trades);

    std::atomic<__int64> m_lastTimetag{0}; // ms, newest tick taken into account; may be read without the lock
    bool m_bidsDirty = true;               // the side changed
    bool m_asksDirty = true;
    mutable detail::RecursiveLock m_mutex;
    Stock m_stock; // the model's, set with it
    double m_priceTick;
    int m_volumeUnit = 1;                 // shares per hand; nothing here is counted in hands
    detail::OrderPlaces m_orderPriceKeys; // order seq to price key, also of orders that have gone
    Levels m_bidLevels;
    Levels m_askLevels;
    __int64 m_lastBuySeq = 0; // highest seq applied
    __int64 m_lastSellSeq = 0;
    detail::SeenTrades m_seenTrades;
    Pending m_pendingBuy;
    Pending m_pendingSell;

private:
    template <bool IsBid>
    class Side;
    template <class Own, class Book, bool IsBid>
    friend class detail::BookSide;

    // A level and where it stands in its map.
    struct Place {
        OrderQueue* queue = nullptr; // null for a place without a level
        Levels::iterator levelEntry;
    };

    detail::BusyRange<Place> m_bidPlaces;
    detail::BusyRange<Place> m_askPlaces;
    Place m_farPlace; // of the level last asked for that no busy range covers
    detail::QuoteStore m_quoteStore{m_orderPriceKeys, {}};
    detail::NodePool<Levels> m_spareLevels;
    bool m_hasSeqZero = false; // an order of seq 0 came, which only a broken feed has
};

} // namespace TC
