#include "tests/tessimodel/oracle/lists/naivetradelist.h"

#include "tests/tessimodel/oracle/naiveinstruments.h"
#include "tests/tessimodel/oracle/wrapping.h"

namespace tests::oracle::lists {

namespace {

constexpr double kTolerance = 1e-5;

} // namespace

void NaiveTradeList::setStock(int instrument)
{
    m_stock = instrument;
    initStockParams();
}

void NaiveTradeList::initStockParams()
{
    m_isType277 = m_isType10006 = false;
    m_priceTick = 0.001;
    m_volumeUnit = 1;
    m_lastClose = DBL_MAX;
    if (m_stock < 0)
        return;
    const Instrument& stock = instrumentAt(m_stock);
    m_isType277 = isTyped(277, stock.market, stock.code);
    m_isType10006 = isTyped(10006, stock.market, stock.code);
    m_priceTick = stock.priceTick;
    m_volumeUnit = sharesPerHand(stock);
    m_lastClose = stock.lastClose;
}

void NaiveTradeList::callback(const ListStep& step)
{
    const int kind = step.kind;
    const BatchPtr batch = step.batch;
    if (step.action == ListStep::Action::Orders)
        m_strand.post(m_stock, batch, [this, kind, batch] { doEntrust(kind, batch); });
    else if (step.action == ListStep::Action::Trades)
        m_strand.post(m_stock, batch, [this, kind, batch] { doTransaction(kind, batch); });
    else
        m_strand.post(m_stock, batch, [this, kind, batch] { doQuoter(kind, batch); });
}

void NaiveTradeList::doEntrust(int kind, const BatchPtr& batch)
{
    if (kind == 0)
        clearEntrusts();
    if (batch->records.empty())
        return;
    if (kind != 0 && kind != 3) {
        if (isOfType(batch->records.back(), Record::Type::Order))
            appendOrder(m_stock, batch->records.back());
        return;
    }
    for (const RecordPtr& record : batch->records) {
        if (isOfType(record, Record::Type::Order) && appendOrder(m_stock, record) == -1)
            return;
    }
}

void NaiveTradeList::doQuoter(int kind, const BatchPtr& batch)
{
    if (batch->records.empty()) {
        if (kind == 0) {
            clearQuotes();
            m_changed = true;
        }
        return;
    }
    if (kind != 0 && kind != 3) {
        const RecordPtr& last = batch->records.back();
        if (isOfType(last, Record::Type::Snapshot) && appendSnapshot(m_stock, last) == 2) {
            tryMatch(m_stock);
            m_changed = true;
        }
        return;
    }
    if (kind == 0)
        clearQuotes();
    for (const RecordPtr& record : batch->records) {
        if (isOfType(record, Record::Type::Snapshot) && appendSnapshot(m_stock, record) == -1)
            return;
    }
    tryMatch(m_stock);
    m_changed = true;
}

void NaiveTradeList::liveTransaction(const RecordPtr& last)
{
    if (!isOfType(last, Record::Type::Trade))
        return;
    if (!m_historyLoaded) {
        ++m_counters.waits;
        m_pendingTransactions.push_back(last);
        return;
    }
    if (appendTrade(m_stock, last) == 2) {
        tryMatch(m_stock);
        m_changed = true;
    }
}

void NaiveTradeList::doTransaction(int kind, const BatchPtr& batch)
{
    if (batch->records.empty()) {
        if (kind == 0) {
            clearTransactions();
            m_historyLoaded = true;
            m_changed = true;
        }
        return;
    }
    if (kind != 0 && kind != 3) {
        liveTransaction(batch->records.back());
        return;
    }
    if (kind == 0) {
        m_counters.begunAnewOpen += isWaiting() ? 1 : 0;
        clearTransactions();
    }
    for (const RecordPtr& record : batch->records) {
        if (isOfType(record, Record::Type::Trade) && appendTrade(m_stock, record) == -1)
            return;
    }
    for (const RecordPtr& waiting : m_pendingTransactions) {
        ++m_counters.waitedTaken;
        if (appendTrade(m_stock, waiting) == -1)
            return;
    }
    m_pendingTransactions.clear();
    tryMatch(m_stock);
    m_historyLoaded = true;
    m_changed = true;
}

bool NaiveTradeList::isFollowed(int instrument) const
{
    return m_stock >= 0 && m_stock == instrument;
}

int NaiveTradeList::append(int instrument, const RecordPtr& record)
{
    if (!isFollowed(instrument))
        ++m_counters.foreignAppends;
    if (record->type == Record::Type::Order)
        return appendOrder(instrument, record);
    if (record->type == Record::Type::Snapshot)
        return appendSnapshot(instrument, record);
    return appendTrade(instrument, record);
}

int NaiveTradeList::appendOrder(int instrument, const RecordPtr& order)
{
    if (!isFollowed(instrument))
        return -1;
    m_orders[order->seq] = order;
    return 2;
}

int NaiveTradeList::appendSnapshot(int instrument, const RecordPtr& snapshot)
{
    if (!isFollowed(instrument))
        return -1;
    if (m_quotes.empty() || snapshot->volume > m_quotes.back()->volume)
        m_quotes.push_back(snapshot);
    else
        ++m_counters.droppedQuotes;
    return 2;
}

int NaiveTradeList::appendTrade(int instrument, const RecordPtr& trade)
{
    if (!isFollowed(instrument))
        return -1;
    if (trade->volume == 0 || trade->transKind == 3) {
        ++m_counters.emptyTrades;
        return 1;
    }
    const auto row = std::make_shared<NaiveTradeRow>();
    row->time = secondOf(*trade);
    row->price = trade->price;
    row->sellSeq = trade->sellSeq;
    row->buySeq = trade->buySeq;
    row->transKind = trade->transKind;
    row->tradeFlag = trade->tradeFlag;
    row->volume = narrow(trade->volume);
    row->hands = roundedHands(row->volume, m_volumeUnit);
    row->fullVolume = trade->volume;
    if (m_rowCount >= 1)
        compareWithPrevious(*row);
    else
        compareWithLastClose(*row);
    chain(*row, true);
    chain(*row, false);
    ++m_counters.tradeRows;
    m_counters.partedNumbers += m_rowCount != static_cast<int>(m_rows.size()) ? 1 : 0;
    m_rows.push_back(row);
    if (passFilter(*row)) {
        m_filteredRows.push_back(row);
        ++m_rowCount;
    }
    const int minute = narrow(row->time / 60 * 60);
    if (!m_minuteIndex.contains(minute)) {
        m_minuteIndex[minute] = m_rowCount - 1;
        m_counters.minuteOfMinusOne += m_rowCount == 0 ? 1 : 0;
    }
    return 2;
}

void NaiveTradeList::compareWithPrevious(NaiveTradeRow& row) const
{
    const NaiveTradeRow& previous = *m_rows.back();
    const double d = row.price - previous.price;
    if (d > kTolerance) {
        row.tickDirection = 1;
        row.isUp = true;
    } else if (d < -kTolerance) {
        row.tickDirection = -1;
        row.isUp = false;
    } else {
        row.isUp = previous.isUp;
    }
    row.sellRunHands = row.buyRunHands = row.hands;
    if (row.sellSeq == previous.sellSeq) {
        row.sellRun = static_cast<short>(previous.sellRun + 1);
        row.sellRunHands = plus32(previous.sellRunHands, row.hands);
    }
    if (row.buySeq == previous.buySeq) {
        row.buyRun = static_cast<short>(previous.buyRun + 1);
        row.buyRunHands = plus32(previous.buyRunHands, row.hands);
    }
    m_counters.runsOfThree += row.sellRun == 2 || row.buyRun == 2 ? 1 : 0;
}

void NaiveTradeList::compareWithLastClose(NaiveTradeRow& row) const
{
    const double d = row.price - m_lastClose;
    row.isUp = !(d < -kTolerance);
    row.tickDirection = row.isUp ? 1 : -1;
}

void NaiveTradeList::chain(NaiveTradeRow& row, bool isBuy)
{
    Chains& chains = isBuy ? m_buyChains : m_sellChains;
    const int seq = isBuy ? row.buySeq : row.sellSeq;
    const auto found = chains.find(seq);
    if (found == chains.end()) {
        chains[seq] = {m_rowCount};
        return;
    }
    const int last = found->second.back();
    NaiveTradeRow& previous = *m_rows.at(static_cast<std::size_t>(last));
    (isBuy ? row.prevBuyIndex : row.prevSellIndex) = last;
    (isBuy ? previous.nextBuyIndex : previous.nextSellIndex) = m_rowCount;
    found->second.push_back(m_rowCount);
    m_counters.chainsOfThree += found->second.size() == 3 ? 1 : 0;
}

bool NaiveTradeList::passFilter(const NaiveTradeRow& row) const
{
    const double amount = static_cast<double>(row.volume) * row.price;
    const bool passes =
        isInTime(m_filter, row.time, m_counters) && isInTheRange(m_filter, row.hands, amount, m_counters);
    ++(passes ? m_counters.passedRows : m_counters.refusedRows);
    return passes;
}

void NaiveTradeList::setFilterParam(const Filter& filter)
{
    m_filter = filter;
    m_filteredRows.clear();
    m_rowCount = 0;
    for (const Row& row : m_rows) {
        if (passFilter(*row)) {
            m_filteredRows.push_back(row);
            ++m_rowCount;
        }
    }
}

void NaiveTradeList::clear()
{
    m_viewStartTime = m_viewEndTime = m_startIndex = m_endIndex = -1;
    m_maxPrice = m_minPrice = 0;

    m_priceTick = 0.001;
    m_lastClose = DBL_MAX;
    m_changed = true;
    m_historyLoaded = false;
    m_pendingTransactions.clear();
    clearEntrusts();
    clearTransactions();
    clearQuotes();
    initStockParams();
}

void NaiveTradeList::clearEntrusts()
{
    m_orders.clear();
}

void NaiveTradeList::clearQuotes()
{
    m_quotes.clear();
    m_seqPairs.clear();
    m_lastMatchedQuote = -1;
}

void NaiveTradeList::clearTransactions()
{
    m_rows.clear();
    m_filteredRows.clear();
    m_buyChains.clear();
    m_sellChains.clear();
    m_minuteIndex.clear();
    m_seqPairs.clear();
    m_rowCount = 0;
    m_lastMatchedQuote = -1;
}

} // namespace tests::oracle::lists
