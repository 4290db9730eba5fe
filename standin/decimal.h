#pragma once

#include "utils/int64.h"

#include <string>

namespace standin {

// A number as decimal digits, so that rounding sees what a reader sees: 10.005 is halfway between 10.00 and 10.01,
// although the double that carries it is not.
class Decimal {
public:
    // The shortest decimal that names this double among all; it must be finite.
    static Decimal fromDouble(double value);
    static Decimal fromInteger(__int64 value);

    // Decimals that it takes to write the number in full; 0 for whole numbers.
    int decimals() const;

    // The number times 10 to the power of `exponent`.
    Decimal shifted(int exponent) const;

    // Rounded to so many decimals, halves away from zero.
    Decimal rounded(int decimals) const;

    bool isZero() const { return m_digits.empty(); }
    bool isNegative() const { return m_negative; }
    bool isWhole() const { return decimals() == 0; }

    // Below 10 to the power of `exponent` in size.
    bool isSizeBelow(int exponent) const;

    // Without a sign, with so many decimals; there must be no more of them in the number.
    std::string sizeText(int decimals) const;

private:
    Decimal(bool negative, const std::string& digits, int point);

    // 0.DIGITS times 10 to the power of m_point, without zeros at either end; a zero has no digits and no sign.
    bool m_negative = false;
    std::string m_digits;
    int m_point = 0;
};

} // namespace standin
