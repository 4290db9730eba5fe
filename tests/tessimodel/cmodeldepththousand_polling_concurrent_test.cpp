#include "indexui/tessimodel/liveread.h"
#include "tests/tessimodel/modelstress.h"
#include "tests/tessimodel/thousandmodel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <future>
#include <thread>

namespace {

using namespace tests;

// A panel that polls without rest while another thread does the strand's work.
using ThousandPolling = ThousandTest;

TEST_F(ThousandPolling, shouldShowEverySnapshotWhenPanelPollsMeanwhile)
{
    feed.begin({order(1).buy(10.00).shares(300).time("09:30:00")});
    readBook(model);
    const __int64 begin = timeOf("09:30:01");
    const auto hands = [](int round) { return 10 + round; };
    const auto work = [&](int round) {
        const std::shared_ptr<quoter::QuoterDepthData> record = level2().bid(10.00, hands(round));
        record->timetag = begin + round;
        model.doQuoter(0, live, batchFor("SZ", "000001", {record}));
    };
    const auto poll = [&](int round) {
        const BookReading reading = readBook(model);
        return reading.updated && TC::readLive(reading.bids.back()->volume) == hands(round);
    };
    EXPECT_EQ(missedRounds(60'000, work, poll), 0);
}

TEST_F(ThousandPolling, shouldShowEveryLastPriceWhenPanelPollsMeanwhile)
{
    feed.begin({order(1).buy(10.00).shares(900'000'000).time("09:30:00")});
    feed.snapshots(live, {level2("09:29:00").volume(1).bid(10)});
    readBook(model);
    const auto price = [](int round) { return 100.0 + round; };
    const auto work = [&](int round) {
        model.doTransaction(0, live, batchFor("SZ", "000001", {fill(1, round + 10).at(price(round)).shares(500)}));
    };
    const auto poll = [&](int round) {
        const BookReading reading = readBook(model);
        return reading.updated && std::abs(reading.lastPrice - price(round)) < 0.5;
    };
    EXPECT_EQ(missedRounds(5'000, work, poll), 0);
}

TEST_F(ThousandPolling, shouldGiveLastVolumeInHandsOnlyWhenTradesAreLive)
{
    feed.begin({order(1).buy(10.00).shares(900'000'000)});
    std::atomic<bool> stop{false};
    int inShares = 0;
    std::thread panel([&] {
        while (!stop)
            inShares += model.m_tickLastVolume == 500;
    });
    for (int seq = 2; seq < 5'000; ++seq)
        model.doTransaction(0, live, batchFor("SZ", "000001", {fill(1, seq).at(10).shares(500)}));
    stop = true;
    panel.join();
    EXPECT_EQ(inShares, 0);
    EXPECT_EQ(model.m_tickLastVolume, 5);
}

TEST_F(ThousandPolling, shouldReadTheUnitSafelyWhenInstrumentIsSetUpMeanwhile)
{
    feed.begin({order(1).buy(10.00).shares(900'000'000)});
    std::thread strand([&] {
        for (int seq = 2; seq < 5'000; ++seq)
            model.doTransaction(0, live, batchFor("SZ", "000001", {fill(1, seq).at(10).shares(500)}));
    });
    for (int i = 0; i < 1'000; ++i)
        model.initStockParams();
    strand.join();
    EXPECT_EQ(model.m_tickLastVolume, 5);
}

TEST_F(ThousandPolling, shouldTakeALivePushAtOnceWhenAPanelReads)
{
    feed.begin();
    boost::unique_lock<boost::recursive_mutex> reading(model.m_mutex);
    auto pushed = std::async(std::launch::async,
                             [&] { model.entrustCallback(0, live, batchFor("SZ", "000001", {order(1).buy(10)})); });
    EXPECT_EQ(pushed.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    reading.unlock();
}

TEST_F(ThousandPolling, shouldLetAPanelInWhenAHistoryIsOnlyKept)
{
    Records orders;
    for (int seq = 1; seq <= 200'000; ++seq)
        orders.push_back(order(seq).buy(10));
    const auto batch = batchFor("SZ", "000001", orders);
    bool sawAPart = false;
    // On a busy machine the panel may sleep through one.
    for (int attempt = 0; attempt < 20 && !sawAPart; ++attempt) {
        std::atomic<bool> finished{false};
        std::thread strand([&] {
            model.doEntrust(0, history, batch);
            finished = true;
        });
        while (!finished && !sawAPart) {
            const boost::unique_lock<boost::recursive_mutex> reading(model.m_mutex);
            sawAPart = !model.m_orders.empty() && model.m_orders.size() < orders.size();
        }
        strand.join();
    }
    EXPECT_TRUE(sawAPart);
}

} // namespace
