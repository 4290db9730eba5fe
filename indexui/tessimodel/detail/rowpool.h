#pragma once

#include "indexui/tessimodel/detail/countedblock.h"

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace TC::detail {

// Makes rows that are held by shared pointers as they are by boost::make_shared, from blocks of many: a day brings
// millions, and asking the heap for each would be a tenth of what it costs to take one.
//
// A block is freed with the last of its rows, wherever and whenever that is let go of: a row that a panel holds keeps
// 64. A pool may go before its rows.
// make() is for one thread at a time.
template <class Row>
class RowPool {
    static_assert(std::is_nothrow_default_constructible_v<Row>, "a place once taken is a row");

public:
    static constexpr std::size_t kRows = 64; // of a block

    RowPool() = default;
    RowPool(const RowPool&) = delete;
    RowPool& operator=(const RowPool&) = delete;

    ~RowPool()
    {
        if (m_block)
            m_block->letGoOfTheRest();
    }

    boost::shared_ptr<Row> make()
    {
        if (!m_block)
            m_block = new Block;
        auto row = boost::allocate_shared<Row>(Allocator<Row>(m_block));
        if (m_block->isUsedUp())
            m_block = nullptr; // it is the rows' own now
        return row;
    }

private:
    static constexpr std::size_t kPointers = 6; // what a shared pointer keeps beside its object, at most
    static constexpr std::size_t kPlace =
        (sizeof(Row) + sizeof(void*) - 1) / sizeof(void*) * sizeof(void*) + kPointers * sizeof(void*);

    struct Place {
        alignas(Row) alignas(void*) std::byte bytes[kPlace];
    };

    using Block = CountedBlock<Place, kRows>;

    // What allocate_shared makes its one request of, for the object and its counters together.
    template <class T>
    struct Allocator {
        using value_type = T;

        explicit Allocator(Block* from)
            : block(from)
        {}

        template <class Other>
        Allocator(const Allocator<Other>& other) // NOLINT(google-explicit-constructor): allocators are rebound so
            : block(other.block)
        {}

        T* allocate(std::size_t)
        {
            static_assert(sizeof(T) <= kPlace && alignof(T) <= alignof(Place));
            return reinterpret_cast<T*>(block->take().bytes);
        }

        void deallocate(T*, std::size_t) { block->letGo(); }

        template <class Other>
        bool operator==(const Allocator<Other>& other) const
        {
            return block == other.block;
        }

        Block* block;
    };

    Block* m_block = nullptr; // that has places left
};

} // namespace TC::detail
