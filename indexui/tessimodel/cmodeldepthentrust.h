#pragma once

#include "indexui/tessimodel/depthfilter.h"
#include "indexui/tessimodel/detail/dayclock.h"
#include "indexui/tessimodel/detail/recursivelock.h"
#include "indexui/tessimodel/detail/rowpool.h"
#include "indexui/tessimodel/detail/seqhash.h"
#include "indexui/tessimodel/export.h"
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
#include <vector>

namespace quoter {
struct OrderData;
struct QuoterBase;
struct TransactionData;
} // namespace quoter

namespace ztservice {
struct CInstrumentDetail;
}

namespace TC {

struct CFormulaParam;
struct MetaCacheDataWrapper;

// One tick order as a row of the order list. Never changed once it is in the list.
struct TESSIMODEL_EXPORT DepthOrderData {
    __int64 time = 0; // seconds since the epoch
    double price = 0;
    int hands = 0;      // at least 1
    __int64 volume = 0; // shares
    int seq = 0;        // the exchange's order sequence number, low 32 bits
    int bsFlag = 0;     // as in quoter::OrderData
    int orderKind = 0;
};

// One cancel as a row of the cancel list.
struct TESSIMODEL_EXPORT DepthCancelData {
    __int64 time = 0; // seconds since the epoch
    double price = 0; // as the exchange reports it: Shenzhen gives 0
    int hands = 0;
    __int64 volume = 0; // shares
    int seq = 0;        // of the order that is cancelled
};

// What the list shows as the side of an order: "B" and "S" for a limit buy and sell, "F" for a fund order, "UB" and
// "US" for a buy and a sell of any other kind, mostly those without a usable price; "N" without a kind or a side, and
// for an empty pointer.
TESSIMODEL_EXPORT QString getOrderSymbol(const boost::shared_ptr<DepthOrderData>& order);

// The day's tick orders of one instrument and their cancels as rows of a panel, all of them and those that pass the
// panel's filter, and what was traded of each order.
//
// A panel makes a model, calls setStock, carries the request of getParams to the data layer, feeds orders and trades to
// the callbacks and reads rows when a changed flag is up; it lowers the flags itself. Cancels come by two ways: market
// "SH" sends them as orders of bsFlag 3 and 4, every other market as trades of transKind 3. A feed that sends a cancel
// both ways gets it shown twice.
//
// Rows of the full lists keep their index until the list is emptied; those of the filtered lists change theirs with
// setFilterParam and with each order history. A cancel is filtered by its order, so it shows once the order is known
// and the list has been filtered anew.
//
// Threads: callbacks, reads, setStock, setFilterParam and clear from any thread. The callbacks post to the strand
// "modulegroup" and keep the model alive until the work is done; the model must be held by a boost::shared_ptr.
class TESSIMODEL_EXPORT CModelDepthEntrust : public boost::enable_shared_from_this<CModelDepthEntrust> {
public:
    using Batch = boost::shared_ptr<MetaCacheDataWrapper>;
    using OrderRow = boost::shared_ptr<DepthOrderData>;
    using CancelRow = boost::shared_ptr<DepthCancelData>;
    using Trades = std::vector<std::shared_ptr<quoter::TransactionData>>;

    CModelDepthEntrust();
    CModelDepthEntrust(const CModelDepthEntrust&) = delete;
    CModelDepthEntrust& operator=(const CModelDepthEntrust&) = delete;
    ~CModelDepthEntrust(); // as clear()

    // Follows the instrument of a terminal key from now on; an unknown key leaves the model without one. The rows of
    // the former instrument stay until clear().
    void setStock(const QString& key);

    // Price tick, shares per hand and last close from the instrument.
    void initStockParams();

    // Fills the request for the stream "QUOTERVOL" of the last trading day, open ended. Without an instrument the
    // request stays as it was.
    void getParams(CFormulaParam& param) const;

