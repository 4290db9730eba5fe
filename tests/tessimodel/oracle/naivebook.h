#pragma once

#include "tests/tessimodel/oracle/naivelevel.h"

#include <map>
#include <set>
#include <vector>

namespace tests::oracle {

// What the streams made happen, so that a generator which no longer makes anything happen is found out.
struct Counters {
    int builds = 0;
    int fills = 0;
    int partialFills = 0;
    int cancels = 0;
    int lateOrders = 0; // and repeated ones
    int parkedTaken = 0;
    int forgotten = 0;
    int fadedMarks = 0;
    int readsOfBook = 0; // with at least three levels a side
    int trims = 0;       // that took rows
    int correctedRows = 0;
    int insertedRows = 0;
    int erasedRows = 0;
    int savedRowsShown = 0;
    int queueCopies = 0;
    int ownQueues = 0;
    int afterHoursSteps = 0;
    int auctions = 0;
    int foreignBatches = 0;
    int consumedOrders = 0;
    int snapshotsBeforeTicks = 0; // of a book that is built
};

// The book of an instrument from its ticks, applied one by one.
struct NaiveBook {
    struct Side {
        std::map<int, NaiveLevelPtr> levels; // by price key
        NaiveRows rows;
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
    __int64 forgotten = 0; // trades of sides whose order should have come
    Side bids;
    Side asks;
    Counters* counters = nullptr;

    bool appendOrder(int forStock, const RecordPtr& order, int& flags, bool refresh);
    bool appendTransaction(int forStock, const RecordPtr& trade, int& flags, bool refresh);
    void refreshDecay();
    void clearBook();
    void clearPending();
    void clearAll();
    NaiveLevelPtr getLevel(bool isBid, double price) const;

private:
    bool isForeign(int forStock) const { return stock < 0 || stock != forStock; }
    bool enter(const Record& order, int key, int& flags);
    void offerWaiting(Side& side, NaiveLevel& level, NaiveRow* row, __int64 seq);
    bool trade(Side& side, const RecordPtr& trade, __int64 seq, int& flags);
    void fade(Side& side);
    void count(const NaiveLevel& level, const Record& trade);
};

} // namespace tests::oracle
