#include "tests/tessimodel/oracle/queues/queuestate.h"

#include "quoter/levelorderdata.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

namespace tests::oracle::queues {

namespace {

const Section kQueue{
    "queue", "price", {"where", "at", "object", "m_valid", "m_isBid", "m_volume", "m_count", "m_queueVolume"}};
const Section kNoQueue{"no queue", nullptr, {"where", "at"}};
const Section kQuote{"  order", nullptr, {"at", "object", "seq", "timetag", "volume", "dealVolume", "status"}};
const Section kPending{"trade that waits", nullptr, {"isBid", "for seq", "trade #"}};
const Section kOrderKey{"m_orderPriceKeys", nullptr, {"seq", "key"}};
const Section kSeenTrade{"m_seenTrades", nullptr, {"key", "-"}};
const Section kDealVolume{"m_dealVolumes", nullptr, {"seq", "volume"}};
const Section kOrder{"m_orders", nullptr, {"place", "order #"}};
const Section kTrade{"m_transactions", nullptr, {"place", "trade #"}};
const Section kBook{
    "book",
    "m_priceTick",
    {"m_lastTimetag", "m_lastBuySeq", "m_lastSellSeq", "m_bidsDirty", "m_asksDirty", "instrument", "m_volumeUnit"}};
const Section kFlags{
    "model", nullptr, {"m_loadedHistory", "m_updateFlags", "m_continuous", "m_suppressTickFlags", "m_modelId"}};
const Section kStock{"instrument", "m_priceTick", {"instrument", "m_volumeUnit"}};
const Section kLastClose{"model", "m_lastClose", {}};
const Section kSnapshots{"snapshots", nullptr, {"m_rawTimetag", "m_quoter #", "m_levelOrder #"}};

enum Where { kBids, kAsks, kBidSlot, kAskSlot };

using Pairs = std::vector<std::array<__int64, 2>>;

template <class Quotes>
void writeAllQuotes(Lines& out, const Quotes& quotes)
{
    for (const auto& [seq, quote] : quotes)
        out.add(kQuote, {seq, out.nameOfRow(quote.get()), quote->seq, quote->timetag, quote->volume, quote->dealVolume,
                         quote->status});
}

template <class Levels>
void writeLevels(Lines& out, Where where, const Levels& levels)
{
    for (const auto& [key, level] : levels)
        writeState(out, level.get(), {where, key});
}

template <class Rows>
void writeSlots(Lines& out, Where where, const Rows& rows)
{
    for (int i = 0; i < 10; ++i)
        writeState(out, rows[static_cast<std::size_t>(i)].get(), {where, i});
}

template <class Pending, class IdOf>
void writePending(Lines& out, bool isBid, const Pending& pending, const IdOf& idOf)
{
    for (const auto& [seq, trades] : pending) {
        for (const auto& trade : trades)
            out.add(kPending, {isBid, seq, idOf(trade)});
    }
}

template <class Index>
void writeIndex(Lines& out, const Section& section, const Index& index)
{
    Pairs pairs;
    for (const auto& [first, second] : index)
        pairs.push_back({first, second});
    out.addIndex(section, pairs);
}

template <class Keys>
void writeSeen(Lines& out, const Keys& keys)
{
    Pairs pairs;
    for (const __int64 key : keys)
        pairs.push_back({key, 0});
    out.addIndex(kSeenTrade, pairs);
}

template <class List, class IdOf>
void writeList(Lines& out, const Section& section, const List& list, const IdOf& idOf)
{
    Pairs pairs;
    for (const auto& record : list)
        pairs.push_back({static_cast<__int64>(pairs.size()), idOf(record)});
    out.addIndex(section, pairs);
}

int naiveId(const RecordPtr& record)
{
    return record ? record->id : -1;
}

} // namespace

void writeQuotes(Lines& out, const std::map<__int64, std::shared_ptr<NaiveQuote>>& quotes)
{
    writeAllQuotes(out, quotes);
}

void writeQuotes(Lines& out, const TC::OrderQueue::Quotes& quotes)
{
    writeAllQuotes(out, quotes);
}

void writeState(Lines& out, const NaiveOrderQueue* queue, Place place)
{
    if (!queue) {
        out.add(kNoQueue, {place.where, place.at});
        return;
    }
    out.add(kQueue, queue->price,
            {place.where, place.at, out.nameOfRow(queue), queue->valid, queue->isBid, queue->volume, queue->count,
             queue->queueVolume});
    writeAllQuotes(out, queue->quotes);
}

void writeState(Lines& out, const TC::OrderQueue* queue, Place place)
{
    if (!queue) {
        out.add(kNoQueue, {place.where, place.at});
        return;
    }
    out.add(kQueue, queue->m_price,
            {place.where, place.at, out.nameOfRow(queue), queue->m_valid, queue->m_isBid, queue->m_volume,
             queue->m_count, queue->m_queueVolume});
    writeAllQuotes(out, queue->m_quotes);
}

void writeState(Lines& out, const NaiveQueueBook& book)
{
    out.add(kBook, book.priceTick,
            {book.lastTimetag, book.bids.lastSeq, book.asks.lastSeq, book.bids.dirty, book.asks.dirty, book.stock,
             book.volumeUnit});
    writeLevels(out, kBids, book.bids.levels);
    writeLevels(out, kAsks, book.asks.levels);
    writePending(out, true, book.bids.pending, naiveId);
    writePending(out, false, book.asks.pending, naiveId);
    writeIndex(out, kOrderKey, book.orderPriceKeys);
    writeSeen(out, book.seenTrades);
}

void writeState(Lines& out, const TC::QueueBook& book, const RealRecords& records)
{
    const auto idOf = [&records](const auto& record) { return records.idOf(record.get()); };
    out.add(kBook, book.m_priceTick,
            {book.m_lastTimetag, book.m_lastBuySeq, book.m_lastSellSeq, book.m_bidsDirty, book.m_asksDirty,
             indexOf(book.m_stock), book.m_volumeUnit});
    writeLevels(out, kBids, book.m_bidLevels);
    writeLevels(out, kAsks, book.m_askLevels);
    writePending(out, true, book.m_pendingBuy, idOf);
    writePending(out, false, book.m_pendingSell, idOf);
    writeIndex(out, kOrderKey, book.m_orderPriceKeys);
    writeSeen(out, book.m_seenTrades);
}

void writeState(Lines& out, const NaiveQueueModel& model)
{
    out.add(kFlags, {model.loadedHistory, model.updateFlags, model.continuous, model.suppressTickFlags, 7});
    out.add(kStock, model.priceTick, {model.stock, model.volumeUnit});
    out.add(kLastClose, model.lastClose, {});
    out.add(kSnapshots, {model.rawTimetag, naiveId(model.quoter), naiveId(model.levelOrder)});
    writeSlots(out, kBidSlot, model.bids);
    writeSlots(out, kAskSlot, model.asks);
    writeState(out, model.book);
    writeIndex(out, kDealVolume, model.dealVolumes);
    writeList(out, kOrder, model.orders, naiveId);
    writeList(out, kTrade, model.transactions, naiveId);
}

void writeState(Lines& out, const TC::CModelDepthQueue& model, const RealRecords& records)
{
    const auto idOf = [&records](const auto& record) { return records.idOf(record.get()); };
    out.add(kFlags, {model.m_loadedHistory, model.m_updateFlags, model.m_continuous, model.m_suppressTickFlags,
                     model.m_modelId});
    out.add(kStock, model.m_priceTick, {indexOf(model.m_stock), model.m_volumeUnit});
    out.add(kLastClose, model.m_lastClose, {});
    out.add(kSnapshots, {model.m_rawTimetag, idOf(model.m_quoter), idOf(model.m_levelOrder)});
    writeSlots(out, kBidSlot, model.m_bids);
    writeSlots(out, kAskSlot, model.m_asks);
    writeState(out, model.m_book, records);
    writeIndex(out, kDealVolume, model.m_dealVolumes);
    writeList(out, kOrder, model.m_orders, idOf);
    writeList(out, kTrade, model.m_transactions, idOf);
}

} // namespace tests::oracle::queues
