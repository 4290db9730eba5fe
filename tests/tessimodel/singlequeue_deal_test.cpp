#include "tests/tessimodel/pricelevel.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;

// A bid of 3:500, 5:200 and 9:100.
PriceLevel& withThree(PriceLevel& level)
{
    level.add(order(3).shares(500));
    level.add(order(5).shares(200));
    level.add(order(9).shares(100));
    return level;
}

constexpr const char* kThree = "[3:500 5:200 9:100] 800 x3 (+100)";
constexpr const char* kThreeRow = "10.00 8h x3 (+1)";

// --- cancels --------------------------------------------------------------------------------------------------

TEST(SingleQueueCancel, shouldTakeOneOrderOutWhenItStandsAnywhere)
{
    PriceLevel level;
    EXPECT_TRUE(withThree(level).take(cancelOfBuy(5).shares(200)));
    EXPECT_EQ(level.text(), "[3:500 9:100] 600 x2 (-200)");
    EXPECT_EQ(level.rowText(), "10.00 6h x2 (-2)");
}

TEST(SingleQueueCancel, shouldTakeTheWholeOrderWhenAnotherVolumeIsReported)
{
    PriceLevel level;
    withThree(level).take(fill(3, 0).shares(100));
    EXPECT_TRUE(level.take(cancelOfBuy(3).shares(150)));
    EXPECT_EQ(level.text(), "[5:200 9:100] 300 x2 (-150)");
    EXPECT_EQ(level.rowText(), "10.00 3h x2 (-1)") << "the change is what the trade says";
}

TEST(SingleQueueCancel, shouldChangeNothingWhenOrderIsNotHere)
{
    PriceLevel level;
    EXPECT_FALSE(withThree(level).take(cancelOfBuy(4).time("09:31:00")));
    EXPECT_EQ(level.text(), kThree);
    EXPECT_EQ(level.rowText(), kThreeRow);
    EXPECT_EQ(level.queue.m_timetag, timeOf("09:30:00"));
}

// A cancel of no shares removes the order; the change mark of what came before stays.
TEST(SingleQueueCancel, shouldLeaveTheRowsChangeWhenCancelIsOfNoShares)
{
    PriceLevel level;
    EXPECT_TRUE(withThree(level).take(cancelOfBuy(3).shares(0).time("09:31:00")));
    EXPECT_EQ(level.text(), "[5:200 9:100] 300 x2 (0)");
    EXPECT_EQ(level.rowText(), "10.00 3h x2 (+1)");
    EXPECT_EQ(level.queue.m_timetag, timeOf("09:31:00"));
}

// --- fills ----------------------------------------------------------------------------------------------------

TEST(SingleQueueFill, shouldStayWithTheRestWhenOrderIsPartlyDealt)
{
    PriceLevel level;
    EXPECT_TRUE(withThree(level).take(fill(3, 7).shares(200).time("09:31:00")));
    EXPECT_EQ(level.text(), "[3:500-200 5:200 9:100] 600 x3 (-200)");
    EXPECT_EQ(level.rowText(), "10.00 6h x3 (-2)");
    EXPECT_EQ(level.queue.m_quotes.at(3)->status, -1);
    EXPECT_EQ(level.queue.m_quotes.at(3)->timetag, timeOf("09:31:00"));
    EXPECT_EQ(level.queue.m_quotes.at(5)->status, 1);
    EXPECT_EQ(level.queue.m_timetag, timeOf("09:31:00"));
}

TEST(SingleQueueFill, shouldKeepTheLevelsTimeWhenTradeIsOlder)
{
    PriceLevel level;
    level.add(order(3).shares(500).time("09:30:10"));
    level.take(fill(3, 7).shares(200).time("09:30:04"));
    EXPECT_EQ(level.queue.m_timetag, timeOf("09:30:10"));
    EXPECT_EQ(level.queue.m_quotes.at(3)->timetag, timeOf("09:30:04")) << "an order has its latest deal's own time";
}

// First in, first out: what stood before an order that trades must have gone unseen.
TEST(SingleQueueFill, shouldDropAllOlderOrdersWhenAYoungerOneTrades)
{
    PriceLevel level;
    withThree(level).take(fill(3, 7).shares(200));
    EXPECT_TRUE(level.take(fill(9, 8).shares(40)));
    EXPECT_EQ(level.text(), "[9:100-40] 60 x1 (-40)") << "live sizes 300 and 200 went, not only the trade's volume";
    EXPECT_EQ(level.rowText(), "10.00 1h x1 (-1)");
}

TEST(SingleQueueFill, shouldChangeNothingWhenOrderIsOlderThanAllHere)
{
    PriceLevel level;
    EXPECT_FALSE(withThree(level).take(fill(2, 7).time("09:31:00")));
    EXPECT_EQ(level.text(), kThree);
    EXPECT_EQ(level.rowText(), kThreeRow);
    EXPECT_EQ(level.queue.m_timetag, timeOf("09:30:00"));
}

