#pragma once

#include "utils/int64.h"

#include <QList>
#include <QString>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The state of a parameter table as lines of texts and numbers, quick to compare.
namespace tests::oracle::params {

struct ParamLine {
    std::string_view what;
    __int64 key = 0; // which one of its kind
    std::array<QString, 3> texts{};
    QList<int> entries;
    std::array<double, 4> doubles{}; // compared bit by bit
    std::array<__int64, 4> numbers{};

    friend bool operator==(const ParamLine& a, const ParamLine& b);
};

class ParamState {
public:
    explicit ParamState(bool = false) {}

    void clear() { m_lines.clear(); }
    ParamLine& add(std::string_view what, __int64 key = 0)
    {
        return m_lines.emplace_back(ParamLine{what, key, {}, {}, {}, {}});
    }

    const std::vector<ParamLine>& all() const { return m_lines; }
    friend bool operator==(const ParamState& a, const ParamState& b) { return a.m_lines == b.m_lines; }

private:
    std::vector<ParamLine> m_lines;
};

std::string firstDifferences(const ParamState& expected, const ParamState& real);

// The display lists of a table, in the order of its members.
template <class Model>
std::array<const QList<int>*, 15> listsOf(const Model& m)
{
    return {&m.m_stockParams,       &m.m_futureParams,      &m.m_fundParams,        &m.m_optionParams,
            &m.m_indexParams,       &m.m_defaultParams,     &m.m_afterHoursParamsA, &m.m_afterHoursParamsB,
            &m.m_registeredParamsA, &m.m_registeredParamsB, &m.m_gdrParams,         &m.m_newRuleBondParams,
            &m.m_bondParams,        &m.m_hkParams,          &m.m_ciccIndexParams};
}

// A number for what both sides hold: records and instruments are the same objects on both, so their addresses do.
inline __int64 nameOf(const void* object)
{
    return static_cast<__int64>(reinterpret_cast<std::intptr_t>(object));
}

template <class Model>
void writeTable(ParamState& out, const Model& model)
{
    for (const auto& [id, row] : model.m_params) {
        ParamLine& line = out.add("row", static_cast<int>(id));
        line.texts = {row.label, row.text, row.colorKey};
        line.numbers = {row.id};
    }
    __int64 number = 0;
    for (const QList<int>* list : listsOf(model))
        out.add("list", number++).entries = *list;
}

template <class Model>
void writeMembers(ParamState& out, const Model& m)
{
    ParamLine& flags = out.add("flags");
    flags.numbers = {m.m_isNewRuleBond | m.m_isBond << 1 | m.m_isIopvFund << 2 | m.m_isAfterHoursA << 3 |
                         m.m_isOption << 4 | m.m_isAfterHoursB << 5,
                     m.m_isRegisteredA | m.m_hasGdr << 1 | m.m_isHk << 2 | m.m_isRegisteredB << 3, m.m_isNewLoan,
                     m.m_level2};
    out.add("m_lastClose").doubles = {m.m_lastClose};
    out.add("m_priceTick").doubles = {m.m_priceTick};
    ParamLine& held = out.add("m_stock, m_gdrStock, m_tradeCount, isDataValid");
    held.numbers = {nameOf(m.m_stock.get()), nameOf(m.m_gdrStock.get()), m.m_tradeCount, m.isDataValid()};
    ParamLine& records = out.add("m_lastAll, m_lastDepth, m_lastContinuous, m_historyDateSource");
    records.numbers = {nameOf(m.m_lastAll.get()), nameOf(m.m_lastDepth.get()), nameOf(m.m_lastContinuous.get()),
                       m.m_historyDateSource ? m.m_historyDateSource() : -1};
    for (const auto& [timetag, entry] : m.m_history) {
        ParamLine& line = out.add("m_history", timetag);
        line.doubles = {entry.high, entry.low, entry.bidAveragePrice, entry.askAveragePrice};
        line.numbers = {entry.totalBidVolume, entry.totalAskVolume, entry.curVolume, entry.tradeCount};
    }
    for (const auto& [timetag, aux] : m.m_pendingAux)
        out.add("m_pendingAux", timetag).numbers = {nameOf(aux.get())};
}

// Which list of which model is in force.
template <class Models, class Model>
void writeListInForce(ParamState& out, const Models& models, const Model& model)
{
    ParamLine& line = out.add("model and number of the list in force");
    line.numbers = {-1, -1};
    for (std::size_t i = 0; i < models.size(); ++i) {
        const auto lists = listsOf(*models[i]);
        for (std::size_t number = 0; number < lists.size(); ++number) {
            if (lists[number] == model.m_paramList)
                line.numbers = {static_cast<__int64>(i), static_cast<__int64>(number)};
        }
    }
}

} // namespace tests::oracle::params
