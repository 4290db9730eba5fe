#include "quoter/orderdata.h"
#include "tests/tessimodel/orderlist.h"

#include <climits>
#include <cmath>

namespace {

using namespace tests;

using OrderListFilterTest = OrderListTest;

// --- the size -------------------------------------------------------------------------------------------------

// A size of 4, 5 and 6 against a threshold of 5.
struct Mode {
    int mode;
    bool passes[3];
};

const Mode kHandsModes[] = {{0, {false, true, true}}, {1, {false, false, true}}, {2, {false, true, false}}};
const Mode kAmountModes[] = {{0, {false, true, true}}, {1, {false, false, true}}};

TEST_F(OrderListFilterTest, shouldJoinTheTestsOfHandsAndAmountWhenBothModesAreNamed)
{
    for (const Mode& hands : kHandsModes) {
        for (const Mode& amount : kAmountModes) {
            for (int i = 0; i < 9; ++i) {
                const int h = i / 3;
                const int a = i % 3;
                SCOPED_TRACE(testing::Message() << "modes " << hands.mode << " " << amount.mode << ": " << 4 + h
                                                << " hands, amount " << 4 + a);
                model->m_filter = {.handsMode = hands.mode, .hands = 5, .amountMode = amount.mode, .amount = 5};
                EXPECT_EQ(model->beInTheRange(4 + h, 4.0 + a), hands.passes[h] || amount.passes[a]);
                for (const int both : {1, 2, -1, INT_MIN}) {
                    model->m_filter.connective = both;
                    EXPECT_EQ(model->beInTheRange(4 + h, 4.0 + a), hands.passes[h] && amount.passes[a]) << both;
                }
            }
        }
    }
}

// A mode without a name lets every size pass, whatever the other mode says.
TEST_F(OrderListFilterTest, shouldLetEverySizePassWhenEitherModeHasNoName)
{
    const int modes[] = {-1, 0, 1, 2, 3, 4, INT_MIN, INT_MAX};
    int unnamed = 0;
    for (const int handsMode : modes) {
        for (const int amountMode : modes) {
            const bool named = handsMode >= 0 && handsMode <= 2 && amountMode >= 0 && amountMode <= 1;
            unnamed += named ? 0 : 1;
            for (const int connective : {0, 1}) {
                model->m_filter = {.handsMode = handsMode,
                                   .hands = 1000,
                                   .connective = connective,
                                   .amountMode = amountMode,
                                   .amount = 1000};
                EXPECT_EQ(model->beInTheRange(5, 5.0), !named) << handsMode << " " << amountMode;
            }
        }
    }
    EXPECT_EQ(unnamed, 64 - 6);
}

TEST_F(OrderListFilterTest, shouldCompareTheAmountAsItIsWhenItIsFractionalOrLarge)
{
    const auto passes = [&](int mode, int amount, double value) {
        model->m_filter = {.hands = 1, .connective = 1, .amountMode = mode, .amount = amount};
        return model->beInTheRange(1, value);
    };
    EXPECT_FALSE(passes(0, 5, 4.9999999)) << "no tolerance";
    EXPECT_TRUE(passes(1, 5, 5.0000001));
    EXPECT_TRUE(passes(0, INT_MAX, 3e9));
    EXPECT_FALSE(passes(0, INT_MAX, 2147483646.5));
    EXPECT_TRUE(passes(0, -5, -5.0));
    EXPECT_FALSE(passes(1, -5, -5.0));
    EXPECT_FALSE(passes(0, INT_MIN, NAN));
    model->m_filter.connective = 0;
    EXPECT_TRUE(model->beInTheRange(1, NAN)) << "the hands are enough";
}

TEST_F(OrderListFilterTest, shouldMeasureAnOrderByHandsAndByItsWholeAmountWhenFiltered)
{
    feed.orders(history, {order(1).buy(10.00).shares(150), order(2).sell(10.00).shares(200),
                          order(3).buy(0).shares(900), order(4).sell(0.01).shares(1LL << 40)});
    filter(atLeastHands(2));
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 3 cancels") << "a volume beyond all hands has the lowest number of them";
    filter({.handsMode = 2, .hands = 2, .connective = 1});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 cancels");
    filter({.handsMode = 1, .hands = 2, .connective = 1});
    EXPECT_EQ(shownSeqs(*model), "orders 3 cancels");
    filter({.hands = INT_MAX, .amount = 1500});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 4 cancels") << "shares times price, not hands";
    filter({.hands = INT_MAX, .amountMode = 1, .amount = 1500});
    EXPECT_EQ(shownSeqs(*model), "orders 2 4 cancels");
    filter({.hands = INT_MAX, .amount = INT_MAX});
    EXPECT_EQ(shownSeqs(*model), "orders 4 cancels");
    filter({.hands = 9, .connective = 1, .amountMode = 2, .amount = INT_MAX});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 3 4 cancels");
}

// --- the time of day ------------------------------------------------------------------------------------------

TEST_F(OrderListFilterTest, shouldIncludeBothEndsInWholeSecondsWhenTimesAreTested)
{
    const struct {
        const char* clock;
        bool passes;
    } cases[] = {{"00:00:00", false}, {"08:59:59.999", false}, {"09:00:00", true}, {"09:00:00.001", true},
                 {"12:00:00", true},  {"16:09:59.999", true},  {"16:10:00", true}, {"16:10:00.999", true},
                 {"16:10:01", false}, {"23:59:59", false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.clock);
        feed.orders(history, {order(1).buy(10.00).time(c.clock)});
        EXPECT_EQ(model->m_filteredOrderCount, c.passes ? 1 : 0);
        feed.orders(history, {order(1).buy(10.00)});
        feed.trades(history, {cancelOfBuy(1).time(c.clock)});
        EXPECT_EQ(model->m_filteredCancelCount, c.passes ? 1 : 0);
        EXPECT_EQ(model->m_filteredOrderCount, 1);
    }
}

// A row is of a whole second, the ends are milliseconds.
TEST_F(OrderListFilterTest, shouldCompareTheBeginOfTheSecondWhenAnEndIsWithinIt)
{
    feed.orders(history, {order(1).buy(10.00).time("09:30:00.900"), order(2).buy(10.00).time("09:30:01"),
                          order(3).buy(10.00).time("09:30:02.900")});
    filter({.startTime = dayTime("09:30:00.001"), .endTime = dayTime("09:30:02.001")});
    EXPECT_EQ(shownSeqs(*model), "orders 2 3 cancels");
    filter({.startTime = dayTime("09:30:00"), .endTime = dayTime("09:30:01.999")});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 cancels");
    filter({.startTime = dayTime("09:30:01"), .endTime = dayTime("09:30:01")});
    EXPECT_EQ(shownSeqs(*model), "orders 2 cancels");
    filter({.startTime = dayTime("09:30:02"), .endTime = dayTime("09:30:01")});
    EXPECT_EQ(shownSeqs(*model), "orders cancels");
}

TEST_F(OrderListFilterTest, shouldLookAtTheTimeOfDayAloneWhenRowsAreOfOtherDays)
{
    for (const int days : {-20000, -1, 1, 400}) {
        const std::shared_ptr<quoter::OrderData> early = order(1).buy(10.00).time("08:59:59");
        const std::shared_ptr<quoter::OrderData> late = order(2).buy(10.00).time("09:00:01");
        early->timetag += days * 86'400'000LL;
        late->timetag += days * 86'400'000LL;
        feed.orders(history, {early, late});
        EXPECT_EQ(shownSeqs(*model), "orders 2 cancels") << days;
    }
}

// --- the sides ------------------------------------------------------------------------------------------------

class OrderListSidesTest : public OrderListTest {
protected:
    // One order of each symbol, B S UB US F N, and of the two flags that are cancels elsewhere; each with a cancel.
    void SetUp() override
    {
        feed.orders(history,
                    {order(1).buy(10.00), order(2).sell(10.00), order(3).buy(0).kind(2), order(4).sell(0).kind(6),
                     order(5).buy(1.00).kind(3), order(6).flag(0), order(7).flag(3), order(8).flag(4)});
        Records cancels;
        for (int seq = 1; seq <= 8; ++seq)
            cancels.push_back(cancelOfBuy(seq)); // which side the cancel names does not count
        feed.trades(history, cancels);
    }
};

TEST_F(OrderListSidesTest, shouldHideOrdersOfTheSymbolAloneWhenASideIsOff)
{
    filter({.showBuyOrder = false});
    EXPECT_EQ(shownSeqs(*model), "orders 2 3 4 5 6 8 cancels 1 2 3 4 5 6 7 8");
    filter({.showSellOrder = false});
    EXPECT_EQ(shownSeqs(*model), "orders 1 3 4 5 6 7 cancels 1 2 3 4 5 6 7 8");
}

TEST_F(OrderListSidesTest, shouldHideCancelsOfTheOrdersSymbolAloneWhenASideIsOff)
{
    filter({.showBuyCancel = false});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 3 4 5 6 7 8 cancels 2 3 4 5 6 8");
    filter({.showSellCancel = false});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 3 4 5 6 7 8 cancels 1 3 4 5 6 7");
}

// The kinds without a price, fund orders and the unknown have no switch.
TEST_F(OrderListSidesTest, shouldStillShowTheOtherSymbolsWhenAllSidesAreOff)
{
    filter({.showBuyOrder = false, .showSellOrder = false, .showBuyCancel = false, .showSellCancel = false});
    EXPECT_EQ(shownSeqs(*model), "orders 3 4 5 6 cancels 3 4 5 6");
}

TEST_F(OrderListSidesTest, shouldNotShowASideForItsSizeWhenItIsOff)
{
    filter({.handsMode = 9, .showBuyOrder = false, .showSellCancel = false});
    EXPECT_EQ(shownSeqs(*model), "orders 2 3 4 5 6 8 cancels 1 3 4 5 6 7");
}

// --- setting it -----------------------------------------------------------------------------------------------

TEST_F(OrderListFilterTest, shouldCopyTheWholeFilterWhenSet)
{
    const TC::SDepthFilterParam wanted{11, 12, 1, 14, 15, 1, 17, 18, 19, false, true, false, true};
    TC::SDepthFilterParam given = wanted;
    model->setFilterParam(given);
    for (const TC::SDepthFilterParam& p : {given, model->m_filter}) {
        EXPECT_EQ((std::vector{p.reserved0, p.reserved1, p.handsMode, p.hands, p.connective, p.amountMode, p.amount,
                               p.startTime, p.endTime}),
                  (std::vector{11, 12, 1, 14, 15, 1, 17, 18, 19}));
        EXPECT_EQ((std::vector<bool>{p.showBuyOrder, p.showSellOrder, p.showBuyCancel, p.showSellCancel}),
                  (std::vector<bool>{false, true, false, true}));
    }
}

TEST_F(OrderListFilterTest, shouldFilterBothListsAnewAndLeaveTheFullOnesWhenSet)
{
    feed.orders(history, {order(1).buy(10.00).shares(100), order(2).buy(10.00).shares(500), order(3).sell(10.00)});
    feed.trades(history, {cancelOfBuy(2), cancelOfSell(3)});
    takeFlags(*model);
    const std::string all = allText(*model);
    filter(atLeastHands(5));
    EXPECT_EQ(shownSeqs(*model), "orders 2 cancels 2");
    EXPECT_EQ(model->getOrderData(0, false)->seq, 2);
    EXPECT_EQ(model->getOrderData(0, true)->seq, 1);
    EXPECT_EQ(allText(*model), all);
    EXPECT_EQ(model->m_orderIndexBySeq.at(2), 1);
    filter(nothing());
    EXPECT_EQ(shownSeqs(*model), "orders cancels");
    filter({});
    EXPECT_EQ(shownSeqs(*model), "orders 1 2 3 cancels 2 3");
    EXPECT_EQ(allText(*model), all);
    EXPECT_EQ(takeFlags(*model), "none") << "the panel knows";
}

TEST_F(OrderListFilterTest, shouldKeepTheFilterWhenThereIsNoInstrument)
{
    feed.orders(history, {order(1).buy(10.00).shares(100), order(2).buy(10.00).shares(500)});
    model->setStock("nobody knows this");
    filter(atLeastHands(5));
    EXPECT_EQ(shownSeqs(*model), "orders 2 cancels") << "the rows are there still";
}

} // namespace
