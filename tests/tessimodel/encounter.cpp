#include "tests/tessimodel/encounter.h"

#include <gtest/gtest.h>

#include <boost/thread/locks.hpp>

#include <atomic>
#include <cstddef>
#include <thread>

namespace tests {

namespace {

bool meetOnce(boost::recursive_mutex& lock, const Encounter& encounter)
{
    encounter.prepare();
    std::atomic<bool> finished{false};
    std::thread worker([&] {
        encounter.work();
        finished = true;
    });
    bool met = false;
    while (!finished && !met) {
        const boost::unique_lock<boost::recursive_mutex> reading(lock);
        met = encounter.done() > 0 && encounter.done() < encounter.all;
        if (met)
            encounter.intrude();
    }
    worker.join();
    return met;
}

} // namespace

std::future<void> start(const std::function<void()>& work)
{
    return std::async(std::launch::async, work);
}

void expectToWaitUntil(const std::function<void()>& unlock, const std::vector<std::function<void()>>& operations)
{
    std::atomic<std::size_t> begun{0};
    std::vector<std::future<void>> waiting;
    waiting.reserve(operations.size());
    for (const auto& operation : operations) {
        waiting.push_back(start([&begun, &operation] {
            ++begun;
            operation();
        }));
    }
    while (begun < operations.size())
        std::this_thread::yield();
    const auto until = std::chrono::steady_clock::now() + kShort;
    for (std::size_t i = 0; i < waiting.size(); ++i)
        EXPECT_EQ(waiting[i].wait_until(until), std::future_status::timeout) << "operation " << i;
    unlock();
    for (auto& operation : waiting)
        EXPECT_EQ(operation.wait_for(kLong), std::future_status::ready);
}

bool canBeTaken(boost::recursive_mutex& lock, const std::function<bool()>& isSo)
{
    const auto end = std::chrono::steady_clock::now() + kLong;
    while (std::chrono::steady_clock::now() < end) {
        const boost::unique_lock<boost::recursive_mutex> taken(lock, boost::try_to_lock);
        if (taken && isSo())
            return true;
        std::this_thread::yield();
    }
    return false;
}

bool meet(boost::recursive_mutex& lock, const Encounter& encounter)
{
    bool met = false;
    const auto end = std::chrono::steady_clock::now() + kLong;
    while (!met && std::chrono::steady_clock::now() < end)
        met = meetOnce(lock, encounter);
    return met;
}

} // namespace tests
