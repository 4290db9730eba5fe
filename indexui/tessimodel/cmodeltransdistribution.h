#pragma once

#include "indexui/tessimodel/export.h"

#include <boost/function.hpp>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QString>

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

namespace quoter {
struct QuoterBase;
}

namespace se {
struct RPCFormulaMetaResult;
struct RPCFormulaResult;
} // namespace se

namespace ztservice {
struct CInstrumentDetail;
}

namespace TC {

struct CFormulaParam;

namespace detail {
class HistoryThreads;
}

// One price of the distribution. Volumes wrap in 32 bits.
struct TESSIMODEL_EXPORT TransDistributionPrice {
    double price = 0;  // of the first tick of the row; ticks within half a price step of it belong to the row too
    int buyVolume = 0; // in the unit of the stream
    int sellVolume = 0;
    int totalVolume = 0; // of both
};

// How the day's volume of one instrument is distributed over prices, by ticks that are derived from its snapshots.
//
// A panel calls setStock, carries the request of getParams to the data layer and hands the batches to quoterCallBack,
// all on one thread. A history is worked through on a thread of its own; while one runs, init() is false. The panel
// reads the lists on sigRedraw, on the thread of the calls and only while init() is true; another thread locks m_mutex
// to read them.
//
// What is called before a history thread has got the lock goes ahead of it: a live record opens the day, a new
// instrument takes over the records of the old one. Wait for init() in between.
//
// The owner destroys the model only while init() is true; the destructor then waits for signals that are on their way.
// A slot that a history thread runs or waits for, connected directly or blocking, must neither destroy the model nor
// wait for its owner.
class TESSIMODEL_EXPORT CModelTransDistribution : public QObject {
    Q_OBJECT

public:
    // One tick: what was traded between two snapshots.
    struct TESSIMODEL_EXPORT TransDistributionData final {
        double price = 0;
        int totalVolume = 0; // cumulative volume of the day, low 32 bits
        int volume = 0;      // of this tick, in the unit of the stream
        bool isBuy = false;

        // A list asks for each tick anew; they come from blocks of many.
        static void* operator new(std::size_t size);
        static void* operator new(std::size_t, void* place) noexcept { return place; }
        static void operator delete(void* tick) noexcept;
    };

    CModelTransDistribution();
    ~CModelTransDistribution() override;

    // True while no history is being worked through.
    bool init() const;

    // Follows the instrument of a terminal key from now on; an unknown key leaves the model without one. The lists
    // stay. Waits for a history that is being worked through.
    void setStock(const QString& key);

    // Fills the request for the stream "QUOTERVOL" of the last trading day, open ended. Without an instrument the
    // request stays as it was.
    void getParams(CFormulaParam& param) const;

    // Takes a batch. Kind 0 empties the lists and takes all records on a new thread, 3 takes them on top on a new
    // thread; threads run one at a time, in no certain order. Of kinds 1 and 2 the last record counts, at once. Other
    // kinds change nothing. Kinds 0, 1 and 2 wait for a history that is being worked through. Each call ends with
    // sigRedraw, and so does each thread; without an instrument the batch is dropped and nothing signalled. Throws what
    // the start of a thread throws; init() is then false until another history is done.
    void quoterCallBack(int, int batchKind, const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);

    // Empties all, when the history that is being worked through is in the lists. Instrument and date provider stay.
    void clear();

    std::shared_ptr<ztservice::CInstrumentDetail> m_stock; // the instrument followed, may be null
    bool m_isShSz = false;                                 // of market "SH" or "SZ", for the panel
    std::atomic<int> m_maxVolume = 0;                      // largest totalVolume of a row
    std::atomic<int> m_totalVolume = 0;                    // of all ticks
    QList<TransDistributionData> m_ticks;                  // oldest first
    QList<TransDistributionPrice> m_prices;                // highest price first
    // The date whose last close tells the direction of the first tick; without it that is a sell. To be assigned before
    // the first batch. Called under m_mutex and on history threads too, so it must not wait for the panel.
    boost::function<int()> m_dateProvider;
    bool m_hasAfterHours = false;   // has an after-hours fixed-price phase, whose snapshots are left out
    bool m_hasAfterHoursSz = false; // the same for Shenzhen's codes
    QString m_title;                // the panel's own
    bool m_titleSet = false;
    QList<TransDistributionData> m_pending; // ticks that calc adds at its end; not under m_mutex
    std::atomic<bool> m_ready = true;
    mutable QMutex m_mutex; // recursive; guards the lists and what setStock sets

signals:
    void sigRedraw(); // the data may have changed; from the thread that changed them

protected:
    // What a history thread does, and in the end it makes the model ready. Not to be called while one is at work.
    void quoterCallBackThread(const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);

    // Takes one snapshot, or one tick, into the lists, by the price step that the instrument had as the batch came.
    // Under m_mutex.
    void processData(const std::shared_ptr<quoter::QuoterBase>& record);
    void processData(TransDistributionData& tick);

    // Takes a computed series of prices and cumulative volumes, and behind it the pending ticks, which stay pending.
    // Rows that the series claims and does not have are left out. Locks m_mutex, and signals nothing.
    void calc(const se::RPCFormulaMetaResult& meta, const se::RPCFormulaResult& result, const QString&, int,
              const QString&);

private:
    template <class Snapshot>
    void processSnapshot(const Snapshot& record);
    void startHistory(const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);
    void readPriceStep();
    bool isIndexLike() const;
    template <class Stock>
    void openDay(TransDistributionData& tick, const Stock& stock) const;
    void addToRow(const TransDistributionData& tick);

    bool m_isOrdered = true;    // no row of m_prices has a price that is no number
    double m_halfStep = 0.0005; // half the price step: prices within it share a row
    std::shared_ptr<detail::HistoryThreads> m_threads;
};

} // namespace TC
