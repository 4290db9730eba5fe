// Strands under load: many threads post while the tasks run, wait, change the pool and reset the terminal.

#include "net/rpcengine.h"
#include "standin/terminal.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using Strand = boost::shared_ptr<boost::asio::io_service::strand>;

Strand strand(const std::string& name)
{
    return utils::CSingletonT<net::RPCEngine>::instance()->getStrand(name);
}

// Threads that repeat a job until this is gone.
class Load {
public:
    template <class Job>
    Load(int threads, const Job& job)
    {
        for (int i = 0; i < threads; ++i) {
            m_threads.emplace_back([this, job] {
                m_started.count_down();
                while (!m_stop) {
                    job();
                    std::this_thread::yield();
                }
            });
        }
        m_started.wait();
    }
    ~Load()
    {
        m_stop = true;
        for (std::thread& thread : m_threads)
            thread.join();
    }

private:
    std::latch m_started{3};
    std::atomic<bool> m_stop{false};
    std::vector<std::thread> m_threads;
};

// What a model is to the strands: it works on one, and lets go of its rows on another.
struct Model {
    ~Model()
    {
        strand("data_release")->post([rows = std::make_shared<std::vector<int>>(100)] {});
    }

    Strand home = strand("modulegroup");
    int plain = 0; // no lock: the strand is one
};

} // namespace

TEST(ConcurrentStrands, shouldRunEveryTaskAloneAndInOrderOfItsThreadWhenSeveralThreadsPost)
{
    constexpr int kThreads = 4;
    constexpr int kTasks = 3000;
    standin::Terminal terminal;
    terminal.strands.runOnPool(3);
    // Plain, so that two tasks at once would be a race.
    std::vector<int> next(kThreads, 0);
    int total = 0;
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < kTasks; ++i) {
                strand("modulegroup")->post([&, thread, i] {
                    EXPECT_EQ(next[thread], i);
                    next[thread] = i + 1;
                    ++total;
                });
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    terminal.strands.waitIdle();
    EXPECT_EQ(total, kThreads * kTasks);
}

TEST(ConcurrentStrands, shouldFindAllWorkDoneWhenSeveralThreadsWait)
{
    standin::Terminal terminal;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread) {
        threads.emplace_back([&terminal, thread] {
            for (int i = 0; i < 100; ++i) {
                const auto done = std::make_shared<std::atomic<bool>>(false);
                strand("a")->post([done, thread] { strand(thread % 2 ? "b" : "c")->post([done] { *done = true; }); });
                terminal.strands.waitIdle();
                ASSERT_TRUE(*done);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

TEST(ConcurrentStrands, shouldLoseNoTaskWhenThePoolChangesItsSizeUnderLoad)
{
    standin::Terminal terminal;
    std::atomic<int> posted{0};
    int ran = 0;
    {
        const Load load(3, [&] {
            ++posted;
            strand("s")->post([&ran] { ++ran; });
        });
        for (unsigned i = 0; i < 100; ++i)
            terminal.strands.runOnPool(1 + i % 4);
    }
    terminal.strands.waitIdle();
    EXPECT_EQ(ran, posted);
}

TEST(ConcurrentStrands, shouldNotDeadlockWhenResetUnderLoad)
{
    {
        const Load load(3, [] {
            const auto model = std::make_shared<Model>();
            // Some tasks hold the last pointer to their model, and so its strand.
            model->home->post([model] { ++model->plain; });
            strand("modulegroup")->post([model] { ++model->plain; });
        });
        for (int i = 0; i < 50; ++i) {
            standin::Terminal terminal;
            strand("other")->post([] {});
        }
    }
    standin::Terminal terminal;
    terminal.strands.waitIdle();
}

TEST(ConcurrentStrands, shouldNotDeadlockWhenTwoTasksResetAtOnce)
{
    for (int i = 0; i < 50; ++i) {
        std::latch met(2);
        std::latch done(2);
        for (const char* const name : {"a", "b"}) {
            strand(name)->post([&met, &done] {
                met.arrive_and_wait();
                try {
                    standin::Terminal terminal;
                } catch (const std::logic_error&) {
                    // The other one was first.
                }
                done.count_down();
            });
        }
        done.wait();
        standin::Terminal terminal;
    }
}

TEST(ConcurrentStrands, shouldRunEveryTaskOnceWhenPostedByOthersWhileDrainedByHand)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    constexpr int kTasks = 2000;
    int ran = 0;
    std::atomic<int> working{3};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < kTasks; ++i)
                strand("s")->post([&ran] { ++ran; });
            --working;
        });
    }
    while (working > 0)
        terminal.strands.drain("s");
    for (std::thread& thread : threads)
        thread.join();
    terminal.strands.drain("s");
    EXPECT_EQ(ran, 3 * kTasks);
}

TEST(ConcurrentStrands, shouldRunOneTaskAtATimeWhenSeveralThreadsDrain)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    int ran = 0;
    for (int i = 0; i < 5000; ++i)
        strand("s")->post([&ran] { ++ran; });
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back([&] { terminal.strands.drain("s"); });
    for (std::thread& thread : threads)
        thread.join();
    terminal.strands.drain("s");
    EXPECT_EQ(ran, 5000);
}
