#include "tests/tessimodel/tradelist.h"

#include <cfloat>
#include <limits>

namespace {

using namespace tests;

class TradeRowsTest : public TradeListTest {
protected:
    const TC::DepthTransData& row(int index) const { return *model->m_rows.at(index); }

    // A stock with a last close of 0, so that differences of prices are exact.
    void followStockFromZero()
    {
        auto description = stock("SZ", "000003");
        description.lastClose = 0;
        follow(description);
    }
};

// --- what a row says of its trade ----------------------------------------------------------------------------

TEST_F(TradeRowsTest, shouldCopyTheTradeWhenARowIsMade)
{
    feed.trades(history, {Trade(7, 9, 5).time("09:30:01.999").at(10.02).shares(250).flag(2)});
    ASSERT_EQ(model->m_rows.size(), 1);
    EXPECT_EQ(row(0).time, secondOf("09:30:01"));
    EXPECT_EQ(row(0).price, 10.02);
    EXPECT_EQ(row(0).volume, 250);
    EXPECT_EQ(row(0).fullVolume, 250);
    EXPECT_EQ(row(0).hands, 3);
    EXPECT_EQ(row(0).buySeq, 7);
    EXPECT_EQ(row(0).sellSeq, 9);
    EXPECT_EQ(row(0).transKind, 5);
    EXPECT_EQ(row(0).tradeFlag, 2);
    EXPECT_EQ(linksText(*model), "0: buy -1 -1, sell -1 -1\n");
    EXPECT_EQ(model->getData(0), model->m_rows.at(0)) << "both lists share the row";
}

TEST_F(TradeRowsTest, shouldCutTheTimeTowardsZeroWhenItIsBeforeTheEpoch)
{
    const std::shared_ptr<quoter::TransactionData> trade = fill(1, 2).at(10.00);
    trade->timetag = -1500;
    feed.trades(history, {trade});
    EXPECT_EQ(row(0).time, -1);
}

TEST_F(TradeRowsTest, shouldRoundHandsWhenAtLeastOneAndSayOneBelow)
{
    const std::pair<__int64, int> cases[] = {{1, 1},   {49, 1},  {99, 1},  {100, 1}, {149, 1},
                                             {150, 2}, {199, 2}, {249, 2}, {250, 3}, {2147483647, 21474836},
                                             {-5, 1}};
    for (const auto& [shares, hands] : cases) {
        SCOPED_TRACE(shares);
        feed.trades(history, {fill(1, 2).at(10.00).shares(shares)});
        ASSERT_EQ(model->m_rows.size(), 1);
        EXPECT_EQ(row(0).hands, hands);
        EXPECT_EQ(row(0).volume, shares);
    }
}

TEST_F(TradeRowsTest, shouldCountHandsOfTenWhenTheInstrumentHasTenSharesAHand)
{
    follow(stock("SH", "113001", {126}));
    feed.trades(history, {fill(1, 2).shares(9), fill(1, 2).shares(14), fill(1, 2).shares(15)});
    EXPECT_EQ(row(0).hands, 1);
    EXPECT_EQ(row(1).hands, 1);
    EXPECT_EQ(row(2).hands, 2);
}

// The row's volume, and with it the hands, is what 32 bits hold of the trade's.
TEST_F(TradeRowsTest, shouldKeepLowBitsBesideTheFullVolumeWhenItIsTooLarge)
{
    struct Case {
        __int64 shares;
        int volume, hands;
    };
    constexpr __int64 kTwoTo32 = 4294967296;
    const Case cases[] = {{kTwoTo32 + 250, 250, 3},
                          {kTwoTo32, 0, 1},
                          {3000000000, -1294967296, 1},
                          {2147483648, std::numeric_limits<int>::min(), 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.shares);
        feed.trades(history, {fill(1, 2).at(10.00).shares(c.shares)});
        ASSERT_EQ(model->m_rows.size(), 1);
        EXPECT_EQ(row(0).volume, c.volume);
        EXPECT_EQ(row(0).hands, c.hands);
        EXPECT_EQ(row(0).fullVolume, c.shares);
    }
}

TEST_F(TradeRowsTest, shouldMakeNoRowWhenTradeIsACancelOrWithoutVolume)
{
    EXPECT_EQ(model->append(model->m_stock, fill(1, 2).shares(0)), 1);
    EXPECT_EQ(model->append(model->m_stock, cancelOfBuy(1)), 1);
    EXPECT_EQ(model->append(model->m_stock, cancelOfSell(2)), 1);
    EXPECT_EQ(rowsText(model->m_rows), "");
    EXPECT_EQ(model->append(model->m_stock, fill(1, 2).time("09:30:01").at(10.00)), 2);
    EXPECT_EQ(rowsText(model->m_rows), "0 09:30:01 10.00 1h B1 S2\n");
    EXPECT_EQ(chainsText(model->m_buyChains), "1: 0\n");
    EXPECT_EQ(minutesText(*model), "09:30:00 0\n");
}

TEST_F(TradeRowsTest, shouldKeepTheOrderOfArrivalWhenTimesGoBack)
{
    feed.trades(history, {dealt("09:31:00", 10.01, 2), dealt("09:30:00", 10.00, 1)});
    EXPECT_EQ(rowsText(model->m_rows), "0 09:31:00 10.01 2h B1 S2\n1 09:30:00 10.00 1h B1 S2\n");
}

// --- direction -----------------------------------------------------------------------------------------------

TEST_F(TradeRowsTest, shouldCompareWithTheLastCloseWhenTheRowIsTheFirst)
{
    const std::pair<double, const char*> cases[] = {
        {10.00, "10.00 +1 up\n"}, {10.01, "10.01 +1 up\n"}, {9.99, "9.99 -1 down\n"}};
    for (const auto& [price, text] : cases) {
        feed.trades(history, {dealt("09:30:00", price, 1)});
        EXPECT_EQ(directionsText(*model), text);
    }
}

TEST_F(TradeRowsTest, shouldCallTheFirstRowUpWhenItIsBelowWithinTheTolerance)
{
    followStockFromZero();
    const std::pair<double, int> cases[] = {
        {-1e-5, 1}, {-2e-5, -1}, {0, 1}, {std::numeric_limits<double>::quiet_NaN(), 1}};
    for (const auto& [price, direction] : cases) {
        SCOPED_TRACE(price);
        feed.trades(history, {dealt("09:30:00", price, 1)});
        EXPECT_EQ(row(0).tickDirection, direction);
        EXPECT_EQ(row(0).isUp, direction == 1);
    }
}

TEST_F(TradeRowsTest, shouldCallTheFirstRowDownWhenThereIsNoLastClose)
{
    auto unlisted = stock("SZ", "000004");
    unlisted.lastClose = DBL_MAX;
    follow(unlisted);
    feed.trades(history, {dealt("09:30:00", 10.00, 1)});
    EXPECT_EQ(directionsText(*model), "10.00 -1 down\n");
}

// A row at the price of the one before it has no direction of its own and hands on the last one.
TEST_F(TradeRowsTest, shouldCompareWithTheRowBeforeWhenThereIsOne)
{
    feed.trades(history, {dealt("09:30:00", 10.00, 1), dealt("09:30:00", 10.01, 1), dealt("09:30:00", 10.01, 1),
                          dealt("09:30:01", 9.99, 1), dealt("09:30:01", 9.99, 1)});
    feed.trades(live, {dealt("09:30:02", 9.99, 1)});
    feed.trades(live, {dealt("09:30:03", 10.00, 1)});
    EXPECT_EQ(directionsText(*model), "10.00 +1 up\n"
                                      "10.01 +1 up\n"
                                      "10.01 0 up\n"
                                      "9.99 -1 down\n"
                                      "9.99 0 down\n"
                                      "9.99 0 down\n"
                                      "10.00 +1 up\n");
}

TEST_F(TradeRowsTest, shouldHaveNoDirectionWhenThePriceMovesWithinTheTolerance)
{
    followStockFromZero();
    const std::pair<double, int> steps[] = {{0, 1}, {1e-5, 0}, {0, 0}, {2e-5, 1}, {0, -1}, {1e-5, 0}};
    Records trades;
    for (const auto& [price, direction] : steps)
        trades.push_back(dealt("09:30:00", price, 1));
    feed.trades(history, trades);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(row(i).tickDirection, steps[i].second) << "row " << i;
    EXPECT_FALSE(row(5).isUp);
}

TEST_F(TradeRowsTest, shouldHandOnTheLastDirectionWhenAPriceIsNoNumber)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    feed.trades(history, {dealt("09:30:00", 9.00, 1), dealt("09:30:00", none, 1), dealt("09:30:00", 12.00, 1)});
    EXPECT_EQ(row(1).tickDirection, 0);
    EXPECT_FALSE(row(1).isUp);
    EXPECT_EQ(row(2).tickDirection, 0);
    EXPECT_FALSE(row(2).isUp);
}

