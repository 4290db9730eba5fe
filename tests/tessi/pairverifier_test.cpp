#include "apps/tessi/pairverifier.h"

#include "tests/tessi/handmadeday.h"
#include "utils/timeutils.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

namespace {

using namespace tests;

std::shared_ptr<quoter::QuoterDepthData> shown(const std::string& clock, double last, __int64 dayVolume)
{
    return level2(clock).last(last).volume(dayVolume);
}

Trade traded(const std::string& clock, double price, __int64 shares)
{
    return fill(1, 2).at(price).shares(shares).time(clock);
}

// "2 pairs, 1 match, 1 right", and a line for each miss: "09:30:06 rows 1-2 of 1-1, 3 hands for 2, odd lots".
std::string story(const HandmadeDay& day)
{
    const tessi::VerifiedPairs pairs = tessi::verifyPairs(day.recorded());
    std::string text = fmt::format("{} pairs, {} match, {} right", pairs.pairs, pairs.matches, pairs.rightRows);
    for (const tessi::PairMiss& miss : pairs.misses) {
        EXPECT_EQ(miss.shares / 100, miss.hands);
        text += fmt::format("\n{} rows {}-{} of {}-{}, {} hands for {}, {}",
                            utils::millisecondsToTime(miss.timetag) % 1000000, miss.rows.first, miss.rows.second,
                            miss.should.first, miss.should.second, miss.hands, miss.step, nameOf(miss.fault));
    }
    return text;
}

// What closes the pair before it: the rows and snapshots behind it are of no interest.
void close(HandmadeDay& day)
{
    day << traded("10:00:00", 11.00, 100);
}

TEST(PairVerifier, shouldMatchWhenPairsHaveTheVolumeOfTheirSnapshots)
{
    HandmadeDay day;
    day << traded("09:30:01", 10.00, 300) << traded("09:30:02", 10.01, 200) << shown("09:30:03", 10.01, 500)
        << traded("09:30:04", 10.02, 100) << shown("09:30:06", 10.02, 600);
    EXPECT_EQ(story(day), "1 pairs, 1 match, 1 right") << "the last pair is open until another trade closes it";
    close(day);
    EXPECT_EQ(story(day), "2 pairs, 2 match, 2 right");
}

TEST(PairVerifier, shouldBlameWholeHandsWhenThePairHasTheRightTrades)
{
    HandmadeDay day;
    day << traded("09:30:01", 10.00, 150) << shown("09:30:03", 10.00, 150) << traded("09:30:04", 10.02, 150)
        << shown("09:30:06", 10.02, 300);
    close(day);
    EXPECT_EQ(story(day), "2 pairs, 1 match, 2 right\n93006 rows 1-1 of 1-1, 1 hands for 2, whole hands");
}

// Two rows are as near to one hand as one: the later one is taken, and the next snapshot lacks it.
TEST(PairVerifier, shouldFollowTheFaultWhenOddLotsAreTakenFromTheNextSnapshot)
{
    HandmadeDay day;
    day << traded("09:30:01", 10.00, 100) << shown("09:30:03", 10.00, 100) << traded("09:30:03", 10.00, 50)
        << traded("09:30:05", 10.00, 250) << shown("09:30:06", 10.00, 400);
    close(day);
    EXPECT_EQ(story(day), "2 pairs, 1 match, 0 right\n93006 rows 2-2 of 1-2, 2 hands for 3, carried");
}

TEST(PairVerifier, shouldBlameOddLotsWhenThePairEndsAtAnotherTrade)
{
    HandmadeDay day;
    day << traded("09:30:01", 10.00, 190) << shown("09:30:03", 10.00, 190) << traded("09:30:04", 10.00, 150)
        << shown("09:30:06", 10.00, 340) << traded("09:30:06", 10.00, 180) << shown("09:30:09", 10.00, 520);
    close(day);
    EXPECT_EQ(story(day), "3 pairs, 1 match, 1 right\n"
                          "93006 rows 1-2 of 1-1, 3 hands for 2, odd lots\n"
                          "93009 rows 2-2 of 2-2, 1 hands for 2, no row");
}

TEST(PairVerifier, shouldBlameALateTradeWhenTheSnapshotKnowsIt)
{
    HandmadeDay day;
    day << traded("09:30:01", 10.00, 100) << shown("09:30:03", 10.00, 300) << traded("09:30:04", 10.00, 200)
        << shown("09:30:06", 10.00, 400) << traded("09:30:06", 10.00, 100);
    close(day);
    EXPECT_EQ(story(day), "2 pairs, 0 match, 0 right\n"
                          "93003 rows 0-0 of 0-1, 1 hands for 3, late trade\n"
                          "93006 rows 1-1 of 2-2, 2 hands for 1, carried");
}

TEST(PairVerifier, shouldBlameThePriceWhenTheLastTradeIsAtAnother)
{
    HandmadeDay day;
    day << traded("09:30:01", 10.00, 100) << traded("09:30:02", 10.01, 200) << shown("09:30:03", 10.00, 300);
    close(day);
    EXPECT_EQ(story(day), "1 pairs, 0 match, 0 right\n93003 rows 0-0 of 0-1, 1 hands for 3, other price");
}

TEST(PairVerifier, shouldSayThatThereIsNoRowWhenNothingIsAtTheLastPrice)
{
    HandmadeDay day;
    day << shown("09:00:00", 0, 0) << traded("09:30:01", 10.00, 100) << shown("09:30:03", 10.00, 100)
        << traded("09:30:05", 10.01, 500) << shown("09:30:06", 10.02, 600);
    close(day);
    EXPECT_EQ(story(day), "3 pairs, 1 match, 1 right\n"
                          "90000 rows 0-0 of -1--1, 1 hands for 0, no row\n"
                          "93006 rows 0-0 of 1-1, 1 hands for 5, no row");
}

TEST(PairVerifier, shouldCountPairsOfTheWholeDayWhenTradesAreOutsideTheSession)
{
    HandmadeDay day;
    day << traded("08:50:00", 10.00, 300) << shown("08:50:03", 10.00, 300) << traded("10:00:00", 10.01, 200)
        << shown("10:00:03", 10.01, 500) << traded("16:20:00", 10.02, 100) << shown("16:20:03", 10.02, 600)
        << traded("23:59:59", 10.03, 100);
    EXPECT_EQ(story(day), "3 pairs, 3 match, 3 right");
}

TEST(PairVerifier, shouldSayThatItIsUnknownWhenNoTradeEndsAtTheDayVolume)
{
    HandmadeDay day;
    day << traded("09:30:01", 10.00, 300) << shown("09:30:03", 10.00, 250);
    close(day);
    EXPECT_EQ(story(day), "1 pairs, 0 match, 0 right\n93003 rows 0-0 of -1--1, 3 hands for 2, unknown");
}

TEST(PairVerifier, shouldLeaveOutTheFirstWhenTwoSnapshotsShareASecond)
{
    HandmadeDay day;
    day << traded("09:30:01", 10.00, 100) << shown("09:30:03", 10.00, 100) << traded("09:30:03", 10.00, 300)
        << shown("09:30:03", 10.00, 400);
    close(day);
    EXPECT_EQ(story(day), "1 pairs, 1 match, 1 right");
}

} // namespace
