#include "tests/tessimodel/entruststatus.h"

// Which records are shown at all.
namespace {

using namespace tests;

using EntrustCalcTest = EntrustStatusTest;

TEST_F(EntrustCalcTest, shouldShowAnySnapshotWhenThereIsNoInstrument)
{
    EXPECT_TRUE(model.show(level1().last(10.01).bid(10, 5)));
    EXPECT_EQ(rowsText(model), "bid1 10 5\n");
    EXPECT_EQ(model.m_lastPrice, 10.01);
    EXPECT_TRUE(model.show(level2().last(10.02).bid(10, 7)));
    EXPECT_EQ(rowsText(model), "bid1 10 7 +2\n");
    EXPECT_TRUE(model.show(brokerLevel1().last(10.03).bid(10, 6).limits(11, 9))) << "a level-1 snapshot like any";
    EXPECT_EQ(rowsText(model), "bid1 10 6 -1\n");
    EXPECT_EQ(figuresText(model), "tick 0, kept 0, last 10.03, close DBL_MAX");
}

TEST_F(EntrustCalcTest, shouldSayNoAndChangeNothingWhenRecordIsNoSnapshot)
{
    follow();
    model.live({level1().last(10.01).volume(5).bid(10, 5)});
    const std::string before = memberText(model);
    for (const quoter::QuoterBasePtr& record :
         {quoter::QuoterBasePtr(), quoter::QuoterBasePtr(order(1).buy(10)), quoter::QuoterBasePtr(fill(1, 2).at(10)),
          quoter::QuoterBasePtr(bestQueues().bid(10, {100})), std::make_shared<quoter::QuoterBase>()}) {
        EXPECT_FALSE(model.show(record));
        EXPECT_FALSE(model.show(record, level1().bid(10, 3)));
        EXPECT_EQ(memberText(model), before);
    }
}

// The snapshots that the model keeps are the callback's.
TEST_F(EntrustCalcTest, shouldKeepNoSnapshotWhenItOnlyShowsOne)
{
    follow("SH", "688001", {277});
    for (const quoter::QuoterBasePtr& record : {quoter::QuoterBasePtr(level1().last(10.01).volume(5).bid(10, 5)),
                                                quoter::QuoterBasePtr(level2().last(10.01).volume(5).bid(10, 5))}) {
        model.show(record, record);
        EXPECT_EQ(model.m_lastAllData, nullptr);
        EXPECT_EQ(model.m_lastDepthData, nullptr);
        EXPECT_EQ(model.m_closingData, nullptr);
        EXPECT_EQ(model.m_closingPrevData, nullptr);
        EXPECT_EQ(model.m_tickVolume, 0);
    }
}

// The int says nothing. The same steps serve any of the three forms.
TEST_F(EntrustCalcTest, shouldDoTheSameWhenTheKindDiffers)
{
    const std::shared_ptr<quoter::QuoterAllData> five = level1().last(10.01).bid(10, 5).ask(10.02, 6);
    const std::shared_ptr<quoter::QuoterAllData> fiveBefore = level1().last(10.01).bid(10, 1).ask(10.02, 1);
    const std::shared_ptr<quoter::QuoterDepthData> ten = asLevel2(*five);
    const std::shared_ptr<quoter::QuoterDepthData> tenBefore = asLevel2(*fiveBefore);
    for (const int kind : {-1, 0, 1, 2, 3, 4, 50}) {
        EntrustStatus fresh;
        fresh.calc(kind, five, fiveBefore);
        EXPECT_EQ(rowsText(fresh), "ask1 10.02 6 +5\nbid1 10 5 +4\n");
        EXPECT_EQ(usedText(fresh), ".....xxxxx xxxxx.....");
        fresh.clear();
        fresh.calc(kind, ten, tenBefore);
        EXPECT_EQ(rowsText(fresh), "ask1 10.02 6 +5\nbid1 10 5 +4\n");
        EXPECT_EQ(usedText(fresh), "xxxxxxxxxx xxxxxxxxxx");
        fresh.calc(kind, ten, nullptr);
        EXPECT_EQ(rowsText(fresh), "ask1 10.02 6\nbid1 10 5\n");
        EXPECT_TRUE(fresh.calc(kind, quoter::QuoterBasePtr(five), quoter::QuoterBasePtr(fiveBefore)));
        EXPECT_EQ(rowsText(fresh), "ask1 10.02 6 +5\nbid1 10 5 +4\n");
    }
}

// The typed steps themselves do not ask for the market.
TEST_F(EntrustCalcTest, shouldShowABookWhenTheTypedStepIsTakenInAMarketWithoutOne)
{
    follow("YSWP", "A1");
    model.calc(0, std::shared_ptr<quoter::QuoterAllData>(level1().bid(10, 5)), nullptr);
    EXPECT_EQ(rowsText(model), "bid1 10 5\n");
}

TEST_F(EntrustCalcTest, shouldTakeTheBrokersSnapshotsAsLevel1WhenTheyAreDelivered)
{
    follow("SH", "688001", {277});
    const std::shared_ptr<zolv::BrovanQuoterAllData> first = brokerLevel1().last(10).volume(100).bid(10, 5);
    const std::shared_ptr<zolv::BrovanQuoterAllData> second = brokerLevel1().last(10).volume(130).bid(10, 6);
    const std::shared_ptr<zolv::BrovanQuoterAllData> end = brokerLevel1().last(10).volume(7).status(23).bid(10, 9);
    model.history({first, second});
    EXPECT_EQ(rowsText(model), "bid1 10 6 +1\n");
    EXPECT_EQ(figuresText(model), "tick 30, kept 30, last 10, close 10");
    model.live({end});
    EXPECT_EQ(rowsText(model), "bid1 10 6 +1\n");
    EXPECT_EQ(model.m_lastAllData, end);
    EXPECT_EQ(model.m_closingData, second);
    EXPECT_EQ(model.m_closingPrevData, first);
}

// --- a market without a book ----------------------------------------------------------------------------------

TEST_F(EntrustCalcTest, shouldSayYesAndShowNothingWhenTheMarketHasNoBook)
{
    follow("YSWP", "A1");
    const std::string before = memberText(model);
    const quoter::QuoterBasePtr record = level1().last(0).lastClose(9.9).bid(10, 5);
    EXPECT_TRUE(model.show(record));
    EXPECT_TRUE(model.show(level2().last(10.01).bid(10, 5)));
    EXPECT_TRUE(model.show(nullptr)) << "not even looked at";
    EXPECT_TRUE(model.show(order(1).buy(10)));
    EXPECT_EQ(memberText(model), before);
    EXPECT_EQ(record->lastPrice, 0) << "nor is a record changed";
}

TEST_F(EntrustCalcTest, shouldShowABookWhenTheMarketIsOnlyNamedAlike)
{
    for (const char* market : {"YSW", "YSWPX", "yswp", "XYSWP", "SZ"}) {
        follow(market, "A1");
        model.clear();
        EXPECT_TRUE(model.show(level1().last(10.01).bid(10, 5)));
        EXPECT_EQ(rowsText(model), "bid1 10 5\n") << market;
        EXPECT_FALSE(model.show(nullptr));
    }
}

TEST_F(EntrustCalcTest, shouldShowABookAgainWhenTheInstrumentOfTheMarketWithoutOneIsGone)
{
    follow("YSWP", "A1");
    model.setStock("nobody");
    EXPECT_TRUE(model.show(level1().last(10.01).bid(10, 5)));
    EXPECT_EQ(rowsText(model), "bid1 10 5\n");
}

// The volumes and the snapshots are kept like any others.
TEST_F(EntrustCalcTest, shouldCountVolumesWhenTheMarketHasNoBook)
{
    follow(stock("YSWP", "A1", {277}));
    model.history({level1().volume(100).last(10).bid(10, 5), level1().volume(130).last(10).bid(10, 6)});
    EXPECT_EQ(figuresText(model), "tick 30, kept 30, last DBL_MAX, close 10");
    model.live({level1().volume(170).last(10).bid(10, 5)});
    EXPECT_EQ(figuresText(model), "tick 40, kept 30, last DBL_MAX, close 10");
    model.live({level1().volume(7).status(22).last(10).bid(10, 5)});
    EXPECT_EQ(figuresText(model), "tick 7, kept 40, last DBL_MAX, close 10");
    model.live({level1().volume(9).status(23).last(10).bid(10, 5)});
    EXPECT_EQ(figuresText(model), "tick 40, kept 40, last DBL_MAX, close 10");
    model.live({level2().volume(10)});
    model.live({level2().volume(15)});
    EXPECT_EQ(figuresText(model), "tick 5, kept 40, last DBL_MAX, close 10");
    EXPECT_EQ(model.m_lastAllData->volume, 9);
    EXPECT_EQ(model.m_lastDepthData->volume, 15);
    EXPECT_EQ(rowsText(model), "");
    EXPECT_EQ(usedText(model), ".......... ..........");
}

} // namespace
