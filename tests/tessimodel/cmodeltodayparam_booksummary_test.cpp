#include "tests/tessimodel/paramrows.h"
#include "tests/tessimodel/todayparam.h"

#include <cfloat>

namespace {

using namespace tests;
using namespace TC;

// Summaries of the whole book, which come before or after their snapshots.
class TodayParamSummaryTest : public TodayParamTest {
protected:
    TodayParamSummaryTest() { follow("SH", "600001"); }

    // "09:30:00 9.9\n": time and bid average of every summary that waits.
    std::string pendingText() const
    {
        std::ostringstream text;
        for (const auto& [time, aux] : model.m_pendingAux) {
            EXPECT_EQ(time, aux->timetag);
            text << clockOf(time / 1000) << ' ' << aux->bidAveragePrice << '\n';
        }
        return text.str();
    }

    // "100 9.90 | 200 10.10": totals and averages as shown.
    std::string rows() const
    {
        return textOf(model, RP_TOTAL_BID) + " " + textOf(model, RP_BID_AVERAGE) + " | " + textOf(model, RP_TOTAL_ASK) +
               " " + textOf(model, RP_ASK_AVERAGE);
    }
};

TEST_F(TodayParamSummaryTest, shouldShowTotalsAndAveragesWhenSummaryComes)
{
    const std::string before = filledText(model);
    EXPECT_TRUE(model.quoteAuxCallback(summary("09:30:00", 9.904, 123456789, 10.106, 98765)));
    EXPECT_EQ(filledText(model), before + "31 123456789\n32 9.90\n33 98765\n34 10.11\n") << "totals have no unit";
    EXPECT_EQ(colourOf(model, RP_TOTAL_BID), "ic_clr_entrust_amount");
    EXPECT_EQ(colourOf(model, RP_BID_AVERAGE), kFall);
    EXPECT_EQ(colourOf(model, RP_TOTAL_ASK), "ic_clr_entrust_amount");
    EXPECT_EQ(colourOf(model, RP_ASK_AVERAGE), kRise);

    model.quoteAuxCallback(summary("09:30:03", 10, 0, 10, -5));
    EXPECT_EQ(rows(), "0 10.00 | -5 10.00");
    EXPECT_EQ(colourOf(model, RP_BID_AVERAGE), kEqual);
    EXPECT_EQ(colourOf(model, RP_ASK_AVERAGE), kEqual);

    model.quoteAuxCallback(summary("09:30:06", 10.2, 1, 9.8, 2));
    EXPECT_EQ(colourOf(model, RP_BID_AVERAGE), kRise);
    EXPECT_EQ(colourOf(model, RP_ASK_AVERAGE), kFall);

    model.setLastClose(5);
    model.quoteAuxCallback(summary("09:30:09", DBL_MAX, 1, 9.8, 2));
    EXPECT_EQ(rows(), "1 -- | 2 9.80");
    EXPECT_EQ(colourOf(model, RP_ASK_AVERAGE), kRise) << "against the base of now";
}

TEST_F(TodayParamSummaryTest, shouldShowSummaryWhenWithoutInstrument)
{
    model.setStock("nobody knows this");
    EXPECT_TRUE(model.quoteAuxCallback(summary("09:30:00", 9.9, 100, 10.1, 200)));
    EXPECT_EQ(rows(), "100 9.900 | 200 10.100");
    EXPECT_EQ(pendingText(), "09:30:00 9.9\n");
}

TEST_F(TodayParamSummaryTest, shouldWriteNothingWhenSummaryIsNull)
{
    model.history({level1("09:30:00").last(10).volume(5).high(10.5).low(9.5)});
    const std::string before = tableText(model) + historyText(model);
    EXPECT_FALSE(model.quoteAuxCallback(nullptr));
    EXPECT_EQ(tableText(model) + historyText(model), before);
    EXPECT_EQ(pendingText(), "");
}

TEST_F(TodayParamSummaryTest, shouldEndInTheSameEntryWhenSummaryComesBeforeOrAfterItsSnapshot)
{
    const std::string expected = "09:30:00 +5 #1 9.5..10.5 bid 9.9 x 100 ask 10.1 x 200\n";
    const auto aux = summary("09:30:00", 9.9, 100, 10.1, 200);
    for (const bool isDepth : {false, true}) {
        Records snapshot = {level1("09:30:00").last(10).volume(5).high(10.5).low(9.5)};
        if (isDepth)
            snapshot = {level2("09:30:00").last(10).volume(5).high(10.5).low(9.5)};
        for (const bool summaryFirst : {true, false}) {
            model.clear();
            if (summaryFirst) {
                model.quoteAuxCallback(aux);
                EXPECT_EQ(historyText(model), "");
                EXPECT_EQ(pendingText(), "09:30:00 9.9\n");
                EXPECT_EQ(model.m_pendingAux.begin()->second, aux);
            }
            EXPECT_TRUE(model.live(snapshot));
            if (!summaryFirst)
                model.quoteAuxCallback(aux);
            EXPECT_EQ(historyText(model), expected) << "summary first " << summaryFirst << ", level 2 " << isDepth;
            EXPECT_EQ(pendingText(), "");
        }
    }
}

TEST_F(TodayParamSummaryTest, shouldGoToTheEntryOfItsTimeWhenDayHasSeveral)
{
    model.history({level1("09:30:00").last(10).volume(5), level1("09:30:03").last(10).volume(9),
                   level1("09:30:06").last(10).volume(11)});
    model.quoteAuxCallback(summary("09:30:03", 9.9, 100, 10.1, 200));
    const std::string expected = "09:30:00 +5 #1 0..0\n"
                                 "09:30:03 +4 #2 0..0 bid 9.9 x 100 ask 10.1 x 200\n"
                                 "09:30:06 +2 #3 0..0\n";
    EXPECT_EQ(historyText(model), expected);
    model.quoteAuxCallback(summary("09:30:02", 9.8, 101, 10.2, 201));
    EXPECT_EQ(historyText(model), expected);
    EXPECT_EQ(pendingText(), "09:30:02 9.8\n");

    model.quoteAuxCallback(summary("09:30:03", 9.7, 102, 10.3, 202));
    EXPECT_EQ(historyText(model), "09:30:00 +5 #1 0..0\n"
                                  "09:30:03 +4 #2 0..0 bid 9.7 x 102 ask 10.3 x 202\n"
                                  "09:30:06 +2 #3 0..0\n");
}

TEST_F(TodayParamSummaryTest, shouldKeepTheLaterOneWhenTwoWaitForTheSameSnapshot)
{
    model.quoteAuxCallback(summary("09:30:00", 9.9, 100, 10.1, 200));
    model.quoteAuxCallback(summary("09:30:03", 9.7, 102, 10.3, 202));
    model.quoteAuxCallback(summary("09:30:00", 9.8, 101, 10.2, 201));
    EXPECT_EQ(pendingText(), "09:30:00 9.8\n09:30:03 9.7\n");
    model.live({level1("09:30:00").last(10).volume(5)});
    EXPECT_EQ(historyText(model), "09:30:00 +5 #1 0..0 bid 9.8 x 101 ask 10.2 x 201\n");
    EXPECT_EQ(pendingText(), "09:30:03 9.7\n");
}

TEST_F(TodayParamSummaryTest, shouldShowTheBookOfThatMomentWhenAskedFor)
{
    const auto first = level1("09:30:00").last(10).volume(5);
    model.quoteAuxCallback(summary("09:30:00", 9.9, 100, 10.1, 200));
    model.live({first});
    model.quoteAuxCallback(summary("09:30:03", 9.8, 101, 10.2, 201));
    model.live({level1("09:30:03").last(10).volume(9)});
    EXPECT_EQ(rows(), "101 9.80 | 201 10.20");
    model.connectTickData(first);
    EXPECT_EQ(rows(), "100 9.90 | 200 10.10");
}

// --- summaries without a snapshot ---------------------------------------------------------------------------------

TEST_F(TodayParamSummaryTest, shouldWaitWhenItsSnapshotNeverComes)
{
    model.quoteAuxCallback(summary("09:30:00", 9.9, 100, 10.1, 200));
    model.history({level1("09:30:03").last(10).volume(5), level1("09:30:06").last(10).volume(7)});
    model.live({level1("09:30:09").last(10).volume(9)});
    model.live({});
    follow("SZ", "000001");
    EXPECT_EQ(pendingText(), "09:30:00 9.9\n");
}

TEST_F(TodayParamSummaryTest, shouldStopWaitingWhenTheDayIsForgotten)
{
    const auto aux = summary("09:30:00", 9.9, 100, 10.1, 200);
    model.quoteAuxCallback(aux);
    model.history({});
    EXPECT_EQ(pendingText(), "");
    EXPECT_EQ(rows(), "100 9.90 | 200 10.10") << "texts stay";
    model.quoteAuxCallback(aux);
    model.clear();
    EXPECT_EQ(pendingText(), "");
    EXPECT_EQ(rows(), "  |  ");
    EXPECT_EQ(aux.use_count(), 1) << "nothing holds on to it";
}

// Only a snapshot that is shown picks a summary up: of a history that is the last.
TEST_F(TodayParamSummaryTest, shouldStayWaitingWhenItsSnapshotIsInTheMiddleOfAHistory)
{
    model.quoteAuxCallback(summary("09:30:00", 9.9, 100, 10.1, 200));
    model.quoteAuxCallback(summary("09:30:03", 9.8, 101, 10.2, 201));
    model.history({level1("09:30:00").last(10).volume(5), level1("09:30:03").last(10).volume(7)});
    EXPECT_EQ(historyText(model), "09:30:00 +5 #1 0..0\n"
                                  "09:30:03 +2 #2 0..0 bid 9.8 x 101 ask 10.2 x 201\n");
    EXPECT_EQ(pendingText(), "09:30:00 9.9\n");
}

} // namespace
