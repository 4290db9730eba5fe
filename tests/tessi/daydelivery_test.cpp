#include "apps/tessi/daydelivery.h"

#include "Formula/stockmanager.h"
#include "standin/terminal.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;

bool knows(const std::string& market, const std::string& code)
{
    return utils::CSingletonT<TC::CStockManager>::instance()->getInstrumentDetail(market, code) != nullptr;
}

TEST(DayDelivery, shouldMakeRelatedInstrumentsKnownWhenADayIsIntroduced)
{
    recording::RecordedDay day = HandmadeDay("SH", "601000").recorded();
    day.related = {stock("LSE", "ONE"), stock("LSE", "TWO")};
    standin::Terminal terminal;
    ASSERT_FALSE(knows("LSE", "ONE"));

    tessi::introduce(terminal, day);
    EXPECT_TRUE(knows("SH", "601000"));
    EXPECT_TRUE(knows("LSE", "ONE"));
    EXPECT_TRUE(knows("LSE", "TWO"));
}

} // namespace
