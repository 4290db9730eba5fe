#pragma once

#include "utils/int64.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace recording {

// A CSV file as data vendors deliver it, walked row by row.
//
// Taken as harmless: a byte order mark, CRLF, blanks, NULs and quotes around a field, blank columns at the end,
// blank lines at the end. Header names may be in UTF-8 or GBK and come out as UTF-8. Anything else that is not
// as the header says throws ReadError with the physical line.
class SourceTable {
public:
    explicit SourceTable(std::filesystem::path file);

    const std::filesystem::path& file() const { return m_file; }
    bool has(std::string_view name) const;

    // The column's index for the calls below. Throws when there is none of this name.
    std::size_t column(std::string_view name) const;

    // Rows may be longer than the header: its last column stands for a list without an end.
    void allowLongRows() { m_longRows = true; }

    // Goes to the next row, at first to the first one. False behind the last.
    bool next();

    // Of the current row. Fields come without what surrounds them; a number must be whole, and fill its field.
    std::size_t line() const { return m_line; }
    std::string_view text(std::size_t column) const { return m_fields[column]; }
    __int64 integer(std::size_t column) const;
    int integer32(std::size_t column) const;
    double number(std::size_t column) const;

    // Whole numbers that must be above 0, or not below it.
    __int64 positive(std::size_t column) const;
    __int64 notNegative(std::size_t column) const;
    int positive32(std::size_t column) const;
    int notNegative32(std::size_t column) const;
    double notNegativeNumber(std::size_t column) const;

    bool isBlank(std::size_t column) const { return m_fields[column].empty(); }

    // All fields of the row from `column` on, without blank ones at the end.
    std::vector<std::size_t> columnsFrom(std::size_t column) const;

    [[noreturn]] void fail(std::size_t column, const std::string& fault) const;
    [[noreturn]] void failLine(const std::string& fault) const;

    // The row is the last one and has no newline. It is taken when it ends in the comma that ends the header too, and
    // has every column; a list that goes on without an end may still lack elements.
    bool isOpen() const { return m_isOpen; }
    [[noreturn]] void failOpenLine() const;

private:
    std::string_view rest() const { return std::string_view(m_text).substr(m_next); }
    std::string_view takeLine();
    void readHeader();
    void checkWidth() const;

    std::filesystem::path m_file;
    std::string m_text;
    std::size_t m_next = 0;           // where in the text the next line begins
    std::vector<std::string> m_names; // without blank ones at the end
    std::vector<std::string_view> m_fields;
    std::size_t m_line = 0;
    bool m_longRows = false;
    bool m_endsWithComma = false; // the header, and so every row
    bool m_isOpen = false;
};

} // namespace recording
