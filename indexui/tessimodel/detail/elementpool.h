#pragma once

#include "indexui/tessimodel/detail/countedblock.h"

#include <cstddef>

namespace TC::detail {

// Memory for elements of lists that ask for each of them anew, from blocks of many: the heap would cost as much as all
// else that is done with a tick. A final type takes it by an operator new and an operator delete of its own.
//
// Each thread takes from a block of its own and may give back what another one took. A block is freed with the last of
// its elements, once its thread has no use for it.
template <class Element>
class ElementPool {
public:
    static constexpr std::size_t kElements = 126; // of a block: about a page of small ones

    static void* take()
    {
        Source& source = t_source;
        if (source.isThreadEnding)
            return takeAlone();
        if (!source.block)
            source.block = newBlock();
        Block* const block = source.block;
        void* const element = takeFrom(*block);
        if (block->isUsedUp())
            source.block = nullptr; // it is the elements' own now
        return element;
    }

    static void giveBack(void* element) noexcept
    {
        auto* const bytes = static_cast<std::byte*>(element);
        reinterpret_cast<Place*>(bytes - offsetof(Place, bytes))->block->letGo();
    }

private:
    struct Place;
    using Block = CountedBlock<Place, kElements>;

    struct Place {
        Block* block;
        alignas(Element) std::byte bytes[sizeof(Element)];
    };

    // What a thread takes from. It can be used to the thread's very end: statics may still take and give back then.
    struct Source {
        Block* block = nullptr; // that has places left
        bool isThreadEnding = false;
    };

    struct LastCare {
        ~LastCare()
        {
            Source& source = t_source;
            source.isThreadEnding = true;
            if (source.block)
                source.block->letGoOfTheRest();
            source.block = nullptr;
        }
    };

    static void* takeFrom(Block& block)
    {
        Place& place = block.take();
        place.block = &block;
        return place.bytes;
    }

    // From a block that holds nothing else.
    static void* takeAlone()
    {
        auto* const block = new Block;
        block->held = 1;
        return takeFrom(*block);
    }

    static Block* newBlock()
    {
        static thread_local const LastCare care; // from the thread's first block on
        return new Block;
    }

    static inline constinit thread_local Source t_source;
};

} // namespace TC::detail
