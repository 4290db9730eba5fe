// Bytes that a thousand-level book keeps for each resting order, index included, in one line. Exits with 1 above the
// limit.

#include "bench/bookfeed.h"
#include "quoter/orderdata.h"

#include <malloc.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

namespace {

std::size_t g_bytes = 0; // what the heap gave and has not got back, its own header included

constexpr std::size_t kHeapHeader = sizeof(std::size_t);
constexpr double kLimit = 200;
constexpr int kOrders = 200'000;
constexpr int kLevels = 2000;

void* counted(void* memory)
{
    if (!memory)
        throw std::bad_alloc();
    g_bytes += malloc_usable_size(memory) + kHeapHeader;
    return memory;
}

void giveBack(void* memory)
{
    if (memory)
        g_bytes -= malloc_usable_size(memory) + kHeapHeader;
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size)
{
    return counted(std::malloc(size));
}

void* operator new(std::size_t size, std::align_val_t alignment)
{
    const auto to = static_cast<std::size_t>(alignment);
    return counted(std::aligned_alloc(to, (size + to - 1) / to * to));
}

void operator delete(void* memory) noexcept
{
    giveBack(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    giveBack(memory);
}

void operator delete(void* memory, std::align_val_t) noexcept
{
    giveBack(memory);
}

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept
{
    giveBack(memory);
}

namespace {

// Bids below and asks above a price of 100.00, none of them trading.
std::vector<std::shared_ptr<quoter::OrderData>> restingOrders()
{
    std::vector<std::shared_ptr<quoter::OrderData>> orders;
    for (int i = 0; i < kOrders; ++i) {
        const bool isBuy = i % 2 == 0;
        const int distance = 1 + i / 2 % (kLevels / 2);
        auto order = std::make_shared<quoter::OrderData>();
        order->seq = i + 1;
        order->volume = 100;
        order->price = (10'000 + (isBuy ? -distance : distance)) / 100.0;
        order->orderKind = 1;
        order->bsFlag = isBuy ? quoter::kSideBuy : quoter::kSideSell;
        orders.push_back(std::move(order));
    }
    return orders;
}

double bytesPerOrder(const bench::BookFeed& feed, bool isReserved)
{
    const auto orders = restingOrders();
    const std::size_t before = g_bytes;
    const auto book = feed.newBook(isReserved ? kOrders : 0, 0);
    int flags = 0;
    for (const auto& order : orders)
        book->appendOrder(book->m_stock, order, flags, false);
    book->refreshDecay();
    if (bench::totalsOf(*book).size() != kLevels)
        std::abort();
    return static_cast<double>(g_bytes - before) / kOrders;
}

} // namespace

int main()
{
    setenv("TZ", "Asia/Shanghai", 1);
    const bench::BookFeed feed(bench::TickOptions{.events = 1, .levels = 10, .resting = 20});
    const double reserved = bytesPerOrder(feed, true);
    const double grown = bytesPerOrder(feed, false);
    std::printf("%.0f bytes for each of %d orders on %d levels, %.0f in a book that was not reserved; at most %.0f\n",
                reserved, kOrders, kLevels, grown, kLimit);
    return reserved <= kLimit && grown <= kLimit ? 0 : 1;
}
