#include "tests/tessimodel/bookmodels.h"

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
template <class Model>
class BookModelAfterHoursTest : public BookModelTest<Model> {
protected:
    BookModelAfterHoursTest() { followIn("SH"); }

    void followIn(const std::string& market) { this->follow(market, "688001", {277}); }

    // "shown 50, saved 30": the figure that panels get, and the continuous phase's step.
    std::string steps() const
    {
        return "shown " + std::to_string(this->model.m_quoterLastVolume) + ", saved " +
               std::to_string(this->model.m_afterHoursVolume);
    }
};

TYPED_TEST_SUITE(BookModelAfterHoursTest, BookModels, BookModelNames);

// --- histories ------------------------------------------------------------------------------------------------

TYPED_TEST(BookModelAfterHoursTest, shouldSaveTheContinuousStepWhenAHistoryIsAllContinuous)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 13, 130), at(3, 13, 130)});
    EXPECT_EQ(this->steps(), "shown 30, saved 30");
}

TYPED_TEST(BookModelAfterHoursTest, shouldShowTheWholeDayVolumeWhenTheLastRecordEntersAfterHours)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 22, 7)});
    EXPECT_EQ(this->steps(), "shown 7, saved 30") << "the phase counts its own volume from nothing";
}

TYPED_TEST(BookModelAfterHoursTest, shouldShowTheStepWithinThePhaseWhenAfterHoursGrew)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 22, 7), at(4, 22, 12)});
    EXPECT_EQ(this->steps(), "shown 5, saved 30");
}

TYPED_TEST(BookModelAfterHoursTest, shouldLookBackToTheBoundaryWhenAfterHoursStands)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 22, 7), at(4, 22, 7)});
    EXPECT_EQ(this->steps(), "shown 7, saved 30");
}

TYPED_TEST(BookModelAfterHoursTest, shouldShowTheSavedStepWhenAfterHoursIsOver)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 22, 7), at(4, 23, 12)});
    EXPECT_EQ(this->steps(), "shown 30, saved 30");
}

TYPED_TEST(BookModelAfterHoursTest, shouldTakePhasesAboveAsAfterHoursWhenTheyHaveNoName)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 24, 140)});
    EXPECT_EQ(this->steps(), "shown 140, saved 30");
    this->feed.snapshots(history, {at(11, 13, 100), at(12, 22, 120), at(13, 24, 140)});
    EXPECT_EQ(this->steps(), "shown 140, saved 30") << "22 and 24 are two phases on a mainland market";
    this->followIn("HK");
    this->feed.snapshots(history, {at(21, 13, 100), at(22, 22, 120), at(23, 24, 140)});
    EXPECT_EQ(this->steps(), "shown 20, saved 30");
}

TYPED_TEST(BookModelAfterHoursTest, shouldPassOverAfterHoursRecordsWhenTheLastIsContinuous)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 22, 120), at(3, 13, 140)});
    EXPECT_EQ(this->steps(), "shown 40, saved 20") << "what is saved steps over any record";
    this->followIn("HK");
    this->feed.snapshots(history, {at(11, 13, 100), at(12, 22, 120), at(13, 13, 140)});
    EXPECT_EQ(this->steps(), "shown 20, saved 20");
}

TYPED_TEST(BookModelAfterHoursTest, shouldKeepTheSavedStepWhenAHistoryShowsNone)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 13, 130)});
    this->feed.snapshots(moreHistory, {at(3, 22, 7), nullptr, at(4, 22, 9)});
    EXPECT_EQ(this->steps(), "shown 2, saved 30");
    this->feed.snapshots(moreHistory, {at(5, 13, 130), at(6, 23, 9)});
    EXPECT_EQ(this->steps(), "shown 30, saved 30");
    this->feed.snapshots(history, {at(7, 23, 9)});
    EXPECT_EQ(this->steps(), "shown 30, saved 30") << "a history that begins drops the shown step, not the saved one";
}

TYPED_TEST(BookModelAfterHoursTest, shouldSaveNothingWhenTheInstrumentHasNoSuchPhase)
{
    this->follow("SH", "688001");
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 13, 130), at(3, 22, 7)});
    EXPECT_EQ(this->steps(), "shown 0, saved 0");
}

