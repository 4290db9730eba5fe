#include "tests/tessimodel/oracle/distribution/naivedistribution.h"

#include "datasource/datacenter.h"
#include "datasource/rpcformula.h"
#include "Formula/stockmanager.h"
#include "IndexUtils/instrumentdetails.h"
#include "quoter/brovanquoteralldata.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "tests/tessimodel/oracle/distribution/distributionstate.h"
#include "tests/tessimodel/oracle/wrapping.h"
#include "ztservice/instrumentdetail.h"
#include "ztservice/stocktypecenter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <span>

namespace tests::oracle::distribution {

namespace {

constexpr double kTolerance = 1e-5;

bool isTyped(int type, const std::string& market, const std::string& code)
{
    return utils::CSingletonT<ztservice::StockTypeCenter>::instance()->isTypedStock(type, market, code);
}

boost::shared_ptr<TC::CStockManager> stocks()
{
    return utils::CSingletonT<TC::CStockManager>::instance();
}

// 32 bits without their sign, which the smallest number keeps.
int size32(int value)
{
    return narrow(std::abs(static_cast<__int64>(value)));
}

} // namespace

void NaiveDistribution::setStock(const QString& key)
{
    m_stock = stocks()->getInstrumentDetail(key);
    m_isShSz = m_stock && (m_stock->market == "SH" || m_stock->market == "SZ");
    m_hasAfterHours = m_stock && isTyped(277, m_stock->market, m_stock->code);
    if (m_stock)
        m_hasAfterHoursSz = isTyped(10006, "SZ", m_stock->code);
}

void NaiveDistribution::clear()
{
    m_maxVolume = 0;
    m_totalVolume = 0;
    m_ticks.clear();
    m_prices.clear();
    m_pending.clear();
}

bool NaiveDistribution::isIndexLike() const
{
    const bool is = m_stock && (se::isIndexEx(m_stock->market, m_stock->code) || m_stock->code == "CNINDEX");
    m_counters->indexLikes += is ? 1 : 0;
    return is;
}

bool NaiveDistribution::quoterCallBack(int, int batchKind, const Records& records)
{
    if (!m_stock) {
        ++m_counters->dropped;
        return false;
    }
    if (batchKind < 0 || batchKind > 3) {
        ++m_counters->otherKinds;
        signal(true);
        return false;
    }
    if (batchKind == 1 || batchKind == 2) {
        ++(records.empty() ? m_counters->emptyLive : m_counters->live);
        if (!records.empty())
            processData(records.back());
        signal(true);
        return false;
    }
    if (batchKind == 0) {
        ++(records.empty() ? m_counters->emptyHistories : m_counters->histories);
        clear();
        signal(true);
    } else {
        ++(records.empty() ? m_counters->emptyPieces : m_counters->pieces);
    }
    signal(false);
    return true;
}

void NaiveDistribution::quoterCallBackThread(const Records& records)
{
    m_counters->withoutInstrument += m_stock ? 0 : 1;
    for (const RecordPtr& record : records)
        processData(record);
    signal(true);
}

void NaiveDistribution::signal(bool isReady)
{
    ++m_signals;
    m_trace = traced(m_trace, isReady, m_ticks.size());
}

void NaiveDistribution::processData(const RecordPtr& record)
{
    if (!m_stock)
        return;
    const std::size_t before = m_ticks.size();
    std::size_t source = 0;
    if (const auto all = std::dynamic_pointer_cast<quoter::QuoterAllData>(record)) {
        source = std::dynamic_pointer_cast<zolv::BrovanQuoterAllData>(record) ? 2 : 0;
        take(*all);
    } else if (const auto depth = std::dynamic_pointer_cast<quoter::QuoterDepthData>(record)) {
        source = 1;
        take(*depth);
    } else {
        ++m_counters->foreign;
    }
    m_counters->ticks[source] += static_cast<int>(m_ticks.size() - before);
}

// The direction of the tick that opens a day.
void NaiveDistribution::direct(Tick& first, double lastClose) const
{
    first.isBuy = lastClose < first.price;
    ++(first.isBuy ? m_counters->firstBuys : m_counters->firstSells);
    m_counters->firstAtClose += lastClose == first.price ? 1 : 0;
    m_counters->firstNearClose += first.isBuy && first.price - lastClose <= kTolerance ? 1 : 0;
}

void NaiveDistribution::directLater(Tick& tick)
{
    tick.isBuy = m_ticks.back().price <= tick.price;
    ++(tick.isBuy ? m_counters->buys : m_counters->sells);
    m_counters->stillPrices += m_ticks.back().price == tick.price ? 1 : 0;
}

template <class Snapshot>
void NaiveDistribution::take(const Snapshot& record)
{
    if (record.tradeStatus >= 22) {
        const bool isLeftOut = m_hasAfterHours || m_hasAfterHoursSz;
        ++(isLeftOut ? m_counters->late : m_counters->lateButKept);
        if (isLeftOut)
            return;
    }
    Tick tick{record.lastPrice, narrow(record.volume), 0, false};
    if (tick.totalVolume == 0) {
        const bool isKept = isIndexLike();
        ++(isKept ? m_counters->indexWithoutVolume : m_counters->noVolume);
        if (!isKept)
            return;
    }
    if (!m_ticks.empty()) {
        const int before = m_ticks.back().totalVolume;
        const int difference = narrow(minus(tick.totalVolume, before));
        tick.volume = size32(difference);
        m_counters->falls += tick.totalVolume < before ? 1 : 0;
        m_counters->negative += difference < 0 ? 1 : 0;
        m_counters->wrapped += difference != minus(tick.totalVolume, before) ? 1 : 0;
        m_counters->smallest += tick.volume < 0 ? 1 : 0;
        directLater(tick);
    } else {
        tick.volume = tick.totalVolume;
        m_counters->firstWithoutDate += m_date ? 0 : 1;
        if (m_date) {
            const double close = stocks()->getCurrentDateLastClose(TC::getDetailQsKey(m_stock), *m_date);
            const double own = stocks()->getCurrentDateLastClose(m_stock, *m_date);
            m_counters->firstOfOtherFacts += (close < tick.price) != (own < tick.price) ? 1 : 0;
            direct(tick, close);
        }
    }
    processData(tick);
}

// The row that takes a price, or null. Of two rows that could take it the rule is the one that bisection meets first,
// so its steps are the rule's: the middle of the rows left, the first one of two.
NaivePrice* NaiveDistribution::rowOf(double price, double half)
{
    std::span<NaivePrice> left(m_prices);
    while (!left.empty()) {
        const std::size_t middle = (left.size() - 1) / 2;
        const double above = left[middle].price - price;
        if (std::abs(above) <= half)
            return &left[middle];
        left = above > kTolerance ? left.subspan(middle + 1) : left.first(middle);
    }
    return nullptr;
}

void NaiveDistribution::processData(const Tick& tick)
{
    if (tick.volume <= 0) {
        const bool isKept = isIndexLike();
        ++(isKept            ? m_counters->indexKept
           : tick.volume < 0 ? m_counters->dropsBelowZero
                             : m_counters->dropsWithoutVolume);
        if (!isKept)
            return;
    }
    m_ticks.push_back(tick);
    m_counters->overflows += plus(m_totalVolume, tick.volume) != plus32(m_totalVolume, tick.volume) ? 1 : 0;
    m_totalVolume = plus32(m_totalVolume, tick.volume);
    const double half = TC::getDetailPriceTick(m_stock) * 0.5;
    if (NaivePrice* row = rowOf(tick.price, half))
        join(*row, tick, half);
    else
        open(tick, half);
}

void NaiveDistribution::join(NaivePrice& row, const Tick& tick, double half)
{
    ++m_counters->joined;
    m_counters->joinedNearby += row.price != tick.price ? 1 : 0;
    m_counters->joinedAtHalf += row.price != tick.price && std::abs(row.price - tick.price) == half ? 1 : 0;
    int& side = tick.isBuy ? row.buyVolume : row.sellVolume;
    side = plus32(side, tick.volume);
    row.totalVolume = plus32(row.totalVolume, tick.volume);
    ++(m_maxVolume < row.totalVolume ? m_counters->largest : m_counters->notLargest);
    m_maxVolume = std::max(m_maxVolume, row.totalVolume);
}

void NaiveDistribution::open(const Tick& tick, double half)
{
    const NaivePrice row{tick.price, tick.isBuy ? tick.volume : 0, tick.isBuy ? 0 : tick.volume, tick.volume};
    const auto isThere = [&](const NaivePrice& other) { return std::abs(other.price - tick.price) <= half; };
    m_counters->openedThoughThere += std::any_of(m_prices.begin(), m_prices.end(), isThere) ? 1 : 0;
    const auto isLower = [&tick](const NaivePrice& other) { return other.price < tick.price; };
    const auto at = std::find_if(m_prices.begin(), m_prices.end(), isLower);
    ++m_counters->opened;
    m_counters->openedAtEnd += at == m_prices.end() ? 1 : 0;
    m_counters->openedOfNan += std::isnan(tick.price) ? 1 : 0;
    m_prices.insert(at, row);
    m_maxVolume = std::max(m_maxVolume, tick.volume);
}

void NaiveDistribution::calc(const se::RPCFormulaMetaResult& meta)
{
    if (!m_stock)
        return;
    const std::size_t there = std::min(meta.prices.size(), meta.volumes.size());
    const std::size_t rows = meta.rowCount < 0 ? 0 : std::min(there, static_cast<std::size_t>(meta.rowCount));
    m_counters->seriesCut += static_cast<__int64>(rows) != meta.rowCount ? 1 : 0;
    for (std::size_t i = 0; i < rows; ++i) {
        const double volume = meta.volumes[i];
        if (!(std::abs(volume) > kTolerance)) {
            ++m_counters->seriesSkipped;
            continue;
        }
        ++m_counters->seriesRows;
        Tick tick{meta.prices[i], truncated(volume), 0, false};
        m_counters->seriesUnfit += tick.totalVolume != std::trunc(volume) ? 1 : 0;
        if (i == 0 || m_ticks.empty()) {
            ++m_counters->seriesFirst;
            m_counters->seriesFirstOfMany += m_ticks.empty() ? 0 : 1;
            tick.volume = tick.totalVolume;
            if (m_date)
                direct(tick, stocks()->getCurrentDateLastClose(m_stock, *m_date));
        } else {
            tick.volume = truncated(std::abs(volume - m_ticks.back().totalVolume));
            directLater(tick);
        }
        processData(tick);
    }
    for (std::size_t i = 0; i < m_pending.size(); ++i) {
        Tick tick = m_pending[i];
        if (i == 0 && !m_ticks.empty())
            tick.volume = narrow(minus(tick.totalVolume, m_pending.back().totalVolume));
        ++(i > 0             ? m_counters->pendingLater
           : m_ticks.empty() ? m_counters->pendingFirstOfAll
                             : m_counters->pendingFirst);
        processData(tick);
    }
}

} // namespace tests::oracle::distribution
