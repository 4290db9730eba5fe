#pragma once

#include "bench/tickstream.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bench {

// What rests at one price; the common ground on which books are compared.
struct LevelTotal {
    bool isBid;
    int key;
    __int64 volume; // shares
    int number;     // orders

    friend bool operator==(const LevelTotal&, const LevelTotal&) = default;
};

// The yardstick: an order book that does no more than it has to and does that close to what the machine can. Prices
// are a flat array, orders an arena with queues threaded through it, and seqs are found in one probe of a table that
// never grows.
//
// It reads the same shared records as the product, and buys its speed with what the product has to give: no rows,
// change marks or flags, no locks, no objects that a panel may hold, no late or repeated ticks, no unknown prices.
class ReferenceBook {
public:
    // For prices from `lowestKey` to `highestKey` in ticks, and no more than `orders` in all.
    ReferenceBook(int lowestKey, int highestKey, std::size_t orders);

    void apply(const Tick& tick)
    {
        if (tick.order)
            add(*tick.order);
        else
            take(*tick.trade);
    }

    // Levels with orders, bids before asks, by ascending price.
    std::vector<LevelTotal> totals() const;

private:
    static constexpr std::int32_t kNone = -1;

    struct Order {
        __int64 left;
        std::int32_t older;
        std::int32_t newer;
        std::int32_t level;
    };
    struct Level {
        __int64 volume = 0;
        std::int32_t number = 0;
        std::int32_t oldest = kNone;
        std::int32_t newest = kNone;
    };
    struct Entry {
        std::int32_t seq = 0; // 0 for an entry that is free
        std::int32_t order = kNone;
    };

    void add(const quoter::OrderData& order);
    void take(const quoter::TransactionData& trade);
    void reduce(std::int32_t seq, const quoter::TransactionData& trade);
    void drop(Entry& entry);
    Entry& find(std::int32_t seq);

    int m_lowestKey;
    int m_keys;
    int m_shift;
    std::size_t m_mask;
    std::vector<Level> m_levels; // bids, then asks
    std::vector<Order> m_orders;
    std::vector<std::int32_t> m_free; // places in m_orders
    std::vector<Entry> m_index;
};

} // namespace bench
