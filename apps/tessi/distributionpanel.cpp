#include "apps/tessi/distributionpanel.h"

#include "apps/tessi/bar.h"
#include "apps/tessi/dayrequest.h"
#include "apps/tessi/missingstreams.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace tessi {

DistributionPanel::DistributionPanel(const recording::RecordedDay& day, const PanelOptions& /*options*/)
    : m_distribution(day)
    , m_note(missingStreamsText(day, {snapshotStream(day)})) // either level does
{}

// Before its first value an index has snapshots without a price, which the model keeps as one of 0.
std::vector<TC::TransDistributionPrice> DistributionPanel::prices() const
{
    std::vector<TC::TransDistributionPrice> prices;
    std::copy_if(m_distribution.model().m_prices.begin(), m_distribution.model().m_prices.end(),
                 std::back_inserter(prices),
                 [](const TC::TransDistributionPrice& row) { return row.price > 0 || row.totalVolume != 0; });
    return prices;
}

Table DistributionPanel::rows()
{
    Table table({{"price", true}, {"buy", true}, {"sell", true}, {"total", true}});
    const TC::CModelTransDistribution& model = m_distribution.model();
    for (const TC::TransDistributionPrice& row : prices()) {
        table.add({priceText(row.price, m_distribution.priceTick()), numberText(row.buyVolume),
                   numberText(row.sellVolume), numberText(row.totalVolume)},
                  barOf(row.buyVolume, row.totalVolume, model.m_maxVolume));
    }
    return table;
}

std::string DistributionPanel::foot() const
{
    const TC::CModelTransDistribution& model = m_distribution.model();
    __int64 bought = 0;
    __int64 sold = 0;
    const std::vector<TC::TransDistributionPrice> rows = prices();
    for (const TC::TransDistributionPrice& row : rows) {
        bought += row.buyVolume;
        sold += row.sellVolume;
    }
    return fmt::format("total {} at {} prices: {} bought {}, {} sold {}; largest {}", model.m_totalVolume.load(),
                       rows.size(), kBuyGlyph, bought, kSellGlyph, sold, model.m_maxVolume.load());
}

} // namespace tessi
