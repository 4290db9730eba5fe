#pragma once

#include "indexui/tessimodel/export.h"
#include "utils/int64.h"

#include <QList>

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

// One tick of the list: what was traded between two snapshots.
struct TESSIMODEL_EXPORT TransData {
    int timetag = 0; // seconds since the epoch
    double price = 0;
    int totalVolume = 0; // cumulative volume of the day, low 32 bits
    int volume = 0;      // volume of this tick, in the unit of the stream
    double askPrice = 0; // best ask, or `price` when there is none
    double bidPrice = 0; // best bid, or `price` when there is none
    bool isBuy = true;
    int tradeStatus = 10;

    // Rows of the same second are equal: a search by time finds the second, not the row.
    friend bool operator==(const TransData& a, const TransData& b) { return a.timetag == b.timetag; }
    friend bool operator<(const TransData& a, const TransData& b) { return a.timetag < b.timetag; }
};

// The tick list of one instrument, derived from its snapshots: a row for each snapshot in which the day's volume
// grew, with the volume of that step and its direction.
//
// A panel calls setStock, carries the request of getParams to the data layer, hands the batches to quoterCallBack
// and reads m_datas. Level-1 and level-2 snapshots both do. A plain value without a lock: everything, the reading
// included, happens on one thread at a time. A copy shares the rows until one of the two changes.
//
// Not supported: tick-by-tick trades; corrections, since rows are never changed after they are added.
class TESSIMODEL_EXPORT CModelTransaction {
public:
    CModelTransaction();
    CModelTransaction(const CModelTransaction&) = default;
    CModelTransaction& operator=(const CModelTransaction&) = default;
    ~CModelTransaction(); // as clear()

    // Follows the instrument of a terminal key from now on; an unknown key leaves the model without one. The rows
    // stay: they go with clear() or the next batch of kind 0.
    void setStock(const QString& key);

    // Fills the request for the stream "QUOTERVOL" of the last trading day, open ended. Without an instrument the
    // request stays as it was.
    void getParams(CFormulaParam& param) const;

    // Takes a batch: kind 0 starts the list anew, 3 adds to it, any other is a live push, of which only the last
    // record counts. Records of other types, null ones and those before the day's first trade are dropped. False
    // without an instrument, and for a live push whose snapshot did not count; true for all else, empty batches
    // included.
    bool quoterCallBack(int, int batchKind, const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);

    // Empties the list and brings price tick and last close back to the instrument's. m_inAfterHours stays: a list
    // that is cleared in the after-hours phase goes on treating status 15 as noise.
    void clear();

    // An instrument of the Hong Kong exchange, or any that is open to trading through either Connect.
    bool isHkStock() const;

    std::shared_ptr<ztservice::CInstrumentDetail> m_stock; // the instrument followed, may be null
    double m_priceTick;                                    // 0.001 without an instrument
    double m_lastClose;                                    // DBL_MAX without an instrument
    QList<TransData> m_datas;                              // oldest first
    bool m_updated = false;                                // rows may have changed; the panel takes it back
    bool m_afterHoursType = false;                         // has an after-hours fixed-price phase
    bool m_afterHoursTypeSz = false;                       // the same for Shenzhen's codes
    bool m_isMainland = false;
    bool m_inAfterHours = false; // the first after-hours row of this list has been seen
    bool m_isSgt = false;
    bool m_isHgt = false;
    bool m_isHkMarket = false;

protected:
    // Takes one snapshot into the list. True when it counted, which does not mean that a row was added.
    bool append(const std::shared_ptr<quoter::QuoterBase>& record);

    // Fills a row from a snapshot, all but the volume of the tick and its direction.
    void convert(const std::shared_ptr<quoter::QuoterAllData>& record, TransData& row) const;
    void convert(const std::shared_ptr<quoter::QuoterDepthData>& record, TransData& row) const;

    // Price tick and last close from the instrument.
    void initStockParams();

private:
    void classify();
    template <class Snapshot>
    bool appendSnapshot(const std::shared_ptr<Snapshot>& record);
    bool isAfterHoursNoise(int tradeStatus) const;
    bool entersAfterHours(const TransData& row, const TransData& last) const;
};

} // namespace TC
