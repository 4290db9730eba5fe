#include "quoter/orderdata.h"
#include "tests/tessimodel/orderlist.h"

#include <climits>
#include <cmath>

namespace {

using namespace tests;

class OrderListOrdersTest : public OrderListTest {
protected:
    // Delivers one order live and gives its row.
    OrderList::OrderRow take(const Order& record)
    {
        feed.orders(live, {record});
        return model->getOrderData(model->m_orderCount - 1, true);
    }
};

TEST_F(OrderListOrdersTest, shouldListOrdersAsTheyComeWhenDelivered)
{
    feed.orders(history, {order(7).buy(10.00).shares(300).time("09:30:01"),
                          order(3).sell(10.02).shares(1250).time("09:15:00.999"),
                          order(5).buy(0).kind(2).shares(50).time("09:30:02.500")});
    const std::string rows = "order 7 B 10.00 x300 3h 09:30:01\n"
                             "order 3 S 10.02 x1250 13h 09:15:00\n"
                             "order 5 UB 0.00 x50 1h 09:30:02\n";
    EXPECT_EQ(allText(*model), rows);
    EXPECT_EQ(shownText(*model), rows);
}

TEST_F(OrderListOrdersTest, shouldCarryEveryFieldOfTheOrderWhenItHasARow)
{
    const auto row = take(order(8).sell(10.05).shares(700).kind(4).flag(-9).time("10:11:12.345"));
    EXPECT_EQ(row->time, timeOf("10:11:12") / 1000);
    EXPECT_EQ(row->price, 10.05);
    EXPECT_EQ(row->hands, 7);
    EXPECT_EQ(row->volume, 700);
    EXPECT_EQ(row->seq, 8);
    EXPECT_EQ(row->bsFlag, -9);
    EXPECT_EQ(row->orderKind, 4);
}

TEST_F(OrderListOrdersTest, shouldShareTheRowWhenItPassesTheFilter)
{
    feed.orders(live, {order(1).buy(10.00)});
    EXPECT_EQ(model->getOrderData(0, true), model->getOrderData(0, false));
    filter({});
    EXPECT_EQ(model->getOrderData(0, true), model->getOrderData(0, false));
}

// --- numbers --------------------------------------------------------------------------------------------------

TEST_F(OrderListOrdersTest, shouldRoundHandsAndShowAtLeastOneWhenVolumeIsNotWhole)
{
    const struct {
        __int64 volume;
        int byHundred;
        int byTen;
    } cases[] = {
        {0, 1, 1},
        {1, 1, 1},
        {9, 1, 1},
        {10, 1, 1},
        {14, 1, 1},
        {15, 1, 2},
        {25, 1, 3},
        {99, 1, 10},
        {100, 1, 10},
        {149, 1, 15},
        {150, 2, 15},
        {249, 2, 25},
        {250, 3, 25},
        {-1, 1, 1},
        {-100, 1, 1},
        {LLONG_MIN, 1, 1},
        {1000, 10, 100},
        {1049, 10, 105},
        {1050, 11, 105},
        {LLONG_MAX, INT_MIN, INT_MIN},
        {4294967396, 42949674, 429496740}, // 2^32 + 100: all 64 bits count
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.volume);
        follow("SZ", "000001");
        const auto byHundred = take(order(1).buy(10.00).shares(c.volume));
        EXPECT_EQ(byHundred->hands, c.byHundred);
        EXPECT_EQ(byHundred->volume, c.volume);
        follow("SZ", "000001", {100016});
        EXPECT_EQ(take(order(1).buy(10.00).shares(c.volume))->hands, c.byTen);
    }
}

TEST_F(OrderListOrdersTest, shouldCutTheTimeTowardZeroWhenItHasMilliseconds)
{
    const struct {
        __int64 timetag;
        __int64 seconds;
    } cases[] = {{0, 0},      {999, 0},    {1000, 1},
                 {1999, 1},   {-999, 0},   {-1000, -1},
                 {-1999, -1}, {-2000, -2}, {1LL << 43, (1LL << 43) / 1000}};
    for (const auto& c : cases) {
        const std::shared_ptr<quoter::OrderData> record = order(1).buy(10.00);
        record->timetag = c.timetag;
        feed.orders(live, {record});
        EXPECT_EQ(model->m_orders.back()->time, c.seconds) << c.timetag;
    }
}

