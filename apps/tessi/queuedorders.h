#pragma once

#include "indexui/tessimodel/cmodeldepththousand_queue.h"
#include "utils/int64.h"

#include <cstddef>
#include <mutex>
#include <vector>

namespace tessi {

struct QueuedOrder {
    __int64 seq = 0;
    __int64 shares = 0; // still to be dealt
};

// What is still to be dealt of a model's order.
inline __int64 leftOf(const TC::SingleQuote& quote)
{
    return quote.volume - quote.dealVolume;
}

// The first orders of a model's level, oldest first, at most `count`.
template <class Level>
std::vector<QueuedOrder> firstOrdersOf(Level& level, std::size_t count)
{
    std::vector<QueuedOrder> orders;
    const std::lock_guard lock(level.m_mutex);
    for (const auto& [seq, shared] : level.m_quotes) {
        if (orders.size() == count)
            break;
        orders.push_back({seq, leftOf(TC::readLive(*shared))});
    }
    return orders;
}

} // namespace tessi
