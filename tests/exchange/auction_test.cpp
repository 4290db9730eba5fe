#include "exchange/auction.h"

#include "exchange/orderbook.h"
#include "tests/exchange/builders.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdlib>

namespace exchange {

namespace {

constexpr Ticks kClose = 1000;
constexpr PriceBand kBand = PriceBand::around(kClose);

std::string uncrossText(const std::vector<Order>& orders, Ticks reference = kClose)
{
    OrderBook book(kBand);
    for (const Order& each : orders)
        book.collect(each);
    const auto uncross = findUncross(book, reference);
    if (!uncross)
        return "nothing";
    return std::to_string(uncross->volume) + "@" + std::to_string(uncross->price) + " left " +
           std::to_string(uncross->buyLeft) + "/" + std::to_string(uncross->sellLeft);
}

// The rules, price by price and order by order.
struct Oracle {
    explicit Oracle(const std::vector<Order>& all)
        : orders(all)
    {}

    Shares buysFrom(Ticks price) const
    {
        Shares sum = 0;
        for (const Order& order : orders)
            sum += order.side == Side::Buy && order.price >= price ? order.volume : 0;
        return sum;
    }
    Shares sellsTo(Ticks price) const
    {
        Shares sum = 0;
        for (const Order& order : orders)
            sum += order.side == Side::Sell && order.price <= price ? order.volume : 0;
        return sum;
    }
    Shares volume(Ticks price) const { return std::min(buysFrom(price), sellsTo(price)); }
    bool fillsBetter(Ticks price) const
    {
        return buysFrom(price + 1) <= volume(price) && sellsTo(price - 1) <= volume(price);
    }
    Shares left(Ticks price) const { return std::abs(buysFrom(price) - sellsTo(price)); }

    // The candidates that each rule leaves, one rule after the other.
    std::vector<Ticks> candidates(Ticks reference) const
    {
        std::vector<Ticks> prices;
        for (Ticks price = kBand.low; price <= kBand.high; ++price)
            prices.push_back(price);
        keepLeast(prices, [this](Ticks price) { return -volume(price); });
        std::erase_if(prices, [this](Ticks price) { return !fillsBetter(price); });
        keepLeast(prices, [this](Ticks price) { return left(price); });
        keepLeast(prices, [reference](Ticks price) { return std::abs(price - reference); });
        return prices;
    }

    template <class Measure>
    static void keepLeast(std::vector<Ticks>& prices, Measure measure)
    {
        auto least = measure(prices.front());
        for (const Ticks price : prices)
            least = std::min(least, measure(price));
        std::erase_if(prices, [&](Ticks price) { return measure(price) != least; });
    }

