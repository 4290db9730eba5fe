#include "indexui/tessimodel/liveread.h"
#include "quoter/levelorderdata.h"
#include "tests/tessimodel/modelstress.h"
#include "tests/tessimodel/queuemodel.h"

#include <boost/thread/locks.hpp>

#include <mutex>
#include <thread>

namespace {

using namespace tests;

// Two snapshots that belong together, with a number in every level without a price, which are the ones that rows show:
// as its volume, as the size of each of its orders, and in how many orders there are.
std::shared_ptr<quoter::QuoterDepthData> numbered(std::shared_ptr<quoter::QuoterDepthData> snapshot, int number)
{
    snapshot->bidVolume[9] = snapshot->askVolume[9] = number;
    return snapshot;
}

std::shared_ptr<quoter::LevelOrderData> queuesOf(const quoter::QuoterDepthData& snapshot)
{
    const int number = static_cast<int>(snapshot.bidVolume[9]);
    const std::vector<int> orders(1 + static_cast<std::size_t>(number % 20), number);
    return bestQueuesAt(snapshot.timetag).bid(0, orders).ask(0, orders);
}

// Takes up a level or a row by its own lock, as panels do, and looks whether it is whole. The orders are held beyond
// the lock: the book may go on with them meanwhile, or without them, but not put others in their place.
void expectWhole(TC::OrderQueue& level)
{
    boost::unique_lock<boost::recursive_mutex> lock(level.m_mutex);
    const TC::OrderQueue::Quotes held = level.m_quotes;
    __int64 before = -1;
    for (const auto& [seq, quote] : held) {
        const TC::SingleQuote now = TC::readLive(*quote);
        EXPECT_GT(seq, before);
        EXPECT_LT(now.dealVolume, now.volume);
        before = seq;
    }
    EXPECT_EQ(static_cast<std::size_t>(TC::readLive(level.m_count)), held.size());
    lock.unlock();
    std::this_thread::yield();
    for (const auto& [seq, quote] : held)
        EXPECT_EQ(TC::readLive(*quote).seq, seq) << "an order that a panel holds is not used for another";
}

class QueueConcurrent : public ModelStress<Queue> {
protected:
    void deliverLive()
    {
        EndlessDay day;
        while (!stop) {
            for (int i = 0; i < 100; ++i) {
                model->entrustCallback(0, live, {day.nextOrder()});
                model->transactionCallback(0, live, {day.nextTrade()});
                if (i % 5 == 0)
                    deliverPair(day, live);
            }
            terminal.strands.waitIdle();
        }
    }

    // One after the other on the strand, whoever else delivers.
    void deliverPair(EndlessDay& day, int kind)
    {
        const std::lock_guard<std::mutex> together(m_delivering);
        const auto snapshot = numbered(day.nextSnapshot(), ++number);
        model->quoterCallback(0, kind, {snapshot});
        model->queueCallback(0, kind, {queuesOf(*snapshot)});
    }

    void deliverHistories(int round)
    {
        EndlessDay day;
        const auto [orders, trades, snapshots] = day.nextHistory(200);
        model->entrustCallback(0, round % 4 == 1 ? moreHistory : history, orders);
        model->transactionCallback(0, round % 4 == 2 ? moreHistory : history, trades);
        deliverPair(day, history);
        if (round % 2 == 0)
            terminal.strands.waitIdle();
    }

    void poll()
    {
        while (!stop && !HasFailure()) {
            int flags = 0;
            TC::OrderQueueList bids{nullptr};
            TC::OrderQueueList asks{nullptr};
            if (model->checkUpdate(flags, bids, asks)) {
                ++updates;
                EXPECT_NE(flags, 0);
            }
            EXPECT_LE(bids.size(), 1u);
            EXPECT_EQ(asks.size(), 1u);
            for (int tick = 0; tick < 40; tick += 8)
                readLevel(tick % 16 == 0, 9.80 + 0.01 * tick);
        }
    }

    void readLevel(bool isBid, double price)
    {
        if (const auto level = model->m_book.getLevel(isBid, price)) {
            expectWhole(*level);
            TC::readLive(level->m_volume);
            TC::readLive(level->m_valid);
        }
    }

    // Both sides are of one pair of snapshots.
    void readRows()
    {
        while (!stop && !HasFailure()) {
            boost::unique_lock<boost::recursive_mutex> lock(model->m_mutex);
            const auto bid = model->m_bids[9];
            const auto ask = model->m_asks[9];
            lock.unlock();
            if (!bid)
                continue;
            ++pairs;
            const int shown = static_cast<int>(bid->m_volume);
            for (const auto& row : {bid, ask}) {
                EXPECT_EQ(row->m_volume, shown);
                EXPECT_EQ(row->m_count, 1 + shown % 20);
                EXPECT_EQ(row->m_queueVolume, shown * row->m_count);
                EXPECT_TRUE(row->m_valid);
                expectWhole(*row);
            }
        }
    }

    int number = 0; // of the latest pair
    std::atomic<int> pairs{0};

private:
    std::mutex m_delivering;
};

TEST_F(QueueConcurrent, shouldStayWholeWhenEverythingRunsAtOnce)
{
    const auto panel = [this] { poll(); };
    meetUntilTheTimeIsOver({[this] { deliverLive(); }, panel, panel, [this] { readRows(); }}, [this](int round) {
        deliverHistories(round);
        disturb(round);
    });
    EXPECT_GT(updates, 0);
    EXPECT_GT(pairs, 0);
    for (const auto* levels : {&model->m_book.m_bidLevels, &model->m_book.m_askLevels}) {
        for (const auto& [key, level] : *levels)
            expectWhole(*level);
    }

    model->clear();
    model->entrustCallback(0, history, {order(1).buy(10.00).shares(300), order(2).sell(10.02)});
    model->transactionCallback(0, history, {fill(1, 9).at(10.00).shares(100)});
    terminal.strands.waitIdle();
    int flags = 0;
    TC::OrderQueueList rows;
    EXPECT_TRUE(model->checkUpdate(flags, rows, rows));
    EXPECT_EQ(flags, TC::kUpdateRebuilt);
    ASSERT_EQ(model->m_book.m_bidLevels.size(), 1u);
    EXPECT_EQ(model->m_book.m_bidLevels.begin()->second->m_volume, 200);
    EXPECT_EQ(model->m_book.m_askLevels.size(), 1u);
}

} // namespace
