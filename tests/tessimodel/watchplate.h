#pragma once

#include "indexui/tessimodel/cwatchplatewidget.h"
#include "quoter/transactioncount.h"
#include "tests/support/records.h"

#include <cmath>
#include <memory>
#include <sstream>
#include <string>

// What tests of the watch plate are written with.
namespace tests {

// A plate whose events a test can send.
class WatchPlate : public TC::CWatchPlateWidget {
public:
    explicit WatchPlate(QWidget* parent = nullptr)
        : CWatchPlateWidget(parent)
    {}

    using CWatchPlateWidget::paintEvent;
    using CWatchPlateWidget::resizeEvent;
};

// Counts of the day: counts().buys(40, 30, 20, 10).sells(4, 3, 2, 1).orders(5, 6), volumes from huge to small.
class Counts {
public:
    Counts()
        : m_record(std::make_shared<quoter::TransactionCount>())
    {}

    Counts& buys(__int64 huge, __int64 big, __int64 middle, __int64 small)
    {
        m_record->buyHuge = huge;
        m_record->buyBig = big;
        m_record->buyMiddle = middle;
        m_record->buySmall = small;
        return *this;
    }
    Counts& sells(__int64 huge, __int64 big, __int64 middle, __int64 small)
    {
        m_record->sellHuge = huge;
        m_record->sellBig = big;
        m_record->sellMiddle = middle;
        m_record->sellSmall = small;
        return *this;
    }
    Counts& orders(__int64 buy, __int64 sell)
    {
        m_record->buyOrderCount = buy;
        m_record->sellOrderCount = sell;
        return *this;
    }

    operator std::shared_ptr<quoter::QuoterBase>() const { return m_record; }

private:
    std::shared_ptr<quoter::TransactionCount> m_record;
};

inline Counts counts()
{
    return {};
}

// "sell 特大 40 = 0.4 in ic_clr_watchplate_line4".
inline std::string itemText(const TC::WatchPlateItem& item)
{
    static const char* const kSides[] = {"buy", "sell"};
    static const char* const kSizes[] = {"特大", "大单", "中单", "小单"};
    std::ostringstream text;
    text << kSides[item.direction] << ' ' << kSizes[item.sizeClass] << ' ' << item.volume << " = ";
    std::isnan(item.ratio) ? text << "nan" : text << item.ratio;
    text << " in " << item.colorKey;
    return text.str();
}

// The counts of orders and all items, one a line.
inline std::string plateText(const TC::WatchPlateData& data)
{
    std::ostringstream text;
    text << "orders " << data.m_buyOrderCount << " | " << data.m_sellOrderCount << '\n';
    for (const TC::WatchPlateItem& item : data.m_items)
        text << itemText(item) << '\n';
    return text.str();
}

} // namespace tests
