#pragma once

#include "indexui/tessimodel/cmodeldepththousand_book.h"
#include "indexui/tessimodel/cmodeldepththousand_queue.h"
#include "indexui/tessimodel/export.h"
#include "utils/csingletont.h"
#include "utils/int64.h"

#include <boost/asio/io_service.hpp>
#include <boost/asio/strand.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/thread/recursive_mutex.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <QObject>
#include <QString>

#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quoter {
struct QuoterDepthData;
}

namespace TC {

struct MetaCacheDataWrapper;

namespace detail {
struct RowExtremes;
}

// The order book of one instrument at every price, rebuilt order by order from the exchange's tick orders and trades
// and reconciled with its ten-level snapshots at the moment of reading.
//
// A panel makes a model (or gets one of CDepthThousandModelManager), calls setStock, feeds the three streams to the
// callbacks and polls checkUpdate. The streams are independent: the book is built once the history of both orders
// and trades is in hand, whichever comes last; until then the rows that an earlier view of the instrument left with
// the manager are shown.
//
//     callbacks (data layer)  ->  strand "modulegroup": doEntrust, doTransaction, doQuoter  ->  m_book, m_snapshot...
//     panel                   <-  checkUpdate, getQueue: the book's rows, corrected by a snapshot that is newer
//
// Threads: callbacks, reads, setStock and clear from any thread. Locks are taken in the order model, book, level. The
// posted work holds a plain pointer: whoever destroys the model must first be sure that no task is pending.
//
// Not supported: cancels in the order stream (they must come as trades of transKind 3); orders that come late; a
// second trade between the same two orders.
class TESSIMODEL_EXPORT CModelDepthThousand {
public:
    using Batch = boost::shared_ptr<MetaCacheDataWrapper>;

    // With `suppressTickFlags` live ticks change the book and raise no update: only snapshots do. `modelId` is the
    // manager's key.
    explicit CModelDepthThousand(bool suppressTickFlags = false, int modelId = -1);
    CModelDepthThousand(const CModelDepthThousand&) = delete;
    CModelDepthThousand& operator=(const CModelDepthThousand&) = delete;
    ~CModelDepthThousand(); // as clear()

    // Follows the instrument of a terminal key from now on; an unknown key leaves the model without one. Data of the
    // former instrument stay until clear(). Raises an update when the manager holds rows of the instrument.
    void setStock(const QString& key);

    // Price tick, shares per hand, after-hours phase and last close from the instrument.
    void initStockParams();

    // Take a batch and return at once; the work is done on the strand. Kind 0 replaces the stream's history, 3 adds
    // history, any other is a live push, of which only the last record counts. Batches of another instrument are
    // dropped.
    void entrustCallback(int first, int batchKind, const Batch& batch);
    void transactionCallback(int first, int batchKind, const Batch& batch);
    void quoterCallback(int first, int batchKind, const Batch& batch);

    // Both histories are in and have been worked through.
    bool isDataAllReadly() const;

    // False for a call auction, in which both best prices are the same, and for a snapshot without any; a one-sided
    // book is continuous. `record` is not null.
    bool isContinousStatus(const std::shared_ptr<quoter::QuoterDepthData>& record) const;

    // Takes the last price and the day volume of snapshots in their new-loan form, from the next snapshot on.
    void setNewLoan(bool isNewLoan);

    // False, and nothing is touched, when nothing changed since the last read. Else all rows of both sides by ascending
    // price: the best bid is the last of `bids`, the best ask the first of `asks`. `flags` tells what changed
    // (updateflags.h; 2 is always among them), `lastVolume` is in hands, and `lastPrice` DBL_MAX when there is none.
    //
    // Rows are corrected by a snapshot that is newer than every tick, and a book that crosses in continuous trading is
    // trimmed to the snapshot's limits. The rows are the model's own and go on changing: read them by readLive().
    //
    // `minPrice`, `maxPrice` and `maxAmount` (hands times price) are running extremes that the caller starts; they only
    // widen. Rows that the trim takes away still count.
    bool checkUpdate(int& flags, EntrustList& bids, EntrustList& asks, double& lastPrice, int& lastVolume,
                     double& minPrice, double& maxPrice, double& maxAmount);

    // The orders at a price, empty when the book has no such level. Where a snapshot newer than the level shows another
    // volume, a copy that has been cut or filled up to it; else the book's own level, which goes on changing.
    std::shared_ptr<SingleQueue> getQueue(bool isBid, double price);

    // The instrument's terminal key, empty without one.
    QString getStockKey() const;

    // Leaves the rows with the manager and drops all data. The instrument and the settings stay. What was big is freed
    // on the strand "data_release".
    void clear();

