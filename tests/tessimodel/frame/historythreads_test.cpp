#include "indexui/tessimodel/detail/historythreads.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

using TC::detail::HistoryThreads;

TEST(HistoryThreads, shouldBeIdleOnlyWhenTheLastThreadHasEndedItsWork)
{
    HistoryThreads threads;
    std::atomic<bool> isIdle{true};
    threads.begin(isIdle);
    threads.begin(isIdle);
    EXPECT_FALSE(isIdle);
    threads.end(isIdle);
    threads.leave();
    EXPECT_FALSE(isIdle);
    threads.end(isIdle);
    EXPECT_TRUE(isIdle);
    threads.leave();
    threads.waitForLeaving();
}

TEST(HistoryThreads, shouldStayAsItWasWhenAThreadCouldNotBeStarted)
{
    HistoryThreads threads;
    std::atomic<bool> isIdle{true};
    threads.begin(isIdle);
    threads.abandon();
    EXPECT_FALSE(isIdle);
    threads.waitForLeaving();

    threads.begin(isIdle);
    threads.end(isIdle);
    EXPECT_TRUE(isIdle);
    threads.leave();
}

TEST(HistoryThreads, shouldBeIdleWhenWorkEndsThatWasNeverCounted)
{
    HistoryThreads threads;
    std::atomic<bool> isIdle{false};
    threads.end(isIdle);
    EXPECT_TRUE(isIdle);
    threads.waitForLeaving();
    threads.begin(isIdle);
    EXPECT_FALSE(isIdle);
    threads.end(isIdle);
    EXPECT_TRUE(isIdle);
    threads.leave();
}

TEST(HistoryThreads, shouldNotWaitForLeavingWhenAThreadIsStillAtWork)
{
    HistoryThreads threads;
    std::atomic<bool> isIdle{true};
    threads.begin(isIdle);
    threads.waitForLeaving();
    threads.end(isIdle);
    threads.leave();
}

} // namespace
