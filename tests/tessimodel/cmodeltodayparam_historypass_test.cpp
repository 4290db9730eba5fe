#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

#include <utility>

// The pass over the stored snapshots of a first batch, without the last one, which is shown by itself.
namespace {

using namespace tests;

// A day of a table, told as its history and the rows that the pass writes.
class ParamHistoryPassTest : public ParamStreamTest {
protected:
    // The last record closes the batch and takes no part.
    std::string pass(std::vector<Written> records)
    {
        records.push_back(level1("23:59:59").volume(999999));
        return writtenByPass(records);
    }

    std::string previousClock() const { return previous() ? clockOf(previous()->timetag / 1000) : "none"; }
    std::string lastContinuousClock() const
    {
        return model.m_lastContinuous ? clockOf(model.m_lastContinuous->timetag / 1000) : "none";
    }
};

TEST_P(ParamHistoryPassTest, shouldTellTheDayWhenStockIsUnmarked)
{
    follow(plainStock());
    EXPECT_EQ(pass({
                  level1("09:15:00").volume(0),
                  level1("09:25:00").high(10.10).low(10.10).volume(100),
                  level1("09:30:00").high(10.20).low(10.10).volume(0), // as if it was not there
                  level1("09:30:03").high(10.20).low(10.10).volume(100),
                  level1("09:30:06").high(10.30).low(10.10).volume(90), // a correction of the exchange
                  level1("09:30:09").high(10.40).low(10.00).volume(95), // still below the last one taken
                  level1("09:30:12").high(10.50).low(9.90).volume(101),
                  level1("15:05:00").high(10.50).low(9.90).volume(400).status(22),
                  level1("15:30:00").high(10.50).low(9.90).volume(400).status(23),
              }),
              "RP_CURRENT_VOLUME 299\n");
    EXPECT_EQ(historyText(model), "09:25:00 +100 #1 10.1..10.1\n"
                                  "09:30:12 +1 #2 9.9..10.5\n"
                                  "15:05:00 +299 #3 9.9..10.5\n");
    EXPECT_EQ(model.m_tradeCount, 3);
    EXPECT_EQ(previousClock(), "15:05:00");
    EXPECT_EQ(lastContinuousClock(), "none") << "is kept for marked ones only";
}

class ParamMarkedPassTest : public ParamHistoryPassTest {
protected:
    const std::pair<const char*, standin::InstrumentDescription> kMarked[2] = {{"A", afterHoursStockA()},
                                                                               {"B", afterHoursStockB()}};
};

TEST_P(ParamMarkedPassTest, shouldTellTheDayWhenStockIsMarked)
{
    for (const auto& [type, description] : kMarked) {
        SCOPED_TRACE(type);
        model.clear();
        follow(description);
        EXPECT_EQ(pass({
                      level1("09:15:00").volume(0).status(12),
                      level1("09:25:00").high(10.10).low(10.10).volume(100).amount(1010).status(12),
                      level1("09:30:03").high(10.10).low(10.10).volume(100).amount(1010),
                      level1("09:30:06").high(10.40).low(10.00).volume(90).amount(910),
                      level1("14:59:57").high(10.50).low(9.90).volume(500).amount(5050),
                      level1("15:00:00").high(10.50).low(9.90).volume(520).amount(5252).status(15),
                      level1("15:01:00").high(10.50).low(9.90).volume(0).amount(0).status(15),
                      level1("15:05:00").high(10.50).low(9.90).volume(30).amount(303).status(22),
                      level1("15:05:03").high(10.50).low(9.90).volume(30).amount(303).status(22),
                      level1("15:05:06").high(10.50).low(9.90).volume(29).amount(292.9).status(22),
                      level1("15:29:00").high(10.50).low(9.90).volume(123456).amount(1234560).status(22),
                      level1("15:30:00").high(10.50).low(9.90).volume(123500).amount(1235000).status(23),
                      level1("15:31:00").high(10.50).low(9.90).volume(0).amount(0).status(23),
                  }),
                  "RP_CURRENT_VOLUME 44\nRP_AFTER_HOURS_AMOUNT 123.50万\nRP_AFTER_HOURS_VOLUME 12万\n");
        EXPECT_EQ(historyText(model), "09:25:00 +100 #1 10.1..10.1\n"
                                      "14:59:57 +400 #2 9.9..10.5\n"
                                      "15:00:00 +20 #3 9.9..10.5\n"
                                      "15:05:00 +30 #3 9.9..10.5\n"
                                      "15:29:00 +123426 #3 9.9..10.5\n"
                                      "15:30:00 +44 #3 9.9..10.5\n");
        EXPECT_EQ(previousClock(), "15:30:00");
        EXPECT_EQ(lastContinuousClock(), "15:00:00");
    }
}

TEST_P(ParamMarkedPassTest, shouldCountTheSnapshotWholeWhenItIsTheFirstAfterHours)
{
    for (const auto& [type, description] : kMarked) {
        SCOPED_TRACE(type);
        model.clear();
        follow(description);
        pass({level1("14:59:57").volume(500).status(21), level1("15:05:00").volume(500).status(22)});
        EXPECT_EQ(historyText(model), "14:59:57 +500 #1 0..0\n"
                                      "15:05:00 +500 #1 0..0\n");

        model.clear();
        pass({level1("14:59:57").volume(500).status(21), level1("15:05:00").volume(700).status(23)});
        EXPECT_EQ(historyText(model), "14:59:57 +500 #1 0..0\n"
                                      "15:05:00 +700 #1 0..0\n");

        model.clear();
        pass({level1("15:05:00").volume(30).status(22), level1("15:05:03").volume(50).status(22)});
        EXPECT_EQ(historyText(model), "15:05:00 +30 #0 0..0\n"
                                      "15:05:03 +20 #0 0..0\n");
        EXPECT_EQ(lastContinuousClock(), "none");
    }
}

// Back in trading the volume is an ordinary difference again, and the phase may begin anew.
TEST_P(ParamMarkedPassTest, shouldSubtractWhenTradingResumesBehindTheAfterHoursPhase)
{
    follow(afterHoursStockA());
    EXPECT_EQ(pass({level1("10:00:00").volume(500), level1("10:00:03").volume(30).amount(300).status(22),
                    level1("10:00:06").volume(20), level1("10:00:09").volume(40),
                    level1("10:00:12").volume(35).amount(350).status(22)}),
              "RP_CURRENT_VOLUME 35\nRP_AFTER_HOURS_AMOUNT 350\nRP_AFTER_HOURS_VOLUME 35\n");
    EXPECT_EQ(historyText(model), "10:00:00 +500 #1 0..0\n"
                                  "10:00:03 +30 #1 0..0\n"
                                  "10:00:09 +10 #2 0..0\n"
                                  "10:00:12 +35 #2 0..0\n");
}

TEST_P(ParamMarkedPassTest, shouldShowTotalsOfTheLastAfterHoursSnapshotThatAddedVolumeWhenOthersFollow)
{
    const std::string totals = "RP_AFTER_HOURS_AMOUNT 300\nRP_AFTER_HOURS_VOLUME 30\n";
    for (const auto& [type, description] : kMarked) {
        SCOPED_TRACE(type);
        model.clear();
        follow(description);
        const Written trading = level1("14:59:57").volume(500).amount(5000);
        const Written phase = level1("15:05:00").volume(30).amount(300).status(22);
        EXPECT_EQ(pass({trading, phase, level1("15:05:03").volume(30).amount(303).status(22)}),
                  "RP_CURRENT_VOLUME 30\n" + totals);
        EXPECT_EQ(pass({trading, phase, level1("15:05:03").volume(29).amount(290).status(22)}),
                  "RP_CURRENT_VOLUME 30\n" + totals);
        EXPECT_EQ(pass({trading, phase, level1("15:05:03").volume(70).amount(700).status(21)}),
                  "RP_CURRENT_VOLUME 40\n" + totals)
            << "trading has resumed";
    }
}

TEST_P(ParamMarkedPassTest, shouldShowZeroAfterHoursTotalsWhenThePhaseHasNotBegun)
{
    for (const auto& [type, description] : kMarked) {
        SCOPED_TRACE(type);
        model.clear();
        follow(description);
        EXPECT_EQ(pass({level1("10:00:00").volume(500).amount(5000)}),
                  "RP_CURRENT_VOLUME 500\nRP_AFTER_HOURS_AMOUNT 0\nRP_AFTER_HOURS_VOLUME 0\n");
        EXPECT_EQ(pass({level1("10:00:00").volume(0)}), "RP_AFTER_HOURS_AMOUNT 0\nRP_AFTER_HOURS_VOLUME 0\n");
    }
}

TEST_P(ParamHistoryPassTest, shouldDoNothingAtAllWhenThereAreFewerThanTwoRecords)
{
    follow(afterHoursStockA());
    calc(level1("10:00:00").volume(500));
    const auto before = previous();
    EXPECT_EQ(writtenByPass({}), "");
    EXPECT_EQ(writtenByPass({level1("10:00:03").volume(600)}), "");
    EXPECT_EQ(model.m_tradeCount, 1);
    EXPECT_EQ(previous(), before);
}

TEST_P(ParamHistoryPassTest, shouldStartFromNothingWhenThereAreTwoRecords)
{
    follow(plainStock());
    model.m_tradeCount = 9;
    setPrevious(level1("10:00:00").volume(500));
    EXPECT_EQ(pass({level1("10:00:03").volume(80)}), "RP_CURRENT_VOLUME 80\n");
    EXPECT_EQ(model.m_tradeCount, 1);
    EXPECT_EQ(previousClock(), "10:00:03");
}

TEST_P(ParamHistoryPassTest, shouldForgetThePreviousSnapshotWhenAllVolumesAreZero)
{
    follow(plainStock());
    model.m_tradeCount = 9;
    setPrevious(level1("10:00:00").volume(500));
    EXPECT_EQ(pass({level1("10:00:03").volume(0), level1("10:00:06").volume(0)}), "");
    EXPECT_EQ(model.m_tradeCount, 0);
    EXPECT_EQ(previousClock(), "none");
    EXPECT_EQ(historyText(model), "");
}

TEST_P(ParamHistoryPassTest, shouldCountButNotShowWhenTheOnlyVolumeIsNegative)
{
    follow(plainStock());
    EXPECT_EQ(pass({level1("10:00:03").volume(-5)}), "");
    EXPECT_EQ(historyText(model), "10:00:03 +-5 #1 0..0\n");
    EXPECT_EQ(pass({level1("10:00:03").volume(-5), level1("10:00:06").volume(5)}), "RP_CURRENT_VOLUME 10\n");
}

// One entry a moment: a later snapshot of the same time replaces the figures, and what a summary brought stays.
TEST_P(ParamHistoryPassTest, shouldKeepTheBookFiguresWhenAnEntryIsThere)
{
    follow(plainStock());
    TC::STodayParamHistory& known = model.m_history[timeOf("10:00:00")];
    known.bidAveragePrice = 9.5;
    known.totalBidVolume = 70;
    known.askAveragePrice = 10.5;
    known.totalAskVolume = 80;
    known.high = 1;
    known.low = 1;
    known.curVolume = 1;
    known.tradeCount = 9;
    pass({level1("10:00:00").high(10.10).low(10.00).volume(100), level1("10:00:00").high(10.20).low(9.90).volume(150)});
    EXPECT_EQ(historyText(model), "10:00:00 +50 #2 9.9..10.2 bid 9.5 x 70 ask 10.5 x 80\n");
}

// Summaries that wait are for the live snapshots; the pass leaves them where they are.
TEST_P(ParamHistoryPassTest, shouldLeaveSummariesWaitingWhenTheirSnapshotsArePassed)
{
    follow(plainStock());
    model.quoteAuxCallback(summary("10:00:00"));
    pass({level1("10:00:00").volume(100)});
    EXPECT_EQ(historyText(model), "10:00:00 +100 #1 0..0\n");
    EXPECT_EQ(model.m_pendingAux.size(), 1U);
}

TEST_P(ParamHistoryPassTest, shouldPassOverRecordsWhenTheyAreNoneOfTheStream)
{
    follow(afterHoursStockA());
    const quoter::QuoterBasePtr ofOtherStream =
        GetParam() == 1 ? quoter::QuoterBasePtr(level2("10:00:01").volume(300)) : level1("10:00:01").volume(300);
    const Records records = {nullptr,
                             order(1).buy(10),
                             ofOtherStream,
                             of(level1("10:00:02").volume(100)),
                             fill(1, 2).at(10).shares(700),
                             nullptr,
                             ofOtherStream,
                             of(level1("10:00:03").volume(250)),
                             of(level1("10:00:06").volume(600))};
    model.calc(records);
    EXPECT_EQ(historyText(model), "10:00:02 +100 #1 0..0\n"
                                  "10:00:03 +150 #2 0..0\n");
    EXPECT_EQ(lastContinuousClock(), "10:00:03");
}

// The other stream's previous snapshot belongs to another day's pass and is not touched by this one.
TEST_P(ParamHistoryPassTest, shouldForgetThePreviousSnapshotOfItsOwnStreamAloneWhenBothHaveOne)
{
    follow(plainStock());
    const std::shared_ptr<quoter::QuoterAllData> all = level1("10:00:00").volume(5);
    const std::shared_ptr<quoter::QuoterDepthData> depth = level2("10:00:00").volume(5);
    model.m_lastAll = all;
    model.m_lastDepth = depth;
    pass({level1("10:00:03").volume(0)});
    EXPECT_EQ(model.m_lastAll, GetParam() == 1 ? nullptr : all);
    EXPECT_EQ(model.m_lastDepth, GetParam() == 2 ? nullptr : depth);
}

// A record of no stream at the end tells nothing to choose a stream by.
TEST_P(ParamHistoryPassTest, shouldOnlyForgetTheCountWhenTheLastRecordIsNoSnapshot)
{
    follow(afterHoursStockA());
    for (const quoter::QuoterBasePtr& last : {quoter::QuoterBasePtr(), quoter::QuoterBasePtr(order(1).buy(10))}) {
        setPrevious(level1("10:00:00").volume(500));
        model.m_tradeCount = 9;
        const auto before = previous();
        const Records records = {of(level1("10:00:03").volume(600)), of(level1("10:00:06").volume(700)), last};
        EXPECT_EQ(writtenBy(model, [&] { model.calc(records); }), "");
        EXPECT_EQ(model.m_tradeCount, 0);
        EXPECT_EQ(previous(), before);
        EXPECT_EQ(historyText(model), "");
        EXPECT_EQ(lastContinuousClock(), "none");
    }
}

// The last record is not looked at, whatever it holds.
TEST_P(ParamHistoryPassTest, shouldLeaveOutARecordWhenItIsTheLast)
{
    follow(afterHoursStockB());
    writtenByPass({level1("10:00:00").volume(100), level1("10:00:03").volume(200).status(22).amount(5)});
    EXPECT_EQ(historyText(model), "10:00:00 +100 #1 0..0\n");
    EXPECT_EQ(previousClock(), "10:00:00");
    EXPECT_EQ(lastContinuousClock(), "10:00:00");
    EXPECT_EQ(textOf(model, TC::RP_AFTER_HOURS_VOLUME), "0");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, ParamHistoryPassTest, ::testing::Values(1, 2), levelName);
INSTANTIATE_TEST_SUITE_P(BothStreams, ParamMarkedPassTest, ::testing::Values(1, 2), levelName);

} // namespace
