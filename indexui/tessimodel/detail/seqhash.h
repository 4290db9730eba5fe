#pragma once

#include "utils/int64.h"

#include <cstddef>

namespace TC::detail {

// Mixes seqs, and pairs of them in one number, well enough for a table that is a power of two.
struct SeqHash {
    using is_avalanching = void;

    std::size_t operator()(__int64 seq) const noexcept
    {
        const auto product = static_cast<std::size_t>(seq) * 0x9E3779B97F4A7C15U; // 2^64 over the golden ratio
        return product ^ (product >> 32U);
    }
};

} // namespace TC::detail