    int m_modelId;
    double m_priceTick;
    double m_lastClose;
    std::atomic<int> m_volumeUnit{1};       // shares per hand: 1, 10 or 100
    mutable boost::recursive_mutex m_mutex; // guards all but the atomic words and the book
    boost::shared_ptr<boost::asio::io_service::strand> m_strand;
    std::shared_ptr<ztservice::CInstrumentDetail> m_stock;
    bool m_suppressTickFlags;
    std::atomic<bool> m_continuous{false};                    // the newest snapshot was of continuous trading
    std::atomic<int> m_loadedHistory{0};                      // 1 trades, 2 orders; set before the work is done
    std::atomic<int> m_updateFlags{0};                        // what checkUpdate has not taken yet
    std::atomic<int> m_dataReady{0};                          // as m_loadedHistory, set after the work
    std::vector<std::shared_ptr<quoter::OrderData>> m_orders; // all of them, as they came
    std::vector<std::shared_ptr<quoter::TransactionData>> m_transactions;
    EntrustRows m_snapshotAsks; // the ten levels of the latest accepted snapshot, in hands
    EntrustRows m_snapshotBids;
    boost::unordered_flat_map<__int64, int> m_dealVolumes; // by order seq, of the trade history only
    EntrustRows m_askRows;                                 // what panels get
    EntrustRows m_bidRows;
    double m_askFloor; // lowest ask of the snapshot, 10000000000 for none
    double m_bidCeiling = 0;
    ThousandBook m_book;
    __int64 m_reserved = 0;
    std::atomic<__int64> m_quoterTimetag{0}; // ms, of the latest accepted snapshot
    std::atomic<double> m_tickLastPrice;     // of the latest trade applied that was no cancel
    std::atomic<int> m_tickLastVolume{0};    // hands; shares for a moment within a history
    double m_quoterLastPrice;
    int m_quoterLastVolume = 0;                        // latest step of the day volume
    __int64 m_quoterVolumeTime = 0;                    // ms, of the snapshot with which the day volume last grew live
    std::shared_ptr<quoter::QuoterDepthData> m_quoter; // base of the next step
    std::atomic<bool> m_isNewLoan{false};
    bool m_hasAfterHours = false; // has an after-hours fixed-price phase
    int m_afterHoursVolume = 0;   // the continuous phase's step, kept while that phase shows its own

protected:
    void doEntrust(int first, int batchKind, const Batch& batch);
    void doTransaction(int first, int batchKind, const Batch& batch);
    void doQuoter(int first, int batchKind, const Batch& batch);

    // The rows of one side as checkUpdate gives them, before the trim.
    void getBids(EntrustList& rows, double& minPrice, double& maxPrice, double& maxAmount);
    void getAsks(EntrustList& rows, double& minPrice, double& maxPrice, double& maxAmount);

private:
    struct ReadSide;

    bool readRows(ReadSide side, EntrustList& rows, detail::RowExtremes extremes);
    bool correctRows(ReadSide side);
    ReadSide bidSide();
    ReadSide askSide();

    // The rows are as the book last gave them: neither corrected by a snapshot nor the manager's.
    bool m_askRowsAreBooks = false;
    bool m_bidRowsAreBooks = false;
};

// Owner of the models made through it, and the cache of the last rows of every instrument: a model that is cleared
// leaves its rows here, and the next one of that instrument shows them until its own histories are in.
//
// Reached by utils::CSingletonT<CDepthThousandModelManager>. Safe from any thread. The cache has no limit and no
// ageing; it is dropped as a whole when the terminal says that trading data changed.
class TESSIMODEL_EXPORT CDepthThousandModelManager : public QObject {
    Q_OBJECT

public:
    CDepthThousandModelManager();
    ~CDepthThousandModelManager() override;

    // A new model under the id, or under the next free one for -1. Empty when the id is taken.
    boost::shared_ptr<CModelDepthThousand> createModel(int id);

    // Forgets the model; it lives on for whoever holds it, and must do so until its posted work is done. An unknown id
    // does nothing.
    void deleteModel(int id);

    // Keeps copies of the rows under the instrument's key, in place of older ones. The row objects are shared.
    void setData(const std::string& key, const EntrustRows& asks, const EntrustRows& bids);
    void setData(const std::string& key, EntrustRows&& asks, EntrustRows&& bids); // takes them over

    // Copies of the rows kept. False, and nothing is touched, when the key is not held for both sides.
    bool getData(const std::string& key, EntrustRows& asks, EntrustRows& bids);
    bool getAsks(const std::string& key, EntrustRows& asks);
    bool getBids(const std::string& key, EntrustRows& bids);

    // Whether the key is held for both sides.
    bool checkData(const std::string& key);

    // Whether there is a manager, of the singleton or not, that is not being taken down.
    static bool exists();

    // Drops the rows of all instruments. Models are left alone.
    void clearDatas();

    boost::recursive_mutex m_modelsMutex; // guards the next two
    boost::recursive_mutex m_dataMutex;   // guards the last two; the mutexes are never held together
    int m_nextModelId = 0;
    std::map<int, boost::shared_ptr<CModelDepthThousand>> m_models;
    std::map<std::string, EntrustRows> m_asksData;
    std::map<std::string, EntrustRows> m_bidsData;

protected slots:
    void slotTradeDataChange(const QString& what);
};

} // namespace TC

namespace utils {
extern template struct TESSIMODEL_EXPORT CSingletonT<TC::CDepthThousandModelManager>;
} // namespace utils
