#pragma once

#include "indexui/tessimodel/depthfilter.h"
#include "indexui/tessimodel/detail/dayclock.h"
#include "indexui/tessimodel/detail/recursivelock.h"
#include "indexui/tessimodel/detail/rowpool.h"
#include "indexui/tessimodel/detail/seqhash.h"
#include "indexui/tessimodel/export.h"
#include "indexui/tessimodel/liveread.h"
#include "utils/int64.h"

#include <boost/asio/io_service.hpp>
#include <boost/asio/strand.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/thread/recursive_mutex.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <QList>
#include <QString>

#include <atomic>
#include <cstddef>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace quoter {
struct OrderData;
struct QuoterBase;
struct QuoterDepthData;
struct TransactionData;
} // namespace quoter

namespace ztservice {
struct CInstrumentDetail;
}

namespace TC {

struct CFormulaParam;
struct MetaCacheDataWrapper;
struct TransData;

namespace detail {
struct TradeSide;
}

// One tick trade as a row of the trade list. Once it is in the list only the two next-indices change, when a later row
// of the same order comes. Read these two, or the whole row, by readLive (liveread.h); a plain copy of a row is a race.
struct TESSIMODEL_EXPORT DepthTransData {
    __int64 time = 0; // seconds since the epoch
    double price = 0;
    int volume = 0; // shares, low 32 bits
    int hands = 0;  // of these, at least 1
    int sellSeq = 0;
    int buySeq = 0;
    int prevBuyIndex = -1; // rows before and after this one of the same buy order
    int nextBuyIndex = -1;
    int prevSellIndex = -1;
    int nextSellIndex = -1;
    short sellRun = 0; // directly preceding rows of the same sell order; wraps
    short buyRun = 0;
    int sellRunHands = 0; // hands of that run with this row; 0 for a row that came while none had passed the filter
    int buyRunHands = 0;
    int tickDirection = 0; // 1 above the row before, -1 below, 0 at its price
    int transKind = 0;
    int tradeFlag = 0;      // as in quoter::TransactionData
    bool isUp = true;       // last direction of the price that was not 0
    __int64 fullVolume = 0; // shares
};

inline DepthTransData readLive(const DepthTransData& row)
{
    return {.time = row.time,
            .price = row.price,
            .volume = row.volume,
            .hands = row.hands,
            .sellSeq = row.sellSeq,
            .buySeq = row.buySeq,
            .prevBuyIndex = row.prevBuyIndex,
            .nextBuyIndex = readLive(row.nextBuyIndex),
            .prevSellIndex = row.prevSellIndex,
            .nextSellIndex = readLive(row.nextSellIndex),
            .sellRun = row.sellRun,
            .buyRun = row.buyRun,
            .sellRunHands = row.sellRunHands,
            .buyRunHands = row.buyRunHands,
            .tickDirection = row.tickDirection,
            .transKind = row.transKind,
            .tradeFlag = row.tradeFlag,
            .isUp = row.isUp,
            .fullVolume = row.fullVolume};
}

// An order of a kind that carries no usable price. False for an empty pointer.
TESSIMODEL_EXPORT bool isOrderSpecial(const std::shared_ptr<quoter::OrderData>& order);

// The name of the kind for a panel, also for fund orders, which are not special. Empty for all other kinds and for an
// empty pointer.
TESSIMODEL_EXPORT QString getOrderSpecialName(const std::shared_ptr<quoter::OrderData>& order);

// The day's tick trades of one instrument as rows of a panel, each chained to the other rows of its buy and its sell
// order, and matched to the snapshot that first contained it.
//
// Trades carry the time of the exchange's matching engine, snapshots that of the moment when they were taken, and
// neither tells which trades a snapshot contains. tryMatch works it out by volume: from the first row that no snapshot
// has yet, it looks for the row at the snapshot's last price with which the running hands come nearest to the growth
// of the day's volume.
//
//     rows       0   1   2 | 3   4 | 5   6   7         m_seqPairs  09:30:03 -> (0, 2)
//     snapshots            A       B                               09:30:06 -> (3, 4)
//                                                                  09:30:09 -> (5, 7), open: of a snapshot C to come
//
// A panel makes a model, calls setStock, carries the request of getParams to the data layer, feeds the three streams to
// the callbacks, and reads when m_changed is up; it lowers the flag itself. Live trades that come before the trade
// history wait for it and follow its rows.
//
// Indices are positions among the rows that pass the filter (m_filteredRows). Chains and the minute index number a row
// by how many rows had passed when it came: while a filter refuses rows these numbers and the positions part ways, and
// a change of the filter renumbers neither them nor the pairs.
//
// Threads: callbacks, reads, setStock, setFilterParam and clear from any thread. The callbacks post to the strand
// "modulegroup" and keep the model alive until the work is done; the model must be held by a boost::shared_ptr.
class TESSIMODEL_EXPORT CModelDepthTransaction : public boost::enable_shared_from_this<CModelDepthTransaction> {
public:
    using Batch = boost::shared_ptr<MetaCacheDataWrapper>;
    using Row = boost::shared_ptr<DepthTransData>;
    using SeqPair = std::pair<int, int>; // first and last index, both included; (-1, -1) for none
    using Chains = boost::unordered_flat_map<int, std::vector<int>, detail::SeqHash>;

