#include "indexui/tessimodel/detail/levelvolumes.h"

#include "quoter/levelthousanddata.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace TC::detail {

namespace {

bool isBelow(const LevelVolume& a, const LevelVolume& b)
{
    return a.price < b.price;
}

bool isNotBelow(const LevelVolume& a, const LevelVolume& b)
{
    return !isBelow(a, b);
}

// Strictly, and so without a NaN.
bool isAscending(const LevelVolumes& levels)
{
    return levels.empty() || (!std::isnan(levels.front().price) &&
                              std::adjacent_find(levels.begin(), levels.end(), isNotBelow) == levels.end());
}

// From the record's order.
void sortByPrice(LevelVolumes& levels)
{
    std::erase_if(levels, [](const LevelVolume& level) { return std::isnan(level.price); });
    std::stable_sort(levels.begin(), levels.end(), isBelow);
    levels.erase(std::unique(levels.begin(), levels.end(), isNotBelow), levels.end());
}

} // namespace

LevelVolumes volumesByPrice(const quoter::LevelThousandData& record)
{
    const std::size_t bids = std::min(record.bidPrices.size(), record.bidVolumes.size());
    const std::size_t asks = std::min(record.askPrices.size(), record.askVolumes.size());
    LevelVolumes levels;
    levels.reserve(bids + asks);
    // Best prices come first: bids from behind and asks after them ascend, unless the record is out of order.
    for (std::size_t i = bids; i-- > 0;)
        levels.push_back({record.bidPrices[i], record.bidVolumes[i]});
    for (std::size_t i = 0; i < asks; ++i)
        levels.push_back({record.askPrices[i], record.askVolumes[i]});
    if (!isAscending(levels)) {
        std::reverse(levels.begin(), levels.begin() + static_cast<std::ptrdiff_t>(bids));
        sortByPrice(levels);
    }
    return levels;
}

} // namespace TC::detail
