#include "indexui/tessimodel/detail/keptpricetext.h"

#include "Common/numberformat.h"

#include <bit>
#include <cstdint>

namespace TC::detail {

namespace {

// Holds for what is no number, too.
bool isSame(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

} // namespace

const QString& KeptPriceText::of(double price, double tick)
{
    if (m_text.isNull() || !isSame(price, m_price) || !isSame(tick, m_tick)) {
        m_text = ZP::formatPriceDoubleNumber(price, tick);
        m_price = price;
        m_tick = tick;
    }
    return m_text;
}

} // namespace TC::detail
