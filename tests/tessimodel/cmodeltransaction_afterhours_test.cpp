#include "indexui/tessimodel/cmodeltransaction.h"

#include "tests/support/records.h"
#include "tests/tessimodel/transactiontest.h"

namespace {

using namespace tests;

TEST_F(TransactionTest, shouldDropAfterHoursRecordsWhenMainlandStockHasNoSuchPhase)
{
    follow("SH", "600000");
    for (const int status : {22, 23, 24, 100})
        EXPECT_FALSE(model.live({level1().last(10).volume(5).status(status)})) << status;
    EXPECT_TRUE(model.live({level1().last(10).volume(5).status(21)}));
    EXPECT_TRUE(model.live({level1().last(10).volume(6).status(15)}));
    EXPECT_EQ(model.m_datas.size(), 2);
}

TEST_F(TransactionTest, shouldKeepAfterHoursRecordsWhenStockIsNotOfTheMainland)
{
    follow("HK", "00700");
    EXPECT_TRUE(model.live({level1("16:00:00").last(10).volume(5).status(13)}));
    EXPECT_TRUE(model.live({level1("16:00:03").last(10).volume(9).status(22)}));
    EXPECT_TRUE(model.live({level1("16:00:06").last(10).volume(11).status(15)}));
    EXPECT_EQ(rowsText(model), "16:00:00 10 +5 of 5 B\n"
                               "16:00:03 10 +4 of 9 S\n"
                               "16:00:06 10 +2 of 11 S\n");
    EXPECT_FALSE(model.m_inAfterHours);
}

class AfterHoursTest : public TransactionTest, public ::testing::WithParamInterface<bool> {
protected:
    void followTypeWithPhase()
    {
        if (GetParam())
            follow("SH", "688001", {277});
        else
            follow("SZ", "300001", {10006});
    }

    void tradeIntoThePhase()
    {
        model.history({level1("14:59:57").last(10).volume(500), level1("15:05:00").last(10).volume(30).status(22)});
    }
};

TEST_P(AfterHoursTest, shouldCountFromNothingWhenPhaseBegins)
{
    followTypeWithPhase();
    tradeIntoThePhase();
    model.live({level1("15:05:03").last(10).volume(70).status(22)});
    model.live({level1("15:30:00").last(10).volume(75).status(23)});
    EXPECT_EQ(rowsText(model), "14:59:57 10 +500 of 500 B\n"
                               "15:05:00 10 +30 of 30 S\n"
                               "15:05:03 10 +40 of 70 S\n"
                               "15:30:00 10 +5 of 75 S\n");
    EXPECT_TRUE(model.m_inAfterHours);
}

TEST_P(AfterHoursTest, shouldTreatStatusOfTheCloseAsNoiseOnlyWhenPhaseHasBegun)
{
    followTypeWithPhase();
    EXPECT_TRUE(model.live({level1("15:00:00").last(10).volume(500).status(15)}));
    model.live({level1("15:05:00").last(10).volume(30).status(22)});
    EXPECT_FALSE(model.live({level1("15:05:03").last(10).volume(600).status(15)}));
    EXPECT_TRUE(model.live({level1("15:05:06").last(10).volume(600).status(14)}));
}

TEST_P(AfterHoursTest, shouldNotEnterThePhaseWhenFirstRowIsOfIt)
{
    followTypeWithPhase();
    model.history({level1("15:05:00").last(10).volume(30).status(22)});
    EXPECT_FALSE(model.m_inAfterHours);
    model.live({level1("15:05:03").last(10).volume(70).status(22)});
    EXPECT_EQ(rowsText(model), "15:05:00 10 +30 of 30 B\n"
                               "15:05:03 10 +40 of 70 S\n");
    EXPECT_FALSE(model.m_inAfterHours);
}

// Once for each list: a second step into the phase is an ordinary difference.
TEST_P(AfterHoursTest, shouldSubtractWhenPhaseBeginsAgain)
{
    followTypeWithPhase();
    tradeIntoThePhase();
    model.live({level1("15:05:03").last(10).volume(40).status(14)});
    model.live({level1("15:05:06").last(10).volume(45).status(22)});
    EXPECT_EQ(model.m_datas.last().volume, 5);
}

TEST_P(AfterHoursTest, shouldStayInThePhaseWhenCleared)
{
    followTypeWithPhase();
    tradeIntoThePhase();
    model.clear();
    EXPECT_TRUE(model.m_inAfterHours);
    EXPECT_FALSE(model.live({level1("15:06:00").last(10).volume(500).status(15)})) << "still noise after clear";
}

TEST_P(AfterHoursTest, shouldLeaveThePhaseWhenHistoryBeginsOrInstrumentIsSet)
{
    followTypeWithPhase();
    tradeIntoThePhase();
    model.history({});
    EXPECT_FALSE(model.m_inAfterHours);

    tradeIntoThePhase();
    model.more({});
    EXPECT_TRUE(model.m_inAfterHours);
    followTypeWithPhase();
    EXPECT_FALSE(model.m_inAfterHours);
}

INSTANTIATE_TEST_SUITE_P(BothTypes, AfterHoursTest, ::testing::Bool(),
                         [](const auto& param) { return param.param ? "Type277" : "Type10006"; });

} // namespace
