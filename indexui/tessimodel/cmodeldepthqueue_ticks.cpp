#include "indexui/tessimodel/cmodeldepthqueue.h"

#include "indexui/tessimodel/detail/markets.h"
#include "indexui/tessimodel/detail/release.h"
#include "indexui/tessimodel/detail/tickhistory.h"

namespace TC {

using namespace detail;

namespace {

// What sets this model's way with ticks apart: no rows and no figures follow, and what is dropped is freed in place.
class TickRules {
public:
    TickRules(CModelDepthQueue& model, InstrumentPtr stock)
        : m_model(model)
        , m_stock(std::move(stock))
    {}

    // Freeing a day of ticks must not keep a panel from polling.
    template <class... Containers>
    void drop(Containers&... containers)
    {
        ModelLock lock(m_model.m_mutex);
        const auto dropped = takenOut(containers...);
        lock.unlock();
    }

    bool offer(const OrderPtr& order, int& flags, Ticks) { return m_model.m_book.appendOrder(m_stock, order, flags); }
    bool offer(const TradePtr& trade, int& flags, Ticks)
    {
        return m_model.m_book.appendTransaction(m_stock, trade, flags);
    }

    void tookLive(int flags)
    {
        if (!m_model.m_suppressTickFlags)
            m_model.m_updateFlags |= flags;
    }
    void tookLive(const TradePtr&, int flags) { tookLive(flags); }

    static void offered(const quoter::TransactionData&) {}
    static void replayed() {}
    void built() { m_model.m_updateFlags |= kUpdateRebuilt; }
    static void ready(int) {}

private:
    CModelDepthQueue& m_model;
    const InstrumentPtr m_stock;
};

// The model's instrument, null when it has none or one of another market: queues are Shenzhen's.
InstrumentPtr queueStockOf(const CModelDepthQueue& model)
{
    const InstrumentPtr stock = stockOf(model);
    return stock && isShenzhenMarket(stock->market) ? stock : nullptr;
}

} // namespace

void CModelDepthQueue::doEntrust(int, int batchKind, const Records& records)
{
    if (const InstrumentPtr stock = queueStockOf(*this))
        takeOrders(*this, TickRules(*this, stock), batchKind, records);
}

void CModelDepthQueue::doTransaction(int, int batchKind, const Records& records)
{
    if (const InstrumentPtr stock = queueStockOf(*this))
        takeTrades(*this, TickRules(*this, stock), batchKind, records);
}

} // namespace TC
