#pragma once

#include "tests/tessimodel/oracle/statelines.h"

// The state of a list as lines. The naive lists have the names of the real ones, so that one text writes both; `ids`
// tells the name of a record.
namespace tests::oracle::lists {

namespace sections {

inline const Section kOrder{"order row", "price", {"row", "time", "hands", "volume", "seq", "bsFlag", "orderKind"}};
inline const Section kCancel{"cancel row", "price", {"row", "time", "hands", "volume", "seq"}};
inline const Section kFilteredOrders{"m_filteredOrders", nullptr, {"from", "rows", "", "", "", "", "", ""}};
inline const Section kFilteredCancels{"m_filteredCancels", nullptr, {"from", "rows", "", "", "", "", "", ""}};
inline const Section kOrderIndex{"m_orderIndexBySeq", nullptr, {"seq", "index"}};
inline const Section kTradesBySeq{"m_transactionsBySeq", nullptr, {"seq", "trades"}};
inline const Section kTradesOfSeq{"  its trades", nullptr, {"from", "trades #", "", "", "", "", "", ""}};
inline const Section kOrderList{"order list",
                                "m_priceTick",
                                {"instrument", "m_volumeUnit", "m_orderCount", "m_filteredOrderCount",
                                 "m_filteredCancelCount", "m_ordersChanged", "m_transactionsChanged"}};
inline const Section kLastClose{"model", "m_lastClose", {}};
inline const Section kFilterSizes{
    "m_filter",
    nullptr,
    {"reserved0", "reserved1", "handsMode", "hands", "connective", "amountMode", "amount", "startTime"}};
inline const Section kFilterSides{
    "m_filter", nullptr, {"endTime", "showBuyOrder", "showSellOrder", "showBuyCancel", "showSellCancel"}};

inline const Section kTrade{
    "trade row", "price", {"row", "time", "volume", "hands", "sellSeq", "buySeq", "prevBuyIndex", "nextBuyIndex"}};
inline const Section kTradeRuns{
    "  its runs",
    nullptr,
    {"row", "prevSellIndex", "nextSellIndex", "sellRun", "buyRun", "sellRunHands", "buyRunHands", "tickDirection"}};
inline const Section kTradeFlags{"  its flags", nullptr, {"row", "transKind", "tradeFlag", "isUp", "fullVolume"}};
inline const Section kFilteredRows{"m_filteredRows", nullptr, {"from", "rows", "", "", "", "", "", ""}};
inline const Section kOrderBySeq{"m_orders", nullptr, {"seq", "order #"}};
inline const Section kQuotes{"m_quotes", nullptr, {"from", "snapshots #", "", "", "", "", "", ""}};
inline const Section kPending{"m_pendingTransactions", nullptr, {"from", "trades #", "", "", "", "", "", ""}};
inline const Section kSeqPair{"m_seqPairs", nullptr, {"second", "first", "last"}};
inline const Section kBuyChains{"m_buyChains", nullptr, {"seq", "place * 1000000 + number"}};
inline const Section kSellChains{"m_sellChains", nullptr, {"seq", "place * 1000000 + number"}};
inline const Section kMinute{"m_minuteIndex", nullptr, {"minute", "number"}};
inline const Section kTradeList{"trade list",
                                "m_priceTick",
                                {"instrument", "m_volumeUnit", "m_rowCount", "m_changed", "m_isType277",
                                 "m_isType10006", "m_historyLoaded", "m_lastMatchedQuote"}};
inline const Section kMaxPrice{
    "view", "m_maxPrice", {"m_viewFlag", "m_fullHeightHandle", "m_viewStartTime", "m_viewEndTime"}};
inline const Section kMinPrice{
    "view", "m_minPrice", {"m_startIndex", "m_endIndex", "m_totalHeight", "getStartIndex", "getEndIndex"}};
inline const Section kPriceStep{"view", "m_priceStep", {}};

} // namespace sections

// Numbers, several to a line.
template <class List, class NumberOf>
void addPacked(Lines& out, const Section& section, const List& list, const NumberOf& numberOf)
{
    constexpr int kInLine = 7;
    std::array<__int64, kInLine> numbers{};
    int count = 0;
    const auto flush = [&](int used) {
        out.add(section, used,
                {count - used, numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5], numbers[6]});
        numbers = {};
    };
    for (const auto& item : list) {
        numbers[static_cast<std::size_t>(count++ % kInLine)] = numberOf(item);
        if (count % kInLine == 0)
            flush(kInLine);
    }
    flush(count % kInLine);
}

template <class Rows>
void addRowNames(Lines& out, const Section& section, const Rows& rows)
{
    addPacked(out, section, rows, [&out](const auto& row) { return out.nameOfRow(row.get()); });
}

template <class Records, class Ids>
void addRecords(Lines& out, const Section& section, const Records& records, const Ids& ids)
{
    addPacked(out, section, records, [&ids](const auto& record) { return ids.idOf(record.get()); });
}

