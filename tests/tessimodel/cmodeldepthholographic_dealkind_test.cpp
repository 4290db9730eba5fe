#include "tests/tessimodel/tradelist.h"

#include <limits>

namespace {

using namespace tests;

class TradeDealKindTest : public TradeViewTest {
protected:
    TC::E_DEAL_KIND buyKind(int index) const { return model->getDataKind(model->getData(index), true); }
    TC::E_DEAL_KIND sellKind(int index) const { return model->getDataKind(model->getData(index), false); }
};

TEST_F(TradeDealKindTest, shouldHaveItsNumbersWhenSaved)
{
    EXPECT_EQ(static_cast<int>(TC::DEAL_SINGLE), 0);
    EXPECT_EQ(static_cast<int>(TC::DEAL_NEAR_SAME_PRICE), 1);
    EXPECT_EQ(static_cast<int>(TC::DEAL_FAR_SAME_PRICE), 2);
    EXPECT_EQ(static_cast<int>(TC::DEAL_FAR_OTHER_PRICE), 3);
    EXPECT_EQ(static_cast<int>(TC::DEAL_NEAR_OTHER_PRICE), 4);
}

TEST_F(TradeDealKindTest, shouldTellHowARowFollowsTheOneBeforeOfItsOrder)
{
    feed.trades(history, {fill(1, 11).at(10.00), fill(1, 12).at(10.00), fill(1, 12).at(10.01), fill(2, 13).at(10.01),
                          fill(1, 14).at(10.01), fill(3, 13).at(10.02)});
    EXPECT_EQ(buyKind(0), TC::DEAL_NEAR_SAME_PRICE) << "the first of several";
    EXPECT_EQ(buyKind(1), TC::DEAL_NEAR_SAME_PRICE);
    EXPECT_EQ(buyKind(2), TC::DEAL_NEAR_OTHER_PRICE);
    EXPECT_EQ(buyKind(3), TC::DEAL_SINGLE);
    EXPECT_EQ(buyKind(4), TC::DEAL_FAR_SAME_PRICE);
    EXPECT_EQ(buyKind(5), TC::DEAL_SINGLE);

    EXPECT_EQ(sellKind(0), TC::DEAL_SINGLE);
    EXPECT_EQ(sellKind(1), TC::DEAL_NEAR_SAME_PRICE);
    EXPECT_EQ(sellKind(2), TC::DEAL_NEAR_OTHER_PRICE);
    EXPECT_EQ(sellKind(3), TC::DEAL_NEAR_SAME_PRICE);
    EXPECT_EQ(sellKind(4), TC::DEAL_SINGLE);
    EXPECT_EQ(sellKind(5), TC::DEAL_FAR_OTHER_PRICE);
}

TEST_F(TradeDealKindTest, shouldBecomeTheFirstOfSeveralWhenTheOrderTradesAgain)
{
    feed.trades(history, {fill(1, 11).at(10.00)});
    EXPECT_EQ(buyKind(0), TC::DEAL_SINGLE);
    feed.trades(live, {fill(1, 12).at(10.00)});
    EXPECT_EQ(buyKind(0), TC::DEAL_NEAR_SAME_PRICE);
    EXPECT_EQ(sellKind(0), TC::DEAL_SINGLE);
}

TEST_F(TradeDealKindTest, shouldCallPricesTheSameWhenTheyDifferByLessThanHalfATick)
{
    const std::pair<double, TC::E_DEAL_KIND> cases[] = {
        {0.004, TC::DEAL_NEAR_SAME_PRICE},  {-0.004, TC::DEAL_NEAR_SAME_PRICE},
        {0.005, TC::DEAL_NEAR_OTHER_PRICE}, {-0.005, TC::DEAL_NEAR_OTHER_PRICE},
        {0.006, TC::DEAL_NEAR_OTHER_PRICE}, {std::numeric_limits<double>::quiet_NaN(), TC::DEAL_NEAR_OTHER_PRICE}};
    for (const auto& [price, kind] : cases) {
        feed.trades(history, {fill(1, 11).at(0), fill(1, 12).at(price)});
        EXPECT_EQ(buyKind(1), kind) << price;
    }
    model->m_priceTick = 0.1;
    feed.trades(history, {fill(1, 11).at(0), fill(1, 12).at(0.04)});
    EXPECT_EQ(buyKind(1), TC::DEAL_NEAR_SAME_PRICE);
    model->m_priceTick = 0;
    EXPECT_EQ(buyKind(1), TC::DEAL_NEAR_OTHER_PRICE);
}

TEST_F(TradeDealKindTest, shouldBeSingleWhenThereIsNoRow)
{
    EXPECT_EQ(model->getDataKind(nullptr, true), TC::DEAL_SINGLE);
    EXPECT_EQ(model->getDataKind(nullptr, false), TC::DEAL_SINGLE);
}

// --- rows that the filter took away --------------------------------------------------------------------------

// The number of the row before stands for another row now: what is compared is the row at its position.
TEST_F(TradeDealKindTest, shouldCompareWithTheRowAtThatPositionWhenTheFilterTookRowsAway)
{
    feed.trades(history, {fill(1, 11).at(10.00).shares(100), fill(2, 12).at(10.05).shares(500),
                          fill(1, 13).at(10.00).shares(500), fill(1, 14).at(10.05).shares(500)});
    EXPECT_EQ(buyKind(2), TC::DEAL_FAR_SAME_PRICE);
    EXPECT_EQ(buyKind(3), TC::DEAL_NEAR_OTHER_PRICE);
    filter(atLeastHands(2));
    EXPECT_EQ(buyKind(1), TC::DEAL_NEAR_OTHER_PRICE) << "position 0 is the row of buy order 2 at 10.05, next to it";
    EXPECT_EQ(buyKind(2), TC::DEAL_FAR_SAME_PRICE) << "position 2 is the row itself";
}

TEST_F(TradeDealKindTest, shouldBeFarAtAnotherPriceWhenTheRowBeforeIsMissing)
{
    feed.trades(history, {fill(9, 19).at(10.00).shares(100), fill(1, 11).at(10.00).shares(100),
                          fill(1, 12).at(10.00).shares(500)});
    EXPECT_EQ(buyKind(2), TC::DEAL_NEAR_SAME_PRICE);
    filter(atLeastHands(2));
    EXPECT_EQ(buyKind(0), TC::DEAL_FAR_OTHER_PRICE) << "position 1 is behind the last row";
}

TEST_F(TradeDealKindTest, shouldBeFarWhenTheRowIsNotOfTheList)
{
    feed.trades(history, {fill(1, 11).at(10.00), fill(1, 12).at(10.00)});
    const auto copy = boost::make_shared<TC::DepthTransData>(*model->getData(1));
    EXPECT_EQ(model->getDataKind(copy, true), TC::DEAL_FAR_SAME_PRICE) << "the row itself tells, not what it says";
    copy->prevBuyIndex = std::numeric_limits<int>::max();
    EXPECT_EQ(model->getDataKind(copy, true), TC::DEAL_FAR_OTHER_PRICE);
    copy->prevBuyIndex = -2;
    EXPECT_EQ(model->getDataKind(copy, true), TC::DEAL_FAR_OTHER_PRICE);
}

} // namespace
