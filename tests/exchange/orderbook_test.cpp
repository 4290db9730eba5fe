#include "exchange/orderbook.h"

#include "tests/exchange/builders.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace exchange {

namespace {

constexpr PriceBand kBand = PriceBand::around(1000);

// Six asks from 1001 to 1006 and three bids from 999 down, with two orders at either touch.
class Book : public ::testing::Test {
protected:
    void SetUp() override
    {
        book.enter(order(1).sell(1001).shares(300));
        book.enter(order(2).sell(1001).shares(200));
        for (int i = 0; i < 5; ++i)
            book.enter(order(3 + i).sell(1002 + i).shares(100));
        book.enter(order(8).buy(999).shares(400));
        book.enter(order(9).buy(999).shares(100));
        book.enter(order(10).buy(998).shares(500));
        book.enter(order(11).buy(995).shares(200));
    }

    OrderBook book{kBand};
};

} // namespace

TEST(PriceBand, shouldRoundHalfATickUpWhenLimitsFallBetweenTicks)
{
    struct Row {
        Ticks close, low, high;
    };
    for (const Row row : {Row{910, 819, 1001}, Row{1000, 900, 1100}, Row{1005, 905, 1106}, Row{1004, 904, 1104},
                          Row{333, 300, 366}, Row{100, 90, 110}}) {
        const PriceBand band = PriceBand::around(row.close);
        EXPECT_EQ(band.low, row.low) << row.close;
        EXPECT_EQ(band.high, row.high) << row.close;
    }
}

TEST_F(Book, shouldRestLimitOrdersByPriceAndTimeWhenNothingCrosses)
{
    EXPECT_EQ(bookText(book), "1006: 7x100\n1005: 6x100\n1004: 5x100\n1003: 4x100\n1002: 3x100\n1001: 1x300 2x200\n"
                              "---\n"
                              "999: 8x400 9x100\n998: 10x500\n995: 11x200\n");
    EXPECT_EQ(book.levels(Side::Sell).begin()->second.volume, 500);
    EXPECT_EQ(book.best(Side::Buy), 999);
    EXPECT_EQ(book.best(Side::Sell), 1001);
    EXPECT_FALSE(book.isCrossed());
}

TEST_F(Book, shouldTradeOldestFirstAtTheRestingPriceWhenLimitOrderCrosses)
{
    EXPECT_EQ(outcomeText(book.enter(order(12).buy(1002).shares(550))), "12x1 300@1001 12x2 200@1001 12x3 50@1002");
    EXPECT_EQ(book.find(3)->left, 50);
    EXPECT_EQ(book.find(1), nullptr);
}

TEST_F(Book, shouldRestTheRemainderAtTheLimitWhenTheOtherSideRunsOut)
{
    EXPECT_EQ(outcomeText(book.enter(order(12).sell(998).shares(1100))),
              "8x12 400@999 9x12 100@999 10x12 500@998 resting 100");
    EXPECT_EQ(book.best(Side::Sell), 998);
    EXPECT_EQ(book.best(Side::Buy), 995);
}

struct KindRow {
    const char* story;
    Order order;
    const char* outcome;
    const char* touch; // best bid and ask afterwards
};

TEST_F(Book, shouldFollowItsKindWhenMarketOrderArrives)
{
    using enum OrderKind;
    const KindRow rows[] = {
        {"2 sweeps every level and cancels the rest", order(12).buy(FillAndCancel).shares(1100),
         "12x1 300@1001 12x2 200@1001 12x3 100@1002 12x4 100@1003 12x5 100@1004 12x6 100@1005 12x7 100@1006 "
         "cancelled 100",
         "999 -"},
        {"2 needs no more than it asks for", order(12).sell(FillAndCancel).shares(450), "8x12 400@999 9x12 50@999",
         "999 1001"},
        {"4 stops behind the fifth level", order(12).buy(FiveLevelsFillAndCancel).shares(1100),
         "12x1 300@1001 12x2 200@1001 12x3 100@1002 12x4 100@1003 12x5 100@1004 12x6 100@1005 cancelled 200",
         "999 1006"},
        {"4 takes what there is of fewer levels", order(12).sell(FiveLevelsFillAndCancel).shares(1300),
         "8x12 400@999 9x12 100@999 10x12 500@998 11x12 200@995 cancelled 100", "- 1001"},
        {"5 trades wholly when the side just suffices", order(12).sell(FillAllOrCancel).shares(1200),
         "8x12 400@999 9x12 100@999 10x12 500@998 11x12 200@995", "- 1001"},
        {"5 is cancelled whole when one share is missing", order(12).sell(FillAllOrCancel).shares(1201),
         "cancelled 1201", "999 1001"},
        {"6 queues at its own best", order(12).buy(OwnBest).shares(700), "resting 700", "999 1001"},
        {"7 takes the other best and rests there", order(12).buy(OtherBest).shares(700),
         "12x1 300@1001 12x2 200@1001 resting 200", "1001 1002"},
        {"7 leaves the rest of a level that suffices", order(12).sell(OtherBest).shares(450),
         "8x12 400@999 9x12 50@999", "999 1001"},
    };
    for (const KindRow& row : rows) {
        OrderBook fresh(kBand);
        for (const Side side : {Side::Sell, Side::Buy}) {
            for (const auto& [key, level] : book.levels(side)) {
                for (const RestingOrder& resting : level.orders)
                    fresh.enter({resting.seq, side, Limit, resting.price, resting.left});
            }
        }
        EXPECT_EQ(outcomeText(fresh.enter(row.order)), row.outcome) << row.story;
        const auto text = [&fresh](Side side) {
            return fresh.best(side) ? std::to_string(*fresh.best(side)) : std::string("-");
        };
        EXPECT_EQ(text(Side::Buy) + " " + text(Side::Sell), row.touch) << row.story;
    }
}

