#include "bench/bookfeed.h"

#include "Formula/metacachedatawrapper.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <stdexcept>
#include <utility>

namespace bench {

namespace {

constexpr int kSharesPerHand = 100;

void apply(TC::ThousandBook& book, const TC::ThousandBook::Stock& stock, const Tick& tick, bool refresh)
{
    int flags = 0;
    if (tick.order)
        book.appendOrder(stock, tick.order, flags, refresh);
    else
        book.appendTransaction(stock, tick.trade, flags, refresh);
}

} // namespace

BookFeed::BookFeed(const TickOptions& options)
    : BookFeed(makeTicks(options))
{}

BookFeed::BookFeed(TickStream stream)
    : StockFeed(stream.lowestKey, stream.highestKey)
    , m_stream(std::move(stream))
{}

std::unique_ptr<TC::ThousandBook> BookFeed::newBook(std::size_t orders, std::size_t trades) const
{
    auto book = std::make_unique<TC::ThousandBook>();
    book->m_stock = stock();
    book->m_priceTick = kPriceTick;
    book->m_volumeUnit = kSharesPerHand;
    book->reserve(orders, trades);
    return book;
}

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

void BookFeed::deliverHistory(TC::CModelDepthThousand& model, const Batch& orders, const Batch& trades)
{
    model.entrustCallback(0, 0, orders);
    model.transactionCallback(0, 0, trades);
    drain();
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

void BookFeed::deliverLive(TC::CModelDepthThousand& model, std::size_t tick, const Batch& batch)
{
    if (m_stream.ticks[tick].order)
        model.entrustCallback(0, 1, batch);
    else
        model.transactionCallback(0, 1, batch);
    drain();
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
    std::vector<LevelTotal> totals;
    for (const bool isBid : {true, false}) {
        for (const auto& [key, level] : isBid ? book.m_bidLevels : book.m_askLevels)
            totals.push_back({isBid, key, level->m_volume, level->m_number});
    }
    return totals;
}

} // namespace bench
