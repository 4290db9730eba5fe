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

// What the difference may be made of, in the order in which it is tried.
Orders poolAt(const Difference& difference, const OrderLedger& ledger, TC::ThousandBook& book, const Orders& used)
{
    Orders pool = unknownTo(book, difference.isBid, difference.price, difference.key, ledger);
    std::erase_if(pool, [&](const RestingOrder& order) { return isIn(used, order.seq); });
    // An order that has traded can be nowhere else: it is taken before those that fit another price as well.
    const auto rank = [](const RestingOrder& order) { return !order.isMarketKind() ? 2 : order.price > 0 ? 0 : 1; };
    std::stable_sort(pool.begin(), pool.end(),
                     [&](const RestingOrder& a, const RestingOrder& b) { return rank(a) < rank(b); });
    return pool;
}

} // namespace

std::vector<RestingOrder> unknownTo(TC::ThousandBook& book, bool isBid, double price, int key,
                                    const OrderLedger& ledger)
{
    Orders orders = ledger.marketKindsAt(isBid, key);
    TC::SingleQueue::Quotes quotes;
    if (const auto level = book.getLevel(isBid, price))
        level->getQuotes(quotes);
    for (const RestingOrder& order : ledger.limitsAt(isBid, key)) {
        if (quotes.count(order.seq) == 0)
            orders.push_back(order);
    }
    return orders;
}

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
