#include "tests/tessimodel/entruststatus.h"

#include <limits>

// Histories of an instrument without an after-hours phase, and what is the same with one.
namespace {

using namespace tests;

class EntrustHistoryTest : public EntrustStreamTest {
protected:
    // A snapshot of this day volume.
    quoter::QuoterBasePtr at(__int64 dayVolume, int status = 13) const
    {
        return of(level1().last(10).volume(dayVolume).status(status));
    }

    // The tick volume of a history on the model, which had one of -1.
    __int64 tickOf(const Records& records)
    {
        model.m_tickVolume = -1;
        EXPECT_TRUE(model.more(records));
        return model.m_tickVolume;
    }
};

// --- the last record ------------------------------------------------------------------------------------------

TEST_P(EntrustHistoryTest, shouldShowTheLastRecordWithChangesSinceTheOneBeforeWhenAHistoryComes)
{
    follow();
    for (const int kind : {0, 3}) {
        const auto last = of(level1().last(10.01).lastClose(9.9).volume(130).ask(10.02, 6).bid(10.01, 5));
        EXPECT_TRUE(model.quoterCallBack(
            0, kind,
            {of(level1().last(10.03).lastClose(9.8).volume(90).ask(10.02, 100)),
             of(level1().last(10.02).lastClose(9.8).volume(100).ask(10.02, 4).bid(10.01, 8)), last}));
        EXPECT_EQ(rowsText(model), "ask1 10.02 6 +2\nbid1 10.01 5 -3\n");
        EXPECT_EQ(figuresText(model), "tick 30, kept 0, last 10.01, close 9.9");
        EXPECT_EQ(latest(), last);
        EXPECT_EQ(latestOfOther(), nullptr);
        EXPECT_EQ(model.m_closingData, nullptr);
        EXPECT_EQ(model.m_closingPrevData, nullptr);
    }
}

// A history that starts anew leaves the rows: with one record the changes run against what stood there.
TEST_P(EntrustHistoryTest, shouldCountChangesFromTheRowsAsTheyStandWhenTheBatchHasOneRecord)
{
    follow();
    for (const int kind : {0, 3}) {
        model.clear();
        model.live({of(level1().last(10).volume(100).ask(10.02, 1).bids({{10.01, 5}, {9.99, 3}}))});
        EXPECT_TRUE(model.quoterCallBack(0, kind, {of(level1().last(10).volume(130).bids({{10.01, 15}, {10.00, 1}}))}));
        EXPECT_EQ(rowsText(model), "bid1 10.01 15 +10\nbid2 10 1\n");
        EXPECT_EQ(model.m_tickVolume, 0) << "there is no record before it in the batch";
    }
}

TEST_P(EntrustHistoryTest, shouldCountChangesFromTheRowsWhenTheRecordBeforeIsNoneOfTheStream)
{
    follow();
    const Written other = level1().last(10).volume(90).bid(10.01, 2);
    for (const quoter::QuoterBasePtr& before :
         {quoter::QuoterBasePtr(), quoter::QuoterBasePtr(order(1).buy(10.01)), foreign(other)}) {
        model.clear();
        model.live({of(level1().last(10).volume(70).bid(10.01, 5))});
        model.history(
            {of(level1().last(10).volume(80).bid(10.01, 1)), before, of(level1().last(10).volume(130).bid(10.01, 15))});
        EXPECT_EQ(rowsText(model), "bid1 10.01 15 +10\n") << "it is not passed over";
        EXPECT_EQ(model.m_tickVolume, 50) << "in the search for the tick it is";
    }
}

TEST_P(EntrustHistoryTest, shouldOnlyForgetTheTickWhenTheLastRecordIsNoSnapshot)
{
    follow("SH", "688001", {277});
    model.live({at(100)});
    model.live({of(level1().last(10).volume(130).bid(10.01, 5))});
    for (const quoter::QuoterBasePtr& last : {quoter::QuoterBasePtr(), quoter::QuoterBasePtr(order(1).buy(10.01)),
                                              quoter::QuoterBasePtr(fill(1, 2).at(10))}) {
        model.m_tickVolume = 30;
        const std::string before = memberText(model);
        EXPECT_TRUE(model.more({of(level1().last(11).volume(500).bid(10, 1)), last}));
        EXPECT_EQ(memberText(model), before);
        EXPECT_TRUE(model.history({of(level1().last(11).volume(500).bid(10, 1)), last}));
        EXPECT_EQ(model.m_tickVolume, 0);
        model.m_tickVolume = 30;
        EXPECT_EQ(memberText(model), before);
    }
}

// Not an empty one: rows, prices and snapshots stay until the steps replace them.
TEST_P(EntrustHistoryTest, shouldKeepWhatItHadWhenAHistoryStartsAnew)
{
    follow("SH", "688001", {277});
    const auto other = foreign(level1().last(10).volume(5));
    model.live({other});
    model.live({of(level1().last(10).volume(100).asks({{10.02, 6}, {10.03, 7}}))});
    model.live({of(level1().last(10).lastClose(9.9).volume(130).asks({{10.02, 6}, {10.03, 7}}))});
    model.m_afterHoursVolume = 30;
    const auto closing = model.m_closingData;
    const auto beforeClosing = model.m_closingPrevData;
    model.history({of(level1().last(kNaN).volume(7).status(22).ask(10.03, 9))});
    EXPECT_EQ(rowsText(model), "ask1 10.03 9 +2\n");
    EXPECT_EQ(figuresText(model), "tick 0, kept 30, last 10, close 9.9");
    EXPECT_EQ(latestOfOther(), other);
    EXPECT_EQ(model.m_closingData, closing);
    EXPECT_EQ(model.m_closingPrevData, beforeClosing);
}

// --- the tick of the last record ------------------------------------------------------------------------------

TEST_P(EntrustHistoryTest, shouldCountTheTickFromTheNearestRecordWithLessVolumeWhenLookingBack)
{
    follow();
    EXPECT_EQ(tickOf({at(100), at(250), at(400)}), 150);
    EXPECT_EQ(tickOf({at(100), at(250), at(400), at(400), nullptr, at(450), at(400)}), 150);
    EXPECT_EQ(tickOf({at(100), foreign(level1().volume(350)), order(1), at(400)}), 300);
    EXPECT_EQ(tickOf({at(399), at(400)}), 1);
    EXPECT_EQ(tickOf({at(7), at((1LL << 40) + 8)}), (1LL << 40) + 1) << "in 64 bits";
    EXPECT_EQ(tickOf({at(std::numeric_limits<__int64>::min()), at(std::numeric_limits<__int64>::max())}), -1);
}

TEST_P(EntrustHistoryTest, shouldKeepTheTickWhenMoreHistoryShowsNone)
{
    follow();
    EXPECT_EQ(tickOf({at(400)}), -1);
    EXPECT_EQ(tickOf({at(400), at(400)}), -1);
    EXPECT_EQ(tickOf({at(500), nullptr, at(400)}), -1);
    model.history({at(400), at(400)});
    EXPECT_EQ(model.m_tickVolume, 0) << "a history that starts anew has none";
}

TEST_P(EntrustHistoryTest, shouldLookAtItsOwnBatchAloneWhenMoreHistoryComes)
{
    follow();
    model.live({at(100)});
    EXPECT_EQ(tickOf({at(400)}), -1);
    model.live({at(405)});
    EXPECT_EQ(model.m_tickVolume, 5) << "live snapshots go on from the history";
}

TEST_P(EntrustHistoryTest, shouldCountTheTickInTheNewLoanFormWhenItIsSet)
{
    follow();
    terminal.answers.setNewLoanFactor(10);
    EXPECT_EQ(tickOf({at(100), at(250)}), 150);
    model.setNewLoan(true);
    EXPECT_EQ(tickOf({at(100), at(250)}), 1500);
    terminal.answers.setNewLoanFactor(-1);
    EXPECT_EQ(tickOf({at(300), at(100), at(250)}), 50) << "a volume of -300 is less";
}

struct PhaseCase {
    const char* market;
    int before, last;
    __int64 tick;
};

// Records of the phases 22 and 23 give no tick where there is no such phase, nor does one of the mainland's count
// across their boundary.
TEST_P(EntrustHistoryTest, shouldPassOverAfterHoursRecordsWhenThereIsNoSuchPhase)
{
    const PhaseCase cases[] = {
        {"SZ", 13, 13, 60},  {"SZ", 21, 15, 60},  {"HK", 22, 13, -1},   {"HK", 23, 13, -1}, {"HK", 22, 22, -1},
        {"HK", 23, 22, -1},  {"HK", 24, 13, 60},  {"HK", 21, 13, 60},   {"SZ", 24, 13, 60}, {"SZ", 24, 24, 60},
        {"SZ", 13, 24, 60},  {"HK", 13, 22, 60},  {"HK", 13, 23, 60},   {"SH", 13, 22, -1}, {"SZ", 13, 23, -1},
        {"BJ", 13, 22, -1},  {"SSE", 13, 22, -1}, {"SZSE", 21, 23, -1}, {"SZ", 24, 22, -1}, {"HK", 24, 22, 60},
        {"HGT", 13, 22, 60}, {"sz", 13, 22, 60},  {"SHO", 13, 22, 60},
    };
    for (const PhaseCase& c : cases) {
        SCOPED_TRACE(fmt::format("{} {} to {}", c.market, c.before, c.last));
        follow(c.market, "300001");
        EXPECT_EQ(tickOf({at(100, c.before), at(160, c.last)}), c.tick);
    }
    follow("SZ", "000001");
    EXPECT_EQ(tickOf({at(100), at(150, 22), at(155, 23), at(160)}), 60) << "and goes on looking";
    EXPECT_EQ(tickOf({at(100, 24), at(150), at(160, 24)}), 10);
}

TEST_P(EntrustHistoryTest, shouldCrossIntoAfterHoursWhenThereIsNoSuchPhaseAndTheMarketIsNotTheMainlands)
{
    follow("HK", "00700");
    model.history({at(100), of(level1().last(10).volume(160).status(23).bid(10, 5))});
    EXPECT_EQ(model.m_tickVolume, 60);
    EXPECT_EQ(rowsText(model), "bid1 10 5\n") << "a record of the end is shown like any";
}

INSTANTIATE_TEST_SUITE_P(BothStreams, EntrustHistoryTest, ::testing::Values(1, 2), levelName);

} // namespace
