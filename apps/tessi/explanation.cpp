#include "apps/tessi/explanation.h"

#include "indexui/tessimodel/cmodeldepththousand_book.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace tessi {

namespace {

using Orders = std::vector<RestingOrder>;

// Orders that add up to a sum: the latest one taken, and the chain of those before it.
struct Chain {
    int count = 0;
    std::size_t order = 0; // place in the pool
    std::size_t rest = 0;  // place in the chains; the first one is empty
};

Orders ordersOf(const Chain& last, const std::vector<Chain>& chains, const Orders& pool)
{
    Orders taken;
    for (Chain chain = last; chain.count > 0; chain = chains[chain.rest])
        taken.insert(taken.begin(), pool[chain.order]);
    return taken;
}

// As few orders of the pool as add up to exactly `shares`, and among as few those that stand first in it. Keeps a
// chain for each sum that can be reached, since trying all combinations takes for ever in a pool of some dozens.
Orders fewestOf(const Orders& pool, __int64 shares)
{
    constexpr int kMostAtAPrice = 8;
    std::vector<Chain> chains(1);
    std::map<__int64, std::size_t> bySum{{0, 0}};
    for (std::size_t i = 0; i < pool.size(); ++i) {
        const std::vector<std::pair<__int64, std::size_t>> before(bySum.begin(), bySum.end());
        for (const auto& [sum, rest] : before) {
            const int count = chains[rest].count + 1;
            if (sum + pool[i].shares > shares || count > kMostAtAPrice)
                continue;
            const auto [reached, isNew] = bySum.try_emplace(sum + pool[i].shares, chains.size());
            if (!isNew && chains[reached->second].count <= count)
                continue;
            reached->second = chains.size();
            chains.push_back({count, i, rest});
        }
    }
    const auto found = bySum.find(shares);
    return found == bySum.end() ? Orders() : ordersOf(chains[found->second], chains, pool);
}

bool isIn(const Orders& orders, __int64 seq)
{
    return std::any_of(orders.begin(), orders.end(), [seq](const RestingOrder& order) { return order.seq == seq; });
}

// What could be at the price without the book's knowledge.
Orders poolAt(const Difference& difference, const OrderLedger& ledger, TC::ThousandBook& book, const Orders& used)
{
    Orders pool = ledger.marketKindsAt(difference.isBid, difference.key);
    std::erase_if(pool, [&](const RestingOrder& order) { return isIn(used, order.seq); });
    // An order that has traded can be nowhere else: it is taken before those that fit another price as well.
    std::stable_partition(pool.begin(), pool.end(), [](const RestingOrder& order) { return order.price > 0; });
    TC::SingleQueue::Quotes quotes;
    if (const auto level = book.getLevel(difference.isBid, difference.price))
        level->getQuotes(quotes);
    for (const RestingOrder& order : ledger.limitsAt(difference.isBid, difference.key)) {
        if (quotes.count(order.seq) == 0)
            pool.push_back(order);
    }
    return pool;
}

} // namespace

std::vector<RestingOrder> explain(const std::vector<Difference>& differences, const OrderLedger& ledger,
                                  TC::ThousandBook& book)
{
    Orders all;
    for (const Difference& difference : differences) {
        Orders taken = fewestOf(poolAt(difference, ledger, book, all), difference.missing);
        if (taken.empty())
            return {};
        for (RestingOrder& order : taken) {
            order.price = difference.price;
            all.push_back(order);
        }
    }
    return all;
}

} // namespace tessi
