#include "tests/tessimodel/quoterthousand.h"

#include <limits>
#include <string>
#include <vector>

namespace {

using namespace tests;

// Where this model finds the base of a volume step otherwise than the tick-built book: a first push looks back at its
// own earlier records before the step is worked out.
class QuoterThousandSnapshotsTest : public QuoterThousandTest {
protected:
    // A continuous snapshot by its time in seconds from 09:30, with its day volume.
    static Snapshot<quoter::QuoterDepthData> at(int second, __int64 dayVolume)
    {
        return level2("09:30:" + std::to_string(100 + second).substr(1)).volume(dayVolume).bid(10.00);
    }

    // "step 200 at 09:30:02, base 300": step, time of its growth and day volume of the next step's base.
    std::string step() const
    {
        const __int64 second = timeOf("09:30:00") / 1000;
        std::string when = "never";
        for (__int64 i = 0; i < 100 && model.m_quoterVolumeTime != 0; ++i) {
            if (model.m_quoterVolumeTime == static_cast<int>((second + i) * 1000))
                when = clockOf(second + i);
        }
        return fmt::format("step {} at {}, base {}", model.m_quoterLastVolume, when, model.m_quoter->volume);
    }
};

TEST_F(QuoterThousandSnapshotsTest, shouldShowAStepWhenTheFirstPushHasEarlierRecords)
{
    feed.snapshots(live, {at(1, 100), at(2, 300)});
    EXPECT_EQ(step(), "step 200 at 09:30:02, base 300");
}

TEST_F(QuoterThousandSnapshotsTest, shouldStepFromTheNearestWithLessVolumeWhenTheFirstPushIsLong)
{
    feed.snapshots(
        live, {at(1, 50), at(2, 100), at(3, 300), level1("09:30:04").volume(120), nullptr, at(5, 400), at(6, 300)});
    EXPECT_EQ(step(), "step 200 at 09:30:06, base 300");
}

// Whatever the phase: neither the market nor the phases matter here.
TEST_F(QuoterThousandSnapshotsTest, shouldStepFromAnyPhaseWhenTheFirstPushHasEarlierRecords)
{
    feed.snapshots(live, {at(1, 50), at(2, 100).status(22), at(3, 300)});
    EXPECT_EQ(step(), "step 200 at 09:30:03, base 300");
    model.clear();
    feed.snapshots(live, {at(1, 50), at(2, 100).ask(10.00), at(3, 300)});
    EXPECT_EQ(step(), "step 200 at 09:30:03, base 300") << "an auction counts, too";
}

TEST_F(QuoterThousandSnapshotsTest, shouldShowNoStepWhenTheFirstPushHasNoLessVolume)
{
    feed.snapshots(live, {at(1, 300), at(2, 300)});
    EXPECT_EQ(step(), "step 0 at 09:30:02, base 300");
    model.clear();
    feed.snapshots(live, {at(1, 300)});
    EXPECT_EQ(step(), "step 0 at 09:30:01, base 300");
}

TEST_F(QuoterThousandSnapshotsTest, shouldLookForLessVolumeInTheNewLoanFormWhenItIsSet)
{
    terminal.answers.setNewLoanFactor(-10);
    model.setNewLoan(true);
    feed.snapshots(live, {at(1, 300), at(2, 100), at(3, 250)});
    EXPECT_EQ(step(), "step 500 at 09:30:03, base 250");
}

TEST_F(QuoterThousandSnapshotsTest, shouldNotLookBackWhenThereIsABase)
{
    feed.snapshots(live, {at(1, 100)});
    feed.snapshots(live, {at(2, 180), at(3, 200)});
    EXPECT_EQ(step(), "step 100 at 09:30:03, base 200");
    feed.snapshots(live, {at(4, 150), at(5, 190)});
    EXPECT_EQ(step(), "step 100 at 09:30:03, base 200");
}

TEST_F(QuoterThousandSnapshotsTest, shouldHaveNoTimeOfGrowthWhenAHistoryIsTheFirst)
{
    for (const int kind : {history, moreHistory}) {
        model.clear();
        feed.snapshots(kind, {at(1, 100), at(2, 300)});
        EXPECT_EQ(step(), "step 200 at never, base 300");
    }
}

TEST_F(QuoterThousandSnapshotsTest, shouldEnterAfterHoursWhenTheFirstPushHasTheCloseBefore)
{
    terminal.instruments.add(stock("SH", "688001", {277}));
    model.setStock(keyOf("SH", "688001"));
    feed.request("SH", "688001");
    feed.snapshots(live, {at(1, 130).status(21), at(2, 137).status(22)});
    EXPECT_EQ(step(), "step 137 at 09:30:02, base 137");
    EXPECT_EQ(model.m_afterHoursVolume, 7);
    model.clear();
    feed.snapshots(live, {at(1, 130).status(21), at(2, 7).status(22)});
    EXPECT_EQ(step(), "step 0 at 09:30:02, base 7") << "no record has less";
    EXPECT_EQ(model.m_afterHoursVolume, 0);
}

TEST_F(QuoterThousandSnapshotsTest, shouldKeepTheLow32BitsOfTheTimeWhenTheDayVolumeGrows)
{
    const auto timeKept = [this](__int64 timetag) {
        const std::shared_ptr<quoter::QuoterDepthData> record = at(0, 1);
        record->timetag = timetag;
        model.clear();
        feed.snapshots(live, {record});
        return model.m_quoterVolumeTime;
    };
    EXPECT_EQ(timeKept((5LL << 32) + 1234), 1234);
    EXPECT_EQ(timeKept((5LL << 32) + 0x80000000LL), std::numeric_limits<int>::min());
    EXPECT_EQ(timeKept((1LL << 32) - 1), -1);
    EXPECT_EQ(timeKept(1LL << 32), 0);
}

} // namespace
