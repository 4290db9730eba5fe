#include "indexui/tessimodel/detail/historythreads.h"
#include "tests/tessimodel/encounter.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

using namespace tests;
using TC::detail::HistoryThreads;

// What the thread says last is behind the owner that waited for it: neither of them locks anything of their own.
TEST(HistoryThreadsConcurrent, shouldWaitForLeavingWhenAThreadHasItsLastWordToSay)
{
    HistoryThreads threads;
    std::atomic<bool> isIdle{true};
    bool hasSpoken = false;
    bool isSpokenBehindTheWait = false;
    threads.begin(isIdle);
    threads.end(isIdle);
    const auto wait = [&] {
        threads.waitForLeaving();
        isSpokenBehindTheWait = hasSpoken;
    };
    const auto leave = [&] {
        hasSpoken = true;
        threads.leave();
    };
    expectToWaitUntil(leave, {wait});
    EXPECT_TRUE(isSpokenBehindTheWait);
}

} // namespace
