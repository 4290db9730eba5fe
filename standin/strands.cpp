#include "standin/strands.h"

#include "net/rpcengine.h"
#include "standin/handstrand.h"
#include "standin/reset.h"
#include "standin/strandpool.h"
#include "utils/csingletont_impl.h"

#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>

#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <utility>
#include <vector>

template struct utils::CSingletonT<net::RPCEngine>;

namespace standin {

namespace {

using HandStrandPtr = boost::shared_ptr<HandStrand>;
using HandStrands = std::map<std::string, HandStrandPtr>;

constexpr unsigned kDefaultThreads = 2;

// The strands of the process. No lock is held while a task may run or be freed: tasks ask for strands themselves.
class StrandHub {
public:
    // Never destroyed: models may be freed until the very end.
    static StrandHub& instance();

    StrandPool::StrandPtr strand(const std::string& name);
    void runOnPool(unsigned threads);
    void runByHand();
    HandStrandPtr handStrand(const std::string& name);
    void waitIdle();
    void reset();
    void end();

private:
    void retireAll();
    void retireOnce();

    std::mutex m_mutex;
    bool m_byHand = false;
    unsigned m_threads = kDefaultThreads;
    std::shared_ptr<StrandPool> m_pool; // null until the first strand is asked for
    HandStrands m_handStrands;

    // Retired on a pool's own thread, so that somebody else must wait for the threads.
    std::vector<std::shared_ptr<StrandPool>> m_toBeJoined;
    // Strands that are held beyond their time: what is posted to them is freed when it can be.
    std::vector<boost::weak_ptr<StrandContext>> m_deadPools;
};

StrandPool::StrandPtr StrandHub::strand(const std::string& name)
{
    std::shared_ptr<StrandPool> pool;
    {
        const std::lock_guard lock(m_mutex);
        if (m_byHand) {
            HandStrandPtr& slot = m_handStrands[name];
            if (!slot)
                slot = boost::make_shared<HandStrand>();
            return {slot, &slot->strand()};
        }
        if (!m_pool)
            m_pool = std::make_shared<StrandPool>(m_threads);
        pool = m_pool;
    }
    return pool->strand(name);
}

void StrandHub::runOnPool(unsigned threads)
{
    if (threads == 0)
        throw std::invalid_argument("strands need at least one thread");
    if (StrandPool::onPoolThread())
        throw std::logic_error("a task on the pool cannot change the pool");
    std::shared_ptr<StrandPool> pool;
    bool wasByHand = false;
    {
        const std::lock_guard lock(m_mutex);
        m_threads = threads;
        wasByHand = std::exchange(m_byHand, false);
        pool = m_pool;
    }
    if (wasByHand)
        retireAll();
    else if (pool)
        pool->resize(threads);
}

void StrandHub::runByHand()
{
    {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_byHand, true))
            return;
    }
    retireAll();
}

HandStrandPtr StrandHub::handStrand(const std::string& name)
{
    const std::lock_guard lock(m_mutex);
    if (!m_byHand)
        throw std::logic_error("strands are drained by hand only after runByHand()");
    const auto found = m_handStrands.find(name);
    return found == m_handStrands.end() ? nullptr : found->second;
}

void StrandHub::waitIdle()
{
    if (StrandPool::onPoolThread())
        throw std::logic_error("a task on the pool cannot wait until the pool is idle");
    std::shared_ptr<StrandPool> pool;
    {
        const std::lock_guard lock(m_mutex);
        if (m_byHand)
            throw std::logic_error("by hand nothing empties the strands but drain()");
        pool = m_pool;
    }
    if (pool)
        pool->waitIdle();
}

void StrandHub::reset()
{
    {
        const std::lock_guard lock(m_mutex);
        m_byHand = false;
        m_threads = kDefaultThreads;
    }
    retireAll();
}

void StrandHub::retireAll()
{
    // The tasks that the first round frees may own models, whose destructors post to new strands.
    retireOnce();
    retireOnce();
}

void StrandHub::retireOnce()
{
    std::shared_ptr<StrandPool> pool;
    {
        const std::lock_guard lock(m_mutex);
        pool = m_pool;
    }
    // Still in its place, so that tasks which ask for strands do not start another pool.
    if (pool)
        pool->retire();

    HandStrands handStrands;
    std::vector<std::shared_ptr<StrandPool>> toBeJoined;
    {
        const std::lock_guard lock(m_mutex);
        if (pool && m_pool == pool) {
            m_pool.reset();
            m_deadPools.push_back(pool->context());
            m_toBeJoined.push_back(pool);
        }
        std::erase_if(m_deadPools, [](const auto& dead) { return dead.expired(); });
        handStrands.swap(m_handStrands);
        if (!StrandPool::onPoolThread())
            toBeJoined.swap(m_toBeJoined);
    }
    for (const auto& [name, strand] : handStrands)
        strand->discard();
    for (const auto& retired : toBeJoined)
        retired->retire();
}

void StrandHub::end()
{
    runByHand();
    retireAll();
    std::vector<boost::weak_ptr<StrandContext>> deadPools;
    {
        const std::lock_guard lock(m_mutex);
        deadPools.swap(m_deadPools);
    }
    for (const auto& dead : deadPools) {
        if (const auto context = dead.lock())
            context->discard();
    }
}

StrandHub& StrandHub::instance()
{
    static StrandHub& hub = *new StrandHub;
    // Made at the first use and so gone before all that was there by then: the threads end, and what was left to
    // dead strands is freed, while every service can still be asked. Strands asked for later run nothing.
    static const struct AtExit {
        ~AtExit() { hub.end(); }
    } atExit;
    return hub;
}

} // namespace

void Strands::runOnPool(unsigned threads)
{
    StrandHub::instance().runOnPool(threads);
}

void Strands::runByHand()
{
    StrandHub::instance().runByHand();
}

bool Strands::drain(const std::string& name)
{
    const HandStrandPtr strand = StrandHub::instance().handStrand(name);
    return strand && strand->drain();
}

void Strands::waitIdle()
{
    StrandHub::instance().waitIdle();
}

void resetStrands()
{
    StrandHub::instance().reset();
}

} // namespace standin

namespace net {

boost::shared_ptr<boost::asio::io_service::strand> RPCEngine::getStrand(const std::string& name)
{
    return standin::StrandHub::instance().strand(name);
}

} // namespace net
