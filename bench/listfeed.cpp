#include "bench/listfeed.h"

#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace bench {

ListFeed::ListFeed(DayStream day)
    : StockFeed(day.lowestKey, day.highestKey)
    , m_day(std::move(day))
{}

StockFeed::Batch ListFeed::snapshots(std::size_t first, std::size_t end) const
{
    Batch batch = emptyBatch();
    for (std::size_t i = first; i < end; ++i)
        batch->records.push_back(m_day.snapshots[i].record);
    return batch;
}

std::size_t ListFeed::snapshotsBefore(std::size_t trade) const
{
    const auto comesEarlier = [trade](const SnapshotPush& push) { return push.before <= trade; };
    const auto first = m_day.snapshots.begin();
    return static_cast<std::size_t>(std::partition_point(first, m_day.snapshots.end(), comesEarlier) - first);
}

void ListFeed::deliver(OrderList& list)
{
    list.entrustCallback(0, 0, batchOf(m_day.orders));
    list.transactionCallback(0, 0, batchOf(m_day.reports));
    drain();
}

void ListFeed::deliver(TradeList& list, std::size_t trades)
{
    list.quoterCallback(0, 0, snapshots(0, snapshotsBefore(trades)));
    list.transactionCallback(0, 0, batchOf(m_day.trades, 0, trades));
    drain();
}

LiveTrades::LiveTrades(ListFeed& feed, std::size_t start, std::size_t count)
    : m_feed(feed)
    , m_list(feed.newList<TradeList>())
{
    feed.deliver(*m_list, start);
    const DayStream& day = feed.day();
    std::size_t snapshot = feed.snapshotsBefore(start);
    for (std::size_t trade = start; trade < start + count; ++trade) {
        m_pushes.push_back({feed.batchOf(day.trades[trade])});
        for (; snapshot < day.snapshots.size() && day.snapshots[snapshot].before == trade + 1; ++snapshot)
            m_pushes.push_back({feed.batchOf(day.snapshots[snapshot].record), true});
    }
}

template <class Take>
void LiveTrades::takeNext(int trades, Take take)
{
    for (int taken = 0; taken < trades; ++m_next) {
        if (m_next == m_pushes.size())
            throw std::logic_error("there are no more live trades");
        take(m_pushes[m_next]);
        taken += m_pushes[m_next].isSnapshot ? 0 : 1;
    }
}

void LiveTrades::push(int trades)
{
    takeNext(trades, [this](const Push& push) {
        if (push.isSnapshot)
            m_list->doQuoter(0, 1, push.batch);
        else
            m_list->doTransaction(0, 1, push.batch);
    });
}

void LiveTrades::post(int trades)
{
    takeNext(trades, [this](const Push& push) {
        if (push.isSnapshot)
            m_list->quoterCallback(0, 1, push.batch);
        else
            m_list->transactionCallback(0, 1, push.batch);
        m_feed.drain();
    });
}

} // namespace bench
