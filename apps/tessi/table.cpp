#include "apps/tessi/table.h"

#include "apps/tessi/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace tessi {

namespace {

// 31 and 32 are the terminal's red and green: red is up on these markets.
const char* escapeOf(Table::Tint tint)
{
    switch (tint) {
    case Table::Tint::Rise:
        return "\033[31m";
    case Table::Tint::Fall:
        return "\033[32m";
    case Table::Tint::None:
        break;
    }
    return "";
}

std::string inTable(const Table::Column& column, const std::string& cell)
{
    const bool isAbove0 = !cell.empty() && cell[0] != '-' && cell != "0";
    return column.plus && isAbove0 ? "+" + cell : cell;
}

std::string tinted(const std::string& text, Table::Tint tint, bool colours)
{
    return colours && tint != Table::Tint::None && !text.empty() ? escapeOf(tint) + text + "\033[0m" : text;
}

std::string quotedForCsv(const std::string& cell)
{
    if (cell.find_first_of(",\"\n\r") == std::string::npos)
        return cell;
    std::string quoted = "\"";
    for (const char c : cell)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

} // namespace

Table::Table(std::vector<Column> columns)
    : m_columns(std::move(columns))
{}

void Table::add(std::vector<std::string> cells, Tint tint)
{
    if (cells.size() != m_columns.size())
        throw std::logic_error("a row must have a cell for each column");
    m_rows.push_back({std::move(cells), tint, {}});
}

void Table::add(std::vector<std::string> cells, std::vector<Span> drawing)
{
    add(std::move(cells));
    m_rows.back().drawing = std::move(drawing);
}

void Table::print(std::ostream& out, Format format, bool colours) const
{
    switch (format) {
    case Format::Table:
        return printTable(out, colours);
    case Format::Csv:
        return printCsv(out);
    case Format::Json:
        return printJson(out);
    }
}

void Table::printTable(std::ostream& out, bool colours) const
{
    std::vector<std::size_t> widths;
    for (std::size_t c = 0; c < m_columns.size(); ++c) {
        std::size_t width = displayWidth(m_columns[c].name);
        for (const Row& row : m_rows)
            width = std::max(width, displayWidth(inTable(m_columns[c], row.cells[c])));
        widths.push_back(width);
    }

    const auto lineOf = [&](const auto& cellOf) {
        std::string line;
        for (std::size_t c = 0; c < m_columns.size(); ++c) {
            if (m_columns[c].forPrograms)
                continue;
            const std::string cell = cellOf(c);
            const std::string padding(widths[c] - displayWidth(cell), ' ');
            line += c ? "  " : "";
            line += m_columns[c].numeric || m_columns[c].alignRight ? padding + cell : cell + padding;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        return line;
    };

    out << lineOf([&](std::size_t c) { return m_columns[c].name; }) << '\n';
    for (const Row& row : m_rows) {
        const std::string line = lineOf([&](std::size_t c) { return inTable(m_columns[c], row.cells[c]); });
        out << tinted(line, row.tint, colours);
        const char* gap = "  ";
        for (const Span& span : row.drawing)
            out << std::exchange(gap, "") << tinted(span.text, span.tint, colours);
        out << '\n';
    }
}

void Table::printCsv(std::ostream& out) const
{
    const auto printLine = [&](const auto& cellOf) {
        const char* comma = "";
        for (std::size_t c = 0; c < m_columns.size(); ++c) {
            if (!m_columns[c].forPeople)
                out << std::exchange(comma, ",") << quotedForCsv(cellOf(c));
        }
        out << '\n';
    };
    printLine([&](std::size_t c) { return m_columns[c].name; });
    for (const Row& row : m_rows)
        printLine([&](std::size_t c) { return row.cells[c]; });
}

void Table::printJson(std::ostream& out) const
{
    out << "[";
    for (std::size_t r = 0; r < m_rows.size(); ++r) {
        out << (r ? ",\n " : "\n ") << "{";
        const char* comma = "";
        for (std::size_t c = 0; c < m_columns.size(); ++c) {
            if (m_columns[c].forPeople)
                continue;
            const std::string& cell = m_rows[r].cells[c];
            out << std::exchange(comma, ", ") << nlohmann::json(jsonKey(m_columns[c].name)).dump() << ": ";
            if (!m_columns[c].numeric)
                out << nlohmann::json(cell).dump();
            else
                out << (cell.empty() ? "null" : cell);
        }
        out << "}";
    }
    out << (m_rows.empty() ? "]\n" : "\n]\n");
}

std::size_t displayWidth(const std::string& utf8)
{
    std::size_t width = 0;
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        const bool continues = (byte & 0xc0U) == 0x80U;
        // Characters of three bytes and more are taken for wide ones: what is printed here is ASCII or Chinese.
        if (!continues)
            width += byte >= 0xe0U ? 2 : 1;
    }
    return width;
}

} // namespace tessi
