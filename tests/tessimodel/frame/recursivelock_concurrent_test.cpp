#include "indexui/tessimodel/detail/recursivelock.h"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>
#include <vector>

namespace {

using TC::detail::RecursiveLock;
using Guard = std::lock_guard<RecursiveLock>;

TEST(RecursiveLock, shouldLoseNoStepWhenThreadsTakeItAgainAndAgain)
{
    constexpr int kThreads = 4;
    constexpr int kSteps = 20'000;
    RecursiveLock lock;
    int steps = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int step = 0; step < kSteps; ++step) {
                const Guard outer(lock);
                ++steps;
                const Guard inner(lock);
                ++steps;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(steps, 2 * kThreads * kSteps);
}

TEST(RecursiveLock, shouldStayHeldWhenOnlyTheInnerOneIsGivenBack)
{
    RecursiveLock lock;
    int value = 0;
    std::thread other;
    {
        const Guard outer(lock);
        {
            const Guard inner(lock);
            other = std::thread([&] {
                const Guard guard(lock);
                value *= 10;
            });
        }
        // Were it free by now, the other thread would multiply nothing.
        for (int i = 0; i < 1000; ++i)
            std::this_thread::yield();
        value = 7;
    }
    other.join();
    EXPECT_EQ(value, 70);
}

} // namespace
