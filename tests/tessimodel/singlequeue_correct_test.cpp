#include "tests/tessimodel/pricelevel.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

namespace {

using namespace tests;

PriceLevel& with(PriceLevel& level, const std::vector<Order>& orders)
{
    for (const Order& order : orders)
        level.add(order);
    return level;
}

// --- how many orders there would be ---------------------------------------------------------------------------

struct NumberCase {
    int volume, number;
};

TEST(SingleQueueNumber, shouldCountOrdersThatWouldStayWhenVolumeWereAnother)
{
    PriceLevel level;
    with(level, {order(3).shares(500), order(5).shares(200), order(9).shares(100)});
    level.take(fill(3, 7).shares(200)); // live: 300, 200, 100
    const NumberCase cases[] = {{600, 3}, {599, 3}, {301, 3}, {300, 2},    {299, 2},    {101, 2},    {100, 1},   {1, 1},
                                {0, 0},   {-1, 0},  {601, 4}, {100600, 4}, {100601, 5}, {200600, 5}, {250600, 6}};
    for (const NumberCase& c : cases)
        EXPECT_EQ(level.queue.correctNumber(c.volume), c.number) << "for " << c.volume << " shares";
    EXPECT_EQ(level.text(), "[3:500-200 5:200 9:100] 600 x3 (-200)") << "nothing has changed";
}

TEST(SingleQueueNumber, shouldStayWhenLevelIsEmptyAndVolumeSmaller)
{
    TC::SingleQueue empty(10.0, true);
    EXPECT_EQ(empty.correctNumber(-1), 0);
    empty.m_number = 4;
    EXPECT_EQ(empty.correctNumber(-1), 4);
    EXPECT_EQ(empty.correctNumber(0), 4);
}

struct ImpliedCase {
    int from, to, number;
};

// No difference counts as one order, and so does a negative one. A difference beyond 32 bits wraps.
TEST(SingleQueueNumber, shouldCountImpliedOrdersOf100000WhenVolumesDiffer)
{
    const ImpliedCase cases[] = {
        {500, 500, 1},         {500, 400, 1},         {0, 0, 1},       {0, 1, 1},        {0, 100000, 1},
        {0, 100001, 2},        {0, 200000, 2},        {0, 250000, 3},  {100, 250100, 3}, {0, INT_MAX, 21475},
        {INT_MIN, INT_MAX, 1}, {INT_MAX, INT_MIN, 1}, {-100001, 0, 2},
    };
    for (const ImpliedCase& c : cases)
        EXPECT_EQ(TC::SingleQueue::correctNumber(c.from, c.to), c.number) << c.from << " to " << c.to;
}

// --- cutting and filling up -----------------------------------------------------------------------------------

TEST(SingleQueueCorrection, shouldLoseEveryOrderWhenVolumeIsNone)
{
    PriceLevel level;
    with(level, {order(1), order(2)}).queue.correctQueue(0);
    EXPECT_EQ(level.text(), "[] 0 x0 (+100)");
}

TEST(SingleQueueCorrection, shouldCutFromTheFrontWhenVolumeIsSmaller)
{
    PriceLevel level;
    with(level, {order(1).shares(300), order(2).shares(200), order(3).shares(100)}).queue.correctQueue(250);
    EXPECT_EQ(level.text(), "[2:200-50 3:100] 250 x2 (+100)");
    EXPECT_EQ(level.queue.m_quotes.at(2)->status, 1) << "a snapshot's cut is no deal";
}

TEST(SingleQueueCorrection, shouldCutWholeOrdersWhenTheyAreJustTheDifference)
{
    PriceLevel level;
    with(level, {order(1).shares(300), order(2).shares(200), order(3).shares(100)}).queue.correctQueue(300);
    EXPECT_EQ(level.text(), "[2:200 3:100] 300 x2 (+100)");
}

TEST(SingleQueueCorrection, shouldCutFromTheLiveSizeWhenOrderIsPartlyDealt)
{
    PriceLevel level;
    with(level, {order(1).shares(500), order(2).shares(100)}).take(fill(1, 9).shares(200));
    level.queue.correctQueue(350);
    EXPECT_EQ(level.text(), "[1:500-250 2:100] 350 x2 (-200)");
}

TEST(SingleQueueCorrection, shouldDoNothingWhenVolumeIsTheSame)
{
    PriceLevel level;
    with(level, {order(1), order(2)}).queue.correctQueue(200);
    EXPECT_EQ(level.text(), "[1:100 2:100] 200 x2 (+100)");
}

TEST(SingleQueueCorrection, shouldAppendImpliedOrdersWhenVolumeIsLarger)
{
    PriceLevel level;
    with(level, {order(7).shares(100)}).queue.correctQueue(250100);
    EXPECT_EQ(level.text(), "[7:100 8:100000 9:100000 10:50000] 250100 x4 (+100)");
    const TC::SingleQuote& implied = *level.queue.m_quotes.at(10);
    EXPECT_EQ(implied.timetag, 0);
    EXPECT_EQ(implied.status, 1);
}

TEST(SingleQueueCorrection, shouldBeginAtSeqOneWhenLevelIsEmpty)
{
    TC::SingleQueue level(10.0, true);
    level.correctQueue(100000);
    EXPECT_EQ(levelText(level), "[1:100000] 100000 x1 (0) dead");
}

TEST(SingleQueueCorrection, shouldAppendFullOrdersWhenSurplusIsAWholeMultiple)
{
    TC::SingleQueue level(10.0, true);
    level.correctQueue(300000);
    EXPECT_EQ(levelText(level), "[1:100000 2:100000 3:100000] 300000 x3 (0) dead");
}

TEST(SingleQueueCorrection, shouldLeaveStateTimeAndChangeWhenCorrected)
{
    for (const int volume : {0, 50, 100, 700}) {
        SCOPED_TRACE(volume);
        PriceLevel level;
        with(level, {order(1).time("09:30:07")}).queue.correctQueue(volume);
        EXPECT_TRUE(level.queue.m_active);
        EXPECT_EQ(level.queue.m_timetag, timeOf("09:30:07"));
        EXPECT_EQ(level.queue.m_lastChange, 100);
        EXPECT_EQ(level.queue.m_volume, volume);
    }
}

// The surplus is counted in 32 bits: one that wraps to nothing or less adds no orders.
TEST(SingleQueueCorrection, shouldAppendNothingWhenSurplusWraps)
{
    TC::SingleQueue level(10.0, true);
    level.m_volume = -2147483648LL;
    level.correctQueue(INT_MAX);
    EXPECT_EQ(levelText(level), "[] 2147483647 x0 (0) dead");
}

} // namespace
