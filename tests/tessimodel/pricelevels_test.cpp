#include "tests/tessimodel/pricelevel.h"

#include <gtest/gtest.h>

// What every level of a tick-built book does alike, and the fill in which they differ.
namespace {

using namespace tests;

template <class Level>
class PriceLevels : public ::testing::Test {
protected:
    // A bid of 3:500, 5:200 and 9:100.
    PriceLevels() { three.given(order(3).shares(500), order(5).shares(200), order(9).shares(100)); }

    BareLevel<Level> three;
};

struct LevelNames {
    template <class Level>
    static std::string GetName(int)
    {
        return std::is_same_v<Level, TC::OrderQueue> ? "OrderQueue" : "SingleQueue";
    }
};

using BothLevels = ::testing::Types<TC::SingleQueue, TC::OrderQueue>;

TYPED_TEST_SUITE(PriceLevels, BothLevels, LevelNames);

constexpr const char* kThree = "[3:500 5:200 9:100] 800 x3";

// --- orders ---------------------------------------------------------------------------------------------------

TYPED_TEST(PriceLevels, shouldCountOrdersAndVolumeWhenOrdersCome)
{
    BareLevel<TypeParam> level;
    EXPECT_EQ(level.text(), "[] 0 x0 dead");
    EXPECT_TRUE(level.add(order(3).shares(500)));
    EXPECT_EQ(level.text(), "[3:500] 500 x1");
    EXPECT_TRUE(level.add(order(8).shares((1LL << 32) + 250)));
    EXPECT_EQ(level.text(), "[3:500 8:4294967546] 4294968046 x2");
}

TYPED_TEST(PriceLevels, shouldKeepOrderAsItCameWhenUntouched)
{
    BareLevel<TypeParam> level;
    level.add(order(3).shares(500).time("09:31:02.005"));
    const TC::SingleQuote& quote = *level.queue.m_quotes.at(3);
    EXPECT_EQ(quote.timetag, timeOf("09:31:02.005"));
    EXPECT_EQ(quote.seq, 3);
    EXPECT_EQ(quote.volume, 500);
    EXPECT_EQ(quote.dealVolume, 0);
    EXPECT_EQ(quote.status, 1);
}

TYPED_TEST(PriceLevels, shouldChangeNothingWhenSeqIsThereAlready)
{
    auto& level = this->three;
    EXPECT_FALSE(level.add(order(5).shares(900).time("09:31:00")));
    EXPECT_EQ(level.text(), kThree);
    EXPECT_EQ(level.queue.m_quotes.at(5)->timetag, timeOf("09:30:00"));
}

TYPED_TEST(PriceLevels, shouldQueueBySeqWhenOrderComesLate)
{
    auto& level = this->three;
    EXPECT_TRUE(level.add(order(4).shares(200)));
    EXPECT_EQ(level.text(), "[3:500 4:200 5:200 9:100] 1000 x4");
}

TYPED_TEST(PriceLevels, shouldLiveAgainWhenAnOrderComesAfterItRanOut)
{
    BareLevel<TypeParam> level;
    level.given(order(1));
    EXPECT_TRUE(level.take(fill(1, 2)));
    EXPECT_EQ(level.text(), "[] 0 x0 dead");
    EXPECT_TRUE(level.add(order(3)));
    EXPECT_EQ(level.text(), "[3:100] 100 x1");
}

TYPED_TEST(PriceLevels, shouldStayDeadWhenItRefusesAnOrder)
{
    BareLevel<TypeParam> level;
    level.given(order(1), order(2).shares(0));
    EXPECT_TRUE(level.take(fill(1, 9)));
    EXPECT_EQ(level.text(), "[2:0] 0 x1 dead");
    EXPECT_FALSE(level.add(order(2)));
    EXPECT_EQ(level.text(), "[2:0] 0 x1 dead");
}

// --- cancels --------------------------------------------------------------------------------------------------

TYPED_TEST(PriceLevels, shouldRefuseWhenLevelIsEmpty)
{
    BareLevel<TypeParam> level;
    EXPECT_FALSE(level.take(fill(1, 2)));
    EXPECT_FALSE(level.take(cancelOfBuy(1)));
    EXPECT_EQ(level.text(), "[] 0 x0 dead");
}

TYPED_TEST(PriceLevels, shouldTakeOneOrderOutWhenItIsCancelledAnywhere)
{
    auto& level = this->three;
    EXPECT_TRUE(level.take(cancelOfBuy(5).shares(200)));
    EXPECT_EQ(level.text(), "[3:500 9:100] 600 x2");
}

TYPED_TEST(PriceLevels, shouldTakeAllThatIsLeftWhenTheCancelReportsAnotherVolume)
{
    for (const __int64 shares : {0, 150, 900}) {
        BareLevel<TypeParam> level;
        level.given(order(3).shares(500), order(5).shares(200));
        level.take(fill(3, 0).shares(100));
        EXPECT_TRUE(level.take(cancelOfBuy(3).shares(shares)));
        EXPECT_EQ(level.text(), "[5:200] 200 x1") << shares;
    }
}

TYPED_TEST(PriceLevels, shouldChangeNothingWhenTheCancelledOrderIsNotHere)
{
    auto& level = this->three;
    EXPECT_FALSE(level.take(cancelOfBuy(4)));
    EXPECT_FALSE(level.take(cancelOfBuy(10)));
    EXPECT_FALSE(level.take(cancelOfSell(5)));
    EXPECT_EQ(level.text(), kThree);
}

TYPED_TEST(PriceLevels, shouldBeDeadWhenTheLastOrderIsCancelled)
{
    BareLevel<TypeParam> level;
    level.given(order(3).shares(500));
    EXPECT_TRUE(level.take(cancelOfBuy(3)));
    EXPECT_EQ(level.text(), "[] 0 x0 dead");
}

// An order without shares does not keep a level alive.
TYPED_TEST(PriceLevels, shouldBeDeadWhenOnlyAnOrderOfNothingIsLeft)
{
    BareLevel<TypeParam> level;
    level.given(order(1), order(2).shares(0));
    EXPECT_TRUE(level.take(cancelOfBuy(1)));
    EXPECT_EQ(level.text(), "[2:0] 0 x1 dead");
}

TYPED_TEST(PriceLevels, shouldTakeTheSellSeqWhenLevelIsAnAsk)
{
    BareLevel<TypeParam> level(false);
    level.given(order(3).shares(500), order(5).shares(200), order(9).shares(100));
    EXPECT_FALSE(level.take(cancelOfBuy(5)));
    EXPECT_TRUE(level.take(cancelOfSell(5)));
    EXPECT_TRUE(level.take(fill(9, 3).shares(100)));
    EXPECT_EQ(level.text(), "[3:500-100 9:100] 500 x2");
}

// --- fills ----------------------------------------------------------------------------------------------------

TYPED_TEST(PriceLevels, shouldStayWithTheRestWhenOrderIsPartlyDealt)
{
    auto& level = this->three;
    EXPECT_TRUE(level.take(fill(3, 7).shares(200).time("09:29:00")));
    EXPECT_EQ(level.text(), "[3:500-200 5:200 9:100] 600 x3");
    EXPECT_EQ(level.queue.m_quotes.at(3)->status, -1);
    EXPECT_EQ(level.queue.m_quotes.at(3)->timetag, timeOf("09:29:00")) << "the trade's, also when it is older";
    EXPECT_EQ(level.queue.m_quotes.at(5)->status, 1);
    EXPECT_EQ(level.queue.m_quotes.at(5)->timetag, timeOf("09:30:00"));
}

TYPED_TEST(PriceLevels, shouldDropTheOrderWhenItIsFullyDealt)
{
    auto& level = this->three;
    level.take(fill(3, 7).shares(200));
    EXPECT_TRUE(level.take(fill(3, 8).shares(299)));
    EXPECT_EQ(level.text(), "[3:500-499 5:200 9:100] 301 x3");
    EXPECT_TRUE(level.take(fill(3, 9).shares(1)));
    EXPECT_EQ(level.text(), "[5:200 9:100] 300 x2");
}

TYPED_TEST(PriceLevels, shouldNotMarkTheOrderAsPartlyDealtWhenItsOnlyFillIsOfAllItHas)
{
    auto& level = this->three;
    const auto held = level.queue.m_quotes.at(3);
    EXPECT_TRUE(level.take(fill(3, 7).shares(500).time("09:31:00")));
    EXPECT_EQ(held->dealVolume, 500);
    EXPECT_EQ(held->status, 1);
    EXPECT_EQ(held->timetag, timeOf("09:30:00"));
}

// First in, first out: what stood before an order that trades must have gone unseen.
TYPED_TEST(PriceLevels, shouldDropAllOlderOrdersWhenAYoungerOneTrades)
{
    auto& level = this->three;
    level.take(fill(3, 7).shares(200));
    EXPECT_TRUE(level.take(fill(9, 8).shares(40)));
    EXPECT_EQ(level.text(), "[9:100-40] 60 x1") << "live sizes 300 and 200 went, not only the trade's volume";
}

TYPED_TEST(PriceLevels, shouldChangeNothingWhenOrderIsOlderThanAllHere)
{
    auto& level = this->three;
    EXPECT_FALSE(level.take(fill(2, 7)));
    EXPECT_EQ(level.text(), kThree);
}

// The older orders are gone although the fill is refused.
TYPED_TEST(PriceLevels, shouldDropOlderOrdersAndRefuseWhenOrderIsMissingInTheMiddle)
{
    auto& level = this->three;
    EXPECT_FALSE(level.take(fill(6, 7).shares(200)));
    EXPECT_EQ(level.text(), "[9:100] 100 x1");
}

// Nobody asks whether a level that refuses a fill still has shares.
TYPED_TEST(PriceLevels, shouldStayAliveWhenARefusedFillLeavesNoShares)
{
    BareLevel<TypeParam> level;
    level.given(order(1), order(7).shares(0));
    EXPECT_FALSE(level.take(fill(3, 9)));
    EXPECT_EQ(level.text(), "[7:0] 0 x1");
}

TYPED_TEST(PriceLevels, shouldRunOutAndCountAsTakenWhenOrderIsYoungerThanAllHere)
{
    auto& level = this->three;
    EXPECT_TRUE(level.take(fill(10, 7).shares(200)));
    EXPECT_EQ(level.text(), "[] 0 x0 dead") << "the trade's own volume is taken off nothing";
}

// --- where they differ ----------------------------------------------------------------------------------------

struct FillCase {
    __int64 shares;
    const char* singleQueue;
    const char* orderQueue;
};

// A SingleQueue gives a fill at most what the order has left. An OrderQueue gives the whole of it, also what the order
// does not have, so that its volume falls below what its orders have together, and it may die with orders in it.
TEST(PriceLevelsApart, shouldTakeTheOrdersRestOrTheWholeTradeWhenAFillIsLarger)
{
    const FillCase cases[] = {
        {200, "[3:500-200 5:200] 500 x2", "[3:500-200 5:200] 500 x2"},
        {-50, "[3:500--50 5:200] 750 x2", "[3:500--50 5:200] 750 x2"},
        {500, "[5:200] 200 x1", "[5:200] 200 x1"},
        {600, "[5:200] 200 x1", "[5:200] 100 x1"},
        {700, "[5:200] 200 x1", "[5:200] 0 x1 dead"},
        {900, "[5:200] 200 x1", "[5:200] -200 x1 dead"},
        // The order's dealt volume has 32 bits.
        {(1LL << 32) + 100, "[5:200] 200 x1", "[3:500-100 5:200] -4294966696 x2 dead"},
    };
    for (const FillCase& c : cases) {
        SCOPED_TRACE(c.shares);
        BareLevel<TC::SingleQueue> single;
        BareLevel<TC::OrderQueue> whole;
        single.given(order(3).shares(500), order(5).shares(200));
        whole.given(order(3).shares(500), order(5).shares(200));
        EXPECT_TRUE(single.take(fill(3, 7).shares(c.shares)));
        EXPECT_TRUE(whole.take(fill(3, 7).shares(c.shares)));
        EXPECT_EQ(single.text(), c.singleQueue);
        EXPECT_EQ(whole.text(), c.orderQueue);
    }
}

} // namespace
