#pragma once

#include "tests/tessimodel/oracle/lists/liststate.h"

// What a panel can ask of a list, as lines. As in liststate.h, one text asks both sides.
namespace tests::oracle::lists {

namespace sections {

inline const Section kOrderAt{
    "order at", nullptr, {"index", "of all", "of filtered", "traceback", "cancel", "traceback", "symbol"}};
inline const Section kOrderOf{"order of", nullptr, {"seq", "found", "row", "has trades"}};
inline const Section kTradesOf{"trades of seq", nullptr, {"from", "trades #", "", "", "", "", "", ""}};

inline const Section kRowAt{
    "row at", nullptr, {"index", "row", "traceback", "getCurrQuoterTimgtag", "current first", "last"}};
inline const Section kPairsAt{"pairs around", nullptr, {"index", "next first", "last", "previous first", "last"}};
inline const Section kAtSecond{
    "at",
    nullptr,
    {"second", "find first", "last", "find forward", "find backward", "getNextQuoterTimgtag", "getPreQuoterTimgtag"}};
inline const Section kOfRow{"of row", nullptr, {"place", "buy volume", "sell volume", "buy kind", "sell kind"}};
inline const Section kOrderBy{"getOrder", nullptr, {"seq", "order #", "is special", "name"}};
inline const Section kTryFind{"tryFind", nullptr, {"second", "volume", "found", "first", "last"}};

} // namespace sections

struct OrderListGrid {
    std::vector<int> indices;
    std::vector<int> seqs;
};

// A text as a number; a short one is its letters.
inline __int64 letters(const std::string& text)
{
    unsigned long long number = 0;
    for (const char letter : text)
        number = number * 257 + static_cast<unsigned char>(letter);
    return static_cast<__int64>(number);
}

template <class Model, class Ids>
void writeLookups(Lines& out, const Model& model, const OrderListGrid& grid, const Ids& ids)
{
    const auto nameOf = [&out](const auto& row) { return row ? out.nameOfRow(row.get()) : -1; };
    for (const int index : grid.indices)
        out.add(sections::kOrderAt,
                {index, nameOf(model.getOrderData(index, true)), nameOf(model.getOrderData(index, false)),
                 model.tracebackOrderSeq(index), nameOf(model.getCancelData(index)), model.tracebackCancelSeq(index),
                 letters(ids.symbolOf(model.getOrderData(index, true)))});
    for (const int seq : grid.seqs) {
        typename Model::OrderRow row;
        typename Model::Trades trades;
        const bool isFound = model.getOrderData(seq, row);
        out.add(sections::kOrderOf, {seq, isFound, nameOf(row), model.getTransactionData(seq, trades)});
        addRecords(out, sections::kTradesOf, trades, ids);
    }
}

struct TradeListGrid {
    struct Tick {
        int second;
        int volume;
    };

    std::vector<int> indices;
    std::vector<int> seconds;
    std::vector<int> places; // in m_rows, -1 for an empty pointer
    std::vector<__int64> seqs;
    std::vector<Tick> ticks;
};

template <class Model>
void writeLookupsByIndex(Lines& out, const Model& model, const std::vector<int>& indices)
{
    for (const int index : indices) {
        const auto row = model.getData(index);
        const auto current = model.getCurrSeqPair(index);
        const auto next = model.getNextSeqPair(index);
        const auto previous = model.getPreSeqPair(index);
        out.add(sections::kRowAt, {index, row ? out.nameOfRow(row.get()) : -1, model.tracebackSeq(index),
                                   model.getCurrQuoterTimgtag(index), current.first, current.second});
        out.add(sections::kPairsAt, {index, next.first, next.second, previous.first, previous.second});
    }
}

template <class Model>
void writeLookupsBySecond(Lines& out, const Model& model, const std::vector<int>& seconds)
{
    for (const int second : seconds) {
        const auto pair = model.find(second);
        out.add(sections::kAtSecond,
                {second, pair.first, pair.second, model.find(second, true), model.find(second, false),
                 model.getNextQuoterTimgtag(second), model.getPreQuoterTimgtag(second)});
    }
}

template <class Tick, class Model, class Ids>
void writeLookups(Lines& out, const Model& model, const TradeListGrid& grid, const Ids& ids)
{
    writeLookupsByIndex(out, model, grid.indices);
    writeLookupsBySecond(out, model, grid.seconds);
    for (const int place : grid.places) {
        typename Model::Row row;
        if (place >= 0)
            row = model.m_rows[static_cast<decltype(model.m_rows.size())>(place)];
        out.add(sections::kOfRow,
                {place, model.getEntrustVolume(row, true), model.getEntrustVolume(row, false),
                 static_cast<int>(model.getDataKind(row, true)), static_cast<int>(model.getDataKind(row, false))});
    }
    for (const __int64 seq : grid.seqs) {
        const auto order = model.getOrder(seq);
        out.add(sections::kOrderBy,
                {seq, ids.idOf(order.get()), ids.isSpecial(order), letters(ids.specialName(order))});
    }
    typename Model::SeqPair rows;
    out.add(sections::kTryFind, {0, 0, model.tryFind(static_cast<const Tick*>(nullptr), rows)});
    for (const auto& [second, volume] : grid.ticks) {
        Tick tick;
        tick.timetag = second;
        tick.volume = volume;
        const bool isFound = model.tryFind(&tick, rows);
        out.add(sections::kTryFind, {second, volume, isFound, isFound ? rows.first : 0, isFound ? rows.second : 0});
    }
}

} // namespace tests::oracle::lists
