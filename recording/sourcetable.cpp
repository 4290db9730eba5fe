#include "recording/sourcetable.h"

#include "recording/errors.h"
#include "recording/textfile.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <iconv.h>
#include <limits>
#include <memory>
#include <optional>

namespace recording {

namespace {

std::string_view trimmed(std::string_view field)
{
    constexpr std::string_view kAround(" \t\r\"\0", 5);
    const std::size_t first = field.find_first_not_of(kAround);
    if (first == field.npos)
        return {};
    return field.substr(first, field.find_last_not_of(kAround) - first + 1);
}

void split(std::string_view line, std::vector<std::string_view>& fields)
{
    fields.clear();
    for (std::size_t comma = line.find(','); comma != line.npos; comma = line.find(',')) {
        fields.push_back(trimmed(line.substr(0, comma)));
        line.remove_prefix(comma + 1);
    }
    fields.push_back(trimmed(line));
}

// `text` in UTF-8; nothing when it is no text of the encoding.
std::optional<std::string> decoded(std::string_view text, const char* encoding)
{
    const iconv_t converter = iconv_open("UTF-8", encoding);
    if (converter == reinterpret_cast<iconv_t>(-1)) // NOLINT: the constant that iconv documents
        return std::nullopt;
    std::string input(text);
    std::string output(text.size() * 3 + 1, '\0');
    char* in = input.data();
    std::size_t inLeft = input.size();
    char* out = output.data();
    std::size_t outLeft = output.size();
    const std::size_t result = iconv(converter, &in, &inLeft, &out, &outLeft);
    iconv_close(converter);
    if (result == static_cast<std::size_t>(-1))
        return std::nullopt;
    output.resize(output.size() - outLeft);
    return output;
}

template <class Number>
std::errc parseWhole(std::string_view text, Number& value)
{
    const char* end = text.data() + text.size();
    const auto [next, fault] = std::from_chars(text.data(), end, value);
    if (fault == std::errc{} && next != end)
        return std::errc::invalid_argument;
    return fault;
}

} // namespace

SourceTable::SourceTable(std::filesystem::path file)
    : m_file(std::move(file))
    , m_text(readFile(m_file))
{
    readHeader();
}

bool SourceTable::has(std::string_view name) const
{
    return std::find(m_names.begin(), m_names.end(), name) != m_names.end();
}

std::size_t SourceTable::column(std::string_view name) const
{
    const auto it = std::find(m_names.begin(), m_names.end(), name);
    if (it == m_names.end())
        throw ReadError({m_file, 1}, "column " + std::string(name) + " is missing");
    return static_cast<std::size_t>(it - m_names.begin());
}

bool SourceTable::next()
{
    if (m_next == m_text.size())
        return false;
    split(takeLine(), m_fields);
    const auto isEmpty = [](std::string_view field) { return field.empty(); };
    if (std::all_of(m_fields.begin(), m_fields.end(), isEmpty)) {
        if (rest().find_first_not_of(std::string_view(" \t\r\n,\0", 6)) != std::string_view::npos)
            failLine("blank line");
        m_next = m_text.size();
        return false;
    }
    checkWidth();
    return true;
}

__int64 SourceTable::integer(std::size_t column) const
{
    __int64 value = 0;
    const std::errc fault = parseWhole(text(column), value);
    if (fault == std::errc::invalid_argument) {
        number(column); // what is no number at all is called so
        fail(column, "not a whole number: " + inQuotes(text(column)));
    }
    if (fault != std::errc{})
        fail(column, "out of range: " + inQuotes(text(column)));
    return value;
}

int SourceTable::integer32(std::size_t column) const
{
    const __int64 value = integer(column);
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
        fail(column, "out of range: " + inQuotes(text(column)));
    return static_cast<int>(value);
}

double SourceTable::number(std::size_t column) const
{
    if (isBlank(column))
        fail(column, "empty field");
    double value = 0;
    const std::errc fault = parseWhole(text(column), value);
    if (fault == std::errc::result_out_of_range)
        fail(column, "out of range: " + inQuotes(text(column)));
    if (fault != std::errc{} || !std::isfinite(value))
        fail(column, "not a number: " + inQuotes(text(column)));
    return value;
}

__int64 SourceTable::positive(std::size_t column) const
{
    const __int64 value = integer(column);
    if (value <= 0)
        fail(column, "not above 0: " + inQuotes(text(column)));
    return value;
}

__int64 SourceTable::notNegative(std::size_t column) const
{
    const __int64 value = integer(column);
    if (value < 0)
        fail(column, "below 0: " + inQuotes(text(column)));
    return value;
}

int SourceTable::positive32(std::size_t column) const
{
    positive(column);
    return integer32(column);
}

int SourceTable::notNegative32(std::size_t column) const
{
    notNegative(column);
    return integer32(column);
}

double SourceTable::notNegativeNumber(std::size_t column) const
{
    const double value = number(column);
    if (value < 0)
        fail(column, "below 0: " + inQuotes(text(column)));
    return value;
}

std::vector<std::size_t> SourceTable::columnsFrom(std::size_t column) const
{
    std::size_t end = m_fields.size();
    while (end > column && isBlank(end - 1))
        --end;
    std::vector<std::size_t> columns;
    for (std::size_t i = column; i < end; ++i)
        columns.push_back(i);
    return columns;
}

void SourceTable::fail(std::size_t column, const std::string& fault) const
{
    throw ReadError({m_file, m_line, m_names[std::min(column, m_names.size() - 1)], column + 1}, fault);
}

void SourceTable::failLine(const std::string& fault) const
{
    throw ReadError({m_file, m_line}, fault);
}

void SourceTable::failOpenLine() const
{
    failLine("the line has no end: the file is cut");
}

std::string_view SourceTable::takeLine()
{
    ++m_line;
    const std::size_t newline = m_text.find('\n', m_next);
    m_isOpen = newline == m_text.npos;
    if (m_isOpen && !(m_endsWithComma && rest().ends_with(',')))
        failOpenLine();
    const std::string_view line = rest().substr(0, newline - m_next);
    m_next = m_isOpen ? m_text.size() : newline + 1;
    return line;
}

void SourceTable::readHeader()
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (rest().starts_with(kByteOrderMark))
        m_next = kByteOrderMark.size();
    const std::string_view line = takeLine();
    std::optional<std::string> header = decoded(line, "UTF-8");
    if (!header)
        header = decoded(line, "GBK");
    if (!header)
        failLine("the header is neither UTF-8 nor GBK");

    split(*header, m_fields);
    m_endsWithComma = m_fields.size() > 1 && m_fields.back().empty();
    while (m_fields.size() > 1 && m_fields.back().empty())
        m_fields.pop_back();
    m_names.assign(m_fields.begin(), m_fields.end());
    for (std::size_t i = 0; i < m_names.size(); ++i) {
        if (std::find(m_names.begin(), m_names.begin() + static_cast<std::ptrdiff_t>(i), m_names[i]) !=
            m_names.begin() + static_cast<std::ptrdiff_t>(i))
            failLine("column " + inQuotes(m_names[i]) + " stands twice");
    }
    m_fields.clear();
}

void SourceTable::checkWidth() const
{
    const std::size_t named = m_names.size();
    if (m_isOpen && m_fields.size() <= named)
        failOpenLine();
    const std::size_t used = m_longRows ? named : std::max(named, columnsFrom(named).size() + named);
    if (m_fields.size() >= named && used == named)
        return;
    failLine(std::to_string(m_fields.size()) + " columns where the header has " + std::to_string(named));
}

} // namespace recording
