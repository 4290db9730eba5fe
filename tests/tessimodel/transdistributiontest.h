#pragma once

#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/transdistribution.h"

#include <boost/function.hpp>
#include <gtest/gtest.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace tests {

// The redraws that a model asked for. Made before the model, since a history thread may still be asking.
class Redraws {
public:
    void listenTo(const TC::CModelTransDistribution& model)
    {
        QObject::connect(&model, &TC::CModelTransDistribution::sigRedraw, [this, &model] { add(model.init()); });
    }

    // Waits until there were that many; false when they do not come.
    bool reach(std::size_t count)
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, kLong, [&] { return m_redraws.size() >= count; });
    }

    // "caller ready, caller busy, thread ready": asked for on which thread, and what init() said.
    std::string text()
    {
        const std::lock_guard lock(m_mutex);
        std::string text;
        for (const std::string& redraw : m_redraws)
            text += (text.empty() ? "" : ", ") + redraw;
        return text;
    }

    void forget()
    {
        const std::lock_guard lock(m_mutex);
        m_redraws.clear();
    }

private:
    void add(bool ready)
    {
        const std::lock_guard lock(m_mutex);
        m_redraws.push_back(std::string(std::this_thread::get_id() == m_caller ? "caller" : "thread") +
                            (ready ? " ready" : " busy"));
        m_changed.notify_all();
    }

    const std::thread::id m_caller = std::this_thread::get_id();
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<std::string> m_redraws;
};

// A place where other threads stop until they are let on.
class Gate {
public:
    ~Gate() { letOn(1000); } // nobody is left behind by a test that failed
    Gate() = default;
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    // Waits until a thread has stopped here for the `times`-th time; false when that does not come.
    bool reached(int times = 1)
    {
        std::unique_lock lock(m_state->mutex);
        return m_state->changed.wait_for(lock, kLong, [&] { return m_state->stops >= times; });
    }

    void letOn(int passes = 1)
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->passes += passes;
        m_state->changed.notify_all();
    }

    // What a thread calls to stop here. May outlive the gate.
    boost::function<void()> stop() const
    {
        return [state = m_state] {
            std::unique_lock lock(state->mutex);
            ++state->stops;
            state->changed.notify_all();
            state->changed.wait(lock, [&] { return state->passes > 0; });
            --state->passes;
        };
    }

    // As a date provider: a history stops at its first tick, with the lists locked.
    boost::function<int()> dateProvider() const
    {
        return [stop = stop()] {
            stop();
            return 0;
        };
    }

private:
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        int stops = 0;
        int passes = 0;
    };
    const std::shared_ptr<State> m_state = std::make_shared<State>();
};

// A distribution and the terminal that it stands in.
class TransDistributionTest : public ::testing::Test {
protected:
    TransDistributionTest() { redraws.listenTo(model); }
    ~TransDistributionTest() override { EXPECT_TRUE(becomesReady(model)); }

    void follow(const std::string& market, const std::string& code, const std::set<int>& types = {})
    {
        terminal.instruments.add(stock(market, code, types));
        model.setStock(keyOf(market, code));
    }

    void followWithTick(double priceTick)
    {
        auto description = stock("SZ", "000001");
        description.priceTick = priceTick;
        terminal.instruments.add(description);
        model.setStock(keyOf("SZ", "000001"));
    }

    void followIndex()
    {
        auto description = stock("SH", "000001");
        description.isIndex = true;
        terminal.instruments.add(description);
        model.setStock(keyOf("SH", "000001"));
    }

    // Histories, to their end.
    void history(const Records& records)
    {
        model.startHistory(records);
        ASSERT_TRUE(becomesReady(model));
    }
    void more(const Records& records)
    {
        model.startMore(records);
        ASSERT_TRUE(becomesReady(model));
    }

    standin::Terminal terminal;
    Redraws redraws;
    TransDistribution model;
};

} // namespace tests
