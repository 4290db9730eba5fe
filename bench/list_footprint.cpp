// What the order list and the trade list keep on the heap for a day of 1,000,000 trades, by row and by what it is.
// Exits with 1 when the blocks of the heap are not those that are accounted for: an allocation more or less a row is
// not to come unnoticed.

#include "bench/heapcount.h"
#include "bench/listfeed.h"
#include "indexui/tessimodel/detail/rowpool.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

struct Share {
    const char* what;
    std::size_t blocks;
};

// Blocks, whatever the number of rows, that the shares leave out: the arrays of the lists, the tables of the indices,
// the strand's queue. Also how far a share may be wrong.
constexpr long long kSlack = 32;

// Rows come many to a block, the last of which may be in part for rows to come.
template <class Row>
std::size_t blocksOf(std::size_t rows)
{
    return rows / TC::detail::RowPool<Row>::kRows + 1;
}

double perRow(std::size_t count, std::size_t rows)
{
    return static_cast<double>(count) / static_cast<double>(rows);
}

// Prints what a list took for so many rows. False when that is not what the shares account for.
bool report(const char* row, std::size_t rows, bench::Heap taken, const std::vector<Share>& shares)
{
    std::printf("%s, %zu: %.0f bytes in %.2f blocks each:", row, rows, perRow(taken.bytes, rows),
                perRow(taken.blocks, rows));
    auto left = static_cast<long long>(taken.blocks);
    for (const Share& share : shares) {
        std::printf(" %.3f %s,", perRow(share.blocks, rows), share.what);
        left -= static_cast<long long>(share.blocks);
    }
    const bool isAccountedFor = std::abs(left) <= kSlack;
    std::printf(" and %lld blocks in all beside, at most %lld%s\n", left, kSlack, isAccountedFor ? "" : ": exceeded");
    return isAccountedFor;
}

template <class Work>
bench::Heap takenBy(bench::ListFeed& feed, Work work)
{
    const bench::Heap before = bench::heapInUse();
    work();
    feed.drain();
    return bench::heapInUse() - before;
}

bool measureTrades(bench::ListFeed& feed)
{
    const auto list = feed.newList<bench::TradeList>();
    auto trades = feed.batchOf(feed.day().trades);
    const bench::Heap taken = takenBy(feed, [&] { list->transactionCallback(0, 0, trades); });
    const std::size_t rows = trades->records.size();
    return report("trade rows", rows, taken,
                  {{"blocks of rows", blocksOf<TC::DepthTransData>(rows)},
                   {"nodes of the two lists", 2 * rows},
                   {"vectors of the chains", list->m_buyChains.size() + list->m_sellChains.size()},
                   {"minutes", list->m_minuteIndex.size()}});
}

bool measureOrders(bench::ListFeed& feed)
{
    const auto list = feed.newList<bench::OrderList>();
    auto orders = feed.batchOf(feed.day().orders);
    const bench::Heap taken = takenBy(feed, [&] { list->entrustCallback(0, 0, orders); });
    const std::size_t rows = orders->records.size();
    const bool ordersAreLean =
        report("order rows", rows, taken,
               {{"blocks of rows", blocksOf<TC::DepthOrderData>(rows)}, {"nodes of the two lists", 2 * rows}});

    auto reports = feed.batchOf(feed.day().reports);
    const bench::Heap more = takenBy(feed, [&] { list->transactionCallback(0, 0, reports); });
    const auto cancels = static_cast<std::size_t>(list->m_cancels.size());
    const bool reportsAreLean = report("trades and cancels of the order list", reports->records.size(), more,
                                       {{"blocks of cancel rows", blocksOf<TC::DepthCancelData>(cancels)},
                                        {"nodes of their two lists", 2 * cancels},
                                        {"map nodes", list->m_transactionsBySeq.size()},
                                        {"vectors in them", list->m_transactionsBySeq.size()}});
    return ordersAreLean && reportsAreLean;
}

} // namespace

int main()
{
    setenv("TZ", "Asia/Shanghai", 1);
    bench::ListFeed feed;
    const bool tradesAreLean = measureTrades(feed);
    const bool ordersAreLean = measureOrders(feed);
    return tradesAreLean && ordersAreLean ? 0 : 1;
}
