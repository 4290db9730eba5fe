#include "indexui/tessimodel/detail/request.h"

#include "Formula/formulaparam.h"
#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/support/records.h"
#include "ztservice/instrumentdetail.h"

#include <gtest/gtest.h>

namespace {

using namespace TC::detail;

TEST(Request, shouldStartAtTheMarketsOwnTradingDayWhenMarketsDiffer)
{
    standin::Terminal terminal;
    terminal.instruments.setLastTradingDay(20240301);
    terminal.instruments.setLastTradingDay("HK", 20240229);
    const auto hongKong = terminal.instruments.add(tests::stock("HK", "00700"));
    const auto shenzhen = terminal.instruments.add(tests::stock("SZ", "000001"));

    TC::CFormulaParam param;
    param.beginTime.sequence = 5;
    fillRequest(param, hongKong, kQuotes);
    EXPECT_EQ(param.beginTime.time, tests::timeOf("00:00:00") - 24LL * 3600 * 1000);
    EXPECT_EQ(param.beginTime.sequence, 0);
    EXPECT_EQ(param.dataName, "QUOTER");
    EXPECT_EQ(param.period, 50);

    param.rangeFlags = 9;
    fillRequest(param, shenzhen, kQuotesByVolume);
    EXPECT_EQ(param.market, "SZ");
    EXPECT_EQ(param.stockCode, "000001");
    EXPECT_EQ(param.beginTime.time, tests::timeOf("00:00:00"));
    EXPECT_EQ(param.endTime, quoter::TimeSeq::TIME_LASTED);
    EXPECT_EQ(param.rangeFlags, 0);
    EXPECT_EQ(param.dataName, "QUOTERVOL");
    EXPECT_EQ(param.period, 60000);
}

} // namespace
