#include "indexui/tessimodel/cmodeldepthtransaction.h"

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/listfilter.h"
#include "indexui/tessimodel/detail/listrows.h"
#include "indexui/tessimodel/detail/livewrite.h"
#include "indexui/tessimodel/detail/modelstate.h"
#include "indexui/tessimodel/detail/orderkind.h"
#include "indexui/tessimodel/detail/tradeside.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <boost/thread/lock_guard.hpp>

namespace TC {

using namespace detail;

namespace {

// Room in a new chain: the least that the heap gives holds so many numbers, and few orders have more rows.
constexpr std::size_t kUsualChain = 6;

constexpr int kSecondsPerMinute = 60;

void fill(DepthTransData& row, const quoter::TransactionData& trade, int sharesPerHand)
{
    row.time = toSeconds(trade.timetag);
    row.price = trade.price;
    row.sellSeq = trade.sellSeq;
    row.buySeq = trade.buySeq;
    row.transKind = trade.transKind;
    row.tradeFlag = trade.tradeFlag;
    row.volume = low32(trade.volume);
    row.hands = handsRounded(row.volume, sharesPerHand);
    row.fullVolume = trade.volume;
}

void setDirection(DepthTransData& row, const DepthTransData& previous)
{
    if (isGreater(row.price, previous.price))
        row.tickDirection = 1;
    else if (isLess(row.price, previous.price))
        row.tickDirection = -1;
    row.isUp = row.tickDirection == 0 ? previous.isUp : row.tickDirection > 0;
}

// The first trade of a day goes up unless it is below the last close.
void setFirstDirection(DepthTransData& row, double lastClose)
{
    row.isUp = !isLess(row.price, lastClose);
    row.tickDirection = row.isUp ? 1 : -1;
}

void countRun(DepthTransData& row, const DepthTransData& previous, const TradeSide& side)
{
    row.*side.runHands = row.hands;
    if (row.*side.seq != previous.*side.seq)
        return;
    row.*side.run = static_cast<short>(previous.*side.run + 1);
    row.*side.runHands = sum32(previous.*side.runHands, row.hands);
}

bool passes(const SDepthFilterParam& filter, DayClock& clock, const DepthTransData& row)
{
    return isInTimeOfDay(filter, row.time, clock) && isInSizeRange(filter, row.hands, row.volume * row.price);
}

} // namespace

bool isOrderSpecial(const std::shared_ptr<quoter::OrderData>& order)
{
    return order && isUnpriced(order->orderKind);
}

QString getOrderSpecialName(const std::shared_ptr<quoter::OrderData>& order)
{
    switch (order ? order->orderKind : kNoKind) {
    case kFillAndCancelRest:
        return QStringLiteral("即时成交剩余撤销");
    case kFundUnits:
        return QStringLiteral("ETF基金申报");
    case kBestFiveAndCancelRest:
        return QStringLiteral("最优五档即时成交剩余撤销");
    case kFillAllOrCancel:
        return QStringLiteral("全额成交或撤销");
    case kOwnBestPrice:
        return QStringLiteral("本方最优价格");
    case kOtherBestPrice:
        return QStringLiteral("对手方最优价格");
    default:
        return QString();
    }
}

int CModelDepthTransaction::append(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
                                   const std::shared_ptr<quoter::OrderData>& order)
{
    const ModelLock lock(m_mutex);
    return isSameInstrument(m_stock, stock) ? take(*order, order) : kForeign;
}

int CModelDepthTransaction::append(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
                                   const std::shared_ptr<quoter::QuoterDepthData>& snapshot)
{
    const ModelLock lock(m_mutex);
    return isSameInstrument(m_stock, stock) ? take(*snapshot, snapshot) : kForeign;
}

int CModelDepthTransaction::append(const std::shared_ptr<ztservice::CInstrumentDetail>& stock,
                                   const std::shared_ptr<quoter::TransactionData>& trade)
{
    const ModelLock lock(m_mutex);
    return isSameInstrument(m_stock, stock) ? take(*trade, trade) : kForeign;
}

CModelDepthTransaction::AppendAnswer CModelDepthTransaction::take(const quoter::OrderData& order, const Owner& owner)
{
    m_orders.insert_or_assign(m_orders.end(), order.seq, std::static_pointer_cast<quoter::OrderData>(owner));
    return kTaken;
}

CModelDepthTransaction::AppendAnswer CModelDepthTransaction::take(const quoter::QuoterDepthData& snapshot,
                                                                  const Owner& owner)
{
    if (m_quotes.isEmpty() || snapshot.volume > m_quotes.constLast()->volume)
        m_quotes.append(std::static_pointer_cast<quoter::QuoterDepthData>(owner));
    return kTaken;
}

CModelDepthTransaction::AppendAnswer CModelDepthTransaction::take(const quoter::TransactionData& trade, const Owner&)
{
    if (trade.volume == 0 || trade.transKind == quoter::kTransKindCancel)
        return kPassedOver;

    // Looked up first and together: late in the day neither table is in a cache.
    std::vector<int>& buyChain = m_buyChains[trade.buySeq];
    std::vector<int>& sellChain = m_sellChains[trade.sellSeq];
    const Row row = m_rowPool.make();
    fill(*row, trade, m_volumeUnit);
    if (m_rowCount >= 1) {
        const DepthTransData& previous = *m_rows.constLast();
        setDirection(*row, previous);
        countRun(*row, previous, kSellSide);
        countRun(*row, previous, kBuySide);
    } else {
        setFirstDirection(*row, m_lastClose);
    }
    chain(*row, buyChain, kBuySide);
    chain(*row, sellChain, kSellSide);
    m_timesAscend = m_timesAscend && (m_rows.isEmpty() || row->time >= m_rows.constLast()->time);
    m_rows.append(row);
    if (passFilter(row)) {
        m_filteredRows.append(row);
        ++m_rowCount;
    }
    // Nearly all rows are of the same minute as the one before.
    if (m_latestMinute < 0 || row->time < m_latestMinute || row->time - m_latestMinute >= kSecondsPerMinute)
        indexMinute(row->time);
    return kTaken;
}

// A trade without an order on a side, seq 0, is chained like any other. Rows are numbered by how many had passed the
// filter: while it refuses rows, a number may stand for another row of m_rows than the one that it was given to.
void CModelDepthTransaction::chain(DepthTransData& row, std::vector<int>& numbers, const TradeSide& side)
{
    if (numbers.empty()) {
        numbers.reserve(kUsualChain);
    } else {
        row.*side.prevIndex = numbers.back();
        writeLive((*m_rows.at(numbers.back())).*side.nextIndex, m_rowCount);
    }
    numbers.push_back(m_rowCount);
}

void CModelDepthTransaction::indexMinute(__int64 time)
{
    m_latestMinute = time / kSecondsPerMinute * kSecondsPerMinute;
    m_minuteIndex.emplace_hint(m_minuteIndex.end(), low32(m_latestMinute), m_rowCount - 1);
}

void CModelDepthTransaction::setFilterParam(SDepthFilterParam& param)
{
    {
        const boost::lock_guard<RecursiveLock> lock(m_filterMutex);
        m_filter = param;
    }
    const ModelLock lock(m_mutex);
    const SDepthFilterParam current = filter();
    DayClock clock;
    m_rowCount = filterRows(m_rows, m_filteredRows, [&](const Row& row) { return passes(current, clock, *row); });
    m_search = {};
}

SDepthFilterParam CModelDepthTransaction::filter() const
{
    const boost::lock_guard<RecursiveLock> lock(m_filterMutex);
    return m_filter;
}

bool CModelDepthTransaction::passFilter(const Row& row) const
{
    const boost::lock_guard<RecursiveLock> lock(m_filterMutex);
    return passes(m_filter, m_clock, *row);
}

} // namespace TC
