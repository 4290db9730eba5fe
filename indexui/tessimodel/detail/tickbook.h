#pragma once

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/orderkind.h"
#include "indexui/tessimodel/detail/orderplace.h"
#include "indexui/tessimodel/updateflags.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <atomic>
#include <memory>
#include <vector>

// The steps by which a book of price levels takes ticks. They are the same for every such book; what a level is, and
// whether it has a row, each book tells by its Side:
//
//     struct Side {
//         OrderPlace& note(const quoter::OrderData&);      // enters where an order goes
//         OrderPlace* placeOfOrder(__int64 seq);           // where it went, null when it is not known
//         Place* find(int key);                    // the level with all that belongs to it, null when there is none
//         Place* open(int key, double price);      // a new level
//         bool add(Place*, const OrderPtr&, OrderPlace&);   // puts an order into the level
//         bool deal(Place*, const TradePtr&, OrderPlace&);  // gives the level a trade of the order
//         bool isDead(Place*);                     // the level has run out, and is to go
//         void close(Place*);
//         void changed(Place*);                    // the level took a tick and stays
//         Pending& pending();                      // trades that wait, by order seq
//         __int64 lastSeq();                       // highest order seq applied
//         void markDirty();
//         void forget();                           // a trade was dropped, since its order should have come by now
//     };
//
// Most of it is the same again (bookside.h). The caller holds the book's lock. The book's members go by the names
// m_stock, m_lastTimetag (an atomic), m_seenTrades, m_lastBuySeq and m_lastSellSeq.
namespace TC::detail {

using OrderPtr = std::shared_ptr<quoter::OrderData>;
using TradePtr = std::shared_ptr<quoter::TransactionData>;

// Cancels reach a book as trades only, whatever the market.
inline bool isBookOrder(const quoter::OrderData& order)
{
    return !(order.bsFlag == quoter::kSideCancelBuy || order.orderKind == kNoKind || order.orderKind == kFundUnits);
}

// Orders without a price have a level for each kind.
inline int bookKey(const quoter::OrderData& order, double priceTick)
{
    return isUnpriced(order.orderKind) ? -order.orderKind : priceKey(order.price, priceTick);
}

inline __int64 tradeKey(const quoter::TransactionData& trade)
{
    constexpr __int64 kHighHalf = 1LL << 32;
    return sum64(trade.buySeq * kHighHalf, trade.sellSeq);
}

inline bool raise(__int64& lastSeq, __int64 seq)
{
    if (seq <= lastSeq)
        return false;
    lastSeq = seq;
    return true;
}

// Whether the order is of the book's instrument and newer than all of its side. Orders that come again or late are
// dropped by this, and only sides other than buy and sell escape it.
template <class Book>
bool admitOrder(Book& book, const InstrumentPtr& stock, const quoter::OrderData& order, int& flags)
{
    if (!isSameInstrument(book.m_stock, stock)) [[unlikely]] {
        flags = kForeignInstrument;
        return false;
    }
    if (order.bsFlag == quoter::kSideBuy)
        return raise(book.m_lastBuySeq, order.seq);
    return order.bsFlag != quoter::kSideSell || raise(book.m_lastSellSeq, order.seq);
}

// Whether the trade is of the book's instrument and was not seen before. A second trade of the same two orders counts
// as seen; that is accepted.
template <class Book>
bool admitTrade(Book& book, const InstrumentPtr& stock, const quoter::TransactionData& trade, int& flags)
{
    if (!isSameInstrument(book.m_stock, stock)) [[unlikely]] {
        flags = kForeignInstrument;
        return false;
    }
    return book.m_seenTrades.insert(tradeKey(trade)).second;
}

template <class Book>
void advanceTime(Book& book, __int64 timetag)
{
    if (timetag > book.m_lastTimetag.load(std::memory_order_relaxed))
        book.m_lastTimetag.store(timetag, std::memory_order_relaxed);
}

// Gives the level the trades that waited for the order that has just come. True when the level has run out.
template <class Side, class Place>
[[gnu::noinline]] bool dealWaiting(Side& side, Place* place, __int64 seq, OrderPlace& own)
{
    const auto found = side.pending().find(seq);
    if (found == side.pending().end())
        return false;
    auto& waiting = found->second;
    std::erase_if(waiting, [&](const TradePtr& trade) { return side.deal(place, trade, own); });
    if (waiting.empty())
        side.pending().erase(found);
    return side.isDead(place);
}

// Puts an admitted order into the level of its key, which appears with it if need be, and may be gone again when
// waiting trades use it up. False when the level has the order already.
template <class Side>
bool placeOrder(Side side, const OrderPtr& order, int& flags)
{
    OrderPlace& own = side.note(*order);
    const int key = own.key;
    auto* place = side.find(key);
    const bool created = !place;
    if (created)
        place = side.open(key, order->price);
    if (!side.add(place, order, own))
        return false;

    side.markDirty();
    if (!side.pending().empty() && dealWaiting(side, place, order->seq, own)) {
        side.close(place);
        flags |= kUpdateLevels;
    } else {
        side.changed(place);
        flags |= created ? kUpdateLevels : kUpdateInPlace;
    }
    return true;
}

// Keeps a trade that no level took for an order that may still come: one with a higher seq than any so far.
template <class Side>
[[gnu::noinline]] void park(Side& side, __int64 seq, const TradePtr& trade)
{
    if (seq > side.lastSeq())
        side.pending()[seq].push_back(trade);
    else
        side.forget();
}

// Offers an admitted trade to the level of the side's order `seq`, whose place is null when the book does not know it.
template <class Side>
bool dealOrPark(Side side, OrderPlace* own, __int64 seq, const TradePtr& trade, int& flags)
{
    auto* const place = own && own->key != 0 ? side.find(own->key) : nullptr;
    if (place && side.deal(place, trade, *own)) {
        side.markDirty();
        if (side.isDead(place)) {
            side.close(place);
            flags |= kUpdateLevels;
        } else {
            side.changed(place);
            flags |= kUpdateInPlace;
        }
        return true;
    }
    // The side that a cancel does not have; a highest seq is never below 0.
    if (seq != 0)
        park(side, seq, trade);
    return false;
}

} // namespace TC::detail
