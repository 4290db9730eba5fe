#pragma once

#include <cstddef>

namespace bench {

// What the whole process has on the heap. Compiled into a program, heapcount.cpp takes the place of malloc and its
// kin there, so that nothing escapes: containers of Qt ask malloc and not operator new.
struct Heap {
    std::size_t bytes = 0;  // as the heap gave them, its own header included
    std::size_t blocks = 0; // in use

    friend Heap operator-(Heap a, Heap b) { return {a.bytes - b.bytes, a.blocks - b.blocks}; }
};

Heap heapInUse();

// How often memory was asked for since the start, freed or not.
std::size_t allocations();

} // namespace bench
