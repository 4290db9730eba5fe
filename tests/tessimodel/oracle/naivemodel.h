#pragma once

#include "tests/tessimodel/oracle/naivebook.h"

#include <cfloat>
#include <deque>
#include <functional>
#include <map>
#include <vector>

// The model around the naive book: histories, snapshots, reading, and the rows that the manager keeps. Callbacks queue
// their work until work() is called, as the strand does.
namespace tests::oracle {

struct NaiveManager {
    struct Saved {
        NaiveRows asks;
        NaiveRows bids;
    };
    std::map<int, Saved> saved; // by place in instruments()
};

// What a panel has from its reads; what a read leaves alone stays.
struct NaivePanel {
    int flags = 0;
    std::vector<NaiveRowPtr> bids;
    std::vector<NaiveRowPtr> asks;
    double lastPrice = 0;
    int lastVolume = 0;
    double minPrice = DBL_MAX;
    double maxPrice = -DBL_MAX;
    double maxAmount = 0;
};

class NaiveModel {
public:
    NaiveModel(bool suppresses, NaiveManager& keptRows, Counters& counted);

    void setStock(int instrument);
    void callback(const Step& step);
    void work();
    void setNewLoan(bool value) { isNewLoan = value; }
    bool checkUpdate(NaivePanel& panel);
    void getSide(bool isBid, NaivePanel& panel);
    NaiveLevelPtr getQueue(bool isBid, double price);
    void clear();

    int stock = -1; // place in instruments(), -1 for none
    double priceTick = 0.001;
    double lastClose = DBL_MAX;
    int volumeUnit = 1;
    bool suppressTickFlags;
    bool continuous = false;
    int loadedHistory = 0;
    int updateFlags = 0;
    int dataReady = 0;
    std::vector<RecordPtr> orders;
    std::vector<RecordPtr> transactions;
    NaiveRows snapshotAsks;
    NaiveRows snapshotBids;
    std::map<__int64, int> dealVolumes;
    NaiveRows askRows;
    NaiveRows bidRows;
    double askFloor = 10000000000.0;
    double bidCeiling = 0;
    NaiveBook book;
    __int64 quoterTimetag = 0;
    double tickLastPrice = DBL_MAX;
    int tickLastVolume = 0;
    double quoterLastPrice = DBL_MAX;
    int quoterLastVolume = 0;
    __int64 quoterVolumeTime = 0;
    RecordPtr quoter;
    bool isNewLoan = false;
    bool hasAfterHours = false;
    int afterHoursVolume = 0;

private:
    void initStockParams();

    // Ticks.
    bool isOurs(const BatchPtr& batch) const;
    void doEntrust(int kind, const BatchPtr& batch);
    void doTransaction(int kind, const BatchPtr& batch);
    void liveOrder(const RecordPtr& order);
    void liveTrade(const RecordPtr& trade);
    void takeOrderHistory(int kind, const std::vector<RecordPtr>& batch);
    void buildWithTrades(int kind, const std::vector<RecordPtr>& batch);
    bool isDealtAway(const Record& order) const;
    void offerHistoric(const RecordPtr& trade);
    void addDealt(int seq, int amount);
    void tickVolumeToHands();

    // Snapshots.
    void doQuoter(int kind, const BatchPtr& batch);
    void historyStep(const std::vector<RecordPtr>& batch);
    void saveAfterHoursStep(const std::vector<RecordPtr>& batch);
    void findStep(const std::vector<RecordPtr>& batch);
    void liveStep(const Record& last);
    void settleQuoter(const std::vector<RecordPtr>& batch);
    void takeTenLevels(const Record& last);

    // Reading.
    bool readRows(bool isBid, std::vector<NaiveRowPtr>& rows, NaivePanel& panel);
    bool correctRows(bool isBid);
    void correctRow(bool isBid, NaiveRow& row, const NaiveRow& snapshot);
    void eraseBidsOutside(int lowKey, int highKey);
    void eraseAsksOutside(int lowKey, int highKey);
    void trim(NaivePanel& panel);

    NaiveManager& m_manager;
    Counters& m_counters;
    std::deque<std::function<void()>> m_tasks;
};

} // namespace tests::oracle
