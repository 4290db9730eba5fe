#pragma once

#include "indexui/tessimodel/cmodeldepththousand_queue.h"

namespace TC {

// The orders at one price of one side: a level of the book of the order queues, in shares, or a row made of snapshots,
// whose queue is in shares and whose m_volume is the level-2 snapshot's, in hands.
//
// A level differs from a SingleQueue in how it takes a fill: the whole of the trade's volume is taken off the order and
// off the level, also when the order has less left.
//
// A book changes its levels on one thread. Whoever has one of getLevel() reads m_quotes under its m_mutex, and by
// readLive() (liveread.h) the plain members and every order, also one kept beyond the lock. While the lock is held the
// strand of all models may be waiting for it: do not call book or model meanwhile, which may be waiting in turn.
// Not virtual, not for deriving.
class TESSIMODEL_EXPORT OrderQueue {
public:
    using Quotes = SingleQueue::Quotes;

    OrderQueue() = default; // a bare row
    OrderQueue(double price, bool isBid);
    OrderQueue(const OrderQueue&) = delete;
    OrderQueue& operator=(const OrderQueue&) = delete;

    // Adds an order at the tail. False, and nothing changes, when its seq is here already. `order` is not null.
    bool appendQuote(const std::shared_ptr<quoter::OrderData>& order);

    // Takes a trade of an order at this level, or its cancel. False when the level does not have the order:
    //
    //     empty level, cancel of an order not here     nothing changes
    //     fill of an order not here                    the older orders are gone all the same, and m_valid stays as it
    //                                                  was; with only older orders here the fill counts as taken
    //
    // A cancel takes all that is left of its order, whatever volume it reports. A level without shares or without
    // orders becomes invalid. `trade` is not null.
    bool dealQuote(const std::shared_ptr<quoter::TransactionData>& trade);

    // Makes the orders those of a snapshot's queue, oldest first, with their positions from 0 as seqs. Sets m_count and
    // m_queueVolume; m_volume, m_price and m_valid stay.
    void assignQueue(const std::vector<int>& volumes);

    boost::recursive_mutex m_mutex; // guards m_quotes
    Quotes m_quotes;                // by ascending seq
    bool m_valid = false;           // of a level: it has live orders; of a row: it shows the snapshot's level
    bool m_isBid = true;
    double m_price = 0;
    __int64 m_volume = 0;  // live shares
    int m_count = 0;       // orders
    int m_queueVolume = 0; // shares that assignQueue put in

private:
    template <class Own, class Book, bool IsBid>
    friend class detail::BookSide;

    void renew(double price, bool isBid); // as from the constructor

    // Of a level in a book, under the book's lock: a caller may know it, so that its own lock is needed.
    bool m_lent = false;
};

using OrderQueueList = std::vector<std::shared_ptr<OrderQueue>>;

} // namespace TC
