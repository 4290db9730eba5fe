#pragma once

#include "indexui/tessimodel/cmodeldepththousand_book.h"
#include "indexui/tessimodel/cmodeldepththousand_queue.h"
#include "indexui/tessimodel/export.h"
#include "utils/int64.h"

#include <boost/asio/io_service.hpp>
#include <boost/asio/strand.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/thread/recursive_mutex.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <QMap>
#include <QPair>
#include <QString>

#include <atomic>
#include <memory>
#include <vector>

namespace quoter {
struct LevelThousandData;
struct QuoterDepthData;
} // namespace quoter

namespace TC {

struct MetaCacheDataWrapper;

// The order book of one instrument at every price as CModelDepthThousand gives it, from the exchange's thousand-level
// snapshot instead of from ticks: for markets and subscriptions without them.
//
// A panel makes a model, calls setStock, feeds the thousand-level and the level-2 snapshots to the callbacks and polls
// checkUpdate. No book is built: rows are made afresh from the latest record with each read, and what changed at a
// price comes from comparing it with a record of at least a second before.
//
//     callbacks (data layer)  ->  strand "modulegroup": doThousandData  ->  m_thousand, m_priceDeltas
//                                                       doQuoter        ->  m_quoter..., the limits for the trim
//     panel                   <-  checkUpdate: all levels, or the ten of a level-2 snapshot
//
// Threads: callbacks, reads, setStock and clear from any thread. The posted work holds a plain pointer: whoever
// destroys the model must first be sure that no task is pending.
class TESSIMODEL_EXPORT CModelQuoterDepthThousand {
public:
    using Batch = boost::shared_ptr<MetaCacheDataWrapper>;
    using PriceDelta = QPair<int, __int64>; // hands before minus hands after; ms of the record that showed it

    explicit CModelQuoterDepthThousand(bool suppressTickFlags = false, int modelId = -1);
    CModelQuoterDepthThousand(const CModelQuoterDepthThousand&) = delete;
    CModelQuoterDepthThousand& operator=(const CModelQuoterDepthThousand&) = delete;
    ~CModelQuoterDepthThousand(); // as clear()

    // Follows the instrument of a terminal key from now on; an unknown key leaves the model without one. Data of the
    // former instrument stay until clear(). Raises an update when the manager of the tick-built books holds rows of the
    // instrument; it is told with the first record, and those rows are not shown here.
    void setStock(const QString& key);

    // Price tick, shares per hand, after-hours phase and last close from the instrument.
    void initStockParams();

    // Take a batch and return at once; the work is done on the strand. Only the last record of a batch counts, and
    // batches of another instrument are dropped. A thousand-level record counts whatever its time and the kind of its
    // batch; a level-2 snapshot when it is newer than the last one taken and of continuous trading, and the kind says
    // how the step of the day volume is found.
    void ThousandDataCallback(int first, int batchKind, const Batch& batch);
    void quoterCallback(int first, int batchKind, const Batch& batch);

    // False for a call auction, in which both best prices are the same, and for a snapshot without any; a one-sided
    // book is continuous. `record` is not null.
    bool isContinousStatus(const std::shared_ptr<quoter::QuoterDepthData>& record) const;

    // Takes the last price and the day volume of snapshots in their new-loan form, from the next snapshot on.
    void setNewLoan(bool isNewLoan);

    // False, and nothing is touched, while no thousand-level record is held; else true, changed or not. All rows of
    // both sides by ascending price: the best bid is the last of `bids`, the best ask the first of `asks`. With
    // `byQuoter` the ten levels of the level-2 snapshot with which the day volume last grew instead, those without a
    // price included, and none without a snapshot. The rows are new ones, the caller's own; those of a side share their
    // memory. Without an instrument there are no new rows: the lists stay as they are, but for the trim.
    //
    // A row's `delta` is what its price had less, in hands, than about a second before, so that growth is negative: the
    // opposite sign to the tick-built book. It stands for less than 3000 ms of the records' time.
    //
    // Rows that cross in continuous trading are trimmed to the limits of the latest level-2 snapshot. `flags` tells
    // what changed (updateflags.h) and may be 0. `lastPrice` and `lastVolume` are the level-2 snapshots'; the extremes
    // are as with CModelDepthThousand.
    bool checkUpdate(int& flags, EntrustList& bids, EntrustList& asks, double& lastPrice, int& lastVolume,
                     double& minPrice, double& maxPrice, double& maxAmount, bool byQuoter);