    CModelDepthTransaction();
    CModelDepthTransaction(const CModelDepthTransaction&) = delete;
    CModelDepthTransaction& operator=(const CModelDepthTransaction&) = delete;
    ~CModelDepthTransaction(); // as clear()

    // Follows the instrument of a terminal key from now on; an unknown key leaves the model without one. The rows of
    // the former instrument stay until clear().
    void setStock(const QString& key);

    // Types, price tick, shares per hand and last close from the instrument.
    void initStockParams();

    // Fills the request for the stream "QUOTERVOL" of the last trading day, open ended. Without an instrument the
    // request stays as it was.
    void getParams(CFormulaParam& param) const;

    // Take a batch and return at once; the work is done on the strand. Kind 0 replaces the stream's data, 3 adds
    // history, any other is a live push, of which only the last record counts. Batches of another instrument and
    // records of other types are dropped. Of the snapshots only those are kept in which the day's volume grew.
    void entrustCallback(int first, int batchKind, const Batch& batch);
    void transactionCallback(int first, int batchKind, const Batch& batch);
    void quoterCallback(int first, int batchKind, const Batch& batch);

    // Filters the rows anew. Raises no changed flag: the caller knows.
    void setFilterParam(SDepthFilterParam& param);

    // A row by its index. Empty out of range.
    Row getData(int index) const;

    // The rows of the snapshot of that second. The last pair may be open: of rows whose snapshot is not matched yet.
    SeqPair find(int second) const;

    // forward: the last row at or before the second, 0 when even the first row is later.
    // Else: the first row at or after it. -1 when all rows are earlier, unless the last is of just that second.
    int find(int second, bool forward) const;

    // For a row of the tick list that is newer than the snapshots here: the latest rows that make up its volume, as
    // far as no snapshot has them. False when there are none, or when the row is not newer.
    bool tryFind(const TransData* tick, SeqPair& rows) const;

    // How many rows up to and including this one have its second in an unbroken run. 1 out of range.
    int tracebackSeq(int index) const;

    // A tick order. Empty when it is not known.
    std::shared_ptr<quoter::OrderData> getOrder(__int64 seq) const;

    // The size, in hands, of the row's buy or sell order: as the order says; without it, what its chain of rows has
    // traded so far. -1 for an empty pointer.
    int getEntrustVolume(const Row& row, bool isBuy) const;

    // Drops all data. Instrument and filter stay. What was big is freed on the strand "data_release", the snapshots
    // too, so that it costs the caller the same after any day. In the middle of a history it leaves the part behind it:
    // ask for the history anew.
    void clear();

    // Empty the data of one stream; the pairs go with trades and with snapshots. Snapshots are freed at once.
    void clearEntrusts();
    void clearQuotes();
    void clearTransactions();

