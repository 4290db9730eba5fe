#pragma once

#include "indexui/tessimodel/export.h"
#include "utils/int64.h"

#include <QVector>

#include <memory>
#include <vector>

class QString;

namespace quoter {
struct QuoterAllData;
struct QuoterBase;
struct QuoterDepthData;
} // namespace quoter

namespace ztservice {
struct CInstrumentDetail;
}

namespace TC {

struct CFormulaParam;

// One level of one side.
struct TESSIMODEL_EXPORT EntrustStatusRow {
    bool used = false; // a snapshot has written the row
    double price = 0;
    int volume = 0; // low 32 bits, in the unit of the stream
    int delta = 0;  // how much more than the state before showed at that price, 0 where it did not show the price
};

// The five or ten best levels of one instrument, with the change at each price since the snapshot before, the volume of
// the latest tick, the last price and the last close.
//
// A panel calls setStock, carries the request of getParams to the data layer, hands the batches to quoterCallBack and
// reads the members. Level-1 snapshots fill five rows of each side, level-2 snapshots ten; rows that are not filled
// keep what they held. The book of the close is kept through the after-hours phase and shown again at its end.
//
// A plain value without a lock: everything, the reading included, happens on one thread at a time. A copy shares rows
// and snapshots until one of the two changes. A snapshot that has no last price yet is given its last close as one: the
// record is changed itself, so that all who hold it see that price.
class TESSIMODEL_EXPORT CModelEntrustStatus {
public:
    static constexpr int kRows = 10; // of each side, always

    CModelEntrustStatus();
    CModelEntrustStatus(const CModelEntrustStatus&) = default;
    CModelEntrustStatus& operator=(const CModelEntrustStatus&) = default;
    ~CModelEntrustStatus() = default;

    // Follows the instrument of a terminal key from now on, with its price step, after-hours types and last close. An
    // unknown key leaves the model without one; the last close then stays. Rows and snapshots stay in either case.
    void setStock(const QString& key);

    // Fills the request for the stream "QUOTER" of the last trading day, open ended. Without an instrument the request
    // stays as it was.
    void getParams(CFormulaParam& param) const;

    // Takes a batch: kinds 0 and 3 are history, of which the last record is shown and the others tell the changes and
    // the latest step of the day volume; any other is a live push, of which only the last record counts. A batch whose
    // last record is no snapshot counts for nothing. Kind 0 forgets the latest step, and clears the model when it is
    // empty. False without an instrument, and true for all else.
    bool quoterCallBack(int, int batchKind, const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);

    // Shows the book of `current` with the changes since `previous`; without a `previous` of the same level, since the
    // rows as they stand. At the end of an after-hours phase (status 23) it is the book and the tick of the close.
    // `tickVolume`, in the unit of the stream, is taken over in any other case, of a `current` that is no snapshot too.
    void connectTickData(const std::shared_ptr<quoter::QuoterBase>& current,
                         const std::shared_ptr<quoter::QuoterBase>& previous, long long tickVolume);

    // Empties rows, prices and snapshots. The instrument, its price step and types, and the choice of setNewLoan stay;
    // its last close goes until a snapshot brings one.
    void clear();

    // m_lastClose, or the instrument's when that is infinite or not a number. DBL_MAX while there is none.
    double getLastClosePrice() const;

    // Whether last price and volume are read in their new-loan form.
    void setNewLoan(bool newLoan);

    std::shared_ptr<ztservice::CInstrumentDetail> m_stock; // the instrument followed, may be null
    bool m_hasAfterHours = false;                          // has an after-hours fixed-price phase
    bool m_hasAfterHoursSz = false;                        // the same for Shenzhen's codes
    double m_lastPrice;
    double m_lastClose;
    double m_priceTick;                  // 0.001 without an instrument
    QVector<EntrustStatusRow> m_bidRows; // best bid first
    QVector<EntrustStatusRow> m_askRows; // best ask last: read from the top, the rows of both sides are the panel's
    __int64 m_tickVolume = 0;            // of the latest step of the day volume, in the unit of the stream
    std::shared_ptr<quoter::QuoterAllData> m_lastAllData;     // latest of level 1
    std::shared_ptr<quoter::QuoterDepthData> m_lastDepthData; // latest of level 2
    std::shared_ptr<quoter::QuoterBase> m_closingData;        // latest of before the after-hours phase
    std::shared_ptr<quoter::QuoterBase> m_closingPrevData;    // the one before it
    int m_afterHoursVolume = 0;                               // tick volume of m_closingData
    bool m_isNewLoan = false;

protected:
    // Fills the rows from `current`, with the changes since `previous`, and takes over last price and last close. The
    // int is not read. The first tells the levels apart: false when `current` is no snapshot, or null. The others are
    // given one.
    bool calc(int, const std::shared_ptr<quoter::QuoterBase>& current,
              const std::shared_ptr<quoter::QuoterBase>& previous);
    void calc(int, const std::shared_ptr<quoter::QuoterAllData>& current,
              const std::shared_ptr<quoter::QuoterAllData>& previous);
    void calc(int, const std::shared_ptr<quoter::QuoterDepthData>& current,
              const std::shared_ptr<quoter::QuoterDepthData>& previous);

private:
    bool isFollowedAfterHours() const;
    bool isCloseShownAt(int tradeStatus) const;
    template <class Snapshot>
    void take(int batchKind, const std::vector<std::shared_ptr<quoter::QuoterBase>>& records,
              const std::shared_ptr<Snapshot>& record, std::shared_ptr<Snapshot>& last);
    template <class Snapshot>
    void takeLive(int batchKind, const std::shared_ptr<Snapshot>& record, std::shared_ptr<Snapshot>& last);
    template <class Snapshot>
    void takeHistory(int batchKind, const std::vector<std::shared_ptr<quoter::QuoterBase>>& records,
                     const std::shared_ptr<Snapshot>& record);
    template <class Snapshot>
    void keepClose(const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);
    void showClose(int batchKind);
    void showRecord(int batchKind, const std::shared_ptr<quoter::QuoterBase>& current,
                    const std::shared_ptr<quoter::QuoterBase>& previous);
    template <class Snapshot>
    void showSnapshot(const std::shared_ptr<Snapshot>& current, const std::shared_ptr<Snapshot>& previous);
};

} // namespace TC
