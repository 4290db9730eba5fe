#include "standin/strandpool.h"

#include "utils/threadname.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <memory>

namespace standin {

namespace {

thread_local bool t_onPoolThread = false;

// A strand that keeps what runs it alive.
struct PoolStrand {
    explicit PoolStrand(const boost::shared_ptr<StrandContext>& runBy)
        : context(runBy)
        , strand(*runBy)
    {}

    boost::shared_ptr<StrandContext> context;
    boost::asio::io_context::strand strand;
};

} // namespace

StrandPool::StrandPool(unsigned threads)
    : m_context(boost::make_shared<StrandContext>())
    , m_size(threads)
{}

StrandPool::~StrandPool()
{
    retire();
}

bool StrandPool::onPoolThread()
{
    return t_onPoolThread;
}

StrandPool::StrandPtr StrandPool::newStrand() const
{
    const auto strand = boost::make_shared<PoolStrand>(m_context);
    return {strand, &strand->strand};
}

StrandPool::StrandPtr StrandPool::strand(const std::string& name)
{
    StrandPtr strand;
    {
        const std::lock_guard lock(m_strandsMutex);
        StrandPtr& slot = m_strands[name];
        // Asio deals strands out of a fixed set of queues, so that two of them may be the same one: a task that
        // waits for another strand's would then wait for itself. With more names than queues some must share.
        constexpr int kTries = 1000;
        const auto isTaken = [this](const StrandPtr& candidate) {
            return std::any_of(m_strands.begin(), m_strands.end(),
                               [&candidate](const auto& other) { return other.second && *other.second == *candidate; });
        };
        if (!slot) {
            StrandPtr candidate = newStrand();
            for (int i = 0; i < kTries && isTaken(candidate); ++i)
                candidate = newStrand();
            slot = candidate;
        }
        strand = slot;
    }
    const std::lock_guard lock(m_stateMutex);
    if (!m_started && !m_retired) {
        m_started = true;
        startThreads();
    }
    return strand;
}

void StrandPool::startThreads()
{
    // To put a new guard in place of the old one would first let go of the last work, and so stop the context.
    if (!m_work)
        m_work.emplace(m_context->get_executor());
    for (unsigned i = 0; i < m_size; ++i) {
        m_threads.emplace_back([context = m_context] {
            t_onPoolThread = true;
            utils::setThreadName(pthread_self(), "strands");
            context->run();
        });
    }
}

void StrandPool::joinThreads()
{
    std::vector<std::thread> threads;
    {
        const std::lock_guard lock(m_stateMutex);
        threads.swap(m_threads);
    }
    for (std::thread& thread : threads)
        thread.join();
}

void StrandPool::resumeThreads()
{
    const std::lock_guard lock(m_stateMutex);
    if (m_retired)
        return;
    m_context->restart();
    startThreads();
}

void StrandPool::resize(unsigned threads)
{
    const std::lock_guard joining(m_joinMutex);
    {
        const std::lock_guard lock(m_stateMutex);
        m_size = threads;
        if (!m_started || m_retired)
            return;
        m_context->stop();
    }
    joinThreads();
    resumeThreads();
}

// Nobody can count what is posted to a strand, but asio itself does: without a guard its threads leave when no task
// is queued or running anywhere.
void StrandPool::waitIdle()
{
    const std::lock_guard joining(m_joinMutex);
    {
        const std::lock_guard lock(m_stateMutex);
        if (!m_started || m_retired)
            return;
        m_work.reset();
    }
    joinThreads();
    resumeThreads();
}

// A gate behind the last task of every strand. Under load there are always tasks behind the gates.
void StrandPool::waitForQueued()
{
    {
        const std::lock_guard lock(m_stateMutex);
        if (m_retired)
            return;
    }
    std::vector<StrandPtr> strands;
    {
        const std::lock_guard lock(m_strandsMutex);
        for (const auto& [name, strand] : m_strands)
            strands.push_back(strand);
    }
    const auto closed = std::make_shared<std::size_t>(strands.size());
    for (const StrandPtr& strand : strands) {
        strand->post([this, closed] {
            const std::lock_guard lock(m_stateMutex);
            --*closed;
            m_gatePassed.notify_all();
        });
    }
    std::unique_lock lock(m_stateMutex);
    m_gatePassed.wait(lock, [this, &closed] { return *closed == 0 || m_retired; });
}

void StrandPool::retire()
{
    // A gate would stand behind the very task that waits for it.
    if (!onPoolThread())
        waitForQueued();
    {
        const std::lock_guard lock(m_stateMutex);
        m_retired = true;
        m_work.reset();
        m_context->stop();
        m_gatePassed.notify_all();
    }
    if (onPoolThread())
        return;
    const std::lock_guard joining(m_joinMutex);
    joinThreads();
}

} // namespace standin
