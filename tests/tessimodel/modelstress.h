#pragma once

#include "indexui/tessimodel/cmodeldepththousand.h"
#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/endlessday.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <thread>
#include <vector>

namespace tests {

// One model that follows SZ 000001, on strands that run by themselves, and the threads that meet at it.
template <class Model>
class ModelStress : public ::testing::Test {
protected:
    ModelStress()
    {
        terminal.instruments.add(stock("SZ", "000001"));
        terminal.instruments.add(stock("SZ", "000002"));
        model.emplace();
        model->setStock(keyOf("SZ", "000001"));
    }

    ~ModelStress() override
    {
        terminal.strands.waitIdle(); // the queued work holds the model by a plain pointer
        model.reset();
        utils::CSingletonT<TC::CDepthThousandModelManager>::release();
    }

    // Each work has a thread of its own and ends when `stop` is set, which is when the time is over. Meanwhile this
    // thread does what is done round by round.
    void meetUntilTheTimeIsOver(const std::vector<std::function<void()>>& works,
                                const std::function<void(int)>& doRound)
    {
        std::vector<std::thread> threads;
        threads.reserve(works.size());
        for (const auto& work : works)
            threads.emplace_back(work);
        const auto end = std::chrono::steady_clock::now() + stressTime();
        for (int round = 0; std::chrono::steady_clock::now() < end && !HasFailure(); ++round)
            doRound(round);
        stop = true;
        for (std::thread& thread : threads)
            thread.join();
        terminal.strands.waitIdle();
    }

    // Clears the model, and now and then has it follow another instrument for a while.
    void disturb(int round)
    {
        if (round % 5 == 4)
            model->clear();
        if (round % 7 == 6) {
            model->setStock(keyOf("SZ", "000002"));
            model->clear();
            model->setStock(keyOf("SZ", "000001"));
        }
        terminal.log.forget();
    }

    standin::Terminal terminal;
    std::optional<Model> model;
    std::atomic<bool> stop{false};
    std::atomic<int> updates{0};
};

// Lets `work` run for round 1 to `rounds` on a thread of its own. After each round `poll` is called once more, and must
// then have seen what the round brought. Tells how often it had not. A panel that never rests starves the strand where
// other processes want the cores too: after 20 seconds the rounds so far have to do.
inline int missedRounds(int rounds, const std::function<void(int)>& work, const std::function<bool(int)>& poll)
{
    std::atomic<int> asked{0};
    std::atomic<int> finished{0};
    std::atomic<bool> stop{false};
    std::thread strand([&] {
        for (int round = 1; round <= rounds; ++round) {
            while (asked < round && !stop)
                std::this_thread::yield();
            if (stop)
                return;
            work(round);
            finished = round;
        }
    });
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    int missed = 0;
    for (int round = 1; round <= rounds && std::chrono::steady_clock::now() < end; ++round) {
        asked = round;
        bool seen = false;
        while (finished != round)
            seen = poll(round) || seen;
        if (!poll(round) && !seen)
            ++missed;
    }
    stop = true;
    strand.join();
    return missed;
}

} // namespace tests
