#pragma once

#include "tests/tessimodel/oracle/naivebook.h"

#include <cfloat>
#include <deque>
#include <functional>
#include <map>
#include <vector>

// What both thousand-level models have: the instrument, the level-2 snapshots with the step of the day volume, the trim
// of crossed rows, and the rows that the manager keeps. Callbacks queue their work until work() is called, as the
// strand does.
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

class NaiveSnapshotModel {
public:
    NaiveSnapshotModel(bool suppresses, NaiveManager& keptRows, Counters& counted);
    virtual ~NaiveSnapshotModel() = default;

    void setStock(int instrument);
    void work();
    void setNewLoan(bool value) { isNewLoan = value; }

    int stock = -1; // place in instruments(), -1 for none
    double priceTick = 0.001;
    double lastClose = DBL_MAX;
    int volumeUnit = 1;
    bool suppressTickFlags;
    bool continuous = false;
    int loadedHistory = 0;
    int updateFlags = 0;
    int dataReady = 0;
    NaiveRows snapshotAsks;
    NaiveRows snapshotBids;
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

protected:
    using Records = std::vector<RecordPtr>;

    void initStockParams();

    // Queues the work on a batch, which is dropped when it is of another instrument by then.
    void post(const BatchPtr& batch, std::function<void()> task);

    void doQuoter(int kind, const Records& batch);

    // Notes the step of the day volume, and settles `quoter`.
    virtual void noteStep(int kind, const Records& batch) = 0;
    void takeStep(int kind, const Records& batch);

    // The nearest snapshot before the last whose day volume is below that of the last.
    static RecordPtr baseBeforeLast(const Records& batch);

    static void widen(NaivePanel& panel, const NaiveRow& row);

    // True when the rows cross in continuous trading.
    bool trim(NaivePanel& panel);

    void clearShared();

    NaiveManager& m_manager;
    Counters& m_counters;

private:
    void historyStep(const Records& batch);
    void saveAfterHoursStep(const Records& batch);
    void findStep(const Records& batch);
    void liveStep(const Record& last);
    void takeTenLevels(const Record& last);

    std::deque<std::function<void()>> m_tasks;
};

} // namespace tests::oracle
