#include "tests/tessimodel/tickmodel.h"

// How a model keeps tick orders and trades and builds its book of them, whatever book it is.
namespace {

using namespace tests;

template <class Model>
class TickHistories : public ::testing::Test, protected HistoriesOfADay {
protected:
    const std::string bookOfTheDay = "bid 1000 1:500\nask 1002 2:300-100\nask 1003 5:700\n";
};

TYPED_TEST_SUITE(TickHistories, BothModels, ModelNames);

// --- which history comes first --------------------------------------------------------------------------------

TYPED_TEST(TickHistories, shouldGiveTheSameBookWhenTheOtherHistoryComesFirst)
{
    ModelStory<TypeParam> story;
    auto& [terminal, model, feed] = story;
    feed.orders(history, this->ordersOfTheDay);
    feed.trades(history, this->tradesOfTheDay);
    EXPECT_EQ(levelsText(model.m_book), this->bookOfTheDay);

    model.clear();
    feed.trades(history, this->tradesOfTheDay);
    feed.orders(history, this->ordersOfTheDay);
    EXPECT_EQ(levelsText(model.m_book), this->bookOfTheDay);
}

TYPED_TEST(TickHistories, shouldBuildTheBookWhenTradesCompleteThePair)
{
    ModelStory<TypeParam> story;
    story.feed.orders(history, this->ordersOfTheDay);
    EXPECT_EQ(story.kept(), "5 orders, 0 trades, loaded 2, flags 0");
    EXPECT_EQ(story.levels(), "");
    story.feed.trades(history, this->tradesOfTheDay);
    EXPECT_EQ(story.kept(), "5 orders, 2 trades, loaded 3, flags 1");
    EXPECT_EQ(story.levels(), this->bookOfTheDay);
}

TYPED_TEST(TickHistories, shouldBuildTheBookWhenOrdersCompleteThePair)
{
    ModelStory<TypeParam> story;
    story.feed.trades(history, this->tradesOfTheDay);
    EXPECT_EQ(story.kept(), "0 orders, 2 trades, loaded 1, flags 0");
    story.feed.orders(history, this->ordersOfTheDay);
    EXPECT_EQ(story.kept(), "5 orders, 2 trades, loaded 3, flags 1");
    EXPECT_EQ(story.levels(), this->bookOfTheDay);
}

TYPED_TEST(TickHistories, shouldDoNothingOnTheCallersThreadWhenDelivered)
{
    ModelStory<TypeParam> story;
    story.feed.holdBack();
    story.feed.begin(this->ordersOfTheDay, this->tradesOfTheDay);
    EXPECT_EQ(story.kept(), "0 orders, 0 trades, loaded 0, flags 0");
    story.feed.run();
    EXPECT_EQ(story.levels(), this->bookOfTheDay);
}

TYPED_TEST(TickHistories, shouldRaiseTheRebuiltFlagWhenTicksAreSuppressedToo)
{
    ModelStory<TypeParam> quiet(true);
    quiet.feed.begin(this->ordersOfTheDay, this->tradesOfTheDay);
    EXPECT_EQ(quiet.takeFlags(), 1);
    quiet.feed.orders(moreHistory, {order(8).buy(9.00)});
    EXPECT_EQ(quiet.takeFlags(), 1);
    quiet.feed.trades(moreHistory, {cancelOfBuy(8)});
    EXPECT_EQ(quiet.takeFlags(), 1);
}

// --- live ticks before the book is built ----------------------------------------------------------------------

TYPED_TEST(TickHistories, shouldBuildWithALiveOrderWhenItIsInTheListByThen)
{
    ModelStory<TypeParam> story;
    story.feed.orders(history, {order(1).buy(10.00)});
    story.feed.orders(live, {order(2).buy(10.01)});
    EXPECT_EQ(story.kept(), "2 orders, 0 trades, loaded 2, flags 0");
    EXPECT_EQ(story.levels(), "");
    story.feed.trades(history, {});
    EXPECT_EQ(story.levels(), "bid 1000 1:100\nbid 1001 2:100\n");
}

TYPED_TEST(TickHistories, shouldLoseLiveTicksWhenTheHistoryThatFollowsLacksThem)
{
    ModelStory<TypeParam> story;
    story.feed.orders(live, {order(2).buy(10.01)});
    story.feed.trades(live, {fill(1, 9)});
    EXPECT_EQ(story.kept(), "1 orders, 1 trades, loaded 0, flags 0");
    story.feed.begin({order(1).buy(10.00)});
    EXPECT_EQ(story.levels(), "bid 1000 1:100\n");
}

TYPED_TEST(TickHistories, shouldReplayALiveTradeWhenItIsInTheListByThen)
{
    ModelStory<TypeParam> story;
    story.feed.trades(history, {});
    story.feed.trades(live, {fill(1, 2).at(10.00).shares(40)});
    story.feed.orders(history, {order(1).buy(10.00)});
    EXPECT_EQ(story.levels(), "bid 1000 1:100-40\n");
}

// --- the same stream again ------------------------------------------------------------------------------------

TYPED_TEST(TickHistories, shouldAddWithoutRebuildWhenMoreHistoryComes)
{
    ModelStory<TypeParam> story;
    story.feed.begin({order(1).buy(10.00)}, {});
    const auto level = story.model.m_book.getLevel(true, 10.00);
    story.feed.orders(moreHistory, {order(2).buy(10.00), order(3).sell(10.02).shares(300)});
    story.feed.trades(moreHistory, {fill(9, 3).at(10.02).shares(100), cancelOfBuy(1)});
    EXPECT_EQ(story.levels(), "bid 1000 2:100\nask 1002 3:300-100\n");
    EXPECT_EQ(story.model.m_book.getLevel(true, 10.00), level);
    EXPECT_EQ(story.kept(), "3 orders, 2 trades, loaded 3, flags 1");
}

TYPED_TEST(TickHistories, shouldChangeNothingInTheBookWhenABatchIsRepeated)
{
    ModelStory<TypeParam> story;
    story.feed.begin(this->ordersOfTheDay, this->tradesOfTheDay);
    story.feed.orders(moreHistory, this->ordersOfTheDay);
    story.feed.trades(moreHistory, this->tradesOfTheDay);
    EXPECT_EQ(story.levels(), this->bookOfTheDay);
    EXPECT_EQ(story.kept(), "10 orders, 4 trades, loaded 3, flags 1") << "the lists keep what was received";
}

TYPED_TEST(TickHistories, shouldRebuildFromTheHeldTradesWhenOrdersBeginAnew)
{
    ModelStory<TypeParam> story;
    story.feed.begin(this->ordersOfTheDay, this->tradesOfTheDay);
    story.takeFlags();
    story.feed.orders(history, {order(2).sell(10.05).shares(800), order(8).buy(9.98)});
    EXPECT_EQ(story.levels(), "bid 998 8:100\nask 1005 2:800-100\n");
    EXPECT_EQ(story.kept(), "2 orders, 2 trades, loaded 3, flags 1");
}

TYPED_TEST(TickHistories, shouldRebuildFromTheHeldOrdersWhenTradesBeginAnew)
{
    ModelStory<TypeParam> story;
    story.feed.begin(this->ordersOfTheDay, this->tradesOfTheDay);
    story.takeFlags();
    story.feed.trades(history, {fill(1, 9).at(10.00).shares(200)});
    EXPECT_EQ(story.levels(), "bid 999 4:200\nbid 1000 1:500-200\nbid 1002 3:100\nask 1002 2:300\nask 1003 5:700\n");
    EXPECT_EQ(story.model.m_dealVolumes.size(), 2u);
    EXPECT_EQ(story.kept(), "5 orders, 1 trades, loaded 3, flags 1");
}

TYPED_TEST(TickHistories, shouldForgetTradesThatWaitedWhenAHistoryBeginsAnew)
{
    ModelStory<TypeParam> story;
    story.feed.begin({order(1).buy(10.00)}, {});
    story.feed.trades(moreHistory, {fill(7, 8).shares(40)});
    EXPECT_EQ(story.model.m_book.m_pendingBuy.count(7), 1u);
    story.feed.trades(history, {});
    EXPECT_TRUE(story.model.m_book.m_pendingBuy.empty());
    EXPECT_TRUE(story.model.m_book.m_seenTrades.empty());
    story.feed.trades(live, {fill(7, 8).shares(30)});
    story.feed.orders(history, {order(7).buy(10.00)});
    EXPECT_EQ(story.levels(), "bid 1000 7:100-30\n") << "not offered twice either";
}

// Only a history's beginning replays what the other stream holds.
TYPED_TEST(TickHistories, shouldNotReplayTheHeldStreamWhenMoreHistoryCompletesThePair)
{
    ModelStory<TypeParam> story;
    story.feed.orders(history, {order(1).buy(10.00)});
    story.feed.trades(moreHistory, {fill(1, 2).at(10.00).shares(40)});
    EXPECT_EQ(story.kept(), "1 orders, 1 trades, loaded 3, flags 1");
    EXPECT_EQ(story.levels(), "");
    EXPECT_EQ(story.model.m_book.m_pendingBuy.count(1), 1u);
    EXPECT_EQ(story.model.m_book.m_pendingSell.count(2), 1u);

    story.model.clear();
    story.feed.trades(history, {fill(1, 2).at(10.00).shares(40)});
    story.feed.orders(moreHistory, {order(1).buy(10.00)});
    EXPECT_EQ(story.kept(), "1 orders, 1 trades, loaded 3, flags 1");
    EXPECT_EQ(story.levels(), "bid 1000 1:100\n") << "the held trade is not replayed";
}

// --- orders that were dealt before we saw them ----------------------------------------------------------------

TYPED_TEST(TickHistories, shouldSkipOrdersAndTradesOfThemAloneWhenTheyAreConsumed)
{
    ModelStory<TypeParam> story;
    const Records orders{order(1).buy(10.00), order(2).sell(10.00), order(3).buy(9.99)};
    const Records trades{fill(1, 2).at(10.00)};
    story.feed.begin(orders, trades);
    EXPECT_EQ(story.levels(), "bid 999 3:100\n");
    EXPECT_EQ(story.model.m_book.m_orderPriceKeys.size(), 1u);
    EXPECT_TRUE(story.model.m_book.m_seenTrades.empty());

    story.model.clear();
    story.feed.trades(history, trades);
    story.feed.orders(history, orders);
    EXPECT_EQ(story.levels(), "bid 999 3:100\n");
    EXPECT_EQ(story.model.m_book.m_orderPriceKeys.size(), 1u);
    EXPECT_TRUE(story.model.m_book.m_seenTrades.empty());
    EXPECT_EQ(story.kept(), "3 orders, 1 trades, loaded 3, flags 1") << "the lists keep what is consumed";
}

TYPED_TEST(TickHistories, shouldApplyATradeWhenOneOfItsOrdersIsNotConsumed)
{
    for (const bool ordersFirst : {true, false}) {
        SCOPED_TRACE(ordersFirst);
        ModelStory<TypeParam> story;
        const Records orders{order(1).buy(10.00).shares(300), order(2).sell(10.00), order(3).sell(10.01).shares(300),
                             order(4).buy(10.01)};
        const Records trades{fill(1, 2).at(10.00), fill(4, 3).at(10.01)};
        if (ordersFirst)
            story.feed.orders(history, orders);
        story.feed.trades(history, trades);
        if (!ordersFirst)
            story.feed.orders(history, orders);
        EXPECT_EQ(story.levels(), "bid 1000 1:300-100\nask 1001 3:300-100\n");
        EXPECT_EQ(story.model.m_book.m_orderPriceKeys.size(), 2u) << "the consumed orders never came";
        EXPECT_EQ(story.model.m_book.m_pendingBuy.count(4), 1u);
    }
}

// With nothing consumed every trade is offered, even one without any order.
TYPED_TEST(TickHistories, shouldOfferTradesWithoutOrdersOnlyWhenNothingIsConsumed)
{
    ModelStory<TypeParam> story;
    story.feed.begin({order(1).buy(10.00)}, {fill(0, 0)});
    EXPECT_EQ(story.model.m_book.m_seenTrades.size(), 1u);
    story.feed.begin({order(1).buy(10.00), order(2).buy(9.00)}, {cancelOfBuy(2), fill(0, 0)});
    EXPECT_TRUE(story.model.m_book.m_seenTrades.empty());
    story.feed.orders(history, {order(1).buy(10.00)});
    EXPECT_EQ(story.model.m_book.m_seenTrades.size(), 2u) << "with order 2 gone from the history";
}

TYPED_TEST(TickHistories, shouldApplyInFullAndBringDownWhenAnOrderIsPartlyDealt)
{
    ModelStory<TypeParam> story;
    story.feed.begin({order(1).buy(10.00).shares(500)}, {fill(1, 8).shares(200), fill(1, 9).shares(299)});
    EXPECT_EQ(story.levels(), "bid 1000 1:500-499\n");
    story.feed.trades(moreHistory, {fill(1, 10).at(10.00).shares(1)});
    EXPECT_EQ(story.levels(), "");
}

TYPED_TEST(TickHistories, shouldSelectAnewWhenMoreOrdersCome)
{
    ModelStory<TypeParam> story;
    story.feed.begin({}, {fill(1, 2).at(10.00), fill(5, 6).shares(40)});
    story.feed.orders(moreHistory, {order(1).buy(10.00), order(5).buy(9.99)});
    EXPECT_EQ(story.levels(), "bid 999 5:100-40\n") << "order 1 is consumed; the trade of order 5 had waited";
}

// What was consumed counts while a history begins: more trades are offered all the same.
TYPED_TEST(TickHistories, shouldOfferEveryTradeWhenMoreTradesCome)
{
    ModelStory<TypeParam> story;
    story.feed.begin({order(1).buy(10.00)}, {fill(1, 0)});
    EXPECT_TRUE(story.model.m_book.m_seenTrades.empty());
    story.feed.trades(moreHistory, {fill(1, 0)});
    EXPECT_EQ(story.model.m_book.m_seenTrades.size(), 1u);
}

// --- deal volumes ---------------------------------------------------------------------------------------------

// A cancel counts as 1,000,000,000 shares, so that an order is consumed up to that size and no further.
TYPED_TEST(TickHistories, shouldConsumeTheOrderWhenItWasCancelledWhateverItsSize)
{
    ModelStory<TypeParam> story;
    story.feed.begin(
        {order(1).buy(10.00).shares(1000000000), order(2).buy(9.99), order(3).buy(9.98).shares(1000000001)},
        {cancelOfBuy(1).shares(1), cancelOfBuy(3).shares(1)});
    EXPECT_EQ(story.model.m_dealVolumes.at(1), 1000000000);
    EXPECT_EQ(story.levels(), "bid 999 2:100\n");
    EXPECT_FALSE(story.model.m_book.m_orderPriceKeys.contains(1));
    EXPECT_TRUE(story.model.m_book.m_orderPriceKeys.contains(3)) << "entered, and its cancel took it off";
}

// The sums are of 32 bits: three cancels of one order wrap below zero, so that it counts as not dealt; the book takes
// it, and its cancel takes it off.
TYPED_TEST(TickHistories, shouldWrapWhenCancelsOfAnOrderAreRepeated)
{
    ModelStory<TypeParam> story;
    story.feed.begin({order(1).buy(10.00)}, {cancelOfBuy(1), cancelOfBuy(1), cancelOfBuy(1)});
    EXPECT_EQ(story.model.m_dealVolumes.at(1), -1294967296);
    EXPECT_TRUE(story.model.m_book.m_orderPriceKeys.contains(1));
    EXPECT_EQ(story.levels(), "");
}

TYPED_TEST(TickHistories, shouldSumDealtVolumePerOrderWhenTradeHistoryComes)
{
    ModelStory<TypeParam> story;
    auto& [terminal, model, feed] = story;
    feed.trades(history, {fill(1, 2).shares(100), fill(1, 3).shares(250), fill(0, 3).shares((1LL << 32) + 7)});
    EXPECT_EQ(model.m_dealVolumes.size(), 3u) << "seq 0 is no order";
    EXPECT_EQ(model.m_dealVolumes.at(1), 350);
    EXPECT_EQ(model.m_dealVolumes.at(2), 100);
    EXPECT_EQ(model.m_dealVolumes.at(3), 257);
    feed.trades(moreHistory, {fill(1, 4).shares(50)});
    EXPECT_EQ(model.m_dealVolumes.at(1), 400);
    feed.trades(live, {fill(1, 5).shares(50)});
    EXPECT_EQ(model.m_dealVolumes.at(1), 400) << "live trades do not count";
    EXPECT_FALSE(model.m_dealVolumes.contains(5));
    feed.trades(history, {fill(7, 8).shares(10)});
    EXPECT_EQ(model.m_dealVolumes.size(), 2u);
}

} // namespace
