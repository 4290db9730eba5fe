#include "apps/tessi/bestlevels.h"

#include "indexui/tessimodel/cmodeldepththousand_book.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "quoter/quoterdepthdata.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <mutex>

namespace tessi {

namespace {

// `from` to `to` runs from the best level to the worst.
template <class Iterator>
std::vector<BookLevel> pricedLevels(Iterator from, Iterator to, std::size_t depth)
{
    std::vector<BookLevel> levels;
    levels.reserve(depth);
    for (; from != to && levels.size() < depth; ++from) {
        const auto& [key, level] = *from;
        if (key > 0)
            levels.push_back({key, level->m_price, level->m_volume});
    }
    return levels;
}

template <std::size_t Levels>
std::vector<BookLevel> usableLevels(const double (&prices)[Levels], const __int64 (&volumes)[Levels], double priceTick)
{
    std::vector<BookLevel> levels;
    for (std::size_t i = 0; i < Levels; ++i) {
        if (TC::detail::isUsable(prices[i]))
            levels.push_back({TC::detail::priceKey(prices[i], priceTick), prices[i], volumes[i]});
    }
    return levels;
}

void addDifferences(std::vector<Difference>& all, bool isBid, const std::vector<BookLevel>& snapshot,
                    const std::vector<BookLevel>& book)
{
    struct Pair {
        double price = 0;
        __int64 missing = 0;
    };
    std::map<int, Pair> byKey;
    for (const BookLevel& level : snapshot) {
        byKey[level.key].price = level.price;
        byKey[level.key].missing += level.volume;
    }
    for (const BookLevel& level : book) {
        if (!reaches(snapshot, isBid, level.key))
            continue;
        byKey[level.key].price = level.price;
        byKey[level.key].missing -= level.volume;
    }
    for (const auto& [key, pair] : byKey) {
        if (pair.missing != 0)
            all.push_back({isBid, key, pair.price, pair.missing});
    }
}

} // namespace

BestLevels bestLevels(TC::ThousandBook& book, std::size_t depth)
{
    const std::lock_guard lock(book.m_mutex);
    return {pricedLevels(book.m_bidLevels.rbegin(), book.m_bidLevels.rend(), depth),
            pricedLevels(book.m_askLevels.begin(), book.m_askLevels.end(), depth)};
}

BestLevels shownLevels(const quoter::QuoterDepthData& snapshot, double priceTick)
{
    return {usableLevels(snapshot.bidPrice, snapshot.bidVolume, priceTick),
            usableLevels(snapshot.askPrice, snapshot.askVolume, priceTick)};
}

std::uint64_t fingerprint(const BestLevels& levels)
{
    // FNV-1a over whole words.
    constexpr std::uint64_t kStart = 14695981039346656037U;
    constexpr std::uint64_t kPrime = 1099511628211U;
    std::uint64_t print = kStart;
    const auto add = [&](std::uint64_t word) {
        print = (print ^ word) * kPrime;
        print ^= print >> 32U;
    };
    for (const auto* side : {&levels.bids, &levels.asks}) {
        add(side->size());
        for (const BookLevel& level : *side) {
            add(static_cast<std::uint64_t>(level.key));
            add(static_cast<std::uint64_t>(level.volume));
        }
    }
    return print;
}

bool reaches(const std::vector<BookLevel>& side, bool isBid, int key)
{
    if (side.size() < kSnapshotLevels)
        return true;
    return isBid ? key >= side.back().key : key <= side.back().key;
}

std::vector<Difference> differences(const BestLevels& snapshot, const BestLevels& book)
{
    std::vector<Difference> all;
    addDifferences(all, true, snapshot.bids, book.bids);
    addDifferences(all, false, snapshot.asks, book.asks);
    return all;
}

} // namespace tessi
