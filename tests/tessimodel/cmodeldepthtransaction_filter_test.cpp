#include "tests/tessimodel/tradelist.h"

#include <limits>

namespace {

using namespace tests;

class TradeFilterTest : public TradeListTest {
protected:
    // Whether a row of that time, price and size passes the filter.
    bool passes(const TC::SDepthFilterParam& wanted, const std::string& clock, double price, __int64 hands)
    {
        filter(wanted);
        feed.trades(history, {dealt(clock, price, hands)});
        EXPECT_EQ(model->passFilter(model->m_rows.at(0)), model->m_rowCount == 1);
        return model->m_rowCount == 1;
    }
};

// --- the time of day -----------------------------------------------------------------------------------------

TEST_F(TradeFilterTest, shouldIncludeBothEndsWhenTimeIsTested)
{
    const std::pair<const char*, bool> cases[] = {{"08:59:59.999", false}, {"09:00:00", true},  {"12:00:00", true},
                                                  {"16:10:00.999", true},  {"16:10:01", false}, {"00:00:00", false}};
    for (const auto& [clock, passed] : cases)
        EXPECT_EQ(passes({}, clock, 10.00, 1), passed) << clock;
}

TEST_F(TradeFilterTest, shouldTestWholeSecondsWhenTheRangeHasMilliseconds)
{
    TC::SDepthFilterParam range;
    range.startTime = 34200500; // 09:30:00.500
    range.endTime = 34203999;
    EXPECT_FALSE(passes(range, "09:30:00.900", 10.00, 1));
    EXPECT_TRUE(passes(range, "09:30:01", 10.00, 1));
    EXPECT_TRUE(passes(range, "09:30:03.999", 10.00, 1));
    EXPECT_FALSE(passes(range, "09:30:04", 10.00, 1));
}

TEST_F(TradeFilterTest, shouldRefuseByTimeWhenEverySizePasses)
{
    TC::SDepthFilterParam any;
    any.handsMode = 3;
    EXPECT_FALSE(passes(any, "08:00:00", 10.00, 1));
}

// --- the size ------------------------------------------------------------------------------------------------

struct SizeCase {
    int handsMode, hands, connective, amountMode, amount;
    bool one, two, three; // whether rows of so many hands at 10.00 pass: 1000, 2000 and 3000 in amount
};

TEST_F(TradeFilterTest, shouldTestHandsAndAmountByTheirModesWhenSizeIsTested)
{
    const SizeCase cases[] = {
        {0, 2, 1, 0, 0, false, true, true},      // at least two hands, and any amount
        {1, 2, 1, 0, 0, false, false, true},     // more than two
        {2, 2, 1, 0, 0, false, true, false},     // just two
        {0, 0, 1, 0, 2000, false, true, true},   // any hands, and an amount of at least 2000
        {0, 0, 1, 1, 2000, false, false, true},  // more than that
        {0, 2, 0, 0, 0, true, true, true},       // two hands or any amount
        {2, 1, 0, 0, 3000, true, false, true},   // one hand, or 3000
        {2, 1, 0, 1, 3000, true, false, false},  // one hand, or more than 3000
        {0, 2, 1, 1, 2000, false, false, true},  // two hands, and more than 2000
        {2, 3, -7, 0, 3000, false, false, true}, // any connective but 0 wants both
        {3, 9, 1, 0, 99999, true, true, true},   // a mode that is none of those named lets every size pass,
        {-1, 9, 1, 0, 99999, true, true, true},  // whatever the other mode says
        {0, 9, 1, 2, 99999, true, true, true},   {0, 9, 0, -1, 99999, true, true, true},
    };
    for (const SizeCase& c : cases) {
        SCOPED_TRACE(testing::Message() << "hands " << c.handsMode << ":" << c.hands << " " << c.connective
                                        << " amount " << c.amountMode << ":" << c.amount);
        TC::SDepthFilterParam wanted;
        wanted.handsMode = c.handsMode;
        wanted.hands = c.hands;
        wanted.connective = c.connective;
        wanted.amountMode = c.amountMode;
        wanted.amount = c.amount;
        EXPECT_EQ(passes(wanted, "09:30:00", 10.00, 1), c.one);
        EXPECT_EQ(passes(wanted, "09:30:00", 10.00, 2), c.two);
        EXPECT_EQ(passes(wanted, "09:30:00", 10.00, 3), c.three);
    }
}

TEST_F(TradeFilterTest, shouldTestTheAmountOfTheRowsVolumeWhenTheTradeIsLargerThanAnInt)
{
    TC::SDepthFilterParam wanted = atLeastHands(0);
    wanted.amount = 1001;
    filter(wanted);
    feed.trades(history, {fill(1, 2).at(10.00).shares(4294967296 + 100)});
    EXPECT_EQ(model->m_rowCount, 0) << "the row's amount is 1000";
    wanted.amount = 1000;
    filter(wanted);
    EXPECT_EQ(model->m_rowCount, 1);
}

TEST_F(TradeFilterTest, shouldRefuseWhenAnAmountIsWantedAndThePriceIsNoNumber)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(passes(atLeastHands(0), "09:30:00", none, 1));
    EXPECT_TRUE(passes({}, "09:30:00", none, 1)) << "the hands are enough";
}