    std::vector<Order> orders;
};

std::vector<Order> drawOrders()
{
    std::vector<Order> orders;
    const int count = *rc::gen::inRange(0, 25);
    const Ticks reach = *rc::gen::inRange(1, 101); // narrow days are crowded ones
    for (int seq = 1; seq <= count; ++seq) {
        const Side side = *rc::gen::element(Side::Buy, Side::Sell);
        const Ticks price = kBand.clamp(kClose + *rc::gen::inRange(-reach, reach + 1));
        orders.push_back({seq, side, OrderKind::Limit, price, *rc::gen::inRange<Shares>(1, 6) * 100});
    }
    return orders;
}

} // namespace

TEST(Auction, shouldTradeNothingWhenNoBuyReachesASell)
{
    EXPECT_EQ(uncrossText({}), "nothing");
    EXPECT_EQ(uncrossText({order(1).buy(1000).shares(100)}), "nothing");
    EXPECT_EQ(uncrossText({order(1).buy(1000).shares(100), order(2).sell(1001).shares(100)}), "nothing");
}

TEST(Auction, shouldFollowTheRulesInTheirOrderWhenSeveralPricesTrade)
{
    struct Row {
        const char* story;
        std::vector<Order> orders;
        Ticks reference;
        const char* uncross;
    };
    const Row rows[] = {
        {"the largest volume, however far from the close",
         {order(1).buy(1050).shares(500), order(2).buy(1000).shares(100), order(3).sell(1000).shares(100),
          order(4).sell(1050).shares(400)},
         kClose,
         "500@1050 left 0/0"},
        {"a keener buy that stays unfilled rules the price out",
         {order(1).buy(1010).shares(100), order(2).sell(1000).shares(50)},
         kClose,
         "50@1010 left 50/0"},
        {"a keener sell that stays unfilled rules the price out",
         {order(1).buy(1010).shares(50), order(2).sell(1000).shares(100)},
         kClose,
         "50@1000 left 0/50"},
        {"the smallest rest",
         {order(1).buy(1003).shares(300), order(2).buy(1002).shares(100), order(3).sell(1002).shares(300)},
         1002,
         "300@1003 left 0/0"},
        {"a price without an order, when it is nearest to the close",
         {order(1).buy(1010).shares(100), order(2).sell(990).shares(100)},
         1004,
         "100@1004 left 0/0"},
        {"the near end, when the close lies beyond",
         {order(1).buy(1010).shares(100), order(2).sell(990).shares(100)},
         1099,
         "100@1010 left 0/0"},
        {"the upper limit",
         {order(1).buy(1100).shares(300), order(2).sell(1100).shares(100)},
         kClose,
         "100@1100 left 200/0"},
        {"the lower limit",
         {order(1).buy(900).shares(100), order(2).sell(900).shares(300)},
         kClose,
         "100@900 left 0/200"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(uncrossText(row.orders, row.reference), row.uncross) << row.story;
}

TEST(Auction, shouldFillInPriorityOfBothSidesAtOnePriceWhenUncrossed)
{
    OrderBook book(kBand);
    book.collect(order(1).sell(1000).shares(300));
    book.collect(order(2).buy(1001).shares(100));
    book.collect(order(3).buy(1005).shares(100));
    book.collect(order(4).sell(998).shares(50));
    book.collect(order(5).buy(1001).shares(200));
    book.collect(order(6).sell(1002).shares(100));
    const auto uncross = findUncross(book, kClose);
    ASSERT_TRUE(uncross);
    EXPECT_EQ(uncross->price, 1001);
    EXPECT_EQ(fillsText(book.uncross(uncross->price)), "3x4 50@1001 3x1 50@1001 2x1 100@1001 5x1 150@1001");
    EXPECT_EQ(bookText(book), "1002: 6x100\n---\n1001: 5x50\n");
}

TEST(Auction, shouldNameTheLaterOrderAsAggressorWhenAuctionOrdersTrade)
{
    EXPECT_EQ((Fill{3, 4, 1001, 50}).aggressor(), Side::Sell);
    EXPECT_EQ((Fill{3, 1, 1001, 50}).aggressor(), Side::Buy);
    EXPECT_EQ((Fill{3, 4, 1001, 50}).aggressorSeq(), 4);
}

TEST(Auction, shouldCancelWhatWasCollectedWhenTheAuctionRuns)
{
    OrderBook book(kBand);
    book.collect(order(1).buy(1010).shares(100));
    book.collect(order(2).sell(990).shares(100));
    EXPECT_TRUE(book.cancel(1));
    EXPECT_FALSE(findUncross(book, kClose));
}

RC_GTEST_PROP(AuctionProperty, shouldFindThePriceOfTheRulesWhenOrdersAreCollectedAtRandom, ())
{
    const std::vector<Order> orders = drawOrders();
    const Ticks reference = *rc::gen::inRange(kBand.low, kBand.high + 1);
    OrderBook book(kBand);
    for (const Order& each : orders)
        book.collect(each);
    const Oracle oracle(orders);
    const std::vector<Ticks> candidates = oracle.candidates(reference);
    RC_ASSERT(!candidates.empty());
    const auto found = findUncross(book, reference);
    const Shares volume = oracle.volume(candidates.front());
    RC_ASSERT(found.has_value() == (volume > 0));
    if (!found)
        return;
    RC_ASSERT(found->price == candidates.front());
    RC_ASSERT(found->volume == volume);
    RC_ASSERT(found->buyLeft == oracle.buysFrom(found->price) - volume);
    RC_ASSERT(found->sellLeft == oracle.sellsTo(found->price) - volume);
}

RC_GTEST_PROP(AuctionProperty, shouldFillEveryBetterOrderAndOneSideAtThePriceWhenUncrossed, ())
{
    const std::vector<Order> orders = drawOrders();
    OrderBook book(kBand);
    for (const Order& each : orders)
        book.collect(each);
    const auto found = findUncross(book, kClose);
    RC_PRE(found.has_value());

    Shares traded = 0;
    for (const Fill& fill : book.uncross(found->price)) {
        RC_ASSERT(fill.price == found->price);
        traded += fill.volume;
    }
    RC_ASSERT(traded == found->volume);
    RC_ASSERT(!book.isCrossed());
    bool unfilled[2] = {};
    for (const Order& order : orders) {
        const RestingOrder* rest = book.find(order.seq);
        RC_ASSERT(!rest || (order.price - found->price) * keener(order.side) <= 0);
        if (rest && order.price == found->price)
            unfilled[order.side == Side::Buy ? 0 : 1] = true;
        // Whoever is worse than the price does not trade.
        if ((order.price - found->price) * keener(order.side) < 0)
            RC_ASSERT(rest && rest->left == order.volume);
    }
    RC_ASSERT(!(unfilled[0] && unfilled[1]));
}

} // namespace exchange
