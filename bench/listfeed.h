#pragma once

#include "bench/daystream.h"
#include "bench/stockfeed.h"
#include "indexui/tessimodel/cmodeldepthentrust.h"
#include "indexui/tessimodel/cmodeldepthtransaction.h"

#include <boost/make_shared.hpp>

#include <cstddef>
#include <vector>

namespace bench {

// The lists with their workers in the open, so that a push can be measured without the stand-in's strand.
class OrderList : public TC::CModelDepthEntrust {
public:
    using CModelDepthEntrust::doEntrust;
};

class TradeList : public TC::CModelDepthTransaction {
public:
    using CModelDepthTransaction::doQuoter;
    using CModelDepthTransaction::doTransaction;
};

// The stock of a day, lists that follow it, and the day's records in batches.
class ListFeed : public StockFeed {
public:
    explicit ListFeed(int trades = kTradesOfADay)
        : ListFeed(makeDay(trades))
    {}

    const DayStream& day() const { return m_day; }

    template <class List>
    boost::shared_ptr<List> newList() const
    {
        auto list = boost::make_shared<List>();
        follow(*list);
        return list;
    }

    // Records from the first to the one before the end.
    template <class Record>
    Batch batchOf(const std::vector<std::shared_ptr<Record>>& records, std::size_t first, std::size_t end) const
    {
        Batch batch = emptyBatch();
        const auto begin = records.begin();
        batch->records.assign(begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(end));
        return batch;
    }

    template <class Record>
    Batch batchOf(const std::vector<std::shared_ptr<Record>>& records) const
    {
        return batchOf(records, 0, records.size());
    }

    using StockFeed::batchOf;

    Batch snapshots(std::size_t first, std::size_t end) const;
    Batch snapshots() const { return snapshots(0, m_day.snapshots.size()); }
    std::size_t snapshotsBefore(std::size_t trade) const; // how many come ahead of it

    // Histories in one batch each, the work on them done on return. The trade list gets the snapshots first.
    void deliver(OrderList& list);
    void deliver(TradeList& list, std::size_t trades);
    void deliver(TradeList& list) { deliver(list, m_day.trades.size()); }

private:
    explicit ListFeed(DayStream day);

    DayStream m_day;
};

inline constexpr int kTradesOfAPart = 200'000; // where the length of the day does not matter; about 250,000 orders

// A feed, and a list that follows its stock.
template <class List>
struct Followed {
    explicit Followed(int trades = kTradesOfAPart)
        : feed(trades)
        , list(feed.newList<List>())
    {}

    void empty()
    {
        list->clear();
        feed.freeReleased();
        feed.follow(*list);
    }

    ListFeed feed;
    boost::shared_ptr<List> list;
};

// A filter that refuses many rows and the one that refuses none in turn. How many filters these are.
template <class List>
int changeFilter(List& list)
{
    const auto filters = {6, 0};
    for (const int hands : filters) {
        TC::SDepthFilterParam filter;
        filter.hands = hands;
        filter.connective = 1;
        list.setFilterParam(filter);
    }
    return static_cast<int>(filters.size());
}

// A trade list as it stands ahead of a trade of the day, and the live pushes from there on: each trade, and the
// snapshots that come in between.
class LiveTrades {
public:
    LiveTrades(ListFeed& feed, std::size_t start, std::size_t count);

    void push(int trades); // as the strand's worker takes them
    void post(int trades); // by the callbacks and the strand

    const TradeList& list() const { return *m_list; }

private:
    struct Push {
        StockFeed::Batch batch;
        bool isSnapshot = false;
    };

    template <class Take>
    void takeNext(int trades, Take take);

    ListFeed& m_feed;
    boost::shared_ptr<TradeList> m_list;
    std::vector<Push> m_pushes;
    std::size_t m_next = 0;
};

} // namespace bench
