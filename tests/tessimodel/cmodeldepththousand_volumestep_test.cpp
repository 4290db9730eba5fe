#include "tests/tessimodel/thousandmodel.h"

namespace {

using namespace tests;

// A continuous snapshot by its time in seconds from 09:30, with its day volume.
Snapshot<quoter::QuoterDepthData> at(int second, __int64 dayVolume)
{
    const std::string digits = std::to_string(100 + second).substr(1);
    return level2("09:30:" + digits).volume(dayVolume).bid(10.00);
}

// The latest step of the day volume, for an instrument without an after-hours phase.
class ThousandVolumeStepTest : public ThousandTest {};

// --- histories ------------------------------------------------------------------------------------------------

TEST_F(ThousandVolumeStepTest, shouldTakeTheLastStepWhenAHistoryComes)
{
    feed.snapshots(history, {at(1, 100), at(2, 250), at(3, 400)});
    EXPECT_EQ(model.m_quoterLastVolume, 150);
    EXPECT_EQ(model.m_quoter->volume, 400);
    EXPECT_EQ(model.m_quoterVolumeTime, 0) << "only a live step has a time";
}

TEST_F(ThousandVolumeStepTest, shouldLookFurtherBackWhenTheLastRecordsHaveTheSameVolume)
{
    feed.snapshots(history, {at(1, 100), at(2, 250), at(3, 400), at(4, 400), nullptr, at(5, 450), at(6, 400)});
    EXPECT_EQ(model.m_quoterLastVolume, 150);
}

TEST_F(ThousandVolumeStepTest, shouldHaveNoStepWhenAHistoryShowsNone)
{
    feed.snapshots(history, {at(1, 100), at(2, 300)});
    feed.snapshots(moreHistory, {at(3, 300), at(4, 300)});
    EXPECT_EQ(model.m_quoterLastVolume, 200) << "more history keeps the figure";
    feed.snapshots(moreHistory, {at(5, 900)});
    EXPECT_EQ(model.m_quoterLastVolume, 200) << "it looks at its own records only";
    EXPECT_EQ(model.m_quoter->volume, 900);
    feed.snapshots(history, {at(6, 900)});
    EXPECT_EQ(model.m_quoterLastVolume, 0) << "a history begins at nothing";
}

TEST_F(ThousandVolumeStepTest, shouldCountAuctionsInAHistoryWhenLookingBack)
{
    feed.snapshots(history, {at(1, 100), at(2, 260).ask(10.00), at(3, 400)});
    EXPECT_EQ(model.m_quoterLastVolume, 140) << "an auction gives no rows, but a day volume";
}

TEST_F(ThousandVolumeStepTest, shouldPassOverOtherTypesWhenLookingBack)
{
    feed.snapshots(history, {at(1, 100), level1("09:30:02").volume(260), order(1), at(3, 400)});
    EXPECT_EQ(model.m_quoterLastVolume, 300);
}

TEST_F(ThousandVolumeStepTest, shouldCutTheStepTo32BitsWhenItIsHuge)
{
    feed.snapshots(history, {at(1, 100), at(2, (1LL << 32) + 105)});
    EXPECT_EQ(model.m_quoterLastVolume, 5);
    feed.snapshots(live, {at(3, (1LL << 33) + 108)});
    EXPECT_EQ(model.m_quoterLastVolume, 3);
}

// --- live -----------------------------------------------------------------------------------------------------

TEST_F(ThousandVolumeStepTest, shouldStepFromTheHistoryWhenALiveSnapshotGrows)
{
    feed.snapshots(history, {at(1, 100), at(2, 250)});
    feed.snapshots(live, {at(3, 300)});
    EXPECT_EQ(model.m_quoterLastVolume, 50);
    EXPECT_EQ(model.m_quoterVolumeTime, timeOf("09:30:03"));
    EXPECT_EQ(model.m_quoter->volume, 300);
}

TEST_F(ThousandVolumeStepTest, shouldKeepStepTimeAndBaseWhenTheDayVolumeStands)
{
    feed.snapshots(history, {at(1, 100), at(2, 250)});
    feed.snapshots(live, {at(3, 300)});
    const auto base = model.m_quoter;
    feed.snapshots(live, {at(4, 300)});
    feed.snapshots(live, {at(5, 280)});
    EXPECT_EQ(model.m_quoterLastVolume, 50);
    EXPECT_EQ(model.m_quoterVolumeTime, timeOf("09:30:03"));
    EXPECT_EQ(model.m_quoter, base);
    feed.snapshots(live, {at(6, 310)});
    EXPECT_EQ(model.m_quoterLastVolume, 10);
    EXPECT_EQ(model.m_quoterVolumeTime, timeOf("09:30:06"));
}

TEST_F(ThousandVolumeStepTest, shouldBeTheBaseOfTheNextStepWhenTheFirstSnapshotIsLive)
{
    feed.snapshots(live, {at(1, 300)});
    EXPECT_EQ(model.m_quoterLastVolume, 0);
    EXPECT_EQ(model.m_quoterVolumeTime, timeOf("09:30:01"));
    EXPECT_EQ(model.m_quoter->volume, 300);
    feed.snapshots(live, {at(2, 340)});
    EXPECT_EQ(model.m_quoterLastVolume, 40);
}

// The earlier records of a first push settle only what the base is, not the step.
TEST_F(ThousandVolumeStepTest, shouldShowNoStepWhenTheFirstPushHasEarlierRecords)
{
    feed.snapshots(live, {at(1, 100), at(2, 300)});
    EXPECT_EQ(model.m_quoterLastVolume, 0);
    EXPECT_EQ(model.m_quoterVolumeTime, timeOf("09:30:02"));
    EXPECT_EQ(model.m_quoter->volume, 300);
}

// --- records of an after-hours phase that the instrument does not have ---------------------------------------

TEST_F(ThousandVolumeStepTest, shouldPassOverAfterHoursRecordsWhenThereIsNoSuchPhase)
{
    feed.snapshots(history, {at(1, 100), at(2, 150).status(22), at(3, 160).status(23), at(4, 200)});
    EXPECT_EQ(model.m_quoterLastVolume, 100);
    feed.snapshots(history, {at(5, 100).status(22), at(6, 200).status(22)});
    EXPECT_EQ(model.m_quoterLastVolume, 0);
}

struct BoundaryCase {
    const char* market;
    int before, last;
    int step;
};

// On the mainland's markets no step crosses the boundary of the phases 22 and 23; elsewhere it does.
TEST_F(ThousandVolumeStepTest, shouldNotCrossIntoAfterHoursWhenTheMarketIsAMainlandOne)
{
    const BoundaryCase cases[] = {
        {"SH", 13, 22, 0}, {"SZ", 13, 22, 0},  {"BJ", 13, 22, 0},   {"SSE", 13, 22, 0}, {"SZSE", 13, 22, 0},
        {"SZ", 21, 23, 0}, {"HK", 13, 22, 60}, {"HGT", 13, 22, 60}, {"sz", 13, 23, 60}, {"SZ", 13, 24, 60},
        {"SZ", 24, 22, 0}, {"HK", 24, 22, 60}, {"SZ", 13, 13, 60},  {"HK", 22, 13, 0},  {"HK", 22, 22, 0},
    };
    for (const BoundaryCase& c : cases) {
        SCOPED_TRACE(std::string(c.market) + " " + std::to_string(c.before) + " to " + std::to_string(c.last));
        terminal.instruments.add(stock(c.market, "300001"));
        model.clear();
        model.setStock(keyOf(c.market, "300001"));
        feed.request(c.market, "300001");
        feed.snapshots(history, {at(1, 100).status(c.before), at(2, 160).status(c.last)});
        EXPECT_EQ(model.m_quoterLastVolume, c.step);
    }
}

TEST_F(ThousandVolumeStepTest, shouldStepLiveWhateverThePhaseWhenThereIsNoAfterHoursPhase)
{
    feed.snapshots(live, {at(1, 100)});
    feed.snapshots(live, {at(2, 130).status(22)});
    EXPECT_EQ(model.m_quoterLastVolume, 30);
    feed.snapshots(live, {at(3, 170).status(23)});
    EXPECT_EQ(model.m_quoterLastVolume, 40);
    EXPECT_EQ(model.m_afterHoursVolume, 0);
}

} // namespace
