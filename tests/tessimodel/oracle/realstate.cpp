#include "tests/tessimodel/oracle/realstate.h"

#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"
#include "tests/tessimodel/oracle/sections.h"

namespace tests::oracle {

namespace {

// The manager's key, as the stand-in terminal makes it.
int indexOfKey(const std::string& key)
{
    const std::size_t colon = key.find(':');
    return colon == std::string::npos ? -1 : instrumentIndex(key.substr(0, colon), key.substr(colon + 1));
}

template <class List>
__int64 lastId(const List& list, const RealRecords& records)
{
    return list.empty() ? -1 : records.idOf(list.back().get());
}

void writeRows(Lines& out, const Section& section, bool isBid, const TC::EntrustRows& rows, int instrument = 0)
{
    for (const auto& [key, row] : rows)
        out.add(section, row->price,
                {isBid, key, out.nameOfRow(row.get()), row->volume, row->delta, row->number, instrument});
}

void writeList(Lines& out, bool isBid, const TC::EntrustList& rows)
{
    int place = 0;
    for (const auto& row : rows)
        out.add(sections::kPanelRow, row->price,
                {isBid, place++, out.nameOfRow(row.get()), row->volume, row->delta, row->number});
}

void writePending(Lines& out, bool isBid, const TC::ThousandBook::Pending& pending, const RealRecords& records)
{
    for (const auto& [seq, trades] : pending) {
        for (const auto& trade : trades)
            out.add(sections::kPending, {isBid, seq, records.idOf(trade.get())});
    }
}

template <class Index>
void writeIndex(Lines& out, const Section& section, const Index& index)
{
    std::vector<std::array<__int64, 2>> pairs;
    pairs.reserve(index.size());
    for (const auto& [seq, value] : index)
        pairs.push_back({seq, value});
    out.addIndex(section, pairs);
}

} // namespace

void writeState(Lines& out, const TC::SingleQueue& level, bool isBid, int key)
{
    out.add(sections::kLevel, level.m_price,
            {isBid, key, level.m_active, level.m_isBid, level.m_timetag, level.m_volume, level.m_number,
             level.m_lastChange});
    for (const auto& [seq, quote] : level.m_quotes)
        out.add(sections::kQuote, {seq, quote->seq, quote->timetag, quote->volume, quote->dealVolume, quote->status});
}

void writeState(Lines& out, const TC::ThousandBook& book, const RealRecords& records)
{
    out.add(sections::kBook, book.m_priceTick,
            {book.m_lastTimetag, book.m_lastBuySeq, book.m_lastSellSeq, book.m_bidsDirty, book.m_asksDirty,
             indexOf(book.m_stock), book.m_volumeUnit, book.forgottenTrades()});
    for (const auto& [key, level] : book.m_bidLevels)
        writeState(out, *level, true, key);
    writeRows(out, sections::kBookRow, true, book.m_bidRows);
    writePending(out, true, book.m_pendingBuy, records);
    for (const auto& [key, level] : book.m_askLevels)
        writeState(out, *level, false, key);
    writeRows(out, sections::kBookRow, false, book.m_askRows);
    writePending(out, false, book.m_pendingSell, records);
    writeIndex(out, sections::kOrderKey, book.m_orderPriceKeys);
    std::vector<std::array<__int64, 2>> pairs;
    for (const __int64 key : book.m_seenTrades)
        pairs.push_back({key, 0});
    out.addIndex(sections::kSeenTrade, pairs);
}

template <class Model>
void writeSharedState(Lines& out, const Model& model, const RealRecords& records)
{
    out.add(sections::kFlags, {model.m_loadedHistory, model.m_dataReady, model.m_updateFlags, model.m_continuous,
                               model.m_isNewLoan, model.m_suppressTickFlags});
    out.add(sections::kStock, model.m_priceTick, {indexOf(model.m_stock), model.m_volumeUnit, model.m_hasAfterHours});
    out.add(sections::kSnapshotFigures, model.m_quoterLastPrice,
            {model.m_quoterTimetag, model.m_quoterVolumeTime, model.m_quoterLastVolume,
             records.idOf(model.m_quoter.get()), model.m_afterHoursVolume});
    out.add(sections::kLastClose, model.m_lastClose, {});
    out.add(sections::kTickPrice, model.m_tickLastPrice, {model.m_tickLastVolume});
    out.add(sections::kAskFloor, model.m_askFloor, {});
    out.add(sections::kBidCeiling, model.m_bidCeiling, {});
    writeState(out, model.m_book, records);
    writeRows(out, sections::kModelRow, true, model.m_bidRows);
    writeRows(out, sections::kModelRow, false, model.m_askRows);
    writeRows(out, sections::kSnapshotRow, true, model.m_snapshotBids);
    writeRows(out, sections::kSnapshotRow, false, model.m_snapshotAsks);
}

template void writeSharedState(Lines& out, const TC::CModelDepthThousand& model, const RealRecords& records);
template void writeSharedState(Lines& out, const TC::CModelQuoterDepthThousand& model, const RealRecords& records);

void writeState(Lines& out, const TC::CModelDepthThousand& model, const RealRecords& records)
{
    writeSharedState(out, model, records);
    out.add(sections::kReady, {model.isDataAllReadly()});
    out.add(sections::kTicks,
            {static_cast<__int64>(model.m_orders.size()), static_cast<__int64>(model.m_transactions.size()),
             lastId(model.m_orders, records), lastId(model.m_transactions, records)});
    writeIndex(out, sections::kDealVolume, model.m_dealVolumes);
}

void writeState(Lines& out, const TC::CDepthThousandModelManager& manager)
{
    // Ordered by place in instruments(), as the naive manager is.
    std::map<int, std::string> keys;
    for (const auto& [key, rows] : manager.m_asksData)
        keys[indexOfKey(key)] = key;
    for (const auto& [key, rows] : manager.m_bidsData)
        keys[indexOfKey(key)] = key;
    const auto rowsOf = [](const auto& data, const std::string& key) {
        const auto found = data.find(key);
        return found == data.end() ? TC::EntrustRows() : found->second;
    };
    for (const auto& [instrument, key] : keys) {
        const TC::EntrustRows asks = rowsOf(manager.m_asksData, key);
        const TC::EntrustRows bids = rowsOf(manager.m_bidsData, key);
        out.add(sections::kSaved, {instrument, static_cast<__int64>(asks.size()), static_cast<__int64>(bids.size())});
        writeRows(out, sections::kSavedRow, true, bids, instrument);
        writeRows(out, sections::kSavedRow, false, asks, instrument);
    }
}

void writeState(Lines& out, const RealPanel& panel)
{
    out.add(sections::kPanelFigures, panel.lastPrice, {panel.flags, panel.lastVolume});
    out.add(sections::kPanelExtreme, panel.minPrice, {1});
    out.add(sections::kPanelExtreme, panel.maxPrice, {2});
    out.add(sections::kPanelExtreme, panel.maxAmount, {3});
    writeList(out, true, panel.bids);
    writeList(out, false, panel.asks);
}

} // namespace tests::oracle
