#pragma once

#include "indexui/tessimodel/cmodeldepththousand_queue.h"
#include "indexui/tessimodel/detail/seqhash.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

namespace TC::detail {

// Where a book put an order: its price key, which it is as an int, and while it rests its place in the level's queue,
// so that a trade finds it without a search.
struct OrderPlace {
    int key = 0;
    bool isBid = false;
    bool rests = false; // `quote` is in the level of that key and side
    SingleQueue::Quotes::iterator quote;

    operator int() const { return key; } // NOLINT(google-explicit-constructor): the key is what it stands for
};

using OrderPlaces = boost::unordered_flat_map<__int64, OrderPlace, SeqHash>; // by order seq
using SeenTrades = boost::unordered_flat_set<__int64, SeqHash>;              // by buy seq and sell seq in one number

} // namespace TC::detail