template <class Filter>
void writeFilter(Lines& out, const Filter& filter)
{
    out.add(sections::kFilterSizes, {filter.reserved0, filter.reserved1, filter.handsMode, filter.hands,
                                     filter.connective, filter.amountMode, filter.amount, filter.startTime});
    out.add(sections::kFilterSides,
            {filter.endTime, filter.showBuyOrder, filter.showSellOrder, filter.showBuyCancel, filter.showSellCancel});
}

template <class Model, class Ids>
void writeOrderList(Lines& out, const Model& model, const Ids& ids)
{
    out.add(sections::kOrderList, model.m_priceTick,
            {ids.instrumentOf(model.m_stock), model.m_volumeUnit, model.m_orderCount, model.m_filteredOrderCount,
             model.m_filteredCancelCount, model.m_ordersChanged, model.m_transactionsChanged});
    out.add(sections::kLastClose, model.m_lastClose, {});
    writeFilter(out, model.m_filter);
    for (const auto& row : model.m_orders)
        out.add(sections::kOrder, row->price,
                {out.nameOfRow(row.get()), row->time, row->hands, row->volume, row->seq, row->bsFlag, row->orderKind});
    for (const auto& row : model.m_cancels)
        out.add(sections::kCancel, row->price,
                {out.nameOfRow(row.get()), row->time, row->hands, row->volume, row->seq});
    addRowNames(out, sections::kFilteredOrders, model.m_filteredOrders);
    addRowNames(out, sections::kFilteredCancels, model.m_filteredCancels);
    std::vector<std::array<__int64, 2>> pairs;
    for (const auto& [seq, index] : model.m_orderIndexBySeq)
        pairs.push_back({seq, index});
    out.addIndex(sections::kOrderIndex, pairs);
    for (const auto& [seq, trades] : model.m_transactionsBySeq) {
        out.add(sections::kTradesBySeq, {seq, static_cast<__int64>(trades.size())});
        addRecords(out, sections::kTradesOfSeq, trades, ids);
    }
}

template <class Chains>
void writeChains(Lines& out, const Section& section, const Chains& chains)
{
    constexpr __int64 kPlace = 1000000;
    std::vector<std::array<__int64, 2>> pairs;
    for (const auto& [seq, numbers] : chains) {
        __int64 place = 0;
        for (const int number : numbers)
            pairs.push_back({seq, kPlace * place++ + number});
    }
    out.addIndex(section, pairs);
}

template <class Row>
void writeTradeRow(Lines& out, const Row& row)
{
    const int name = out.nameOfRow(&row);
    out.add(sections::kTrade, row.price,
            {name, row.time, row.volume, row.hands, row.sellSeq, row.buySeq, row.prevBuyIndex, row.nextBuyIndex});
    out.add(sections::kTradeRuns, {name, row.prevSellIndex, row.nextSellIndex, row.sellRun, row.buyRun,
                                   row.sellRunHands, row.buyRunHands, row.tickDirection});
    out.add(sections::kTradeFlags, {name, row.transKind, row.tradeFlag, row.isUp, row.fullVolume});
}

template <class Model>
void writeView(Lines& out, const Model& model)
{
    out.add(sections::kMaxPrice, model.m_maxPrice,
            {model.m_viewFlag, model.m_fullHeightHandle, model.m_viewStartTime, model.m_viewEndTime});
    out.add(sections::kMinPrice, model.m_minPrice,
            {model.m_startIndex, model.m_endIndex, model.m_totalHeight, model.getStartIndex(), model.getEndIndex()});
    out.add(sections::kPriceStep, model.m_priceStep, {});
}

template <class Model, class Ids>
void writeTradeList(Lines& out, const Model& model, const Ids& ids)
{
    out.add(sections::kTradeList, model.m_priceTick,
            {ids.instrumentOf(model.m_stock), model.m_volumeUnit, model.m_rowCount, model.m_changed, model.m_isType277,
             model.m_isType10006, model.m_historyLoaded, model.m_lastMatchedQuote});
    out.add(sections::kLastClose, model.m_lastClose, {});
    writeFilter(out, model.m_filter);
    for (const auto& row : model.m_rows)
        writeTradeRow(out, *row);
    addRowNames(out, sections::kFilteredRows, model.m_filteredRows);
    for (const auto& [seq, order] : model.m_orders)
        out.add(sections::kOrderBySeq, {seq, ids.idOf(order.get())});
    addRecords(out, sections::kQuotes, model.m_quotes, ids);
    addRecords(out, sections::kPending, model.m_pendingTransactions, ids);
    for (const auto& [second, pair] : model.m_seqPairs)
        out.add(sections::kSeqPair, {second, pair.first, pair.second});
    writeChains(out, sections::kBuyChains, model.m_buyChains);
    writeChains(out, sections::kSellChains, model.m_sellChains);
    for (const auto& [minute, number] : model.m_minuteIndex)
        out.add(sections::kMinute, {minute, number});
    writeView(out, model);
}

} // namespace tests::oracle::lists
