#pragma once

#include "tests/tessimodel/oracle/queues/naiveorderqueue.h"

#include <map>
#include <set>
#include <vector>

namespace tests::oracle::queues {

// The orders of an instrument at every price, from its ticks one by one.
struct NaiveQueueBook {
    struct Side {
        std::map<int, NaiveOrderQueuePtr> levels; // by price key
        __int64 lastSeq = 0;
        std::map<__int64, std::vector<RecordPtr>> pending; // by the seq that they wait for
        bool dirty = true;
    };

    int stock = -1; // place in instruments()
    double priceTick = 0.001;
    int volumeUnit = 1;
    __int64 lastTimetag = 0;
    std::map<__int64, int> orderPriceKeys;
    std::set<__int64> seenTrades;
    Side bids;
    Side asks;
    Counters* counters = nullptr;

    bool appendOrder(int forStock, const RecordPtr& order, int& flags);
    bool appendTransaction(int forStock, const RecordPtr& trade, int& flags);
    void clearBook();
    void clearPending();
    void clearAll();
    NaiveOrderQueuePtr getLevel(bool isBid, double price) const;

private:
    bool isOurs(int forStock, int& flags) const;
    int keyOf(const Record& order) const;
    void offerWaiting(Side& side, NaiveOrderQueue& level, __int64 seq);
    bool trade(Side& side, const RecordPtr& trade, __int64 seq, int& flags);
};

} // namespace tests::oracle::queues
