#include "indexui/tessimodel/cmodeldepthentrust.h"

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/listmodel.h"
#include "indexui/tessimodel/detail/listrows.h"
#include "indexui/tessimodel/detail/release.h"
#include "indexui/tessimodel/detail/stockparams.h"
#include "indexui/tessimodel/detail/strand.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <boost/thread/lock_guard.hpp>

namespace TC {

using namespace detail;

namespace {

// Market "SH" reports a deleted order in the order stream.
bool isShanghaiCancel(const ztservice::CInstrumentDetail& stock, const quoter::OrderData& order)
{
    return (order.bsFlag == quoter::kSideCancelBuy || order.bsFlag == quoter::kSideCancelSell) && stock.market == "SH";
}

// A record's time, price, size and order as those of a row.
template <class Row, class Record>
boost::shared_ptr<Row> makeRow(RowPool<Row>& pool, const Record& record, __int64 seq, int sharesPerHand)
{
    auto row = pool.make();
    row->time = toSeconds(record.timetag);
    row->price = record.price;
    row->hands = handsRounded(record.volume, sharesPerHand);
    row->volume = record.volume;
    row->seq = low32(seq);
    return row;
}

} // namespace

CModelDepthEntrust::CModelDepthEntrust()
    : m_priceTick(kDefaultPriceTick)
    , m_lastClose(kNoValue)
    , m_strand(workerStrand())
{}

CModelDepthEntrust::~CModelDepthEntrust()
{
    clear();
}

void CModelDepthEntrust::setStock(const QString& key)
{
    followListStock(*this, key);
}

void CModelDepthEntrust::initStockParams()
{
    const ModelLock lock(m_mutex);
    takeStockParams(*this, sharesPerHand);
}

void CModelDepthEntrust::getParams(CFormulaParam& param) const
{
    fillListRequest(*this, param);
}

void CModelDepthEntrust::entrustCallback(int first, int batchKind, const Batch& batch)
{
    postWorker(*m_strand, shared_from_this(), &CModelDepthEntrust::doEntrust, first, batchKind, batch);
}

void CModelDepthEntrust::transactionCallback(int first, int batchKind, const Batch& batch)
{
    postWorker(*m_strand, shared_from_this(), &CModelDepthEntrust::doTransaction, first, batchKind, batch);
}

void CModelDepthEntrust::doEntrust(int, int batchKind, const Batch& batch)
{
    const InstrumentPtr stock = stockFor(*this, batch);
    if (!stock)
        return;
    const auto raiseFlags = [this] {
        m_ordersChanged = true;
        m_transactionsChanged = true; // of the cancels that came with the orders
    };
    if (!isHistory(batchKind)) {
        if (const auto order = lastAs<quoter::OrderData>(batch->records)) {
            append(stock, order);
            raiseFlags();
        }
        return;
    }
    if (batchKind == kHistoryStart) {
        clearEntrusts();
        makeRoom(stock, batch->records.size());
    }
    if (!batch->records.empty()) {
        if (!takeEach<quoter::OrderData>(*this, stock, batch->records,
                                         [this](const auto& order, const auto&) { take(order); }))
            return;
        keepRoom();
        // Cancels that came before their orders can pass now.
        datasFilter();
    } else if (batchKind != kHistoryStart) {
        return;
    }
    raiseFlags();
}

void CModelDepthEntrust::doTransaction(int, int batchKind, const Batch& batch)
{
    const InstrumentPtr stock = stockFor(*this, batch);
    if (!stock)
        return;
    if (!isHistory(batchKind)) {
        if (const auto trade = lastAs<quoter::TransactionData>(batch->records)) {
            append(stock, trade);
            m_transactionsChanged = true;
        }
        return;
    }
    if (batchKind == kHistoryStart)
        clearTransactions();
    else if (batch->records.empty())
        return;
    if (takeEach<quoter::TransactionData>(*this, stock, batch->records,
                                          [this](const auto& trade, const auto& owner) { take(trade, owner); }))
        m_transactionsChanged = true;
}

void CModelDepthEntrust::makeRoom(const InstrumentPtr& stock, std::size_t orders)
{
    const ModelLock lock(m_mutex);
    if (!isSameInstrument(m_stock, stock))
        return;
    m_orders.reserve(static_cast<int>(withGrowth(orders)));
    m_filteredOrders.reserve(static_cast<int>(withGrowth(orders)));
    m_orderIndexBySeq.reserve(withGrowth(orders));
}

void CModelDepthEntrust::keepRoom()
{
    const ModelLock lock(m_mutex);
    m_orderIndexBySeq.reserve(withGrowth(m_orderIndexBySeq.size()));
}

bool CModelDepthEntrust::append(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
                                const std::shared_ptr<quoter::OrderData>& order)
{
    const ModelLock lock(m_mutex);
    if (!isSameInstrument(m_stock, stock))
        return false;
    take(*order);
    return true;
}

bool CModelDepthEntrust::append(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
                                const std::shared_ptr<quoter::TransactionData>& trade)
{
    const ModelLock lock(m_mutex);
    if (!isSameInstrument(m_stock, stock))
        return false;
    take(*trade, trade);
    return true;
}

void CModelDepthEntrust::take(const quoter::OrderData& order)
{
    if (isShanghaiCancel(*m_stock, order)) {
        appendCancel(makeRow(m_cancelPool, order, order.seq, m_volumeUnit));
        return;
    }
    const OrderRow row = makeRow(m_orderPool, order, order.seq, m_volumeUnit);
    row->bsFlag = order.bsFlag;
    row->orderKind = order.orderKind;
    m_orders.append(row);
    m_orderIndexBySeq[row->seq] = m_orderCount;
    ++m_orderCount;
    if (passFilter(row)) {
        m_filteredOrders.append(row);
        ++m_filteredOrderCount;
    }
}

void CModelDepthEntrust::take(const quoter::TransactionData& trade, const std::shared_ptr<quoter::QuoterBase>& owner)
{
    for (const int seq : {trade.sellSeq, trade.buySeq}) {
        if (seq != 0)
            m_transactionsBySeq[seq].push_back(std::static_pointer_cast<quoter::TransactionData>(owner));
    }
    // Whatever the market: a feed that reports a cancel here means one.
    if (trade.transKind == quoter::kTransKindCancel) {
        const int seq = trade.sellSeq != 0 ? trade.sellSeq : trade.buySeq;
        appendCancel(makeRow(m_cancelPool, trade, seq, m_volumeUnit));
    }
}

void CModelDepthEntrust::appendCancel(const CancelRow& cancel)
{
    m_cancels.append(cancel);
    if (passFilter(cancel)) {
        m_filteredCancels.append(cancel);
        ++m_filteredCancelCount;
    }
}

CModelDepthEntrust::OrderRow CModelDepthEntrust::getOrderData(int index, bool all) const
{
    const ModelLock lock(m_mutex);
    return rowAt(all ? m_orders : m_filteredOrders, index);
}

bool CModelDepthEntrust::getOrderData(int seq, OrderRow& order) const
{
    const ModelLock lock(m_mutex);
    const OrderRow* const found = orderOf(seq);
    if (!found)
        return false;
    order = *found;
    return true;
}

const CModelDepthEntrust::OrderRow* CModelDepthEntrust::orderOf(int seq) const
{
    const auto index = m_orderIndexBySeq.find(seq);
    return index == m_orderIndexBySeq.end() ? nullptr : &m_orders.at(index->second);
}

CModelDepthEntrust::CancelRow CModelDepthEntrust::getCancelData(int index) const
{
    const ModelLock lock(m_mutex);
    return rowAt(m_filteredCancels, index);
}

bool CModelDepthEntrust::getTransactionData(int seq, Trades& trades) const
{
    const ModelLock lock(m_mutex);
    const auto found = m_transactionsBySeq.find(seq);
    if (found == m_transactionsBySeq.end())
        return false;
    trades = found->second;
    return true;
}

int CModelDepthEntrust::tracebackOrderSeq(int index) const
{
    const ModelLock lock(m_mutex);
    return runOfSecond(m_filteredOrders, index);
}

int CModelDepthEntrust::tracebackCancelSeq(int index) const
{
    const ModelLock lock(m_mutex);
    return runOfSecond(m_filteredCancels, index);
}

void CModelDepthEntrust::clear()
{
    {
        const ModelLock lock(m_mutex);
        m_priceTick = kDefaultPriceTick;
        m_lastClose = kNoValue;
        m_ordersChanged = true;
        m_transactionsChanged = true;
        m_stock.reset();
    }
    clearEntrusts();
    clearTransactions();
    initStockParams();
    // Once more: who took them meanwhile may have read the old rows.
    m_ordersChanged = true;
    m_transactionsChanged = true;
}

void CModelDepthEntrust::clearEntrusts()
{
    const ModelLock lock(m_mutex);
    releaseLater(m_orderIndexBySeq, m_orders, m_filteredOrders);
    m_orderCount = 0;
    m_filteredOrderCount = 0;
    if (m_stock && m_stock->market == "SH")
        dropCancels();
}

void CModelDepthEntrust::clearTransactions()
{
    const ModelLock lock(m_mutex);
    releaseLater(m_transactionsBySeq);
    if (!m_stock || m_stock->market == "SZ")
        dropCancels();
}

void CModelDepthEntrust::dropCancels()
{
    releaseLater(m_cancels, m_filteredCancels);
    m_filteredCancelCount = 0;
}

} // namespace TC
