#include "tests/tessimodel/quoterthousand.h"

#include <limits>
#include <vector>

namespace {

using namespace tests;

// --- queues of volumes from elsewhere -------------------------------------------------------------------------

class QuoterThousandGetQueueTest : public QuoterThousandTest {};

TEST_F(QuoterThousandGetQueueTest, shouldHoldTheVolumesAsOrdersWhenAsked)
{
    feed.snapshots(live, {level2("09:30:03").bid(10.00, 7)});
    const auto queue = model.getQueue(true, 10.00, {300, 0, 200, -5});
    EXPECT_EQ(levelText(*queue), "[0:300 1:0 2:200 3:-5] 495 x4 (0) dead");
    EXPECT_EQ(queue->m_price, 10.00);
    EXPECT_TRUE(queue->m_isBid);
    EXPECT_EQ(queue->m_timetag, timeOf("09:30:03"));
    for (const auto& [seq, quote] : queue->m_quotes) {
        EXPECT_EQ(quote->timetag, 0);
        EXPECT_EQ(quote->dealVolume, 0);
        EXPECT_EQ(quote->status, 1);
    }
}

TEST_F(QuoterThousandGetQueueTest, shouldBeAnAskWhenOneIsAskedFor)
{
    const auto queue = model.getQueue(false, 10.02, {300});
    EXPECT_FALSE(queue->m_isBid);
    EXPECT_EQ(queue->m_price, 10.02);
}

TEST_F(QuoterThousandGetQueueTest, shouldBeEmptyAtThePriceWhenThereAreNoVolumes)
{
    const auto queue = model.getQueue(true, 10.00, {});
    ASSERT_NE(queue, nullptr);
    EXPECT_EQ(levelText(*queue), "[] 0 x0 (0) dead");
    EXPECT_EQ(queue->m_price, 10.00);
    EXPECT_EQ(queue->m_timetag, 0) << "before any snapshot";
}

TEST_F(QuoterThousandGetQueueTest, shouldKeepVolumesWholeWhenTheyAreHuge)
{
    constexpr __int64 kMax = std::numeric_limits<__int64>::max();
    EXPECT_EQ(levelText(*model.getQueue(true, 10.00, {1LL << 40, 1})),
              "[0:1099511627776 1:1] 1099511627777 x2 (0) dead");
    EXPECT_EQ(model.getQueue(true, 10.00, {kMax, 3})->m_volume, std::numeric_limits<__int64>::min() + 2);
}

// Neither the record, the book, the instrument nor an earlier answer has a part in it.
TEST_F(QuoterThousandGetQueueTest, shouldGoByTheVolumesOnlyWhenAsked)
{
    const auto first = model.getQueue(true, 10.00, {300});
    bidAt("09:30:00", 5);
    EXPECT_EQ(model.m_book.getLevel(true, 10.00), nullptr);
    const auto second = model.getQueue(true, 10.00, {300});
    EXPECT_NE(first, second);
    EXPECT_EQ(queueText(second), "0:300");
    EXPECT_EQ(queueText(QuoterThousand().getQueue(true, 10.00, {300})), "0:300") << "without an instrument";
}

// --- which side is ahead --------------------------------------------------------------------------------------

class QuoterThousandAheadTest : public QuoterThousandTest {};

struct AheadCase {
    int snapshots;
    __int64 records;
    bool ahead;
};

TEST_F(QuoterThousandAheadTest, shouldBeAheadOnlyByMoreThanTenSecondsWhenBothTimesAreKnown)
{
    constexpr int kQuarter = 1 << 30;
    constexpr __int64 kFull = 1LL << 32;
    const AheadCase cases[] = {
        {0, 0, false},
        {20'000, 0, false},
        {0, 20'000, false},
        {0, -20'000, false},
        {20'000, 10'000, false},
        {20'001, 10'000, true},
        {10'000, 20'000, false},
        {10'000, 20'001, false},
        {10'000, 90'000, false},
        {-5, -10'005, false},
        {-5, -10'006, true},
        {-20'000, 5, false},
        {5, -20'000, true},
        // The difference is taken in 32 bits, the order is not.
        {20'001, 10'000 + kFull, false},
        {20'001, 10'000 - kFull, true},
        {20'000, 10'000 - kFull, false},
        {20'000, 20'000 - kFull, false},
        {10'000, 20'001 - kFull, true},
        {10'000, 20'000 - kFull, false},
        // Two to the 31st has no absolute value in 32 bits.
        {kQuarter, -kQuarter, false},
        {kQuarter, 1 - kQuarter, true},
        {kQuarter, -1 - kQuarter, true},
    };
    for (const AheadCase& c : cases) {
        SCOPED_TRACE(fmt::format("{} against {}", c.snapshots, c.records));
        model.m_quoterVolumeTime = c.snapshots;
        model.m_reserved = c.records;
        EXPECT_EQ(model.compareNewerQuote(), c.ahead);
    }
}

TEST_F(QuoterThousandAheadTest, shouldNeverBeAheadWhenOnlyDataHaveCome)
{
    bidAt("09:30:00", 5);
    feed.snapshots(live, {level2("10:30:00").volume(70).bid(10.00)});
    EXPECT_NE(model.m_quoterVolumeTime, 0);
    EXPECT_EQ(model.m_reserved, 0) << "nothing sets it";
    EXPECT_FALSE(model.compareNewerQuote());
}

} // namespace
