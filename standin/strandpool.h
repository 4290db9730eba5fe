#pragma once

#include "standin/strandcontext.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context_strand.hpp>
#include <boost/shared_ptr.hpp>

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace standin {

// Named strands that run on threads of their own, which start with the first strand.
//
// Safe from any thread. The owner sees to it that the destructor runs on no thread of the pool, unless the pool was
// retired on another one.
class StrandPool {
public:
    using StrandPtr = boost::shared_ptr<boost::asio::io_context::strand>;

    explicit StrandPool(unsigned threads);
    ~StrandPool();
    StrandPool(const StrandPool&) = delete;
    StrandPool& operator=(const StrandPool&) = delete;

    // The calling thread belongs to a pool, to this one or another.
    static bool onPoolThread();

    StrandPtr strand(const std::string& name);

    // Goes on with another number of threads. Not on a thread of the pool.
    void resize(unsigned threads);

    // Waits until all strands are empty and idle. Not on a thread of the pool.
    void waitIdle();

    // Waits until all tasks that are queued now have run, and ends the threads; later tasks never run. On a
    // thread of a pool it only says so: nothing is waited for, and the threads leave after the tasks they are in.
    void retire();

    boost::shared_ptr<StrandContext> context() const { return m_context; }

private:
    StrandPtr newStrand() const;
    void startThreads();
    void joinThreads();
    void resumeThreads();
    void waitForQueued();

    const boost::shared_ptr<StrandContext> m_context;

    std::mutex m_strandsMutex;
    std::map<std::string, StrandPtr> m_strands;

    // Held by who waits for threads to end; never taken on a thread of the pool.
    std::mutex m_joinMutex;

    std::mutex m_stateMutex; // guards all below
    std::condition_variable m_gatePassed;
    unsigned m_size;
    bool m_started = false;
    bool m_retired = false;
    std::vector<std::thread> m_threads;
    std::optional<boost::asio::executor_work_guard<boost::asio::io_context::executor_type>> m_work;
};

} // namespace standin
