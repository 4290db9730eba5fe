#include "indexui/tessimodel/cmodeldepthtransaction.h"

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/listmodel.h"
#include "indexui/tessimodel/detail/release.h"
#include "indexui/tessimodel/detail/stockparams.h"
#include "indexui/tessimodel/detail/strand.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

namespace TC {

using namespace detail;

CModelDepthTransaction::CModelDepthTransaction()
    : m_priceTick(kDefaultPriceTick)
    , m_lastClose(kNoValue)
    , m_strand(workerStrand())
{}

CModelDepthTransaction::~CModelDepthTransaction()
{
    clear();
}

void CModelDepthTransaction::setStock(const QString& key)
{
    followListStock(*this, key);
}

void CModelDepthTransaction::initStockParams()
{
    const ModelLock lock(m_mutex);
    m_isType277 = m_stock && hasAfterHoursType(*m_stock);
    m_isType10006 = m_stock && hasAfterHoursTypeSz(*m_stock);
    takeStockParams(*this, sharesPerHand);
    m_search = {};
}

void CModelDepthTransaction::getParams(CFormulaParam& param) const
{
    fillListRequest(*this, param);
}

void CModelDepthTransaction::entrustCallback(int first, int batchKind, const Batch& batch)
{
    postWorker(*m_strand, shared_from_this(), &CModelDepthTransaction::doEntrust, first, batchKind, batch);
}

void CModelDepthTransaction::transactionCallback(int first, int batchKind, const Batch& batch)
{
    postWorker(*m_strand, shared_from_this(), &CModelDepthTransaction::doTransaction, first, batchKind, batch);
}

void CModelDepthTransaction::quoterCallback(int first, int batchKind, const Batch& batch)
{
    postWorker(*m_strand, shared_from_this(), &CModelDepthTransaction::doQuoter, first, batchKind, batch);
}

template <class Record>
bool CModelDepthTransaction::appendEach(const InstrumentPtr& stock, const RecordList& records)
{
    return takeEach<Record>(*this, stock, records,
                            [this](const auto& record, const auto& owner) { take(record, owner); });
}

// The panel is not told of orders: what they change is read with the rows.
void CModelDepthTransaction::doEntrust(int, int batchKind, const Batch& batch)
{
    const InstrumentPtr stock = stockFor(*this, batch);
    if (!stock)
        return;
    if (!isHistory(batchKind)) {
        if (const auto order = lastAs<quoter::OrderData>(batch->records))
            append(stock, order);
        return;
    }
    if (batchKind == kHistoryStart)
        clearEntrusts();
    appendEach<quoter::OrderData>(stock, batch->records);
}

void CModelDepthTransaction::doQuoter(int, int batchKind, const Batch& batch)
{
    const InstrumentPtr stock = stockFor(*this, batch);
    if (!stock)
        return;
    if (!isHistory(batchKind)) {
        const auto snapshot = lastAs<quoter::QuoterDepthData>(batch->records);
        if (snapshot && append(stock, snapshot) == kTaken) {
            tryMatch(stock);
            m_changed = true;
        }
        return;
    }
    if (batchKind == kHistoryStart)
        clearQuotes();
    if (!batch->records.empty()) {
        if (!appendEach<quoter::QuoterDepthData>(stock, batch->records))
            return;
        tryMatch(stock);
    } else if (batchKind != kHistoryStart) {
        return;
    }
    m_changed = true;
}

void CModelDepthTransaction::doTransaction(int, int batchKind, const Batch& batch)
{
    const InstrumentPtr stock = stockFor(*this, batch);
    if (!stock)
        return;
    if (!isHistory(batchKind)) {
        if (const auto trade = lastAs<quoter::TransactionData>(batch->records))
            takeLive(stock, trade);
        return;
    }
    if (batchKind == kHistoryStart) {
        clearTransactions();
        makeRoom(stock, batch->records.size());
    }
    if (!batch->records.empty()) {
        if (!appendEach<quoter::TransactionData>(stock, batch->records) || !appendPending(stock))
            return;
        keepRoom();
        tryMatch(stock);
    } else if (batchKind != kHistoryStart) {
        return;
    }
    m_historyLoaded = true;
    m_changed = true;
}

// About every other trade is the first of its buy order, and as many are of their sell order.
void CModelDepthTransaction::makeRoom(const InstrumentPtr& stock, std::size_t trades)
{
    const ModelLock lock(m_mutex);
    if (!isSameInstrument(m_stock, stock))
        return;
    m_rows.reserve(static_cast<int>(withGrowth(trades)));
    m_filteredRows.reserve(static_cast<int>(withGrowth(trades)));
    m_buyChains.reserve(withGrowth(trades / 2));
    m_sellChains.reserve(withGrowth(trades / 2));
}

void CModelDepthTransaction::keepRoom()
{
    const ModelLock lock(m_mutex);
    m_buyChains.reserve(withGrowth(m_buyChains.size()));
    m_sellChains.reserve(withGrowth(m_sellChains.size()));
}

void CModelDepthTransaction::takeLive(const InstrumentPtr& stock, const std::shared_ptr<quoter::TransactionData>& trade)
{
    if (!m_historyLoaded) {
        const ModelLock lock(m_mutex);
        m_pendingTransactions.push_back(trade);
    } else if (append(stock, trade) == kTaken) {
        tryMatch(stock);
        m_changed = true;
    }
}

// The live trades that came before the history go behind it, whatever their times.
bool CModelDepthTransaction::appendPending(const InstrumentPtr& stock)
{
    const ModelLock lock(m_mutex);
    for (const auto& trade : m_pendingTransactions) {
        if (append(stock, trade) == kForeign)
            return false;
    }
    m_pendingTransactions.clear();
    return true;
}

void CModelDepthTransaction::clear()
{
    // One lock over all of it: no row may be compared with a last close that is gone already.
    const ModelLock lock(m_mutex);
    m_priceTick = kDefaultPriceTick;
    m_lastClose = kNoValue;
    m_historyLoaded = false;
    m_pendingTransactions.clear();
    clearEntrusts();
    clearTransactions();
    releaseLater(m_quotes); // a day of them would keep the caller
    clearQuotes();
    initStockParams();
    m_changed = true;
}

void CModelDepthTransaction::clearEntrusts()
{
    const ModelLock lock(m_mutex);
    releaseLater(m_orders);
}

void CModelDepthTransaction::clearQuotes()
{
    const ModelLock lock(m_mutex);
    m_quotes.clear();
    m_seqPairs.clear();
    m_lastMatchedQuote = -1;
    m_search = {};
}

void CModelDepthTransaction::clearTransactions()
{
    const ModelLock lock(m_mutex);
    releaseLater(m_rows, m_filteredRows, m_buyChains, m_sellChains, m_minuteIndex, m_seqPairs);
    m_rowCount = 0;
    m_timesAscend = true;
    m_latestMinute = -1;
    m_lastMatchedQuote = -1;
    m_search = {};
}

} // namespace TC
