#include "tests/tessimodel/tickmodel.h"

#include <cfloat>
#include <limits>
#include <tuple>
#include <vector>

// Live ticks and batches of no use in a model with a tick-built book, whatever book it is.
namespace {

using namespace tests;

template <class Model>
class TickModels : public ::testing::Test {};

// A model whose book is built, with the flag of that taken.
template <class Model>
struct BuiltModel : ModelStory<Model> {
    BuiltModel()
    {
        this->feed.begin({order(1).buy(10.00).shares(300), order(2).sell(10.02).shares(500)});
        this->takeFlags();
    }
};

TYPED_TEST_SUITE(TickModels, BothModels, ModelNames);

TYPED_TEST(TickModels, shouldGoIntoTheBookAtOnceWhenATickComes)
{
    BuiltModel<TypeParam> story;
    story.feed.orders(live, {order(3).buy(10.02).shares(200)});
    EXPECT_EQ(story.levels(), "bid 1000 1:300\nbid 1002 3:200\nask 1002 2:500\n");
    story.feed.trades(live, {fill(3, 2).at(10.02).shares(200)});
    EXPECT_EQ(story.levels(), "bid 1000 1:300\nask 1002 2:500-200\n");
    story.feed.trades(live, {cancelOfSell(2).shares(300)});
    EXPECT_EQ(story.levels(), "bid 1000 1:300\n");
    EXPECT_EQ(story.model.m_orders.size(), 3u);
    EXPECT_EQ(story.model.m_transactions.size(), 2u);
}

TYPED_TEST(TickModels, shouldTellLevelsFromChangesInPlaceWhenTicksCome)
{
    BuiltModel<TypeParam> story;
    story.feed.orders(live, {order(3).buy(10.00)});
    EXPECT_EQ(story.takeFlags(), 4);
    story.feed.orders(live, {order(4).buy(10.01)});
    EXPECT_EQ(story.takeFlags(), 2);
    story.feed.trades(live, {fill(4, 2).shares(100)});
    EXPECT_EQ(story.takeFlags(), 6);
    story.feed.trades(live, {cancelOfBuy(1)});
    EXPECT_EQ(story.takeFlags(), 4);
}

TYPED_TEST(TickModels, shouldPileUpFlagsWhenNobodyPolls)
{
    BuiltModel<TypeParam> story;
    story.feed.orders(live, {order(3).buy(10.00)});
    story.feed.orders(live, {order(4).buy(10.01)});
    story.feed.orders(live, {order(5).buy(10.01)});
    EXPECT_EQ(story.takeFlags(), 6);
}

TYPED_TEST(TickModels, shouldRaiseNothingWhenTheBookRefusesATick)
{
    BuiltModel<TypeParam> story;
    story.feed.orders(live, {order(1).buy(10.00)});
    story.feed.orders(live, {order(5).buy(10.00).flag(3)});
    story.feed.trades(live, {fill(77, 78).at(10.00)});
    EXPECT_EQ(story.kept(), "4 orders, 1 trades, loaded 3, flags 0") << "the lists keep what was received";
}

// A feed pushes ticks one by one: of a live push only the last record counts.
TYPED_TEST(TickModels, shouldTakeTheLastRecordOnlyWhenAPushHasMore)
{
    BuiltModel<TypeParam> story;
    for (const int kind : {1, 2, 4, -1, 99}) {
        SCOPED_TRACE(kind);
        story.model.clear();
        story.feed.begin();
        story.feed.orders(kind, {order(5).buy(9.97), order(6).buy(9.98), order(7).buy(9.99)});
        story.feed.trades(kind, {fill(7, 1).shares(90), fill(7, 2).shares(30)});
        EXPECT_EQ(story.levels(), "bid 999 7:100-30\n");
        EXPECT_EQ(story.kept(), "1 orders, 1 trades, loaded 3, flags 7");
    }
}

TYPED_TEST(TickModels, shouldChangeTheBookAndRaiseNothingWhenTicksAreSuppressed)
{
    ModelStory<TypeParam> quiet(true);
    quiet.feed.begin({order(1).buy(10.00).shares(300)});
    quiet.takeFlags();
    quiet.feed.orders(live, {order(3).buy(9.99)});
    quiet.feed.trades(live, {fill(1, 2).at(10.00).shares(200)});
    EXPECT_EQ(quiet.takeFlags(), 0);
    EXPECT_EQ(quiet.levels(), "bid 999 3:100\nbid 1000 1:300-200\n");
}

TYPED_TEST(TickModels, shouldKeepATradeWaitingWhenItsOrderComesLater)
{
    BuiltModel<TypeParam> story;
    story.feed.trades(live, {fill(5, 6).at(10.01).shares(40)});
    EXPECT_EQ(story.takeFlags(), 0);
    story.feed.orders(live, {order(5).buy(10.01)});
    EXPECT_EQ(story.takeFlags(), 2);
    EXPECT_EQ(queueText(story.model.m_book.getLevel(true, 10.01)), "5:100-40");
}

TYPED_TEST(TickModels, shouldNotCountLiveTradesAsDealtWhenOrdersBeginAnew)
{
    BuiltModel<TypeParam> story;
    story.feed.trades(live, {fill(1, 9).at(10.00).shares(300)});
    EXPECT_TRUE(story.model.m_dealVolumes.empty());
    story.feed.orders(history, {order(1).buy(10.00).shares(300)});
    EXPECT_EQ(story.levels(), "") << "applied in full, and the kept trade takes it off";
    EXPECT_TRUE(story.model.m_book.m_orderPriceKeys.contains(1));
}

// --- continuous trading ---------------------------------------------------------------------------------------

TYPED_TEST(TickModels, shouldTellAuctionsFromContinuousTradingWhenBestPricesAreSeen)
{
    const ModelStory<TypeParam> story;
    const TypeParam& model = story.model;
    EXPECT_TRUE(model.isContinousStatus(level2().bid(10.00).ask(10.01)));
    EXPECT_TRUE(model.isContinousStatus(level2().bid(10.00)));
    EXPECT_TRUE(model.isContinousStatus(level2().ask(10.01)));
    EXPECT_TRUE(model.isContinousStatus(level2().bid(10.02).ask(10.01))) << "crossed";
    EXPECT_FALSE(model.isContinousStatus(level2().bid(10.00).ask(10.00)));
    EXPECT_FALSE(model.isContinousStatus(level2().bid(10.00).ask(10.000005)));
    EXPECT_TRUE(model.isContinousStatus(level2().bid(10.00).ask(10.00002)));
    EXPECT_FALSE(model.isContinousStatus(level2()));
    EXPECT_FALSE(model.isContinousStatus(level2().bid(0.00001).ask(-0.00001)));
}

TYPED_TEST(TickModels, shouldTellAuctionsFromContinuousTradingWhenBestPricesAreNoNumbers)
{
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const ModelStory<TypeParam> story;
    for (const auto& [bid, ask, isContinuous] : std::vector<std::tuple<double, double, bool>>{
             {kNan, 10.01, false},
             {10.00, kNan, false},
             {kNan, 0.0, false},
             {0.0, kNan, false},
             {kNan, kInfinity, false},
             {kNan, kNan, false},
             {kInfinity, 10.01, true},
             {10.00, kInfinity, true},
             {-kInfinity, 10.01, true},
             {10.00, -kInfinity, true},
             {0.0, kInfinity, true},
             {-kInfinity, kInfinity, true},
             {kInfinity, kInfinity, false},
             {-kInfinity, -kInfinity, false},
             {DBL_MAX, 10.01, true},
             {DBL_MAX, DBL_MAX, false},
             {DBL_MAX, kInfinity, true},
         })
        EXPECT_EQ(story.model.isContinousStatus(level2().bid(bid).ask(ask)), isContinuous) << bid << " " << ask;
}

// --- empty batches, null and other types ----------------------------------------------------------------------

TYPED_TEST(TickModels, shouldChangeNothingWhenMoreHistoryOrALivePushIsEmpty)
{
    ModelStory<TypeParam> story;
    for (const int kind : {moreHistory, live, 2, -1}) {
        story.feed.orders(kind, {});
        story.feed.trades(kind, {});
    }
    EXPECT_EQ(story.kept(), "0 orders, 0 trades, loaded 0, flags 0");
}

TYPED_TEST(TickModels, shouldCountAsHistoryWhenAnEmptyOneBegins)
{
    ModelStory<TypeParam> story;
    story.feed.orders(history, {});
    EXPECT_EQ(story.kept(), "0 orders, 0 trades, loaded 2, flags 0");
    story.feed.trades(history, {});
    EXPECT_EQ(story.kept(), "0 orders, 0 trades, loaded 3, flags 1");
}

TYPED_TEST(TickModels, shouldEmptyTheStreamAndRebuildWhenAnEmptyHistoryBegins)
{
    BuiltModel<TypeParam> story;
    story.feed.begin({order(1).buy(10.00)}, {fill(1, 2).shares(40)});
    story.takeFlags();
    story.feed.trades(history, {});
    EXPECT_EQ(story.levels(), "bid 1000 1:100\n");
    EXPECT_EQ(story.kept(), "1 orders, 0 trades, loaded 3, flags 1");
    EXPECT_TRUE(story.model.m_dealVolumes.empty());
    story.takeFlags();
    story.feed.orders(history, {});
    EXPECT_EQ(story.levels(), "");
    EXPECT_EQ(story.kept(), "0 orders, 0 trades, loaded 3, flags 1");
}

TYPED_TEST(TickModels, shouldSkipRecordsOfOtherTypesAndNullsWhenTheyAreInAHistory)
{
    ModelStory<TypeParam> story;
    story.feed.orders(history, {order(1).buy(10.00), nullptr, fill(1, 2), level2(), order(2).buy(9.99)});
    story.feed.trades(history, {nullptr, order(3).buy(9.98), fill(1, 2).shares(40), level1()});
    EXPECT_EQ(story.levels(), "bid 999 2:100\nbid 1000 1:100-40\n");
    EXPECT_EQ(story.kept(), "2 orders, 1 trades, loaded 3, flags 1");
    story.feed.orders(moreHistory, {nullptr, order(4).buy(10.00)});
    story.feed.orders(moreHistory, {nullptr});
    EXPECT_EQ(story.levels(), "bid 999 2:100\nbid 1000 1:100-40 4:100\n");
}

TYPED_TEST(TickModels, shouldDoNothingWhenTheLastRecordOfALivePushIsNoneOfTheStream)
{
    BuiltModel<TypeParam> story;
    story.feed.orders(live, {order(3).buy(10.00), nullptr});
    story.feed.orders(live, {order(3).buy(10.00), fill(1, 2)});
    story.feed.trades(live, {fill(1, 2), nullptr});
    story.feed.trades(live, {fill(1, 2), order(3).buy(10.00)});
    EXPECT_EQ(story.levels(), "bid 1000 1:300\nask 1002 2:500\n");
    EXPECT_EQ(story.kept(), "2 orders, 0 trades, loaded 3, flags 0");
}

TYPED_TEST(TickModels, shouldGoOnWhenTheBookRefusesARecordOfAHistory)
{
    BuiltModel<TypeParam> story;
    story.feed.begin({order(5).buy(10.00), order(4).buy(10.00), order(6).buy(9.99).kind(0), order(7).buy(9.98).flag(3),
                      order(8).buy(9.97)});
    EXPECT_EQ(story.levels(), "bid 997 8:100\nbid 1000 5:100\n");
    EXPECT_EQ(story.kept(), "5 orders, 0 trades, loaded 3, flags 1");
}

TYPED_TEST(TickModels, shouldTakeNothingWhenThereIsNoInstrument)
{
    ModelStory<TypeParam> story;
    story.model.setStock("nobody knows this");
    for (const auto& [market, code] : {std::pair("SZ", "000001"), {"", ""}}) {
        story.feed.request(market, code);
        story.feed.begin({order(1).buy(10.00)});
        story.feed.orders(live, {order(2).buy(10.00)});
        story.feed.trades(live, {fill(1, 2)});
    }
    EXPECT_EQ(story.kept(), "0 orders, 0 trades, loaded 0, flags 0");
}

// --- a book of another instrument -----------------------------------------------------------------------------

// It stops a batch at the first record that it looks at. What was kept and the bit of the history stay; the flag that
// the end of the work would have raised does not come.
TYPED_TEST(TickModels, shouldStopAnOrderHistoryInTheMiddleWhenTheBookIsOfAnotherInstrument)
{
    ModelStory<TypeParam> story;
    story.feed.trades(history, {fill(1, 2).shares(40), fill(9, 8).shares(100)});
    story.estrangeBook();
    story.feed.orders(history,
                      {order(1).buy(10.00).kind(0), order(9).buy(10.00), order(1).buy(10.00), order(2).buy(10.00)});
    EXPECT_EQ(story.kept(), "3 orders, 2 trades, loaded 3, flags 0")
        << "one of no use, one that is consumed, and the one that stopped";
    story.feed.orders(moreHistory, {order(1).buy(10.00), order(2).buy(10.00)});
    EXPECT_EQ(story.kept(), "4 orders, 2 trades, loaded 3, flags 0");
}

TYPED_TEST(TickModels, shouldStopTheReplayWhenTheBookIsOfAnotherInstrument)
{
    ModelStory<TypeParam> story;
    story.feed.trades(history, {fill(1, 2).shares(40)});
    story.estrangeBook();
    story.feed.orders(history, {});
    EXPECT_EQ(story.kept(), "0 orders, 1 trades, loaded 3, flags 0");
}

TYPED_TEST(TickModels, shouldStopATradeHistoryWhenTheBookIsOfAnotherInstrument)
{
    ModelStory<TypeParam> story;
    story.feed.orders(history, {});
    story.estrangeBook();
    story.feed.trades(history, {fill(1, 2).shares(40), fill(1, 3).shares(10)});
    EXPECT_EQ(story.kept(), "0 orders, 2 trades, loaded 3, flags 0") << "trades are kept before any is offered";
    EXPECT_EQ(story.model.m_dealVolumes.at(1), 50);
    story.feed.trades(moreHistory, {fill(1, 4)});
    EXPECT_EQ(story.kept(), "0 orders, 3 trades, loaded 3, flags 0");
}

TYPED_TEST(TickModels, shouldStopWithTheHeldOrdersWhenTheBookIsOfAnotherInstrument)
{
    ModelStory<TypeParam> story;
    story.feed.orders(history, {order(1).buy(10.00)});
    story.estrangeBook();
    story.feed.trades(history, {});
    EXPECT_EQ(story.kept(), "1 orders, 0 trades, loaded 3, flags 0");
}

TYPED_TEST(TickModels, shouldRaiseNoFlagWhenALiveTickMeetsABookOfAnotherInstrument)
{
    BuiltModel<TypeParam> story;
    story.estrangeBook();
    story.feed.orders(live, {order(3).buy(10.00)});
    story.feed.trades(live, {fill(1, 2).at(10.00)});
    EXPECT_EQ(story.kept(), "3 orders, 1 trades, loaded 3, flags 0");
    EXPECT_EQ(story.levels(), "bid 1000 1:300\nask 1002 2:500\n");
}

} // namespace
