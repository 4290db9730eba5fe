#pragma once

#include "utils/int64.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace TC::detail {

// A direct way from price key to value for the prices that trade: one step instead of a search in a tree.
//
// Holds a value for each key of one range, which grows with the keys that it is given, up to kWidest. Keys beyond, and
// those not above 0, it does not cover: their owner looks them up in its own map. `Value` is empty when it equals
// Value{} and small enough to be copied.
template <class Value>
class BusyRange {
public:
    // 655 yuan in ticks of 0.01: wider than the price limits of any stock.
    static constexpr __int64 kWidest = 1 << 16;

    // The value's slot, null when the range does not cover the key.
    Value* slot(int key)
    {
        const auto index = static_cast<std::size_t>(key - m_first); // a key below the first one is far above the last
        return index < m_size ? m_values.data() + index : nullptr;
    }

    // Makes the range cover the key, if it can. True when it grew or moved: its owner then enters all that it has.
    //
    // The first key need not be where the market is. After many keys beyond the range it begins anew at the latest one.
    bool reach(int key)
    {
        if (key <= 0 || slot(key))
            return false;
        if (m_values.empty())
            m_first = std::max<__int64>(1, key - kMargin);
        // Grows by half of itself at least, so that it seldom has to.
        const __int64 margin = std::max(kMargin, size() / 2);
        __int64 first = m_first;
        __int64 end = m_first + size();
        if (key < first)
            first = std::max({__int64{1}, key - margin, end - kWidest});
        else
            end = std::min(key + margin, first + kWidest);
        if (key < first || key >= end)
            return isMisplaced() && restart(key);
        m_values.insert(m_values.begin(), static_cast<std::size_t>(m_first - first), Value{});
        m_values.resize(static_cast<std::size_t>(end - first));
        m_size = m_values.size();
        m_first = first;
        return true;
    }

    void swap(BusyRange& other) noexcept
    {
        std::swap(m_first, other.m_first);
        std::swap(m_size, other.m_size);
        std::swap(m_beyond, other.m_beyond);
        m_values.swap(other.m_values);
    }

private:
    static constexpr __int64 kMargin = 512; // least room beyond a key that makes the range grow

    static constexpr int kPatience = 64; // keys beyond the range that it lets pass

    bool isMisplaced() { return ++m_beyond > kPatience; }

    bool restart(int key)
    {
        BusyRange().swap(*this);
        return reach(key);
    }

    __int64 size() const { return static_cast<__int64>(m_values.size()); }

    __int64 m_first = 0;
    std::size_t m_size = 0; // of m_values, so that a look-up need not work it out
    int m_beyond = 0;
    std::vector<Value> m_values;
};

} // namespace TC::detail
