#include "exchange/tickfeed.h"

#include "exchange/orderbook.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"
#include "tests/exchange/builders.h"
#include "tests/exchange/snapshottext.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace exchange {

namespace {

constexpr TickSize kCent{100};
constexpr DayTime kNow = clockTime(10, 0);

// "order 3 side 1 kind 1 1002x500" and "trade 3x2 flag 1 1002x300", a line each; a cancel has its own word.
std::string text(const std::vector<recording::Event>& events)
{
    std::string text;
    for (const recording::Event& event : events) {
        EXPECT_EQ(event.record->timetag, 1'000'000 + kNow);
        const std::string price = ticksText(event.record->price, kCent.perUnit);
        if (const auto* order = dynamic_cast<const quoter::OrderData*>(event.record.get()))
            text += line("order ", order->seq, " side ", order->bsFlag, " kind ", order->orderKind, " ", price, "x",
                         order->volume, "\n");
        if (const auto* trade = dynamic_cast<const quoter::TransactionData*>(event.record.get()))
            text += line(trade->transKind == 3 ? "cancel " : "trade ", trade->buySeq, "x", trade->sellSeq, " flag ",
                         trade->tradeFlag, " ", price, "x", trade->volume, "\n");
    }
    return text;
}

// A sell of 300 at 10.02 waits; then orders come that take part of it, more than it, and what no price is good for.
std::string playedText(const char* market)
{
    std::vector<recording::Event> events;
    const auto feed = makeTickFeed(market, events, 1'000'000, kCent);
    OrderBook book(PriceBand::around(1000));
    const auto enter = [&](const Order& arriving) {
        const Outcome outcome = book.enter(arriving);
        feed->entered(kNow, arriving, outcome, book.find(arriving.seq));
    };
    enter(order(1).sell(1002).shares(300));
    enter(order(2).buy(1003).shares(100));
    enter(order(3).buy(1002).shares(500));
    enter(order(4).sell(OrderKind::OtherBest).shares(400));
    enter(order(5).sell(OrderKind::FillAndCancel).shares(200));
    feed->cancelled(kNow, *book.cancel(4));
    feed->collected(kNow, order(6).buy(1001).shares(100));
    feed->uncrossed(kNow, {{6, 7, 1001, 100}});
    return text(events);
}

} // namespace

TEST(TickFeed, shouldReportAnOrderBeforeWhatItCausesWhenTheMarketIsShenzhen)
{
    EXPECT_EQ(playedText("SZ"), "order 1 side 2 kind 1 1002x300\n"
                                "order 2 side 1 kind 1 1003x100\n"
                                "trade 2x1 flag 1 1002x100\n"
                                "order 3 side 1 kind 1 1002x500\n"
                                "trade 3x1 flag 1 1002x200\n"
                                "order 4 side 2 kind 7 0x400\n"
                                "trade 3x4 flag 2 1002x300\n"
                                "order 5 side 2 kind 2 0x200\n"
                                "cancel 0x5 flag 0 0x200\n"
                                "cancel 0x4 flag 0 0x100\n"
                                "order 6 side 1 kind 1 1001x100\n"
                                "trade 6x7 flag 2 1001x100\n");
}

TEST(TickFeed, shouldReportWhatRestsOfAnOrderBehindItsTradesWhenTheMarketIsShanghai)
{
    EXPECT_EQ(playedText("SH"), "order 1 side 2 kind 1 1002x300\n"
                                "trade 2x1 flag 1 1002x100\n"
                                "trade 3x1 flag 1 1002x200\n"
                                "order 3 side 1 kind 1 1002x500\n"
                                "trade 3x4 flag 2 1002x300\n"
                                "order 4 side 2 kind 1 1002x400\n"
                                "order 4 side 4 kind 0 1002x100\n"
                                "cancel 0x4 flag 0 0x100\n"
                                "order 6 side 1 kind 1 1001x100\n"
                                "trade 6x7 flag 0 1001x100\n");
}

TEST(TickFeed, shouldBeNoneWhenTheMarketsTicksAreNotKnown)
{
    std::vector<recording::Event> events;
    for (const char* market : {"HK", "IF", "CICC", "", "sz"})
        EXPECT_EQ(makeTickFeed(market, events, 0, kCent), nullptr) << market;
}

TEST(TickFeed, shouldRefuseASequenceNumberWhenItDoesNotFitTheRecord)
{
    std::vector<recording::Event> events;
    const auto feed = makeTickFeed("SZ", events, 0, kCent);
    const __int64 tooLarge = std::numeric_limits<int>::max() + 1LL;
    EXPECT_THROW(feed->collected(kNow, order(tooLarge).buy(1000).shares(100)), std::overflow_error);
    EXPECT_THROW(feed->uncrossed(kNow, {{tooLarge, 1, 1000, 100}}), std::overflow_error);
    EXPECT_TRUE(events.empty());
}

} // namespace exchange
