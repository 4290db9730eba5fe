#include "tests/tessimodel/tickbook.h"

namespace {

using namespace tests;

// Change marks go by the book's own time.
class ThousandBookFadingTest : public ThousandBookTest {
protected:
    std::string bids() const { return bookText(book.m_bidRows, {}); }
};

TEST_F(ThousandBookFadingTest, shouldFadeWhenALevelWasQuietForMoreThan3000Milliseconds)
{
    given(order(1).buy(10.00).time("09:30:00.000"), order(2).sell(10.05).time("09:30:03.000"));
    EXPECT_EQ(bookText(book), "bid 10.00 1h x1 (+1)\nask 10.05 1h x1 (+1)\n");
    given(order(3).sell(10.05).time("09:30:03.001"));
    EXPECT_EQ(bookText(book), "bid 10.00 1h x1 (0)\nask 10.05 2h x2 (+1)\n");
    given(order(4).buy(9.99).time("09:30:06.001"));
    EXPECT_EQ(bookText(book), "bid 9.99 1h x1 (+1)\nbid 10.00 1h x1 (0)\nask 10.05 2h x2 (+1)\n");
    given(order(5).buy(9.99).time("09:30:06.002"));
    EXPECT_EQ(bookText(book), "bid 9.99 2h x2 (+1)\nbid 10.00 1h x1 (0)\nask 10.05 2h x2 (0)\n");
}

TEST_F(ThousandBookFadingTest, shouldCountFromTheLatestTickWhenALevelChangesAgain)
{
    given(order(1).buy(10.00).shares(300).time("09:30:00"), order(2).sell(10.05).shares(300).time("09:30:00"),
          fill(1, 2).time("09:30:02"), order(3).sell(10.05).time("09:30:05"));
    EXPECT_EQ(bids(), "bid 10.00 2h x1 (-1)\n");
    given(order(4).sell(10.05).time("09:30:05.001"));
    EXPECT_EQ(bids(), "bid 10.00 2h x1 (0)\n");
    given(order(5).buy(10.00).time("09:30:05.002"));
    EXPECT_EQ(bids(), "bid 10.00 3h x2 (+1)\n") << "a faded mark shows again";
    given(order(6).sell(10.05).time("09:30:08.003"));
    EXPECT_EQ(bids(), "bid 10.00 3h x2 (0)\n");
}

// A cancel of no shares leaves the mark and gives it another 3000 ms.
TEST_F(ThousandBookFadingTest, shouldKeepTheMarkLongerWhenACancelOfNothingComes)
{
    given(order(1).buy(10.00).time("09:30:00"), order(2).buy(10.00).shares(500).time("09:30:00"),
          cancelOfBuy(1).shares(0).time("09:30:02"), order(3).sell(10.05).time("09:30:05"));
    EXPECT_EQ(bids(), "bid 10.00 5h x1 (+5)\n");
    given(order(4).sell(10.05).time("09:30:05.001"));
    EXPECT_EQ(bids(), "bid 10.00 5h x1 (0)\n");
}

TEST_F(ThousandBookFadingTest, shouldFadeAtOnceWhenTheTickItselfIsOld)
{
    given(order(1).sell(10.05).time("09:31:00"), order(2).buy(10.00).time("09:30:00"));
    EXPECT_EQ(bids(), "bid 10.00 1h x1 (0)\n");
}

TEST_F(ThousandBookFadingTest, shouldFadeWhenATradeThatNobodyTakesComesButNotARepeatedOne)
{
    given(order(1).buy(10.00).shares(300).time("09:30:00"));
    EXPECT_FALSE(offer(order(1).buy(10.00).time("09:31:00")));
    EXPECT_EQ(bids(), "bid 10.00 3h x1 (+3)\n");
    EXPECT_FALSE(offer(fill(0, 9).time("09:31:00")));
    EXPECT_EQ(bids(), "bid 10.00 3h x1 (0)\n");
}

TEST_F(ThousandBookFadingTest, shouldFadeOnlyWhenAskedWhileABatchIsApplied)
{
    const auto batched = [&](const Order& order) {
        flags = 0;
        EXPECT_TRUE(book.appendOrder(stock, order, flags, false));
    };
    batched(order(1).buy(10.00).time("09:30:00"));
    batched(order(2).buy(9.99).time("09:31:00"));
    flags = 0;
    EXPECT_FALSE(book.appendTransaction(stock, fill(0, 9).time("09:32:00"), flags, false));
    EXPECT_EQ(bids(), "bid 9.99 1h x1 (+1)\nbid 10.00 1h x1 (+1)\n");
    book.refreshDecay();
    EXPECT_EQ(bids(), "bid 9.99 1h x1 (0)\nbid 10.00 1h x1 (0)\n");
}

TEST_F(ThousandBookFadingTest, shouldFadeMarksOfABatchWhenALiveTickFollows)
{
    flags = 0;
    book.appendOrder(stock, order(1).buy(10.00).time("09:30:00"), flags, false);
    given(order(2).buy(9.99).time("09:31:00"));
    EXPECT_EQ(bids(), "bid 9.99 1h x1 (+1)\nbid 10.00 1h x1 (0)\n");
}

// Panels hold the row objects: a mark that fades is not a change that they are told of.
TEST_F(ThousandBookFadingTest, shouldChangeTheSameRowSilentlyWhenAMarkFades)
{
    given(order(1).buy(10.00).time("09:30:00"));
    const auto row = book.m_bidRows.at(1000);
    book.m_bidsDirty = false;
    EXPECT_EQ(answer(order(2).sell(10.05).time("09:31:00")), "taken, flags 2");
    EXPECT_EQ(row->delta, 0);
    EXPECT_FALSE(book.m_bidsDirty);
}

TEST_F(ThousandBookFadingTest, shouldBeginAnewWhenTheBookWasCleared)
{
    given(order(1).buy(10.00).time("09:30:00"));
    book.clearBook();
    given(order(1).buy(10.00).time("09:29:00"), order(2).buy(9.99).time("09:29:03"));
    EXPECT_EQ(bids(), "bid 9.99 1h x1 (+1)\nbid 10.00 1h x1 (+1)\n");
    given(order(3).buy(9.99).time("09:29:03.001"));
    EXPECT_EQ(bids(), "bid 9.99 2h x2 (+1)\nbid 10.00 1h x1 (0)\n");
}

} // namespace
