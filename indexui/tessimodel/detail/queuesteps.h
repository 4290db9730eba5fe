#pragma once

#include "indexui/tessimodel/cmodeldepthqueue_level.h"
#include "indexui/tessimodel/detail/levelsteps.h"

// How an OrderQueue takes an order, a trade or a cancel. The caller holds the level's lock, or nobody else knows the
// level.
namespace TC {

inline int& orderCount(OrderQueue& level)
{
    return level.m_count;
}

} // namespace TC

namespace TC::detail {

// OrderQueue::appendQuote.
template <class Keeper>
bool addOrder(OrderQueue& level, const quoter::OrderData& order, const Keeper& keeper)
{
    if (!addQuote(level, order, keeper))
        return false;
    writeLive(level.m_valid, true);
    return true;
}

// OrderQueue::dealQuote. The whole trade is taken off the order and off the level, even when the order has less left.
template <class Keeper>
bool takeTrade(OrderQueue& level, const quoter::TransactionData& trade, const Keeper& keeper)
{
    const auto wholeTrade = [&](const SingleQuote&) { return trade.volume; };
    if (!takeFromQueue(level, trade, keeper, wholeTrade))
        return false;
    if (level.m_volume <= 0 || level.m_count <= 0)
        writeLive(level.m_valid, false);
    return true;
}

} // namespace TC::detail
