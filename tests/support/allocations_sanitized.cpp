#include "bench/heapcount.h"

#include <atomic>

// The count of allocations where a sanitizer has taken the place of malloc: it calls hooks. Compilers ship its headers
// in part, hence the declaration.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onMalloc)(const volatile void*, std::size_t),
                                                         void (*onFree)(const volatile void*));

namespace {

std::atomic<std::size_t> g_allocations{0};

void count(const volatile void*, std::size_t)
{
    ++g_allocations;
}

void ignore(const volatile void*) {}

const int g_installed = __sanitizer_install_malloc_and_free_hooks(count, ignore);

} // namespace

namespace bench {

std::size_t allocations()
{
    return g_installed > 0 ? g_allocations.load() : 0;
}

} // namespace bench
