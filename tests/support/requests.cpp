#include "tests/support/requests.h"

#include <sstream>

namespace tests {

TC::CFormulaParam strangeRequest()
{
    TC::CFormulaParam param;
    param.subscriptionId = 7;
    param.market = "m";
    param.stockCode = "c";
    param.rangeFlags = 3;
    param.dataName = "d";
    param.beginTime = {1, 2};
    param.endTime = {3, 4};
    param.period = 5;
    return param;
}

TC::CFormulaParam requestByVolume(const QString& market, const QString& code, __int64 begin)
{
    TC::CFormulaParam param = strangeRequest();
    param.market = market;
    param.stockCode = code;
    param.rangeFlags = 0;
    param.dataName = "QUOTERVOL";
    param.beginTime = {begin, 0};
    param.endTime = quoter::TimeSeq::TIME_LASTED;
    param.period = 60000;
    return param;
}

TC::CFormulaParam requestOfQuotes(const QString& market, const QString& code, __int64 begin)
{
    TC::CFormulaParam param = requestByVolume(market, code, begin);
    param.dataName = "QUOTER";
    param.period = 50;
    return param;
}

std::string requestText(const TC::CFormulaParam& param)
{
    std::ostringstream text;
    text << param.subscriptionId << ' ' << param.market.toStdString() << ' ' << param.stockCode.toStdString()
         << " range " << param.rangeFlags << ' ' << param.dataName.toStdString() << " from " << param.beginTime.time
         << '/' << param.beginTime.sequence << " to " << param.endTime.time << '/' << param.endTime.sequence
         << " every " << param.period;
    return text.str();
}

} // namespace tests