// --- runs ----------------------------------------------------------------------------------------------------

// The first row of the list counts no hands for its run, and so the rows after it of the same order do not count it.
TEST_F(TradeRowsTest, shouldCountNoHandsForTheFirstRowWhenItsRunGoesOn)
{
    feed.trades(history, {fill(1, 11).at(10.00).shares(500), fill(1, 12).at(10.00).shares(200),
                          fill(1, 12).at(10.00).shares(300)});
    EXPECT_EQ(runsText(*model), "buy 0 0h, sell 0 0h\n"
                                "buy 1 2h, sell 0 2h\n"
                                "buy 2 5h, sell 1 5h\n");
}

TEST_F(TradeRowsTest, shouldBeginARunAnewWhenAnotherOrderCameBetween)
{
    feed.trades(history, {fill(9, 9).at(10.00), fill(1, 11).at(10.00).shares(200), fill(2, 11).at(10.00).shares(300),
                          fill(1, 11).at(10.00).shares(400), fill(1, 12).at(10.00).shares(100)});
    EXPECT_EQ(runsText(*model), "buy 0 0h, sell 0 0h\n"
                                "buy 0 2h, sell 0 2h\n"
                                "buy 0 3h, sell 1 5h\n"
                                "buy 0 4h, sell 2 9h\n"
                                "buy 1 5h, sell 0 1h\n");
}

