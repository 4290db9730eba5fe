#include "apps/tessi/followedlists.h"

#include "apps/tessi/daydelivery.h"
#include "recording/datalayer.h"
#include "standin/terminal.h"
#include "tests/tessi/handmadeday.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

namespace {

using namespace tests;

// "1 2" for the orders and "2x300 1x100" for the cancels that the order list has after the day.
struct Lists {
    std::string orders;
    std::string cancels;
};

Lists listsOf(const HandmadeDay& day, recording::HistoryPoint history)
{
    standin::Terminal terminal;
    tessi::introduce(terminal, day.recorded());
    tessi::FollowedOrders followed(day.recorded());
    recording::DeliveryOptions options;
    options.history = history;
    tessi::deliver(terminal, std::make_shared<recording::RecordedDay>(day.recorded()), options,
                   [&followed](recording::DataLayer& data) { followed.subscribe(data); });
    Lists lists;
    for (int i = 0; const auto order = followed.model->getOrderData(i, true); ++i)
        lists.orders += fmt::format("{}{}", i == 0 ? "" : " ", order->seq);
    for (int i = 0; const auto cancel = followed.model->getCancelData(i); ++i)
        lists.cancels += fmt::format("{}{}x{}", i == 0 ? "" : " ", cancel->seq, cancel->volume);
    return lists;
}

// The trade list reads both streams as well; a delete must not stand for its order there.
TEST(FollowedTrades, shouldKnowTheSizeWhenShanghaiDeletesTheOrder)
{
    HandmadeDay day("SH", "600000");
    day << order(1).buy(10.00).shares(700) << fill(1, 3).at(10.00).shares(300) << order(1).flag(3).kind(0).shares(400)
        << cancelOfBuy(1).shares(400);
    standin::Terminal terminal;
    tessi::introduce(terminal, day.recorded());
    tessi::FollowedTrades followed(day.recorded());
    tessi::deliverAsHistory(terminal, day.recorded(),
                            [&followed](recording::DataLayer& data) { followed.subscribe(data); });
    ASSERT_EQ(followed.model->m_rowCount, 1);
    EXPECT_EQ(followed.model->getEntrustVolume(followed.model->getData(0), true), 7);
    EXPECT_EQ(followed.model->getEntrustVolume(followed.model->getData(0), false), 3) << "as far as it has traded";
}

class CancelRoutes : public ::testing::TestWithParam<std::size_t> {
protected:
    // The parameter is how many records come as history.
    static Lists listed(const HandmadeDay& day) { return listsOf(day, recording::HistoryPoint::arrival(GetParam())); }
};

// Shanghai's deletes stand in both streams of a recorded day; the list gets them with the orders.
TEST_P(CancelRoutes, shouldListADeleteOnceWhenMarketIsShanghai)
{
    HandmadeDay day("SH", "600000");
    day << order(1).buy(10.00).shares(300) << order(2).sell(10.05).shares(500) << order(2).flag(4).kind(0).shares(500)
        << cancelOfSell(2).shares(500) << order(3).sell(10.00).shares(100) << fill(1, 3).at(10.00).shares(100)
        << order(1).flag(3).kind(0).shares(200) << cancelOfBuy(1).shares(200);
    const Lists lists = listed(day);
    EXPECT_EQ(lists.orders, "1 2 3") << "a delete is no order";
    EXPECT_EQ(lists.cancels, "2x500 1x200");
}

TEST_P(CancelRoutes, shouldListACancelOfTheTradeStreamWhenMarketIsShenzhen)
{
    HandmadeDay day;
    day << order(1).buy(10.00).shares(300) << order(2).sell(10.05).shares(500) << cancelOfSell(2).shares(500)
        << order(3).sell(10.00).shares(100) << fill(1, 3).at(10.00).shares(100) << cancelOfBuy(1).shares(200);
    const Lists lists = listed(day);
    EXPECT_EQ(lists.orders, "1 2 3");
    EXPECT_EQ(lists.cancels, "2x500 1x200");
}

INSTANTIATE_TEST_SUITE_P(HistoryUpTo, CancelRoutes, ::testing::Values(0, 3, 5, 100));

} // namespace
