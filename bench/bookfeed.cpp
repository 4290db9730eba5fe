#include "bench/bookfeed.h"

#include "Formula/metacachedatawrapper.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <stdexcept>
#include <utility>

namespace bench {

namespace {

// `refresh` is what a book that fades marks takes beside.
template <class Book, class... Refresh>
void apply(Book& book, const typename Book::Stock& stock, const Tick& tick, Refresh... refresh)
{
    int flags = 0;
    if (tick.order)
        book.appendOrder(stock, tick.order, flags, refresh...);
    else
        book.appendTransaction(stock, tick.trade, flags, refresh...);
}

template <class Book, class NumberOf>
std::vector<LevelTotal> totalsOf(const Book& book, NumberOf numberOf)
{
    std::vector<LevelTotal> totals;
    for (const bool isBid : {true, false}) {
        for (const auto& [key, level] : isBid ? book.m_bidLevels : book.m_askLevels)
            totals.push_back({isBid, key, level->m_volume, numberOf(*level)});
    }
    return totals;
}

} // namespace

BookFeed::BookFeed(const TickOptions& options)
    : BookFeed(makeTicks(options))
{}

BookFeed::BookFeed(TickStream stream)
    : StockFeed(stream.lowestKey, stream.highestKey)
    , m_stream(std::move(stream))
{}

std::unique_ptr<ReferenceBook> BookFeed::newReference() const
{
    return std::make_unique<ReferenceBook>(m_stream.lowestKey, m_stream.highestKey, m_stream.orders);
}

void BookFeed::applyHistory(TC::ThousandBook& book, std::size_t first, std::size_t end) const
{
    for (std::size_t i = first; i < end; ++i)
        bench::apply(book, stock(), m_stream.ticks[i], false);
    book.refreshDecay();
}

void BookFeed::applyHistory(TC::QueueBook& book, std::size_t first, std::size_t end) const
{
    for (std::size_t i = first; i < end; ++i)
        bench::apply(book, stock(), m_stream.ticks[i]);
}

void BookFeed::applyLive(TC::ThousandBook& book, std::size_t first, std::size_t end) const
{
    for (std::size_t i = first; i < end; ++i)
        bench::apply(book, stock(), m_stream.ticks[i], true);
}

void BookFeed::apply(ReferenceBook& book, std::size_t first, std::size_t end) const
{
    for (std::size_t i = first; i < end; ++i)
        book.apply(m_stream.ticks[i]);
}

BookFeed::Batch BookFeed::historyOfOrders(std::size_t end) const
{
    Batch batch = emptyBatch();
    for (std::size_t i = 0; i < end; ++i) {
        if (m_stream.ticks[i].order)
            batch->records.push_back(m_stream.ticks[i].order);
    }
    return batch;
}

BookFeed::Batch BookFeed::historyOfTrades(std::size_t end) const
{
    Batch batch = emptyBatch();
    for (std::size_t i = 0; i < end; ++i) {
        if (m_stream.ticks[i].trade)
            batch->records.push_back(m_stream.ticks[i].trade);
    }
    return batch;
}

BookFeed::Batch BookFeed::liveBatch(std::size_t tick) const
{
    const Tick& event = m_stream.ticks[tick];
    return event.order ? batchOf(event.order) : batchOf(event.trade);
}

void BookFeed::checkAgainstReference() const
{
    const auto reference = newReference();
    apply(*reference, 0, size());
    const auto history = newBook();
    applyHistory(*history, 0, size());
    const auto live = newBook();
    applyHistory(*live, 0, size() / 2);
    applyLive(*live, size() / 2, size());
    if (totalsOf(*history) != reference->totals() || totalsOf(*live) != reference->totals())
        throw std::runtime_error("the books do not come to the same levels: there is nothing to compare");
}

std::vector<LevelTotal> totalsOf(const TC::ThousandBook& book)
{
    return totalsOf(book, [](const TC::SingleQueue& level) { return level.m_number; });
}

std::vector<LevelTotal> totalsOf(const TC::QueueBook& book)
{
    return totalsOf(book, [](const TC::OrderQueue& level) { return level.m_count; });
}

} // namespace bench
