#include "tests/tessimodel/frame/elementlist.h"

#include <gtest/gtest.h>

#include <thread>
#include <utility>

// Elements that are taken on one thread and given back on another.
namespace {

using namespace tests;

TEST(ElementPoolConcurrent, shouldKeepItsElementsWhenTheThreadThatTookThemIsGone)
{
    QList<PooledElement> list;
    std::thread([&list] { list = listOf(kMany); }).join();
    std::thread([&list] { expectNumbers(list); }).join();
    list.append({kMany * 0.5, kMany});
    expectNumbers(list);
    list.clear();
}

// Lives longer than what its thread has of the pool, and takes and gives back elements even then.
struct LateComer {
    QList<PooledElement>* left = nullptr;

    ~LateComer()
    {
        if (!left)
            return;
        listOf(3); // comes and goes
        *left = listOf(5);
    }
};

TEST(ElementPoolConcurrent, shouldGiveElementsWhenTheThreadsOwnBlockIsGoneAlready)
{
    QList<PooledElement> left;
    std::thread([&left] {
        static thread_local LateComer comer; // made before the thread's first element, so it goes after the block
        comer.left = &left;
        expectNumbers(listOf(2));
    }).join();
    ASSERT_EQ(left.size(), 5);
    expectNumbers(left);
}

TEST(ElementPoolConcurrent, shouldFreeBlocksWhenSeveralThreadsGiveBackWhatOneTook)
{
    // Leaks and double frees show under AddressSanitizer, what threads do to one block under ThreadSanitizer.
    for (int round = 0; round < 20; ++round) {
        QList<PooledElement> first = listOf(kMany);
        QList<PooledElement> second = listOf(kMany);
        std::thread one([list = std::move(first)]() mutable { list.clear(); });
        std::thread two([list = std::move(second)]() mutable { list.clear(); });
        expectNumbers(listOf(kMany));
        one.join();
        two.join();
    }
}

} // namespace
