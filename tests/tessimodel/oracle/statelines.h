#pragma once

#include "utils/int64.h"

#include <array>
#include <initializer_list>
#include <string>
#include <vector>

// The state of a book or model as lines of numbers: quick to compare after every step, and readable where two differ.
namespace tests::oracle {

// What the numbers of a line mean.
struct Section {
    const char* name;
    const char* number; // name of the double, null for a line without one
    std::vector<const char*> columns;
};

struct Line {
    static constexpr std::size_t kColumns = 8;

    const Section* section = nullptr;
    double number = 0;
    std::array<__int64, kColumns> values{};

    friend bool operator==(const Line& a, const Line& b);
};

class Lines {
public:
    // In full, hashed containers are written out sorted; else they are one line with a digest.
    explicit Lines(bool inFull = false)
        : m_inFull(inFull)
    {}

    bool inFull() const { return m_inFull; }

    // Keeps the memory, and forgets the rows seen.
    void clear();

    void add(const Section& section, double number, std::initializer_list<__int64> values);
    void add(const Section& section, std::initializer_list<__int64> values) { add(section, 0, values); }

    // A name for a row object: the how-manieth object of this state it is. So two states with the same names share
    // their rows between their parts in the same way.
    int nameOfRow(const void* row);

    // Of pairs in any order.
    void addIndex(const Section& section, std::vector<std::array<__int64, 2>>& pairs);

    const std::vector<Line>& all() const { return m_lines; }
    friend bool operator==(const Lines& a, const Lines& b) { return a.m_lines == b.m_lines; }

private:
    bool m_inFull;
    std::vector<Line> m_lines;
    std::vector<const void*> m_rows;
    std::vector<int> m_slots; // open addressing into m_rows
};

// The first lines in which the two differ, expected and real.
std::string firstDifferences(const Lines& expected, const Lines& real);

} // namespace tests::oracle
