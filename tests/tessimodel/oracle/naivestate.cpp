#include "tests/tessimodel/oracle/naivestate.h"

#include "tests/tessimodel/oracle/sections.h"

namespace tests::oracle {

namespace {

__int64 idOf(const RecordPtr& record)
{
    return record ? record->id : -1;
}

__int64 lastId(const std::vector<RecordPtr>& records)
{
    return records.empty() ? -1 : idOf(records.back());
}

void writeRows(Lines& out, const Section& section, bool isBid, const NaiveRows& rows, int instrument = 0)
{
    for (const auto& [key, row] : rows)
        out.add(section, row->price,
                {isBid, key, out.nameOfRow(row.get()), row->volume, row->delta, row->number, instrument});
}

void writeList(Lines& out, bool isBid, const std::vector<NaiveRowPtr>& rows)
{
    int place = 0;
    for (const NaiveRowPtr& row : rows)
        out.add(sections::kPanelRow, row->price,
                {isBid, place++, out.nameOfRow(row.get()), row->volume, row->delta, row->number});
}

void writeSide(Lines& out, bool isBid, const NaiveBook::Side& side)
{
    for (const auto& [key, level] : side.levels)
        writeState(out, *level, isBid, key);
    writeRows(out, sections::kBookRow, isBid, side.rows);
    for (const auto& [seq, trades] : side.pending) {
        for (const RecordPtr& trade : trades)
            out.add(sections::kPending, {isBid, seq, trade->id});
    }
}

} // namespace

void writeState(Lines& out, const NaiveLevel& level, bool isBid, int key)
{
    out.add(sections::kLevel, level.price,
            {isBid, key, level.active, level.isBid, level.timetag, level.volume, level.number, level.lastChange});
    for (const auto& [seq, quote] : level.quotes)
        out.add(sections::kQuote, {seq, quote->seq, quote->timetag, quote->volume, quote->dealVolume, quote->status});
}

void writeState(Lines& out, const NaiveBook& book)
{
    out.add(sections::kBook, book.priceTick,
            {book.lastTimetag, book.bids.lastSeq, book.asks.lastSeq, book.bids.dirty, book.asks.dirty, book.stock,
             book.volumeUnit, book.forgotten});
    writeSide(out, true, book.bids);
    writeSide(out, false, book.asks);
    std::vector<std::array<__int64, 2>> pairs;
    for (const auto& [seq, key] : book.orderPriceKeys)
        pairs.push_back({seq, key});
    out.addIndex(sections::kOrderKey, pairs);
    pairs.clear();
    for (const __int64 key : book.seenTrades)
        pairs.push_back({key, 0});
    out.addIndex(sections::kSeenTrade, pairs);
}

void writeSharedState(Lines& out, const NaiveSnapshotModel& model)
{
    out.add(sections::kFlags, {model.loadedHistory, model.dataReady, model.updateFlags, model.continuous,
                               model.isNewLoan, model.suppressTickFlags});
    out.add(sections::kStock, model.priceTick, {model.stock, model.volumeUnit, model.hasAfterHours});
    out.add(sections::kSnapshotFigures, model.quoterLastPrice,
            {model.quoterTimetag, model.quoterVolumeTime, model.quoterLastVolume, idOf(model.quoter),
             model.afterHoursVolume});
    out.add(sections::kLastClose, model.lastClose, {});
    out.add(sections::kTickPrice, model.tickLastPrice, {model.tickLastVolume});
    out.add(sections::kAskFloor, model.askFloor, {});
    out.add(sections::kBidCeiling, model.bidCeiling, {});
    writeState(out, model.book);
    writeRows(out, sections::kModelRow, true, model.bidRows);
    writeRows(out, sections::kModelRow, false, model.askRows);
    writeRows(out, sections::kSnapshotRow, true, model.snapshotBids);
    writeRows(out, sections::kSnapshotRow, false, model.snapshotAsks);
}

void writeState(Lines& out, const NaiveModel& model)
{
    writeSharedState(out, model);
    out.add(sections::kReady, {model.dataReady == 3});
    out.add(sections::kTicks,
            {static_cast<__int64>(model.orders.size()), static_cast<__int64>(model.transactions.size()),
             lastId(model.orders), lastId(model.transactions)});
    std::vector<std::array<__int64, 2>> pairs;
    for (const auto& [seq, volume] : model.dealVolumes)
        pairs.push_back({seq, volume});
    out.addIndex(sections::kDealVolume, pairs);
}

void writeState(Lines& out, const NaiveManager& manager)
{
    for (const auto& [instrument, saved] : manager.saved) {
        out.add(sections::kSaved,
                {instrument, static_cast<__int64>(saved.asks.size()), static_cast<__int64>(saved.bids.size())});
        writeRows(out, sections::kSavedRow, true, saved.bids, instrument);
        writeRows(out, sections::kSavedRow, false, saved.asks, instrument);
    }
}

void writeState(Lines& out, const NaivePanel& panel)
{
    out.add(sections::kPanelFigures, panel.lastPrice, {panel.flags, panel.lastVolume});
    out.add(sections::kPanelExtreme, panel.minPrice, {1});
    out.add(sections::kPanelExtreme, panel.maxPrice, {2});
    out.add(sections::kPanelExtreme, panel.maxAmount, {3});
    writeList(out, true, panel.bids);
    writeList(out, false, panel.asks);
}

} // namespace tests::oracle
