#include "indexui/tessimodel/cmodeltransdistribution.h"

#include "datasource/datacenter.h"
#include "datasource/rpcformula.h"
#include "Formula/stockmanager.h"
#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/elementpool.h"
#include "indexui/tessimodel/detail/historythreads.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/qtlock.h"
#include "indexui/tessimodel/detail/request.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "indexui/tessimodel/detail/visitsnapshot.h"
#include "indexui/tessimodel/liveread.h"
#include "IndexUtils/instrumentdetails.h"
#include "utils/threadname.h"

#include <boost/thread/thread.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <string>

namespace TC {

using namespace detail;

namespace {

using Tick = CModelTransDistribution::TransDistributionData;
using PriceRows = QList<TransDistributionPrice>;

// Kinds of batches that this model takes as live pushes.
bool isLivePush(int batchKind)
{
    return batchKind == 1 || batchKind == 2;
}

// The row whose price lies within half a step of `price`, found by bisection; -1 for none.
int findRow(const PriceRows& rows, double price, double halfStep)
{
    const auto first = rows.cbegin();
    int low = 0;
    int high = rows.size() - 1;
    while (low <= high) {
        const int middle = (low + high) / 2;
        const double difference = first[middle].price - price;
        if (std::abs(difference) <= halfStep)
            return middle;
        if (difference > kTolerance)
            low = middle + 1;
        else
            high = middle - 1;
    }
    return -1;
}

// Where a new row belongs: before the first with a lower price. Rows that hold a price that is no number are in no
// order, and are gone through one by one.
int placeOf(const PriceRows& rows, double price, bool isOrdered)
{
    const auto isLower = [price](const TransDistributionPrice& row) { return row.price < price; };
    const auto place = isOrdered ? std::partition_point(rows.cbegin(), rows.cend(), std::not_fn(isLower))
                                 : std::find_if(rows.cbegin(), rows.cend(), isLower);
    return static_cast<int>(place - rows.cbegin());
}

// A price that stood still is a buy. Plain doubles, without tolerance.
bool isBuyAfter(const Tick& last, const Tick& tick)
{
    return last.price <= tick.price;
}

// The rows that a series really has.
std::size_t rowsOf(const se::RPCFormulaMetaResult& meta)
{
    const auto claimed = static_cast<std::size_t>(std::max(0, meta.rowCount));
    return std::min({claimed, meta.prices.size(), meta.volumes.size()});
}

} // namespace

void* CModelTransDistribution::TransDistributionData::operator new(std::size_t)
{
    return ElementPool<Tick>::take();
}

void CModelTransDistribution::TransDistributionData::operator delete(void* tick) noexcept
{
    if (tick)
        ElementPool<Tick>::giveBack(tick);
}

CModelTransDistribution::CModelTransDistribution()
    : m_mutex(QMutex::Recursive)
    , m_threads(std::make_shared<HistoryThreads>())
{}

CModelTransDistribution::~CModelTransDistribution()
{
    m_threads->waitForLeaving();
    clear();
}

bool CModelTransDistribution::init() const
{
    return m_ready;
}

void CModelTransDistribution::setStock(const QString& key)
{
    const QtLock lock(m_mutex);
    m_stock = utils::CSingletonT<CStockManager>::instance()->getInstrumentDetail(key);
    m_isShSz = m_stock && (m_stock->market == "SH" || m_stock->market == "SZ");
    m_hasAfterHours = m_stock && hasAfterHoursType(*m_stock);
    if (m_stock) // without one the last instrument's answer stays
        m_hasAfterHoursSz = hasAfterHoursCodeSz(*m_stock);
    readPriceStep();
}

void CModelTransDistribution::getParams(CFormulaParam& param) const
{
    fillRequest(param, m_stock, kQuotesByVolume);
}

void CModelTransDistribution::quoterCallBack(int, int batchKind, const RecordList& records)
{
    if (!m_stock)
        return;
    if (isLivePush(batchKind)) {
        const QtLock lock(m_mutex);
        readPriceStep();
        if (!records.empty())
            processData(records.back());
    } else if (isHistory(batchKind)) {
        if (batchKind == kHistoryStart) {
            clear();
            emit sigRedraw();
        }
        startHistory(records);
    }
    emit sigRedraw();
}

void CModelTransDistribution::clear()
{
    // Sums and pending ticks go without the lock. A history that is being worked through may still add to the sums.
    m_maxVolume = 0;
    m_totalVolume = 0;
    {
        const QtLock lock(m_mutex);
        m_ticks.clear();
        m_prices.clear();
        m_isOrdered = true;
    }
    m_pending.clear();
}

void CModelTransDistribution::startHistory(const RecordList& records)
{
    const auto threads = m_threads;
    const std::string name = "modelTransDistribution";
    boost::thread thread;
    threads->begin(m_ready);
    try {
        thread = boost::thread([this, threads, records] {
            quoterCallBackThread(records);
            threads->leave(); // the model may be gone from here on
        });
    } catch (...) {
        threads->abandon();
        throw;
    }
    utils::setThreadName(thread.native_handle(), name);
    thread.detach();
}

void CModelTransDistribution::quoterCallBackThread(const RecordList& records)
{
    {
        const QtLock lock(m_mutex);
        readPriceStep();
        for (const auto& record : records)
            processData(record);
    }
    m_threads->end(m_ready);
    emit sigRedraw();
}

void CModelTransDistribution::processData(const std::shared_ptr<quoter::QuoterBase>& record)
{
    visitSnapshot(record.get(), [this](const auto& snapshot) { processSnapshot(snapshot); });
}

template <class Snapshot>
void CModelTransDistribution::processSnapshot(const Snapshot& record)
{
    if (!m_stock) // left without one while the history waited for the lock
        return;
    // Instruments without an after-hours phase keep such snapshots, where the tick list drops them. That is wanted.
    if ((m_hasAfterHours || m_hasAfterHoursSz) && isAfterHours(record.tradeStatus))
        return;

    Tick tick;
    tick.price = readLive(record.lastPrice);
    tick.totalVolume = low32(record.volume);
    if (tick.totalVolume == 0 && !isIndexLike())
        return;
    if (m_ticks.isEmpty()) {
        openDay(tick, getDetailQsKey(m_stock));
    } else {
        const Tick& last = m_ticks.constLast();
        tick.volume = distance32(tick.totalVolume, last.totalVolume);
        tick.isBuy = isBuyAfter(last, tick);
    }
    processData(tick);
}

void CModelTransDistribution::processData(TransDistributionData& tick)
{
    // An index has snapshots in which nothing was traded, and keeps them.
    if (tick.volume <= 0 && !isIndexLike())
        return;
    m_ticks.append(tick);
    m_totalVolume = sum32(m_totalVolume, tick.volume);
    addToRow(tick);
}

void CModelTransDistribution::calc(const se::RPCFormulaMetaResult& meta, const se::RPCFormulaResult&, const QString&,
                                   int, const QString&)
{
    const QtLock lock(m_mutex);
    if (!m_stock)
        return;
    readPriceStep();
    const std::size_t count = rowsOf(meta);
    for (std::size_t i = 0; i < count; ++i) {
        const double volume = meta.volumes[i];
        if (!isDifferent(volume, 0)) // nor is a NaN
            continue;
        Tick tick;
        tick.price = meta.prices[i];
        tick.totalVolume = truncated32(volume);
        if (i == 0 || m_ticks.isEmpty()) {
            openDay(tick, m_stock);
        } else {
            const Tick& last = m_ticks.constLast();
            tick.volume = truncated32(std::abs(volume - last.totalVolume));
            tick.isBuy = isBuyAfter(last, tick);
        }
        processData(tick);
    }
    for (int i = 0; i < m_pending.size(); ++i) {
        Tick tick = m_pending.at(i);
        // The first one's step is counted from the last one that waits, not from the series. That is wanted.
        if (i == 0 && !m_ticks.isEmpty())
            tick.volume = difference32(tick.totalVolume, m_pending.constLast().totalVolume);
        processData(tick);
    }
}

// A tick with none before it holds all the volume so far. It is a buy above the last close, where there is a date to
// ask for that, else a sell.
template <class Stock>
void CModelTransDistribution::openDay(TransDistributionData& tick, const Stock& stock) const
{
    tick.volume = tick.totalVolume;
    if (!m_dateProvider)
        return;
    const auto stocks = utils::CSingletonT<CStockManager>::instance();
    tick.isBuy = stocks->getCurrentDateLastClose(stock, m_dateProvider()) < tick.price;
}

// Of the instrument, once for each batch: the terminal's answer costs more than a tick.
void CModelTransDistribution::readPriceStep()
{
    m_halfStep = (m_stock ? getDetailPriceTick(m_stock) : kDefaultPriceTick) * 0.5;
}

bool CModelTransDistribution::isIndexLike() const
{
    return m_stock && (se::isIndexEx(m_stock->market, m_stock->code) || m_stock->code == "CNINDEX");
}

void CModelTransDistribution::addToRow(const TransDistributionData& tick)
{
    int place = findRow(m_prices, tick.price, m_halfStep);
    if (place < 0) {
        place = placeOf(m_prices, tick.price, m_isOrdered);
        m_isOrdered = m_isOrdered && !std::isnan(tick.price);
        m_prices.insert(place, {tick.price});
    }
    TransDistributionPrice& row = m_prices[place];
    int& side = tick.isBuy ? row.buyVolume : row.sellVolume;
    side = sum32(side, tick.volume);
    row.totalVolume = sum32(row.totalVolume, tick.volume);
    if (m_maxVolume < row.totalVolume)
        m_maxVolume = row.totalVolume;
}

} // namespace TC
