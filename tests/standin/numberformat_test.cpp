#include "Common/numberformat.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

using utils::CFlags;
using utils::FORMAT_NUMBER_PERCENT;
using utils::FORMAT_NUMBER_PLAIN;
using utils::FORMAT_NUMBER_UNIT;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string price(double value, double tick)
{
    return ZP::formatPriceDoubleNumber(value, tick).toStdString();
}

std::string number(double value, int digits, CFlags flags, bool showPlus = false)
{
    return ZP::formatDoubleNumber(value, digits, flags, showPlus, "非法值").toStdString();
}

std::string quantity(double value, int digits = 2)
{
    return number(value, digits, FORMAT_NUMBER_UNIT);
}

std::string mirrored(const std::string& text, bool showsZero)
{
    if (showsZero)
        return text;
    return text.front() == '-' ? text.substr(1) : std::string("-").append(text);
}

std::string ratio(double value)
{
    return number(value, 2, FORMAT_NUMBER_PERCENT);
}

} // namespace

TEST(PriceFormat, shouldShowAsManyDecimalsAsNeededWhenTickIsUsable)
{
    struct Row {
        double price;
        double tick;
        const char* text;
    };
    const std::vector<Row> rows = {
        {10.005, 0.01, "10.01"},
        {10, 0.001, "10.000"},
        {3500, 0.2, "3500.0"},
        {10.25, 0.25, "10.25"},
        {-0.001, 0.01, "0.00"},
        {DBL_MAX, 0.01, "--"},
        {10.004999, 0.01, "10.00"},
        {-10.005, 0.01, "-10.01"},
        {0.615, 0.01, "0.62"}, // the double below it is nearer to 0.61
        {1.005, 0.01, "1.01"},
        {2.675, 0.01, "2.68"},
        {9.995, 0.01, "10.00"},
        {99.9999996, 0.000001, "100.000000"},
        {3500.5, 1, "3501"},
        {3500.49, 1, "3500"},
        {-0.5, 1, "-1"},
        {-0.49, 1, "0"},
        {12345.6, 5, "12346"},
        {12345.6, 10, "12346"},
        {1234567.125, 0.125, "1234567.125"},
        {1.23456789, 0.0001, "1.2346"},
        {1.23456789, 0.00001, "1.23457"},
        {1.23456789, 0.000001, "1.234568"},
        {1.23456789, 0.0000005, "1.235"},
        {0, 0.01, "0.00"},
        {-0.0, 0.01, "0.00"},
        {5e-324, 0.01, "0.00"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(price(row.price, row.tick), row.text) << row.price << " at tick " << row.tick;
}

TEST(PriceFormat, shouldShowThreeDecimalsWhenTickIsNotUsable)
{
    for (const double tick : {0.0, -0.0, -0.01, kNaN, kInfinity, -kInfinity, DBL_MAX, 1e20, 1e-7, 0.0000015, 5e-324})
        EXPECT_EQ(price(10, tick), "10.000") << tick;
}

TEST(NumberFormat, shouldShowTheNextUnitWhenRoundedTextReachesTenThousand)
{
    struct Row {
        double value;
        int digits;
        const char* text;
    };
    const std::vector<Row> rows = {
        {523, 2, "523"},
        {5234.5, 2, "5234.50"},
        {9999.996, 2, "1.00万"},
        {12345, 2, "1.23万"},
        {99999999, 2, "1.00亿"},
        {3e9, 2, "30.00亿"},
        {1.5e12, 2, "1.50万亿"},
        {123456, 0, "12万"},
        {-123456, 2, "-12.35万"},
        {0, 2, "0"},
        {-0.0, 2, "0"},
        {0.001, 2, "0.00"},
        {-0.001, 2, "0.00"},
        {0.5, 0, "1"},
        {9999, 2, "9999"},
        {9999.994, 2, "9999.99"},
        {9999.995, 2, "1.00万"},
        {9999.4, 0, "9999"},
        {9999.5, 0, "1万"},
        {10000, 0, "1万"},
        {10000, 2, "1.00万"},
        {15000, 0, "2万"},
        {99994999, 2, "9999.50万"},
        {99999949.9, 2, "9999.99万"},
        {99999950, 2, "1.00亿"},
        {99994999, 0, "9999万"},
        {99995000, 0, "1亿"},
        {999999499999.0, 2, "9999.99亿"},
        {999999500000.0, 2, "1.00万亿"},
        {999949999999.0, 0, "9999亿"},
        {999950000000.0, 0, "1万亿"},
        {9999e12, 2, "9999.00万亿"},
        {12345e12, 2, "12345.00万亿"},
        {9.9e19, 2, "99000000.00万亿"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(quantity(row.value, row.digits), row.text) << row.value << " with " << row.digits;
        const bool showsZero = std::string(row.text).find_first_of("123456789") == std::string::npos;
        EXPECT_EQ(quantity(-row.value, row.digits), mirrored(row.text, showsZero)) << -row.value;
    }
}

TEST(NumberFormat, shouldShowFractionAsPercentageWhenAsked)
{
    EXPECT_EQ(ratio(0.1234), "12.34%");
    EXPECT_EQ(ratio(-0.00001), "0.00%");
    EXPECT_EQ(ratio(kNaN), "非法值");
    EXPECT_EQ(ratio(0.10005), "10.01%");
    EXPECT_EQ(ratio(-0.10005), "-10.01%");
    EXPECT_EQ(ratio(1), "100.00%");
    EXPECT_EQ(ratio(0), "0.00%");
    EXPECT_EQ(ratio(12345.678), "1234567.80%");
    EXPECT_EQ(number(0.1005, 1, FORMAT_NUMBER_PERCENT), "10.1%");
    EXPECT_EQ(number(0.105, 0, FORMAT_NUMBER_PERCENT), "11%");
    EXPECT_EQ(number(123.45, 2, CFlags(FORMAT_NUMBER_PERCENT) | FORMAT_NUMBER_UNIT), "1.23万%");
}

TEST(NumberFormat, shouldShowInvalidTextWhenValueIsRejected)
{
    for (const double rejected : {kNaN, -kNaN, kInfinity, -kInfinity, DBL_MAX, -DBL_MAX, 1e20, -1e20, 1e300}) {
        for (const CFlags flags : {CFlags(), CFlags(FORMAT_NUMBER_PERCENT), CFlags(FORMAT_NUMBER_UNIT)})
            EXPECT_EQ(number(rejected, 2, flags), "非法值") << rejected;
        EXPECT_EQ(price(rejected, 0.01), "--") << rejected;
        EXPECT_EQ(ZP::formatDoubleNumber(rejected, 2), "") << rejected;
    }
    EXPECT_EQ(number(std::nextafter(1e20, 0), 0, FORMAT_NUMBER_PLAIN), "99999999999999980000");
    EXPECT_EQ(number(std::nextafter(-1e20, 0), 1, FORMAT_NUMBER_PLAIN), "-99999999999999980000.0");
}

TEST(NumberFormat, shouldShowPlainValueWithoutGroupingWhenNoFlagIsSet)
{
    EXPECT_EQ(number(1234567.895, 2, FORMAT_NUMBER_PLAIN), "1234567.90");
    EXPECT_EQ(number(523, 2, FORMAT_NUMBER_PLAIN), "523.00");
    EXPECT_EQ(number(523, 0, FORMAT_NUMBER_PLAIN), "523");
    EXPECT_EQ(number(-0.004, 2, FORMAT_NUMBER_PLAIN), "0.00");
    EXPECT_EQ(number(-0.005, 2, FORMAT_NUMBER_PLAIN), "-0.01");
    EXPECT_EQ(number(1e-7, 7, FORMAT_NUMBER_PLAIN), "0.0000001");
    EXPECT_EQ(number(0.1, 20, FORMAT_NUMBER_PLAIN), "0.10000000000000000000");
    EXPECT_EQ(ZP::formatDoubleNumber(1.25, 1), "1.3");
}

TEST(NumberFormat, shouldBoundDigitsWhenTheyMakeNoSense)
{
    for (const int none : {-1, -100, INT_MIN})
        EXPECT_EQ(number(1.5, none, FORMAT_NUMBER_PLAIN), "2") << none;
    for (const int many : {21, 1000, INT_MAX})
        EXPECT_EQ(number(1.5, many, FORMAT_NUMBER_PLAIN), "1.50000000000000000000") << many;
}

TEST(NumberFormat, shouldPutPlusOnlyBeforePositivesWhenAsked)
{
    EXPECT_EQ(number(1.5, 2, FORMAT_NUMBER_PLAIN, true), "+1.50");
    EXPECT_EQ(number(-1.5, 2, FORMAT_NUMBER_PLAIN, true), "-1.50");
    EXPECT_EQ(number(0, 2, FORMAT_NUMBER_PLAIN, true), "0.00");
    EXPECT_EQ(number(0.001, 2, FORMAT_NUMBER_PLAIN, true), "0.00");
    EXPECT_EQ(number(-0.001, 2, FORMAT_NUMBER_PLAIN, true), "0.00");
    EXPECT_EQ(number(0.1, 2, FORMAT_NUMBER_PERCENT, true), "+10.00%");
    EXPECT_EQ(number(12345, 2, FORMAT_NUMBER_UNIT, true), "+1.23万");
    EXPECT_EQ(number(kNaN, 2, FORMAT_NUMBER_UNIT, true), "非法值");
}

TEST(IntegerFormat, shouldCountDigitsOnlyWhenAUnitOrPercentIsShown)
{
    struct Row {
        qint64 value;
        int digits;
        CFlags flags;
        const char* text;
    };
    const std::vector<Row> rows = {
        {0, 2, FORMAT_NUMBER_PLAIN, "0"},
        {1234567, 2, FORMAT_NUMBER_PLAIN, "1234567"},
        {-1234567, 0, FORMAT_NUMBER_PLAIN, "-1234567"},
        {9999, 2, FORMAT_NUMBER_UNIT, "9999"},
        {10000, 2, FORMAT_NUMBER_UNIT, "1.00万"},
        {-10000, 0, FORMAT_NUMBER_UNIT, "-1万"},
        {99995000, 0, FORMAT_NUMBER_UNIT, "1亿"},
        {5, 2, FORMAT_NUMBER_PERCENT, "500.00%"},
        {-5, 0, FORMAT_NUMBER_PERCENT, "-500%"},
        {INT_MAX, 2, FORMAT_NUMBER_UNIT, "21.47亿"},
        {LLONG_MAX, 0, FORMAT_NUMBER_PLAIN, "9223372036854775807"},
        {LLONG_MIN, 0, FORMAT_NUMBER_PLAIN, "-9223372036854775808"},
        {LLONG_MIN, 2, FORMAT_NUMBER_UNIT, "-9223372.04万亿"},
        {LLONG_MIN, 1, FORMAT_NUMBER_PERCENT, "-922337203685477580800.0%"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ZP::formatLongLongNumber(row.value, row.digits, row.flags).toStdString(), row.text);
}

TEST(IntegerFormat, shouldShowEveryIntWhenGiven)
{
    EXPECT_EQ(ZP::formatIntNumber(0), "0");
    EXPECT_EQ(ZP::formatIntNumber(INT_MAX), "2147483647");
    EXPECT_EQ(ZP::formatIntNumber(INT_MIN), "-2147483648");
    EXPECT_EQ(ZP::formatIntNumber(INT_MIN, 2, FORMAT_NUMBER_UNIT).toStdString(), "-21.47亿");
    EXPECT_EQ(ZP::formatIntNumber(42, 3), "42");
}
