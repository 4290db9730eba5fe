#pragma once

#include "tests/tessimodel/oracle/queues/naivequeuebook.h"
#include "tests/tessimodel/oracle/queues/queuestreams.h"

#include <array>
#include <cfloat>
#include <deque>
#include <functional>

namespace tests::oracle::queues {

// The model of the order queues around the naive book. Callbacks queue their work until work() is called.
class NaiveQueueModel {
public:
    using Rows = std::array<NaiveOrderQueuePtr, 10>; // what is in the slots; nobody counts them
    using List = std::vector<NaiveOrderQueuePtr>;

    NaiveQueueModel(bool suppresses, Counters& counted);

    void setStock(int instrument);
    void initStockParams();
    void callback(const ModelStep& step);
    void work();
    bool checkUpdate(int& flags, List& bids);
    void getBids(List& list);
    void clear();

    int stock = -1; // place in instruments(), -1 for none
    double priceTick = 0.001;
    double lastClose = DBL_MAX;
    int volumeUnit = 1;
    bool suppressTickFlags;
    bool continuous = false;
    int loadedHistory = 0;
    int updateFlags = 0;
    std::map<__int64, int> dealVolumes;
    std::vector<RecordPtr> orders;
    std::vector<RecordPtr> transactions;
    Rows bids;
    Rows asks;
    NaiveQueueBook book;
    __int64 rawTimetag = 0;
    RecordPtr quoter;
    RecordPtr levelOrder;

private:
    using Records = std::vector<RecordPtr>;

    bool hasTicks() const; // of market "SZ"
    void doEntrust(int kind, const Records& batch);
    void doTransaction(int kind, const Records& batch);
    void doQueue(const Records& batch);
    void doQuoter(const Records& batch);
    void applyLive(const RecordPtr& tick);
    void completeWithOrders(int kind, const Records& batch);
    void completeWithTrades(int kind, const Records& batch);
    void noteDealt(const Record& trade);
    bool isConsumed(const Record& order) const;

    // False when the book is of another instrument, which ends the batch.
    bool apply(const RecordPtr& tick);

    void updateRaw();
    NaiveOrderQueuePtr rowOf(bool isBid, std::size_t level) const;

    Counters& m_counters;
    std::deque<std::function<void()>> m_tasks;
};

} // namespace tests::oracle::queues
