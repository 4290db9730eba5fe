#pragma once

#include "Common/numberformat.h"
#include "utils/int64.h"

#include <QString>

#include <limits>

// The ways in which panels write their figures. A value that the formatter rejects shows "非法值", such as the quotient
// of a division by 0.
namespace TC::detail {

static_assert(std::numeric_limits<double>::is_iec559, "quotients of a division by 0 are infinite or no number");

inline QString rejectedText()
{
    return QStringLiteral("非法值");
}

inline QString plainText(double value)
{
    return ZP::formatDoubleNumber(value, 2, utils::FORMAT_NUMBER_PLAIN, false, rejectedText());
}

// A fraction as a percentage.
inline QString ratioText(double value)
{
    return ZP::formatDoubleNumber(value, 2, utils::FORMAT_NUMBER_PERCENT, false, rejectedText());
}

// A large quantity, shortened with a unit.
inline QString quantityText(double value, int digits = 2)
{
    return ZP::formatDoubleNumber(value, digits, utils::FORMAT_NUMBER_UNIT, false, rejectedText());
}

inline QString quantityText(__int64 value)
{
    return quantityText(static_cast<double>(value));
}

inline QString afterHoursVolumeText(__int64 volume)
{
    return ZP::formatLongLongNumber(volume, 0, utils::FORMAT_NUMBER_UNIT);
}

// The volume of a whole side of the book.
inline QString bookTotalText(__int64 volume)
{
    return ZP::formatLongLongNumber(volume, 0, utils::FORMAT_NUMBER_PLAIN);
}

} // namespace TC::detail
