#include "Common/numberformat.h"
#include "datasource/datacenter.h"
#include "IndexUtils/instrumentdetails.h"
#include "quoter/brovanquoteralldata.h"
#include "quoter/quoteaux.h"
#include "quoter/quoterdepthdata.h"
#include "tests/tessimodel/oracle/params/naiveparams.h"
#include "tests/tessimodel/oracle/wrapping.h"
#include "User/userconfig.h"
#include "utils/timeutils.h"
#include "ztservice/instrumentdetail.h"

#include <cmath>

namespace tests::oracle::params {

void NaiveParams::writeLimits(double up, double down)
{
    setParam(21, near(up, 0) || near(up, 100000) ? QString("-") : price(up), "");
    setParam(22, near(down, 0) || near(down, 100000) ? QString("-") : price(down), "");
}

bool NaiveParams::quoterCallback(int, int batchKind, const std::vector<RecordPtr>& records)
{
    if (!m_stock)
        return false;
    double up = m_stock->upStopPrice;
    double down = m_stock->downStopPrice;
    const bool userBrovan = TC::getUserConfig() && TC::getUserConfig()->isBrovanQuoteMode();
    if (userBrovan && !records.empty()) {
        if (const auto own = std::dynamic_pointer_cast<zolv::BrovanQuoterAllData>(records.back())) {
            up = own->upStopPrice;
            down = own->downStopPrice;
            ++m_counters->ownLimits;
        }
    }
    writeLimits(up, down);
    if (records.empty()) {
        if (batchKind == 0)
            clearQuoterData();
        return true;
    }
    if (batchKind == 0) {
        updateHistoryLastClose(records.back());
        calcHistory(records);
        calc(records.back(), true);
        return true;
    }
    return calc(records.back(), false);
}

void NaiveParams::clearQuoterData()
{
    m_tradeCount = 0;
    m_lastAll = nullptr;
    m_lastDepth = nullptr;
    m_lastContinuous = nullptr;
    m_history.clear();
    m_pendingAux.clear();
}

void NaiveParams::calcHistory(const std::vector<RecordPtr>& records)
{
    if (records.size() < 2)
        return;
    m_tradeCount = 0;
    const Seen last = read(records.back());
    if (!last.known)
        return;
    if (last.levelOne)
        m_lastAll = nullptr;
    else
        m_lastDepth = nullptr;
    HistoryPass pass;
    bool hasOtherStream = false;
    for (std::size_t i = 0; i + 1 < records.size(); ++i) {
        const Seen now = read(records[i]);
        if (now.known && now.levelOne == last.levelOne)
            passHistory(records[i], now, pass);
        else if (now.known)
            hasOtherStream = true;
    }
    m_counters->passesOfBothStreams += hasOtherStream ? 1 : 0;
    if (pass.current > 0)
        setParam(15, QString::number(pass.current), "");
    if (isMarked()) {
        setParam(40, ZP::formatLongLongNumber(pass.lateVolume, 0, utils::EFormatNumberFlag(0x40000)), "");
        setParam(39, quantity(pass.lateAmount), "");
    }
}

void NaiveParams::passHistory(const RecordPtr& record, const Seen& now, HistoryPass& pass)
{
    const Seen before = now.levelOne ? read(m_lastAll) : read(m_lastDepth);
    if (now.volume == 0 || !passedInHistory(now, before, pass.current))
        return;
    if (!isMarked()) {
        m_tradeCount = plus32(m_tradeCount, 1);
    } else if (now.status < 22) {
        m_tradeCount = plus32(m_tradeCount, 1);
        m_lastContinuous = record;
    } else {
        pass.lateVolume = now.volume;
        pass.lateAmount = now.amount;
        ++m_counters->lateInHistory;
    }
    m_history[now.timetag].curVolume = narrow(pass.current);
    m_history[now.timetag].tradeCount = m_tradeCount;
    m_history[now.timetag].high = now.high;
    m_history[now.timetag].low = now.low;
    becomePrevious(record);
    ++m_counters->historyEntries;
}

// Works out what the snapshot added; false for one that is skipped.
bool NaiveParams::passedInHistory(const Seen& now, const Seen& before, __int64& current)
{
    if (!before.known) {
        current = now.volume;
        return true;
    }
    if (isMarked() && before.status < 22 && now.status >= 22) {
        current = now.volume;
        ++m_counters->lateStepsInHistory;
        return true;
    }
    if (now.volume <= before.volume) {
        ++m_counters->skippedInHistory;
        return false;
    }
    current = minus(now.volume, before.volume);
    return true;
}

void NaiveParams::becomePrevious(const RecordPtr& record)
{
    if (const auto all = std::dynamic_pointer_cast<quoter::QuoterAllData>(record))
        m_lastAll = all;
    else
        m_lastDepth = std::dynamic_pointer_cast<quoter::QuoterDepthData>(record);
}

bool NaiveParams::calc(const RecordPtr& record, bool isInit)
{
    const Seen now = read(record);
    if (!now.known) {
        ++m_counters->foreign;
        return true;
    }
    m_counters->calls.count(isMarked(), now.levelOne, now.status);
    const Seen before = now.levelOne ? read(m_lastAll) : read(m_lastDepth);
    if (!passesGate(record, now, before, isInit))
        return false;
    const bool moved = isInit || !before.known || !(m_priceTick / 10 > std::abs(now.last - before.last));
    if (moved)
        setParam(record);
    ++(moved ? m_counters->moved : m_counters->still);
    setParam(8, price(now.lastSettlement), "");
    setParam(19, QString::number(now.status), "");
    calcPrices(now);
    calcVolumes(now);
    calcGdrPremium(now);
    if (moved)
        calcMoved(now);
    calcTurnover(now);
    calcCounts(now, before);
    becomePrevious(record);
    return true;
}

bool NaiveParams::passesGate(const RecordPtr& record, const Seen& now, const Seen& before, bool isInit)
{
    if (!isMarked())
        return passesDayGate(record, now, before, isInit);
    setParam(42, statusText(now.status), "");
    if (now.status < 22)
        return passesDayGate(record, now, before, isInit);
    if (before.known && now.volume <= before.volume && before.status >= 22 && !isInit) {
        ++m_counters->lateRefused;
        return false;
    }
    ++m_counters->latePassed;
    return true;
}

bool NaiveParams::passesDayGate(const RecordPtr& record, const Seen& now, const Seen& before, bool isInit)
{
    if (now.settlement > 1e-5 && now.status > 0) {
        setParam(20, price(now.settlement), "");
        ++m_counters->settlements;
    }
    if (before.known && now.volume <= before.volume) {
        const int clock = static_cast<int>(utils::millisecondsToTime(now.timetag) % 1000000);
        const bool auction = utils::isInCallAuction(TC::getDetailMarket(m_stock), clock);
        const bool brovan = se::DataCenter::isBrovanQuoteMode();
        if (isInit)
            ++m_counters->stillButFirst;
        else if (auction)
            ++m_counters->stillInAuction;
        else
            ++(brovan ? m_counters->stillButBrovan : m_counters->refused);
        return isInit || auction || brovan;
    }
    if (isMarked())
        m_lastContinuous = record;
    if (now.volume > 0) {
        m_tradeCount = plus32(m_tradeCount, 1);
        ++m_counters->counted;
    }
    return true;
}

void NaiveParams::calcPrices(const Seen& now)
{
    if (!now.levelOne || usable(now.open))
        setParam(9, price(now.open), getPriceColor(now.open, m_lastClose));
    if (!now.levelOne || usable(now.high))
        setParam(10, price(now.high), getPriceColor(now.high, m_lastClose));
    if (!now.levelOne || usable(now.low))
        setParam(11, price(now.low), getPriceColor(now.low, m_lastClose));
    if (m_isIopvFund && usable(now.iopv)) {
        setParam(23, ZP::formatPriceDoubleNumber(now.iopv, 0.0001), getPriceColor(now.iopv, m_lastClose));
        ++m_counters->iopvs;
    }
    if (!usable(now.open) || !usable(now.high) || !usable(now.low))
        ++(now.levelOne ? m_counters->unusableLevelOne : m_counters->unusableLevelTwo);
}

void NaiveParams::calcVolumes(const Seen& now)
{
    if (!isMarked() || now.status < 22) {
        setParam(14, quantity(static_cast<double>(now.volume)), "");
        setParam(16, quantity(now.amount), "");
        return;
    }
    setParam(40, ZP::formatLongLongNumber(now.volume, 0, utils::EFormatNumberFlag(0x40000)), "");
    setParam(39, quantity(now.amount), "");
    const Seen day = read(m_lastContinuous);
    if (day.known && day.levelOne == now.levelOne) {
        setParam(14, quantity(static_cast<double>(day.volume)), "");
        setParam(16, quantity(day.amount), "");
        ++m_counters->lateWithDay;
    } else {
        ++(day.known ? m_counters->lateWithOtherStream : m_counters->lateWithoutDay);
    }
}

bool NaiveParams::hasGdrClose() const
{
    return m_hasGdr && m_gdrStock && !near(m_gdrStock->getDoubleField(3002), 0);
}

void NaiveParams::calcGdrPremium(const Seen& now)
{
    if (!hasGdrClose())
        return;
    const double premium = gdrPremium(now.last);
    setParam(51, (premium > 1e-5 ? "+" : "") + ratio(premium), getPriceColor(premium, 0));
    if (premium > 1e-5)
        ++m_counters->premiums;
    else if (premium < -1e-5)
        ++m_counters->discounts;
    else
        ++m_counters->zeroPremiums;
}

void NaiveParams::calcMoved(const Seen& now)
{
    const double unit = m_isBond ? now.last / 100 : now.last;
    setParam(0, price(now.last), getPriceColor(now.last, m_lastClose));
    setParam(28, marketValue(unit * m_stock->getDoubleField(3015)), "");
    setParam(29, marketValue(unit * m_stock->getDoubleField(3016)), "");
    setParam(53, price(m_stock->getDoubleField(3003) + now.last), "");
    if (!near(m_lastClose, 0))
        setParam(6, ratio((now.high - now.low) / m_lastClose), "");
    else
        ++m_counters->noAmplitudes;
}

void NaiveParams::calcTurnover(const Seen& now)
{
    const double shares = m_stock->getDoubleField(3016);
    if (near(shares, 0))
        return;
    double turnover = 0 / shares; // no number of a share count that is none
    const Seen day = read(m_lastContinuous);
    if (!isMarked() || now.status < 22)
        turnover = static_cast<double>(now.volume) * (m_isHk ? 1 : 100) / shares;
    else if (day.known && day.levelOne == now.levelOne)
        turnover = static_cast<double>(day.volume) * 100 / shares;
    if (se::DataCenter::isBrovanQuoteMode() && shares == 1.0) {
        setParam(30, "--    ", "");
        ++m_counters->noTurnovers;
    } else {
        setParam(30, ratio(turnover), "");
    }
}

void NaiveParams::calcCounts(const Seen& now, const Seen& before)
{
    const bool late = isMarked() && now.status >= 22;
    setParam(12, QString::number(m_tradeCount), "");
    if (m_tradeCount > 0 && (!late || before.known)) {
        const __int64 volume = late ? before.volume : now.volume;
        setParam(13,
                 ZP::formatDoubleNumber(static_cast<double>(volume) / m_tradeCount, 2, utils::EFormatNumberFlag(0),
                                        false, "非法值"),
                 "");
    }
    __int64 current = now.volume;
    if (before.known && (!isMarked() || before.status >= 22 || now.status < 22))
        current = minus(now.volume, before.volume);
    else if (before.known)
        ++m_counters->firstLate;
    if (current <= 0)
        return;
    setParam(15, QString::number(current), "");
    NaiveHistory& entry = m_history[now.timetag];
    entry.curVolume = narrow(current);
    entry.tradeCount = m_tradeCount;
    entry.high = now.high;
    entry.low = now.low;
    const auto aux = m_pendingAux.find(now.timetag);
    if (aux == m_pendingAux.end())
        return;
    entry.bidAveragePrice = aux->second->bidAveragePrice;
    entry.totalBidVolume = aux->second->totalBidVolume;
    entry.askAveragePrice = aux->second->askAveragePrice;
    entry.totalAskVolume = aux->second->totalAskVolume;
    m_pendingAux.erase(aux);
    ++m_counters->auxesTaken;
}

} // namespace tests::oracle::params
