#pragma once

#include "indexui/tessimodel/cmodeldepthqueue_level.h"
#include "indexui/tessimodel/cmodeldepththousand_queue.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "tests/support/records.h"
#include "tests/tessimodel/booktext.h"

#include <boost/make_shared.hpp>

#include <string>

namespace tests {

// A level at 10.00 with its row, of an instrument with 100 shares a hand.
struct PriceLevel {
    explicit PriceLevel(bool isBid = true)
        : queue(10.0, isBid)
    {}

    bool add(const std::shared_ptr<quoter::OrderData>& order) { return queue.order(order, row, 100); }
    bool take(const std::shared_ptr<quoter::TransactionData>& trade) { return queue.deal(trade, row, 100); }

    std::string text() { return levelText(queue); }
    std::string rowText() const { return tests::rowText(*row); }

    TC::SingleQueue queue;
    boost::shared_ptr<TC::EntrustData> row = boost::make_shared<TC::EntrustData>();
};

// How each kind of level takes a tick.
inline bool addOrder(TC::SingleQueue& level, const Order& order)
{
    return level.order(order, {}, 100);
}
inline bool addOrder(TC::OrderQueue& level, const Order& order)
{
    return level.appendQuote(order);
}
inline bool takeTrade(TC::SingleQueue& level, const Trade& trade)
{
    return level.deal(trade, {}, 100);
}
inline bool takeTrade(TC::OrderQueue& level, const Trade& trade)
{
    return level.dealQuote(trade);
}

// A level at 10.00 of either kind, without a row.
template <class Level>
struct BareLevel {
    explicit BareLevel(bool isBid = true)
        : queue(10.0, isBid)
    {}

    bool add(const Order& order) { return addOrder(queue, order); }
    bool take(const Trade& trade) { return takeTrade(queue, trade); }

    // Orders that the level holds to begin with.
    template <class... Orders>
    void given(const Orders&... orders)
    {
        (add(orders), ...);
    }

    std::string text() { return totalsText(queue); }

    Level queue;
};

} // namespace tests
