#pragma once

#include "Formula/metacachedatawrapper.h"
#include "quoter/brovanquoteralldata.h"
#include "quoter/levelorderdata.h"
#include "quoter/orderdata.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <boost/make_shared.hpp>

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// Records as tests write them: order(1).buy(10.00).shares(300), level1("09:30:03").last(10.02).volume(500).
namespace tests {

using Records = std::vector<std::shared_ptr<quoter::QuoterBase>>;

// A time of the test day, 2024-03-01, given as "hh:mm:ss" or "hh:mm:ss.mmm" at UTC+8, in milliseconds.
__int64 timeOf(const std::string& clock);

// "hh:mm:ss" of a time in seconds, as rows and keys hold it.
std::string clockOf(__int64 second);

// A level of a snapshot: price and volume in hands.
struct SnapshotLevel {
    double price;
    __int64 volume;
};

// A snapshot of either level. Levels that are not given have price 0 and volume 0; the phase is continuous trading.
template <class Record>
class Snapshot {
public:
    explicit Snapshot(const std::string& clock)
        : m_record(std::make_shared<Record>())
    {
        m_record->timetag = timeOf(clock);
        m_record->tradeStatus = 13;
    }

    Snapshot& last(double price) { return m_record->lastPrice = price, *this; }
    Snapshot& alternativeLast(double price) { return m_record->lastPriceAlt = price, *this; }
    Snapshot& volume(__int64 volume) { return m_record->volume = volume, *this; }
    Snapshot& status(int status) { return m_record->tradeStatus = status, *this; }
    Snapshot& open(double price) { return m_record->open = price, *this; }
    Snapshot& high(double price) { return m_record->high = price, *this; }
    Snapshot& low(double price) { return m_record->low = price, *this; }
    Snapshot& lastClose(double price) { return m_record->lastClose = price, *this; }
    Snapshot& amount(double amount) { return m_record->amount = amount, *this; }
    Snapshot& settlement(double price) { return m_record->settlementPrice = price, *this; }
    Snapshot& lastSettlement(double price) { return m_record->lastSettlementPrice = price, *this; }
    Snapshot& iopv(double value) { return m_record->iopv = value, *this; }

    // Of the broker's snapshots only.
    Snapshot& limits(double up, double down)
    {
        m_record->upStopPrice = up;
        m_record->downStopPrice = down;
        return *this;
    }

    Snapshot& bid(double price, __int64 volume = 1)
    {
        return set(m_record->bidPrice, m_record->bidVolume, {{price, volume}});
    }
    Snapshot& ask(double price, __int64 volume = 1)
    {
        return set(m_record->askPrice, m_record->askVolume, {{price, volume}});
    }

    // All levels of a side, best first; a level with price 0 is one that does not exist.
    Snapshot& bids(std::initializer_list<SnapshotLevel> levels)
    {
        return set(m_record->bidPrice, m_record->bidVolume, levels);
    }
    Snapshot& asks(std::initializer_list<SnapshotLevel> levels)
    {
        return set(m_record->askPrice, m_record->askVolume, levels);
    }

    operator std::shared_ptr<quoter::QuoterBase>() const { return m_record; }
    operator std::shared_ptr<Record>() const { return m_record; }

private:
    template <std::size_t Depth>
    Snapshot& set(double (&prices)[Depth], __int64 (&volumes)[Depth], std::initializer_list<SnapshotLevel> levels)
    {
        if (levels.size() > Depth)
            throw std::invalid_argument("a snapshot has no so many levels");
        std::size_t i = 0;
        for (const SnapshotLevel& level : levels) {
            prices[i] = level.price;
            volumes[i++] = level.volume;
        }
        return *this;
    }

    std::shared_ptr<Record> m_record;
};

inline Snapshot<quoter::QuoterAllData> level1(const std::string& clock = "09:30:00")
{
    return Snapshot<quoter::QuoterAllData>(clock);
}

inline Snapshot<quoter::QuoterDepthData> level2(const std::string& clock = "09:30:00")
{
    return Snapshot<quoter::QuoterDepthData>(clock);
}

// A level-1 snapshot in the broker's quote mode.
inline Snapshot<zolv::BrovanQuoterAllData> brokerLevel1(const std::string& clock = "09:30:00")
{
    return Snapshot<zolv::BrovanQuoterAllData>(clock);
}

// A limit order by its seq; a buy of 100 shares at 0 unless said otherwise.
class Order {
public:
    explicit Order(__int64 seq)
        : m_record(std::make_shared<quoter::OrderData>())
    {
        m_record->timetag = timeOf("09:30:00");
        m_record->seq = seq;
        m_record->orderKind = 1;
        m_record->bsFlag = 1;
        m_record->volume = 100;
    }

