#include "tests/tessimodel/oracle/statelines.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <set>

namespace tests::oracle {

namespace {

constexpr std::size_t kSlots = 4096; // more than twice the rows that any stream has
constexpr int kFree = -1;

unsigned long long mixed(unsigned long long value)
{
    value = (value ^ (value >> 30U)) * 0xbf58476d1ce4e5b9ULL;
    value = (value ^ (value >> 27U)) * 0x94d049bb133111ebULL;
    return value ^ (value >> 31U);
}

std::string textOf(const Line& line)
{
    std::string out = line.section->name;
    if (line.section->number)
        out += fmt::format(" {} {}", line.section->number, line.number);
    for (std::size_t i = 0; i < line.section->columns.size(); ++i)
        out += fmt::format(" {} {}", line.section->columns[i], line.values[i]);
    return out;
}

} // namespace

bool operator==(const Line& a, const Line& b)
{
    const bool sameNumber = a.number == b.number || (std::isnan(a.number) && std::isnan(b.number));
    return a.section == b.section && sameNumber && a.values == b.values;
}

void Lines::clear()
{
    m_lines.clear();
    m_rows.clear();
    m_slots.assign(kSlots, kFree);
}

void Lines::add(const Section& section, double number, std::initializer_list<__int64> values)
{
    Line& line = m_lines.emplace_back();
    line.section = &section;
    line.number = number;
    std::copy(values.begin(), values.end(), line.values.begin());
}

int Lines::nameOfRow(const void* row)
{
    if (m_slots.empty())
        m_slots.assign(kSlots, kFree);
    std::size_t slot = mixed(std::bit_cast<unsigned long long>(row)) % kSlots;
    for (; m_slots[slot] != kFree; slot = (slot + 1) % kSlots) {
        if (m_rows[static_cast<std::size_t>(m_slots[slot])] == row)
            return m_slots[slot];
    }
    m_slots[slot] = static_cast<int>(m_rows.size());
    m_rows.push_back(row);
    return m_slots[slot];
}

void Lines::addIndex(const Section& section, std::vector<std::array<__int64, 2>>& pairs)
{
    if (m_inFull) {
        std::sort(pairs.begin(), pairs.end());
        for (const auto& [first, second] : pairs)
            add(section, {first, second});
        return;
    }
    unsigned long long digest = 0;
    for (const auto& [first, second] : pairs)
        digest += mixed(mixed(static_cast<unsigned long long>(first)) + static_cast<unsigned long long>(second));
    add(section, {static_cast<__int64>(pairs.size()), static_cast<__int64>(digest)});
}

namespace {

std::vector<std::string> textsOf(const Lines& lines)
{
    std::vector<std::string> texts;
    for (const Line& line : lines.all())
        texts.push_back(textOf(line));
    return texts;
}

std::string onlyIn(const char* who, const std::vector<std::string>& lines, const std::vector<std::string>& others)
{
    constexpr int kShown = 8;
    std::string out;
    int shown = 0;
    const std::multiset<std::string> known(others.begin(), others.end());
    for (const std::string& line : lines) {
        if (!known.contains(line) && ++shown <= kShown)
            out += fmt::format("    {} {}\n", who, line);
    }
    return out;
}

} // namespace

std::string firstDifferences(const Lines& expected, const Lines& real)
{
    const std::vector<std::string> expectedTexts = textsOf(expected);
    const std::vector<std::string> realTexts = textsOf(real);
    const std::string out = onlyIn("expected", expectedTexts, realTexts) + onlyIn("but has ", realTexts, expectedTexts);
    return out.empty() ? "    the same lines in another order or number\n" : out;
}

} // namespace tests::oracle
