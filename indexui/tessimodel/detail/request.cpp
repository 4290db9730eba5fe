#include "indexui/tessimodel/detail/request.h"

#include "Formula/formulaparam.h"
#include "Formula/stockmanager.h"
#include "IndexUtils/instrumentdetails.h"
#include "utils/timeutils.h"

#include <QDateTime>

namespace TC::detail {

void fillRequest(CFormulaParam& param, const InstrumentPtr& stock, const StreamRequest& stream)
{
    if (!stock)
        return;

    const QString market = getDetailQsMarket(stock);
    const int tradingDay = utils::CSingletonT<CStockManager>::instance()->getLastTradingDay(market);
    const QDate date = QDateTime::fromTime_t(static_cast<uint>(tradingDay)).date();

    param.market = market;
    param.stockCode = getDetailQsCode(stock);
    param.rangeFlags = 0;
    param.dataName = QString::fromLatin1(stream.name);
    param.beginTime = {utils::timeToMilliseconds(date.year(), date.month(), date.day(), 0, 0, 0), 0};
    param.endTime = quoter::TimeSeq::TIME_LASTED;
    param.period = stream.period;
}

} // namespace TC::detail
