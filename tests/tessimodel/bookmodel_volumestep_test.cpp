#include "tests/tessimodel/bookmodels.h"

namespace {

using namespace tests;

// A continuous snapshot by its time in seconds from 09:30, with its day volume.
Snapshot<quoter::QuoterDepthData> at(int second, __int64 dayVolume)
{
    const std::string digits = std::to_string(100 + second).substr(1);
    return level2("09:30:" + digits).volume(dayVolume).bid(10.00);
}

// The latest step of the day volume, for an instrument without an after-hours phase.
template <class Model>
class BookModelVolumeStepTest : public BookModelTest<Model> {
protected:
    // The time as the model keeps it: all of it, or its low 32 bits.
    static auto kept(const std::string& clock)
    {
        return static_cast<decltype(Model::m_quoterVolumeTime)>(timeOf(clock));
    }
};

TYPED_TEST_SUITE(BookModelVolumeStepTest, BookModels, BookModelNames);

// --- histories ------------------------------------------------------------------------------------------------

TYPED_TEST(BookModelVolumeStepTest, shouldTakeTheLastStepWhenAHistoryComes)
{
    this->feed.snapshots(history, {at(1, 100), at(2, 250), at(3, 400)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 150);
    EXPECT_EQ(this->model.m_quoter->volume, 400);
    EXPECT_EQ(this->model.m_quoterVolumeTime, 0) << "only a live step has a time";
}

TYPED_TEST(BookModelVolumeStepTest, shouldLookFurtherBackWhenTheLastRecordsHaveTheSameVolume)
{
    this->feed.snapshots(history, {at(1, 100), at(2, 250), at(3, 400), at(4, 400), nullptr, at(5, 450), at(6, 400)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 150);
}

TYPED_TEST(BookModelVolumeStepTest, shouldHaveNoStepWhenAHistoryShowsNone)
{
    this->feed.snapshots(history, {at(1, 100), at(2, 300)});
    this->feed.snapshots(moreHistory, {at(3, 300), at(4, 300)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 200) << "more history keeps the figure";
    this->feed.snapshots(moreHistory, {at(5, 900)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 200) << "it looks at its own records only";
    EXPECT_EQ(this->model.m_quoter->volume, 900);
    this->feed.snapshots(history, {at(6, 900)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 0) << "a history begins at nothing";
}

TYPED_TEST(BookModelVolumeStepTest, shouldCountAuctionsInAHistoryWhenLookingBack)
{
    this->feed.snapshots(history, {at(1, 100), at(2, 260).ask(10.00), at(3, 400)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 140) << "an auction gives no rows, but a day volume";
}

TYPED_TEST(BookModelVolumeStepTest, shouldPassOverOtherTypesWhenLookingBack)
{
    this->feed.snapshots(history, {at(1, 100), level1("09:30:02").volume(260), order(1), at(3, 400)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 300);
}

TYPED_TEST(BookModelVolumeStepTest, shouldCutTheStepTo32BitsWhenItIsHuge)
{
    this->feed.snapshots(history, {at(1, 100), at(2, (1LL << 32) + 105)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 5);
    this->feed.snapshots(live, {at(3, (1LL << 33) + 108)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 3);
}

// --- live -----------------------------------------------------------------------------------------------------

TYPED_TEST(BookModelVolumeStepTest, shouldStepFromTheHistoryWhenALiveSnapshotGrows)
{
    this->feed.snapshots(history, {at(1, 100), at(2, 250)});
    this->feed.snapshots(live, {at(3, 300)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 50);
    EXPECT_EQ(this->model.m_quoterVolumeTime, this->kept("09:30:03"));
    EXPECT_EQ(this->model.m_quoter->volume, 300);
}

TYPED_TEST(BookModelVolumeStepTest, shouldKeepStepTimeAndBaseWhenTheDayVolumeStands)
{
    this->feed.snapshots(history, {at(1, 100), at(2, 250)});
    this->feed.snapshots(live, {at(3, 300)});
    const auto base = this->model.m_quoter;
    this->feed.snapshots(live, {at(4, 300)});
    this->feed.snapshots(live, {at(5, 280)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 50);
    EXPECT_EQ(this->model.m_quoterVolumeTime, this->kept("09:30:03"));
    EXPECT_EQ(this->model.m_quoter, base);
    this->feed.snapshots(live, {at(6, 310)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 10);
    EXPECT_EQ(this->model.m_quoterVolumeTime, this->kept("09:30:06"));
}

TYPED_TEST(BookModelVolumeStepTest, shouldBeTheBaseOfTheNextStepWhenTheFirstSnapshotIsLive)
{
    this->feed.snapshots(live, {at(1, 300)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 0);
    EXPECT_EQ(this->model.m_quoterVolumeTime, this->kept("09:30:01"));
    EXPECT_EQ(this->model.m_quoter->volume, 300);
    this->feed.snapshots(live, {at(2, 340)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 40);
}

// --- the form of the volume -----------------------------------------------------------------------------------

TYPED_TEST(BookModelVolumeStepTest, shouldCountTheStepInTheNewLoanFormWhenItIsSet)
{
    this->terminal.answers.setNewLoanFactor(10);
    this->feed.snapshots(history, {at(1, 100), at(2, 250)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 150);
    this->model.setNewLoan(true);
    this->feed.snapshots(history, {at(3, 100), at(4, 250)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 1500);
    this->feed.snapshots(live, {at(5, 253)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 30);
}

// Volumes are compared in that form as well.
TYPED_TEST(BookModelVolumeStepTest, shouldLookForLessVolumeInTheNewLoanFormWhenItIsSet)
{
    this->terminal.answers.setNewLoanFactor(-1);
    this->model.setNewLoan(true);
    this->feed.snapshots(history, {at(1, 300), at(2, 100), at(3, 250)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 50) << "-300 is less, -100 is not";
    this->feed.snapshots(live, {at(4, 260)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 50);
    EXPECT_EQ(this->model.m_quoter->volume, 250);
    this->feed.snapshots(live, {at(5, 230)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 20);
    EXPECT_EQ(this->model.m_quoter->volume, 230);
    EXPECT_EQ(this->model.m_quoterVolumeTime, this->kept("09:30:05"));
}

// --- records of an after-hours phase that the instrument does not have ---------------------------------------

TYPED_TEST(BookModelVolumeStepTest, shouldPassOverAfterHoursRecordsWhenThereIsNoSuchPhase)
{
    this->feed.snapshots(history, {at(1, 100), at(2, 150).status(22), at(3, 160).status(23), at(4, 200)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 100);
    this->feed.snapshots(history, {at(5, 100).status(22), at(6, 200).status(22)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 0);
}

struct BoundaryCase {
    const char* market;
    int before, last;
    int step;
};

// On the mainland's markets no step crosses the boundary of the phases 22 and 23; elsewhere it does.
TYPED_TEST(BookModelVolumeStepTest, shouldNotCrossIntoAfterHoursWhenTheMarketIsAMainlandOne)
{
    const BoundaryCase cases[] = {
        {"SH", 13, 22, 0}, {"SZ", 13, 22, 0},  {"BJ", 13, 22, 0},   {"SSE", 13, 22, 0}, {"SZSE", 13, 22, 0},
        {"SZ", 21, 23, 0}, {"HK", 13, 22, 60}, {"HGT", 13, 22, 60}, {"sz", 13, 23, 60}, {"SZ", 13, 24, 60},
        {"SZ", 24, 22, 0}, {"HK", 24, 22, 60}, {"SZ", 13, 13, 60},  {"HK", 22, 13, 0},  {"HK", 22, 22, 0},
    };
    for (const BoundaryCase& c : cases) {
        SCOPED_TRACE(std::string(c.market) + " " + std::to_string(c.before) + " to " + std::to_string(c.last));
        this->model.clear();
        this->follow(c.market, "300001");
        this->feed.snapshots(history, {at(1, 100).status(c.before), at(2, 160).status(c.last)});
        EXPECT_EQ(this->model.m_quoterLastVolume, c.step);
    }
}

TYPED_TEST(BookModelVolumeStepTest, shouldStepLiveWhateverThePhaseWhenThereIsNoAfterHoursPhase)
{
    this->feed.snapshots(live, {at(1, 100)});
    this->feed.snapshots(live, {at(2, 130).status(22)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 30);
    this->feed.snapshots(live, {at(3, 170).status(23)});
    EXPECT_EQ(this->model.m_quoterLastVolume, 40);
    EXPECT_EQ(this->model.m_afterHoursVolume, 0);
}

} // namespace