TYPED_TEST(BookModelAfterHoursTest, shouldSaveAndShowVolumesInTheNewLoanFormWhenItIsSet)
{
    this->terminal.answers.setNewLoanFactor(10);
    this->model.setNewLoan(true);
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130), at(3, 22, 7)});
    EXPECT_EQ(this->steps(), "shown 70, saved 300");
    this->feed.snapshots(history, {at(4, 13, 100), at(5, 21, 150)});
    this->feed.snapshots(live, {at(6, 22, 7)});
    EXPECT_EQ(this->steps(), "shown 70, saved 500");
    this->terminal.answers.setNewLoanFactor(-1);
    this->feed.snapshots(history, {at(7, 13, 140), at(8, 13, 100), at(9, 21, 130), at(10, 22, 7)});
    EXPECT_EQ(this->steps(), "shown -7, saved 10") << "less in that form is looked for";
}

TYPED_TEST(BookModelAfterHoursTest, shouldCutTheSavedStepTo32BitsWhenItIsHuge)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, (5LL << 32) + 130), at(3, 22, (3LL << 32) + 7)});
    EXPECT_EQ(this->steps(), "shown 7, saved 30");
    this->feed.snapshots(history, {at(4, 13, 100), at(5, 21, 130)});
    this->feed.snapshots(live, {at(6, 22, (3LL << 32) + 8)});
    EXPECT_EQ(this->steps(), "shown 8, saved -122") << "which is what the entry's own step comes to";
}

// --- live -----------------------------------------------------------------------------------------------------

TYPED_TEST(BookModelAfterHoursTest, shouldSaveTheStepAndShowTheDayVolumeWhenThePhaseBeginsLive)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130)});
    this->feed.snapshots(live, {at(3, 22, 7)});
    EXPECT_EQ(this->steps(), "shown 7, saved 30");
    this->feed.snapshots(live, {at(4, 23, 9)});
    EXPECT_EQ(this->steps(), "shown 30, saved 30");
}

// The day volume that goes on growing has made a step of its own by then, which is what is saved.
TYPED_TEST(BookModelAfterHoursTest, shouldSaveTheEntrysOwnStepWhenTheDayVolumeGrowsOn)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130)});
    this->feed.snapshots(live, {at(3, 22, 137)});
    EXPECT_EQ(this->steps(), "shown 137, saved 7");
    this->feed.snapshots(live, {at(4, 22, 150)});
    EXPECT_EQ(this->steps(), "shown 13, saved 7") << "the base is of the phase now";
    this->feed.snapshots(live, {at(5, 23, 150)});
    EXPECT_EQ(this->steps(), "shown 7, saved 7");
}

// The base stays the last continuous record while the phase's own volume is below: each record enters again.
TYPED_TEST(BookModelAfterHoursTest, shouldSaveAgainWhenASecondRecordOfThePhaseComes)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130)});
    this->feed.snapshots(live, {at(3, 22, 7)});
    this->feed.snapshots(live, {at(4, 22, 9)});
    EXPECT_EQ(this->steps(), "shown 9, saved 7");
    this->feed.snapshots(live, {at(5, 23, 9)});
    EXPECT_EQ(this->steps(), "shown 7, saved 7");
}

TYPED_TEST(BookModelAfterHoursTest, shouldSaveNothingWhenThePhaseIsTheFirstThingSeen)
{
    this->feed.snapshots(live, {at(3, 22, 7)});
    EXPECT_EQ(this->steps(), "shown 0, saved 0");
    this->feed.snapshots(live, {at(4, 22, 9)});
    EXPECT_EQ(this->steps(), "shown 2, saved 0");
    this->feed.snapshots(live, {at(5, 23, 9)});
    EXPECT_EQ(this->steps(), "shown 0, saved 0");
}

TYPED_TEST(BookModelAfterHoursTest, shouldEnterWhenThePhaseHasNoNameLive)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 21, 130)});
    this->feed.snapshots(live, {at(3, 24, 7)});
    EXPECT_EQ(this->steps(), "shown 7, saved 30");
}

TYPED_TEST(BookModelAfterHoursTest, shouldShowTheSavedStepEvenWhenThePhaseIsSkippedLive)
{
    this->feed.snapshots(history, {at(1, 13, 100), at(2, 13, 130)});
    this->feed.snapshots(live, {at(3, 23, 190)});
    EXPECT_EQ(this->steps(), "shown 30, saved 30");
}

} // namespace
