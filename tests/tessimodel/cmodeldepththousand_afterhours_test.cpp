#include "tests/tessimodel/thousandmodel.h"

namespace {

using namespace tests;

// A snapshot by its time in seconds from 15:00, with phase and day volume. Phases: 13 continuous, 21 closed, 22 the
// after-hours fixed-price phase, 23 its end.
Snapshot<quoter::QuoterDepthData> at(int second, int status, __int64 dayVolume)
{
    const std::string digits = std::to_string(100 + second).substr(1);
    return level2("15:00:" + digits).status(status).volume(dayVolume).bid(10.00);
}

// The step of the day volume for an instrument with an after-hours phase.
class ThousandAfterHoursTest : public ::testing::Test {
protected:
    ThousandAfterHoursTest() { follow("SH"); }

    void follow(const std::string& market)
    {
        terminal.instruments.add(stock(market, "688001", {277}));
        model.setStock(keyOf(market, "688001"));
        feed.request(market, "688001");
    }

    // "shown 50, saved 30": the figure that panels get, and the continuous phase's step.
    std::string steps() const
    {
        return "shown " + std::to_string(model.m_quoterLastVolume) + ", saved " +
               std::to_string(model.m_afterHoursVolume);
    }

    BookTerminal terminal;
    Thousand model;
    BookFeed<Thousand> feed{terminal, model};
};

// --- histories ------------------------------------------------------------------------------------------------

TEST_F(ThousandAfterHoursTest, shouldSaveTheContinuousStepWhenAHistoryIsAllContinuous)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 13, 130), at(3, 13, 130)});
    EXPECT_EQ(steps(), "shown 30, saved 30");
}

TEST_F(ThousandAfterHoursTest, shouldShowTheWholeDayVolumeWhenTheLastRecordEntersAfterHours)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 22, 7)});
    EXPECT_EQ(steps(), "shown 7, saved 30") << "the phase counts its own volume from nothing";
}

TEST_F(ThousandAfterHoursTest, shouldShowTheStepWithinThePhaseWhenAfterHoursGrew)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 22, 7), at(4, 22, 12)});
    EXPECT_EQ(steps(), "shown 5, saved 30");
}

TEST_F(ThousandAfterHoursTest, shouldLookBackToTheBoundaryWhenAfterHoursStands)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 22, 7), at(4, 22, 7)});
    EXPECT_EQ(steps(), "shown 7, saved 30");
}

TEST_F(ThousandAfterHoursTest, shouldShowTheSavedStepWhenAfterHoursIsOver)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 22, 7), at(4, 23, 12)});
    EXPECT_EQ(steps(), "shown 30, saved 30");
}

TEST_F(ThousandAfterHoursTest, shouldTakePhasesAboveAsAfterHoursWhenTheyHaveNoName)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 24, 140)});
    EXPECT_EQ(steps(), "shown 140, saved 30");
    feed.snapshots(history, {at(11, 13, 100), at(12, 22, 120), at(13, 24, 140)});
    EXPECT_EQ(steps(), "shown 140, saved 30") << "22 and 24 are two phases on a mainland market";
    follow("HK");
    feed.snapshots(history, {at(21, 13, 100), at(22, 22, 120), at(23, 24, 140)});
    EXPECT_EQ(steps(), "shown 20, saved 30");
}

TEST_F(ThousandAfterHoursTest, shouldPassOverAfterHoursRecordsWhenTheLastIsContinuous)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 22, 120), at(3, 13, 140)});
    EXPECT_EQ(steps(), "shown 40, saved 20") << "what is saved steps over any record";
    follow("HK");
    feed.snapshots(history, {at(11, 13, 100), at(12, 22, 120), at(13, 13, 140)});
    EXPECT_EQ(steps(), "shown 20, saved 20");
}

TEST_F(ThousandAfterHoursTest, shouldKeepTheSavedStepWhenAHistoryShowsNone)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 13, 130)});
    feed.snapshots(moreHistory, {at(3, 22, 7), nullptr, at(4, 22, 9)});
    EXPECT_EQ(steps(), "shown 2, saved 30");
    feed.snapshots(moreHistory, {at(5, 13, 130), at(6, 23, 9)});
    EXPECT_EQ(steps(), "shown 30, saved 30");
    feed.snapshots(history, {at(7, 23, 9)});
    EXPECT_EQ(steps(), "shown 30, saved 30") << "a history that begins drops the shown step, not the saved one";
}

TEST_F(ThousandAfterHoursTest, shouldSaveNothingWhenTheInstrumentHasNoSuchPhase)
{
    terminal.instruments.add(stock("SH", "688001"));
    model.setStock(keyOf("SH", "688001"));
    feed.snapshots(history, {at(1, 13, 100), at(2, 13, 130), at(3, 22, 7)});
    EXPECT_EQ(steps(), "shown 0, saved 0");
}

// --- live -----------------------------------------------------------------------------------------------------

TEST_F(ThousandAfterHoursTest, shouldSaveTheStepAndShowTheDayVolumeWhenThePhaseBeginsLive)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130)});
    feed.snapshots(live, {at(3, 22, 7)});
    EXPECT_EQ(steps(), "shown 7, saved 30");
    feed.snapshots(live, {at(4, 23, 9)});
    EXPECT_EQ(steps(), "shown 30, saved 30");
}

// The day volume that goes on growing has made a step of its own by then, which is what is saved.
TEST_F(ThousandAfterHoursTest, shouldSaveTheEntrysOwnStepWhenTheDayVolumeGrowsOn)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130)});
    feed.snapshots(live, {at(3, 22, 137)});
    EXPECT_EQ(steps(), "shown 137, saved 7");
    feed.snapshots(live, {at(4, 22, 150)});
    EXPECT_EQ(steps(), "shown 13, saved 7") << "the base is of the phase now";
    feed.snapshots(live, {at(5, 23, 150)});
    EXPECT_EQ(steps(), "shown 7, saved 7");
}

// The base stays the last continuous record while the phase's own volume is below: each record enters again.
TEST_F(ThousandAfterHoursTest, shouldSaveAgainWhenASecondRecordOfThePhaseComes)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130)});
    feed.snapshots(live, {at(3, 22, 7)});
    feed.snapshots(live, {at(4, 22, 9)});
    EXPECT_EQ(steps(), "shown 9, saved 7");
    feed.snapshots(live, {at(5, 23, 9)});
    EXPECT_EQ(steps(), "shown 7, saved 7");
}

TEST_F(ThousandAfterHoursTest, shouldSaveNothingWhenThePhaseIsTheFirstThingSeen)
{
    feed.snapshots(live, {at(3, 22, 7)});
    EXPECT_EQ(steps(), "shown 0, saved 0");
    feed.snapshots(live, {at(4, 22, 9)});
    EXPECT_EQ(steps(), "shown 2, saved 0");
    feed.snapshots(live, {at(5, 23, 9)});
    EXPECT_EQ(steps(), "shown 0, saved 0");
}

TEST_F(ThousandAfterHoursTest, shouldEnterWhenThePhaseHasNoNameLive)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130)});
    feed.snapshots(live, {at(3, 24, 7)});
    EXPECT_EQ(steps(), "shown 7, saved 30");
}

TEST_F(ThousandAfterHoursTest, shouldShowTheSavedStepEvenWhenThePhaseIsSkippedLive)
{
    feed.snapshots(history, {at(1, 13, 100), at(2, 13, 130)});
    feed.snapshots(live, {at(3, 23, 190)});
    EXPECT_EQ(steps(), "shown 30, saved 30");
}

} // namespace
