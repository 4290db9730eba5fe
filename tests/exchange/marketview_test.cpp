#include "exchange/marketview.h"

#include "exchange/orderbook.h"
#include "tests/exchange/builders.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace exchange {

namespace {

constexpr PriceBand kBand = PriceBand::around(1000);

std::string shownText(const SideView& side)
{
    std::string text;
    for (const SideView::ShownLevel& level : side.shown) {
        if (level != SideView::ShownLevel{})
            text += std::to_string(level.volume) + "@" + std::to_string(level.price) + " ";
    }
    return text;
}

} // namespace

TEST(MarketView, shouldShowTheBookAsItIsWhenTradingIsContinuous)
{
    OrderBook book(kBand);
    for (int i = 0; i < 12; ++i)
        book.enter(order(i + 1).sell(1001 + i).shares(100 + i));
    book.enter(order(20).sell(1001).shares(7));
    const MarketView view(book, Phase::Continuous, {});
    EXPECT_EQ(view.phase, Phase::Continuous);
    EXPECT_EQ(shownText(view.ask), "107@1001 101@1002 102@1003 103@1004 104@1005 105@1006 106@1007 107@1008 108@1009 "
                                   "109@1010 ");
    EXPECT_EQ(view.ask.all.size(), 12U);
    EXPECT_EQ(view.ask.all.front().orders, 2U);
    EXPECT_EQ(view.ask.all.back().price, 1012);
    EXPECT_EQ(view.ask.queuePrice, 1001);
    EXPECT_EQ(view.ask.queue, (std::vector<Shares>{100, 7}));
    EXPECT_EQ(view.ask.total, 1273);
    EXPECT_EQ(view.bid, SideView{});
}

TEST(MarketView, shouldRoundTheAverageToTheTickWhenItFallsBetween)
{
    OrderBook book(kBand);
    book.enter(order(1).buy(990).shares(100));
    book.enter(order(2).buy(991).shares(100));
    book.enter(order(3).sell(1000).shares(201));
    book.enter(order(4).sell(1001).shares(100));
    const MarketView view(book, Phase::Continuous, {});
    EXPECT_EQ(view.bid.averagePrice, 991) << "990.5";
    EXPECT_EQ(view.ask.averagePrice, 1000) << "1000.33";
}

TEST(MarketView, shouldShowFiftyOrdersWhenTheQueueIsLonger)
{
    OrderBook book(kBand);
    for (int i = 1; i <= 60; ++i)
        book.enter(order(i).buy(990).shares(i));
    const MarketView view(book, Phase::Continuous, {});
    ASSERT_EQ(view.bid.queue.size(), 50U);
    EXPECT_EQ(view.bid.queue.front(), 1);
    EXPECT_EQ(view.bid.queue.back(), 50);
    EXPECT_EQ(view.bid.all.front().orders, 60U);
}

TEST(MarketView, shouldShowAThousandLevelsWhenTheBookGoesDeeper)
{
    for (const int levels : {999, 1000, 1001, 1500}) {
        OrderBook book(PriceBand::around(100'000));
        for (int i = 0; i < levels; ++i) {
            book.enter(order(2 * i + 1).sell(100'000 + i).shares(100));
            book.enter(order(2 * i + 2).buy(99'999 - i).shares(200));
        }
        const MarketView view(book, Phase::Continuous, {});
        const auto shown = static_cast<std::size_t>(std::min(levels, 1000));
        EXPECT_EQ(view.ask.all.size(), shown);
        EXPECT_EQ(view.ask.all.back().price, 99'999 + static_cast<int>(shown)) << "the worst go";
        EXPECT_EQ(view.bid.all.size(), shown);
        EXPECT_EQ(view.bid.all.back().price, 100'000 - static_cast<int>(shown));
        EXPECT_EQ(view.ask.total, 100 * levels) << "the sums are of the whole book";
        EXPECT_EQ(view.bid.total, 200 * levels);
    }
}

TEST(MarketView, shouldShowOnlyWhatWouldTradeWhenACallAuctionRuns)
{
    OrderBook book(kBand);
    book.collect(order(1).buy(1005).shares(500));
    const MarketView nothing(book, Phase::OpeningAuction, {});
    EXPECT_EQ(nothing.bid, SideView{});
    EXPECT_EQ(nothing.ask, SideView{});

    book.collect(order(2).sell(1003).shares(300));
    const MarketView view(book, Phase::OpeningAuction, {});
    EXPECT_EQ(shownText(view.bid), "300@1005 200@0 ");
    EXPECT_EQ(shownText(view.ask), "300@1005 ");
    EXPECT_EQ(view.bid.queuePrice, 1005);
    EXPECT_TRUE(view.bid.queue.empty());
    EXPECT_TRUE(view.bid.all.empty());
    EXPECT_EQ(view.bid.total, 0);
    EXPECT_EQ(view.bid.averagePrice, 0);
}

TEST(MarketView, shouldStayNearTheNewestTradeWhenTheClosingAuctionRuns)
{
    OrderBook book(kBand);
    book.collect(order(1).buy(1010).shares(100));
    book.collect(order(2).sell(990).shares(100));
    DayStatistics statistics;
    EXPECT_EQ(shownText(MarketView(book, Phase::ClosingAuction, statistics).bid), "100@1000 ");
    statistics.add({{2, 1, 1007, 300}});
    EXPECT_EQ(shownText(MarketView(book, Phase::ClosingAuction, statistics).bid), "100@1007 ");
}

} // namespace exchange