// The older orders are gone although the fill is refused, and the row does not say so yet.
TEST(SingleQueueFill, shouldDropOlderOrdersAndRefuseWhenOrderIsMissingInTheMiddle)
{
    PriceLevel level;
    EXPECT_FALSE(withThree(level).take(fill(6, 7).shares(200).time("09:31:00")));
    EXPECT_EQ(level.text(), "[9:100] 100 x1 (+100)");
    EXPECT_EQ(level.rowText(), kThreeRow);
    EXPECT_EQ(level.queue.m_timetag, timeOf("09:30:00"));
}

TEST(SingleQueueFill, shouldRunOutAndCountAsTakenWhenOrderIsYoungerThanAllHere)
{
    PriceLevel level;
    EXPECT_TRUE(withThree(level).take(fill(10, 7).shares(200).time("09:31:00")));
    EXPECT_EQ(level.text(), "[] 0 x0 (-200) dead");
    EXPECT_EQ(level.rowText(), "10.00 1h x0 (-2)");
    EXPECT_EQ(level.queue.m_timetag, timeOf("09:30:00"));
}

TEST(SingleQueueFill, shouldTakeOnlyTheLiveSizeWhenTradeIsLarger)
{
    PriceLevel level;
    EXPECT_TRUE(withThree(level).take(fill(3, 7).shares(900)));
    EXPECT_EQ(level.text(), "[5:200 9:100] 300 x2 (-900)") << "the change shows the whole trade";
    EXPECT_EQ(level.rowText(), "10.00 3h x2 (-9)");
}

// --- levels that run out, rows --------------------------------------------------------------------------------

TEST(SingleQueueDeal, shouldRefuseWhenLevelIsEmpty)
{
    PriceLevel level;
    EXPECT_FALSE(level.take(fill(1, 2)));
    EXPECT_FALSE(level.take(cancelOfBuy(1)));
    EXPECT_EQ(level.text(), "[] 0 x0 (0) dead");
    EXPECT_EQ(level.rowText(), "0.00 0h x? (0)");
}

TEST(SingleQueueDeal, shouldKeepItsOldTimeWhenLevelRunsOut)
{
    PriceLevel level;
    level.add(order(1).time("09:30:00"));
    EXPECT_TRUE(level.take(fill(1, 2).time("09:31:00")));
    EXPECT_EQ(level.text(), "[] 0 x0 (-100) dead");
    EXPECT_EQ(level.queue.m_timetag, timeOf("09:30:00"));
    EXPECT_EQ(level.rowText(), "10.00 1h x0 (-1)") << "a row never shows less than a hand";
}

TEST(SingleQueueDeal, shouldShowOneHandWhenARemainderIsLeft)
{
    PriceLevel level;
    level.add(order(1).shares(330));
    level.take(fill(1, 2).shares(300));
    EXPECT_EQ(level.rowText(), "10.00 1h x1 (-3)");
}

TEST(SingleQueueDeal, shouldNotWriteThePriceWhenTradeComes)
{
    PriceLevel level;
    level.add(order(1).shares(300));
    level.row->price = 77;
    level.take(fill(1, 2).shares(100).at(10.0));
    EXPECT_EQ(level.rowText(), "77.00 2h x1 (-1)");
}

struct ChangeCase {
    __int64 shares;
    int delta;
};

// From one hand on the change is cut off; anything less shows as one. A trade of minus 30 or 250 is nonsense that
// follows the rule for what is above zero.
TEST(SingleQueueDeal, shouldShowChangeInHandsWhenTradeHasThatManyShares)
{
    const ChangeCase cases[] = {{1, -1},   {30, -1},  {99, -1}, {100, -1}, {199, -1},
                                {200, -2}, {250, -2}, {-30, 1}, {-250, 2}, {(1LL << 32) + 300, -3}};
    for (const ChangeCase& c : cases) {
        SCOPED_TRACE(c.shares);
        PriceLevel level;
        level.add(order(1).shares(10000));
        level.add(order(2).shares(10000));
        EXPECT_TRUE(level.take(cancelOfBuy(1).shares(c.shares)));
        EXPECT_EQ(level.row->delta, c.delta);
    }
}

TEST(SingleQueueDeal, shouldCountInTheUnitWhenAHandIsTenSharesOrOne)
{
    PriceLevel level;
    const auto row = boost::make_shared<TC::EntrustData>();
    level.queue.order(order(1).shares(155), row, 10);
    EXPECT_EQ(rowText(*row), "10.00 15h x1 (+15)");
    level.queue.deal(fill(1, 2).shares(19), row, 10);
    EXPECT_EQ(rowText(*row), "10.00 13h x1 (-1)");
    level.queue.deal(fill(1, 2).shares(19), row, 1);
    EXPECT_EQ(rowText(*row), "10.00 117h x1 (-19)");
}

} // namespace
