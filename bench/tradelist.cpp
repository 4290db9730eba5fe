#include "bench/tradelist.h"

#include "bench/listfeed.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace bench {

namespace {

using FollowedTrades = Followed<TradeList>;

constexpr int kMorning = 30'000; // about seven minutes
constexpr int kLive = 20'000;    // of these, or of the whole day's trades, the last
constexpr int kLiveRounds = 3;   // 5,000 each

int tradeCount(const FollowedTrades& followed)
{
    return static_cast<int>(followed.feed.day().trades.size());
}

std::shared_ptr<FollowedTrades> builtList(int trades = kTradesOfAPart)
{
    auto followed = std::make_shared<FollowedTrades>(trades);
    followed->feed.deliver(*followed->list);
    if (followed->list->m_rowCount != tradeCount(*followed))
        throw std::logic_error("the list does not show every trade");
    return followed;
}

void checkMatched(const FollowedTrades& followed)
{
    const auto snapshots = followed.feed.snapshotsBefore(followed.feed.day().trades.size());
    if (followed.list->m_seqPairs.size() * 10 < snapshots * 9)
        throw std::logic_error("the snapshots are not matched");
}

// The whole history in one batch, its snapshots there already.
Body prepareHistory(int trades)
{
    auto followed = std::make_shared<FollowedTrades>(trades);
    auto batch = followed->feed.batchOf(followed->feed.day().trades);
    auto snapshots = followed->feed.snapshots();
    return {[followed, batch](int) {
                followed->list->transactionCallback(0, 0, batch);
                followed->feed.drain();
                checkMatched(*followed);
                return tradeCount(*followed);
            },
            [followed, snapshots] {
                followed->empty();
                followed->list->quoterCallback(0, 0, snapshots);
                followed->feed.drain();
            }};
}

// What is left to do of that when the trades are there and their snapshots come, for each trade.
Body prepareMatching()
{
    auto followed = std::make_shared<FollowedTrades>();
    auto trades = followed->feed.batchOf(followed->feed.day().trades);
    auto snapshots = followed->feed.snapshots();
    return {[followed, snapshots](int) {
                followed->list->quoterCallback(0, 0, snapshots);
                followed->feed.drain();
                checkMatched(*followed);
                return tradeCount(*followed);
            },
            [followed, trades] {
                followed->empty();
                followed->list->transactionCallback(0, 0, trades);
                followed->feed.drain();
            }};
}

// Live snapshots one by one, the trades of each there already, as after a break of the trade stream.
Body prepareLiveSnapshot()
{
    auto followed = std::make_shared<FollowedTrades>();
    const std::size_t count = followed->feed.day().snapshots.size();
    const std::size_t start = count / 2;
    auto trades = followed->feed.batchOf(followed->feed.day().trades);
    auto former = followed->feed.snapshots(0, start);
    auto pushes = std::make_shared<std::vector<StockFeed::Batch>>();
    for (std::size_t i = start; i < count; ++i)
        pushes->push_back(followed->feed.snapshots(i, i + 1));
    return {[followed, pushes](int) {
                for (const StockFeed::Batch& push : *pushes)
                    followed->list->doQuoter(0, 1, push);
                checkMatched(*followed);
                return static_cast<int>(pushes->size());
            },
            [followed, trades, former] {
                followed->empty();
                followed->list->quoterCallback(0, 0, former);
                followed->list->transactionCallback(0, 0, trades);
                followed->feed.drain();
            }};
}

struct LiveDay {
    explicit LiveDay(int trades)
        : feed(trades)
        , live(feed, static_cast<std::size_t>(trades - kLive), kLive)
    {}

