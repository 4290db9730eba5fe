#pragma once

#include "indexui/tessimodel/cmodeldepththousand_queue.h"
#include "indexui/tessimodel/detail/busyrange.h"
#include "indexui/tessimodel/detail/fadequeue.h"
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

// The whole book of one instrument, built tick by tick: both sides as levels by price, the rows that panels get, what
// was seen, and the trades that came before their order.
//
//     m_bidLevels / m_askLevels    price key -> SingleQueue      all levels, market orders included
//     m_bidRows / m_askRows        price key -> EntrustData      the levels with a price: keys above 0
//     m_orderPriceKeys             order seq -> price key        where a trade finds its orders
//     m_pendingBuy / m_pendingSell order seq -> trades           whose order has not come yet
//
// A price key is a price in whole ticks. Orders of the kinds without a usable price (2, 4, 5, 6, 7) have minus their
// kind as key, so that each kind has one level of its own per side; it takes part in trades and has no row. The book
// knows nothing of batches or histories: CModelDepthThousand decides what is offered to it, and in which order.
//
// Every operation takes m_mutex. The public members are for reading under that lock; levels, rows and seqs are changed
// by the operations only, since private indices follow them. A level that is to be kept beyond the lock comes from
// getLevel, which notes that its own lock is needed from then on.
class TESSIMODEL_EXPORT ThousandBook {
public:
    using Stock = std::shared_ptr<ztservice::CInstrumentDetail>;
    using Order = std::shared_ptr<quoter::OrderData>;
    using Trade = std::shared_ptr<quoter::TransactionData>;
    using Levels = std::map<int, std::shared_ptr<SingleQueue>>;
    using Pending = std::map<__int64, std::vector<Trade>>;

    ThousandBook();
    ThousandBook(const ThousandBook&) = delete;
    ThousandBook& operator=(const ThousandBook&) = delete;
    ~ThousandBook();

    // Applies an order of `stock`, which must be the book's. True when it entered the book; then `flags` gets
    // kUpdateLevels when a level appeared or went, else kUpdateInPlace. With `refresh` change marks fade as time goes
    // on; a batch passes false and calls refreshDecay() at its end.
    //
    // Refused: cancels (bsFlag 3) and the kinds 0 and 3; another instrument, which sets `flags` to
    // kForeignInstrument; a buy or sell order whose seq is not above all of its side before, which makes repeated and
    // overlapping batches harmless, and loses an order that comes late. `order` is not null.
    bool appendOrder(const Stock& stock, const Order& order, int& flags, bool refresh);

    // Applies a trade or cancel to the levels of its buy and of its sell order. True when at least one of them took it,
    // with `flags` as above. A side whose order is still to come keeps the trade until then; one whose order should
    // have come by now forgets it. A second trade of the same two orders counts as a repetition and is dropped.
    // `trade` is not null.
    bool appendTransaction(const Stock& stock, const Trade& trade, int& flags, bool refresh);

    // Takes the change mark off every row whose level has been quiet for more than 3000 ms of book time, which is the
    // time of the ticks, not of a clock.
    void refreshDecay();

    // Empties levels, rows, seqs and time; the memory is freed on the strand "data_release".
    void clearBook();

    // Forgets the trades seen and those waiting.
    void clearPending();

    // clearBook() and clearPending(). The instrument stays.
    void clearAll();

    // The level at the key of `price`, or empty. It is the book's own and goes on changing.
    std::shared_ptr<SingleQueue> getLevel(bool isBid, double price);

    // How many orders the level at the key of `price` would have with `shares`; `unknown` when there is no such level.
    // Unlike getLevel, which gives a level out, this leaves the level to the book alone.
    int correctNumber(bool isBid, double price, int shares, int unknown);

    // Brings a model's rows of one side up to date, if the side changed since the last time, and takes the dirty mark
    // back. `isLastCopy` tells that `rows` are as the last call left them: then they are copied only when a level
    // appeared or went, since the row objects are shared. Returns whether they now are the book's.
    [[nodiscard]] bool copyRows(bool isBid, EntrustRows& rows, bool isLastCopy);

    // Makes room for a day of at least that many orders and trades, so that no index grows in mid-day.
    void reserve(std::size_t orders, std::size_t trades);

    // Trades that wait for their order, once for each side that waits; and how often a side forgot a trade because
    // its order should have come.
    std::size_t parkedTrades();
    __int64 forgottenTrades() const { return m_forgotten; }

    std::atomic<__int64> m_lastTimetag{0}; // ms, newest tick taken into account; may be read without the lock
    bool m_bidsDirty = true;               // the side changed since a model last copied its rows
    bool m_asksDirty = true;
    mutable detail::RecursiveLock m_mutex;
    Stock m_stock; // the model's, set with it
    double m_priceTick;
    int m_volumeUnit = 1;                 // shares per hand
    detail::OrderPlaces m_orderPriceKeys; // order seq to price key, also of orders that have gone
    Levels m_bidLevels;
    Levels m_askLevels;
    __int64 m_lastBuySeq = 0; // highest seq applied
    __int64 m_lastSellSeq = 0;
    EntrustRows m_bidRows;
    EntrustRows m_askRows;
    detail::SeenTrades m_seenTrades;
    Pending m_pendingBuy;
    Pending m_pendingSell;

private:
    template <bool IsBid>
    class Side;
    template <class Own, class Book, bool IsBid>
    friend class detail::BookSide;

    // A level with its row, and where they stand in their maps.
    struct Place {
        SingleQueue* queue = nullptr; // null for a place without a level
        EntrustData* row = nullptr;   // null for a level without a row
        Levels::iterator levelEntry;
        EntrustRows::iterator rowEntry;
    };

    template <bool IsBid>
    void fadeAll();
    template <bool IsBid>
    void fadeMarked(const detail::FadeQueue::Mark& mark);
    [[gnu::noinline]] void fadeDue();
    void fade(Place& place, bool isBid);
    void noteMark(Place& place, bool isBid);

    detail::BusyRange<Place> m_bidPlaces;
    detail::BusyRange<Place> m_askPlaces;
    Place m_farPlace; // of the level last asked for that no busy range covers
    detail::QuoteStore m_quoteStore{m_orderPriceKeys, {}};
    detail::NodePool<Levels> m_spareLevels;
    detail::NodePool<EntrustRows> m_spareRows;
    detail::FadeQueue m_fading;
    bool m_bidKeysChanged = true; // a level appeared or went since the last copyRows
    bool m_askKeysChanged = true;
    bool m_marksKnown = true;  // all change marks are in m_fading: no tick was applied without `refresh` since
    bool m_hasSeqZero = false; // an order of seq 0 came, which only a broken feed has
    std::atomic<__int64> m_forgotten{0};
};

} // namespace TC
