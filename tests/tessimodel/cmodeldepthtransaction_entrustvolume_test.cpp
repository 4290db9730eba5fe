#include "tests/tessimodel/tradelist.h"

#include <limits>

namespace {

using namespace tests;

class TradeEntrustVolumeTest : public TradeListTest {
protected:
    int buyHands(int index) const { return model->getEntrustVolume(model->m_rows.at(index), true); }
    int sellHands(int index) const { return model->getEntrustVolume(model->m_rows.at(index), false); }

    // A row of 100 shares that only a panel holds, with a link forth and back in its buy chain.
    static TradeList::Row strayRow(int prev, int next)
    {
        auto row = boost::make_shared<TC::DepthTransData>();
        row->volume = 100;
        row->prevBuyIndex = prev;
        row->nextBuyIndex = next;
        return row;
    }
};

// --- the order is known --------------------------------------------------------------------------------------

TEST_F(TradeEntrustVolumeTest, shouldFindAnOrderByItsWholeSeqWhenAsked)
{
    const std::shared_ptr<quoter::OrderData> plain = order(5);
    const std::shared_ptr<quoter::OrderData> large = order(4294967296 + 5);
    feed.orders(history, {plain, large});
    EXPECT_EQ(model->getOrder(5), plain);
    EXPECT_EQ(model->getOrder(4294967296 + 5), large);
    EXPECT_EQ(model->getOrder(6), nullptr);
    EXPECT_EQ(model->getOrder(-1), nullptr);
}

TEST_F(TradeEntrustVolumeTest, shouldGiveTheOrdersOwnSizeWhenItIsKnown)
{
    feed.orders(history, {order(1).buy(10.00).shares(350), order(2).sell(10.00).shares(99),
                          order(3).sell(10.00).shares(4294967296 + 449)});
    feed.trades(history, {fill(1, 2), fill(1, 3), fill(4, 3)});
    EXPECT_EQ(buyHands(0), 4) << "rounded";
    EXPECT_EQ(sellHands(0), 1) << "at least one";
    EXPECT_EQ(sellHands(1), 4) << "the low 32 bits";
    EXPECT_EQ(buyHands(2), 1) << "not known: what it traded";
}

TEST_F(TradeEntrustVolumeTest, shouldGoByTheSeqWhenAnOrderHasSeqZero)
{
    feed.orders(history, {order(0).shares(700)});
    feed.trades(history, {fill(0, 2).shares(200)});
    EXPECT_EQ(buyHands(0), 7);
}

TEST_F(TradeEntrustVolumeTest, shouldNotKnowAnOrderWhenOnlyItsLowBitsAreTheRows)
{
    feed.orders(history, {order(4294967296 + 1).shares(700)});
    feed.trades(history, {fill(1, 2).shares(200)});
    EXPECT_EQ(buyHands(0), 2);
}

// --- what the order has traded -------------------------------------------------------------------------------

TEST_F(TradeEntrustVolumeTest, shouldAddUpTheChainWhenTheOrderIsNotKnown)
{
    feed.trades(history,
                {fill(1, 11).shares(130), fill(2, 11).shares(500), fill(1, 12).shares(130), fill(1, 13).shares(190)});
    for (const int index : {0, 2, 3})
        EXPECT_EQ(buyHands(index), 5) << "450 shares, from row " << index;
    EXPECT_EQ(sellHands(0), 6) << "630 shares";
    EXPECT_EQ(sellHands(1), 6);
    EXPECT_EQ(sellHands(2), 1);
    EXPECT_EQ(buyHands(1), 5);
    feed.trades(live, {fill(1, 14).shares(100)});
    EXPECT_EQ(buyHands(0), 6) << "550 shares";
}

TEST_F(TradeEntrustVolumeTest, shouldGiveTheRowsOwnHandsWhenItIsAlone)
{
    feed.trades(history, {fill(1, 2).shares(250), fill(3, 4).shares(20)});
    EXPECT_EQ(buyHands(0), 3);
    EXPECT_EQ(sellHands(0), 3);
    EXPECT_EQ(buyHands(1), 1);
}

TEST_F(TradeEntrustVolumeTest, shouldWrapTheSumWhenAChainExceedsAnInt)
{
    feed.trades(history, {fill(1, 2).shares(2000000000), fill(1, 3).shares(2000000000)});
    EXPECT_EQ(buyHands(0), 1) << "below zero";
    feed.trades(live, {fill(1, 4).shares(294967296 + 150)});
    EXPECT_EQ(buyHands(0), 2) << "2^32 and 150 shares";
}

TEST_F(TradeEntrustVolumeTest, shouldGiveMinusOneWhenThereIsNoRow)
{
    EXPECT_EQ(model->getEntrustVolume(nullptr, true), -1);
    EXPECT_EQ(model->getEntrustVolume(nullptr, false), -1);
}

// --- links that lead astray ----------------------------------------------------------------------------------

TEST_F(TradeEntrustVolumeTest, shouldEndTheWalkWhenALinkLeadsOutOfTheRows)
{
    feed.trades(history, {fill(8, 18).shares(1000), fill(9, 19).shares(2000)});
    const std::pair<std::pair<int, int>, int> cases[] = {
        {{-1, -1}, 1}, {{2, -1}, 1},  {{-1, 2}, 1}, {{3, 99}, 1}, {{-2, std::numeric_limits<int>::min()}, 1},
        {{0, -1}, 11}, {{-1, 0}, 11}, {{0, 1}, 31}, {{1, 0}, 31}, {{std::numeric_limits<int>::max(), 1}, 21}};
    for (const auto& [links, hands] : cases)
        EXPECT_EQ(model->getEntrustVolume(strayRow(links.first, links.second), true), hands)
            << links.first << " " << links.second;
}

// Links are followed among the rows that pass, though they were made among all: a row may even lead to itself. The walk
// ends with as many steps as there are rows.
TEST_F(TradeEntrustVolumeTest, shouldEndTheWalkWhenLinksGoInACircle)
{
    filter(atLeastHands(2));
    feed.trades(history,
                {fill(1, 11).shares(100), fill(1, 12).shares(300), fill(1, 13).shares(100), fill(1, 14).shares(200)});
    EXPECT_EQ(linksText(*model), "0: buy -1 1, sell -1 -1\n"
                                 "1: buy 0 1, sell -1 -1\n"
                                 "2: buy 0 -1, sell -1 -1\n"
                                 "3: buy 1 -1, sell -1 -1\n");
    EXPECT_EQ(buyHands(1), 11) << "3, back to itself 3 and 3, forth to the last row 2";
    EXPECT_EQ(buyHands(3), 6) << "2, back to itself 2 and 2";
    EXPECT_EQ(sellHands(1), 3);
}

TEST_F(TradeEntrustVolumeTest, shouldFollowTheFormerNumbersWhenTheFilterWasSetAfterTheRowsCame)
{
    feed.trades(history,
                {fill(1, 11).shares(100), fill(2, 12).shares(300), fill(1, 13).shares(400), fill(3, 14).shares(500)});
    const TradeList::Row row = model->getData(2);
    EXPECT_EQ(model->getEntrustVolume(row, true), 5);
    filter(atLeastHands(3));
    EXPECT_EQ(model->getEntrustVolume(row, true), 7) << "position 0 is the row of buy order 2 now";
}

} // namespace