TEST_F(OrderListOrdersTest, shouldKeepTheLowBitsOfASeqWhenItIsWide)
{
    EXPECT_EQ(take(order((1LL << 32) + 7).buy(10.00))->seq, 7);
    EXPECT_EQ(take(order(0xFFFFFFFFLL).buy(9.99))->seq, -1);
    EXPECT_EQ(take(order(5LL << 32).buy(9.98))->seq, 0);
    OrderList::OrderRow found;
    for (const auto& [seq, price] : {std::pair(7, 10.00), {-1, 9.99}, {0, 9.98}}) {
        ASSERT_TRUE(model->getOrderData(seq, found)) << seq;
        EXPECT_EQ(found->price, price);
    }
}

TEST_F(OrderListOrdersTest, shouldTakeAnOrderWhenItsPriceIsOdd)
{
    EXPECT_EQ(take(order(1).buy(-1.00))->price, -1.0);
    EXPECT_TRUE(std::isnan(take(order(2).buy(NAN))->price));
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 cancels");
}

// --- the index by seq -----------------------------------------------------------------------------------------

TEST_F(OrderListOrdersTest, shouldFindTheLaterRowWhenASeqComesTwice)
{
    feed.orders(history, {order(1).buy(10.00).shares(300), order(2).buy(9.99), order(1).buy(10.05).shares(700)});
    EXPECT_EQ(model->m_orderCount, 3) << "the earlier row stays";
    OrderList::OrderRow found;
    ASSERT_TRUE(model->getOrderData(1, found));
    EXPECT_EQ(rowText(*found), "1 B 10.05 x700 7h 09:30:00");
    feed.orders(live, {order(1).sell(10.06)});
    ASSERT_TRUE(model->getOrderData(1, found));
    EXPECT_EQ(rowText(*found), "1 S 10.06 x100 1h 09:30:00");
    EXPECT_EQ(model->m_orderIndexBySeq.at(1), 3);
    EXPECT_EQ(model->m_orderIndexBySeq.at(2), 1);
    EXPECT_EQ(model->m_orderIndexBySeq.size(), 2u);
}

TEST_F(OrderListOrdersTest, shouldFindAnOrderWhenTheFilterHidesIt)
{
    filter(nothing());
    feed.orders(history, {order(1).buy(10.00)});
    OrderList::OrderRow found;
    EXPECT_TRUE(model->getOrderData(1, found));
    EXPECT_EQ(shownText(*model), "");
}

// --- the symbol -----------------------------------------------------------------------------------------------

TEST(OrderSymbol, shouldTellSideAndKindWhenShown)
{
    const struct {
        int bsFlag;
        const char* byKind[4]; // kind 0, 1, 3, any other
    } cases[] = {
        {1, {"N", "B", "F", "UB"}}, {2, {"N", "S", "F", "US"}}, {3, {"B", "B", "B", "B"}},  {4, {"S", "S", "S", "S"}},
        {0, {"N", "N", "N", "N"}},  {5, {"N", "N", "N", "N"}},  {-1, {"N", "N", "N", "N"}}, {'1', {"N", "N", "N", "N"}},
    };
    const auto symbol = [](int bsFlag, int orderKind) {
        const auto row = boost::make_shared<TC::DepthOrderData>();
        row->bsFlag = bsFlag;
        row->orderKind = orderKind;
        return TC::getOrderSymbol(row).toStdString();
    };
    for (const auto& c : cases) {
        EXPECT_EQ(symbol(c.bsFlag, 0), c.byKind[0]) << c.bsFlag;
        EXPECT_EQ(symbol(c.bsFlag, 1), c.byKind[1]) << c.bsFlag;
        EXPECT_EQ(symbol(c.bsFlag, 3), c.byKind[2]) << c.bsFlag;
        for (const int kind : {2, 4, 5, 6, 7, 8, -1, INT_MAX, INT_MIN})
            EXPECT_EQ(symbol(c.bsFlag, kind), c.byKind[3]) << c.bsFlag << " kind " << kind;
    }
}

TEST(OrderSymbol, shouldBeNoneWhenThereIsNoOrder)
{
    EXPECT_EQ(TC::getOrderSymbol(nullptr), "N");
}

} // namespace
