// Threads that meet in the data layer: whoever stops, subscribes, watches or changes the pace, and its own.

#include "recording/datalayer.h"

#include "recording/pace.h"
#include "tests/recording/builders.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <semaphore>
#include <thread>

using namespace recording;
using namespace recording_test;

namespace {

TC::CFormulaParam request()
{
    TC::CFormulaParam param;
    param.market = "SZ";
    param.stockCode = "000001";
    param.endTime = quoter::TimeSeq::TIME_LASTED;
    return param;
}

std::shared_ptr<const RecordedDay> longDay(int events, __int64 apart = 1)
{
    DayBuilder builder;
    for (int i = 0; i < events; ++i) {
        if (i % 10 == 9)
            builder.snapshot(i * apart, 10, i);
        else
            builder.order(i * apart, 10, 100, i);
    }
    return builder.share();
}

DeliveryOptions live(double speed)
{
    DeliveryOptions options;
    options.history = HistoryPoint::nothing();
    options.speed = speed;
    return options;
}

constexpr double kFast = DeliveryOptions::kAsFastAsPossible;
constexpr __int64 kHour = 3600 * 1000;

} // namespace

TEST(DataLayerThreads, shouldStopAtOnceWhenTheNextRecordIsFarOff)
{
    std::binary_semaphore first(0);
    std::atomic<int> pushed = 0;
    DataLayer layer(longDay(5, kHour), live(1));
    layer.subscribe(request(), Stream::Orders, [&](int kind, const RecordBatch&) {
        if (kind == 1 && ++pushed == 1)
            first.release();
    });
    layer.start();
    first.acquire(); // the next one is an hour away
    layer.stop();
    EXPECT_EQ(pushed, 1);
    EXPECT_FALSE(layer.waitUntilDelivered());
}

TEST(DataLayerThreads, shouldStopWhenToldFromWithinACallback)
{
    std::atomic<int> calls = 0;
    DataLayer layer(longDay(1000), live(kFast));
    layer.subscribe(request(), Stream::Orders, [&](int, const RecordBatch&) {
        if (++calls == 5)
            layer.stop();
    });
    layer.start();
    EXPECT_FALSE(layer.waitUntilDelivered());
    layer.stop();
    EXPECT_EQ(calls, 5);
    EXPECT_LT(layer.delivered(), layer.total());
}

TEST(DataLayerThreads, shouldWaitForARunningCallbackWhenDestroyed)
{
    std::binary_semaphore inside(0);
    std::binary_semaphore goOn(0);
    std::atomic<bool> done = false;
    auto layer = std::make_unique<DataLayer>(longDay(1000), live(kFast));
    layer->subscribe(request(), Stream::Orders, [&](int kind, const RecordBatch&) {
        if (kind != 0)
            return;
        inside.release();
        goOn.acquire();
        done = true;
    });
    layer->start();
    inside.acquire();
    auto destroyed = std::async(std::launch::async, [&] { layer.reset(); });
    goOn.release();
    destroyed.get();
    EXPECT_TRUE(done);
}

TEST(DataLayerThreads, shouldWaitForARunningCallbackWhenUnsubscribing)
{
    std::binary_semaphore inside(0);
    std::binary_semaphore goOn(0);
    std::atomic<bool> done = false;
    DataLayer layer(longDay(10), live(kFast));
    const int id = layer.subscribe(request(), Stream::Orders, [&](int kind, const RecordBatch&) {
        if (kind != 0)
            return;
        inside.release();
        goOn.acquire();
        done = true;
    });
    layer.start();
    inside.acquire();
    auto gone = std::async(std::launch::async, [&] {
        layer.unsubscribe(id);
        return done.load();
    });
    goOn.release();
    EXPECT_TRUE(gone.get());
    EXPECT_TRUE(layer.waitUntilDelivered());
}

TEST(DataLayerThreads, shouldNotCallAgainWhenUnsubscribedFromAnotherThread)
{
    DataLayer layer(longDay(20000), live(kFast));
    std::binary_semaphore running(0);
    std::atomic<bool> gone = false;
    std::atomic<int> lateCalls = 0;
    std::atomic<int> calls = 0;
    const int id = layer.subscribe(request(), Stream::Orders, [&](int, const RecordBatch&) {
        if (gone)
            ++lateCalls;
        if (++calls == 10)
            running.release();
    });
    layer.start();
    running.acquire();
    layer.unsubscribe(id);
    gone = true;
    EXPECT_TRUE(layer.waitUntilDelivered());
    EXPECT_EQ(lateCalls, 0);
}