    ListFeed feed;
    LiveTrades live;
};

Body prepareLive(int trades, void (LiveTrades::*take)(int))
{
    auto day = std::make_shared<LiveDay>(trades);
    return {[day, take](int times) {
        (day->live.*take)(times);
        return times;
    }};
}

// Rows from the end backwards, over about seven minutes.
int recentRow(const TradeList& list, int i)
{
    return list.m_rowCount - 1 - i * 97 % (kMorning - 1000);
}

template <class Look>
Body lookingAt(const std::shared_ptr<FollowedTrades>& followed, Look look)
{
    return {[followed, look](int times) {
        const TradeList& list = *followed->list;
        int found = 0;
        for (int i = 0; i < times; ++i)
            found += look(list, i) ? 1 : 0;
        if (found != times)
            throw std::logic_error("a lookup finds nothing");
        return times;
    }};
}

// Looks up seconds that have rows, which the preparation notes down.
template <class Look>
Body lookingAtSeconds(int trades, Look look)
{
    auto followed = builtList(trades);
    auto seconds = std::make_shared<std::vector<int>>();
    for (int i = 0; i < kMorning; ++i)
        seconds->push_back(static_cast<int>(followed->list->getData(recentRow(*followed->list, i))->time));
    return lookingAt(followed, [seconds, look](const TradeList& list, int i) {
        return look(list, (*seconds)[static_cast<std::size_t>(i % kMorning)], i);
    });
}

Body prepareFind(int trades)
{
    return lookingAtSeconds(
        trades, [](const TradeList& list, int second, int i) { return list.find(second, i % 2 == 0) >= 0; });
}

// The seconds of snapshots, which are every third.
Body prepareFindPair()
{
    return lookingAtSeconds(kTradesOfADay, [](const TradeList& list, int second, int) {
        return list.find(second - second % 3).first >= 0;
    });
}

Body prepareGetData()
{
    return lookingAt(builtList(),
                     [](const TradeList& list, int i) { return list.getData(recentRow(list, i)) != nullptr; });
}

// With `isKnown` the list has the day's orders, without them it goes along the row's chain.
Body prepareEntrustVolume(bool isKnown)
{
    auto followed = builtList();
    if (isKnown) {
        followed->list->entrustCallback(0, 0, followed->feed.batchOf(followed->feed.day().orders));
        followed->feed.drain();
    }
    auto rows = std::make_shared<std::vector<TradeList::Row>>();
    for (int i = 0; i < kMorning; ++i)
        rows->push_back(followed->list->getData(recentRow(*followed->list, i)));
    return lookingAt(followed, [rows](const TradeList& list, int i) {
        return list.getEntrustVolume((*rows)[static_cast<std::size_t>(i % kMorning)], i % 2 == 0) > 0;
    });
}

// For each row.
Body prepareFilterChange()
{
    auto followed = builtList();
    return {[followed](int) { return changeFilter(*followed->list) * tradeCount(*followed); }};
}

// What the caller waits for; freeing comes later and is not counted. The list has the orders too.
Body prepareClear(int trades)
{
    auto followed = std::make_shared<FollowedTrades>(trades);
    return {[followed](int) {
                followed->list->clear();
                return 1;
            },
            [followed] {
                followed->empty();
                followed->list->entrustCallback(0, 0, followed->feed.batchOf(followed->feed.day().orders));
                followed->feed.deliver(*followed->list);
                checkMatched(*followed);
            }};
}

} // namespace

std::vector<Operation> tradeListOperations()
{
    std::vector<Operation> operations = {
        {"trade_history", [] { return prepareHistory(kTradesOfAPart); }},
        {"trade_history_day", [] { return prepareHistory(kTradesOfADay); }},
        {"trade_matching", prepareMatching},
        {"trade_live_morning", [] { return prepareLive(kMorning, &LiveTrades::push); }, 5000, kLiveRounds},
        {"trade_live_evening", [] { return prepareLive(kTradesOfADay, &LiveTrades::push); }, 5000, kLiveRounds},
        {"trade_live_posted", [] { return prepareLive(kMorning, &LiveTrades::post); }, 5000, kLiveRounds},
        {"snapshot_live", prepareLiveSnapshot},
        {"trade_find_morning", [] { return prepareFind(kMorning); }, 2000},
        {"trade_find_evening", [] { return prepareFind(kTradesOfADay); }, 2000},
        {"trade_find_pair", prepareFindPair},
        {"trade_get_data", prepareGetData},
        {"trade_entrust_volume", [] { return prepareEntrustVolume(true); }},
        {"trade_entrust_volume_by_chain", [] { return prepareEntrustVolume(false); }},
        {"trade_filter_change", prepareFilterChange, 1},
    };
    for (const int trades : {1000, kTradesOfADay})
        operations.push_back(
            {"trade_clear_" + std::to_string(trades), [trades] { return prepareClear(trades); }, 1, 5});
    return operations;
}

} // namespace bench
