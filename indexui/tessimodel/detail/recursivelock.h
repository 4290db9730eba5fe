#pragma once

#include <atomic>

namespace TC::detail {

// A recursive lock that costs little while nobody waits for it: the book takes one with every tick, of whose
// instructions a recursive_mutex would be a sixth. Waiters sleep. Meets the requirements of lock_guard and unique_lock.
class RecursiveLock {
public:
    RecursiveLock() = default;
    RecursiveLock(const RecursiveLock&) = delete;
    RecursiveLock& operator=(const RecursiveLock&) = delete;

    void lock()
    {
        const void* const self = __builtin_thread_pointer();
        if (m_owner.load(std::memory_order_relaxed) == self) {
            ++m_depth;
            return;
        }
        int state = kFree;
        if (!m_state.compare_exchange_strong(state, kHeld, std::memory_order_acquire, std::memory_order_relaxed))
            waitForTurn();
        m_owner.store(self, std::memory_order_relaxed);
    }

    void unlock()
    {
        if (m_depth > 0) {
            --m_depth;
            return;
        }
        m_owner.store(nullptr, std::memory_order_relaxed);
        if (m_state.exchange(kFree, std::memory_order_release) == kAwaited)
            m_state.notify_one();
    }

private:
    enum State : int { kFree, kHeld, kAwaited };

    // Whoever had to wait leaves the lock marked as awaited, since others may be waiting still.
    [[gnu::noinline]] void waitForTurn()
    {
        while (m_state.exchange(kAwaited, std::memory_order_acquire) != kFree)
            m_state.wait(kAwaited, std::memory_order_relaxed);
    }

    std::atomic<int> m_state{kFree};
    int m_depth = 0;                           // of the owner, beyond the first
    std::atomic<const void*> m_owner{nullptr}; // the thread, by what it is cheapest to tell by
};

} // namespace TC::detail
