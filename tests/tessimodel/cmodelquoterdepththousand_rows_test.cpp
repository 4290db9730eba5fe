#include "tests/tessimodel/quoterthousand.h"

#include <cfloat>
#include <cmath>
#include <limits>

namespace {

using namespace tests;

// The rows of a record as a panel gets them.
class QuoterThousandRowsTest : public QuoterThousandTest {
protected:
    // What the row of a bid shows at 10.00 in a record of that many milliseconds after the change to 150 hands.
    std::string after(__int64 milliseconds)
    {
        const __int64 changed = timeOf("09:30:01");
        model.clear();
        feed.thousand(live, {thousandAt(changed - 1000).bid(10.00, 100)});
        feed.thousand(live, {thousandAt(changed).bid(10.00, 150)});
        // The base is the record of the change by now, so that no new one shows.
        feed.thousand(live, {thousandAt(changed + 1000).bid(10.00, 150)});
        feed.thousand(live, {thousandAt(changed + milliseconds).bid(10.00, 150)});
        return bookText(model);
    }
};

// --- rows of the record ---------------------------------------------------------------------------------------

TEST_F(QuoterThousandRowsTest, shouldShowAllLevelsByAscendingPriceWhenARecordIsHeld)
{
    feed.thousand(live, {thousand()
                             .bids({{10.00, 5, 2}, {9.99, 8, 1}, {9.97, 1, 0}})
                             .asks({{10.02, 7, 3}, {10.03, 0, 4}, {10.10, 9, -1}})});
    EXPECT_EQ(bookText(model), "bid 9.97 1h x0 (0)\nbid 9.99 8h x1 (0)\nbid 10.00 5h x2 (0)\n"
                               "ask 10.02 7h x3 (0)\nask 10.03 0h x4 (0)\nask 10.10 9h x? (0)\n");
}

TEST_F(QuoterThousandRowsTest, shouldShowLevelsAsTheyStandWhenTheyAreOutOfOrderOrDouble)
{
    feed.thousand(live, {thousand()
                             .bids({{9.99, 8}, {10.00, 5}, {10.00, 6}, {0.0, 1}, {-1.0, 2}})
                             .asks({{10.03, 1}, {10.02, 2}, {10.02, 3}})});
    EXPECT_EQ(bookText(model), "bid -1.00 2h x1 (0)\nbid 0.00 1h x1 (0)\nbid 10.00 6h x1 (0)\nbid 10.00 5h x1 (0)\n"
                               "bid 9.99 8h x1 (0)\nask 10.03 1h x1 (0)\nask 10.02 2h x1 (0)\nask 10.02 3h x1 (0)\n");
}

TEST_F(QuoterThousandRowsTest, shouldShowAThousandLevelsWhenTheRecordHasThem)
{
    std::vector<ThousandLevel> bids;
    std::vector<ThousandLevel> asks;
    for (int i = 0; i < 1000; ++i) {
        bids.push_back({100.00 - i * 0.01, i + 1});
        asks.push_back({100.01 + i * 0.01, i + 1});
    }
    feed.thousand(live, {thousand().bids(bids).asks(asks)});
    const BookReading reading = readBook(model, byRecord);
    ASSERT_EQ(reading.bids.size(), 1000u);
    ASSERT_EQ(reading.asks.size(), 1000u);
    EXPECT_EQ(reading.bids.front()->volume, 1000);
    EXPECT_EQ(reading.bids.back()->volume, 1);
    EXPECT_EQ(reading.asks.front()->volume, 1);
    EXPECT_EQ(reading.asks.back()->volume, 1000);
}

TEST_F(QuoterThousandRowsTest, shouldEmptyTheListsWhenTheRecordIsEmpty)
{
    feed.thousand(live, {thousand()});
    BookReading reading;
    reading.bids = {nullptr};
    reading.asks = {nullptr, nullptr};
    EXPECT_TRUE(reading.poll(model, byRecord));
    EXPECT_TRUE(reading.bids.empty() && reading.asks.empty());
    EXPECT_EQ(reading.minPrice, DBL_MAX);
    EXPECT_EQ(reading.maxPrice, -DBL_MAX);
    EXPECT_EQ(reading.maxAmount, 0);
}

TEST_F(QuoterThousandRowsTest, shouldReplaceFormerRowsWhenReadAgain)
{
    feed.thousand(live, {thousand().bids({{10.00, 5}, {9.99, 6}}).ask(10.02, 7)});
    BookReading reading = readBook(model, byRecord);
    const auto row = reading.bids.back();
    feed.thousand(live, {thousand("09:30:10").bid(9.98, 1)});
    reading.poll(model, byRecord);
    EXPECT_EQ(bookText(reading.bids, reading.asks), "bid 9.98 1h x1 (0)\n");
    EXPECT_EQ(rowText(*row), "10.00 5h x1 (0)") << "a row that a panel holds is its own";
}

TEST_F(QuoterThousandRowsTest, shouldMakeNewRowsWhenNothingChanged)
{
    bidAt("09:30:00", 5);
    const BookReading first = readBook(model, byRecord);
    first.bids.front()->volume = 77;
    const BookReading second = readBook(model, byRecord);
    EXPECT_NE(first.bids.front(), second.bids.front());
    EXPECT_EQ(second.bids.front()->volume, 5);
}

TEST_F(QuoterThousandRowsTest, shouldEndWithTheShortestListWhenLengthsDiffer)
{
    const std::shared_ptr<quoter::LevelThousandData> record =
        thousand()
            .bids({{10.00, 1, 1}, {9.99, 2, 2}, {9.98, 3, 3}, {9.97, 4, 4}})
            .asks({{10.02, 1, 1}, {10.03, 2, 2}, {10.04, 3, 3}, {10.05, 4, 4}});
    feed.thousand(live, {record});
    record->bidVolumes.resize(3);
    record->bidNumbers.resize(2);
    record->askVolumes.resize(1);
    EXPECT_EQ(bookText(model), "bid 9.99 2h x2 (0)\nbid 10.00 1h x1 (0)\nask 10.02 1h x1 (0)\n");
    record->bidPrices.resize(1);
    record->askNumbers.clear();
    EXPECT_EQ(bookText(model), "bid 10.00 1h x1 (0)\n");
    record->bidVolumes.clear();
    EXPECT_EQ(bookText(model), "");
}

TEST_F(QuoterThousandRowsTest, shouldShowAPriceThatIsNoNumberButNotCountItWhenARecordHasOne)
{
    feed.thousand(live, {thousand().bids({{10.00, 5}, {NAN, 900}, {9.99, 6}})});
    feed.thousand(live, {thousand("09:30:01").bids({{10.00, 5}, {NAN, 800}, {9.99, 6}})});
    const BookReading reading = readBook(model, byRecord);
    ASSERT_EQ(reading.bids.size(), 3u);
    EXPECT_TRUE(std::isnan(reading.bids[1]->price));
    EXPECT_EQ(reading.bids[1]->volume, 800);
    EXPECT_EQ(reading.bids[1]->delta, 0);
    EXPECT_EQ(reading.minPrice, 9.99);
    EXPECT_EQ(reading.maxPrice, 10.00);
    EXPECT_EQ(reading.maxAmount, 6 * 9.99);
}

// --- changes in the rows --------------------------------------------------------------------------------------

TEST_F(QuoterThousandRowsTest, shouldShowAChangeForLessThanThreeSecondsOfRecordTimeWhenALevelGrew)
{
    EXPECT_EQ(after(1000), "bid 10.00 150h x1 (-50)\n");
    EXPECT_EQ(after(2999), "bid 10.00 150h x1 (-50)\n");
    EXPECT_EQ(after(3000), "bid 10.00 150h x1 (0)\n");
    EXPECT_EQ(after(900'000), "bid 10.00 150h x1 (0)\n");
    EXPECT_EQ(after(-900'000), "bid 10.00 150h x1 (-50)\n") << "a record of before the change is young enough";
}

TEST_F(QuoterThousandRowsTest, shouldHideTheEntryButKeepItWhenItIsTooOld)
{
    after(3000);
    EXPECT_EQ(deltasText(model), "10.00 -50");
    feed.thousand(live, {thousand("09:30:02").bid(10.00, 150)});
    EXPECT_EQ(bookText(model), "bid 10.00 150h x1 (-50)\n") << "shown again by an older record";
}

TEST_F(QuoterThousandRowsTest, shouldShowAChangeOfBeforeWhenAPriceComesBack)
{
    bidAt("09:30:00.000", 100);
    bidAt("09:30:00.200", 150);
    feed.thousand(live, {thousand("09:30:00.400").bid(9.99, 7)});
    EXPECT_EQ(bookText(model), "bid 9.99 7h x1 (0)\n");
    bidAt("09:30:00.600", 100);
    EXPECT_EQ(bookText(model), "bid 10.00 100h x1 (-50)\n");
}

TEST_F(QuoterThousandRowsTest, shouldShowChangesOfBothSidesWhenLevelsChanged)
{
    feed.thousand(live, {thousand("09:30:00").bids({{10.00, 100}, {9.99, 7}}).asks({{10.02, 30}, {10.03, 7}})});
    feed.thousand(live, {thousand("09:30:01").bids({{10.00, 150}, {9.99, 7}}).asks({{10.02, 10}, {10.03, 7}})});
    EXPECT_EQ(bookText(model), "bid 9.99 7h x1 (0)\nbid 10.00 150h x1 (-50)\n"
                               "ask 10.02 10h x1 (+20)\nask 10.03 7h x1 (0)\n");
}

TEST_F(QuoterThousandRowsTest, shouldShowTheBidsChangeOnBothSidesWhenAPriceIsBothBidAndAsk)
{
    feed.thousand(live, {thousand("09:30:00").bid(10.00, 100).ask(10.00, 7)});
    feed.thousand(live, {thousand("09:30:01").bid(10.00, 150).ask(10.00, 9)});
    EXPECT_EQ(bookText(model), "bid 10.00 150h x1 (-50)\nask 10.00 9h x1 (-50)\n");
}

TEST_F(QuoterThousandRowsTest, shouldShowTheChangeInEveryRowOfAPriceWhenItIsThereTwice)
{
    feed.thousand(live, {thousand("09:30:00").bids({{10.00, 100}, {10.00, 1}})});
    feed.thousand(live, {thousand("09:30:01").bids({{10.00, 150}, {10.00, 1}})});
    EXPECT_EQ(bookText(model), "bid 10.00 1h x1 (-50)\nbid 10.00 150h x1 (-50)\n");
}

TEST_F(QuoterThousandRowsTest, shouldShowAChangeAtExactlyItsPriceWhenAnotherIsClose)
{
    bidAt("09:30:00", 100);
    bidAt("09:30:01", 150);
    feed.thousand(live, {thousand("09:30:01").bids({{std::nextafter(10.00, 11), 5}, {10.00, 150}})});
    EXPECT_EQ(bookText(model), "bid 10.00 150h x1 (-50)\nbid 10.00 5h x1 (0)\n");
}

TEST_F(QuoterThousandRowsTest, shouldMeasureAgeAcrossTheWrapWhenTimesAreAtTheEnds)
{
    constexpr __int64 kMax = std::numeric_limits<__int64>::max();
    constexpr __int64 kMin = std::numeric_limits<__int64>::min();
    feed.thousand(live, {thousandAt(kMax).bid(10.00, 100)});
    feed.thousand(live, {thousandAt(kMax).bid(10.00, 150)});
    feed.thousand(live, {thousandAt(kMin + 2998).bid(10.00, 150)});
    feed.thousand(live, {thousandAt(kMin + 2998).bid(10.00, 150)});
    EXPECT_EQ(bookText(model), "bid 10.00 150h x1 (-50)\n");
    feed.thousand(live, {thousandAt(kMin + 2999).bid(10.00, 150)});
    EXPECT_EQ(bookText(model), "bid 10.00 150h x1 (0)\n");
}

} // namespace
