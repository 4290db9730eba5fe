#pragma once

#include "bench/referencebook.h"
#include "bench/stockfeed.h"
#include "bench/tickstream.h"
#include "indexui/tessimodel/cmodeldepthqueue_book.h"
#include "indexui/tessimodel/cmodeldepththousand_book.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace bench {

// Which of a model's two histories comes first; the other one completes the book.
enum class FirstHistory { Orders, Trades };

// The stock of a tick stream, and what feeds books and models with the ticks.
class BookFeed : public StockFeed {
public:
    explicit BookFeed(const TickOptions& options);

    const TickStream& stream() const { return m_stream; }
    std::size_t size() const { return m_stream.ticks.size(); }

    // Empty books of the stock, with room for the whole stream or for so many orders and trades.
    template <class Book = TC::ThousandBook>
    std::unique_ptr<Book> newBook() const
    {
        return newBook<Book>(m_stream.orders, m_stream.trades);
    }
    template <class Book = TC::ThousandBook>
    std::unique_ptr<Book> newBook(std::size_t orders, std::size_t trades) const
    {
        auto book = std::make_unique<Book>();
        book->m_stock = stock();
        book->m_priceTick = kPriceTick;
        book->m_volumeUnit = kSharesPerHand;
        book->reserve(orders, trades);
        return book;
    }
    std::unique_ptr<ReferenceBook> newReference() const;

    // Apply the ticks from the first to the one before the end. A history is followed by one refreshDecay(), where
    // marks fade at all.
    void applyHistory(TC::ThousandBook& book, std::size_t first, std::size_t end) const;
    void applyHistory(TC::QueueBook& book, std::size_t first, std::size_t end) const;
    void applyLive(TC::ThousandBook& book, std::size_t first, std::size_t end) const;
    void apply(ReferenceBook& book, std::size_t first, std::size_t end) const;

    // Gives the model ticks as two histories in one batch each, the work on them done on return.
    template <class Model>
    void deliverHistory(Model& model, const Batch& orders, const Batch& trades,
                        FirstHistory first = FirstHistory::Orders)
    {
        if (first == FirstHistory::Trades)
            push(model, &Model::transactionCallback, 0, trades);
        push(model, &Model::entrustCallback, 0, orders);
        if (first == FirstHistory::Orders)
            push(model, &Model::transactionCallback, 0, trades);
        drain();
    }

    // Of the ticks up to `end`.
    Batch historyOfOrders(std::size_t end) const;
    Batch historyOfTrades(std::size_t end) const;

    // A batch of one tick, and its way from the callback through the strand to the worker.
    Batch liveBatch(std::size_t tick) const;
    template <class Model>
    void deliverLive(Model& model, std::size_t tick, const Batch& batch)
    {
        push(model, m_stream.ticks[tick].order ? &Model::entrustCallback : &Model::transactionCallback, 1, batch);
        drain();
    }

    // Throws std::runtime_error unless both books come to the same levels by the whole stream.
    void checkAgainstReference() const;

private:
    static constexpr int kSharesPerHand = 100;

    explicit BookFeed(TickStream stream);

    TickStream m_stream;
};

// The same totals as a ReferenceBook's.
std::vector<LevelTotal> totalsOf(const TC::ThousandBook& book);
std::vector<LevelTotal> totalsOf(const TC::QueueBook& book);

} // namespace bench
