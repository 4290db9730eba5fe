#include "IndexUtils/quotefields.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "standin/terminal.h"

#include <gtest/gtest.h>

#include <climits>

template <class Record>
class QuoteFields : public testing::Test {};

using SnapshotTypes = testing::Types<quoter::QuoterAllData, quoter::QuoterDepthData>;
TYPED_TEST_SUITE(QuoteFields, SnapshotTypes, );

TYPED_TEST(QuoteFields, shouldTakeAlternativePriceOnlyWhenUnderNewLoanRules)
{
    const auto record = std::make_shared<TypeParam>();
    record->lastPrice = 10.25;
    record->lastPriceAlt = 102.5;
    record->volume = 9'000'000'000;
    record->amount = 1e12;
    EXPECT_EQ(TC::getLastPriceEx(false, record), 10.25);
    EXPECT_EQ(TC::getLastPriceEx(true, record), 102.5);
    for (const bool newLoan : {false, true}) {
        EXPECT_EQ(TC::getVolumeEx(newLoan, record), 9'000'000'000);
        EXPECT_EQ(TC::getAmountEx(newLoan, record), 1e12);
    }
}

TYPED_TEST(QuoteFields, shouldScaleOnlyNewLoanFormWhenFactorIsSet)
{
    const auto record = std::make_shared<TypeParam>();
    record->lastPriceAlt = 102.5;
    record->volume = 9'000'000'000;
    record->amount = 1e12;
    {
        standin::Terminal terminal;
        terminal.answers.setNewLoanFactor(10);
        EXPECT_EQ(TC::getVolumeEx(true, record), 90'000'000'000);
        EXPECT_EQ(TC::getAmountEx(true, record), 1e13);
        EXPECT_EQ(TC::getLastPriceEx(true, record), 102.5);
        EXPECT_EQ(TC::getVolumeEx(false, record), 9'000'000'000);
        EXPECT_EQ(TC::getAmountEx(false, record), 1e12);
    }
    standin::Terminal renewed;
    EXPECT_EQ(TC::getVolumeEx(true, record), 9'000'000'000);
    EXPECT_EQ(TC::getAmountEx(true, record), 1e12);
}

TYPED_TEST(QuoteFields, shouldWrapNewLoanVolumeWhenFactorIsTooLarge)
{
    standin::Terminal terminal;
    terminal.answers.setNewLoanFactor(2);
    const auto record = std::make_shared<TypeParam>();
    record->volume = LLONG_MAX;
    EXPECT_EQ(TC::getVolumeEx(true, record), -2);
    record->volume = LLONG_MIN;
    EXPECT_EQ(TC::getVolumeEx(true, record), 0);
}

TYPED_TEST(QuoteFields, shouldGiveZeroWhenRecordIsNull)
{
    standin::Terminal terminal;
    terminal.answers.setNewLoanFactor(10);
    const std::shared_ptr<TypeParam> none;
    for (const bool newLoan : {false, true}) {
        EXPECT_EQ(TC::getLastPriceEx(newLoan, none), 0);
        EXPECT_EQ(TC::getVolumeEx(newLoan, none), 0);
        EXPECT_EQ(TC::getAmountEx(newLoan, none), 0);
    }
}