TEST(DataLayerThreads, shouldNeitherLoseNorRepeatARecordWhenSubscribersComeAtAnyTime)
{
    constexpr int kSubscribers = 20;
    const auto day = longDay(5000);
    DataLayer layer(day, live(kFast));
    std::vector<std::vector<__int64>> received(kSubscribers);
    const auto subscribe = [&](std::size_t i) {
        layer.subscribe(request(), Stream::Snapshots, [&received, i](int, const RecordBatch& records) {
            for (const auto& record : records)
                received[i].push_back(record->timetag);
        });
    };
    layer.start();
    std::thread other([&] {
        for (std::size_t i = 0; i < kSubscribers / 2; ++i)
            subscribe(i);
    });
    for (std::size_t i = kSubscribers / 2; i < kSubscribers; ++i)
        subscribe(i);
    other.join();
    EXPECT_TRUE(layer.waitUntilDelivered());

    std::vector<__int64> everything;
    for (const Event& event : day->events) {
        if (event.stream == Stream::Snapshots)
            everything.push_back(event.record->timetag);
    }
    for (const auto& one : received)
        EXPECT_EQ(one, everything);
}

TEST(DataLayerThreads, shouldShowProgressThatNeverFallsWhenDelivering)
{
    DataLayer layer(longDay(5000), live(kFast));
    layer.subscribe(request(), Stream::Orders, [](int, const RecordBatch&) {});
    layer.start();
    std::size_t last = 0;
    while (last < layer.total()) {
        const std::size_t now = layer.delivered();
        ASSERT_GE(now, last);
        last = now;
    }
    EXPECT_EQ(last, 5000u);
}

TEST(DataLayerThreads, shouldGoOnWhenThePaceIsRaised)
{
    std::atomic<int> pushed = 0;
    DataLayer layer(longDay(5, kHour), live(0));
    layer.subscribe(request(), Stream::Orders, [&](int kind, const RecordBatch&) { pushed += kind == 1; });
    layer.start();
    EXPECT_EQ(pushed, 0) << "paused";
    layer.setSpeed(1); // an hour to the second record
    layer.setSpeed(kFast);
    EXPECT_TRUE(layer.waitUntilDelivered());
    EXPECT_EQ(pushed, 5);
}

TEST(DataLayerThreads, shouldNotDeliverBeforeTheTimeWhenTheSpeedIsLimited)
{
    using Clock = std::chrono::steady_clock;
    DataLayer layer(longDay(5, 1000), live(100)); // four seconds in 40 ms
    layer.subscribe(request(), Stream::Orders, [](int, const RecordBatch&) {});
    const auto begin = Clock::now();
    layer.start();
    EXPECT_TRUE(layer.waitUntilDelivered());
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(40));
}

TEST(DataLayerThreads, shouldStopWhenManyThreadsAskAtOnce)
{
    DataLayer layer(longDay(2000), live(kFast));
    layer.subscribe(request(), Stream::Orders, [](int, const RecordBatch&) {});
    layer.start();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] { layer.stop(); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_LE(layer.delivered(), layer.total());
}

TEST(Pace, shouldScaleTheDaysTimeWhenASpeedIsSet)
{
    using std::chrono::milliseconds;
    Pace pace(10);
    const auto begin = pace.due(1000);
    EXPECT_EQ(pace.due(1000), begin);
    EXPECT_EQ(pace.due(3000) - begin, milliseconds(200));
    EXPECT_EQ(pace.due(500), begin) << "a record of the past is due";
    EXPECT_GT(pace.due(std::numeric_limits<__int64>::max()), begin + std::chrono::hours(24));

    pace.passed(3000);
    pace.setSpeed(2);
    const auto again = pace.due(3000);
    EXPECT_EQ(pace.due(4000) - again, milliseconds(500));
    EXPECT_TRUE(Pace(0).isPaused());
    EXPECT_TRUE(Pace(-1).isPaused());
    EXPECT_FALSE(Pace(kFast).hasLimit());
}
