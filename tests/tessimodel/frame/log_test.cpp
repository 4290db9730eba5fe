#include "indexui/tessimodel/detail/log.h"

#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/support/logtext.h"
#include "tests/support/records.h"
#include "ztservice/instrumentdetail.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;
using namespace TC::detail;

class FrameLogTest : public ::testing::Test {
protected:
    FrameLogTest()
        : instrument(terminal.instruments.add(stock("SZ", "000001")))
    {}

    std::vector<std::string> lines() const { return logTexts(terminal); }
    std::string lineOf(const std::string& rest) const { return logLine(this, rest); }

    standin::Terminal terminal;
    InstrumentPtr instrument;
};

TEST_F(FrameLogTest, shouldWriteDataReturnWhenBatchHoldsTwoRecords)
{
    const Records two = {order(1).time("09:30:00.990"), order(2).time("15:00:01.010")};
    logDataReturn(this, "TC::CModelDepthQueue::entrustCallback", instrument, two);
    EXPECT_EQ(lines(),
              std::vector<std::string>{lineOf("[TC::CModelDepthQueue::entrustCallback] data return, key: SZ_000001, "
                                              "count: 2, range: 20240301093000-20240301150001")});
}

TEST_F(FrameLogTest, shouldWriteNothingWhenBatchHoldsOneRecordOrNone)
{
    logDataReturn(this, "f", instrument, Records{order(1)});
    logDataReturn(this, "f", instrument, Records{});
    EXPECT_TRUE(lines().empty());
}

TEST_F(FrameLogTest, shouldWriteNothingWhenWithoutInstrument)
{
    logDataReturn(this, "f", nullptr, Records{order(1), order(2)});
    EXPECT_TRUE(lines().empty());
}

TEST_F(FrameLogTest, shouldShowTimeZeroWhenFirstOrLastRecordIsNull)
{
    logDataReturn(this, "f", instrument, Records{nullptr, order(1), nullptr});
    logDataReturn(this, "f", instrument, Records{nullptr, order(2).time("10:00:00")});
    EXPECT_EQ(lines(),
              (std::vector<std::string>{lineOf("[f] data return, key: SZ_000001, count: 3, range: 0-0"),
                                        lineOf("[f] data return, key: SZ_000001, count: 2, range: 0-20240301100000")}));
}

TEST_F(FrameLogTest, shouldTellTheCallersPlaceWhenBatchIsLogged)
{
    logDataReturn(this, "f", instrument, Records{order(1), order(2)});
    ASSERT_EQ(terminal.log.lines().size(), 1u);
    const auto written = terminal.log.lines().front();
    EXPECT_EQ(written.level, 20000);
    EXPECT_NE(written.file.find("log_test.cpp"), std::string::npos) << written.file;
    EXPECT_NE(written.function.find("TestBody"), std::string::npos) << written.function;
}

TEST_F(FrameLogTest, shouldWriteNoDataReturnWhenLogIsOffOrUnset)
{
    const Records two = {order(1), order(2)};
    terminal.log.setLevel(30000);
    logDataReturn(this, "f", instrument, two);
    terminal.log.unset();
    logDataReturn(this, "f", instrument, two);
    terminal.log.set();
    EXPECT_TRUE(lines().empty());
}

TEST_F(FrameLogTest, shouldFormatNothingWhenLogDoesNotTakeIt)
{
    int formatted = 0;
    const auto message = [&] {
        ++formatted;
        return std::string("message");
    };
    terminal.log.setLevel(30000);
    logInfo(this, "f", message);
    terminal.log.unset();
    logInfo(this, "f", message);
    EXPECT_EQ(formatted, 0);

    terminal.log.set();
    terminal.log.setLevel(20000);
    logInfo(this, "f", message);
    terminal.log.setLevel(10000);
    logInfo(this, "f", message);
    EXPECT_EQ(formatted, 2);
    EXPECT_EQ(lines(), (std::vector<std::string>{lineOf("[f] message"), lineOf("[f] message")}));
}

} // namespace