    Order& buy(double price) { return side(1, price); }
    Order& sell(double price) { return side(2, price); }
    Order& flag(int bsFlag) { return m_record->bsFlag = bsFlag, *this; }
    Order& kind(int orderKind) { return m_record->orderKind = orderKind, *this; }
    Order& shares(__int64 volume) { return m_record->volume = volume, *this; }
    Order& time(const std::string& clock) { return m_record->timetag = timeOf(clock), *this; }

    operator std::shared_ptr<quoter::QuoterBase>() const { return m_record; }
    operator std::shared_ptr<quoter::OrderData>() const { return m_record; }

private:
    Order& side(int bsFlag, double price)
    {
        m_record->bsFlag = bsFlag;
        m_record->price = price;
        return *this;
    }

    std::shared_ptr<quoter::OrderData> m_record;
};

inline Order order(__int64 seq)
{
    return Order(seq);
}

// A trade between a buy and a sell order, or a cancel, which has one of the two.
class Trade {
public:
    Trade(int buySeq, int sellSeq, int transKind)
        : m_record(std::make_shared<quoter::TransactionData>())
    {
        m_record->timetag = timeOf("09:30:00");
        m_record->buySeq = buySeq;
        m_record->sellSeq = sellSeq;
        m_record->transKind = transKind;
        m_record->volume = 100;
    }

    Trade& at(double price) { return m_record->price = price, *this; }
    Trade& shares(__int64 volume) { return m_record->volume = volume, *this; }
    Trade& flag(int tradeFlag) { return m_record->tradeFlag = tradeFlag, *this; }
    Trade& time(const std::string& clock) { return m_record->timetag = timeOf(clock), *this; }

    operator std::shared_ptr<quoter::QuoterBase>() const { return m_record; }
    operator std::shared_ptr<quoter::TransactionData>() const { return m_record; }

private:
    std::shared_ptr<quoter::TransactionData> m_record;
};

inline Trade fill(int buySeq, int sellSeq)
{
    return Trade(buySeq, sellSeq, 0);
}

inline Trade cancelOfBuy(int buySeq)
{
    return Trade(buySeq, 0, 3);
}

inline Trade cancelOfSell(int sellSeq)
{
    return Trade(0, sellSeq, 3);
}

// The exchange's order queues at the best prices. A side that is not given has price 0 and no orders.
class BestQueues {
public:
    explicit BestQueues(__int64 timetag)
        : m_record(std::make_shared<quoter::LevelOrderData>())
    {
        m_record->timetag = timetag;
    }

    // The volumes in shares, oldest order first.
    BestQueues& bid(double price, std::vector<int> volumes)
    {
        m_record->bidPrice = price;
        m_record->bidQueue = std::move(volumes);
        return *this;
    }
    BestQueues& ask(double price, std::vector<int> volumes)
    {
        m_record->askPrice = price;
        m_record->askQueue = std::move(volumes);
        return *this;
    }

    operator std::shared_ptr<quoter::QuoterBase>() const { return m_record; }
    operator std::shared_ptr<quoter::LevelOrderData>() const { return m_record; }

private:
    std::shared_ptr<quoter::LevelOrderData> m_record;
};

inline BestQueues bestQueues(const std::string& clock = "09:30:00")
{
    return BestQueues(timeOf(clock));
}

inline BestQueues bestQueuesAt(__int64 timetag)
{
    return BestQueues(timetag);
}

// A batch as it is requested for an instrument.
inline boost::shared_ptr<TC::MetaCacheDataWrapper> batchFor(const std::string& market, const std::string& code,
                                                            Records records)
{
    auto batch = boost::make_shared<TC::MetaCacheDataWrapper>();
    batch->records = std::move(records);
    batch->market = market;
    batch->stockCode = code;
    return batch;
}

} // namespace tests
