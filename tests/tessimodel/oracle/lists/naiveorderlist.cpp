#include "tests/tessimodel/oracle/lists/naiveorderlist.h"

#include "tests/tessimodel/oracle/naiveinstruments.h"
#include "tests/tessimodel/oracle/wrapping.h"

namespace tests::oracle::lists {

std::string symbolOf(const std::shared_ptr<NaiveOrderRow>& order)
{
    if (!order)
        return "N";
    if (order->bsFlag == 3)
        return "B";
    if (order->bsFlag == 4)
        return "S";
    if (order->bsFlag != 1 && order->bsFlag != 2)
        return "N";
    std::string side = order->bsFlag == 1 ? "B" : "S";
    if (order->orderKind == 0)
        return "N";
    if (order->orderKind == 1)
        return side;
    return order->orderKind == 3 ? "F" : "U" + side;
}

void NaiveOrderList::setStock(int instrument)
{
    m_stock = instrument;
    initStockParams();
}

void NaiveOrderList::initStockParams()
{
    m_priceTick = 0.001;
    m_volumeUnit = 1;
    m_lastClose = DBL_MAX;
    if (m_stock < 0)
        return;
    m_priceTick = instrumentAt(m_stock).priceTick;
    m_volumeUnit = sharesPerHand(instrumentAt(m_stock));
    m_lastClose = instrumentAt(m_stock).lastClose;
}

void NaiveOrderList::callback(const ListStep& step)
{
    const int kind = step.kind;
    const BatchPtr batch = step.batch;
    if (step.action == ListStep::Action::Orders)
        m_strand.post(m_stock, batch, [this, kind, batch] { doEntrust(kind, batch); });
    else
        m_strand.post(m_stock, batch, [this, kind, batch] { doTransaction(kind, batch); });
}

void NaiveOrderList::doEntrust(int kind, const BatchPtr& batch)
{
    const bool isHistory = kind == 0 || kind == 3;
    if (batch->records.empty()) {
        if (kind == 0) {
            clearEntrusts();
            m_ordersChanged = m_transactionsChanged = true;
        }
        return;
    }
    if (!isHistory) {
        const RecordPtr& last = batch->records.back();
        if (isOfType(last, Record::Type::Order)) {
            appendOrder(m_stock, *last);
            m_ordersChanged = m_transactionsChanged = true;
        }
        return;
    }
    if (kind == 0)
        clearEntrusts();
    for (const RecordPtr& record : batch->records) {
        if (isOfType(record, Record::Type::Order) && !appendOrder(m_stock, *record))
            return;
    }
    datasFilter();
    m_ordersChanged = m_transactionsChanged = true;
}

void NaiveOrderList::doTransaction(int kind, const BatchPtr& batch)
{
    const bool isHistory = kind == 0 || kind == 3;
    if (batch->records.empty()) {
        if (kind == 0) {
            clearTransactions();
            m_transactionsChanged = true;
        }
        return;
    }
    if (!isHistory) {
        const RecordPtr& last = batch->records.back();
        if (isOfType(last, Record::Type::Trade)) {
            appendTrade(m_stock, last);
            m_transactionsChanged = true;
        }
        return;
    }
    if (kind == 0)
        clearTransactions();
    for (const RecordPtr& record : batch->records) {
        if (isOfType(record, Record::Type::Trade) && !appendTrade(m_stock, record))
            return;
    }
    m_transactionsChanged = true;
}

bool NaiveOrderList::isFollowed(int instrument) const
{
    return m_stock >= 0 && m_stock == instrument;
}

bool NaiveOrderList::isMarket(const char* market) const
{
    return m_stock >= 0 && instrumentAt(m_stock).market == market;
}

bool NaiveOrderList::append(int instrument, const RecordPtr& record)
{
    return record->type == Record::Type::Order ? appendOrder(instrument, *record) : appendTrade(instrument, record);
}

bool NaiveOrderList::appendOrder(int instrument, const Record& order)
{
    if (!isFollowed(instrument)) {
        ++m_counters.foreignAppends;
        return false;
    }
    const int hands = roundedHands(order.volume, m_volumeUnit);
    if ((order.bsFlag == 3 || order.bsFlag == 4) && isMarket("SH")) {
        ++m_counters.cancelsByOrder;
        addCancel(std::make_shared<NaiveCancelRow>(
            NaiveCancelRow{secondOf(order), order.price, hands, order.volume, narrow(order.seq)}));
        return true;
    }
    const auto row = std::make_shared<NaiveOrderRow>(NaiveOrderRow{secondOf(order), order.price, hands, order.volume,
                                                                   narrow(order.seq), order.bsFlag, order.orderKind});
    ++m_counters.orderRows;
    m_counters.repeatedSeqs += m_orderIndexBySeq.contains(row->seq) ? 1 : 0;
    m_orders.push_back(row);
    m_orderIndexBySeq[row->seq] = m_orderCount;
    ++m_orderCount;
    if (passFilter(row)) {
        m_filteredOrders.push_back(row);
        ++m_filteredOrderCount;
    }
    return true;
}

bool NaiveOrderList::appendTrade(int instrument, const RecordPtr& trade)
{
    if (!isFollowed(instrument)) {
        ++m_counters.foreignAppends;
        return false;
    }
    if (trade->sellSeq != 0)
        m_transactionsBySeq[trade->sellSeq].push_back(trade);
    if (trade->buySeq != 0)
        m_transactionsBySeq[trade->buySeq].push_back(trade);
    if (trade->transKind == 3) {
        ++m_counters.cancelsByTrade;
        const int hands = roundedHands(trade->volume, m_volumeUnit);
        const int seq = trade->sellSeq != 0 ? trade->sellSeq : trade->buySeq;
        addCancel(std::make_shared<NaiveCancelRow>(
            NaiveCancelRow{secondOf(*trade), trade->price, hands, trade->volume, seq}));
    }
    return true;
}

void NaiveOrderList::addCancel(const CancelRow& cancel)
{
    m_cancels.push_back(cancel);
    if (passFilter(cancel)) {
        m_filteredCancels.push_back(cancel);
        ++m_filteredCancelCount;
    }
}

bool NaiveOrderList::passFilter(const OrderRow& order) const
{
    const std::string symbol = symbolOf(order);
    if (!isInTime(m_filter, order->time, m_counters)) {
        ++m_counters.refusedRows;
        return false;
    }
    if ((!m_filter.showBuyOrder && symbol == "B") || (!m_filter.showSellOrder && symbol == "S")) {
        ++m_counters.sideSwitches;
        return false;
    }
    const double amount = static_cast<double>(order->volume) * order->price;
    const bool passes = isInTheRange(m_filter, order->hands, amount, m_counters);
    ++(passes ? m_counters.passedRows : m_counters.refusedRows);
    return passes;
}

bool NaiveOrderList::passFilter(const CancelRow& cancel) const
{
    if (!isInTime(m_filter, cancel->time, m_counters))
        return false;
    OrderRow order;
    if (!getOrderData(cancel->seq, order)) {
        ++m_counters.cancelsOfUnknown;
        return false;
    }
    const std::string symbol = symbolOf(order);
    if ((!m_filter.showBuyCancel && symbol == "B") || (!m_filter.showSellCancel && symbol == "S")) {
        ++m_counters.cancelSwitches;
        return false;
    }
    const double amount = static_cast<double>(order->volume) * order->price;
    const bool passes = isInTheRange(m_filter, order->hands, amount, m_counters);
    m_counters.cancelsPassed += passes ? 1 : 0;
    return passes;
}

void NaiveOrderList::setFilterParam(const Filter& filter)
{
    m_filter = filter;
    datasFilter();
}

void NaiveOrderList::datasFilter()
{
    m_filteredOrders.clear();
    m_filteredOrderCount = 0;
    for (const OrderRow& order : m_orders) {
        if (passFilter(order)) {
            m_filteredOrders.push_back(order);
            ++m_filteredOrderCount;
        }
    }
    m_filteredCancels.clear();
    m_filteredCancelCount = 0;
    for (const CancelRow& cancel : m_cancels) {
        if (passFilter(cancel)) {
            m_filteredCancels.push_back(cancel);
            ++m_filteredCancelCount;
        }
    }
}

void NaiveOrderList::clear()
{
    m_priceTick = 0.001;
    m_lastClose = DBL_MAX;
    m_ordersChanged = m_transactionsChanged = true;
    m_stock = -1;
    clearEntrusts();
    clearTransactions();
    initStockParams();
}

void NaiveOrderList::clearEntrusts()
{
    m_orderIndexBySeq.clear();
    m_orders.clear();
    m_filteredOrders.clear();
    m_orderCount = m_filteredOrderCount = 0;
    if (isMarket("SH")) {
        m_cancels.clear();
        m_filteredCancels.clear();
        m_filteredCancelCount = 0;
    }
}

void NaiveOrderList::clearTransactions()
{
    m_transactionsBySeq.clear();
    if (m_stock < 0 || isMarket("SZ")) {
        m_cancels.clear();
        m_filteredCancels.clear();
        m_filteredCancelCount = 0;
    }
}

NaiveOrderList::OrderRow NaiveOrderList::getOrderData(int index, bool all) const
{
    const int count = all ? m_orderCount : m_filteredOrderCount;
    if (index < 0 || index >= count)
        return nullptr;
    return (all ? m_orders : m_filteredOrders).at(static_cast<std::size_t>(index));
}

bool NaiveOrderList::getOrderData(int seq, OrderRow& order) const
{
    const auto found = m_orderIndexBySeq.find(seq);
    if (found == m_orderIndexBySeq.end())
        return false;
    order = m_orders.at(static_cast<std::size_t>(found->second));
    return true;
}

NaiveOrderList::CancelRow NaiveOrderList::getCancelData(int index) const
{
    if (index < 0 || index >= m_filteredCancelCount)
        return nullptr;
    return m_filteredCancels.at(static_cast<std::size_t>(index));
}

bool NaiveOrderList::getTransactionData(int seq, Trades& trades) const
{
    const auto found = m_transactionsBySeq.find(seq);
    if (found == m_transactionsBySeq.end())
        return false;
    trades = found->second;
    return true;
}

int NaiveOrderList::tracebackOrderSeq(int index) const
{
    return traceback(m_filteredOrders, index);
}

int NaiveOrderList::tracebackCancelSeq(int index) const
{
    return traceback(m_filteredCancels, index);
}

} // namespace tests::oracle::lists
