#pragma once

#include "tests/tessimodel/oracle/naivesnapshotmodel.h"
#include "tests/tessimodel/oracle/thousand/thousandstreams.h"

#include <map>
#include <utility>

namespace tests::oracle::thousand {

// What the streams made happen beyond what both thousand-level models count.
struct ThousandCounters {
    int records = 0;
    int newBases = 0;
    int keptBases = 0;
    int deltas = 0;
    int pricesTwice = 0;
    int unequalLists = 0;
    int rowsWithDelta = 0;
    int rowsOfOldDelta = 0;
    int quoterRowsWithDelta = 0;
    int readsWithoutRecord = 0;
    int readsWithoutSnapshot = 0;
    int readsWithoutStock = 0;
    int emptyFlags = 0;
    int raisedByTrim = 0;
    int basesFound = 0;
    int firstBases = 0;
    int newerQuotes = 0;
    int nearQuotes = 0;
    int quotesAtLimit = 0;
    int flagsOfSnapshots = 0;
    int handedRows = 0;
};

// The thousand-level model that has its rows from snapshots alone.
class NaiveQuoterThousand : public NaiveSnapshotModel {
public:
    NaiveQuoterThousand(bool suppresses, NaiveManager& keptRows, Counters& shared, ThousandCounters& counted)
        : NaiveSnapshotModel(suppresses, keptRows, shared)
        , m_counted(counted)
    {}

    void callback(const ThousandStep& step);
    bool checkUpdate(NaivePanel& panel, bool byQuoter);
    void getSide(bool isBid, bool byQuoter, NaivePanel& panel);
    bool compareNewerQuote() const;
    __int64 reservedTime(const ThousandStep& step) const;
    NaiveLevelPtr getQueue(bool isBid, double price, const std::vector<__int64>& volumes) const;
    void clear();

    using NaiveSnapshotModel::initStockParams;

    RecordPtr thousand;
    RecordPtr prevThousand;
    __int64 reserved = 0;
    std::map<double, std::pair<int, __int64>> priceDeltas; // delta and time, by price

private:
    void doThousandData(const Records& batch);
    void updatePriceVolDelta();
    std::map<double, int> volumesOf(const Record& record) const;
    void noteStep(int kind, const Records& batch) override;
    void getAll(bool isBid, std::vector<NaiveRowPtr>& rows, NaivePanel& panel);
    void getByQuoter(bool isBid, std::vector<NaiveRowPtr>& rows, NaivePanel& panel);
    int deltaAt(double price) const; // 0 for none that is recent

    ThousandCounters& m_counted;
};

} // namespace tests::oracle::thousand
