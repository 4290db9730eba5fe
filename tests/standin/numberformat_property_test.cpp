// The number formats against a slow reading of their rules: whole numbers of any size instead of digits, and the
// shortest decimal found by trial instead of by the standard library.

#include "Common/numberformat.h"

#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

using utils::CFlags;
using utils::FORMAT_NUMBER_PERCENT;
using utils::FORMAT_NUMBER_UNIT;

namespace {

using Big = boost::multiprecision::cpp_int;

// The number is mantissa times 10^exponent.
struct Exact {
    Big mantissa;
    int exponent;
};

Big power10(int exponent)
{
    return boost::multiprecision::pow(Big(10), static_cast<unsigned>(exponent));
}

Exact shortest(double value)
{
    char text[64];
    for (int precision = 0; precision <= 17; ++precision) {
        std::snprintf(text, sizeof text, "%.*e", precision, value);
        if (std::strtod(text, nullptr) == value)
            break;
    }
    std::string digits;
    int exponent = 0;
    for (const char* at = text; *at; ++at) {
        if (*at == 'e') {
            exponent += std::atoi(at + 1);
            break;
        }
        if (*at == '.')
            exponent -= static_cast<int>(std::string(at + 1).find('e'));
        else
            digits += *at;
    }
    return {Big(digits), exponent};
}

// value * 10^shift in units of 10^-decimals, halves away from zero.
Big roundedTo(const Exact& value, int shift, int decimals)
{
    const int exponent = value.exponent + shift + decimals;
    if (exponent >= 0)
        return value.mantissa * power10(exponent);
    const Big divisor = power10(-exponent);
    const Big size = (2 * abs(value.mantissa) + divisor) / (2 * divisor);
    return value.mantissa < 0 ? Big(-size) : size;
}

bool isWhole(const Exact& value, int shift)
{
    const int exponent = value.exponent + shift;
    return exponent >= 0 || value.mantissa % power10(-exponent) == 0;
}

std::string fixedText(const Big& units, int decimals)
{
    const std::string digits = Big(abs(units)).str();
    std::string text(units < 0 ? 1 : 0, '-');
    text.append(static_cast<std::size_t>(std::max(0, decimals + 1 - static_cast<int>(digits.size()))), '0');
    text += digits;
    if (decimals > 0)
        text.insert(text.size() - static_cast<std::size_t>(decimals), 1, '.');
    return text;
}

std::string oracle(const Exact& value, int digits, CFlags flags)
{
    const int percent = flags & FORMAT_NUMBER_PERCENT ? 2 : 0;
    const char* const sign = percent ? "%" : "";
    if (!(flags & FORMAT_NUMBER_UNIT))
        return fixedText(roundedTo(value, percent, digits), digits) + sign;
    const char* const names[] = {"", "万", "亿", "万亿"};
    for (int unit = 0;; ++unit) {
        const int decimals = unit == 0 && isWhole(value, percent) ? 0 : digits;
        const Big rounded = roundedTo(value, percent - 4 * unit, decimals);
        if (abs(rounded) < 10000 * power10(decimals) || unit == 3)
            return fixedText(rounded, decimals) + names[unit] + sign;
    }
}

std::string shown(double value, int digits, CFlags flags)
{
    return ZP::formatDoubleNumber(value, digits, flags, false, "rejected").toStdString();
}

const std::vector<CFlags>& allFlags()
{
    static const std::vector<CFlags> flags = {CFlags(), CFlags(FORMAT_NUMBER_PERCENT), CFlags(FORMAT_NUMBER_UNIT),
                                              CFlags(FORMAT_NUMBER_PERCENT) | FORMAT_NUMBER_UNIT};
    return flags;
}

// Values as they occur: a few digits at any place.
rc::Gen<double> shortDecimals()
{
    return rc::gen::map(rc::gen::pair(rc::gen::inRange<long long>(-99'999'999, 100'000'000), rc::gen::inRange(-9, 11)),
                        [](const std::pair<long long, int>& number) {
                            return std::strtod(
                                (std::to_string(number.first) + "e" + std::to_string(number.second)).c_str(), nullptr);
                        });
}

} // namespace