TEST_F(TradeRowsTest, shouldRunOnWhenSeqIsZero)
{
    feed.trades(history, {fill(0, 1).at(10.00), fill(0, 2).at(10.00), fill(0, 3).at(10.00)});
    EXPECT_EQ(runsText(*model), "buy 0 0h, sell 0 0h\n"
                                "buy 1 1h, sell 0 1h\n"
                                "buy 2 2h, sell 0 1h\n");
}

TEST_F(TradeRowsTest, shouldWrapTheRunWhenAnOrderTradesMoreOftenThanAShortHolds)
{
    const std::shared_ptr<quoter::QuoterBase> trade = fill(1, 2).at(10.00);
    feed.trades(history, Records(32770, trade));
    ASSERT_EQ(model->m_rows.size(), 32770);
    EXPECT_EQ(row(32767).buyRun, 32767);
    EXPECT_EQ(row(32768).buyRun, -32768);
    EXPECT_EQ(row(32768).sellRun, -32768);
    EXPECT_EQ(row(32769).buyRun, -32767);
    EXPECT_EQ(row(32769).buyRunHands, 32769) << "hands go on";
    EXPECT_EQ(row(32769).prevBuyIndex, 32768);
}

TEST_F(TradeRowsTest, shouldWrapRunHandsWhenTheyExceedAnInt)
{
    const std::shared_ptr<quoter::QuoterBase> trade = fill(1, 2).at(10.00).shares(2147483600);
    feed.trades(history, Records(102, trade));
    EXPECT_EQ(row(99).sellRunHands, 2126008764);
    EXPECT_EQ(row(100).sellRunHands, 2147483600);
    EXPECT_EQ(row(101).sellRunHands, -2126008860);
    EXPECT_EQ(row(101).buyRunHands, -2126008860);
}

// --- the row before, when the filter refuses rows ------------------------------------------------------------

// While no row has passed the filter there is no row before, whatever came.
TEST_F(TradeRowsTest, shouldCompareWithTheLastCloseWhenNoRowHasPassedYet)
{
    filter(atLeastHands(2));
    feed.trades(history, {dealt("09:30:00", 10.05, 1), dealt("09:30:00", 10.02, 1), dealt("09:30:01", 9.98, 2),
                          dealt("09:30:02", 9.99, 1)});
    EXPECT_EQ(directionsText(*model), "10.05 +1 up\n"
                                      "10.02 +1 up\n"
                                      "9.98 -1 down\n"
                                      "9.99 +1 up\n");
    EXPECT_EQ(runsText(*model), "buy 0 0h, sell 0 0h\n"
                                "buy 0 0h, sell 0 0h\n"
                                "buy 0 0h, sell 0 0h\n"
                                "buy 1 1h, sell 1 1h\n");
}

TEST_F(TradeRowsTest, shouldFollowARefusedRowWhenOneHasPassedBefore)
{
    filter(atLeastHands(2));
    feed.trades(history, {dealt("09:30:00", 10.00, 2), dealt("09:30:00", 10.05, 1), dealt("09:30:01", 10.01, 3)});
    EXPECT_EQ(directionsText(*model), "10.00 +1 up\n"
                                      "10.05 +1 up\n"
                                      "10.01 -1 down\n");
    EXPECT_EQ(runsText(*model), "buy 0 0h, sell 0 0h\n"
                                "buy 1 1h, sell 1 1h\n"
                                "buy 2 4h, sell 2 4h\n");
}

TEST_F(TradeRowsTest, shouldBeFirstAgainWhenAFilterRefusesAllRows)
{
    feed.trades(history, {dealt("09:30:00", 10.05, 1)});
    filter(atLeastHands(100));
    feed.trades(live, {dealt("09:30:01", 10.02, 1)});
    EXPECT_EQ(directionsText(*model), "10.05 +1 up\n10.02 +1 up\n");
    EXPECT_EQ(runsText(*model), "buy 0 0h, sell 0 0h\nbuy 0 0h, sell 0 0h\n");
}

} // namespace
