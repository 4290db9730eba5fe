#include "apps/tessi/parampanel.h"

#include "apps/tessi/checks.h"
#include "apps/tessi/dayrequest.h"
#include "apps/tessi/missingstreams.h"
#include "apps/tessi/paramtable.h"
#include "apps/tessi/text.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace tessi {

namespace {

using recording::Stream;

constexpr char kReceiptMarket[] = "LSE";

// The streams that the rows of a list are made of.
std::vector<Stream> neededBy(const QList<int>& list, const recording::RecordedDay& day)
{
    std::vector<Stream> streams = {snapshotStream(day)}; // either level does
    if (list.contains(TC::RP_INNER))
        streams.push_back(Stream::Trades);
    if (list.contains(TC::RP_TOTAL_BID))
        streams.push_back(Stream::Aux);
    return streams;
}

bool describesReceipt(const recording::RecordedDay& day)
{
    return std::any_of(day.related.begin(), day.related.end(), [&day](const auto& instrument) {
        return instrument.market == kReceiptMarket && instrument.code == day.instrument.gdrCode;
    });
}

std::string missingIn(const recording::RecordedDay& day, const QList<int>& list, bool wantsBook)
{
    std::vector<std::string> notes;
    if (const std::string missing = missingStreamsText(day, neededBy(list, day)); !missing.empty())
        notes.push_back(missing);
    if (wantsBook && !list.contains(TC::RP_TOTAL_BID))
        notes.emplace_back("--level2 adds nothing: the instrument's list has no rows of the whole book");
    if (!day.instrument.gdrCode.empty() && !describesReceipt(day))
        notes.push_back(fmt::format("the day has no instrument {} {}, the depositary receipt", kReceiptMarket,
                                    day.instrument.gdrCode));
    return joinedNotes(notes);
}

std::vector<Table::Column> columns()
{
    std::vector<Table::Column> columns = paramColumns();
    columns.push_back({.name = "marked", .numeric = true, .forPrograms = true});
    return columns;
}

} // namespace

ParamPanel::ParamPanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_params(day, options.level2)
    , m_at(options.at)
    , m_atTime(options.at ? endOfSecondOn(day.tradingDay, *options.at) : 0)
    , m_note(missingIn(day, *m_params.model.m_paramList, options.level2))
{}

void ParamPanel::showMoment()
{
    const std::optional<__int64> shown = m_params.showAt(m_atTime);
    if (!shown)
        throw NotInTheDay(fmt::format("--at {}: nothing had been traded by then", *m_at));
    m_foot = fmt::format("as it stood at the snapshot of {}", clockText(*shown / 1000));
}

Table ParamPanel::rows()
{
    if (m_at)
        showMoment();
    Table table(columns());
    const TC::CModelTodayParam& model = m_params.model;
    for (const int entry : *model.m_paramList) {
        if (entry == TC::kParamSeparator) {
            table.add({"", "", "", "", ""});
            continue;
        }
        const bool isMarked = entry >= TC::kParamMark;
        const int id = isMarked ? entry - TC::kParamMark : entry;
        const TC::SRealtimeParam& row = model.m_params.at(static_cast<TC::ERealtimeParam>(id));
        table.add({row.label.toStdString(), row.text.toStdString(), numberText(id), row.colorKey.toStdString(),
                   isMarked ? "1" : "0"},
                  tintOf(row.colorKey));
    }
    return table;
}

} // namespace tessi
