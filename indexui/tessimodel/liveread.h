#pragma once

#include <atomic>

// How panels read what the models' strand may be changing: each word by itself, as it was at some moment. Words of one
// row may be of different moments; the next update brings them together again. Rows have an overload of their own,
// beside them.
namespace TC {

template <class Word>
Word readLive(const Word& word)
{
    // The words are never const themselves, and only read here.
    return std::atomic_ref<Word>(const_cast<Word&>(word)).load(std::memory_order_relaxed);
}

} // namespace TC
