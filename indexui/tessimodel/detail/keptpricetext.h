#pragma once

#include <QString>

namespace TC::detail {

// The text of a price that every snapshot brings anew though it seldom changes, such as a day's limit: it is written
// only when the price or the tick is another one, to the last bit.
class KeptPriceText {
public:
    const QString& of(double price, double tick);

private:
    double m_price = 0;
    double m_tick = 0;
    QString m_text; // null before the first
};

} // namespace TC::detail
