#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/support/records.h"
#include "tests/tessimodel/frame/framemodel.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace tests;

// What the frame lets run at once: two threads that deliver, a panel that reads, a third that clears and moves the
// model between instruments, and models that die while their tasks wait.
TEST(FrameConcurrent, shouldLoseNoModelAndNoRowWhenEverythingRunsAtOnce)
{
    constexpr int kRounds = 300;
    FrameModel::destroyed = 0;
    {
        standin::Terminal terminal;
        terminal.instruments.add(stock("SZ", "000001"));
        terminal.instruments.add(stock("SZ", "000002"));
        auto model = boost::make_shared<FrameModel>();
        model->setStock(keyOf("SZ", "000001"));
        const auto batch = batchFor("SZ", "000001", {order(1).buy(10), order(2).buy(10), fill(1, 2)});

        const auto deliver = [&] {
            for (int i = 0; i < kRounds; ++i) {
                model->entrustCallback(0, i % 7 == 0 ? 0 : 3, batch);
                auto shortLived = boost::make_shared<FrameModel>();
                shortLived->setStock(keyOf("SZ", "000001"));
                shortLived->entrustCallback(0, 3, batch);
            }
        };
        std::thread feedA(deliver);
        std::thread feedB(deliver);
        const auto deliverPlain = [&] {
            for (int i = 0; i < kRounds; ++i)
                model->plainCallback(0, 3, batch);
        };
        std::thread feedC(deliverPlain);
        std::thread panel([&] {
            for (int i = 0; i < kRounds; ++i)
                EXPECT_EQ(model->size() % 2, 0) << "rows come two by two";
        });
        std::thread owner([&] {
            for (int i = 0; i < kRounds; ++i) {
                model->clear();
                model->setStock(keyOf("SZ", i % 2 ? "000001" : "000002"));
            }
        });
        for (std::thread* thread : {&feedA, &feedB, &feedC, &panel, &owner})
            thread->join();

        model->setStock(keyOf("SZ", "000001"));
        terminal.strands.waitIdle();
        model->entrustCallback(0, 0, batch);
        terminal.strands.waitIdle();
        EXPECT_EQ(model->size(), 2);
        EXPECT_EQ(model->rowToken.use_count(), 3) << "all other rows are freed";
        EXPECT_EQ(FrameModel::destroyed, 2 * kRounds);
    }
    EXPECT_EQ(FrameModel::destroyed, 2 * kRounds + 1);
}

// However the threads run, what was cleared is freed on the strand that is there for it, never on the thread that
// clears.
TEST(FrameConcurrent, shouldFreeRowsOnAnotherThreadWhenCleared)
{
    standin::Terminal terminal;
    const auto clearing = std::this_thread::get_id();
    std::atomic<int> freedHere{0};
    std::atomic<int> freed{0};
    constexpr int kContainers = 20000;
    for (int i = 0; i < kContainers; ++i) {
        std::vector<std::shared_ptr<int>> rows{std::shared_ptr<int>(new int(i), [&](const int* row) {
            ++(std::this_thread::get_id() == clearing ? freedHere : freed);
            delete row;
        })};
        TC::detail::releaseLater(rows);
        EXPECT_TRUE(rows.empty());
    }
    terminal.strands.waitIdle();
    EXPECT_EQ(freedHere, 0);
    EXPECT_EQ(freed, kContainers);
}

} // namespace
