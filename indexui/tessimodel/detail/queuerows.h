#pragma once

#include "indexui/tessimodel/cmodeldepthqueue_level.h"

namespace TC::detail {

// Appends the rows of a side that panels get: a level that the book has, as `isInBook` says of its price, is the book's
// to show.
template <class Rows, class IsInBook>
void appendShown(const Rows& source, OrderQueueList& rows, const IsInBook& isInBook)
{
    for (const auto& row : source) {
        if (!row->m_valid || !isInBook(row->m_price))
            rows.push_back(row);
    }
}

} // namespace TC::detail
