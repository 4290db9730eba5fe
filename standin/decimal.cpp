#include "standin/decimal.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace standin {

Decimal::Decimal(bool negative, const std::string& digits, int point)
{
    const std::size_t first = digits.find_first_not_of('0');
    if (first == std::string::npos)
        return;
    m_negative = negative;
    m_digits = digits.substr(first, digits.find_last_not_of('0') + 1 - first);
    m_point = point - static_cast<int>(first);
}

Decimal Decimal::fromDouble(double value)
{
    // The longest is "-d.dddddddddddddddde-ddd".
    char text[32];
    const char* const end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
    const bool negative = text[0] == '-';
    const char* const begin = negative ? text + 1 : text;
    const char* const mantissaEnd = std::find(begin, end, 'e');
    std::string digits(begin, mantissaEnd);
    digits.erase(std::remove(digits.begin(), digits.end(), '.'), digits.end());
    // from_chars takes no '+'.
    const char* const exponentBegin = mantissaEnd + (mantissaEnd[1] == '+' ? 2 : 1);
    int exponent = 0;
    std::from_chars(exponentBegin, end, exponent);
    return {negative, digits, exponent + 1};
}

Decimal Decimal::fromInteger(__int64 value)
{
    std::string digits = std::to_string(value);
    if (value < 0)
        digits.erase(0, 1);
    const int point = static_cast<int>(digits.size());
    return {value < 0, digits, point};
}

int Decimal::decimals() const
{
    return std::max(0, static_cast<int>(m_digits.size()) - m_point);
}

Decimal Decimal::shifted(int exponent) const
{
    return {m_negative, m_digits, m_point + exponent};
}

Decimal Decimal::rounded(int decimals) const
{
    const int kept = m_point + decimals;
    if (kept >= static_cast<int>(m_digits.size()))
        return *this;
    if (kept < 0)
        return {false, {}, 0};
    // A zero in front takes the carry of 9.99.
    std::string digits = '0' + m_digits.substr(0, static_cast<std::size_t>(kept));
    if (m_digits[static_cast<std::size_t>(kept)] >= '5') {
        auto digit = digits.rbegin();
        for (; *digit == '9'; ++digit)
            *digit = '0';
        ++*digit;
    }
    return {m_negative, digits, m_point + 1};
}

bool Decimal::isSizeBelow(int exponent) const
{
    return isZero() || m_point <= exponent;
}

std::string Decimal::sizeText(int decimals) const
{
    // Zeros from the units on the left, and down to the last decimal on the right.
    std::string text(static_cast<std::size_t>(std::max(0, 1 - m_point)), '0');
    text += m_digits;
    const std::size_t whole = static_cast<std::size_t>(std::max(1, m_point));
    text.resize(whole + static_cast<std::size_t>(decimals), '0');
    if (decimals > 0)
        text.insert(whole, 1, '.');
    return text;
}

} // namespace standin
