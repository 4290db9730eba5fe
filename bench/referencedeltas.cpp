#include "bench/referencedeltas.h"

#include "quoter/levelthousanddata.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <vector>

namespace bench {

namespace {

using Volumes = std::map<double, int>;

void addSide(Volumes& byPrice, const std::vector<double>& prices, const std::vector<int>& volumes)
{
    const std::size_t count = std::min(prices.size(), volumes.size());
    for (std::size_t i = 0; i < count; ++i)
        byPrice.emplace(prices[i], volumes[i]);
}

Volumes volumesOf(const quoter::LevelThousandData& record)
{
    Volumes byPrice;
    addSide(byPrice, record.bidPrices, record.bidVolumes);
    addSide(byPrice, record.askPrices, record.askVolumes);
    return byPrice;
}

} // namespace

void ReferenceDeltas::take(const Record& record)
{
    constexpr __int64 kLeastAge = 1000; // ms
    if (!m_base || record->timetag - m_base->timetag >= kLeastAge)
        m_base = m_latest;
    m_latest = record;
    if (!m_base)
        return;
    const Volumes before = volumesOf(*m_base);
    for (const auto& [price, volume] : volumesOf(*record)) {
        const auto found = before.find(price);
        if (found != before.end() && found->second != volume)
            m_deltas[price] = {found->second - volume, record->timetag};
    }
}

} // namespace bench
