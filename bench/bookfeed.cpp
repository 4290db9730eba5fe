#include "bench/bookfeed.h"

#include "Formula/metacachedatawrapper.h"
#include "Formula/stockmanager.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "utils/stockkey.h"

#include <boost/make_shared.hpp>

#include <stdexcept>

namespace bench {

namespace {

constexpr const char* kMarket = "SZ";
constexpr const char* kCode = "000001";
constexpr int kSharesPerHand = 100;

standin::InstrumentDescription description(const TickStream& stream)
{
    standin::InstrumentDescription stock;
    stock.market = kMarket;
    stock.code = kCode;
    stock.priceTick = kPriceTick;
    stock.lastClose = (stream.lowestKey + stream.highestKey) * kPriceTick / 2;
    return stock;
}

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
    : m_stream(makeTicks(options))
{
    m_terminal.strands.runByHand();
    m_terminal.log.setLevel(50000);
    m_terminal.instruments.add(description(m_stream));
    m_stock = utils::CSingletonT<TC::CStockManager>::instance()->getInstrumentDetail(kMarket, kCode);
}

std::unique_ptr<TC::ThousandBook> BookFeed::newBook(std::size_t orders, std::size_t trades) const
{
    auto book = std::make_unique<TC::ThousandBook>();
    book->m_stock = m_stock;
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
        bench::apply(book, m_stock, m_stream.ticks[i], false);
    book.refreshDecay();
}

void BookFeed::applyLive(TC::ThousandBook& book, std::size_t first, std::size_t end) const
{
    for (std::size_t i = first; i < end; ++i)
        bench::apply(book, m_stock, m_stream.ticks[i], true);
}

void BookFeed::apply(ReferenceBook& book, std::size_t first, std::size_t end) const
{
    for (std::size_t i = first; i < end; ++i)
        book.apply(m_stream.ticks[i]);
}

void BookFeed::follow(TC::CModelDepthThousand& model)
{
    model.setStock(QString::fromStdString(utils::zlStockKey(kMarket, kCode)));
}

void BookFeed::deliverHistory(TC::CModelDepthThousand& model, const Batch& orders, const Batch& trades)
{
    model.entrustCallback(0, 0, orders);
    model.transactionCallback(0, 0, trades);
    drain();
}

BookFeed::Batch BookFeed::emptyBatch() const
{
    auto batch = boost::make_shared<TC::MetaCacheDataWrapper>();
    batch->market = kMarket;
    batch->stockCode = kCode;
    return batch;
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
    Batch batch = emptyBatch();
    const Tick& event = m_stream.ticks[tick];
    if (event.order)
        batch->records.push_back(event.order);
    else
        batch->records.push_back(event.trade);
    return batch;
}

void BookFeed::deliverLive(TC::CModelDepthThousand& model, std::size_t tick, const Batch& batch)
{
    if (m_stream.ticks[tick].order)
        model.entrustCallback(0, 1, batch);
    else
        model.transactionCallback(0, 1, batch);
    drain();
}

void BookFeed::drain()
{
    m_terminal.strands.drain("modulegroup");
}

void BookFeed::freeReleased()
{
    m_terminal.strands.drain("data_release");
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
