#include "indexui/tessimodel/detail/fadequeue.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using TC::detail::FadeQueue;

std::vector<int> keysDue(FadeQueue& queue, long long now)
{
    std::vector<int> keys;
    while (queue.hasDue(now, 3001))
        keys.push_back(queue.takeFirst().key);
    return keys;
}

TEST(FadeQueue, shouldGiveTheOldestFirstWhenTimesGoBack)
{
    FadeQueue queue;
    queue.note({5000, 1, true});
    queue.note({4000, 2, false});
    queue.note({5000, 3, true});
    queue.note({4500, 4, true});
    EXPECT_EQ(keysDue(queue, 9000), (std::vector<int>{2, 4, 1, 3}));
}

TEST(FadeQueue, shouldWaitUntilTheLastMillisecondWhenAsked)
{
    FadeQueue queue;
    queue.note({1000, 1, true});
    EXPECT_FALSE(queue.hasDue(4000, 3001));
    EXPECT_TRUE(queue.hasDue(4001, 3001));
}

TEST(FadeQueue, shouldHaveNothingDueWhenCleared)
{
    FadeQueue queue;
    queue.note({1000, 1, true});
    queue.clear();
    EXPECT_FALSE(queue.hasDue(9000, 3001));
}

} // namespace
