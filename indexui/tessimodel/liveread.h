#pragma once

#include "indexui/tessimodel/cmodeldepththousand_queue.h"

#include <atomic>

// How panels read what the models' strand may be changing: each word by itself, as it was at some moment. Words of one
// row may be of different moments; the next update brings them together again.
namespace TC {

template <class Word>
Word readLive(const Word& word)
{
    // The words are never const themselves, and only read here.
    return std::atomic_ref<Word>(const_cast<Word&>(word)).load(std::memory_order_relaxed);
}

inline EntrustData readLive(const EntrustData& row)
{
    return {readLive(row.price), readLive(row.volume), readLive(row.delta), readLive(row.number)};
}

inline SingleQuote readLive(const SingleQuote& quote)
{
    return {readLive(quote.timetag), readLive(quote.seq), readLive(quote.volume), readLive(quote.dealVolume),
            readLive(quote.status)};
}

} // namespace TC
