#include "tests/tessimodel/oracle/params/paramstate.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <bit>

namespace tests::oracle::params {

bool operator==(const ParamLine& a, const ParamLine& b)
{
    for (std::size_t i = 0; i < a.doubles.size(); ++i) {
        if (std::bit_cast<unsigned long long>(a.doubles[i]) != std::bit_cast<unsigned long long>(b.doubles[i]))
            return false;
    }
    return a.what == b.what && a.key == b.key && a.numbers == b.numbers && a.texts == b.texts && a.entries == b.entries;
}

namespace {

std::string textOf(const ParamLine& line)
{
    std::string out = fmt::format("{} {}", line.what, line.key);
    for (const QString& text : line.texts) {
        if (!text.isEmpty())
            out += fmt::format(" \"{}\"", text.toStdString());
    }
    if (!line.entries.isEmpty())
        out += fmt::format(" {}", fmt::join(line.entries, " "));
    return out + fmt::format(" [{}] [{}]", fmt::join(line.doubles, " "), fmt::join(line.numbers, " "));
}

} // namespace

std::string firstDifferences(const ParamState& expected, const ParamState& real)
{
    constexpr int kShown = 8;
    std::string out;
    int shown = 0;
    const auto note = [&](const char* who, const ParamState& mine, const ParamState& others) {
        for (const ParamLine& line : mine.all()) {
            const auto& theirs = others.all();
            if (std::find(theirs.begin(), theirs.end(), line) == theirs.end() && ++shown <= kShown * 2)
                out += fmt::format("    {} {}\n", who, textOf(line));
        }
    };
    note("expected", expected, real);
    note("but has ", real, expected);
    return out.empty() ? "    the same lines in another order or number\n" : out;
}

} // namespace tests::oracle::params
