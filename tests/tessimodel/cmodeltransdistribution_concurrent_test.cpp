#include "indexui/tessimodel/detail/qtlock.h"
#include "standin/terminal.h"
#include "tests/support/application.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/transdistribution.h"

#include <gtest/gtest.h>
#include <QCoreApplication>

#include <algorithm>
#include <atomic>
#include <climits>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

namespace {

using namespace tests;

constexpr int kRounds = 60;

// A snapshot of a day whose price swings by a few steps.
quoter::QuoterBasePtr snapshot(int volume)
{
    return level1().last(10 + 0.01 * (volume * 7 % 11)).volume(volume);
}

Records snapshots(int from, int count)
{
    Records records;
    for (int i = 0; i < count; ++i)
        records.push_back(snapshot(from + i));
    return records;
}

// What the lists say of themselves: "ok", or what does not fit. Ticks and rows tell of the same volume, and rows stand
// in descending order.
std::string faultOf(const TC::CModelTransDistribution& model)
{
    int ofTicks = 0;
    for (const auto& tick : model.m_ticks)
        ofTicks += tick.volume;
    int ofRows = 0;
    double above = INT_MAX;
    for (const auto& row : model.m_prices) {
        if (row.buyVolume + row.sellVolume != row.totalVolume)
            return "the sides of a row are not the row";
        if (row.price >= above)
            return "rows are out of order";
        above = row.price;
        ofRows += row.totalVolume;
    }
    return ofTicks == ofRows ? "ok" : fmt::format("ticks of {}, rows of {}", ofTicks, ofRows);
}

// That the sums are those of the lists.
std::string faultOfSums(const TC::CModelTransDistribution& model)
{
    int all = 0;
    int largest = 0;
    for (const auto& row : model.m_prices) {
        all += row.totalVolume;
        largest = std::max(largest, row.totalVolume);
    }
    const std::string expected = fmt::format("all {} max {}", all, largest);
    return sumsText(model) == expected ? "ok" : sumsText(model) + ", not " + expected;
}

// A panel's thread: it makes all calls, and hears the redraws in its event loop.
class TransDistributionConcurrent : public ::testing::Test {
protected:
    TransDistributionConcurrent()
    {
        terminal.instruments.add(stock("SZ", "000001"));
        terminal.instruments.add(stock("SH", "688001", {277}));
        auto index = stock("SH", "000001");
        index.isIndex = true;
        terminal.instruments.add(index);
        model.m_dateProvider = [this] { return ++asked; };
        model.setStock(keyOf("SZ", "000001"));
    }

    void call(int kind, const Records& records)
    {
        if (model.m_stock)
            redraws += kind == 0 ? 3 : kind == 3 ? 2 : 1;
        model.quoterCallBack(0, kind, records);
    }

    // Calls of all kinds, one after the other.
    void callRound(int round)
    {
        static const QString keys[] = {keyOf("SZ", "000001"), keyOf("SH", "688001"), keyOf("SH", "000001"), "nobody"};
        const int from = round * 1000 + 1;
        call(0, snapshots(from, 300));
        call(1, {snapshot(from + 320)});
        call(3, snapshots(from + 330, 100));
        call(3, snapshots(from + 500, 100));
        QCoreApplication::processEvents();
        call(2, {nullptr, snapshot(from + 700)});
        call(4, {});
        if (round % 3 == 0)
            model.setStock(keys[round / 3 % 4]);
        call(3, snapshots(from + 800, 50));
        call(1, {snapshot(from + 900)});
        if (round % 5 == 0)
            model.clear();
        call(3, {});
        if (round % 4 == 0)
            model.setStock(keys[0]);
        QCoreApplication::processEvents();
    }

    // Rounds until there were many, and the other thread has seen enough or it took too long.
    void callUntil(const std::function<bool()>& enough)
    {
        const auto end = std::chrono::steady_clock::now() + kLong;
        for (int round = 0; round < kRounds || (!enough() && std::chrono::steady_clock::now() < end); ++round)
            callRound(round % kRounds);
        EXPECT_TRUE(enough());
        settle();
    }

    // Takes care that no more redraws are on their way.
    void settle()
    {
        const auto end = std::chrono::steady_clock::now() + kLong;
        while (heard < redraws && std::chrono::steady_clock::now() < end)
            QCoreApplication::processEvents();
        EXPECT_TRUE(becomesReady(model));
    }

