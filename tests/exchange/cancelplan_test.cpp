#include "exchange/cancelplan.h"

#include "exchange/orderbook.h"
#include "tests/exchange/builders.h"

#include <gtest/gtest.h>

namespace exchange {

namespace {

constexpr PriceBand kBand = PriceBand::around(1000);

class CancelPlanOf1000Orders : public ::testing::Test {
protected:
    void restAt(Ticks price, DayTime now)
    {
        for (int i = 0; i < 1000; ++i) {
            book.enter(order(++seq).buy(price).shares(100));
            plan.add(*book.find(seq), book, now);
        }
    }

    OrderBook book{kBand};
    CancelPlan plan{Random(1)};
    __int64 seq = 0;
};

} // namespace

TEST_F(CancelPlanOf1000Orders, shouldTakeBackSomeOrdersInTheOrderOfTimeWhenTheyRest)
{
    restAt(1000, kMorning);
    restAt(990, kMorning); // not at the front, so that a visit always cancels
    int cancelled = 0;
    DayTime last = kMorning;
    while (const auto time = plan.nextTime()) {
        EXPECT_GE(*time, last);
        EXPECT_TRUE(cancelsAllowed(*time)) << *time;
        last = *time;
        if (const auto victim = plan.take(book))
            cancelled += book.cancel(*victim) ? 1 : 0;
    }
    EXPECT_GT(cancelled, 700);
    EXPECT_LT(cancelled, 1300);
}

TEST_F(CancelPlanOf1000Orders, shouldAnswerNoneWhenTheOrderWasFilledMeanwhile)
{
    restAt(1000, kMorning);
    book.enter(order(++seq).sell(1000).shares(100'000));
    int visits = 0;
    for (; plan.nextTime(); ++visits)
        EXPECT_FALSE(plan.take(book));
    EXPECT_GT(visits, 100);
}

TEST_F(CancelPlanOf1000Orders, shouldPlanNothingWhenTheClosingAuctionHasBegun)
{
    restAt(1000, kClosingAuction);
    EXPECT_FALSE(plan.nextTime());
}

TEST_F(CancelPlanOf1000Orders, shouldWaitForTheMorningWhenCancelsAreRefused)
{
    restAt(1000, kOpeningAuctionNoCancels);
    ASSERT_TRUE(plan.nextTime());
    EXPECT_GE(*plan.nextTime(), kMorning);
}

} // namespace exchange
