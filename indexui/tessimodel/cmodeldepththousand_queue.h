#pragma once

#include "indexui/tessimodel/export.h"
#include "indexui/tessimodel/liveread.h"
#include "utils/int64.h"

#include <boost/shared_ptr.hpp>
#include <boost/thread/recursive_mutex.hpp>

#include <map>
#include <memory>
#include <vector>

namespace quoter {
struct OrderData;
struct TransactionData;
} // namespace quoter

namespace TC {

namespace detail {
template <class Own, class Book, bool IsBid>
class BookSide;
} // namespace detail

class ThousandBook;

// One order that still rests. Its live size is `volume` minus `dealVolume`; with its last share an order goes.
struct TESSIMODEL_EXPORT SingleQuote {
    __int64 timetag = 0; // ms, of the order or of its latest partial deal; 0 for an order that a snapshot implies
    __int64 seq = 0;
    __int64 volume = 0; // shares when it entered
    int dealVolume = 0; // shares dealt so far
    int status = 1;     // 1 while untouched, -1 once partly dealt
};

// Stands for a number of orders that nobody told.
inline constexpr int kUnknownNumber = -1;

// One row of the book as a panel draws it: a price with what rests there, in hands.
struct TESSIMODEL_EXPORT EntrustData {
    double price = 0;
    int volume = 0;              // hands; ticks write at least 1 for any volume
    int delta = 0;               // latest change in hands: above 0 an order, below 0 a trade or cancel, 0 none or faded
    int number = kUnknownNumber; // orders at the price
};

inline SingleQuote readLive(const SingleQuote& quote)
{
    return {readLive(quote.timetag), readLive(quote.seq), readLive(quote.volume), readLive(quote.dealVolume),
            readLive(quote.status)};
}

inline EntrustData readLive(const EntrustData& row)
{
    return {readLive(row.price), readLive(row.volume), readLive(row.delta), readLive(row.number)};
}

using EntrustRows = std::map<int, boost::shared_ptr<EntrustData>>; // by price key, ascending
using EntrustList = std::vector<boost::shared_ptr<EntrustData>>;   // by ascending price

// One price level of the tick-built book: the orders resting at one price on one side, oldest first.
//
//     m_quotes   seq 3: 500-200 | seq 8: 300 | seq 9: 100      m_volume 700, m_number 3
//                oldest, trades next            newest
//
// The queue is first in, first out: a fill of one order takes every older order with it, since those must have gone
// unseen. After order() and deal() m_number is the size of m_quotes and m_volume the sum of the live sizes.
//
// A book changes its levels on one thread; panels may hold a level and read it meanwhile. getQuotes() is their way to
// the orders, readLive() (liveread.h) to the plain members. Not virtual, not for deriving.
class TESSIMODEL_EXPORT SingleQueue {
public:
    using Quotes = std::map<__int64, std::shared_ptr<SingleQuote>>;

    // A surplus that a snapshot shows over the ticks counts as orders of this many shares, the last one of what
    // remains.
    static constexpr int kImpliedOrderShares = 100000;

    SingleQueue() = default;
    SingleQueue(double price, bool isBid);

    // A copy with orders and a lock of its own: changing it leaves the source alone.
    SingleQueue(SingleQueue& source);
    SingleQueue& operator=(const SingleQueue&) = delete;

    // Adds an order at the tail. False, and nothing changes, when its seq is here already. `row`, which may be empty,
    // gets price, volume, change and number; `unit` is the instrument's shares per hand, at least 1.
    bool order(const std::shared_ptr<quoter::OrderData>& order, const boost::shared_ptr<EntrustData>& row, int unit);

    // Takes a trade of an order at this level, or its cancel. False when the level does not have the order:
    //
    //     empty level, cancel of an order not here     nothing changes
    //     fill of an order not here                    the older orders are gone all the same, but neither time nor
    //                                                  row follow; with only older orders here the fill counts as taken
    //
    // A fill takes at most the order's live size; a cancel takes all of it, whatever volume it reports. `row` gets
    // volume, change and number, not the price. A level that runs out becomes inactive.
    bool deal(const std::shared_ptr<quoter::TransactionData>& trade, const boost::shared_ptr<EntrustData>& row,
              int unit);

    // How many orders there would be with `volume` shares: a smaller volume takes orders from the front, a larger one
    // adds implied orders. Changes nothing.
    int correctNumber(int volume);

    // How many implied orders make up `to` minus `from`; 1 for no difference and for a negative one.
    static int correctNumber(int from, int to);

    // Cuts orders off the front, or adds implied ones at the back, until there are `volume` shares. Only for a copy
    // that is handed to a panel, never for a level of a book. Leaves m_active, m_timetag and m_lastChange.
    void correctQueue(int volume);

    // Makes `out` a copy of m_quotes; the orders themselves are shared and go on changing.
    void getQuotes(Quotes& out);

    boost::recursive_mutex m_mutex; // guards m_quotes
    Quotes m_quotes;                // by ascending seq
    bool m_active = false;          // set by order(), cleared by a deal() that empties the level
    bool m_isBid = true;
    __int64 m_timetag = 0; // ms, newest order or trade applied; a level that empties keeps its old one
    double m_price = 0;    // as the first order of the level gave it
    __int64 m_volume = 0;  // live shares
    int m_number = 0;      // orders
    int m_lastChange = 0;  // shares: plus an order's volume, minus a trade's

private:
    friend class ThousandBook;
    template <class Own, class Book, bool IsBid>
    friend class detail::BookSide;

    void renew(double price, bool isBid); // as from the constructor
    void cutFront(__int64 excess);
    void addImplied(int surplus);

    static constexpr __int64 kNotMarked = -1;

    // Of a level in a book, under the book's lock.
    bool m_lent = false;                // a panel may know the level, so that its lock is needed
    __int64 m_markedSince = kNotMarked; // under which time the book has noted the level's change mark
};

} // namespace TC