    const Application application;
    standin::Terminal terminal;
    std::atomic<int> asked{0};
    int redraws = 0; // that the calls so far ask for
    int heard = 0;
    TransDistribution model;
};

// The lists need no lock then: everything is done.
TEST_F(TransDistributionConcurrent, shouldShowWholeListsWhenThePanelReadsOnItsRedraws)
{
    int read = 0;
    const std::thread::id panel = std::this_thread::get_id();
    QObject receiver;
    // As panels connect: at once where the panel itself calls, through its event loop where a thread does.
    QObject::connect(&model, &TC::CModelTransDistribution::sigRedraw, &receiver, [&] {
        ++heard;
        EXPECT_EQ(std::this_thread::get_id(), panel);
        if (!model.init())
            return;
        ++read;
        EXPECT_EQ(faultOf(model), "ok");
    });
    for (int round = 0; round < kRounds; ++round)
        callRound(round);
    settle();
    EXPECT_EQ(heard, redraws);
    EXPECT_GT(read, 0);
    EXPECT_GT(asked, 0);
}

TEST_F(TransDistributionConcurrent, shouldEndWithTheSumsOfTheListsWhenHistoriesAndLivePushesMeet)
{
    QObject receiver;
    QObject::connect(
        &model, &TC::CModelTransDistribution::sigRedraw, &receiver, [&] { ++heard; }, Qt::QueuedConnection);
    for (int round = 0; round < kRounds; ++round) {
        callRound(round);
        settle();
        model.setStock(keyOf("SZ", "000001"));
        call(0, snapshots(1, 200)); // from now on nothing is emptied while a history runs
        call(3, snapshots(300, 200));
        call(1, {snapshot(600)});
        call(3, snapshots(700, 200));
        settle();
        ASSERT_EQ(faultOf(model), "ok");
        ASSERT_EQ(faultOfSums(model), "ok");
    }
}

TEST_F(TransDistributionConcurrent, shouldShowWholeListsWhenAnotherThreadReadsUnderTheLock)
{
    QObject receiver;
    QObject::connect(
        &model, &TC::CModelTransDistribution::sigRedraw, &receiver, [&] { ++heard; }, Qt::QueuedConnection);
    std::atomic<bool> done{false};
    std::atomic<int> seen{0}; // different numbers of ticks
    std::string fault = "ok";
    const auto reading = start([&] {
        int before = -1;
        while (!done && fault == "ok") {
            {
                const TC::detail::QtLock lock(model.m_mutex);
                fault = faultOf(model);
                seen += std::exchange(before, model.m_ticks.size()) != before;
            }
            std::this_thread::yield();
        }
    });
    callUntil([&seen] { return seen > 2; });
    done = true;
    reading.wait();
    EXPECT_EQ(fault, "ok");
}

// A reader that polls init() and the sums, which are for every thread. Whether it may is for ThreadSanitizer to tell:
// no sum of these days is below 0, however they are read.
TEST_F(TransDistributionConcurrent, shouldTellSumsAndReadinessWhenAnotherThreadPollsWithoutTheLock)
{
    QObject receiver;
    QObject::connect(
        &model, &TC::CModelTransDistribution::sigRedraw, &receiver, [&] { ++heard; }, Qt::QueuedConnection);
    std::atomic<bool> done{false};
    std::atomic<int> busy{0};
    const auto polling = start([&] {
        while (!done) {
            busy += !model.init();
            EXPECT_GE(model.m_maxVolume, 0);
            EXPECT_GE(model.m_totalVolume, 0);
            std::this_thread::yield();
        }
    });
    callUntil([&busy] { return busy > 0; });
    done = true;
    polling.wait();
}

// An owner that waits for init() only: the thread's last redraw is behind it at the latest when the model is gone.
TEST_F(TransDistributionConcurrent, shouldHaveAskedForEveryRedrawWhenDestroyedAsSoonAsItIsReady)
{
    for (int round = 0; round < kRounds * 5; ++round) {
        auto brief = std::make_unique<TransDistribution>();
        auto asks = std::make_unique<int>(0); // by the caller before, by the threads one after the other
        std::mutex counting;
        brief->setStock(keyOf("SZ", "000001"));
        QObject::connect(brief.get(), &TC::CModelTransDistribution::sigRedraw, [&counting, count = asks.get()] {
            const std::lock_guard lock(counting);
            ++*count;
        });
        const int histories = 1 + round % 3;
        for (int i = 0; i < histories; ++i)
            brief->startMore(snapshots(1 + i * 10, 5));
        ASSERT_TRUE(becomesReady(*brief));
        brief.reset();
        ASSERT_EQ(*asks, 2 * histories);
    }
}

} // namespace
