#include "indexui/tessimodel/cwatchplatewidget_data.h"

#include "indexui/tessimodel/detail/colorkeys.h"
#include "utils/int64.h"

#include <boost/thread/locks.hpp>

#include <algorithm>
#include <utility>

namespace TC {

namespace {

using Lock = boost::unique_lock<boost::recursive_mutex>;

} // namespace

void WatchPlateData::setItems(std::vector<WatchPlateItem> items)
{
    const Lock lock(m_mutex);
    m_items = std::move(items);
}

void WatchPlateData::clear()
{
    const Lock lock(m_mutex);
    m_items.clear();
    m_buyOrderCount = 0;
    m_sellOrderCount = 0;
}

void WatchPlateData::recalculate()
{
    const Lock lock(m_mutex);
    __int64 total = 0;
    for (const WatchPlateItem& item : m_items)
        total += item.volume;
    for (WatchPlateItem& item : m_items) {
        item.ratio = static_cast<float>(item.volume) / static_cast<float>(total);
        item.colorKey = detail::plateLineColorKey(plateLine(item.direction, item.sizeClass)).toStdString();
    }
}

bool WatchPlateData::hasVolume() const
{
    const Lock lock(m_mutex);
    return std::any_of(m_items.begin(), m_items.end(), [](const WatchPlateItem& item) { return item.volume != 0; });
}

int WatchPlateData::orderCountOf(int direction) const
{
    const Lock lock(m_mutex);
    if (m_items.empty())
        return 0;
    return direction == kActiveBuy ? m_buyOrderCount : m_sellOrderCount;
}

float WatchPlateData::averageOf(int direction) const
{
    const Lock lock(m_mutex);
    const int count = orderCountOf(direction);
    if (count == 0)
        return 0;
    __int64 volume = 0;
    for (const WatchPlateItem& item : m_items) {
        if (item.direction == direction)
            volume += item.volume;
    }
    return static_cast<float>(volume) / static_cast<float>(count);
}

WatchPlateItem WatchPlateData::itemOf(int direction, int sizeClass) const
{
    const Lock lock(m_mutex);
    const auto found = std::find_if(m_items.begin(), m_items.end(), [&](const WatchPlateItem& item) {
        return item.direction == direction && item.sizeClass == sizeClass;
    });
    return found == m_items.end() ? WatchPlateItem() : *found;
}

} // namespace TC
