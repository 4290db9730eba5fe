#include "Formula/formulaparam.h"
#include "tests/tessimodel/transdistributiontest.h"

#include <pthread.h>
#include <QMutexLocker>

#include <atomic>
#include <future>

// Histories on their threads, and who waits for whom.
namespace {

using namespace tests;

class TransDistributionThreads : public TransDistributionTest {
protected:
    TransDistributionThreads() { follow("SZ", "000001"); }

    // Whether another thread gets the lock at once.
    bool listsAreFree()
    {
        return std::async(std::launch::async,
                          [this] {
                              const bool taken = model.m_mutex.tryLock();
                              if (taken)
                                  model.m_mutex.unlock();
                              return taken;
                          })
            .get();
    }
};

// --- one history --------------------------------------------------------------------------------------------------

// A history keeps the lists from its first record to its last, and tells of them when they are free and whole.
TEST_F(TransDistributionThreads, shouldHoldTheListsUntilItsEndWhenAHistoryRuns)
{
    Gate gate;
    model.m_dateProvider = gate.dateProvider();
    std::atomic<bool> free{false};
    std::atomic<int> ticks{0};
    const std::thread::id caller = std::this_thread::get_id();
    QObject::connect(&model, &TC::CModelTransDistribution::sigRedraw, [&, caller] {
        if (std::this_thread::get_id() == caller)
            return;
        ticks = model.m_ticks.size();
        free = listsAreFree();
    });
    redraws.forget();
    Redraws last; // heard behind the slot above
    last.listenTo(model);
    model.startMore({level1().last(10).volume(5), level1().last(10).volume(7)});
    ASSERT_TRUE(gate.reached());
    EXPECT_FALSE(listsAreFree());
    EXPECT_FALSE(model.init());
    EXPECT_EQ(redraws.text(), "caller busy");
    gate.letOn();
    ASSERT_TRUE(last.reach(2));
    EXPECT_EQ(redraws.text(), "caller busy, thread ready");
    EXPECT_TRUE(free);
    EXPECT_EQ(ticks, 2);
}

TEST_F(TransDistributionThreads, shouldFreeTheListsBeforeTheRedrawWhenPushedLive)
{
    bool free = false;
    QObject::connect(&model, &TC::CModelTransDistribution::sigRedraw, [&] { free = listsAreFree(); });
    model.live({level1().last(10).volume(5)});
    EXPECT_TRUE(free);
}

// The system cuts the name after 15 bytes.
TEST_F(TransDistributionThreads, shouldNameTheThreadWhenAHistoryStarts)
{
    Gate named;
    std::string name;
    model.m_dateProvider = [stop = named.stop(), &name] {
        stop(); // the name is given by the caller, once the thread runs
        char bytes[64] = "";
        pthread_getname_np(pthread_self(), bytes, sizeof bytes);
        name = bytes;
        return 0;
    };
    model.startMore({level1().last(10).volume(5)});
    named.letOn();
    ASSERT_TRUE(becomesReady(model));
    EXPECT_EQ(name, "modelTransDistr");
    char own[64] = "";
    pthread_getname_np(pthread_self(), own, sizeof own);
    EXPECT_STRNE(own, "modelTransDistr");
}

TEST_F(TransDistributionThreads, shouldWaitForTheListsWhenAHistoryHasThem)
{
    expectToWait(model.m_mutex, {[this] { model.live({level1().last(10).volume(5)}); }});
    expectToWait(model.m_mutex, {[this] { model.quoterCallBack(0, 2, {level1().last(10).volume(6)}); }});
    expectToWait(model.m_mutex, {[this] { model.quoterCallBack(0, 1, {}); }});
    EXPECT_EQ(sumsText(model), "all 6 max 6");
    expectToWait(model.m_mutex, {[this] { model.setStock(keyOf("SZ", "000001")); }});
    expectToWait(model.m_mutex, {[this] { model.startHistory({}); }});
    expectToWait(model.m_mutex, {[this] { model.clear(); }});
    expectToWait(model.m_mutex, {[this] { model.quoterCallBackThread({}); }});
}

TEST_F(TransDistributionThreads, shouldNotWaitForTheListsWhenItDoesNotNeedThem)
{
    Gate gate;
    model.m_dateProvider = gate.dateProvider();
    model.startMore({level1().last(10).volume(5)});
    ASSERT_TRUE(gate.reached());
    const auto free = start([this] {
        EXPECT_FALSE(model.init());
        TC::CFormulaParam param;
        model.getParams(param);
        model.quoterCallBack(0, -1, {});
        model.quoterCallBack(0, 4, {level1().last(10).volume(9)});
        model.startMore({level1().last(10).volume(7)});
    });
    EXPECT_EQ(free.wait_for(kLong), std::future_status::ready);
    gate.letOn();
    ASSERT_TRUE(becomesReady(model));
    EXPECT_EQ(sumsText(model), "all 7 max 7");
}

// --- live pushes and set-up during a history ----------------------------------------------------------------------

TEST_F(TransDistributionThreads, shouldAddALivePushBehindTheHistoryWhenItArrivesMeanwhile)
{
    Gate gate;
    model.m_dateProvider = gate.dateProvider();
    model.startHistory({level1().last(10).volume(5), level1().last(10).volume(6), level1().last(10).volume(7)});
    ASSERT_TRUE(gate.reached());
    std::atomic<int> pushed{0};
    const auto pushes = start([this, &pushed] {
        for (int volume = 8; volume <= 10; ++volume) {
            model.live({level1().last(11).volume(volume)});
            ++pushed;
        }
    });
    EXPECT_EQ(pushes.wait_for(kShort), std::future_status::timeout);
    EXPECT_EQ(pushed, 0) << "the first one waits for the history";
    EXPECT_FALSE(model.init());
    gate.letOn();
    ASSERT_EQ(pushes.wait_for(kLong), std::future_status::ready);
    ASSERT_TRUE(becomesReady(model));
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n"
                                "10 +1 of 6 B\n"
                                "10 +1 of 7 B\n"
                                "11 +1 of 8 B\n"
                                "11 +1 of 9 B\n"
                                "11 +1 of 10 B\n");
}

