#include "apps/tessi/dayrequest.h"

#include "datasource/datacenter.h"

#include <algorithm>

namespace tessi {

TC::CFormulaParam wholeDay(const recording::RecordedDay& day)
{
    TC::CFormulaParam request;
    request.market = QString::fromStdString(day.instrument.market);
    request.stockCode = QString::fromStdString(day.instrument.code);
    request.endTime = quoter::TimeSeq::TIME_LASTED;
    return request;
}

recording::Stream snapshotStream(const recording::RecordedDay& day)
{
    const bool hasLevel2 =
        std::find(day.streams.begin(), day.streams.end(), recording::Stream::Snapshots) != day.streams.end();
    return hasLevel2 ? recording::Stream::Snapshots : recording::Stream::Quotes;
}

bool isIndex(const recording::RecordedDay& day)
{
    return se::isIndexEx(day.instrument.market, day.instrument.code) || se::isCICCIndex(day.instrument.market);
}

} // namespace tessi