RC_GTEST_PROP(NumberFormatProperty, shouldAgreeWithExactDecimalsForShortDecimals, ())
{
    for (int i = 0; i < 20; ++i) {
        const double value = *shortDecimals();
        const int digits = *rc::gen::inRange(0, 8);
        for (const CFlags flags : allFlags())
            RC_ASSERT(shown(value, digits, flags) == oracle(shortest(value), digits, flags));
    }
}

RC_GTEST_PROP(NumberFormatProperty, shouldAgreeWithExactDecimalsForAnyDouble, ())
{
    for (int i = 0; i < 20; ++i) {
        const double fraction = *rc::gen::arbitrary<double>();
        const double value = std::ldexp(std::fmod(fraction, 1.0), *rc::gen::inRange(-80, 66));
        RC_PRE(std::isfinite(value) && std::abs(value) < 1e20);
        const int digits = *rc::gen::inRange(0, 15);
        for (const CFlags flags : allFlags())
            RC_ASSERT(shown(value, digits, flags) == oracle(shortest(value), digits, flags));
    }
}

RC_GTEST_PROP(NumberFormatProperty, shouldAgreeWithExactDecimalsForIntegers, (long long value, int small))
{
    for (const long long number : {value, static_cast<long long>(small), value / 1'000'000}) {
        const int digits = *rc::gen::inRange(0, 5);
        for (const CFlags flags : allFlags()) {
            RC_ASSERT(ZP::formatLongLongNumber(number, digits, flags).toStdString() ==
                      oracle({Big(number), 0}, flags ? digits : 0, flags));
        }
    }
    RC_ASSERT(ZP::formatIntNumber(small) == QString::number(small));
}

RC_GTEST_PROP(NumberFormatProperty, shouldShowPricesWithTheTicksDecimals, ())
{
    const int decimals = *rc::gen::inRange(0, 7);
    // Any last digit but 0, which would need one decimal less.
    const int steps = *rc::gen::inRange(0, 100) * 10 + *rc::gen::inRange(1, 10);
    const double tick = std::strtod((std::to_string(steps) + "e-" + std::to_string(decimals)).c_str(), nullptr);
    const double price = *shortDecimals();
    RC_ASSERT(ZP::formatPriceDoubleNumber(price, tick).toStdString() == oracle(shortest(price), decimals, {}));
}

// Around every place where a text grows a digit or changes its unit, step by step of the last double.
TEST(NumberFormatProperty, shouldAgreeWithExactDecimalsWhenNearABoundary)
{
    int compared = 0;
    for (int exponent = -8; exponent < 20; ++exponent) {
        for (const char* const digits :
             {"1", "5", "9999.5", "9999.95", "9999.995", "9999.9995", "0.99995", "1.00005"}) {
            const double centre = std::strtod((std::string(digits) + "e" + std::to_string(exponent)).c_str(), nullptr);
            double value = centre;
            for (int i = 0; i < 4; ++i)
                value = std::nextafter(value, 0);
            for (int i = 0; i < 9; ++i, value = std::nextafter(value, INFINITY)) {
                if (value >= 1e20)
                    continue;
                for (const double sized : {value, -value}) {
                    for (int shownDigits = 0; shownDigits < 5; ++shownDigits) {
                        for (const CFlags flags : allFlags()) {
                            ASSERT_EQ(shown(sized, shownDigits, flags), oracle(shortest(sized), shownDigits, flags))
                                << sized << " with " << shownDigits << " and " << static_cast<int>(flags);
                            ++compared;
                        }
                    }
                }
            }
        }
    }
    EXPECT_GT(compared, 50'000);
}
