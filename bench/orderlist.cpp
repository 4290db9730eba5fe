#include "bench/orderlist.h"

#include "bench/listfeed.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace bench {

namespace {

using FollowedOrders = Followed<OrderList>;

constexpr std::size_t kLive = 20'000;

int orderCount(const FollowedOrders& followed)
{
    return static_cast<int>(followed.feed.day().orders.size());
}

void checkRows(const FollowedOrders& followed)
{
    if (followed.list->m_filteredOrderCount != orderCount(followed))
        throw std::logic_error("the list does not show every order");
}

Body prepareHistory(int trades)
{
    auto followed = std::make_shared<FollowedOrders>(trades);
    auto orders = followed->feed.batchOf(followed->feed.day().orders);
    return {[followed, orders](int) {
                followed->list->entrustCallback(0, 0, orders);
                followed->feed.drain();
                checkRows(*followed);
                return orderCount(*followed);
            },
            [followed] { followed->empty(); }};
}

// For each trade or cancel.
Body prepareTrades()
{
    auto followed = std::make_shared<FollowedOrders>();
    auto reports = followed->feed.batchOf(followed->feed.day().reports);
    return {[followed, reports](int) {
                followed->list->transactionCallback(0, 0, reports);
                followed->feed.drain();
                return static_cast<int>(reports->records.size());
            },
            [followed] { followed->empty(); }};
}

// The day's last orders as the strand's worker takes them.
Body prepareLive()
{
    auto followed = std::make_shared<FollowedOrders>();
    const auto& orders = followed->feed.day().orders;
    const std::size_t start = orders.size() - kLive;
    auto former = followed->feed.batchOf(orders, 0, start);
    auto pushes = std::make_shared<std::vector<StockFeed::Batch>>();
    for (std::size_t i = start; i < orders.size(); ++i)
        pushes->push_back(followed->feed.batchOf(orders[i]));
    return {[followed, pushes](int) {
                for (const StockFeed::Batch& push : *pushes)
                    followed->list->doEntrust(0, 1, push);
                checkRows(*followed);
                return static_cast<int>(pushes->size());
            },
            [followed, former] {
                followed->empty();
                followed->list->entrustCallback(0, 0, former);
                followed->feed.drain();
            }};
}

// For each order and cancel.
Body prepareFilterChange()
{
    auto followed = std::make_shared<FollowedOrders>();
    followed->feed.deliver(*followed->list);
    checkRows(*followed);
    return {[followed](int) {
        const int changes = changeFilter(*followed->list);
        checkRows(*followed);
        return changes * (orderCount(*followed) + static_cast<int>(followed->list->m_cancels.size()));
    }};
}

// What the caller waits for; freeing comes later and is not counted. The list has the trades of its orders too.
Body prepareClear(int trades)
{
    auto followed = std::make_shared<FollowedOrders>(trades);
    return {[followed](int) {
                followed->list->clear();
                return 1;
            },
            [followed] {
                followed->empty();
                followed->feed.deliver(*followed->list);
            }};
}

} // namespace

std::vector<Operation> orderListOperations()
{
    std::vector<Operation> operations = {
        {"order_history", [] { return prepareHistory(kTradesOfAPart); }},
        {"order_history_day", [] { return prepareHistory(kTradesOfADay); }},
        {"order_live", prepareLive},
        {"order_list_trades", prepareTrades},
        {"order_filter_change", prepareFilterChange, 1},
    };
    for (const int trades : {1000, kTradesOfADay})
        operations.push_back(
            {"order_clear_" + std::to_string(trades), [trades] { return prepareClear(trades); }, 1, 5});
    return operations;
}

} // namespace bench
