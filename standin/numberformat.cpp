#include "Common/numberformat.h"

#include "standin/decimal.h"

#include <algorithm>
#include <cmath>

namespace ZP {

using standin::Decimal;

namespace {

constexpr double kRejectedSize = 1e20;

// More decimals than any double has use for at the sizes that panels show.
constexpr int kMaxDigits = 20;

constexpr int kMaxPriceDigits = 6;
constexpr int kDefaultPriceDigits = 3;

struct Unit {
    int exponent;
    const char* name;
};

// Each counts 10^4 of the one before; below that its rounded text must stay.
constexpr int kUnitLimit = 4;
constexpr Unit kUnits[] = {{0, ""}, {4, "万"}, {8, "亿"}, {12, "万亿"}};

bool isRejected(double value)
{
    return !std::isfinite(value) || std::abs(value) >= kRejectedSize;
}

QString signedText(const Decimal& rounded, int digits, bool showPlus, const QString& suffix)
{
    QString text = QString::fromStdString(rounded.sizeText(digits)) + suffix;
    if (rounded.isNegative())
        text.prepend('-');
    else if (showPlus && !rounded.isZero())
        text.prepend('+');
    return text;
}

QString unitText(const Decimal& value, int digits, bool showPlus, const QString& suffix)
{
    for (const Unit& unit : kUnits) {
        const int unitDigits = unit.exponent == 0 && value.isWhole() ? 0 : digits;
        const Decimal rounded = value.shifted(-unit.exponent).rounded(unitDigits);
        if (rounded.isSizeBelow(kUnitLimit) || &unit == std::end(kUnits) - 1)
            return signedText(rounded, unitDigits, showPlus, unit.name + suffix);
    }
    Q_UNREACHABLE();
}

QString numberText(Decimal value, int digits, CFlags flags, bool showPlus)
{
    digits = std::clamp(digits, 0, kMaxDigits);
    QString suffix;
    if (flags.testFlag(utils::FORMAT_NUMBER_PERCENT)) {
        value = value.shifted(2);
        suffix = "%";
    }
    if (flags.testFlag(utils::FORMAT_NUMBER_UNIT))
        return unitText(value, digits, showPlus, suffix);
    return signedText(value.rounded(digits), digits, showPlus, suffix);
}

int priceDigits(double tick)
{
    if (isRejected(tick) || tick <= 0)
        return kDefaultPriceDigits;
    const int digits = Decimal::fromDouble(tick).decimals();
    return digits <= kMaxPriceDigits ? digits : kDefaultPriceDigits;
}

} // namespace

QString formatPriceDoubleNumber(double price, double tick)
{
    if (isRejected(price))
        return "--";
    return numberText(Decimal::fromDouble(price), priceDigits(tick), {}, false);
}

QString formatDoubleNumber(double value, int digits, CFlags flags, bool showPlus, const QString& invalidText)
{
    if (isRejected(value))
        return invalidText;
    return numberText(Decimal::fromDouble(value), digits, flags, showPlus);
}

QString formatLongLongNumber(qint64 value, int digits, CFlags flags)
{
    // Decimals of a whole number are worth showing only after a division or as a percentage.
    const bool plain = !flags.testFlag(utils::FORMAT_NUMBER_PERCENT) && !flags.testFlag(utils::FORMAT_NUMBER_UNIT);
    return numberText(Decimal::fromInteger(value), plain ? 0 : digits, flags, false);
}

QString formatIntNumber(int value, int digits, CFlags flags)
{
    return formatLongLongNumber(value, digits, flags);
}

} // namespace ZP
