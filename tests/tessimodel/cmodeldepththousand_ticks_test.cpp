#include "tests/tessimodel/thousandmodel.h"

namespace {

using namespace tests;

// Live ticks on a book that is built.
class ThousandTicksTest : public ThousandTest {
protected:
    ThousandTicksTest()
    {
        feed.begin({order(1).buy(10.00).shares(300), order(2).sell(10.02).shares(500)});
        model.m_updateFlags = 0;
    }

    int takeFlags() { return model.m_updateFlags.exchange(0); }
};

TEST_F(ThousandTicksTest, shouldGoIntoTheBookAtOnceWhenATickComes)
{
    feed.orders(live, {order(3).buy(10.02).shares(200).time("09:30:01")});
    EXPECT_EQ(bookText(model), "bid 10.00 3h x1 (+3)\nbid 10.02 2h x1 (+2)\nask 10.02 5h x1 (+5)\n");
    feed.trades(live, {fill(3, 2).at(10.02).shares(200).time("09:30:01")});
    EXPECT_EQ(bookText(model), "bid 10.00 3h x1 (+3)\nask 10.02 3h x1 (-2)\n");
    feed.trades(live, {cancelOfSell(2).shares(300).time("09:30:04")});
    EXPECT_EQ(bookText(model), "bid 10.00 3h x1 (0)\n");
    EXPECT_EQ(model.m_orders.size(), 3u);
    EXPECT_EQ(model.m_transactions.size(), 2u);
}

TEST_F(ThousandTicksTest, shouldGetNoLastPriceWhenTheBookRefusesATrade)
{
    feed.trades(live, {fill(77, 78).at(10.00)});
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX) << "only a trade that was applied";
}

TEST_F(ThousandTicksTest, shouldShowNothingButTakeTheLastTradeWhenTicksAreSuppressed)
{
    Thousand quiet(true, 1);
    quiet.setStock(keyOf("SZ", "000001"));
    BookFeed quietFeed(terminal, quiet);
    quietFeed.begin({order(1).buy(10.00).shares(300)});
    EXPECT_EQ(bookText(quiet), "bid 10.00 3h x1 (+3)\n");
    quietFeed.trades(live, {fill(1, 2).at(10.00).shares(200)});
    EXPECT_EQ(bookText(quiet), "no update");
    EXPECT_EQ(quiet.m_tickLastPrice, 10.00);
    EXPECT_EQ(quiet.m_tickLastVolume, 2);
}

TEST_F(ThousandTicksTest, shouldTakePriceAndRoundedHandsWhenATradeIsApplied)
{
    feed.trades(live, {fill(1, 2).at(10.01).shares(250)});
    EXPECT_EQ(model.m_tickLastPrice, 10.01);
    EXPECT_EQ(model.m_tickLastVolume, 3);
    feed.trades(live, {fill(1, 3).at(10.00).shares(49)});
    EXPECT_EQ(model.m_tickLastPrice, 10.00);
    EXPECT_EQ(model.m_tickLastVolume, 1);
    feed.trades(live, {cancelOfSell(2).at(1.11).shares(200)});
    EXPECT_EQ(model.m_tickLastPrice, 10.00) << "a cancel is no trade";
    EXPECT_EQ(model.m_tickLastVolume, 1);
}

TEST_F(ThousandTicksTest, shouldGetNoLastPriceWhenATradeWaitedForItsOrder)
{
    feed.trades(live, {fill(5, 6).at(10.01).shares(40)});
    feed.orders(live, {order(5).buy(10.01)});
    EXPECT_EQ(queueText(model.m_book.getLevel(true, 10.01)), "5:100-40");
    EXPECT_EQ(model.m_tickLastPrice, DBL_MAX) << "nobody looks at a trade that waited again";
}

} // namespace
