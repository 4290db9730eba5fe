#include "bench/referencebook.h"

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <algorithm>
#include <bit>

namespace bench {

ReferenceBook::ReferenceBook(int lowestKey, int highestKey, std::size_t orders)
    : m_lowestKey(lowestKey)
    , m_keys(highestKey - lowestKey + 1)
    , m_levels(static_cast<std::size_t>(2 * m_keys))
    , m_index(std::bit_ceil(2 * std::max<std::size_t>(orders, 1)))
{
    m_mask = m_index.size() - 1;
    m_shift = 64 - std::countr_zero(m_index.size());
    m_orders.reserve(orders);
    m_free.reserve(orders);
}

ReferenceBook::Entry& ReferenceBook::find(std::int32_t seq)
{
    // Fibonacci hashing: neighbouring seqs are spread over the table, whatever their gaps.
    std::size_t at = (static_cast<std::uint64_t>(seq) * 0x9E3779B97F4A7C15U) >> m_shift;
    while (m_index[at].seq != seq && m_index[at].seq != 0)
        at = (at + 1) & m_mask;
    return m_index[at];
}

void ReferenceBook::add(const quoter::OrderData& order)
{
    std::int32_t place = static_cast<std::int32_t>(m_orders.size());
    if (m_free.empty()) {
        m_orders.emplace_back();
    } else {
        place = m_free.back();
        m_free.pop_back();
    }
    // Prices are above 0, for which this rounds right, and lround is a call.
    const int key = static_cast<int>(order.price / kPriceTick + 0.5); // NOLINT(bugprone-incorrect-roundings)
    const std::int32_t at = key - m_lowestKey + (order.bsFlag == quoter::kSideBuy ? 0 : m_keys);
    Level& level = m_levels[static_cast<std::size_t>(at)];
    m_orders[static_cast<std::size_t>(place)] = {order.volume, level.newest, kNone, at};
    if (level.newest == kNone)
        level.oldest = place;
    else
        m_orders[static_cast<std::size_t>(level.newest)].newer = place;
    level.newest = place;
    level.volume += order.volume;
    ++level.number;

    const auto seq = static_cast<std::int32_t>(order.seq);
    find(seq) = {seq, place};
}

void ReferenceBook::take(const quoter::TransactionData& trade)
{
    if (trade.buySeq)
        reduce(trade.buySeq, trade);
    if (trade.sellSeq)
        reduce(trade.sellSeq, trade);
}

void ReferenceBook::reduce(std::int32_t seq, const quoter::TransactionData& trade)
{
    Entry& entry = find(seq);
    if (entry.order == kNone)
        return;
    Order& order = m_orders[static_cast<std::size_t>(entry.order)];
    const bool isCancel = trade.transKind == quoter::kTransKindCancel;
    const __int64 taken = isCancel ? order.left : std::min(order.left, trade.volume);
    order.left -= taken;
    m_levels[static_cast<std::size_t>(order.level)].volume -= taken;
    if (order.left == 0)
        drop(entry);
}

void ReferenceBook::drop(Entry& entry)
{
    const Order& order = m_orders[static_cast<std::size_t>(entry.order)];
    Level& level = m_levels[static_cast<std::size_t>(order.level)];
    --level.number;
    (order.older == kNone ? level.oldest : m_orders[static_cast<std::size_t>(order.older)].newer) = order.newer;
    (order.newer == kNone ? level.newest : m_orders[static_cast<std::size_t>(order.newer)].older) = order.older;
    m_free.push_back(entry.order);
    // The seq stays, so that the probes of others still pass over it.
    entry.order = kNone;
}

std::vector<LevelTotal> ReferenceBook::totals() const
{
    std::vector<LevelTotal> totals;
    for (int i = 0; i < 2 * m_keys; ++i) {
        const Level& level = m_levels[static_cast<std::size_t>(i)];
        if (level.number > 0)
            totals.push_back({i < m_keys, m_lowestKey + i % m_keys, level.volume, level.number});
    }
    return totals;
}

} // namespace bench
