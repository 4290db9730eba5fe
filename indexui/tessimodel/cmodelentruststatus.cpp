#include "indexui/tessimodel/cmodelentruststatus.h"

#include "Formula/stockmanager.h"
#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/livewrite.h"
#include "indexui/tessimodel/detail/markets.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/request.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "indexui/tessimodel/detail/visitsnapshot.h"
#include "indexui/tessimodel/detail/volumestep.h"
#include "IndexUtils/instrumentdetails.h"
#include "IndexUtils/quotefields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>

namespace TC {

using namespace detail;

namespace {

constexpr int kRows = CModelEntrustStatus::kRows;

// What calc is told for a pair that a panel gives; of a batch it is the kind.
constexpr int kGivenPair = 4;

// One side of a snapshot, best level first.
struct Levels {
    std::span<const double> prices;
    std::span<const __int64> volumes;
};

template <class Snapshot>
Levels bidsOf(const Snapshot& snapshot)
{
    return {snapshot.bidPrice, snapshot.bidVolume};
}

template <class Snapshot>
Levels asksOf(const Snapshot& snapshot)
{
    return {snapshot.askPrice, snapshot.askVolume};
}

// Where a level stands in the rows of its side: bids go down the book, asks come down to the best.
std::size_t bidRow(std::size_t level)
{
    return level;
}

std::size_t askRow(std::size_t level)
{
    return kRows - 1 - level;
}

using RowOf = std::size_t (*)(std::size_t level);
using Rows = std::array<EntrustStatusRow, kRows>;

void writeLevels(const Levels& levels, RowOf rowOf, EntrustStatusRow* rows)
{
    for (std::size_t level = 0; level < levels.prices.size(); ++level)
        rows[rowOf(level)] = {true, levels.prices[level], low32(levels.volumes[level]), 0};
}

// How much the volume at the row's price has changed, wherever the price stood before. A tenth of a price step tells
// two prices apart here, and not the tolerance of prices: that is wanted.
int changeSince(const Rows& before, const EntrustStatusRow& row, double priceTick)
{
    if (isZero(row.price))
        return 0;
    for (const EntrustStatusRow& old : before) {
        if (std::abs(old.price - row.price) < priceTick / 10)
            return difference32(row.volume, old.volume);
    }
    return 0;
}

// Shows one side of a snapshot, with the changes since another, or since the rows as they stand.
void showSide(const Levels& current, const std::optional<Levels>& previous, RowOf rowOf, double priceTick,
              QVector<EntrustStatusRow>& side)
{
    EntrustStatusRow* const rows = side.data(); // once, since every access asks whether a copy shares them
    Rows before;
    if (previous)
        writeLevels(*previous, rowOf, before.data());
    else
        std::copy_n(rows, kRows, before.data());

    writeLevels(current, rowOf, rows);
    for (std::size_t level = 0; level < current.prices.size(); ++level) {
        EntrustStatusRow& row = rows[rowOf(level)];
        row.delta = changeSince(before, row, priceTick);
    }
}

// Before the first trade there is no last price, and panels show the last close. It goes into the record itself, so
// that every later reader shows the same.
template <class Snapshot>
void giveLastPrice(Snapshot& record, bool newLoan)
{
    writeLive(newLoan ? record.lastPriceAlt : record.lastPrice, record.lastClose);
}

// 0 of a record that is no snapshot.
int tradeStatusOf(const std::shared_ptr<quoter::QuoterBase>& record)
{
    int status = 0;
    visitSnapshot(record.get(), [&status](const auto& snapshot) { status = snapshot.tradeStatus; });
    return status;
}

} // namespace

CModelEntrustStatus::CModelEntrustStatus()
    : m_lastPrice(kNoValue)
    , m_lastClose(kNoValue)
    , m_priceTick(kDefaultPriceTick)
    , m_bidRows(kRows)
    , m_askRows(kRows)
{}

void CModelEntrustStatus::setStock(const QString& key)
{
    m_stock = utils::CSingletonT<CStockManager>::instance()->getInstrumentDetail(key);
    m_priceTick = m_stock ? getDetailPriceTick(m_stock) : kDefaultPriceTick;
    m_hasAfterHours = m_stock && hasAfterHoursType(*m_stock);
    m_hasAfterHoursSz = m_stock && hasAfterHoursTypeSz(*m_stock);
    if (m_stock)
        m_lastClose = m_stock->lastClose;
}

void CModelEntrustStatus::getParams(CFormulaParam& param) const
{
    fillRequest(param, m_stock, kQuotes);
}

bool CModelEntrustStatus::quoterCallBack(int, int batchKind, const RecordList& records)
{
    if (!m_stock)
        return false;
    if (records.empty()) {
        if (batchKind == kHistoryStart)
            clear();
        return true;
    }

    if (batchKind == kHistoryStart)
        m_tickVolume = 0;
    if (const auto level1 = lastAs<quoter::QuoterAllData>(records))
        take(batchKind, records, level1, m_lastAllData);
    else if (const auto level2 = lastAs<quoter::QuoterDepthData>(records))
        take(batchKind, records, level2, m_lastDepthData);
    return true;
}

void CModelEntrustStatus::connectTickData(const std::shared_ptr<quoter::QuoterBase>& current,
                                          const std::shared_ptr<quoter::QuoterBase>& previous, long long tickVolume)
{
    if (isCloseShownAt(tradeStatusOf(current))) {
        showClose(kGivenPair);
        return;
    }
    showRecord(kGivenPair, current, previous);
    m_tickVolume = tickVolume;
}

void CModelEntrustStatus::clear()
{
    m_bidRows.fill({});
    m_askRows.fill({});
    m_tickVolume = 0;
    m_lastPrice = m_lastClose = kNoValue;
    m_lastAllData.reset();
    m_lastDepthData.reset();
    m_closingData.reset();
    m_closingPrevData.reset();
    m_afterHoursVolume = 0;
}

double CModelEntrustStatus::getLastClosePrice() const
{
    return std::isfinite(m_lastClose) ? m_lastClose : getDetailLastClose(m_stock);
}

void CModelEntrustStatus::setNewLoan(bool newLoan)
{
    m_isNewLoan = newLoan;
}

bool CModelEntrustStatus::calc(int batchKind, const std::shared_ptr<quoter::QuoterBase>& current,
                               const std::shared_ptr<quoter::QuoterBase>& previous)
{
    if (m_stock && isBooklessMarket(m_stock->market))
        return true;
    if (const auto level1 = recordAs<quoter::QuoterAllData>(current)) {
        calc(batchKind, level1, recordAs<quoter::QuoterAllData>(previous));
        return true;
    }
    if (const auto level2 = recordAs<quoter::QuoterDepthData>(current)) {
        calc(batchKind, level2, recordAs<quoter::QuoterDepthData>(previous));
        return true;
    }
    return false;
}

void CModelEntrustStatus::calc(int, const std::shared_ptr<quoter::QuoterAllData>& current,
                               const std::shared_ptr<quoter::QuoterAllData>& previous)
{
    showSnapshot(current, previous);
}

void CModelEntrustStatus::calc(int, const std::shared_ptr<quoter::QuoterDepthData>& current,
                               const std::shared_ptr<quoter::QuoterDepthData>& previous)
{
    showSnapshot(current, previous);
}

bool CModelEntrustStatus::isFollowedAfterHours() const
{
    return m_hasAfterHours || m_hasAfterHoursSz;
}

// When the after-hours phase is over, the panel goes back to the book and the tick of the close.
bool CModelEntrustStatus::isCloseShownAt(int tradeStatus) const
{
    return isFollowedAfterHours() && tradeStatus == kStatusAfterHoursClosed;
}

template <class Snapshot>
void CModelEntrustStatus::take(int batchKind, const RecordList& records, const std::shared_ptr<Snapshot>& record,
                               std::shared_ptr<Snapshot>& last)
{
    if (!isHistory(batchKind)) {
        takeLive(batchKind, record, last);
        return;
    }
    last = record;
    takeHistory(batchKind, records, record);
}

template <class Snapshot>
void CModelEntrustStatus::takeLive(int batchKind, const std::shared_ptr<Snapshot>& record,
                                   std::shared_ptr<Snapshot>& last)
{
    const DayVolume dayVolume{m_isNewLoan};
    const auto before = std::exchange(last, record);
    if (before && dayVolume(before) < dayVolume(record))
        m_tickVolume = difference64(dayVolume(record), dayVolume(before));

    if (isCloseShownAt(record->tradeStatus)) {
        showClose(batchKind);
        return;
    }
    if (isFollowedAfterHours()) {
        if (!isAfterHours(record->tradeStatus)) {
            m_closingPrevData = before;
            m_closingData = record;
        } else if (before && entersAfterHours(before->tradeStatus, record->tradeStatus)) {
            // The figure of the close is kept for the end of the phase, whose own count starts from nothing.
            m_afterHoursVolume = low32(m_tickVolume);
            m_tickVolume = dayVolume(record);
        }
    }
    showRecord(batchKind, record, nullptr);
}

template <class Snapshot>
void CModelEntrustStatus::takeHistory(int batchKind, const RecordList& records, const std::shared_ptr<Snapshot>& record)
{
    if (isFollowedAfterHours())
        keepClose<Snapshot>(records);

    const VolumeStepRules rules{isFollowedAfterHours(), isMainlandMarket(m_stock->market)};
    if (const auto step = latestStep(records, record, rules, DayVolume{m_isNewLoan}))
        m_tickVolume = *step;

    if (isCloseShownAt(record->tradeStatus))
        showClose(batchKind);
    else
        showRecord(batchKind, records.back(), records.size() > 1 ? records[records.size() - 2] : nullptr);
}

// Keeps the last snapshot of before the after-hours phase, the record before it and the step between.
template <class Snapshot>
void CModelEntrustStatus::keepClose(const RecordList& records)
{
    const auto newest = newestContinuous<Snapshot>(records);
    if (!newest)
        return;
    m_closingData = records[*newest];
    if (*newest > 0)
        m_closingPrevData = records[*newest - 1];
    if (const auto step = stepAt<Snapshot>(records, *newest, DayVolume{m_isNewLoan}))
        m_afterHoursVolume = low32(*step);
}

void CModelEntrustStatus::showClose(int batchKind)
{
    showRecord(batchKind, m_closingData, m_closingPrevData);
    m_tickVolume = m_afterHoursVolume;
}

// By the calc that knows which markets have no book, whatever the type at hand.
void CModelEntrustStatus::showRecord(int batchKind, const std::shared_ptr<quoter::QuoterBase>& current,
                                     const std::shared_ptr<quoter::QuoterBase>& previous)
{
    calc(batchKind, current, previous);
}

template <class Snapshot>
void CModelEntrustStatus::showSnapshot(const std::shared_ptr<Snapshot>& current,
                                       const std::shared_ptr<Snapshot>& previous)
{
    std::optional<Levels> asksBefore;
    std::optional<Levels> bidsBefore;
    if (previous) {
        asksBefore = asksOf(*previous);
        bidsBefore = bidsOf(*previous);
    }
    showSide(asksOf(*current), asksBefore, askRow, m_priceTick, m_askRows);
    showSide(bidsOf(*current), bidsBefore, bidRow, m_priceTick, m_bidRows);

    if (isZero(getLastPriceEx(m_isNewLoan, current)))
        giveLastPrice(*current, m_isNewLoan);
    if (const double lastPrice = getLastPriceEx(m_isNewLoan, current); std::isfinite(lastPrice))
        m_lastPrice = lastPrice;
    if (std::isfinite(current->lastClose) && std::abs(current->lastClose) > m_priceTick)
        m_lastClose = current->lastClose;
}

} // namespace TC
