#include "apps/tessi/statuspanel.h"

#include "apps/tessi/checks.h"
#include "apps/tessi/dayrequest.h"
#include "apps/tessi/missingstreams.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"

#include <fmt/format.h>

#include <algorithm>

namespace tessi {

namespace {

// A level that is not there has no price. The volume below an auction's price has none either, and is shown.
void addRow(Table& table, bool isBid, int level, const TC::EntrustStatusRow& row, double priceTick)
{
    const bool hasPrice = row.price > 0;
    table.add({sideName(isBid), numberText(level), hasPrice ? priceText(row.price, priceTick) : "",
               hasPrice || row.volume != 0 ? numberText(row.volume) : "", row.delta == 0 ? "" : numberText(row.delta)},
              isBid ? Table::Tint::Rise : Table::Tint::Fall);
}

std::string orNone(const std::string& price)
{
    return price.empty() ? "none" : price;
}

} // namespace

StatusPanel::StatusPanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_isIndex(isIndex(day))
    , m_stream(options.level1 ? recording::Stream::Quotes : snapshotStream(day))
    , m_status(day, m_stream)
    , m_at(options.at)
    , m_atTime(options.at ? endOfSecondOn(day.tradingDay, *options.at) : 0)
    , m_note(missingStreamsText(day, {m_stream}))
{}

void StatusPanel::showMoment()
{
    const std::optional<__int64> shown = m_status.showAt(m_atTime);
    if (!shown)
        throw NotInTheDay(fmt::format("--at {}: no snapshot had come by then", *m_at));
    m_moment = fmt::format("as it stood at the snapshot of {}", clockText(*shown / 1000));
}

// Quotes of an index show no levels, and rows without any would say nothing.
bool StatusPanel::hasNoBook() const
{
    const auto showsALevel = [](const TC::EntrustStatusRow& row) { return row.price > 0 || row.volume != 0; };
    const auto showSome = [&](const auto& rows) { return std::any_of(rows.begin(), rows.end(), showsALevel); };
    return m_isIndex && !showSome(m_status.model.m_askRows) && !showSome(m_status.model.m_bidRows);
}

Table StatusPanel::rows()
{
    if (m_at)
        showMoment();
    Table table({{"side"}, {"level", true}, {"price", true}, {"hands", true}, {"change", true, true}});
    if (hasNoBook())
        return table;
    const TC::CModelEntrustStatus& model = m_status.model;
    constexpr int kRows = TC::CModelEntrustStatus::kRows;
    for (int i = 0; i < kRows; ++i) {
        if (model.m_askRows[i].used)
            addRow(table, false, kRows - i, model.m_askRows[i], model.m_priceTick);
    }
    for (int i = 0; i < kRows; ++i) {
        if (model.m_bidRows[i].used)
            addRow(table, true, i + 1, model.m_bidRows[i], model.m_priceTick);
    }
    return table;
}

std::string StatusPanel::whyEmpty() const
{
    const auto& asks = m_status.model.m_askRows;
    const bool hadCome = std::any_of(asks.begin(), asks.end(), [](const auto& row) { return row.used; });
    return hadCome ? "an index has no book; " + foot() : "no snapshot had come";
}

std::string StatusPanel::foot() const
{
    const TC::CModelEntrustStatus& model = m_status.model;
    const std::string figures = fmt::format(
        "last price {}, last close {}, latest tick {}", orNone(priceText(model.m_lastPrice, model.m_priceTick)),
        orNone(priceText(model.getLastClosePrice(), model.m_priceTick)), model.m_tickVolume);
    return m_moment.empty() ? figures : figures + "; " + m_moment;
}

} // namespace tessi