TEST_F(TransDistributionThreads, shouldAddNothingButStillEndWhenTheInstrumentIsGoneBeforeAHistoryBegins)
{
    {
        const QMutexLocker held(&model.m_mutex);
        model.startMore({level1().last(10).volume(5), level2().last(10).volume(6)});
        model.setStock("nobody");
    }
    ASSERT_TRUE(redraws.reach(2));
    EXPECT_EQ(redraws.text(), "caller busy, thread ready");
    EXPECT_EQ(ticksText(model), "");
    EXPECT_EQ(sumsText(model), "all 0 max 0");
}

TEST_F(TransDistributionThreads, shouldWorkByTheNewInstrumentWhenItMovedBeforeAHistoryBegins)
{
    {
        const QMutexLocker held(&model.m_mutex);
        model.startMore({level1().last(10).volume(0), level1().last(11).volume(5)});
        followIndex();
    }
    ASSERT_TRUE(becomesReady(model));
    EXPECT_EQ(ticksText(model), "10 +0 of 0 S\n"
                                "11 +5 of 5 B\n");
}

// The sums go before the lists do: those of a history that is still running come after, and stay. The pending ticks go
// last.
TEST_F(TransDistributionThreads, shouldKeepTheSumsOfARunningHistoryWhenClearedMeanwhile)
{
    Gate gate;
    model.m_dateProvider = gate.dateProvider();
    model.m_totalVolume = 70;
    model.m_maxVolume = 80;
    model.m_pending.append({10, 5, 5, true});
    model.startMore({level1().last(10).volume(5), level1().last(11).volume(7)});
    ASSERT_TRUE(gate.reached());
    const auto cleared = start([this] { model.clear(); });
    const auto end = std::chrono::steady_clock::now() + kLong;
    while (sumsText(model) != "all 0 max 0" && std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
    EXPECT_EQ(sumsText(model), "all 0 max 0") << "before the history lets go of the lists";
    EXPECT_EQ(cleared.wait_for(kShort), std::future_status::timeout);
    EXPECT_EQ(model.m_pending.size(), 1);
    gate.letOn();
    ASSERT_EQ(cleared.wait_for(kLong), std::future_status::ready);
    ASSERT_TRUE(becomesReady(model));
    EXPECT_EQ(ticksText(model), "");
    EXPECT_EQ(pricesText(model), "");
    EXPECT_EQ(sumsText(model), "all 7 max 5");
    EXPECT_TRUE(model.m_pending.isEmpty());
}

// --- several histories --------------------------------------------------------------------------------------------

TEST_F(TransDistributionThreads, shouldHoldAllRecordsWhenThreeHistoriesFollowEachOtherQuickly)
{
    followIndex(); // whose ticks without volume stay
    constexpr int kBatches = 3;
    constexpr int kRecords = 200;
    {
        const QMutexLocker held(&model.m_mutex);
        for (int batch = 0; batch < kBatches; ++batch) {
            Records records;
            for (int i = 0; i < kRecords; ++i)
                records.push_back(level1().last(3000 + batch).volume(i));
            model.startMore(records);
        }
        EXPECT_EQ(redraws.text(), "caller busy, caller busy, caller busy");
    }
    ASSERT_TRUE(redraws.reach(6));
    EXPECT_TRUE(model.init());
    EXPECT_EQ(model.m_ticks.size(), kBatches * kRecords);
    // In whatever order they got the lists, each had them to itself.
    for (int i = 0; i < kBatches * kRecords; ++i) {
        EXPECT_EQ(model.m_ticks[i].totalVolume, i % kRecords);
        EXPECT_EQ(model.m_ticks[i].price, model.m_ticks[i / kRecords * kRecords].price);
    }
    EXPECT_EQ(model.m_prices.size(), kBatches);
}

// Each thread asks for a redraw at its end, and only the last one is ready.
TEST_F(TransDistributionThreads, shouldBeReadyOnlyWhenTheLastOfThreeHistoriesEnds)
{
    Gate gate;
    model.m_dateProvider = gate.dateProvider();
    const Records batch{level1().last(10).volume(-1)}; // asks for the date, and leaves no tick
    for (int i = 0; i < 3; ++i)
        model.startMore(batch);
    std::string expected = "caller busy, caller busy, caller busy";
    for (int ended = 1; ended <= 3; ++ended) {
        ASSERT_TRUE(gate.reached(ended));
        EXPECT_FALSE(model.init());
        EXPECT_EQ(redraws.text(), expected);
        gate.letOn();
        ASSERT_TRUE(redraws.reach(3U + static_cast<unsigned>(ended)));
        expected += ended < 3 ? ", thread busy" : ", thread ready";
        EXPECT_EQ(redraws.text(), expected);
    }
    EXPECT_TRUE(model.init());
}

TEST_F(TransDistributionThreads, shouldReplaceTheRunningHistoryWhenAnotherFirstOneArrives)
{
    Gate gate;
    model.m_dateProvider = gate.dateProvider();
    model.startHistory({level1().last(10).volume(5), level1().last(10).volume(6)});
    ASSERT_TRUE(gate.reached());
    const auto second = start([this] { model.startHistory({level1().last(11).volume(3)}); });
    EXPECT_EQ(second.wait_for(kShort), std::future_status::timeout) << "it waits to empty the list";
    gate.letOn(2);
    ASSERT_EQ(second.wait_for(kLong), std::future_status::ready);
    ASSERT_TRUE(becomesReady(model));
    EXPECT_EQ(ticksText(model), "11 +3 of 3 S\n");
}

} // namespace
