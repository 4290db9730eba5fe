#pragma once

#include "tests/tessimodel/oracle/naivelevel.h"

#include <map>
#include <memory>
#include <vector>

namespace tests::oracle::queues {

// What the streams made happen, so that a generator which no longer makes anything happen is found out.
struct Counters {
    int builds = 0;
    int fills = 0;
    int partialFills = 0;
    int overfills = 0; // of more than the order had left
    int cancels = 0;
    int olderGone = 0;  // fills that took older orders with them
    int passedOver = 0; // fills of an order between those of a level
    int ranOff = 0;
    int deadWithOrders = 0;
    int lateOrders = 0; // and repeated ones
    int parkedTaken = 0;
    int parked = 0;
    int lost = 0; // trades of sides whose order should have come
    int seenTrades = 0;
    int consumedOrders = 0;
    int skippedTrades = 0; // of consumed orders only
    int silentTicks = 0;
    int otherMarkets = 0;
    int stoppedBatches = 0;
    int auctions = 0;
    int oldSnapshots = 0;
    int refusedQueues = 0;
    int pairs = 0;
    int filledRows = 0;
    int assignedRows = 0;
    int emptiedLists = 0;
    int keptLists = 0;
    int levelsFound = 0;
};

// The orders at one price, in shares.
struct NaiveOrderQueue {
    std::map<__int64, std::shared_ptr<NaiveQuote>> quotes;
    bool valid = false;
    bool isBid = true;
    double price = 0;
    __int64 volume = 0;
    int count = 0;
    int queueVolume = 0;

    bool appendQuote(const Record& order);
    bool dealQuote(const Record& trade, Counters& counters);
    void assignQueue(const std::vector<int>& volumes);

private:
    void takeAway(std::map<__int64, std::shared_ptr<NaiveQuote>>::iterator quote);
    bool cancel(__int64 seq);
    bool fill(const Record& trade, __int64 seq, Counters& counters);
};

using NaiveOrderQueuePtr = std::shared_ptr<NaiveOrderQueue>;

} // namespace tests::oracle::queues
