#include "tests/tessimodel/thousandmodel.h"

#include <set>

namespace {

using namespace tests;

// What a panel gets. The ticks of the book are of 09:30:00.
class ThousandReadingTest : public ThousandTest {
protected:
    // Bids at 9.97 to 10.01 and asks at 10.02 to 10.06, polled once.
    void givenFiveLevels()
    {
        feed.begin({order(1).buy(9.97).shares(100), order(2).buy(9.98).shares(500), order(3).buy(9.99).shares(200),
                    order(4).buy(10.00).shares(300), order(5).buy(10.01).shares(400), order(6).sell(10.02).shares(400),
                    order(7).sell(10.03).shares(300), order(8).sell(10.04).shares(200),
                    order(9).sell(10.05).shares(500), order(10).sell(10.06).shares(100)});
        readBook(model);
    }
};

// --- polling --------------------------------------------------------------------------------------------------

TEST_F(ThousandReadingTest, shouldTouchNothingWhenNothingChanged)
{
    givenFiveLevels();
    BookReading reading;
    reading.flags = 77;
    reading.bids = {nullptr};
    reading.asks = {nullptr, nullptr};
    EXPECT_FALSE(reading.poll(model));
    EXPECT_EQ(reading.flags, 77);
    EXPECT_EQ(reading.bids.size(), 1u);
    EXPECT_EQ(reading.asks.size(), 2u);
    EXPECT_EQ(reading.lastPrice, -1);
    EXPECT_EQ(reading.lastVolume, -1);
    EXPECT_EQ(reading.minPrice, DBL_MAX);
    EXPECT_EQ(reading.maxAmount, 0);
}

TEST_F(ThousandReadingTest, shouldAddTheLevelsFlagWhenAnythingChanged)
{
    for (const int raised : {1, 2, 4, 5, 7}) {
        givenFiveLevels();
        model.m_updateFlags = raised;
        EXPECT_EQ(readBook(model).flags, raised | 2);
        EXPECT_EQ(model.m_updateFlags, 0);
        EXPECT_FALSE(readBook(model).updated);
    }
}

TEST_F(ThousandReadingTest, shouldGiveAllRowsInPlaceOfTheOldWhenPolled)
{
    feed.begin({order(1).buy(10.00).shares(300), order(2).buy(9.99), order(3).sell(10.02), order(4).sell(10.01)});
    BookReading reading;
    reading.bids = {nullptr};
    reading.asks = {nullptr, nullptr};
    EXPECT_TRUE(reading.poll(model));
    EXPECT_EQ(bookText(reading.bids, reading.asks), "bid 9.99 1h x1 (+1)\nbid 10.00 3h x1 (+3)\nask 10.01 1h x1 (+1)\n"
                                                    "ask 10.02 1h x1 (+1)\n");
    EXPECT_EQ(reading.bids.back(), model.m_book.m_bidRows.at(1000)) << "the book's own rows, not copies";
    EXPECT_EQ(reading.bids.back(), model.m_bidRows.at(1000));
}

TEST_F(ThousandReadingTest, shouldLeaveTheVectorsAloneWhenThereIsNoInstrument)
{
    Thousand lost;
    lost.clear();
    BookReading reading;
    reading.bids = {nullptr};
    EXPECT_TRUE(reading.poll(lost));
    EXPECT_EQ(reading.flags, 3);
    EXPECT_EQ(reading.bids.size(), 1u);
    EXPECT_EQ(reading.lastPrice, DBL_MAX);
    EXPECT_EQ(reading.lastVolume, 0);
}

TEST_F(ThousandReadingTest, shouldTakeRowsFromThePanelOnlyWhenTheBookCrosses)
{
    feed.snapshots(live, {level2("09:29:30").bid(10.01).ask(10.03)});
    feed.begin({order(1).buy(10.00), order(2).buy(10.03), order(3).sell(10.02), order(4).sell(10.04)});
    EXPECT_EQ(bookText(model), "bid 10.00 1h x1 (+1)\nask 10.04 1h x1 (+1)\n");
    EXPECT_EQ(bookText(model.m_bidRows, model.m_askRows), "bid 10.00 1h x1 (+1)\nbid 10.03 1h x1 (+1)\n"
                                                          "ask 10.02 1h x1 (+1)\nask 10.04 1h x1 (+1)\n");
    EXPECT_EQ(model.m_book.m_bidRows.size(), 2u);
}

// --- before the histories are in ------------------------------------------------------------------------------

TEST_F(ThousandReadingTest, shouldBeEmptyWithoutPricesWhenNothingIsThereYet)
{
    model.m_updateFlags = 1;
    const BookReading reading = readBook(model);
    EXPECT_TRUE(reading.updated);
    EXPECT_TRUE(reading.bids.empty() && reading.asks.empty());
    EXPECT_EQ(reading.lastPrice, DBL_MAX);
    EXPECT_EQ(reading.lastVolume, 0);
    EXPECT_EQ(reading.minPrice, DBL_MAX);
    EXPECT_EQ(reading.maxPrice, -DBL_MAX);
}

TEST_F(ThousandReadingTest, shouldShowTheManagersRowsWhenAnEarlierViewLeftSome)
{
    givenFiveLevels();
    model.clear();
    Thousand next;
    next.setStock(keyOf("SZ", "000001"));
    const BookReading reading = readBook(next);
    EXPECT_EQ(reading.flags, 3);
    EXPECT_EQ(bookText(reading.bids, reading.asks),
              "bid 9.97 1h x1 (+1)\nbid 9.98 5h x1 (+5)\nbid 9.99 2h x1 (+2)\nbid 10.00 3h x1 (+3)\n"
              "bid 10.01 4h x1 (+4)\nask 10.02 4h x1 (+4)\nask 10.03 3h x1 (+3)\nask 10.04 2h x1 (+2)\n"
              "ask 10.05 5h x1 (+5)\nask 10.06 1h x1 (+1)\n");
    EXPECT_EQ(reading.lastPrice, DBL_MAX);
    EXPECT_EQ(reading.minPrice, 9.97);

    BookFeed(terminal, next).begin({order(21).buy(8.00)});
    EXPECT_EQ(bookText(next), "bid 8.00 1h x1 (+1)\n");
}

// Snapshots correct only what the book says: not the rows of an earlier view.
TEST_F(ThousandReadingTest, shouldNotCorrectTheManagersRowsWhenASnapshotComes)
{
    givenFiveLevels();
    model.clear();
    feed.orders(history, {});
    feed.snapshots(live, {level2("09:40:00").bid(9.50, 7).ask(9.60, 7)});
    model.m_updateFlags = 1;
    EXPECT_EQ(readBook(model).bids.size(), 5u);
    EXPECT_EQ(readBook(model).asks.size(), 0u) << "not polled anew";
}

// --- last figures ---------------------------------------------------------------------------------------------

class ThousandLastFiguresTest : public ThousandReadingTest {
protected:
    std::string last()
    {
        model.m_updateFlags = 4;
        const BookReading reading = readBook(model);
        return fmt::format("{:.2f} {}h", reading.lastPrice, reading.lastVolume);
    }
};

TEST_F(ThousandLastFiguresTest, shouldBeTheSnapshotsWhenNoLiveStepWasSeen)
{
    feed.snapshots(history, {level2("09:30:03").last(10.05).volume(70).bid(10.00),
                             level2("09:30:06").last(10.06).volume(90).bid(10.00)});
    feed.begin({order(1).buy(10.00).shares(900)}, {fill(1, 2).at(10.00).shares(300).time("09:31:00")});
    EXPECT_EQ(last(), "10.06 20h") << "even when ticks have come since";
}

TEST_F(ThousandLastFiguresTest, shouldBeTheTicksWhenOneIsAsNewAsTheLatestStep)
{
    feed.begin({order(1).buy(10.00).shares(900)}, {fill(1, 2).at(10.00).shares(300).time("09:30:10")});
    feed.snapshots(live, {level2("09:30:12").last(10.05).volume(70).bid(10.00)});
    EXPECT_EQ(last(), "10.05 0h");
    feed.snapshots(live, {level2("09:30:15").last(10.06).volume(90).bid(10.00)});
    EXPECT_EQ(last(), "10.06 20h");
    feed.trades(live, {fill(1, 3).at(9.99).shares(200).time("09:30:14.999")});
    EXPECT_EQ(last(), "10.06 20h");
    feed.trades(live, {fill(1, 4).at(9.98).shares(200).time("09:30:15")});
    EXPECT_EQ(last(), "9.98 2h");
    feed.snapshots(live, {level2("09:30:18").last(10.07).volume(90).bid(10.00)});
    EXPECT_EQ(last(), "9.98 2h") << "the day volume stands, and so does the time of its step";
}

TEST_F(ThousandLastFiguresTest, shouldBeTheTicksWhenAnOrderIsNewerThanTheLatestStep)
{
    feed.begin({order(1).buy(10.00).shares(900)}, {fill(1, 2).at(10.00).shares(300).time("09:30:10")});
    feed.snapshots(live, {level2("09:30:12").last(10.05).volume(70).bid(10.00)});
    feed.orders(live, {order(5).buy(9.00).time("09:30:13")});
    EXPECT_EQ(last(), "10.00 3h");
}

} // namespace