    // Take a batch and return at once; the work is done on the strand. Kind 0 replaces the stream's rows, 3 adds
    // history, any other is a live push, of which only the last record counts. Batches of another instrument and
    // records of other types are dropped.
    void entrustCallback(int first, int batchKind, const Batch& batch);
    void transactionCallback(int first, int batchKind, const Batch& batch);

    // Filters both lists anew. Raises no changed flag: the caller knows.
    void setFilterParam(SDepthFilterParam& param);

    // A row of all orders, or of those that pass the filter. Empty out of range.
    OrderRow getOrderData(int index, bool all) const;

    // The row of an order by its seq, the latest if the seq came twice. False, and nothing is touched, when there is
    // none.
    bool getOrderData(int seq, OrderRow& order) const;

    // A row of the cancels that pass the filter. Empty out of range.
    CancelRow getCancelData(int index) const;

    // A copy of the trades, cancels among them, that touched the order, as they came. False, and nothing is touched,
    // when there are none.
    bool getTransactionData(int seq, Trades& trades) const;

    // How many filtered rows up to and including this one have its second in an unbroken run, so that a panel can
    // number the rows of one second. 1 out of range.
    int tracebackOrderSeq(int index) const;
    int tracebackCancelSeq(int index) const;

    // Drops all data and the instrument with it. The filter stays.
    void clear();

    // Empty the rows of one stream. Cancels go with the stream that brings them: with the orders in market "SH", with
    // the trades in "SZ" and without an instrument. Any other market keeps its cancels through both.
    void clearEntrusts();
    void clearTransactions();

    std::shared_ptr<ztservice::CInstrumentDetail> m_stock;
    double m_priceTick;
    double m_lastClose;
    int m_volumeUnit = 1; // shares per hand: 1, 10 or 100
    int m_orderCount = 0; // of m_orders
    int m_filteredOrderCount = 0;
    int m_filteredCancelCount = 0;
    std::atomic<bool> m_ordersChanged{false}; // raised here, lowered by the panel
    std::atomic<bool> m_transactionsChanged{false};
    mutable boost::recursive_mutex m_mutex; // guards all but the atomic words and the filter
    boost::shared_ptr<boost::asio::io_service::strand> m_strand;
    QList<OrderRow> m_orders; // all lists in the order in which the records came
    QList<CancelRow> m_cancels;
    QList<OrderRow> m_filteredOrders;
    QList<CancelRow> m_filteredCancels;
    std::map<int, Trades> m_transactionsBySeq;
    boost::unordered_flat_map<int, int, detail::SeqHash> m_orderIndexBySeq; // index in m_orders
    SDepthFilterParam m_filter;                                             // for the thread that sets it to look at

protected:
    void doEntrust(int first, int batchKind, const Batch& batch);
    void doTransaction(int first, int batchKind, const Batch& batch);

    // Take one record as of the instrument given. False, and nothing changes, when the model has moved on to another.
    bool append(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
                const std::shared_ptr<quoter::OrderData>& order);
    bool append(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
                const std::shared_ptr<quoter::TransactionData>& trade);

    bool passFilter(const OrderRow& order) const;
    bool passFilter(const CancelRow& cancel) const; // a cancel of an order that is not known fails
    bool beInTheRange(int hands, double amount) const;
    void datasFilter();

private:
    SDepthFilterParam filter() const;
    void makeRoom(const std::shared_ptr<ztservice::CInstrumentDetail>& stock, std::size_t orders);
    void keepRoom();
    const OrderRow* orderOf(int seq) const; // null when it is not known; the caller has the lock

    // The caller has the lock and has tested the instrument. `owner` is the trade's.
    void take(const quoter::OrderData& order);
    void take(const quoter::TransactionData& trade, const std::shared_ptr<quoter::QuoterBase>& owner);
    void appendCancel(const CancelRow& cancel);
    void dropCancels();

    mutable detail::RecursiveLock m_filterMutex; // guards m_filter, which is set without m_mutex, and the clock
    mutable detail::DayClock m_clock;
    detail::RowPool<DepthOrderData> m_orderPool;
    detail::RowPool<DepthCancelData> m_cancelPool;
};

} // namespace TC
