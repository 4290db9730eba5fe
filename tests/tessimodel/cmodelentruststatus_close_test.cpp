#include "tests/tessimodel/entruststatus.h"

// The after-hours phase live: the snapshots of the close are kept, and shown again at its end. Phases: 13 continuous,
// 15 closed, 22 after hours, 23 its end.
namespace {

using namespace tests;

class EntrustCloseTest : public EntrustStreamTest {
protected:
    EntrustCloseTest() { follow("SH", "688001", {277}); }

    quoter::QuoterBasePtr push(const Written& written)
    {
        const auto record = of(written);
        EXPECT_TRUE(model.live({record}));
        return record;
    }

    static Snapshot<quoter::QuoterAllData> at(__int64 dayVolume, int status)
    {
        return level1().last(10).volume(dayVolume).status(status);
    }

    // "shown 50, kept 30".
    std::string ticks() const { return fmt::format("shown {}, kept {}", model.m_tickVolume, model.m_afterHoursVolume); }
};

// --- what is kept ---------------------------------------------------------------------------------------------

TEST_P(EntrustCloseTest, shouldKeepTheLastTwoSnapshotsWhenTradingGoesOn)
{
    const auto first = push(at(100, 13));
    EXPECT_EQ(model.m_closingData, first);
    EXPECT_EQ(model.m_closingPrevData, nullptr);
    const auto second = push(at(130, 15));
    EXPECT_EQ(model.m_closingData, second);
    EXPECT_EQ(model.m_closingPrevData, first);
    const auto third = push(at(130, 21));
    EXPECT_EQ(model.m_closingData, third);
    EXPECT_EQ(model.m_closingPrevData, second);
    push(at(7, 22));
    push(at(9, 24));
    push(at(9, 23));
    EXPECT_EQ(model.m_closingData, third);
    EXPECT_EQ(model.m_closingPrevData, second);
}

TEST_P(EntrustCloseTest, shouldKeepTheSameWhenThePhaseIsOfShenzhensType)
{
    follow("SZ", "300001", {10006});
    const auto first = push(at(100, 13));
    const auto second = push(at(130, 13));
    EXPECT_EQ(model.m_closingData, second);
    EXPECT_EQ(model.m_closingPrevData, first);
    push(at(7, 22));
    EXPECT_EQ(ticks(), "shown 7, kept 30");
    push(at(8, 23));
    EXPECT_EQ(ticks(), "shown 30, kept 30");
}

// The snapshot before is the latest of the stream, be it of the after-hours phase; the other stream's is none.
TEST_P(EntrustCloseTest, shouldKeepTheLatestOfTheStreamAsTheOneBeforeWhenTradingResumes)
{
    push(at(100, 13));
    const auto afterHours = push(at(7, 22));
    const auto again = push(at(130, 13));
    EXPECT_EQ(model.m_closingData, again);
    EXPECT_EQ(model.m_closingPrevData, afterHours);

    const auto other = foreign(at(5, 13));
    model.live({other});
    EXPECT_EQ(model.m_closingData, other) << "one close for both streams";
    EXPECT_EQ(model.m_closingPrevData, nullptr);
    const auto back = push(at(140, 13));
    EXPECT_EQ(model.m_closingData, back);
    EXPECT_EQ(model.m_closingPrevData, again);
}

// --- the phase begins -----------------------------------------------------------------------------------------

TEST_P(EntrustCloseTest, shouldKeepTheTickAndShowTheWholeVolumeWhenThePhaseBegins)
{
    for (const int status : {22, 24, 30}) {
        for (const int before : {13, 15, 21, -1}) {
            model.clear();
            push(at(100, 13));
            push(at(130, before));
            push(at(7, status));
            EXPECT_EQ(ticks(), "shown 7, kept 30") << before << " to " << status;
            push(at(12, status));
            EXPECT_EQ(ticks(), "shown 5, kept 30") << "and counts on";
        }
    }
}

// A day volume that goes on growing has made a tick of its own by then, which is what is kept.
TEST_P(EntrustCloseTest, shouldKeepTheTickOfTheFirstAfterHoursRecordWhenTheDayVolumeGrowsOn)
{
    push(at(100, 13));
    push(at(130, 13));
    push(at(137, 22));
    EXPECT_EQ(ticks(), "shown 137, kept 7");
    push(at(150, 22));
    EXPECT_EQ(ticks(), "shown 13, kept 7");
}

TEST_P(EntrustCloseTest, shouldKeepLow32BitsOfTheTickWhenItIsLarger)
{
    push(at(100, 13));
    push(at((5LL << 32) + 130, 13));
    push(at((3LL << 32) + 7, 22));
    EXPECT_EQ(ticks(), fmt::format("shown {}, kept 30", (3LL << 32) + 7));
    push(at(8, 23));
    EXPECT_EQ(ticks(), "shown 30, kept 30");
    push(at(1, 13));
    push(at((1LL << 31) + 1, 13));
    push(at(7, 22));
    push(at(8, 23));
    EXPECT_EQ(ticks(), "shown -2147483648, kept -2147483648");
}

TEST_P(EntrustCloseTest, shouldKeepNothingWhenThePhaseIsTheFirstThingSeen)
{
    push(at(7, 22));
    EXPECT_EQ(ticks(), "shown 0, kept 0");
    push(at(9, 22));
    EXPECT_EQ(ticks(), "shown 2, kept 0");
    push(at(11, 24));
    EXPECT_EQ(ticks(), "shown 2, kept 0") << "from 22 to 24 is no beginning";
    EXPECT_EQ(model.m_closingData, nullptr);
}

TEST_P(EntrustCloseTest, shouldNotBeginThePhaseWhenTheOtherStreamWasTrading)
{
    push(at(100, 13));
    push(at(130, 13));
    model.live({foreign(at(7, 22))});
    EXPECT_EQ(ticks(), "shown 30, kept 0") << "it is the first of its stream";
}

TEST_P(EntrustCloseTest, shouldShowTheWholeVolumeInTheNewLoanFormWhenItIsSet)
{
    terminal.answers.setNewLoanFactor(10);
    model.setNewLoan(true);
    push(at(100, 13));
    push(at(130, 13));
    push(at(7, 22));
    EXPECT_EQ(ticks(), "shown 70, kept 300");
}

TEST_P(EntrustCloseTest, shouldShowTheBookOfThePhaseWhenItHasNotEnded)
{
    push(at(130, 13).bid(10, 5));
    push(at(7, 22).bid(10, 8));
    EXPECT_EQ(rowsText(model), "bid1 10 8 +3\n");
    push(at(7, 24).bid(10, 9));
    EXPECT_EQ(rowsText(model), "bid1 10 9 +1\n");
}

// --- the phase ends -------------------------------------------------------------------------------------------

TEST_P(EntrustCloseTest, shouldShowTheBookAndTheTickOfTheCloseWhenThePhaseEnds)
{
    push(at(100, 13).ask(10.02, 6).bid(10.01, 5));
    push(at(130, 13).last(10.02).lastClose(9.9).ask(10.02, 4).bid(10.01, 9));
    push(at(7, 22).last(10.03).lastClose(9.8).ask(10.05, 1).bid(10.00, 1));
    ASSERT_EQ(rowsText(model), "ask1 10.05 1\nbid1 10 1\n");
    const auto end = push(at(12, 23).last(0).lastClose(9.7).ask(10.06, 2).bid(9.99, 2));
    EXPECT_EQ(rowsText(model), "ask1 10.02 4 -2\nbid1 10.01 9 +4\n");
    EXPECT_EQ(figuresText(model), "tick 30, kept 30, last 10.02, close 9.9");
    EXPECT_EQ(latest(), end);
    EXPECT_EQ(end->lastPrice, 0) << "it is not shown, and so gets no last price";

    push(at(15, 23).bid(9.98, 2));
    EXPECT_EQ(rowsText(model), "ask1 10.02 4 -2\nbid1 10.01 9 +4\n");
    EXPECT_EQ(figuresText(model), "tick 30, kept 30, last 10.02, close 9.9") << "and stays so";
}

// The last price of the close is given to its own record.
TEST_P(EntrustCloseTest, shouldWriteTheLastCloseIntoTheRecordOfTheCloseWhenItIsShownAgain)
{
    const auto close = push(at(130, 13).last(0).lastClose(9.9));
    ASSERT_EQ(close->lastPrice, 9.9);
    model.setNewLoan(true);
    const auto end = push(at(7, 23).last(0).lastClose(9.8));
    EXPECT_EQ(alternativeLastOf(close), 9.9);
    EXPECT_EQ(alternativeLastOf(end), 0);
    EXPECT_EQ(model.m_lastPrice, 9.9);
}

TEST_P(EntrustCloseTest, shouldCountChangesOfTheCloseFromTheRowsWhenThereIsNoneBeforeIt)
{
    push(at(130, 13).bid(10.01, 9));
    push(at(7, 22).bid(10.01, 2));
    push(at(12, 23));
    EXPECT_EQ(rowsText(model), "bid1 10.01 9 +7\n");
    push(at(12, 23));
    EXPECT_EQ(rowsText(model), "bid1 10.01 9\n");
}

TEST_P(EntrustCloseTest, shouldLeaveTheRowsWhenTheEndComesWithoutAClose)
{
    push(at(7, 22).last(10.03).bid(10.01, 2));
    push(at(9, 22).last(10.03).bid(10.01, 2));
    ASSERT_EQ(ticks(), "shown 2, kept 0");
    const auto end = push(at(12, 23).last(10.04).bid(10.01, 3));
    EXPECT_EQ(rowsText(model), "bid1 10.01 2\n");
    EXPECT_EQ(figuresText(model), "tick 0, kept 0, last 10.03, close 10");
    EXPECT_EQ(latest(), end);
}

// From trading straight to the end: nothing has been kept, whatever the last tick was.
TEST_P(EntrustCloseTest, shouldShowNoTickWhenThePhaseIsSkipped)
{
    push(at(100, 13).bid(10.01, 5));
    push(at(130, 13).bid(10.01, 9));
    push(at(190, 23).bid(10.01, 7));
    EXPECT_EQ(rowsText(model), "bid1 10.01 9 +4\n");
    EXPECT_EQ(ticks(), "shown 0, kept 0");
    push(at(195, 22));
    EXPECT_EQ(ticks(), "shown 5, kept 0") << "23 was of the phase already: it does not begin again";
}

TEST_P(EntrustCloseTest, shouldShowTheCloseOfTheOtherStreamWhenThatCameLast)
{
    push(at(100, 13).bid(10.01, 5));
    const auto close = foreign(at(100, 13).bid(10.02, 6));
    model.live({close});
    ASSERT_EQ(model.m_closingData, close);
    push(at(110, 23).bid(10.03, 7));
    EXPECT_EQ(rowsText(model), "bid1 10.02 6\n");
}

TEST_P(EntrustCloseTest, shouldStartAnewWhenTradingResumesAfterTheEnd)
{
    push(at(100, 13).bid(10.01, 5));
    push(at(130, 13).bid(10.01, 9));
    push(at(7, 22));
    const auto end = push(at(12, 23));
    push(at(50, 13).bid(10.01, 12));
    EXPECT_EQ(rowsText(model), "bid1 10.01 12 +3\n");
    EXPECT_EQ(ticks(), "shown 38, kept 30");
    EXPECT_EQ(model.m_closingPrevData, end);
    push(at(57, 22));
    EXPECT_EQ(ticks(), "shown 57, kept 7");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, EntrustCloseTest, ::testing::Values(1, 2), levelName);

} // namespace