TEST_F(TradeFilterTest, shouldNotReadTheSidesWhenTheyAreOff)
{
    TC::SDepthFilterParam noSide;
    noSide.showBuyOrder = noSide.showSellOrder = noSide.showBuyCancel = noSide.showSellCancel = false;
    filter(noSide);
    feed.trades(history, {Trade(1, 2, 0).flag(1), Trade(1, 0, 0).flag(2), Trade(0, 2, 0)});
    EXPECT_EQ(model->m_rowCount, 3);
}

// --- setting it ----------------------------------------------------------------------------------------------

TEST_F(TradeFilterTest, shouldFilterAllRowsAnewWhenSet)
{
    feed.trades(history, {dealt("09:30:00", 10.00, 1), dealt("09:30:01", 10.01, 2), dealt("09:30:02", 10.02, 3)});
    filter(atLeastHands(3));
    EXPECT_EQ(rowsText(model->m_filteredRows), "0 09:30:02 10.02 3h B1 S2\n");
    filter(atLeastHands(2));
    EXPECT_EQ(rowsText(model->m_filteredRows), "0 09:30:01 10.01 2h B1 S2\n1 09:30:02 10.02 3h B1 S2\n");
    EXPECT_EQ(model->m_rowCount, 2);
    EXPECT_EQ(model->m_rows.size(), 3);
}

TEST_F(TradeFilterTest, shouldKeepACopyWhenSet)
{
    TC::SDepthFilterParam wanted = atLeastHands(2);
    wanted.reserved0 = 5;
    wanted.reserved1 = 6;
    wanted.showSellCancel = false;
    model->setFilterParam(wanted);
    wanted.hands = 0;
    EXPECT_EQ(model->m_filter.hands, 2);
    EXPECT_EQ(model->m_filter.reserved0, 5);
    EXPECT_EQ(model->m_filter.reserved1, 6);
    EXPECT_FALSE(model->m_filter.showSellCancel);
    feed.trades(history, {dealt("09:30:00", 10.00, 1), dealt("09:30:01", 10.01, 2)});
    EXPECT_EQ(model->m_rowCount, 1);
}

TEST_F(TradeFilterTest, shouldTestALiveRowOnceWhenItComes)
{
    filter(atLeastHands(2));
    feed.trades(history, {dealt("09:30:00", 10.00, 2)});
    feed.trades(live, {dealt("09:30:01", 10.00, 1)});
    EXPECT_TRUE(tookChange());
    EXPECT_EQ(model->m_rowCount, 1);
    feed.trades(live, {dealt("09:30:02", 10.00, 3)});
    EXPECT_EQ(rowsText(model->m_filteredRows), "0 09:30:00 10.00 2h B1 S2\n1 09:30:02 10.00 3h B1 S2\n");
}

TEST_F(TradeFilterTest, shouldFilterWhenThereIsNoInstrument)
{
    feed.trades(history, {dealt("09:30:00", 10.00, 1), dealt("09:30:00", 10.00, 2)});
    model->setStock("nobody knows this");
    filter(atLeastHands(2));
    EXPECT_EQ(model->m_rowCount, 1);
}

} // namespace
