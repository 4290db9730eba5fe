#include "tests/tessimodel/oracle/status/naivestatus.h"

#include "Formula/stockmanager.h"
#include "IndexUtils/instrumentdetails.h"
#include "IndexUtils/quotefields.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "tests/tessimodel/oracle/wrapping.h"
#include "ztservice/instrumentdetail.h"
#include "ztservice/stocktypecenter.h"

#include <cmath>
#include <type_traits>

namespace tests::oracle::status {

namespace {

constexpr double kTolerance = 1e-5;

bool isTyped(int type, const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    return utils::CSingletonT<ztservice::StockTypeCenter>::instance()->isTypedStock(type, stock->market, stock->code);
}

template <class Snapshot>
std::shared_ptr<Snapshot> as(const RecordPtr& record)
{
    return std::dynamic_pointer_cast<Snapshot>(record);
}

template <std::size_t Depth>
NaiveStatus::Side sideOf(NaiveStatus::Side rows, const double (&prices)[Depth], const __int64 (&volumes)[Depth],
                         bool fromBelow)
{
    for (std::size_t level = 0; level < Depth; ++level)
        rows[fromBelow ? 9 - level : level] = {true, prices[level], narrow(volumes[level]), 0};
    return rows;
}

} // namespace

void NaiveStatus::setStock(const QString& key)
{
    m_stock = utils::CSingletonT<TC::CStockManager>::instance()->getInstrumentDetail(key);
    m_priceTick = m_stock ? TC::getDetailPriceTick(m_stock) : 0.001;
    m_hasAfterHours = m_stock && isTyped(277, m_stock);
    m_hasAfterHoursSz = m_stock && isTyped(10006, m_stock);
    if (m_stock)
        m_lastClose = m_stock->lastClose;
}

void NaiveStatus::clear()
{
    m_bidRows.fill({});
    m_askRows.fill({});
    m_tickVolume = 0;
    m_lastPrice = DBL_MAX;
    m_lastClose = DBL_MAX;
    m_lastAllData = nullptr;
    m_lastDepthData = nullptr;
    m_closingData = nullptr;
    m_closingPrevData = nullptr;
    m_afterHoursVolume = 0;
}

double NaiveStatus::getLastClosePrice() const
{
    if (!std::isinf(m_lastClose) && !std::isnan(m_lastClose))
        return m_lastClose;
    ++m_counters->closesOfInstrument;
    return TC::getDetailLastClose(m_stock);
}

void NaiveStatus::compare(Side& rows, const Side& before, std::size_t first, std::size_t end)
{
    for (std::size_t at = first; at < end; ++at) {
        NaiveStatusRow& row = rows[at];
        if (!(std::abs(row.price) > kTolerance)) {
            ++m_counters->emptyLevels;
            continue;
        }
        int found = 0;
        bool barelyMissed = false;
        for (std::size_t i = 0; i < before.size(); ++i) {
            const double distance = std::abs(row.price - before[i].price);
            barelyMissed = barelyMissed || (distance >= m_priceTick / 10 && distance <= m_priceTick / 5);
            if (!(distance < m_priceTick / 10))
                continue;
            if (++found > 1)
                continue;
            row.delta = narrow(minus(row.volume, before[i].volume));
            m_counters->matchesOfOtherRow += i != at ? 1 : 0;
            m_counters->matchesOfUnusedRow += before[i].used ? 0 : 1;
            m_counters->wrappedDeltas += minus(row.volume, before[i].volume) != row.delta ? 1 : 0;
        }
        m_counters->matches += found > 0 ? 1 : 0;
        m_counters->matchesOfSeveralRows += found > 1 ? 1 : 0;
        m_counters->nothingThere += found == 0 ? 1 : 0;
        m_counters->barelyMissed += found == 0 && barelyMissed ? 1 : 0;
    }
}

template <class Snapshot>
void NaiveStatus::takePrices(const std::shared_ptr<Snapshot>& current)
{
    if (std::abs(TC::getLastPriceEx(m_isNewLoan, current)) <= kTolerance) {
        ++(m_isNewLoan ? m_counters->closesWrittenAlternatively : m_counters->closesWritten);
        m_counters->writtenUnusable += std::isfinite(current->lastClose) && current->lastClose != 0 ? 0 : 1;
        (m_isNewLoan ? current->lastPriceAlt : current->lastPrice) = current->lastClose;
    } else if (std::abs(TC::getLastPriceEx(m_isNewLoan, current)) < 2 * kTolerance) {
        ++m_counters->nearlyMissing;
    }
    const double price = TC::getLastPriceEx(m_isNewLoan, current);
    m_counters->missingLast += price == DBL_MAX ? 1 : 0;
    if (std::isfinite(price))
        m_lastPrice = price;
    else
        ++m_counters->infiniteLast;

    const double close = current->lastClose;
    if (!std::isfinite(close)) {
        ++m_counters->closesNotFinite;
    } else if (std::abs(close) > m_priceTick) {
        ++m_counters->closesTaken;
        m_counters->closesAtTick += std::abs(close) <= m_priceTick + kTolerance ? 1 : 0;
        m_lastClose = close;
    } else {
        ++m_counters->closesBelowTick;
    }
}

template <class Snapshot>
void NaiveStatus::fill(const std::shared_ptr<Snapshot>& current, const std::shared_ptr<Snapshot>& previous)
{
    constexpr std::size_t kLevels = std::is_same_v<Snapshot, quoter::QuoterAllData> ? 5 : 10;
    ++m_counters->books[kLevels == 5 ? 0 : 1];
    m_counters->previousGiven += previous ? 1 : 0;
    const Side asksBefore = previous ? sideOf({}, previous->askPrice, previous->askVolume, true) : m_askRows;
    const Side bidsBefore = previous ? sideOf({}, previous->bidPrice, previous->bidVolume, false) : m_bidRows;
    m_askRows = sideOf(m_askRows, current->askPrice, current->askVolume, true);
    m_bidRows = sideOf(m_bidRows, current->bidPrice, current->bidVolume, false);
    compare(m_askRows, asksBefore, 10 - kLevels, 10);
    compare(m_bidRows, bidsBefore, 0, kLevels);
    takePrices(current);
}

bool NaiveStatus::calc(int, const RecordPtr& current, const RecordPtr& previous)
{
    if (m_stock && m_stock->market == "YSWP") {
        ++m_counters->withoutBook;
        return true;
    }
    if (const auto all = as<quoter::QuoterAllData>(current)) {
        m_counters->previousOfOtherType += previous && !as<quoter::QuoterAllData>(previous) ? 1 : 0;
        fill(all, as<quoter::QuoterAllData>(previous));
        return true;
    }
    if (const auto depth = as<quoter::QuoterDepthData>(current)) {
        m_counters->previousOfOtherType += previous && !as<quoter::QuoterDepthData>(previous) ? 1 : 0;
        fill(depth, as<quoter::QuoterDepthData>(previous));
        return true;
    }
    ++m_counters->noSnapshots;
    return false;
}

void NaiveStatus::showClose(int batchKind)
{
    ++(m_closingData ? m_counters->closingShown : m_counters->closingMissing);
    calc(batchKind, m_closingData, m_closingPrevData);
    m_tickVolume = m_afterHoursVolume;
}

void NaiveStatus::connectTickData(const RecordPtr& current, const RecordPtr& previous, long long tickVolume)
{
    const auto all = as<quoter::QuoterAllData>(current);
    const auto depth = as<quoter::QuoterDepthData>(current);
    const bool isEnd = (all && all->tradeStatus == 23) || (depth && depth->tradeStatus == 23);
    if (hasPhase() && isEnd) {
        ++m_counters->connectedAtEndOfPhase;
        showClose(4);
        return;
    }
    ++m_counters->connected;
    calc(4, current, previous);
    m_tickVolume = tickVolume;
}

template <class Snapshot>
__int64 NaiveStatus::volumeOf(const std::shared_ptr<Snapshot>& record) const
{
    return TC::getVolumeEx(m_isNewLoan, record);
}

template <class Snapshot>
void NaiveStatus::live(int batchKind, const std::shared_ptr<Snapshot>& record, std::shared_ptr<Snapshot>& last)
{
    if (last) {
        const __int64 before = volumeOf(last);
        const __int64 now = volumeOf(record);
        ++(before < now ? m_counters->rises : before == now ? m_counters->stands : m_counters->falls);
        if (before < now)
            m_tickVolume = minus(now, before);
        m_counters->wrappedSteps += before < now && m_tickVolume < 0 ? 1 : 0;
    }
    if (hasPhase()) {
        if (record->tradeStatus == 23) {
            last = record;
            showClose(batchKind);
            return;
        }
        if (record->tradeStatus < 22) {
            ++m_counters->closingMoved;
            m_closingPrevData = last;
            m_closingData = record;
        } else if (last && last->tradeStatus < 22) {
            ++m_counters->phasesEntered;
            m_afterHoursVolume = narrow(m_tickVolume);
            m_counters->wideAfterHoursVolumes += m_afterHoursVolume != m_tickVolume ? 1 : 0;
            m_tickVolume = volumeOf(record);
        }
    }
    last = record;
    calc(batchKind, record, nullptr);
}

template <class Snapshot>
void NaiveStatus::findClosing(const Records& records)
{
    std::size_t at = records.size();
    std::shared_ptr<Snapshot> closing;
    while (at > 0 && !closing) {
        const auto candidate = as<Snapshot>(records[--at]);
        if (candidate && candidate->tradeStatus < 22)
            closing = candidate;
    }
    if (!closing)
        return;
    ++m_counters->closingOfHistory;
    m_closingData = closing;
    if (at == 0) {
        ++m_counters->closingAtFirst;
        return;
    }
    m_closingPrevData = records[at - 1];
    m_counters->closingPrevForeign += as<Snapshot>(m_closingPrevData) ? 0 : 1;
    while (at > 0) {
        const auto before = as<Snapshot>(records[--at]);
        if (before && volumeOf(before) < volumeOf(closing)) {
            ++m_counters->closingVolumes;
            m_afterHoursVolume = narrow(minus(volumeOf(closing), volumeOf(before)));
            return;
        }
    }
    ++m_counters->closingWithoutVolume;
}

template <class Snapshot>
void NaiveStatus::findStep(const Records& records, const std::shared_ptr<Snapshot>& record)
{
    const std::string& market = m_stock->market;
    const bool isCounted = market == "SH" || market == "SZ" || market == "BJ" || market == "SSE" || market == "SZSE";
    const auto isLate = [](const Snapshot& x) { return x.tradeStatus == 22 || x.tradeStatus == 23; };
    for (std::size_t at = records.size() - 1; at-- > 0;) {
        const auto before = as<Snapshot>(records[at]);
        if (!before)
            continue;
        if (!hasPhase() && isLate(*before)) {
            ++m_counters->skippedWithoutPhase;
            continue;
        }
        if (hasPhase() && record->tradeStatus >= 22 && before->tradeStatus < 22) {
            ++m_counters->countsAnew;
            m_tickVolume = volumeOf(record);
            return;
        }
        if (!(volumeOf(before) < volumeOf(record)))
            continue;
        if (isLate(*before) != isLate(*record)) {
            ++(isCounted ? m_counters->skippedAcrossPhase : m_counters->acrossPhaseElsewhere);
            if (isCounted)
                continue;
        }
        ++m_counters->historySteps;
        m_tickVolume = minus(volumeOf(record), volumeOf(before));
        return;
    }
    ++m_counters->historyWithoutStep;
}

template <class Snapshot>
void NaiveStatus::history(int batchKind, const Records& records, const std::shared_ptr<Snapshot>& record,
                          std::shared_ptr<Snapshot>& last)
{
    last = record;
    if (hasPhase())
        findClosing<Snapshot>(records);
    findStep(records, record);
    if (hasPhase() && record->tradeStatus == 23) {
        ++m_counters->historyAtEndOfPhase;
        showClose(batchKind);
        return;
    }
    calc(batchKind, record, records.size() > 1 ? records[records.size() - 2] : nullptr);
}

bool NaiveStatus::quoterCallBack(int, int batchKind, const Records& records)
{
    if (!m_stock)
        return false;
    if (records.empty()) {
        ++(batchKind == 0 ? m_counters->emptyFirst : m_counters->emptyLater);
        if (batchKind == 0)
            clear();
        return true;
    }
    if (batchKind == 0)
        m_tickVolume = 0;
    const bool isHistory = batchKind == 0 || batchKind == 3;
    if (isHistory)
        ++(batchKind == 0 ? m_counters->histories : m_counters->pieces);
    const auto all = as<quoter::QuoterAllData>(records.back());
    const auto depth = as<quoter::QuoterDepthData>(records.back());
    if (all && isHistory)
        history(batchKind, records, all, m_lastAllData);
    else if (all)
        live(batchKind, all, m_lastAllData);
    else if (depth && isHistory)
        history(batchKind, records, depth, m_lastDepthData);
    else if (depth)
        live(batchKind, depth, m_lastDepthData);
    else
        m_counters->foreignLast += isHistory ? 1 : 0;
    return true;
}

} // namespace tests::oracle::status
