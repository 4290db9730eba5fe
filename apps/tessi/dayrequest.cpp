#include "apps/tessi/dayrequest.h"

#include "recording/recordedday.h"

namespace tessi {

TC::CFormulaParam wholeDay(const recording::RecordedDay& day)
{
    TC::CFormulaParam request;
    request.market = QString::fromStdString(day.instrument.market);
    request.stockCode = QString::fromStdString(day.instrument.code);
    request.endTime = quoter::TimeSeq::TIME_LASTED;
    return request;
}

} // namespace tessi
