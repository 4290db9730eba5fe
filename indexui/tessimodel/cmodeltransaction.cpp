#include "indexui/tessimodel/cmodeltransaction.h"

#include "Formula/stockmanager.h"
#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/log.h"
#include "indexui/tessimodel/detail/markets.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/request.h"
#include "indexui/tessimodel/detail/tradingphase.h"
#include "indexui/tessimodel/liveread.h"
#include "IndexUtils/instrumentdetails.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"

#include <fmt/format.h>

namespace TC {

using namespace detail;

namespace {

// The two snapshot types share the names of the fields, not their layout.
template <class Snapshot>
void fillRow(const Snapshot& record, TransData& row)
{
    row.timetag = low32(toSeconds(record.timetag));
    row.price = readLive(record.lastPrice);
    row.totalVolume = low32(record.volume);
    row.bidPrice = isUsable(record.bidPrice[0]) ? record.bidPrice[0] : row.price;
    row.askPrice = isUsable(record.askPrice[0]) ? record.askPrice[0] : row.price;
    row.tradeStatus = record.tradeStatus;
}

// A price that moved tells the direction. One that stood still is a buy only above the best bid: a trade at the
// bid is a sell, and so is one without a bid, which then counts as made at it. A price that is no number is a buy.
bool isBuyTick(const TransData& row, const TransData& last)
{
    if (isEqual(row.price, last.price))
        return isGreater(row.price, row.bidPrice);
    return !isLess(row.price, last.price);
}

// Before the rows go: tells how many.
void logDataClear(const CModelTransaction& model, const char* function,
                  const boost::source_location& where = BOOST_CURRENT_LOCATION)
{
    const auto message = [&] {
        return fmt::format("{0} {1} data clear, m_datas size:{2}", function, getDetailKey(model.m_stock),
                           model.m_datas.size());
    };
    logInfo(&model, function, message, where);
}

} // namespace

CModelTransaction::CModelTransaction()
    : m_priceTick(kDefaultPriceTick)
    , m_lastClose(kNoValue)
{}

CModelTransaction::~CModelTransaction()
{
    try {
        clear();
    } catch (...) {
        // A line that could not be logged is no reason to end the process.
    }
}

void CModelTransaction::setStock(const QString& key)
{
    m_stock = utils::CSingletonT<CStockManager>::instance()->getInstrumentDetail(key);
    classify();
    m_inAfterHours = false;
    initStockParams();
}

void CModelTransaction::getParams(CFormulaParam& param) const
{
    fillRequest(param, m_stock, kQuotesByVolume);
}

bool CModelTransaction::quoterCallBack(const int, const int batchKind, const RecordList& records)
{
    if (!m_stock)
        return false;

    if (batchKind == kHistoryStart) {
        logDataClear(*this, "TC::CModelTransaction::quoterCallBack");
        m_datas.clear();
        m_inAfterHours = false;
    }
    if (records.empty())
        return true;

    if (!isHistory(batchKind)) {
        if (!append(records.back()))
            return false;
    } else {
        for (const auto& record : records)
            append(record);
    }
    m_updated = true;
    return true;
}

void CModelTransaction::clear()
{
    logDataClear(*this, "TC::CModelTransaction::clear");
    m_datas.clear();
    m_updated = true;
    initStockParams();
}

bool CModelTransaction::isHkStock() const
{
    return m_isHkMarket || m_isHgt || m_isSgt;
}

bool CModelTransaction::append(const std::shared_ptr<quoter::QuoterBase>& record)
{
    if (const auto level1 = recordAs<quoter::QuoterAllData>(record))
        return appendSnapshot(level1);
    if (const auto level2 = recordAs<quoter::QuoterDepthData>(record))
        return appendSnapshot(level2);
    return false;
}

void CModelTransaction::convert(const std::shared_ptr<quoter::QuoterAllData>& record, TransData& row) const
{
    fillRow(*record, row);
}

void CModelTransaction::convert(const std::shared_ptr<quoter::QuoterDepthData>& record, TransData& row) const
{
    fillRow(*record, row);
}

void CModelTransaction::classify()
{
    m_afterHoursType = m_afterHoursTypeSz = m_isMainland = m_isHgt = m_isSgt = m_isHkMarket = false;
    if (!m_stock)
        return;

    const std::string& market = m_stock->market;
    const std::string& code = m_stock->code;
    m_afterHoursType = hasAfterHoursType(*m_stock);
    m_afterHoursTypeSz = hasAfterHoursCodeSz(*m_stock);
    m_isMainland = isMainlandMarket(market);
    const auto links = utils::CSingletonT<CStockManager>::instance();
    m_isHgt = isShanghaiConnectMarket(market) || links->hasHGT(market, code);
    m_isSgt = isShenzhenConnectMarket(market) || links->hasSGT(market, code);
    m_isHkMarket = isHongKongMarket(market);
}

void CModelTransaction::initStockParams()
{
    m_priceTick = m_stock ? getDetailPriceTick(m_stock) : kDefaultPriceTick;
    m_lastClose = getDetailLastClose(m_stock);
}

template <class Snapshot>
bool CModelTransaction::appendSnapshot(const std::shared_ptr<Snapshot>& record)
{
    const bool hasTraded = record->volume != 0;
    if (!hasTraded || isAfterHoursNoise(record->tradeStatus))
        return false;

    TransData row;
    convert(record, row);
    if (m_datas.isEmpty()) {
        row.volume = row.totalVolume;
        m_datas.append(row);
        return true;
    }

    m_datas.detach(); // a copy of the model may share the list
    const TransData& last = m_datas.constLast();
    if (entersAfterHours(row, last)) {
        // The count of the after-hours phase starts from nothing, so there is nothing to subtract.
        m_inAfterHours = true;
        row.volume = row.totalVolume;
    } else if (row.totalVolume > last.totalVolume) {
        row.volume = difference32(row.totalVolume, last.totalVolume);
    } else {
        return true; // no trade since the last row
    }
    row.isBuy = isBuyTick(row, last);
    m_datas.append(row);
    return true;
}

// After the close snapshots go on: of status 22 and above, which count only with an after-hours phase, and of status
// 15, which are noise once that phase has begun.
bool CModelTransaction::isAfterHoursNoise(int tradeStatus) const
{
    if (!m_isMainland)
        return false;
    if (m_inAfterHours && tradeStatus == kStatusAuctionClosed)
        return true;
    return !m_afterHoursType && !m_afterHoursTypeSz && isAfterHours(tradeStatus);
}

bool CModelTransaction::entersAfterHours(const TransData& row, const TransData& last) const
{
    const bool hasPhase = m_afterHoursType || m_afterHoursTypeSz;
    return hasPhase && !m_inAfterHours && detail::entersAfterHours(last.tradeStatus, row.tradeStatus);
}

} // namespace TC
