#include "apps/tessi/tradespanel.h"

#include "apps/tessi/panelfilter.h"
#include "apps/tessi/rowmatches.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"

#include <string>
#include <unordered_map>

namespace tessi {

namespace {

struct Direction {
    const char* name;
    Table::Tint tint;
};

Direction directionOf(const TC::DepthTransData& row)
{
    if (row.tickDirection == 0)
        return {"same", Table::Tint::None};
    return row.tickDirection > 0 ? Direction{"up", Table::Tint::Rise} : Direction{"down", Table::Tint::Fall};
}

// What of a row goes by its place among all rows.
struct Found {
    std::string snapshot;
    int buyHands = 0;
    int sellHands = 0;
};

using FoundByRow = std::unordered_map<const TC::DepthTransData*, Found>;

FoundByRow lookUpAll(const TC::CModelDepthHolographic& model)
{
    FoundByRow all;
    RowMatches matches(model);
    for (int i = 0; const auto row = model.getData(i); ++i) {
        all[row.get()] = {matches.of(i).secondText(), model.getEntrustVolume(row, true),
                          model.getEntrustVolume(row, false)};
    }
    return all;
}

} // namespace

TradesPanel::TradesPanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_trades(day)
    , m_filter(filterOf(options))
{}

Table TradesPanel::rows()
{
    Table table({{"time"},
                 {"no", true},
                 {"price", true},
                 {"move"},
                 {"hands", true},
                 {"shares", true},
                 {"buy seq", true},
                 {"sell seq", true},
                 {"buy size", true},
                 {"sell size", true},
                 {"snapshot"}});
    TC::CModelDepthHolographic& model = *m_trades.model;
    // A filter numbers the rows anew, and neither pairs nor chains with them.
    const FoundByRow found = lookUpAll(model);
    model.setFilterParam(m_filter);
    for (int i = 0; const auto row = model.getData(i); ++i) {
        const Found& of = found.at(row.get());
        const Direction direction = directionOf(*row);
        table.add({clockText(row->time), numberText(model.tracebackSeq(i)), priceText(row->price, model.m_priceTick),
                   direction.name, numberText(row->hands), numberText(row->fullVolume), numberText(row->buySeq),
                   numberText(row->sellSeq), numberText(of.buyHands), numberText(of.sellHands), of.snapshot},
                  direction.tint);
    }
    return table;
}

} // namespace tessi
