#include "Common/numberformat.h"
#include "datasource/datacenter.h"
#include "tests/tessimodel/oracle/params/naiveparams.h"
#include "ztservice/instrumentdetail.h"

namespace tests::oracle::params {

bool NaiveParams::connectTickData(const RecordPtr& record)
{
    if (!m_stock)
        return false;
    refresh(record);
    return true;
}

void NaiveParams::refresh(const RecordPtr& record)
{
    const Seen past = read(record);
    if (!past.known) {
        ++m_counters->foreignPast;
        return;
    }
    if (!past.levelOne && past.volume == 0) {
        ++m_counters->emptyPast;
        return;
    }
    m_counters->looksBack.count(isMarked(), past.levelOne, past.status);
    setParam(8, price(past.lastSettlement), "");
    setParam(19, QString::number(past.status), "");
    setParam(9, price(past.open), getPriceColor(past.open, m_lastClose));
    refreshVolumes(past);
    if (m_isIopvFund && usable(past.iopv))
        setParam(23, ZP::formatPriceDoubleNumber(past.iopv, 0.0001), getPriceColor(past.iopv, m_lastClose));
    refreshPrices(record, past);
    refreshTurnover(past);
    refreshFromHistory(past);
}

void NaiveParams::refreshVolumes(const Seen& past)
{
    const QString volume = quantity(static_cast<double>(past.volume));
    const QString amount = quantity(past.amount);
    const auto unit = utils::EFormatNumberFlag(0x40000);
    if (!isMarked()) {
        setParam(14, volume, "");
        setParam(16, amount, "");
        return;
    }
    setParam(42, statusText(past.status), "");
    if (past.status < 22) {
        if (past.status != 15) {
            setParam(40, ZP::formatLongLongNumber(0, 0, unit), "");
            setParam(39, quantity(0.0), "");
        }
        ++(past.status != 15 ? m_counters->pastDays : m_counters->pastCloses);
        setParam(14, volume, "");
        setParam(16, amount, "");
        return;
    }
    setParam(40, ZP::formatLongLongNumber(past.volume, 0, unit), "");
    setParam(39, amount, "");
    const Seen day = read(m_lastContinuous);
    if (day.known && day.levelOne == past.levelOne) {
        setParam(14, quantity(static_cast<double>(day.volume)), "");
        setParam(16, quantity(day.amount), "");
    } else if (day.known) {
        ++m_counters->pastLatesWithOtherStream;
    }
    ++m_counters->pastLates;
}

void NaiveParams::refreshPrices(const RecordPtr& record, const Seen& past)
{
    setParam(record);
    if (m_hasGdr && m_gdrStock && !near(m_gdrStock->getDoubleField(3002), 0)) {
        const double premium = gdrPremium(past.last);
        const QString text = ratio(premium);
        setParam(51, premium > 1e-5 ? "+" + text : text, getPriceColor(premium, 0));
        ++m_counters->pastPremiums;
    }
    double value = past.last;
    setParam(0, price(value), getPriceColor(value, m_lastClose));
    if (m_isBond)
        value = value / 100;
    setParam(28, marketValue(m_stock->getDoubleField(3015) * value), "");
    setParam(29, marketValue(m_stock->getDoubleField(3016) * value), "");
    if (!near(m_lastClose, 0))
        setParam(6, ratio((past.high - past.low) / m_lastClose), "");
}

void NaiveParams::refreshTurnover(const Seen& past)
{
    const double floating = m_stock->getDoubleField(3016);
    if (near(floating, 0))
        return;
    const Seen day = read(m_lastContinuous);
    double hands = 0;
    double sharesPerHand = 100;
    if (!isMarked() || past.status < 22) {
        hands = static_cast<double>(past.volume);
        if (m_isHk)
            sharesPerHand = 1;
    } else if (day.known && day.levelOne == past.levelOne) {
        hands = static_cast<double>(day.volume);
    }
    const bool isUnknown = se::DataCenter::isBrovanQuoteMode() && floating == 1.0;
    setParam(30, isUnknown ? QString("--    ") : ratio(hands * sharesPerHand / floating), "");
}

void NaiveParams::refreshFromHistory(const Seen& past)
{
    const auto found = m_history.find(past.timetag);
    if (found == m_history.end()) {
        setParam(10, price(past.high), getPriceColor(past.high, m_lastClose));
        setParam(11, price(past.low), getPriceColor(past.low, m_lastClose));
        ++m_counters->pastUnknown;
        return;
    }
    const NaiveHistory& e = found->second;
    setParam(10, price(e.high), getPriceColor(e.high, m_lastClose));
    setParam(11, price(e.low), getPriceColor(e.low, m_lastClose));
    setParam(12, QString::number(e.tradeCount), "");
    setParam(13,
             ZP::formatDoubleNumber(static_cast<double>(past.volume) / e.tradeCount, 2, utils::EFormatNumberFlag(0),
                                    false, "非法值"),
             "");
    setParam(15, QString::number(e.curVolume), "");
    if (!near(e.bidAveragePrice, DBL_MAX)) {
        setParam(31, ZP::formatLongLongNumber(e.totalBidVolume, 0, utils::EFormatNumberFlag(0)), "");
        setParam(32, price(e.bidAveragePrice), getPriceColor(e.bidAveragePrice, m_lastClose));
        ++m_counters->pastBooks;
    }
    if (!near(e.askAveragePrice, DBL_MAX)) {
        setParam(33, ZP::formatLongLongNumber(e.totalAskVolume, 0, utils::EFormatNumberFlag(0)), "");
        setParam(34, price(e.askAveragePrice), getPriceColor(e.askAveragePrice, m_lastClose));
    }
    ++(e.tradeCount == 0 ? m_counters->pastUncounted : m_counters->pastKnown);
}

} // namespace tests::oracle::params
