#include "datasource/datacenter.h"
#include "indexui/tessimodel/cmodeltodayparam.h"
#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/bookmoment.h"
#include "indexui/tessimodel/detail/instrumentfields.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/numbertext.h"
#include "indexui/tessimodel/detail/snapshotfigures.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "indexui/tessimodel/detail/userconfig.h"
#include "IndexUtils/instrumentdetails.h"
#include "quoter/brovanquoteralldata.h"
#include "utils/timeutils.h"
#include "ztservice/instrumentdetail.h"

#include <cmath>
#include <optional>

namespace TC {

using namespace detail;

bool CModelTodayParam::quoterCallback(int, int batchKind, const RecordList& records)
{
    if (!m_stock)
        return false;
    setLimitsOf(records);
    if (records.empty()) {
        if (batchKind == kHistoryStart)
            clearQuoterData();
        return true;
    }
    // A further batch of history counts as a live push here: the first batch brings the whole day.
    if (batchKind != kHistoryStart)
        return calc(records.back(), false);
    updateHistoryLastClose(records.back());
    calc(records);
    calc(records.back(), true);
    return true;
}

// The broker's records carry the limits themselves.
void CModelTodayParam::setLimitsOf(const RecordList& records)
{
    if (isUserBrovanQuoteMode()) {
        if (const auto broker = lastAs<zolv::BrovanQuoterAllData>(records)) {
            setLimits(broker->upStopPrice, broker->downStopPrice);
            return;
        }
    }
    setLimits(m_stock->upStopPrice, m_stock->downStopPrice);
}

void CModelTodayParam::calc(const RecordList& records)
{
    if (records.size() < 2)
        return;
    m_tradeCount = 0;
    if (recordAs<quoter::QuoterAllData>(records.back()))
        calcHistory(records, m_lastAll);
    else if (recordAs<quoter::QuoterDepthData>(records.back()))
        calcHistory(records, m_lastDepth);
}

bool CModelTodayParam::calc(const std::shared_ptr<quoter::QuoterBase>& record, bool isInit)
{
    if (const auto level1 = recordAs<quoter::QuoterAllData>(record))
        return calcSnapshot(level1, m_lastAll, isInit);
    if (const auto level2 = recordAs<quoter::QuoterDepthData>(record))
        return calcSnapshot(level2, m_lastDepth, isInit);
    return true;
}

// All records of the stream but the last, which is shown as a snapshot of its own.
template <class Snapshot>
void CModelTodayParam::calcHistory(const RecordList& records, std::shared_ptr<Snapshot>& previous)
{
    previous.reset();
    std::optional<PreviousFigures> before;
    __int64 current = 0;
    DayTotals afterHours;
    for (auto it = records.begin(); it + 1 != records.end(); ++it) {
        const auto record = recordAs<Snapshot>(*it);
        if (!record)
            continue;
        const SnapshotFigures now = figuresOf(record, m_isNewLoan);
        if (now.volume == 0 || (!countsAnew(now, before) && now.volume <= before->volume))
            continue;
        current = addedVolume(now, before);
        if (isInAfterHours(now)) {
            afterHours = {now.volume, now.amount};
        } else {
            m_tradeCount = sum32(m_tradeCount, 1);
            if (isAfterHoursType())
                m_lastContinuous = record;
        }
        remember(now, current);
        previous = record;
        before = asPrevious(now);
    }
    if (current > 0)
        setText(RP_CURRENT_VOLUME, QString::number(current));
    if (isAfterHoursType())
        setAfterHoursTotals(afterHours);
}

template <class Snapshot>
bool CModelTodayParam::calcSnapshot(const std::shared_ptr<Snapshot>& record, std::shared_ptr<Snapshot>& previous,
                                    bool isInit)
{
    const SnapshotFigures now = figuresOf(record, m_isNewLoan);
    const std::optional<PreviousFigures> before = previousFiguresOf(previous, m_isNewLoan);
    if (!admit(record, now, before, isInit))
        return false;

    const double leastMove = m_priceTick / 10;
    const bool moved = isInit || !before || !(leastMove > std::abs(now.last - before->last));
    if (moved)
        setChanges(now);
    setSettlements(now);
    setDayPrices(now);
    setTotals(now);
    setIopv(now);
    setGdrPremium(now);
    if (moved) {
        setLast(now);
        if (m_stock)
            setText(RP_DIRTY_SETTLE, priceText(m_stock->getDoubleField(kFieldInterest) + now.last));
    }
    setTurnover(now);
    setCounts(now, before);
    takeCurrentVolume(now, before);
    previous = record;
    return true;
}

// The gate. Writes the rows that change without a trade; true for a snapshot that is to be shown, which counts as a
// trade when its volume rose.
bool CModelTodayParam::admit(const std::shared_ptr<quoter::QuoterBase>& record, const SnapshotFigures& now,
                             const std::optional<PreviousFigures>& before, bool isInit)
{
    const bool rose = !before || now.volume > before->volume;
    if (isAfterHoursType())
        setText(RP_TRADE_STATUS, quoteStatusToQString(now.tradeStatus));
    if (isInAfterHours(now))
        return isInit || rose || countsAnew(now, before);
    if (isGreater(now.settlement, 0) && now.tradeStatus > 0)
        setText(RP_SETTLE, m_settlementText.of(now.settlement, m_priceTick));
    if (!rose)
        return isInit || isInCallAuction(now) || se::DataCenter::isBrovanQuoteMode();
    if (isAfterHoursType())
        m_lastContinuous = record;
    if (now.volume > 0)
        m_tradeCount = sum32(m_tradeCount, 1);
    return true;
}

bool CModelTodayParam::isInCallAuction(const SnapshotFigures& now) const
{
    constexpr __int64 kClock = 1000000; // HHmmss of yyyyMMddHHmmss
    return m_stock &&
           utils::isInCallAuction(getDetailMarket(m_stock), low32(utils::millisecondsToTime(now.timetag) % kClock));
}

// The day's first snapshot, and the first after hours.
bool CModelTodayParam::countsAnew(const SnapshotFigures& now, const std::optional<PreviousFigures>& before) const
{
    return !before || (isAfterHoursType() && entersAfterHours(before->tradeStatus, now.tradeStatus));
}

__int64 CModelTodayParam::addedVolume(const SnapshotFigures& now, const std::optional<PreviousFigures>& before) const
{
    return countsAnew(now, before) ? now.volume : difference64(now.volume, before->volume);
}

// Level 1 leaves a row as it is where it has no price; level 2 shows what it has, be it none.
void CModelTodayParam::setDayPrices(const SnapshotFigures& now)
{
    const auto set = [&](ERealtimeParam id, double price) {
        if (now.isLevel2 || isUsable(price))
            setPrice(id, price);
    };
    set(RP_OPEN, now.open);
    set(RP_HIGH, now.high);
    set(RP_LOW, now.low);
}

void CModelTodayParam::setCounts(const SnapshotFigures& now, const std::optional<PreviousFigures>& before)
{
    setText(RP_TRADE_COUNT, QString::number(m_tradeCount));
    if (m_tradeCount <= 0)
        return;
    // After hours the volume counts anew, but no trade does: the snapshot before has to do.
    if (!isInAfterHours(now))
        setText(RP_VOLUME_PER_TRADE, plainText(static_cast<double>(now.volume) / m_tradeCount));
    else if (before)
        setText(RP_VOLUME_PER_TRADE, plainText(static_cast<double>(before->volume) / m_tradeCount));
}

void CModelTodayParam::takeCurrentVolume(const SnapshotFigures& now, const std::optional<PreviousFigures>& before)
{
    const __int64 current = addedVolume(now, before);
    if (current <= 0)
        return;
    setText(RP_CURRENT_VOLUME, QString::number(current));
    STodayParamHistory& moment = remember(now, current);
    if (const auto pending = m_pendingAux.find(now.timetag); pending != m_pendingAux.end()) {
        keepBook(moment, *pending->second);
        m_pendingAux.erase(pending);
    }
}

STodayParamHistory& CModelTodayParam::remember(const SnapshotFigures& now, __int64 current)
{
    // Snapshots come in the order of their times, so nearly every one is the latest.
    STodayParamHistory& moment = m_history.try_emplace(m_history.end(), now.timetag)->second;
    moment.curVolume = low32(current);
    moment.tradeCount = m_tradeCount;
    moment.high = now.high;
    moment.low = now.low;
    return moment;
}

} // namespace TC
