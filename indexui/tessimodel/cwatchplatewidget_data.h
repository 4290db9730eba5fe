#pragma once

#include "indexui/tessimodel/export.h"

#include <boost/thread/recursive_mutex.hpp>

#include <atomic>
#include <string>
#include <vector>

class QPainter;
class QRect;

namespace TC {

// What the plate tells apart.
inline constexpr int kActiveBuy = 0;
inline constexpr int kActiveSell = 1;
inline constexpr int kPlateSizeClasses = 4;

// The line of a direction and size in the order of the colour keys: the buys from huge to small, then the sells.
constexpr int plateLine(int direction, int sizeClass)
{
    return direction * kPlateSizeClasses + sizeClass;
}

// One sector of the plate's pie and one line of its table.
struct TESSIMODEL_EXPORT WatchPlateItem {
    int direction = kActiveBuy;
    int sizeClass = 2; // 0 "特大", 1 "大单", 2 "中单", 3 "小单"
    int volume = 0;    // hands
    float ratio = 0;   // share of all volume, 0 to 1
    std::string colorKey = "clr_default";
};

// What the watch plate shows, and how it is drawn.
//
// Data may be set on any thread. The drawing, on the GUI thread, takes the lock for one piece after the other: a
// picture that is painted while data are set may show parts of both, and the next one shows the new data.
class TESSIMODEL_EXPORT WatchPlateData {
public:
    // Replaces the items, in drawing order.
    void setItems(std::vector<WatchPlateItem> items);

    // Empties the items and sets both counts to 0.
    void clear();

    // Works out ratio and colour key of each item from the volumes. Without volume the ratios are no numbers.
    void recalculate();

    // What is shown of a direction, or of one of its sizes. Without items all is 0.
    bool hasVolume() const;
    int orderCountOf(int direction) const;
    float averageOf(int direction) const; // hands for each order
    WatchPlateItem itemOf(int direction, int sizeClass) const;

    // Draws title, pie and table into the rectangle of a widget. The painter's settings are as before afterwards.
    void draw(QPainter& painter, const QRect& rect) const;

    std::vector<WatchPlateItem> m_items;
    std::atomic<int> m_buyOrderCount = 0;
    std::atomic<int> m_sellOrderCount = 0;
    mutable boost::recursive_mutex m_mutex; // guards m_items
};

} // namespace TC
