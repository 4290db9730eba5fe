#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace tessi {

enum class Format { Table, Csv, Json };

// Rows for stdout: an aligned table for people, CSV or JSON for programs. All cells are text; those of a numeric column
// are aligned to the right, and bare numbers in JSON, whose keys have no blanks.
class Table {
public:
    struct Column {
        std::string name;
        bool numeric = false;
        bool plus = false;        // numbers above 0 have a "+" in a table
        bool forPeople = false;   // left out of CSV and JSON
        bool forPrograms = false; // left out of a table
        bool alignRight = false;  // texts aligned like numbers
    };

    // How a row stands out in a table on a terminal; other formats have no colours.
    enum class Tint { None, Rise, Fall };

    // A piece of text that stands out by itself.
    struct Span {
        std::string text;
        Tint tint = Tint::None;
    };

    explicit Table(std::vector<Column> columns);

    // `cells` has one text for each column; an empty cell of a numeric column is null in JSON.
    void add(std::vector<std::string> cells, Tint tint = Tint::None);

    // A row that in a table ends with a drawing behind its cells; other formats leave it out.
    void add(std::vector<std::string> cells, std::vector<Span> drawing);

    // Writes all rows. `colours` counts in format Table alone.
    void print(std::ostream& out, Format format, bool colours) const;

    bool isEmpty() const { return m_rows.empty(); }

private:
    struct Row {
        std::vector<std::string> cells;
        Tint tint;
        std::vector<Span> drawing;
    };

    void printTable(std::ostream& out, bool colours) const;
    void printCsv(std::ostream& out) const;
    void printJson(std::ostream& out) const;

    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
};

// The columns that a text takes on a terminal: two for each Chinese character, one for any other.
std::size_t displayWidth(const std::string& utf8);

} // namespace tessi
