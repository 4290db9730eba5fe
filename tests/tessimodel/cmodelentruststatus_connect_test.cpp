#include "tests/tessimodel/entruststatus.h"

// The book of a pair of snapshots that a panel looks back at.
namespace {

using namespace tests;

class EntrustConnectTest : public EntrustStreamTest {};

TEST_P(EntrustConnectTest, shouldShowTheBookOfThePairWithTheTickGivenWhenConnected)
{
    follow();
    model.connectTickData(of(level1().last(10.01).lastClose(9.9).ask(10.02, 6).bid(10.01, 5)),
                          of(level1().last(10.05).lastClose(9.8).ask(10.02, 4).bid(10.01, 8)), 1LL << 40);
    EXPECT_EQ(rowsText(model), "ask1 10.02 6 +2\nbid1 10.01 5 -3\n");
    EXPECT_EQ(figuresText(model), "tick 1099511627776, kept 0, last 10.01, close 9.9");
    model.connectTickData(of(level1().last(10.01).bid(10.01, 7)), nullptr, -3);
    EXPECT_EQ(rowsText(model), "bid1 10.01 7 +2\n") << "against the rows";
    EXPECT_EQ(model.m_tickVolume, -3);
}

TEST_P(EntrustConnectTest, shouldKeepNoSnapshotWhenConnected)
{
    follow("SH", "688001", {277});
    const auto live = of(level1().last(10).volume(100));
    model.live({live});
    model.connectTickData(of(level1().last(10).volume(130)), of(level1().last(10).volume(120)), 10);
    model.connectTickData(of(level1().last(10).volume(130).status(22)), live, 10);
    EXPECT_EQ(latest(), live);
    EXPECT_EQ(latestOfOther(), nullptr);
    EXPECT_EQ(model.m_closingData, live);
    EXPECT_EQ(model.m_closingPrevData, nullptr);
    EXPECT_EQ(model.m_afterHoursVolume, 0);
}

TEST_P(EntrustConnectTest, shouldShowThePairWhenThereIsNoInstrument)
{
    model.connectTickData(of(level1().last(10.01).status(23).bid(10.01, 5)), of(level1().bid(10.01, 8)), 7);
    EXPECT_EQ(rowsText(model), "bid1 10.01 5 -3\n");
    EXPECT_EQ(figuresText(model), "tick 7, kept 0, last 10.01, close DBL_MAX");
}

TEST_P(EntrustConnectTest, shouldCountChangesFromTheRowsWhenTheOtherOfThePairIsNoneOfTheStream)
{
    model.connectTickData(of(level1().last(10).bid(10.01, 5)), nullptr, 1);
    model.connectTickData(of(level1().last(10).bid(10.01, 6)), foreign(level1().bid(10.01, 2)), 2);
    EXPECT_EQ(rowsText(model), "bid1 10.01 6 +1\n");
    model.connectTickData(of(level1().last(10).bid(10.01, 8)), order(1).buy(10.01), 3);
    EXPECT_EQ(rowsText(model), "bid1 10.01 8 +2\n");
}

TEST_P(EntrustConnectTest, shouldOnlyTakeTheTickWhenTheRecordIsNoSnapshot)
{
    follow("SH", "688001", {277});
    model.live({of(level1().last(10).volume(100).bid(10.01, 5))});
    for (const quoter::QuoterBasePtr& record : {quoter::QuoterBasePtr(), quoter::QuoterBasePtr(order(1).buy(10))}) {
        model.m_tickVolume = 7;
        const std::string before = memberText(model);
        model.connectTickData(record, of(level1().bid(10.01, 2)), 50);
        EXPECT_EQ(model.m_tickVolume, 50);
        model.m_tickVolume = 7;
        EXPECT_EQ(memberText(model), before);
    }
}

TEST_P(EntrustConnectTest, shouldOnlyTakeTheTickWhenTheMarketHasNoBook)
{
    follow("YSWP", "A1");
    const auto record = of(level1().last(0).lastClose(9.9).bid(10.01, 5));
    model.connectTickData(record, nullptr, 7);
    EXPECT_EQ(rowsText(model), "");
    EXPECT_EQ(figuresText(model), "tick 7, kept 0, last DBL_MAX, close 10");
    EXPECT_EQ(record->lastPrice, 0);
}

TEST_P(EntrustConnectTest, shouldGiveTheRecordItsLastCloseWhenItHasNoLastPrice)
{
    const auto record = of(level1().last(0).lastClose(9.9));
    const auto before = of(level1().last(0).lastClose(9.8));
    model.connectTickData(record, before, 0);
    EXPECT_EQ(record->lastPrice, 9.9);
    EXPECT_EQ(before->lastPrice, 0);
    model.setNewLoan(true);
    model.connectTickData(record, before, 0);
    EXPECT_EQ(alternativeLastOf(record), 9.9);
    EXPECT_EQ(model.m_lastPrice, 9.9);
}

// --- the end of the after-hours phase -------------------------------------------------------------------------

TEST_P(EntrustConnectTest, shouldShowTheBookAndTheTickOfTheCloseWhenTheRecordIsOfTheEnd)
{
    for (const auto& [market, type] : {std::pair("SH", 277), std::pair("SZ", 10006)}) {
        model.clear();
        follow(market, "300001", {type});
        model.live({of(level1().last(10).volume(100).bid(10.01, 5))});
        model.live({of(level1().last(10.02).lastClose(9.9).volume(130).bid(10.01, 9))});
        model.live({of(level1().last(10.03).lastClose(9.8).volume(7).status(22).bid(10.01, 1))});
        for (const auto& end :
             {of(level1().last(0).status(23).bid(10.01, 50)), foreign(level1().last(0).status(23).bid(10.01, 50))}) {
            model.connectTickData(end, of(level1().bid(10.01, 2)), 1000);
            EXPECT_EQ(rowsText(model), "bid1 10.01 9 +4\n");
            EXPECT_EQ(figuresText(model), "tick 30, kept 30, last 10.02, close 9.9");
            EXPECT_EQ(end->lastPrice, 0);
        }
    }
}

// The broker's snapshot of level 1 is one like any.
TEST_P(EntrustConnectTest, shouldShowTheBookOfTheCloseWhenTheEndIsTheBrokers)
{
    follow("SH", "688001", {277});
    model.live({of(level1().last(10).volume(130).bid(10.01, 9))});
    model.connectTickData(brokerLevel1().last(10).status(23).bid(10.01, 50), nullptr, 1000);
    EXPECT_EQ(rowsText(model), "bid1 10.01 9\n");
    EXPECT_EQ(model.m_tickVolume, 0);
    model.connectTickData(brokerLevel1().last(10).status(22).bid(10.01, 50), nullptr, 1000);
    EXPECT_EQ(rowsText(model), "bid1 10.01 50 +41\n");
    EXPECT_EQ(model.m_tickVolume, 1000);
}

TEST_P(EntrustConnectTest, shouldShowThePairWhenThePhaseIsNotOver)
{
    follow("SH", "688001", {277});
    model.live({of(level1().last(10).volume(130).bid(10.01, 9))});
    for (const int status : {-1, 13, 21, 22, 24}) {
        model.connectTickData(of(level1().last(10).status(status).bid(10.01, 5)), of(level1().bid(10.01, 2)), 8);
        EXPECT_EQ(rowsText(model), "bid1 10.01 5 +3\n") << status;
        EXPECT_EQ(model.m_tickVolume, 8);
    }
}

TEST_P(EntrustConnectTest, shouldShowThePairOfTheEndWhenTheInstrumentHasNoSuchPhase)
{
    follow("SH", "600000");
    model.m_afterHoursVolume = 30;
    model.m_closingData = of(level1().last(10).bid(10.01, 9));
    model.connectTickData(of(level1().last(10).status(23).bid(10.01, 5)), of(level1().bid(10.01, 2)), 8);
    EXPECT_EQ(rowsText(model), "bid1 10.01 5 +3\n");
    EXPECT_EQ(model.m_tickVolume, 8);
}

// The tick that was given is not taken then: what was kept is shown, be it nothing.
TEST_P(EntrustConnectTest, shouldLeaveTheRowsWhenTheEndComesWithoutAClose)
{
    follow("SH", "688001", {277});
    model.connectTickData(of(level1().last(10.03).bid(10.01, 2)), nullptr, 8);
    model.connectTickData(of(level1().last(10.04).status(23).bid(10.01, 5)), nullptr, 9);
    EXPECT_EQ(rowsText(model), "bid1 10.01 2\n");
    EXPECT_EQ(figuresText(model), "tick 0, kept 0, last 10.03, close 10");
}

INSTANTIATE_TEST_SUITE_P(BothStreams, EntrustConnectTest, ::testing::Values(1, 2), levelName);

} // namespace
