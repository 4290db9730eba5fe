#pragma once

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>

namespace TC::detail {

// The threads that work through histories for one model. Each holds this object together with the model, and has a
// last word to say to the model when its work is done: the model is destroyed behind that word, and this object behind
// the last thread.
//
//     begin ... the work ... end ... the last word ... leave
class HistoryThreads {
public:
    // A thread is about to start. `isIdle` is false from here on until the last one has ended its work.
    void begin(std::atomic<bool>& isIdle)
    {
        const std::lock_guard lock(m_mutex);
        ++m_present;
        ++m_working;
        isIdle = false;
    }

    // It could not be started. `isIdle` stays as it is: the history is not there.
    void abandon()
    {
        const std::lock_guard lock(m_mutex);
        --m_present;
        --m_working;
    }

    // The work is done. Work that began without a thread of its own was never counted.
    void end(std::atomic<bool>& isIdle)
    {
        const std::lock_guard lock(m_mutex);
        m_working = std::max(0, m_working - 1);
        if (m_working == 0)
            isIdle = true;
    }

    void leave()
    {
        const std::lock_guard lock(m_mutex);
        --m_present;
        m_left.notify_all();
    }

    // Returns when every thread whose work is done has left.
    void waitForLeaving()
    {
        std::unique_lock lock(m_mutex);
        m_left.wait(lock, [this] { return m_present <= m_working; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_left;
    int m_present = 0;
    int m_working = 0; // of those
};

} // namespace TC::detail