    double m_priceTick;
    double m_lastClose;
    int m_volumeUnit = 1;                   // shares per hand: 1, 10 or 100
    int m_rowCount = 0;                     // of m_filteredRows; the number of the next row
    std::atomic<bool> m_changed{false};     // rows or pairs changed; raised here, lowered by the panel
    mutable boost::recursive_mutex m_mutex; // guards all but the atomic words and the filter
    boost::shared_ptr<boost::asio::io_service::strand> m_strand;
    std::shared_ptr<ztservice::CInstrumentDetail> m_stock;
    bool m_isType277 = false; // either type has an after-hours phase, in which the day's volume may start anew
    bool m_isType10006 = false;
    std::atomic<bool> m_historyLoaded{false}; // live trades no longer wait
    QList<Row> m_rows;                        // in the order in which the trades came
    QList<Row> m_filteredRows;
    std::map<__int64, std::shared_ptr<quoter::OrderData>> m_orders; // by seq
    QList<std::shared_ptr<quoter::QuoterDepthData>> m_quotes;       // kept snapshots
    std::vector<std::shared_ptr<quoter::TransactionData>> m_pendingTransactions;
    int m_lastMatchedQuote = -1;       // in m_quotes
    std::map<int, SeqPair> m_seqPairs; // by the snapshot's second
    Chains m_buyChains;                // row numbers by order seq
    Chains m_sellChains;
    std::map<int, int> m_minuteIndex; // first row number by the minute's first second
    SDepthFilterParam m_filter;       // its four sides are not read; for the thread that sets it to look at
protected:
    enum AppendAnswer : int { kForeign = -1, kPassedOver = 1, kTaken = 2 };
    enum MatchAnswer : int { kNothingToDo = 1, kRanToEnd = 2 };

    void doEntrust(int first, int batchKind, const Batch& batch);
    void doTransaction(int first, int batchKind, const Batch& batch);
    void doQuoter(int first, int batchKind, const Batch& batch);

    // Take one record as of the instrument given. -1, and nothing changes, when the model has moved on to another; 1
    // for a trade that makes no row: a cancel or one without volume; else 2, also for a snapshot that is not kept.
    int append(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
               const std::shared_ptr<quoter::OrderData>& order);
    int append(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
               const std::shared_ptr<quoter::QuoterDepthData>& snapshot);
    int append(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
               const std::shared_ptr<quoter::TransactionData>& trade);

    // Matches rows to the snapshots that have none yet. 1 when there was nothing to do, 2 when it ran to its end, -1
    // when the model moved on to another instrument meanwhile. Readers get in between two snapshots.
    int tryMatch(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);

    bool passFilter(const Row& row) const;

    // The key of a kept snapshot's pair.
    int secondOfQuote(int quote) const;

    static constexpr SeqPair kNoPair{-1, -1};

    // The running hands may be this far from a volume to be looked at: 10,000,000,000 in 32 bits.
    static constexpr __int64 kFarthest = 1410065408;

private:
    // How far the search for the rows of the next snapshot has come, so that a live trade goes on where the one before
    // it left off. Whoever changes which rows pass, the kept snapshots, the shares per hand or the types drops it.
    struct Search {
        int quote = -1;
        int start = 0; // the first row that no snapshot has
        double lastPrice = 0;
        int next = 0; // the first row that has not been looked at
        __int64 shares = 0;
        __int64 bestDifference = kFarthest;
        int best = -1;
    };

    using Owner = std::shared_ptr<quoter::QuoterBase>;

    // The caller has the lock and has tested the instrument. `owner` is the record's.
    AppendAnswer take(const quoter::OrderData& order, const Owner& owner);
    AppendAnswer take(const quoter::QuoterDepthData& snapshot, const Owner& owner);
    AppendAnswer take(const quoter::TransactionData& trade, const Owner& owner);
    template <class Record>
    bool appendEach(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
                    const std::vector<std::shared_ptr<quoter::QuoterBase>>& records);
    void takeLive(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
                  const std::shared_ptr<quoter::TransactionData>& trade);
    void makeRoom(const std::shared_ptr<ztservice::CInstrumentDetail>& stock, std::size_t trades);
    void keepRoom();
    bool appendPending(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);
    void chain(DepthTransData& row, std::vector<int>& numbers, const detail::TradeSide& side);
    void indexMinute(__int64 time);
    SDepthFilterParam filter() const;
    bool matchNextQuote(int& start);
    void openPair();
    __int64 targetOfQuote(int quote) const;
    int lastOfMatchedQuote() const;
    int linkedShares(const DepthTransData& row, int DepthTransData::*link) const;

    mutable detail::RecursiveLock m_filterMutex; // guards m_filter, which is set without m_mutex, and the clock
    mutable detail::DayClock m_clock;
    Search m_search;
    detail::RowPool<DepthTransData> m_rowPool;
    bool m_timesAscend = true;   // of m_rows
    __int64 m_latestMinute = -1; // of the row before, its first second; below 0 for none
};

} // namespace TC
