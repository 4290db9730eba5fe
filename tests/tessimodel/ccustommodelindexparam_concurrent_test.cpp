#include "tests/support/application.h"
#include "tests/support/records.h"
#include "tests/tessimodel/encounter.h"
#include "tests/tessimodel/indexparam.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QMetaType>
#include <QTimer>

#include <array>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <future>
#include <thread>
#include <vector>

namespace {

using namespace tests;

constexpr std::size_t kDataThreads = 4;
constexpr int kRecords = 2000; // of each thread

// Tells ThreadSanitizer that what a data thread did before the end of ondata comes before the slot: the lock that
// orders them is Qt's, which is not instrumented. Data threads go on meanwhile.
class Handover : public QObject {
public:
    void deliver(TC::CCustomModelIndexParam& model, std::size_t thread, const quoter::QuoterBasePtr& record)
    {
        m_begun[thread].fetch_add(1, std::memory_order_relaxed);
        model.ondata(record);
        m_ended[thread].fetch_add(1, std::memory_order_release);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::MetaCall)
            return false;
        for (std::size_t thread = 0; thread < kDataThreads; ++thread) {
            const int begun = m_begun[thread].load(std::memory_order_relaxed);
            while (m_ended[thread].load(std::memory_order_acquire) < begun)
                std::this_thread::yield();
        }
        return false;
    }

private:
    std::array<std::atomic<int>, kDataThreads> m_begun{};
    std::array<std::atomic<int>, kDataThreads> m_ended{};
};

// An index panel on a thread of its own, with an event loop that runs until `redrawn` says that it is enough.
class PanelThread {
public:
    explicit PanelThread(const std::function<bool(const TC::CCustomModelIndexParam&)>& redrawn)
        : m_thread([this, redrawn] { run(redrawn); })
    {
        m_running.get_future().wait();
    }
    ~PanelThread() { end(); }
    PanelThread(const PanelThread&) = delete;
    PanelThread& operator=(const PanelThread&) = delete;

    void deliver(std::size_t thread, const quoter::QuoterBasePtr& record)
    {
        m_handover->deliver(*m_model, thread, record);
    }

    // Lets the panel go, once there is enough or it took too long. Deliveries must have ended.
    void end()
    {
        if (!m_thread.joinable())
            return;
        m_delivered.set_value();
        m_thread.join();
    }

    std::thread::id id() const { return m_id; }

private:
    void run(const std::function<bool(const TC::CCustomModelIndexParam&)>& redrawn)
    {
        m_id = std::this_thread::get_id();
        IndexParam model;
        Handover handover;
        model.installEventFilter(&handover);
        m_model = &model;
        m_handover = &handover;
        QEventLoop loop;
        QObject::connect(&model, &TC::CCustomModelIndexParam::sigReDraw, &model, [&] {
            if (redrawn(model))
                loop.quit();
        });
        QTimer::singleShot(kLong, &loop, &QEventLoop::quit);
        m_running.set_value();
        loop.exec();
        m_delivered.get_future().wait();
    }

    std::promise<void> m_running, m_delivered;
    std::thread::id m_id;
    IndexParam* m_model = nullptr;
    Handover* m_handover = nullptr;
    std::thread m_thread;
};

// Record `number` of a thread: every row but the first tells of both, so that a row of another record is seen.
quoter::QuoterBasePtr recordOf(std::size_t thread, int number)
{
    const double base = static_cast<double>(thread) * kRecords;
    return level1().last(number).lastClose(base).open(base + number).high(base + number + 1).volume(number);
}

// What arrived on the panel's thread.
struct Arrivals {
    std::array<int, kDataThreads> next{}; // number expected of each data thread
    int count = 0;
    int elsewhere = 0;  // slots on another thread
    int outOfOrder = 0; // records before their turn, or after
    int torn = 0;       // rows of different records

    void add(const TC::CCustomModelIndexParam& model)
    {
        const auto& rows = model.m_rows;
        const double number = rows[0].value;
        const double base = rows[2].value;
        const auto thread = static_cast<std::size_t>(base) / kRecords;
        outOfOrder += next[thread]++ != static_cast<int>(number);
        torn += rows[1].value != base + number || rows[3].value != number - base || rows[6].value != number ||
                rows[8].value != base + number + 1;
        ++count;
    }
};

