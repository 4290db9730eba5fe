#include "indexui/tessimodel/cmodeldepththousand.h"

#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/release.h"
#include "indexui/tessimodel/detail/tickhistory.h"

namespace TC {

using namespace detail;

namespace {

// What sets this model's way with ticks apart: rows fade, the last trade is noted in hands, and what is dropped is
// freed on its own strand.
class TickRules {
public:
    TickRules(CModelDepthThousand& model, InstrumentPtr stock)
        : m_model(model)
        , m_stock(std::move(stock))
    {}

    template <class... Containers>
    void drop(Containers&... containers)
    {
        const ModelLock lock(m_model.m_mutex);
        releaseLater(containers...);
    }

    bool offer(const OrderPtr& order, int& flags, Ticks ticks)
    {
        return m_model.m_book.appendOrder(m_stock, order, flags, ticks == Ticks::Live);
    }

    bool offer(const TradePtr& trade, int& flags, Ticks ticks)
    {
        return m_model.m_book.appendTransaction(m_stock, trade, flags, ticks == Ticks::Live);
    }

    void tookLive(int flags)
    {
        if (!m_model.m_suppressTickFlags)
            m_model.m_updateFlags |= flags;
    }

    // The flags come last: who takes them finds the figures of this trade.
    void tookLive(const TradePtr& trade, int flags)
    {
        if (trade->transKind != quoter::kTransKindCancel) {
            m_model.m_tickLastPrice = trade->price;
            m_model.m_tickLastVolume = toHands(low32(trade->volume));
        }
        tookLive(flags);
    }

    void offered(const quoter::TransactionData& trade)
    {
        if (trade.transKind == quoter::kTransKindCancel)
            return;
        m_model.m_tickLastPrice = trade.price;
        m_model.m_tickLastVolume = low32(trade.volume);
    }

    // Works on whatever the figure holds: a batch without trades divides what an earlier one left once more.
    void replayed() { m_model.m_tickLastVolume = toHands(m_model.m_tickLastVolume); }

    void built()
    {
        m_model.m_book.refreshDecay();
        m_model.m_updateFlags |= kUpdateRebuilt;
    }

    void ready(int history) { m_model.m_dataReady |= history; }

private:
    int toHands(int volume) const { return volume == 0 ? 0 : handsRounded(volume, m_model.m_volumeUnit); }

    CModelDepthThousand& m_model;
    const InstrumentPtr m_stock;
};

} // namespace

void CModelDepthThousand::doEntrust(int, int batchKind, const Batch& batch)
{
    if (const InstrumentPtr stock = stockFor(*this, batch))
        takeOrders(*this, TickRules(*this, stock), batchKind, batch->records);
}

void CModelDepthThousand::doTransaction(int, int batchKind, const Batch& batch)
{
    if (const InstrumentPtr stock = stockFor(*this, batch))
        takeTrades(*this, TickRules(*this, stock), batchKind, batch->records);
}

} // namespace TC
