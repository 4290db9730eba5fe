#include "apps/tessi/orderledger.h"

#include "indexui/tessimodel/detail/numbers.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"

#include <algorithm>

namespace tessi {

bool areMarketOrders(const std::vector<RestingOrder>& orders)
{
    return !orders.empty() &&
           std::all_of(orders.begin(), orders.end(), [](const RestingOrder& order) { return order.isMarketKind(); });
}

void OrderLedger::apply(const recording::Event& tick)
{
    if (tick.stream == recording::Stream::Orders)
        apply(static_cast<const quoter::OrderData&>(*tick.record));
    else
        apply(static_cast<const quoter::TransactionData&>(*tick.record));
}

void OrderLedger::apply(const quoter::OrderData& order)
{
    // Deletes, and orders for units of a fund, are no orders of a book.
    const bool isOrder = order.orderKind != 0 && order.orderKind != 3;
    if (!isOrder || (order.bsFlag != quoter::kSideBuy && order.bsFlag != quoter::kSideSell))
        return;
    RestingOrder resting{order.seq, order.orderKind, order.bsFlag == quoter::kSideBuy, order.price, order.volume};
    if (resting.isMarketKind())
        resting.price = 0; // whatever the record says, it is no price of the order's
    if (const auto early = m_early.extract(order.seq))
        resting.shares -= early.mapped();
    if (resting.shares > 0 && m_resting.emplace(order.seq, resting).second)
        placeOf(resting).insert(order.seq);
}

void OrderLedger::apply(const quoter::TransactionData& trade)
{
    for (const __int64 seq : {trade.buySeq, trade.sellSeq}) {
        if (seq != 0)
            take(seq, trade);
    }
}

std::vector<RestingOrder> OrderLedger::marketKindsAt(bool isBid, int key) const
{
    const auto found = m_marketKinds.find(isBid);
    std::vector<RestingOrder> orders = found == m_marketKinds.end() ? std::vector<RestingOrder>() : all(found->second);
    std::erase_if(orders, [&](const RestingOrder& order) { return order.price > 0 && keyOf(order.price) != key; });
    return orders;
}

std::vector<RestingOrder> OrderLedger::limitsAt(bool isBid, int key) const
{
    const auto found = m_limits.find({isBid, key});
    return found == m_limits.end() ? std::vector<RestingOrder>() : all(found->second);
}

void OrderLedger::take(__int64 seq, const quoter::TransactionData& trade)
{
    const auto found = m_resting.find(seq);
    if (found == m_resting.end()) {
        m_early[seq] += trade.volume;
        return;
    }
    RestingOrder& order = found->second;
    order.shares -= trade.volume;
    if (order.shares <= 0) {
        placeOf(order).erase(seq);
        m_resting.erase(found);
    } else if (order.isMarketKind()) {
        order.price = trade.price;
    }
}

int OrderLedger::keyOf(double price) const
{
    return TC::detail::priceKey(price, m_priceTick);
}

OrderLedger::Seqs& OrderLedger::placeOf(const RestingOrder& order)
{
    if (order.isMarketKind())
        return m_marketKinds[order.isBid];
    return m_limits[{order.isBid, keyOf(order.price)}];
}

std::vector<RestingOrder> OrderLedger::all(const Seqs& seqs) const
{
    std::vector<RestingOrder> orders;
    orders.reserve(seqs.size());
    for (const __int64 seq : seqs)
        orders.push_back(m_resting.at(seq));
    return orders;
}

} // namespace tessi
