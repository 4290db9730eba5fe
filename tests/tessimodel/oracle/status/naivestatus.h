#pragma once

#include "tests/tessimodel/oracle/snapshots/snapshotmarket.h"
#include "tests/tessimodel/oracle/status/statuscounters.h"

#include <array>
#include <cfloat>
#include <memory>
#include <vector>

#include <QString>

namespace quoter {
struct QuoterAllData;
struct QuoterDepthData;
} // namespace quoter

namespace ztservice {
struct CInstrumentDetail;
}

// The book summary once more, as plainly as can be.
namespace tests::oracle::status {

using snapshots::RecordPtr;
using snapshots::Records;

struct NaiveStatusRow {
    bool used = false;
    double price = 0;
    int volume = 0;
    int delta = 0;
};

class NaiveStatus {
public:
    using Side = std::array<NaiveStatusRow, 10>;

    explicit NaiveStatus(StatusCounters& counters)
        : m_counters(&counters)
    {}

    void setStock(const QString& key);
    bool quoterCallBack(int, int batchKind, const Records& records);
    void connectTickData(const RecordPtr& current, const RecordPtr& previous, long long tickVolume);
    void clear();
    double getLastClosePrice() const;
    void setNewLoan(bool newLoan) { m_isNewLoan = newLoan; }
    bool calc(int, const RecordPtr& current, const RecordPtr& previous);

    std::shared_ptr<ztservice::CInstrumentDetail> m_stock;
    bool m_hasAfterHours = false;
    bool m_hasAfterHoursSz = false;
    double m_lastPrice = DBL_MAX;
    double m_lastClose = DBL_MAX;
    double m_priceTick = 0.001;
    Side m_bidRows;
    Side m_askRows;
    __int64 m_tickVolume = 0;
    std::shared_ptr<quoter::QuoterAllData> m_lastAllData;
    std::shared_ptr<quoter::QuoterDepthData> m_lastDepthData;
    RecordPtr m_closingData;
    RecordPtr m_closingPrevData;
    int m_afterHoursVolume = 0;
    bool m_isNewLoan = false;

private:
    bool hasPhase() const { return m_hasAfterHours || m_hasAfterHoursSz; }
    void showClose(int batchKind);
    void compare(Side& rows, const Side& before, std::size_t first, std::size_t end);
    template <class Snapshot>
    void takePrices(const std::shared_ptr<Snapshot>& current);
    template <class Snapshot>
    void fill(const std::shared_ptr<Snapshot>& current, const std::shared_ptr<Snapshot>& previous);
    template <class Snapshot>
    void live(int batchKind, const std::shared_ptr<Snapshot>& record, std::shared_ptr<Snapshot>& last);
    template <class Snapshot>
    void history(int batchKind, const Records& records, const std::shared_ptr<Snapshot>& record,
                 std::shared_ptr<Snapshot>& last);
    template <class Snapshot>
    void findClosing(const Records& records);
    template <class Snapshot>
    void findStep(const Records& records, const std::shared_ptr<Snapshot>& record);
    template <class Snapshot>
    __int64 volumeOf(const std::shared_ptr<Snapshot>& record) const;

    StatusCounters* m_counters;
};

} // namespace tests::oracle::status