    // Whether the level-2 snapshots are more than ten seconds ahead of the time in m_reserved. False while that is 0,
    // and nothing here sets it.
    bool compareNewerQuote() const;

    // A queue of orders of these sizes, in shares, oldest first, with their positions from 0 as seqs. For sizes that
    // the caller got elsewhere; the model has none.
    std::shared_ptr<SingleQueue> getQueue(bool isBid, double price, const std::vector<__int64>& volumes) const;

    // The instrument's terminal key, empty without one.
    QString getStockKey() const;

    // Drops all data and raises kUpdateRebuilt, which is told with the next record. The instrument and the settings
    // stay.
    void clear();

    int m_modelId;
    double m_priceTick;
    double m_lastClose;
    int m_volumeUnit = 1;                   // shares per hand: 1, 10 or 100
    mutable boost::recursive_mutex m_mutex; // guards all but the atomic words and the book
    boost::shared_ptr<boost::asio::io_service::strand> m_strand;
    std::shared_ptr<ztservice::CInstrumentDetail> m_stock;
    bool m_suppressTickFlags;
    std::atomic<bool> m_continuous{false}; // the newest level-2 snapshot was of continuous trading
    bool m_hasAfterHours = false;          // has an after-hours fixed-price phase
    int m_afterHoursVolume = 0;            // the continuous phase's step, kept while that phase shows its own
    std::atomic<int> m_loadedHistory{0};   // stays 0: there are no ticks
    std::atomic<int> m_updateFlags{0};     // what checkUpdate has not taken yet
    std::atomic<int> m_dataReady{0};       // stays 0
    std::vector<std::shared_ptr<quoter::OrderData>> m_orders; // stays empty, as the next one does
    std::vector<std::shared_ptr<quoter::TransactionData>> m_transactions;
    EntrustRows m_snapshotAsks; // the ten levels of the latest accepted level-2 snapshot, in hands
    EntrustRows m_snapshotBids;
    boost::unordered_flat_map<__int64, int> m_dealVolumes; // stays empty, as the next two do
    EntrustRows m_askRows;
    EntrustRows m_bidRows;
    double m_askFloor; // lowest ask of the level-2 snapshot, 10000000000 for none
    double m_bidCeiling = 0;
    ThousandBook m_book;                     // never fed
    __int64 m_reserved = 0;                  // ms, what compareNewerQuote compares with
    std::atomic<__int64> m_quoterTimetag{0}; // ms, of the latest accepted level-2 snapshot
    std::atomic<double> m_tickLastPrice;     // stays DBL_MAX
    std::atomic<int> m_tickLastVolume{0};    // stays 0
    double m_quoterLastPrice;
    int m_quoterLastVolume = 0;                        // latest step of the day volume
    int m_quoterVolumeTime = 0;                        // ms, low 32 bits on purpose: when the day volume last grew live
    std::shared_ptr<quoter::QuoterDepthData> m_quoter; // base of the next step
    std::shared_ptr<quoter::LevelThousandData> m_thousand;     // the latest one
    std::shared_ptr<quoter::LevelThousandData> m_prevThousand; // what it is compared with
    std::atomic<bool> m_isNewLoan{false};
    QMap<double, PriceDelta> m_priceDeltas; // by price, the latest change; never shrinks until clear()

protected:
    void doThousandData(int first, int batchKind, const Batch& batch);
    void doQuoter(int first, int batchKind, const Batch& batch);

    // Enters what changed from m_prevThousand to m_thousand. The caller holds m_mutex.
    void updatePriceVolDelta();

    // The rows of one side as checkUpdate gives them, before the trim: of all levels, and of the level-2 snapshot.
    void getBids(EntrustList& rows, double& minPrice, double& maxPrice, double& maxAmount);
    void getAsks(EntrustList& rows, double& minPrice, double& maxPrice, double& maxAmount);
    void getBidsByQuoter(EntrustList& rows, double& minPrice, double& maxPrice, double& maxAmount);
    void getAsksByQuoter(EntrustList& rows, double& minPrice, double& maxPrice, double& maxAmount);
};

} // namespace TC
