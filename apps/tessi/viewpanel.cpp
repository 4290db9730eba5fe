#include "apps/tessi/viewpanel.h"

#include "apps/tessi/panelfilter.h"
#include "apps/tessi/rowmatches.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"
#include "recording/dayspan.h"
#include "recording/recordedday.h"

#include <fmt/format.h>

#include <string>

namespace tessi {

namespace {

const char* kindName(TC::E_DEAL_KIND kind)
{
    switch (kind) {
    case TC::DEAL_SINGLE:
        return "single";
    case TC::DEAL_NEAR_SAME_PRICE:
        return "near same";
    case TC::DEAL_FAR_SAME_PRICE:
        return "far same";
    case TC::DEAL_FAR_OTHER_PRICE:
        return "far other";
    case TC::DEAL_NEAR_OTHER_PRICE:
        return "near other";
    }
    return "";
}

} // namespace

ViewPanel::ViewPanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_trades(day)
{
    const __int64 midnight = recording::DaySpan(day.tradingDay).begin();
    const TC::SDepthFilterParam range = filterOf(options);
    m_from = static_cast<int>((midnight + range.startTime) / 1000);
    m_to = static_cast<int>((midnight + range.endTime) / 1000);
}

Table ViewPanel::rows()
{
    Table table({{"row", true},
                 {"time"},
                 {"price", true},
                 {"hands", true},
                 {"buy seq", true},
                 {"buy kind"},
                 {"sell seq", true},
                 {"sell kind"},
                 {"rows"},
                 {"snapshot"}});
    TC::CModelDepthHolographic& model = *m_trades.model;
    model.setViewTimeRange(m_from, m_to);
    RowMatches matches(model);
    for (int i = model.getStartIndex(); i >= 0 && i <= model.getEndIndex(); ++i) {
        const auto row = model.getData(i);
        const RowMatch& match = matches.of(i);
        table.add({std::to_string(i), clockText(row->time), priceText(row->price, model.m_priceTick),
                   std::to_string(row->hands), std::to_string(row->buySeq), kindName(model.getDataKind(row, true)),
                   std::to_string(row->sellSeq), kindName(model.getDataKind(row, false)), match.rowsText(),
                   match.secondText()},
                  row->isUp ? Table::Tint::Rise : Table::Tint::Fall);
    }
    return table;
}

std::string ViewPanel::foot() const
{
    const TC::CModelDepthHolographic& model = *m_trades.model;
    return fmt::format("highest {}, lowest {}, height {}", priceText(model.m_maxPrice, model.m_priceTick),
                       priceText(model.m_minPrice, model.m_priceTick), model.m_totalHeight);
}

} // namespace tessi
