#include "bench/heapcount.h"

#include <malloc.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>

// The C library's own, under the names that remain when a program brings its own malloc.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

constexpr std::size_t kHeapHeader = sizeof(std::size_t);

std::atomic<std::size_t> g_bytes{0};
std::atomic<std::size_t> g_blocks{0};
std::atomic<std::size_t> g_allocations{0};

void* counted(void* memory)
{
    if (memory) {
        ++g_allocations;
        g_bytes += malloc_usable_size(memory) + kHeapHeader;
        ++g_blocks;
    }
    return memory;
}

void discount(void* memory)
{
    if (memory) {
        g_bytes -= malloc_usable_size(memory) + kHeapHeader;
        --g_blocks;
    }
}

} // namespace

namespace bench {

Heap heapInUse()
{
    return {g_bytes, g_blocks};
}

std::size_t allocations()
{
    return g_allocations;
}

} // namespace bench

extern "C" {

void* malloc(std::size_t size)
{
    return counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size)
{
    return counted(__libc_calloc(count, size));
}

void* realloc(void* memory, std::size_t size)
{
    discount(memory);
    return counted(__libc_realloc(memory, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return counted(__libc_memalign(alignment, size));
}

void* memalign(std::size_t alignment, std::size_t size)
{
    return counted(__libc_memalign(alignment, size));
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    *memory = counted(__libc_memalign(alignment, size));
    return *memory ? 0 : ENOMEM;
}

void free(void* memory)
{
    discount(memory);
    __libc_free(memory);
}
}
