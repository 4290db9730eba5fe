#include "bench/daystream.h"

#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

using namespace bench;

namespace {

constexpr __int64 kOpening = 1709256600000; // 2024-03-01 09:30:00
constexpr __int64 kMinute = 60'000;

// In a session, its end included.
bool isInTrading(__int64 time)
{
    const __int64 since = time - kOpening;
    return (since >= 0 && since <= 120 * kMinute) || (since >= 210 * kMinute && since <= 330 * kMinute);
}

// Records whose time or seq runs back, or whose time is out of trading.
template <class Records, class Seq>
std::vector<std::string> faultsIn(const Records& records, Seq seqOf)
{
    std::vector<std::string> faults;
    __int64 time = 0;
    __int64 seq = 0;
    for (const auto& record : records) {
        if (record->timetag < time || seqOf(*record) <= seq)
            faults.push_back("runs back at " + std::to_string(record->timetag));
        time = record->timetag;
        seq = seqOf(*record);
    }
    return faults;
}

// How many trades a snapshot contains, by its time.
std::vector<std::size_t> contentsOf(const DayStream& day)
{
    std::vector<std::size_t> counts;
    std::size_t count = 0;
    for (const SnapshotPush& push : day.snapshots) {
        while (count < day.trades.size() && day.trades[count]->timetag <= push.record->timetag)
            ++count;
        counts.push_back(count);
    }
    return counts;
}

} // namespace

TEST(DayStream, shouldBeADayOfABusyStockWhenItIsWhole)
{
    const DayStream day = makeDay();
    EXPECT_EQ(day.trades.size(), 1'000'000U);
    EXPECT_NEAR(static_cast<double>(day.orders.size()), 1'200'000, 12'000);
    EXPECT_EQ(day.snapshots.size(), 4800U);
    EXPECT_LT(day.trades.front()->timetag, kOpening + kMinute);
    EXPECT_GT(day.trades.back()->timetag, kOpening + 324 * kMinute);
    EXPECT_EQ(day.snapshots.back().record->timetag, kOpening + 330 * kMinute);
}

TEST(DayStream, shouldRunForwardWithinTradingWhenDayPasses)
{
    const DayStream day = makeDay();
    EXPECT_THAT(faultsIn(day.orders, [](const auto& order) { return order.seq; }), testing::IsEmpty());
    __int64 time = 0;
    for (const auto& trade : day.trades) {
        ASSERT_GE(trade->timetag, time);
        ASSERT_TRUE(isInTrading(trade->timetag)) << trade->timetag;
        time = trade->timetag;
    }
}

TEST(DayStream, shouldTradeOnlyOrdersOfTheDayWhenDayPasses)
{
    const DayStream day = makeDay(50'000);
    std::set<__int64> known;
    for (const auto& order : day.orders)
        known.insert(order->seq);
    for (const auto& report : day.reports) {
        const bool isCancel = report->transKind == quoter::kTransKindCancel;
        for (const int seq : {report->buySeq, report->sellSeq})
            ASSERT_TRUE(known.contains(seq) || (isCancel && seq == 0)) << seq;
    }
    EXPECT_GT(day.reports.size(), day.trades.size());
}

TEST(DayStream, shouldTakeSnapshotsEveryThreeSecondsWhenDayPasses)
{
    const DayStream day = makeDay();
    for (std::size_t i = 1; i < day.snapshots.size(); ++i) {
        const __int64 step = day.snapshots[i].record->timetag - day.snapshots[i - 1].record->timetag;
        ASSERT_EQ(step, i == 2400 ? 90 * kMinute + 3000 : 3000) << i;
        ASSERT_GE(day.snapshots[i].before, day.snapshots[i - 1].before) << i;
    }
    EXPECT_EQ(day.snapshots.front().record->timetag, kOpening + 3000);
}

TEST(DayStream, shouldShowWhatWasTradedWhenSnapshotIsTaken)
{
    const DayStream day = makeDay();
    const std::vector<std::size_t> contents = contentsOf(day);
    std::size_t summed = 0;
    __int64 shares = 0;
    for (std::size_t i = 0; i < contents.size(); ++i) {
        for (; summed < contents[i]; ++summed)
            shares += day.trades[summed]->volume;
        const quoter::QuoterDepthData& snapshot = *day.snapshots[i].record;
        ASSERT_EQ(snapshot.volume * 100, shares) << i;
        ASSERT_DOUBLE_EQ(snapshot.lastPrice, day.trades[summed - 1]->price) << i;
    }
    EXPECT_EQ(summed, day.trades.size());
}

TEST(DayStream, shouldBringSnapshotsAboutTheirTimeWhenFeedIsLive)
{
    const DayStream day = makeDay();
    const std::vector<std::size_t> contents = contentsOf(day);
    int early = 0;
    int late = 0;
    for (std::size_t i = 0; i < contents.size(); ++i) {
        const std::size_t before = day.snapshots[i].before;
        const __int64 time = day.snapshots[i].record->timetag;
        if (before > 0) {
            ASSERT_LT(day.trades[before - 1]->timetag, time + 1000) << i;
        }
        if (before < day.trades.size()) {
            ASSERT_GT(day.trades[before]->timetag, time - 1000) << i;
        }
        early += before < contents[i] ? 1 : 0;
        late += before > contents[i] ? 1 : 0;
    }
    EXPECT_GT(early, 500);
    EXPECT_GT(late, 3 * early / 2);
}

TEST(DayStream, shouldBeTheBeginningOfALongerOneWhenItIsShorter)
{
    const DayStream begun = makeDay(20'000);
    const DayStream longer = makeDay(30'000);
    ASSERT_EQ(begun.trades.size(), 20'000U);
    ASSERT_LE(begun.snapshots.size(), longer.snapshots.size());
    for (std::size_t i = 0; i < begun.trades.size(); ++i) {
        ASSERT_EQ(begun.trades[i]->timetag, longer.trades[i]->timetag) << i;
        ASSERT_EQ(begun.trades[i]->buySeq, longer.trades[i]->buySeq) << i;
        ASSERT_EQ(begun.trades[i]->volume, longer.trades[i]->volume) << i;
    }
    for (std::size_t i = 0; i + 1 < begun.snapshots.size(); ++i)
        ASSERT_EQ(begun.snapshots[i].record->volume, longer.snapshots[i].record->volume) << i;
}
