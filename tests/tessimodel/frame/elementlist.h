#pragma once

#include "indexui/tessimodel/detail/elementpool.h"

#include <gtest/gtest.h>
#include <QList>

#include <cstddef>

// Lists whose elements come from a pool.
namespace tests {

using TC::detail::ElementPool;

// Larger than a pointer, so that a list asks for each element.
struct PooledElement {
    double value = 0;
    int number = 0;

    static void* operator new(std::size_t) { return ElementPool<PooledElement>::take(); }
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* element) noexcept { ElementPool<PooledElement>::giveBack(element); }
};

// More than a few blocks hold.
inline constexpr int kMany = 3 * static_cast<int>(ElementPool<PooledElement>::kElements) + 5;

inline QList<PooledElement> listOf(int count)
{
    QList<PooledElement> list;
    for (int i = 0; i < count; ++i)
        list.append({i * 0.5, i});
    return list;
}

inline void expectNumbers(const QList<PooledElement>& list)
{
    for (int i = 0; i < list.size(); ++i) {
        EXPECT_EQ(list.at(i).number, i);
        EXPECT_DOUBLE_EQ(list.at(i).value, i * 0.5);
    }
}

} // namespace tests