TEST_F(Book, shouldQueueBehindTheOthersWhenOwnBestArrives)
{
    book.enter(order(12).buy(OrderKind::OwnBest).shares(700));
    EXPECT_EQ(outcomeText(book.enter(order(13).sell(999).shares(600))), "8x13 400@999 9x13 100@999 12x13 100@999");
}

TEST(OrderBook, shouldCancelMarketOrdersWhenTheSideTheyNeedIsEmpty)
{
    using enum OrderKind;
    __int64 seq = 0;
    OrderBook empty(kBand);
    for (const OrderKind kind : {FillAndCancel, FiveLevelsFillAndCancel, FillAllOrCancel, OwnBest, OtherBest})
        EXPECT_EQ(outcomeText(empty.enter(order(++seq).sell(kind).shares(100))), "cancelled 100");
    EXPECT_EQ(bookText(empty), "---\n");

    empty.enter(order(++seq).sell(1000).shares(100));
    EXPECT_EQ(outcomeText(empty.enter(order(++seq).buy(OwnBest).shares(100))), "cancelled 100");
    EXPECT_EQ(outcomeText(empty.enter(order(++seq).sell(OtherBest).shares(100))), "cancelled 100");
}

TEST_F(Book, shouldKeepTheOthersInOrderWhenOneIsCancelled)
{
    const auto cancelled = book.cancel(8);
    ASSERT_TRUE(cancelled);
    EXPECT_EQ(cancelled->left, 400);
    EXPECT_EQ(book.levels(Side::Buy).begin()->second.volume, 100);
    EXPECT_EQ(outcomeText(book.enter(order(12).sell(999).shares(150))), "9x12 100@999 resting 50");
}

TEST_F(Book, shouldGiveTheRemainderWhenAPartlyFilledOrderIsCancelled)
{
    book.enter(order(12).sell(999).shares(150));
    EXPECT_EQ(book.cancel(8)->left, 250);
}

TEST_F(Book, shouldDropTheLevelWhenItsLastOrderGoes)
{
    book.cancel(10);
    EXPECT_EQ(book.levels(Side::Buy).size(), 2U);
    book.enter(order(12).sell(999).shares(500));
    EXPECT_EQ(book.best(Side::Buy), 995);
}

TEST_F(Book, shouldAnswerNoneWhenTheCancelledOrderDoesNotRest)
{
    EXPECT_FALSE(book.cancel(77));
    book.enter(order(12).buy(1001).shares(300));
    EXPECT_FALSE(book.cancel(1)) << "filled";
    EXPECT_FALSE(book.cancel(12)) << "filled on arrival";
    book.cancel(11);
    EXPECT_FALSE(book.cancel(11)) << "cancelled before";
}

TEST_F(Book, shouldStayAsItWasWhenAnOrderIsRefused)
{
    const std::string before = bookText(book);
    EXPECT_THROW(book.enter(order(11).buy(1000).shares(100)), std::invalid_argument) << "not newer";
    EXPECT_THROW(book.enter(order(12).buy(1000).shares(0)), std::invalid_argument) << "no volume";
    EXPECT_THROW(book.enter(order(12).buy(1000).shares(-5)), std::invalid_argument) << "negative volume";
    EXPECT_THROW(book.enter(order(12).buy(1101).shares(100)), std::invalid_argument) << "above the limit";
    EXPECT_THROW(book.enter(order(12).sell(899).shares(100)), std::invalid_argument) << "below the limit";
    EXPECT_THROW(book.enter(order(12).sell(static_cast<OrderKind>(3)).shares(100)), std::invalid_argument) << "kind 3";
    EXPECT_THROW(book.collect(order(12).sell(OrderKind::OwnBest).shares(100)), std::invalid_argument) << "in auction";
    EXPECT_EQ(bookText(book), before);
    EXPECT_NO_THROW(book.enter(order(12).buy(1100).shares(100))) << "the number was not used up, the limit is allowed";
}

TEST_F(Book, shouldRefuseContinuousOrdersWhenAnAuctionCrossesTheBook)
{
    book.collect(order(12).buy(1003).shares(100));
    EXPECT_TRUE(book.isCrossed());
    EXPECT_THROW(book.enter(order(13).buy(990).shares(100)), std::logic_error);
    book.uncross(1001);
    EXPECT_NO_THROW(book.enter(order(13).buy(990).shares(100)));
}

} // namespace exchange