TEST(IndexParamConcurrent, shouldFillRowsOnItsOwnThreadWhenSeveralDataThreadsDeliver)
{
    const Application application;
    Arrivals arrivals;
    std::atomic<std::thread::id> own;
    PanelThread panel([&](const TC::CCustomModelIndexParam& model) {
        arrivals.elsewhere += std::this_thread::get_id() != own.load();
        arrivals.add(model);
        return arrivals.count == static_cast<int>(kDataThreads) * kRecords;
    });
    own = panel.id();
    std::vector<std::thread> dataThreads;
    for (std::size_t thread = 0; thread < kDataThreads; ++thread) {
        dataThreads.emplace_back([&panel, thread] {
            for (int number = 0; number < kRecords; ++number)
                panel.deliver(thread, recordOf(thread, number));
        });
    }
    for (std::thread& thread : dataThreads)
        thread.join();
    panel.end();
    EXPECT_EQ(arrivals.count, static_cast<int>(kDataThreads) * kRecords);
    for (const int next : arrivals.next)
        EXPECT_EQ(next, kRecords);
    EXPECT_EQ(arrivals.elsewhere, 0);
    EXPECT_EQ(arrivals.outOfOrder, 0);
    EXPECT_EQ(arrivals.torn, 0);
}

// Records of other types travel the same way.
TEST(IndexParamConcurrent, shouldAskForARedrawOnItsOwnThreadWhenRecordIsOfAnotherType)
{
    const Application application;
    std::thread::id redrawnOn;
    PanelThread panel([&](const TC::CCustomModelIndexParam& model) {
        redrawnOn = std::this_thread::get_id();
        EXPECT_EQ(rowText(model.m_rows[0]), "0 最新指数 [--] = none, none");
        return true;
    });
    std::thread([&] { panel.deliver(0, level2().last(10)); }).join();
    panel.end();
    EXPECT_EQ(redrawnOn, panel.id());
}

TEST(IndexParamConcurrent, shouldKeepRowsUntilItsOwnThreadTakesTheRecordWhenDataThreadDelivers)
{
    const Application application;
    IndexParam model;
    int redraws = 0;
    QObject::connect(&model, &TC::CCustomModelIndexParam::sigReDraw, [&redraws] { ++redraws; });
    const std::string before = rowsText(model);
    std::thread([&] { model.ondata(level1().last(3100).lastClose(3050)); }).join();
    EXPECT_EQ(rowsText(model), before);
    EXPECT_EQ(redraws, 0);
    QCoreApplication::sendPostedEvents(&model);
    EXPECT_EQ(model.m_rows[0].value, 3100);
    EXPECT_EQ(redraws, 1);
}

TEST(IndexParamConcurrent, shouldLetGoOfRecordsOnTheirWayWhenDestroyed)
{
    const Application application;
    const quoter::QuoterBasePtr record = level1().last(3100);
    int redraws = 0;
    {
        IndexParam model;
        QObject::connect(&model, &TC::CCustomModelIndexParam::sigReDraw, [&redraws] { ++redraws; });
        std::thread([&] {
            for (int i = 0; i < 3; ++i)
                model.ondata(record);
        }).join();
        EXPECT_EQ(record.use_count(), 4);
    }
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(record.use_count(), 1);
    EXPECT_EQ(redraws, 0);
}

// Whether a record reaches the panel's thread in a process in which nobody named the record's type to Qt.
bool reachesThePanelUnprepared()
{
    if (QMetaType::type("quoter::QuoterBasePtr") != QMetaType::UnknownType)
        return false;
    const Application application;
    double shown = 0;
    PanelThread panel([&shown](const TC::CCustomModelIndexParam& model) {
        shown = model.m_rows[0].value;
        return true;
    });
    std::thread([&panel] { panel.deliver(0, level1().last(3100)); }).join();
    panel.end();
    return shown == 3100;
}

TEST(IndexParamConcurrentDeathTest, shouldReachItsThreadWhenNobodyRegisteredTheRecordsType)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process of its own
    EXPECT_EXIT(std::exit(reachesThePanelUnprepared() ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

} // namespace
