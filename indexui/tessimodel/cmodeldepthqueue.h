#pragma once

#include "indexui/tessimodel/cmodeldepthqueue_book.h"
#include "indexui/tessimodel/cmodeldepthqueue_level.h"
#include "indexui/tessimodel/export.h"
#include "utils/int64.h"

#include <boost/asio/io_service.hpp>
#include <boost/asio/strand.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/thread/recursive_mutex.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <QString>

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

namespace quoter {
struct LevelOrderData;
struct QuoterBase;
struct QuoterDepthData;
} // namespace quoter

namespace TC {

// A side's rows of the order queues, best level first: ten slots that are written by index, and a length that is 0 from
// first to last. Whoever walks the rows finds none, whatever the slots hold; that is wanted.
class OrderQueueRows {
public:
    static constexpr std::size_t kSlots = 10;

    using Row = std::shared_ptr<OrderQueue>;

    // By index below kSlots. Empty until the first pair of snapshots.
    Row& operator[](std::size_t index) { return m_slots[index]; }
    const Row& operator[](std::size_t index) const { return m_slots[index]; }

    static constexpr std::size_t size() { return 0; }
    const Row* begin() const { return m_slots.data(); }
    const Row* end() const { return m_slots.data() + size(); }

private:
    std::array<Row, kSlots> m_slots;
};

// The order queues of one Shenzhen instrument: the exchange's own at the best prices, which a level-2 snapshot and an
// order queue snapshot of the same millisecond give together, and a book of the orders at every price, built from
// ticks.
//
// A panel makes a model, calls setStock, feeds the four streams to the callbacks and polls checkUpdate. As with
// CModelDepthThousand the book is built once the history of both orders and trades is in hand, whichever comes last.
//
//     callbacks (data layer)  ->  strand "modulegroup": doEntrust, doTransaction  ->  m_book
//                                                       doQuoter, doQueue         ->  m_bids, m_asks
//
// What a panel learns by checkUpdate is that something changed: by the present contract no row reaches it. The orders
// at a price are handed out by CModelDepthThousand::getQueue.
//
// Threads: callbacks, reads, setStock and clear from any thread. Locks are taken in the order model, book, level. The
// posted work holds a plain pointer: whoever destroys the model must first be sure that no task is pending.
//
// Not supported: ticks of other markets than "SZ"; a second trade between the same two orders.
class TESSIMODEL_EXPORT CModelDepthQueue {
public:
    using Records = std::vector<std::shared_ptr<quoter::QuoterBase>>;

    // With `suppressTickFlags` live ticks change the book and raise no update: only histories do.
    explicit CModelDepthQueue(bool suppressTickFlags = false, int modelId = -1);
    CModelDepthQueue(const CModelDepthQueue&) = delete;
    CModelDepthQueue& operator=(const CModelDepthQueue&) = delete;
    ~CModelDepthQueue(); // as clear()

    // Follows the instrument of a terminal key from now on; an unknown key leaves the model without one. Data of the
    // former instrument stay until clear().
    void setStock(const QString& key);

    // Price tick, shares per hand and last close from the instrument.
    void initStockParams();

    // Take a batch and return at once; the work is done on the strand. Nothing in a batch tells its instrument: it
    // counts for the one that the model follows when the work is done. Of ticks, kind 0 replaces the stream's history,
    // 3 adds history, any other is a live push, of which only the last record counts. Of both snapshots only the last
    // record of any batch counts.
    void entrustCallback(int first, int batchKind, const Records& records);
    void transactionCallback(int first, int batchKind, const Records& records);
    void queueCallback(int first, int batchKind, const Records& records);
    void quoterCallback(int first, int batchKind, const Records& records);

    // False for a call auction, in which both best prices are the same, and for a snapshot without any; a one-sided
    // book is continuous. `record` is not null.
    bool isContinousStatus(const std::shared_ptr<quoter::QuoterDepthData>& record) const;

    // False, and nothing is touched, when nothing changed since the last read; snapshots alone change nothing. Else
    // `flags` tells what did (updateflags.h). `bids` is emptied, or stays as it is without an instrument of market
    // "SZ", and, once both histories are in, while the book is at least as new as the snapshots. `asks` is never
    // touched.
    bool checkUpdate(int& flags, OrderQueueList& bids, OrderQueueList& asks);

    // Drops all data but the rows in their slots, and raises kUpdateRebuilt. The instrument and the settings stay. A
    // clear() while histories are worked through may leave a book that lacks part of them: ask for histories anew once
    // the strand has nothing of the old ones left.
    void clear();

    int m_modelId;
    double m_priceTick;
    double m_lastClose;
    int m_volumeUnit = 1;                   // shares per hand: 1, 10 or 100
    mutable boost::recursive_mutex m_mutex; // guards all but the atomic words and the book
    boost::shared_ptr<boost::asio::io_service::strand> m_strand;
    std::shared_ptr<ztservice::CInstrumentDetail> m_stock;
    bool m_suppressTickFlags;
    bool m_continuous = false;                                // the newest snapshot was of continuous trading
    std::atomic<int> m_loadedHistory{0};                      // 1 trades, 2 orders
    std::atomic<int> m_updateFlags{0};                        // what checkUpdate has not taken yet
    boost::unordered_flat_map<__int64, int> m_dealVolumes;    // by order seq, of the trade history only
    std::vector<std::shared_ptr<quoter::OrderData>> m_orders; // all of them, as they came
    std::vector<std::shared_ptr<quoter::TransactionData>> m_transactions;
    OrderQueueRows m_bids;
    OrderQueueRows m_asks;
    QueueBook m_book;
    __int64 m_rawTimetag = 0;                             // ms, of the pair of snapshots that made the rows
    std::shared_ptr<quoter::QuoterDepthData> m_quoter;    // the latest one taken
    std::shared_ptr<quoter::LevelOrderData> m_levelOrder; // the latest one taken

protected:
    void doEntrust(int first, int batchKind, const Records& records);
    void doTransaction(int first, int batchKind, const Records& records);
    void doQueue(int first, int batchKind, const Records& records);
    void doQuoter(int first, int batchKind, const Records& records);

    // Makes the rows anew from m_quoter and m_levelOrder, which are set. The caller holds m_mutex.
    void updateRaw();

    void getBids(OrderQueueList& rows);
    void getAsks(OrderQueueList& rows); // does nothing

private:
    void joinSnapshots();
};

} // namespace TC
