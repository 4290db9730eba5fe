#pragma once

#include <atomic>

namespace TC::detail {

// Writes a word that panels may be reading without a lock; their side is TC::readLive.
template <class Word>
void writeLive(Word& word, Word value)
{
    std::atomic_ref<Word>(word).store(value, std::memory_order_relaxed);
}

} // namespace TC::detail
