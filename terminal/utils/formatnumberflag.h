#pragma once

#include <QFlags>

namespace utils {

// How a number is written. The type underneath is fixed, so any combination may be cast to it.
enum EFormatNumberFlag : int {
    FORMAT_NUMBER_PLAIN = 0,         // as it stands
    FORMAT_NUMBER_PERCENT = 0x10000, // a fraction as a percentage: times 100, with "%"
    FORMAT_NUMBER_UNIT = 0x40000     // a large quantity shortened with 万, 亿 or 万亿
};

using CFlags = QFlags<EFormatNumberFlag>;

} // namespace utils
