#include "tests/tessimodel/entruststatus.h"

#include <limits>

// Live pushes, and batches that are none of a snapshot's.
namespace {

using namespace tests;

constexpr int kLiveKinds[] = {1, 2, 4, -1, 50};

class EntrustLiveTest : public EntrustStreamTest {
protected:
    // A live snapshot of this day volume.
    void push(__int64 dayVolume) { EXPECT_TRUE(model.live({of(level1().last(10).volume(dayVolume))})); }
};

TEST_P(EntrustLiveTest, shouldShowTheRecordWhenItIsPushed)
{
    follow();
    for (const int kind : kLiveKinds) {
        model.clear();
        const auto record = of(level1().last(10.01).lastClose(9.9).volume(100).ask(10.02, 6).bid(10.01, 5));
        EXPECT_TRUE(model.quoterCallBack(0, kind, {record}));
        EXPECT_EQ(rowsText(model), "ask1 10.02 6\nbid1 10.01 5\n");
        EXPECT_EQ(figuresText(model), "tick 0, kept 0, last 10.01, close 9.9");
        EXPECT_EQ(latest(), record);
        EXPECT_EQ(latestOfOther(), nullptr);
        EXPECT_EQ(model.m_closingData, nullptr) << "there is no after-hours phase";
        EXPECT_EQ(model.m_closingPrevData, nullptr);
    }
}

TEST_P(EntrustLiveTest, shouldTakeTheLastRecordAloneWhenSeveralArePushed)
{
    follow();
    push(100);
    model.live(
        {of(level1().last(10.05).volume(400).bid(10.01, 7)), of(level1().last(10.02).volume(130).bid(10.01, 5))});
    EXPECT_EQ(rowsText(model), "bid1 10.01 5\n") << "with no change since the record that was passed over";
    EXPECT_EQ(figuresText(model), "tick 30, kept 0, last 10.02, close 10");
    model.live({of(level1().last(10.05).volume(900).bid(10.01, 7)), order(1).buy(10)});
    EXPECT_EQ(figuresText(model), "tick 30, kept 0, last 10.02, close 10") << "the last one is no snapshot";
}

// --- tick volume ----------------------------------------------------------------------------------------------

TEST_P(EntrustLiveTest, shouldCountTheTickFromTheLastSnapshotWhenTheDayVolumeGrows)
{
    follow();
    push(100);
    EXPECT_EQ(model.m_tickVolume, 0) << "there is nothing to count from";
    push(150);
    EXPECT_EQ(model.m_tickVolume, 50);
    push(151);
    EXPECT_EQ(model.m_tickVolume, 1);
    push((1LL << 40) + 151);
    EXPECT_EQ(model.m_tickVolume, 1LL << 40) << "in 64 bits";
}

TEST_P(EntrustLiveTest, shouldKeepTheTickWhenTheDayVolumeStandsOrFalls)
{
    follow();
    push(100);
    push(150);
    push(150);
    EXPECT_EQ(model.m_tickVolume, 50);
    push(120);
    EXPECT_EQ(model.m_tickVolume, 50);
    push(130);
    EXPECT_EQ(model.m_tickVolume, 10) << "counted from where it fell to";
}

TEST_P(EntrustLiveTest, shouldWrapTheTickWhenItDoesNotFit)
{
    follow();
    push(std::numeric_limits<__int64>::min());
    push(std::numeric_limits<__int64>::max());
    EXPECT_EQ(model.m_tickVolume, -1);
}

TEST_P(EntrustLiveTest, shouldCountTheTickInTheNewLoanFormWhenItIsSet)
{
    follow();
    terminal.answers.setNewLoanFactor(10);
    push(100);
    push(150);
    EXPECT_EQ(model.m_tickVolume, 50);
    model.setNewLoan(true);
    push(170);
    EXPECT_EQ(model.m_tickVolume, 200);
    terminal.answers.setNewLoanFactor(-1);
    push(180);
    EXPECT_EQ(model.m_tickVolume, 200) << "it fell, in that form";
    push(150);
    EXPECT_EQ(model.m_tickVolume, 30);
}

// A tick is counted whatever the phase while the instrument has none after hours.
TEST_P(EntrustLiveTest, shouldGoOnAsBeforeWhenTheInstrumentHasNoAfterHoursPhase)
{
    follow("SH", "600000");
    push(100);
    for (const int status : {13, 15, 21, 22, 23, 24}) {
        const auto record = of(level1().last(10.01).volume(200 + status).status(status).bid(10, status));
        model.live({record});
        EXPECT_EQ(rowsText(model).substr(0, 10), fmt::format("bid1 10 {}", status));
        EXPECT_EQ(model.m_closingData, nullptr);
        EXPECT_EQ(model.m_afterHoursVolume, 0);
        EXPECT_EQ(latest(), record);
        EXPECT_NE(model.m_tickVolume, 0);
    }
    EXPECT_EQ(model.m_tickVolume, 1);
}

// --- changes --------------------------------------------------------------------------------------------------

// Not against the last snapshot: the rows may stand for another one, which a panel looked back at.
TEST_P(EntrustLiveTest, shouldCountChangesFromTheRowsAsTheyStandWhenPushed)
{
    follow();
    model.live({of(level1().last(10).volume(100).bid(10, 50))});
    model.connectTickData(of(level1().last(10).bid(10, 20)), nullptr, 7);
    model.live({of(level1().last(10).volume(130).bid(10, 60))});
    EXPECT_EQ(rowsText(model), "bid1 10 60 +40\n");
    EXPECT_EQ(model.m_tickVolume, 30) << "the tick counts from the last snapshot";
    model.clear();
    model.live({of(level1().last(10).volume(130).bid(10, 60))});
    EXPECT_EQ(rowsText(model), "bid1 10 60\n");
}

// --- the two streams ------------------------------------------------------------------------------------------

TEST_P(EntrustLiveTest, shouldCountEachStreamByItselfWhenBothArePushed)
{
    follow();
    push(100);
    const auto before = latest();
    const auto other = foreign(level1().last(10).volume(500));
    model.live({other});
    EXPECT_EQ(model.m_tickVolume, 0) << "the first of its stream";
    EXPECT_EQ(latest(), before);
    EXPECT_EQ(latestOfOther(), other);
    push(130);
    EXPECT_EQ(model.m_tickVolume, 30);
    EXPECT_EQ(latestOfOther(), other);
    model.live({foreign(level1().last(10).volume(505))});
    EXPECT_EQ(model.m_tickVolume, 5);
}

// --- what is no live snapshot ---------------------------------------------------------------------------------

TEST_P(EntrustLiveTest, shouldDoNothingAndSayYesWhenTheLastRecordIsNoSnapshot)
{
    follow("SH", "688001", {277});
    push(100);
    model.live({of(level1().last(10).volume(130).bid(10, 50))});
    const std::string before = memberText(model);
    for (const int kind : kLiveKinds) {
        for (const quoter::QuoterBasePtr& record : {quoter::QuoterBasePtr(), quoter::QuoterBasePtr(order(1).buy(10)),
                                                    quoter::QuoterBasePtr(fill(1, 2).at(10))}) {
            EXPECT_TRUE(model.quoterCallBack(0, kind, {of(level1().last(11).volume(900)), record}));
            EXPECT_EQ(memberText(model), before);
        }
    }
}

TEST_P(EntrustLiveTest, shouldSayNoAndChangeNothingWhenThereIsNoInstrument)
{
    follow();
    model.live({of(level1().last(10).volume(130).bid(10, 50))});
    model.setStock("nobody");
    const std::string before = memberText(model);
    for (const int kind : {0, 3, 1, 2, 4, -1}) {
        EXPECT_FALSE(model.quoterCallBack(0, kind, {of(level1().last(11).volume(900))}));
        EXPECT_FALSE(model.quoterCallBack(0, kind, {}));
        EXPECT_FALSE(model.quoterCallBack(0, kind, {nullptr}));
        EXPECT_EQ(memberText(model), before);
    }
}

TEST_P(EntrustLiveTest, shouldClearOnlyAtTheStartOfAHistoryWhenTheBatchIsEmpty)
{
    follow();
    model.setNewLoan(true);
    model.live({of(level1().alternativeLast(10).volume(130).bid(10, 50))});
    const std::string before = memberText(model);
    for (const int kind : {3, 1, 2, 4, -1, 50}) {
        EXPECT_TRUE(model.quoterCallBack(0, kind, {}));
        EXPECT_EQ(memberText(model), before);
    }
    EXPECT_TRUE(model.quoterCallBack(0, 0, {}));
    EXPECT_EQ(rowsText(model), "");
    EXPECT_EQ(usedText(model), ".......... ..........");
    EXPECT_EQ(figuresText(model), "tick 0, kept 0, last DBL_MAX, close DBL_MAX");
    EXPECT_EQ(latest(), nullptr);
    EXPECT_NE(model.m_stock, nullptr);
    EXPECT_TRUE(model.m_isNewLoan);
}

TEST_P(EntrustLiveTest, shouldDoTheSameWhenTheFirstNumberDiffers)
{
    follow();
    for (const int first : {-1, 0, 3, 1000}) {
        model.clear();
        EXPECT_TRUE(model.quoterCallBack(first, 1, {of(level1().last(10).volume(100).bid(10, 5))}));
        EXPECT_TRUE(model.quoterCallBack(first, 1, {of(level1().last(10).volume(130).bid(10, 6))}));
        EXPECT_EQ(rowsText(model), "bid1 10 6 +1\n");
        EXPECT_EQ(model.m_tickVolume, 30);
    }
}

INSTANTIATE_TEST_SUITE_P(BothStreams, EntrustLiveTest, ::testing::Values(1, 2), levelName);

} // namespace
