#pragma once

#include "tests/tessimodel/oracle/naivesnapshotmodel.h"

#include <map>
#include <vector>

namespace tests::oracle {

// The model around the naive book: histories, and reading.
class NaiveModel : public NaiveSnapshotModel {
public:
    using NaiveSnapshotModel::NaiveSnapshotModel;

    void callback(const Step& step);
    bool checkUpdate(NaivePanel& panel);
    void getSide(bool isBid, NaivePanel& panel);
    NaiveLevelPtr getQueue(bool isBid, double price);
    void clear();

    std::vector<RecordPtr> orders;
    std::vector<RecordPtr> transactions;
    std::map<__int64, int> dealVolumes;

private:
    // Ticks.
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

    void noteStep(int kind, const Records& batch) override;

    // Reading.
    bool readRows(bool isBid, std::vector<NaiveRowPtr>& rows, NaivePanel& panel);
    bool correctRows(bool isBid);
    void correctRow(bool isBid, NaiveRow& row, const NaiveRow& snapshot);
    void eraseBidsOutside(int lowKey, int highKey);
    void eraseAsksOutside(int lowKey, int highKey);
};

} // namespace tests::oracle
