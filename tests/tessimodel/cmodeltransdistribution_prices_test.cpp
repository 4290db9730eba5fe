#include "tests/support/oddvalues.h"
#include "tests/tessimodel/transdistributiontest.h"

#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

// How ticks become rows.
namespace {

using namespace tests;

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

class TransDistributionPrices : public TransDistributionTest {
protected:
    TransDistributionPrices() { follow("SZ", "000001"); }

    // One tick of volume 1 at each price, on an empty list.
    void at(const std::vector<double>& prices)
    {
        model.clear();
        for (const double price : prices)
            model.tick(price, 1);
    }

    // The rows as "10.01 x2, 10": price, and how many ticks of volume 1 it took when more than one.
    std::string rows() const
    {
        std::string text;
        for (const auto& row : model.m_prices)
            text += (text.empty() ? "" : ", ") + fmt::format("{}", row.price) +
                    (row.totalVolume == 1 ? "" : fmt::format(" x{}", row.totalVolume));
        return text;
    }
};

// --- ticks --------------------------------------------------------------------------------------------------------

TEST_F(TransDistributionPrices, shouldDropTicksWithoutVolumeWhenNoIndexIsFollowed)
{
    for (const int volume : {0, -1, kLowest}) {
        model.tick(10, volume);
        EXPECT_EQ(ticksText(model), "") << volume;
        EXPECT_EQ(pricesText(model), "");
        EXPECT_EQ(sumsText(model), "all 0 max 0");
    }
    model.tick(10, 1);
    EXPECT_EQ(ticksText(model), "10 +1 of 1 S\n");
}

TEST_F(TransDistributionPrices, shouldOpenARowWithoutVolumeWhenAnIndexHasSuchATick)
{
    followIndex();
    model.tick(3000, 0, true);
    EXPECT_EQ(ticksText(model), "3000 +0 of 0 B\n");
    EXPECT_EQ(pricesText(model), "3000 buys 0 sells 0 of 0\n");
    EXPECT_EQ(sumsText(model), "all 0 max 0");
}

TEST_F(TransDistributionPrices, shouldTakeTheTickAsItIsWhenItHasVolume)
{
    TC::CModelTransDistribution::TransDistributionData tick{10.5, 7, 3, true};
    model.processData(tick);
    EXPECT_EQ(ticksText(model), "10.5 +3 of 7 B\n");
    EXPECT_EQ(pricesText(model), "10.5 buys 3 sells 0 of 3\n");
    EXPECT_EQ(sumsText(model), "all 3 max 3");
}

// --- sums ---------------------------------------------------------------------------------------------------------

TEST_F(TransDistributionPrices, shouldSplitByDirectionWhenTicksShareARow)
{
    model.tick(10, 300, true);
    model.tick(10, 200, false);
    model.tick(10, 50, true);
    model.tick(10.01, 400, false);
    model.tick(10.01, 5, true);
    EXPECT_EQ(pricesText(model), "10.01 buys 5 sells 400 of 405\n"
                                 "10 buys 350 sells 200 of 550\n");
    EXPECT_EQ(sumsText(model), "all 955 max 550");
}

TEST_F(TransDistributionPrices, shouldKeepTheLargestRowWhenVolumesGrow)
{
    const std::tuple<double, int, int> steps[] = {{10, 5, 5},    {10.01, 4, 5}, {10.02, 5, 5}, {10.03, 6, 6},
                                                  {10.01, 2, 6}, {10.01, 1, 7}, {10, 2, 7},    {10, 1, 8}};
    int all = 0;
    for (const auto& [price, volume, largest] : steps) {
        model.tick(price, volume);
        all += volume;
        EXPECT_EQ(sumsText(model), fmt::format("all {} max {}", all, largest)) << price;
    }
}

TEST_F(TransDistributionPrices, shouldWrapWhenSumsOutgrowTheir32Bits)
{
    model.tick(10, kHighest, true);
    model.tick(10, 2, true);
    EXPECT_EQ(pricesText(model), "10 buys -2147483647 sells 0 of -2147483647\n");
    EXPECT_EQ(sumsText(model), "all -2147483647 max 2147483647");
    model.clear();
    model.tick(10, kHighest, false);
    model.tick(10, 2, false);
    EXPECT_EQ(pricesText(model), "10 buys 0 sells -2147483647 of -2147483647\n");
    model.clear();
    model.tick(10, kHighest, true);
    model.tick(10, 2, false);
    EXPECT_EQ(pricesText(model), "10 buys 2147483647 sells 2 of -2147483647\n");
}

TEST_F(TransDistributionPrices, shouldNeverLowerTheLargestRowWhenRowsShrink)
{
    followIndex();
    model.tick(10, 5, true);
    model.tick(10, -3, true);
    model.tick(11, kLowest, true);
    EXPECT_EQ(pricesText(model), "11 buys -2147483648 sells 0 of -2147483648\n"
                                 "10 buys 2 sells 0 of 2\n");
    EXPECT_EQ(sumsText(model), "all -2147483646 max 5");
}

// --- which row ----------------------------------------------------------------------------------------------------

TEST_F(TransDistributionPrices, shouldShareTheFirstTicksRowWhenPricesLieWithinHalfAStep)
{
    const std::pair<double, const char*> cases[] = {
        {10, "10 x2"},          {10.0049, "10 x2"},   {9.9951, "10 x2"}, {10.0051, "10.0051, 10"},
        {9.9949, "10, 9.9949"}, {10.01, "10.01, 10"}, {9.99, "10, 9.99"}};
    for (const auto& [price, expected] : cases) {
        at({10, price});
        EXPECT_EQ(rows(), expected);
    }
}

// At exactly half a step a tick still joins. Plain doubles: a step that is no binary fraction falls on either side.
TEST_F(TransDistributionPrices, shouldJoinTheRowWhenPricesLieHalfAStepApart)
{
    followWithTick(0.25);
    at({10, 10.125});
    EXPECT_EQ(rows(), "10 x2");
    at({10, 9.875});
    EXPECT_EQ(rows(), "10 x2");
    at({10, 10.1251});
    EXPECT_EQ(rows(), "10.1251, 10");
    at({10, 9.8749});
    EXPECT_EQ(rows(), "10, 9.8749");

    followWithTick(0.01);
    at({10.01, 10.005});
    EXPECT_EQ(rows(), "10.01 x2") << "a hair less than half a step";
    at({10, 10.005});
    EXPECT_EQ(rows(), "10.005, 10") << "a hair more";
}

TEST_F(TransDistributionPrices, shouldMeasureByTheInstrumentsStepWhenItMovedToAnother)
{
    followWithTick(0.2);
    at({3500, 3500.09, 3500.11});
    EXPECT_EQ(rows(), "3500.11, 3500 x2");
    followWithTick(1);
    at({3500, 3500.09, 3500.49});
    EXPECT_EQ(rows(), "3500 x3");
    followWithTick(0.01);
    model.tick(3500.09, 1);
    EXPECT_EQ(rows(), "3500.09, 3500 x3");
}

// The row of the first tick decides, not that of the nearest: ticks do not draw a row after them.
TEST_F(TransDistributionPrices, shouldKeepTheFirstPriceWhenLaterTicksLieBesideIt)
{
    at({10, 10.004, 10.008});
    EXPECT_EQ(rows(), "10.008, 10 x2");
}

// Of two rows within half a step the bisection takes the one that it meets first, not the nearer.
TEST_F(TransDistributionPrices, shouldTakeTheRowMetFirstWhenTwoLieWithinHalfAStep)
{
    const std::pair<std::vector<double>, const char*> cases[] = {
        {{10.008, 10, 10.0035}, "10.008 x2, 10"},                   // of two rows the upper is the middle
        {{10.008, 10, 9, 10.0045}, "10.008, 10 x2, 9"},             // of three the lower of the two
        {{11, 10.008, 10, 10.0035}, "11, 10.008 x2, 10"},           // or the upper
        {{12, 11, 10.008, 10, 10.0035}, "12, 11, 10.008 x2, 10"},   // the way down leads to the upper
        {{10.008, 10, 9, 8, 7, 10.0045}, "10.008 x2, 10, 9, 8, 7"}, // and so does the way up
        {{12, 10.008, 10, 9, 8, 7, 10.0035}, "12, 10.008, 10 x2, 9, 8, 7"},
        {{12, 11, 10.008, 10, 9, 8, 7, 10.0035}, "12, 11, 10.008, 10 x2, 9, 8, 7"},
    };
    for (const auto& [prices, expected] : cases) {
        at(prices);
        EXPECT_EQ(rows(), expected);
    }
}

TEST_F(TransDistributionPrices, shouldFindEveryRowWhenThereAreMany)
{
    for (int count = 1; count <= 20; ++count) {
        std::vector<double> prices;
        std::string expected;
        for (int i = 0; i < count; ++i) {
            prices.push_back(20 - i);
            expected += fmt::format("{}{} x2", i == 0 ? "" : ", ", 20 - i);
        }
        prices.insert(prices.end(), prices.rbegin(), prices.rend());
        at(prices);
        EXPECT_EQ(rows(), expected) << count;
    }
}

// --- steps that are too fine --------------------------------------------------------------------------------------

// Which way the search goes is a matter of 0.00001, whatever the step: a row that is higher by less counts as lower,
// and the search looks above it. So with a finer step a price may miss its row and open another.
TEST_F(TransDistributionPrices, shouldMissItsRowWhenTheStepIsFinerThanTheTolerance)
{
    followWithTick(0.000001);
    at({10.000004, 10, 10});
    EXPECT_EQ(rows(), "10.000004, 10, 10");
    at({10.000004, 10, 9, 10});
    EXPECT_EQ(rows(), "10.000004, 10 x2, 9") << "the middle is met first";
    at({10.00002, 10, 10});
    EXPECT_EQ(rows(), "10.00002, 10 x2");
    at({10, 9.99999, 10});
    EXPECT_EQ(rows(), "10 x2, 9.99999");
}

TEST_F(TransDistributionPrices, shouldLookAboveARowWhenItIsHigherByTheVeryTolerance)
{
    followWithTick(0.000001);
    at({0.00001, 0, 0});
    EXPECT_EQ(rows(), "1e-05, 0, 0");
    at({0.0000101, 0, 0});
    EXPECT_EQ(rows(), "1.01e-05, 0 x2");
    at({0.0000099, 0, 0});
    EXPECT_EQ(rows(), "9.9e-06, 0, 0");
}

TEST_F(TransDistributionPrices, shouldShareOnlyTheSamePriceWhenTheStepIsZero)
{
    followWithTick(0);
    at({10, 10, 10.0001, 9.9999, 10.0001});
    EXPECT_EQ(rows(), "10.0001 x2, 10 x2, 9.9999");
}

TEST_F(TransDistributionPrices, shouldShareNoRowWhenTheStepIsNoUsableNumber)
{
    for (const double priceTick : {-0.01, kNaN}) {
        followWithTick(priceTick);
        at({10, 10, 11, 10});
        EXPECT_EQ(rows(), "11, 10, 10, 10") << priceTick;
    }
    followWithTick(kInfinity);
    at({10, 11, 1e300});
    EXPECT_EQ(rows(), "10 x3");
}

TEST_F(TransDistributionPrices, shouldStandBehindRowsOfItsPriceWhenItSharesNone)
{
    followWithTick(-0.01);
    for (const int volume : {3, 1, 2})
        model.tick(10, volume);
    EXPECT_EQ(rows(), "10 x3, 10, 10 x2");
}

// --- where a new row goes -----------------------------------------------------------------------------------------

TEST_F(TransDistributionPrices, shouldStayInDescendingOrderWhenPricesArriveInAny)
{
    const std::vector<double> orders[] = {{10, 11, 12, 13}, {13, 12, 11, 10}, {11, 13, 10, 12},
                                          {12, 10, 13, 11}, {10, 13, 11, 12}, {13, 10, 12, 11}};
    for (const auto& prices : orders) {
        at(prices);
        EXPECT_EQ(rows(), "13, 12, 11, 10");
    }
    at({-1, 0, -2, 1});
    EXPECT_EQ(rows(), "1, 0, -1, -2");
    at({10, kInfinity, -kInfinity, 11});
    EXPECT_EQ(rows(), "inf, 11, 10, -inf");
}

// The slightest difference puts a row in its place: the tolerance of prices has no say here.
TEST_F(TransDistributionPrices, shouldOrderRowsPlainlyWhenTheyLieWithinTheTolerance)
{
    followWithTick(0.000001);
    at({10, 10.000004, 10.000002});
    EXPECT_EQ(rows(), "10.000004, 10.000002, 10");
    at({10, 9.999996});
    EXPECT_EQ(rows(), "10, 9.999996");
}

// A price that is no number has no place: it goes to the end, and no other price finds it.
TEST_F(TransDistributionPrices, shouldAddAnotherRowAtTheEndWhenThePriceIsNoNumber)
{
    at({10, kNaN, 11, kNaN});
    EXPECT_EQ(rows(), "11, 10, nan, nan");
    EXPECT_EQ(ticksText(model), "10 +1 of 1 S\n"
                                "nan +1 of 1 S\n"
                                "11 +1 of 1 S\n"
                                "nan +1 of 1 S\n");
    EXPECT_EQ(sumsText(model), "all 4 max 1");
}

// Behind a row that is no number the rows start anew, and a new one goes before the first that is lower, wherever
// that stands.
TEST_F(TransDistributionPrices, shouldGoBeforeTheFirstLowerRowWhenOneIsNoNumber)
{
    at({9, kNaN, 8});
    EXPECT_EQ(rows(), "9, nan, 8");
    at({9, kNaN, 8, 9.5});
    EXPECT_EQ(rows(), "9.5, 9, nan, 8");
    at({9, kNaN, 8, 8.5});
    EXPECT_EQ(rows(), "9, nan, 8.5, 8");
    at({kNaN, 8, 9});
    EXPECT_EQ(rows(), "nan, 9, 8");
    at({9, kNaN, 7});
    EXPECT_EQ(rows(), "9, nan, 7");
}

// A row that is no number turns the search up: rows below it are out of reach.
TEST_F(TransDistributionPrices, shouldMissRowsBelowWhenTheMiddleOneIsNoNumber)
{
    at({10, kNaN, 9, 9});
    EXPECT_EQ(rows(), "10, nan, 9, 9");
    at({10, kNaN, 9, 10});
    EXPECT_EQ(rows(), "10 x2, nan, 9");
}

} // namespace
