#include "indexui/tessimodel/cmodeltodayparam.h"

#include "tests/tessimodel/paramstreams.h"

// Which records are snapshots, and the streams they are of.
namespace {

using namespace tests;

using ParamGateRecordsTest = TodayParamTest;

TEST_F(ParamGateRecordsTest, shouldGiveTrueAndChangeNothingWhenRecordIsNoSnapshot)
{
    follow(afterHoursStockA());
    model.live({level1("10:00:00").last(10).volume(500)});
    model.live({level2("10:00:00").last(10).volume(500)});
    const auto last = model.m_lastAll;
    const auto lastDepth = model.m_lastDepth;
    for (const bool isInit : {false, true}) {
        for (const quoter::QuoterBasePtr& foreign : {quoter::QuoterBasePtr(), quoter::QuoterBasePtr(order(1).buy(10)),
                                                     quoter::QuoterBasePtr(fill(1, 2).at(10))}) {
            bool isShown = false;
            EXPECT_EQ(writtenBy(model, [&] { isShown = model.calc(foreign, isInit); }), "");
            EXPECT_TRUE(isShown);
        }
    }
    EXPECT_EQ(model.m_tradeCount, 2);
    EXPECT_EQ(model.m_lastAll, last);
    EXPECT_EQ(model.m_lastDepth, lastDepth);
    EXPECT_EQ(model.m_lastContinuous, lastDepth);
    EXPECT_EQ(historyText(model), "10:00:00 +500 #2 0..0\n");
}

// The broker's snapshot is one of level 1.
TEST_F(ParamGateRecordsTest, shouldTakeASnapshotAsLevel1WhenItIsTheBrokers)
{
    follow(afterHoursStockA());
    model.history({brokerLevel1("10:00:00").last(10).volume(100), brokerLevel1("10:00:03").last(10).volume(150),
                   brokerLevel1("10:00:06").last(10.50).volume(200)});
    EXPECT_EQ(historyText(model), "10:00:00 +100 #1 0..0\n"
                                  "10:00:03 +50 #2 0..0\n"
                                  "10:00:06 +50 #3 0..0\n");
    EXPECT_FALSE(model.live({level1("10:00:09").last(10.50).volume(200)}));
    EXPECT_TRUE(model.live({brokerLevel1("15:05:00").last(10.60).volume(30).status(22)}));
    EXPECT_EQ(textOf(model, TC::RP_TOTAL_VOLUME), "200");
    model.refresh(brokerLevel1("10:00:00").last(10.10).volume(100));
    EXPECT_EQ(textOf(model, TC::RP_LAST), "10.10");
}

// Each stream has a previous snapshot of its own, and both count on the same counter.
TEST_F(ParamGateRecordsTest, shouldGoByThePreviousSnapshotOfItsStreamWhenStreamsAreMixed)
{
    follow(plainStock());
    EXPECT_TRUE(model.calc(level1("10:00:00").last(10).volume(500), false));
    EXPECT_TRUE(model.calc(level2("10:00:00").last(10).volume(400), false));
    EXPECT_FALSE(model.calc(level1("10:00:03").last(10).volume(450), false));
    EXPECT_TRUE(model.calc(level2("10:00:03").last(10).volume(450), false));
    EXPECT_EQ(model.m_tradeCount, 3);
    EXPECT_EQ(textOf(model, TC::RP_CURRENT_VOLUME), "50");
}

} // namespace
