#pragma once

#include "tests/tessimodel/oracle/lists/naivefilter.h"

#include <cfloat>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tests::oracle::lists {

// Named as the rows and the model that they are compared with.

struct NaiveOrderRow {
    __int64 time = 0;
    double price = 0;
    int hands = 0;
    __int64 volume = 0;
    int seq = 0;
    int bsFlag = 0;
    int orderKind = 0;
};

struct NaiveCancelRow {
    __int64 time = 0;
    double price = 0;
    int hands = 0;
    __int64 volume = 0;
    int seq = 0;
};

std::string symbolOf(const std::shared_ptr<NaiveOrderRow>& order);

class NaiveOrderList {
public:
    using OrderRow = std::shared_ptr<NaiveOrderRow>;
    using CancelRow = std::shared_ptr<NaiveCancelRow>;
    using Trades = std::vector<RecordPtr>;

    explicit NaiveOrderList(Counters& counted)
        : m_counters(counted)
        , m_strand(counted)
    {}

    void setStock(int instrument);
    void initStockParams();
    void callback(const ListStep& step);
    void work() { m_strand.work(); }
    void setFilterParam(const Filter& filter);
    void datasFilter();
    bool append(int instrument, const RecordPtr& record);
    void clear();
    void clearEntrusts();
    void clearTransactions();

    OrderRow getOrderData(int index, bool all) const;
    bool getOrderData(int seq, OrderRow& order) const;
    CancelRow getCancelData(int index) const;
    bool getTransactionData(int seq, Trades& trades) const;
    int tracebackOrderSeq(int index) const;
    int tracebackCancelSeq(int index) const;

    int m_stock = -1; // place in instruments(), -1 for none
    double m_priceTick = 0.001;
    double m_lastClose = DBL_MAX;
    int m_volumeUnit = 1;
    int m_orderCount = 0;
    int m_filteredOrderCount = 0;
    int m_filteredCancelCount = 0;
    bool m_ordersChanged = false;
    bool m_transactionsChanged = false;
    std::vector<OrderRow> m_orders;
    std::vector<CancelRow> m_cancels;
    std::vector<OrderRow> m_filteredOrders;
    std::vector<CancelRow> m_filteredCancels;
    std::map<int, Trades> m_transactionsBySeq;
    std::map<int, int> m_orderIndexBySeq;
    Filter m_filter;

private:
    void doEntrust(int kind, const BatchPtr& batch);
    void doTransaction(int kind, const BatchPtr& batch);
    bool appendOrder(int instrument, const Record& order);
    bool appendTrade(int instrument, const RecordPtr& trade);
    void addCancel(const CancelRow& cancel);
    bool isFollowed(int instrument) const;
    bool isMarket(const char* market) const;
    bool passFilter(const OrderRow& order) const;
    bool passFilter(const CancelRow& cancel) const;

    Counters& m_counters;
    NaiveStrand m_strand;
};

} // namespace tests::oracle::lists
