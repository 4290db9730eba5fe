// Bytes that a thousand-level book keeps for each resting order, index included, in one line. Exits with 1 above the
// limit.

#include "bench/bookfeed.h"
#include "bench/heapcount.h"
#include "quoter/orderdata.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

constexpr double kLimit = 200;
constexpr int kOrders = 200'000;
constexpr int kLevels = 2000;

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
    const bench::Heap before = bench::heapInUse();
    const auto book = feed.newBook(isReserved ? kOrders : 0, 0);
    int flags = 0;
    for (const auto& order : orders)
        book->appendOrder(book->m_stock, order, flags, false);
    book->refreshDecay();
    if (bench::totalsOf(*book).size() != kLevels)
        std::abort();
    return static_cast<double>((bench::heapInUse() - before).bytes) / kOrders;
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
