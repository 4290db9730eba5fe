#pragma once

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/tickbook.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

// The steps by which a model keeps tick orders and trades, and builds its book of them once the history of both is in
// hand, whichever comes last. They are the same for every such model, over the members that the models share by name
// (m_mutex, m_book, m_orders, m_transactions, m_dealVolumes, m_loadedHistory); what differs the model tells by its
// Rules:
//
//     struct Rules {
//         void drop(Orders&), drop(Trades&, DealVolumes&);      // empties; takes m_mutex
//         bool offer(const OrderPtr&, int& flags, Ticks);       // to the book
//         bool offer(const TradePtr&, int& flags, Ticks);
//         void tookLive(int flags);                             // the book took a live order
//         void tookLive(const TradePtr&, int flags);            // ... a live trade
//         void offered(const TransactionData&);                 // a trade of a history was offered, taken or not
//         void replayed();                                      // ... all of the trades were
//         void built();                                         // the book has taken a history batch
//         void ready(int history);                              // the history bit's work is done
//     };
//
// All of it runs on the strand of the workers. m_mutex is taken anew for each access to a list, so that a panel's read
// can slip between two records, and is free while the book works.
namespace TC::detail {

// A cancel consumes its order whatever the size.
inline constexpr int kCancelConsumesAll = 1000000000;

enum class Ticks { Live, History };

using OrderList = std::vector<OrderPtr>;
using TradeList = std::vector<TradePtr>;
using DealVolumes = boost::unordered_flat_map<__int64, int>; // by order seq
using ConsumedSeqs = boost::unordered_flat_set<__int64>;     // orders that were dealt away before they were seen

inline void addDealt(DealVolumes& volumes, const quoter::TransactionData& trade)
{
    const int amount = trade.transKind == quoter::kTransKindCancel ? kCancelConsumesAll : low32(trade.volume);
    for (const int seq : {trade.buySeq, trade.sellSeq}) {
        if (seq != 0) {
            int& dealt = volumes[seq];
            dealt = sum32(dealt, amount);
        }
    }
}

inline bool isConsumed(const DealVolumes& volumes, const quoter::OrderData& order)
{
    const auto dealt = volumes.find(order.seq);
    return dealt != volumes.end() && dealt->second >= order.volume;
}

// Whether the trade is of an order that is not consumed, or none is.
inline bool isOfOpenOrder(const ConsumedSeqs& consumed, const quoter::TransactionData& trade)
{
    const auto isOpen = [&](int seq) { return seq != 0 && !consumed.contains(seq); };
    return consumed.empty() || isOpen(trade.buySeq) || isOpen(trade.sellSeq);
}

// Offers a tick to the book. False when it was of another instrument: then everything stops.
template <class Rules, class TickPtr>
bool offerHistory(Rules& rules, const TickPtr& tick)
{
    int flags = 0;
    return rules.offer(tick, flags, Ticks::History) || flags != kForeignInstrument;
}

template <class Rules>
bool offerTrade(Rules& rules, const TradePtr& trade)
{
    if (!offerHistory(rules, trade))
        return false;
    rules.offered(*trade);
    return true;
}

// Empties the book for a build of that many ticks.
template <class Book>
void startBook(Book& book, std::size_t orders, std::size_t trades)
{
    book.clearBook();
    book.clearPending();
    book.reserve(withGrowth(orders), withGrowth(trades));
}

template <class Model, class List>
std::size_t sizeOf(const Model& model, const List& list)
{
    const ModelLock lock(model.m_mutex);
    return list.size();
}

// The orders kept that are not consumed; the others' seqs go to `consumed`.
template <class Model>
OrderList selectOrders(const Model& model, ConsumedSeqs& consumed)
{
    const ModelLock lock(model.m_mutex);
    OrderList selected;
    selected.reserve(model.m_orders.size());
    for (const OrderPtr& order : model.m_orders) {
        if (isConsumed(model.m_dealVolumes, *order))
            consumed.insert(order->seq);
        else
            selected.push_back(order);
    }
    return selected;
}

template <class Model>
TradeList selectTrades(const Model& model, const ConsumedSeqs& consumed)
{
    const ModelLock lock(model.m_mutex);
    TradeList selected;
    selected.reserve(model.m_transactions.size());
    for (const TradePtr& trade : model.m_transactions) {
        if (isOfOpenOrder(consumed, *trade))
            selected.push_back(trade);
    }
    return selected;
}

template <class Model, class Rules>
void takeLiveOrder(Model& model, Rules& rules, const RecordList& records)
{
    const OrderPtr order = lastAs<quoter::OrderData>(records);
    if (!order)
        return;
    {
        const ModelLock lock(model.m_mutex);
        model.m_orders.push_back(order);
    }
    int flags = 0;
    if (model.m_loadedHistory == kBothLoaded && rules.offer(order, flags, Ticks::Live))
        rules.tookLive(flags);
}

template <class Model, class Rules>
void takeLiveTrade(Model& model, Rules& rules, const RecordList& records)
{
    const TradePtr trade = lastAs<quoter::TransactionData>(records);
    if (!trade)
        return;
    {
        const ModelLock lock(model.m_mutex);
        model.m_transactions.push_back(trade);
    }
    int flags = 0;
    if (model.m_loadedHistory == kBothLoaded && rules.offer(trade, flags, Ticks::Live))
        rules.tookLive(trade, flags);
}

// Keeps the orders of a history batch and puts those into the book that are not consumed; the others' seqs go to
// `consumed`. False when an order was of another instrument.
template <class Model, class Rules>
bool buildFromOrders(Model& model, Rules& rules, const RecordList& records, ConsumedSeqs& consumed)
{
    const bool nothingDealt = sizeOf(model, model.m_dealVolumes) == 0;
    for (const auto& record : records) {
        const OrderPtr order = recordAs<quoter::OrderData>(record);
        if (!order)
            continue;
        bool applies = nothingDealt;
        {
            const ModelLock lock(model.m_mutex);
            model.m_orders.push_back(order);
            applies = applies || !isConsumed(model.m_dealVolumes, *order);
        }
        if (!applies)
            consumed.insert(order->seq);
        else if (!offerHistory(rules, order))
            return false;
    }
    return true;
}

template <class Model>
void keepOrders(Model& model, const RecordList& records)
{
    for (const auto& record : records) {
        if (OrderPtr order = recordAs<quoter::OrderData>(record)) {
            const ModelLock lock(model.m_mutex);
            model.m_orders.push_back(std::move(order));
        }
    }
}

// Takes a batch of orders. A history that completes the pair of histories builds the book.
template <class Model, class Rules>
void takeOrders(Model& model, Rules rules, int batchKind, const RecordList& records)
{
    if (!isHistory(batchKind)) {
        takeLiveOrder(model, rules, records);
        return;
    }
    if (records.empty() && batchKind != kHistoryStart)
        return;
    if (batchKind == kHistoryStart)
        rules.drop(model.m_orders);
    model.m_loadedHistory |= kOrdersLoaded;
    if (model.m_loadedHistory != kBothLoaded) {
        keepOrders(model, records);
        rules.ready(kOrdersLoaded);
        return;
    }

    ConsumedSeqs consumed;
    if (batchKind == kHistoryStart)
        startBook(model.m_book, records.size(), sizeOf(model, model.m_transactions));
    if (!buildFromOrders(model, rules, records, consumed))
        return;
    if (batchKind == kHistoryStart) {
        for (const TradePtr& trade : selectTrades(model, consumed)) {
            if (!offerTrade(rules, trade))
                return;
        }
        rules.replayed();
    }
    rules.built();
    rules.ready(kOrdersLoaded);
}

template <class Model>
void keepTrades(Model& model, const RecordList& records)
{
    for (const auto& record : records) {
        TradePtr trade = recordAs<quoter::TransactionData>(record);
        if (!trade)
            continue;
        const ModelLock lock(model.m_mutex);
        addDealt(model.m_dealVolumes, *trade);
        model.m_transactions.push_back(std::move(trade));
    }
}

// Takes a batch of trades. A history that completes the pair of histories builds the book.
template <class Model, class Rules>
void takeTrades(Model& model, Rules rules, int batchKind, const RecordList& records)
{
    if (!isHistory(batchKind)) {
        takeLiveTrade(model, rules, records);
        return;
    }
    if (records.empty() && batchKind != kHistoryStart)
        return;
    if (batchKind == kHistoryStart)
        rules.drop(model.m_transactions, model.m_dealVolumes);
    keepTrades(model, records);
    model.m_loadedHistory |= kTradesLoaded;
    if (model.m_loadedHistory == kBothLoaded) {
        ConsumedSeqs consumed;
        if (batchKind == kHistoryStart) {
            startBook(model.m_book, sizeOf(model, model.m_orders), records.size());
            for (const OrderPtr& order : selectOrders(model, consumed)) {
                if (!offerHistory(rules, order))
                    return;
            }
        }
        for (const auto& record : records) {
            const TradePtr trade = recordAs<quoter::TransactionData>(record);
            if (trade && isOfOpenOrder(consumed, *trade) && !offerTrade(rules, trade))
                return;
        }
        rules.replayed();
        rules.built();
    }
    rules.ready(kTradesLoaded);
}

} // namespace TC::detail
