#pragma once

#include <boost/thread/recursive_mutex.hpp>

#include <chrono>
#include <functional>
#include <future>
#include <vector>

// How tests have a thread meet another one at a model's lock.
namespace tests {

inline constexpr std::chrono::seconds kLong{10};       // for what must come
inline constexpr std::chrono::milliseconds kShort{50}; // for what must not

// Does the work on a thread of its own.
std::future<void> start(const std::function<void()>& work);

// That every operation waits until `unlock` frees the lock that the caller holds, and ends then.
void expectToWaitUntil(const std::function<void()>& unlock, const std::vector<std::function<void()>>& operations);

// That every operation waits while the lock is held, and ends once it is free.
template <class Lock>
void expectToWait(Lock& lock, const std::vector<std::function<void()>>& operations)
{
    lock.lock();
    expectToWaitUntil([&lock] { lock.unlock(); }, operations);
}

// True as soon as somebody gets the lock while `isSo`, which is asked under it; false when that does not come.
bool canBeTaken(boost::recursive_mutex& lock, const std::function<bool()>& isSo);

// A piece of work that goes through several states, and how it is disturbed in its middle.
struct Encounter {
    std::function<void()> prepare;
    std::function<void()> work;
    std::function<int()> done; // so far
    int all;
    std::function<void()> intrude;
};

// Does the work on a thread of its own, and intrudes once while a part of it is done, under the lock; on a busy machine
// it may need several attempts. True when there was such a moment.
bool meet(boost::recursive_mutex& lock, const Encounter& encounter);

} // namespace tests
