#include "Common/numberformat.h"
#include "Formula/stockmanager.h"
#include "IndexUtils/instrumentdetails.h"
#include "IndexUtils/quotefields.h"
#include "quoter/quoteaux.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "tests/tessimodel/oracle/params/naiveparams.h"
#include "ztservice/instrumentdetail.h"

#include <cmath>

namespace tests::oracle::params {

namespace {

template <class Record>
Seen seen(bool newLoan, const std::shared_ptr<Record>& record)
{
    Seen out;
    out.known = true;
    out.timetag = record->timetag;
    out.volume = TC::getVolumeEx(newLoan, record);
    out.status = record->tradeStatus;
    out.last = TC::getLastPriceEx(newLoan, record);
    out.amount = TC::getAmountEx(newLoan, record);
    out.open = record->open;
    out.high = record->high;
    out.low = record->low;
    out.lastClose = record->lastClose;
    out.lastSettlement = record->lastSettlementPrice;
    out.settlement = record->settlementPrice;
    out.iopv = record->iopv;
    out.bid = record->bidPrice[0];
    out.ask = record->askPrice[0];
    return out;
}

} // namespace

Seen NaiveParams::read(const RecordPtr& record) const
{
    if (const auto all = std::dynamic_pointer_cast<quoter::QuoterAllData>(record)) {
        Seen out = seen(m_isNewLoan, all);
        out.levelOne = true;
        return out;
    }
    if (const auto depth = std::dynamic_pointer_cast<quoter::QuoterDepthData>(record))
        return seen(m_isNewLoan, depth);
    return {};
}

bool NaiveParams::setLevel2(bool on)
{
    const bool changed = m_level2 != on;
    m_level2 = on;
    initParams();
    return changed;
}

void NaiveParams::clear()
{
    for (auto& [id, row] : m_params)
        row.text = "";
    m_lastClose = DBL_MAX;
    clearQuoterData();
    initStockParams();
}

bool NaiveParams::quoteAuxCallback(const std::shared_ptr<quoter::QuoteAux>& aux)
{
    if (!aux)
        return false;
    setParam(31, ZP::formatLongLongNumber(aux->totalBidVolume, 0, utils::EFormatNumberFlag(0)), "");
    setParam(32, price(aux->bidAveragePrice), getPriceColor(aux->bidAveragePrice, m_lastClose));
    setParam(33, ZP::formatLongLongNumber(aux->totalAskVolume, 0, utils::EFormatNumberFlag(0)), "");
    setParam(34, price(aux->askAveragePrice), getPriceColor(aux->askAveragePrice, m_lastClose));
    const auto entry = m_history.find(aux->timetag);
    if (entry == m_history.end()) {
        m_pendingAux[aux->timetag] = aux;
        ++m_counters->auxesKept;
        return true;
    }
    entry->second.bidAveragePrice = aux->bidAveragePrice;
    entry->second.totalBidVolume = aux->totalBidVolume;
    entry->second.askAveragePrice = aux->askAveragePrice;
    entry->second.totalAskVolume = aux->totalAskVolume;
    ++m_counters->auxesOfEntries;
    return true;
}

bool NaiveParams::setDishData(__int64 inner, __int64 outer)
{
    setParam(24, inner < 100000 ? QString::number(inner) : quantity(static_cast<double>(inner)), "");
    setParam(25, outer < 100000 ? QString::number(outer) : quantity(static_cast<double>(outer)), "");
    return true;
}

void NaiveParams::setAveragePrice(double value)
{
    if (std::isfinite(value))
        setParam(1, price(value), getPriceColor(value, m_lastClose));
}

void NaiveParams::updateHistoryLastClose(const RecordPtr& record)
{
    if (!m_historyDateSource || !m_stock)
        return;
    const int d = m_historyDateSource();
    const auto stocks = utils::CSingletonT<TC::CStockManager>::instance();
    const int t = stocks->getLastTradingDay(TC::getDetailQsMarket(m_stock));
    const Seen past = read(record);
    if (d < t && past.known) {
        m_lastClose = past.lastClose;
        setParam(7, price(m_lastClose), "");
        ++m_counters->pastDates;
    } else if (d == t) {
        m_lastClose = TC::getDetailLastClose(m_stock);
        setParam(7, price(m_lastClose), "");
        ++m_counters->todayDates;
    } else {
        ++m_counters->otherDates;
    }
}

double NaiveParams::getLastPrice(const RecordPtr& record)
{
    const Seen now = read(record);
    if (!m_stock || !now.known)
        return 0;
    const double t = m_stock->zeroPriceThreshold;
    if (std::abs(now.last) > t)
        return 0;
    const std::string& m = m_stock->market;
    if (m == "SH" || m == "SZ" || m == "BJ" || m == "SSE" || m == "SZSE") {
        if (now.status != 12 && now.status != 18 && now.status != 19)
            return 0;
        ++m_counters->auctionSubstitutes;
    } else {
        const double close = now.levelOne ? m_stock->lastClose : now.lastClose;
        if (!(std::abs(now.bid) > t) && !(std::abs(now.ask) > t) && !(std::abs(close) > t))
            return 0;
        ++m_counters->otherSubstitutes;
    }
    if (!near(now.bid, 0))
        return now.bid;
    if (!near(now.ask, 0))
        return now.ask;
    if (!near(now.lastClose, 0))
        return now.lastClose;
    return 0;
}

QString statusText(int status)
{
    switch (status) {
    case 1:
        return "停牌";
    case 11:
        return "开盘前";
    case 12:
        return "开盘集合竞价";
    case 13:
        return "连续交易";
    case 14:
        return "休市";
    case 15:
        return "竞价交易收盘";
    case 16:
        return "波动性中断";
    case 17:
        return "临时停牌";
    case 18:
        return "收盘集合竞价";
    case 19:
        return "盘中集合竞价";
    case 20:
        return "暂停交易至闭市";
    case 21:
        return "状态异常";
    case 22:
        return "盘后定价交易";
    case 23:
        return "收盘";
    default:
        return status < 24 ? "未知" : "收盘";
    }
}

} // namespace tests::oracle::params
