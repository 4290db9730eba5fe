// The index panel over a day made by hand.

#include "recording/dayfolder.h"
#include "tests/tessi/command.h"
#include "tests/tessi/handmadeday.h"
#include "UiResource/uiresource.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using namespace tests;

// An index that closed at 3000.00, opens below that and rises above it. Its volume stays below the last close.
HandmadeDay indexDay()
{
    HandmadeDay day("SH", "000001");
    day.instrument().isIndex = true;
    std::shared_ptr<quoter::QuoterAllData> first =
        level1("09:30:03").open(2990).high(2990).low(2985).last(2985).lastClose(3000).volume(100000).amount(5e6);
    std::shared_ptr<quoter::QuoterAllData> latest =
        level1("09:30:06").open(2990).high(3020).low(2985).last(3010.5).lastClose(3000).volume(250000).amount(1.2e7);
    day << first << latest;
    return day;
}

class IndexPanelTest : public ::testing::Test {
protected:
    void write(const recording::RecordedDay& day) const
    {
        std::filesystem::remove_all(m_scratch.path("index"));
        recording::writeDay(day, m_scratch.path("index"), recording::Compression::None);
    }

    Outcome shown(const std::string& arguments) const
    {
        return m_scratch.tessi("replay index --panel index " + arguments);
    }

    Scratch m_scratch;
};

TEST_F(IndexPanelTest, shouldShowTenRowsOfTheLatestQuoteWhenIndexIsReplayed)
{
    write(indexDay().recorded());
    for (const char* history : {"", "--history-until 09:30:05", "--history-until 23:00:00"}) {
        const Outcome run = shown(history);
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.out, "label           value\n"
                           "最新指数      3010.50\n"
                           "今日开盘      2990.00\n"
                           "昨日收盘      3000.00\n"
                           "指数涨跌        10.50\n"
                           "指数涨幅        0.35%\n"
                           "指数振幅         0.01\n"
                           "总成交量      2500.00\n"
                           "总成交额  12000000.00\n"
                           "最高指数      3020.00\n"
                           "最低指数      2985.00\n")
            << history;
    }
}

TEST_F(IndexPanelTest, shouldGiveEachRowItsColourWhenFormatIsForPrograms)
{
    write(indexDay().recorded());
    // The latest value has the colour of the open, and a volume below the last close that of fall.
    const auto rows = nlohmann::json::parse(shown("--format json").out);
    ASSERT_EQ(rows.size(), 10u);
    const std::string fall = ZP::CUiResource::getColor("ic_clr_entrust_text_fall").name().toStdString();
    const std::string rise = ZP::CUiResource::getColor("ic_clr_entrust_text_rise").name().toStdString();
    EXPECT_EQ(rows[1].at("colour"), fall);
    EXPECT_EQ(rows[3].at("colour"), rise);
    EXPECT_EQ(rows[0].at("colour"), fall);
    EXPECT_EQ(rows[6].at("colour"), fall);
    EXPECT_EQ(rows[7].at("colour"), rise);
    EXPECT_EQ(rows[9].at("id"), 9);
}

TEST_F(IndexPanelTest, shouldColourRowsWhenStdoutIsATerminal)
{
    if (!m_scratch.canHaveATerminal())
        GTEST_SKIP() << "no pseudo-terminal can be had here";
    write(indexDay().recorded());
    const std::string coloured = m_scratch.onATerminal("env -u NO_COLOR", "replay index --panel index 2>/dev/null").out;
    EXPECT_NE(coloured.find("\033[32m最新指数      3010.50\033[0m"), std::string::npos) << coloured;
    EXPECT_NE(coloured.find("\033[31m指数涨跌        10.50\033[0m"), std::string::npos) << coloured;
}

TEST_F(IndexPanelTest, shouldShowEmptyRowsWhenTheDayHasNoQuote)
{
    write(HandmadeDay().recorded());
    const Outcome run = shown("--format csv");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out.substr(0, run.out.find("今日")), "label,value,id,colour\n最新指数,--,0,\n");
    EXPECT_EQ(run.err, "tessi: note: the instrument is no index; the day has no stream quotes\n");
}

TEST_F(IndexPanelTest, shouldTellOfAnInstrumentThatIsNoIndexWhenItsQuotesAreShown)
{
    recording::RecordedDay day = indexDay().recorded();
    day.instrument.isIndex = false;
    write(day);
    EXPECT_EQ(shown("").err, "tessi: note: the instrument is no index\n");
    day.instrument.market = "CICC";
    write(day);
    EXPECT_EQ(shown("").err, "") << "all of that market are indices";
}

} // namespace
