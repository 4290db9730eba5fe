#pragma once

#include "terminal_api.h"
#include "utils/formatnumberflag.h"

#include <QString>
#include <QtGlobal>

// Numbers as panels show them: no grouping, no minus before a zero, halves away from zero on the decimal value.
// A double that is not finite or is 1e20 or more in size (DBL_MAX, "no value", among them) is rejected and shows
// the invalid text. Safe from any thread.
namespace ZP {

using utils::CFlags;

// A price with as many decimals (0 to 6) as make the tick whole: 0.01 gives 2, 0.2 gives 1, 0.25 gives 2. A tick
// that is not usable gives 3. A rejected price shows "--".
TERMINAL_API QString formatPriceDoubleNumber(double price, double tick);

// A value with `digits` decimals. FORMAT_NUMBER_PERCENT multiplies by 100 and adds "%". FORMAT_NUMBER_UNIT takes
// the first of no unit, 万, 亿 and 万亿 whose rounded text is below 10000; a whole value without unit then shows
// no decimals. `showPlus` puts "+" before positive values.
TERMINAL_API QString formatDoubleNumber(double value, int digits, CFlags flags = {}, bool showPlus = false,
                                        const QString& invalidText = {});

// The same for whole numbers, which are never rejected. `digits` counts only where a unit or "%" is shown.
TERMINAL_API QString formatLongLongNumber(qint64 value, int digits = 0, CFlags flags = {});
TERMINAL_API QString formatIntNumber(int value, int digits = 0, CFlags flags = {});

} // namespace ZP
