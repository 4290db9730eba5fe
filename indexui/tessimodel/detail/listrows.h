#pragma once

#include "indexui/tessimodel/detail/numbers.h"

#include <QList>

// Steps over the row lists of a tick list; a list is a QList of shared pointers to rows. The caller holds the lock that
// guards it.
namespace TC::detail {

// The row, empty out of range.
template <class Row>
Row rowAt(const QList<Row>& rows, int index)
{
    return index >= 0 && index < rows.size() ? rows.at(index) : Row();
}

// How many rows up to and including this one have its second in an unbroken run, by the low 32 bits. 1 out of range.
template <class Row>
int runOfSecond(const QList<Row>& rows, int index)
{
    int run = 1;
    if (index >= rows.size())
        return run;
    for (int i = index; i > 0 && low32(rows.at(i - 1)->time) == low32(rows.at(i)->time); --i)
        ++run;
    return run;
}

// Makes `filtered` the rows that pass, and tells how many. What it holds is written over, not freed and made anew: a
// panel that filters a whole day waits for this.
template <class Row, class Passes>
int filterRows(const QList<Row>& rows, QList<Row>& filtered, const Passes& passes)
{
    const int held = filtered.size();
    int count = 0;
    for (const Row& row : rows) {
        if (!passes(row))
            continue;
        if (count >= held)
            filtered.append(row);
        else if (filtered.at(count) != row)
            filtered[count] = row;
        ++count;
    }
    filtered.erase(filtered.begin() + count, filtered.end());
    return count;
}

} // namespace TC::detail
