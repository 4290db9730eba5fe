#pragma once

#include "bench/referencebook.h"
#include "bench/stockfeed.h"
#include "bench/tickstream.h"
#include "indexui/tessimodel/cmodeldepththousand.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace bench {

// The stock of a tick stream, and what feeds books and models with the ticks.
class BookFeed : public StockFeed {
public:
    explicit BookFeed(const TickOptions& options);

    const TickStream& stream() const { return m_stream; }
    std::size_t size() const { return m_stream.ticks.size(); }

    // Empty books of the stock, with room for the whole stream or for so many orders and trades.
    std::unique_ptr<TC::ThousandBook> newBook() const { return newBook(m_stream.orders, m_stream.trades); }
    std::unique_ptr<TC::ThousandBook> newBook(std::size_t orders, std::size_t trades) const;
    std::unique_ptr<ReferenceBook> newReference() const;

    // Apply the ticks from the first to the one before the end. A history is followed by one refreshDecay().
    void applyHistory(TC::ThousandBook& book, std::size_t first, std::size_t end) const;
    void applyLive(TC::ThousandBook& book, std::size_t first, std::size_t end) const;
    void apply(ReferenceBook& book, std::size_t first, std::size_t end) const;

    // Gives the model the ticks up to `end` as two histories in one batch each.
    void deliverHistory(TC::CModelDepthThousand& model, const Batch& orders, const Batch& trades);
    Batch historyOfOrders(std::size_t end) const;
    Batch historyOfTrades(std::size_t end) const;

    // A batch of one tick, and its way from the callback through the strand to the worker.
    Batch liveBatch(std::size_t tick) const;
    void deliverLive(TC::CModelDepthThousand& model, std::size_t tick, const Batch& batch);

    // Throws std::runtime_error unless both books come to the same levels by the whole stream.
    void checkAgainstReference() const;

private:
    explicit BookFeed(TickStream stream);

    TickStream m_stream;
};

// The same totals as a ReferenceBook's.
std::vector<LevelTotal> totalsOf(const TC::ThousandBook& book);

} // namespace bench
