#include "indexui/tessimodel/liveread.h"
#include "tests/tessimodel/encounter.h"
#include "tests/tessimodel/modelstress.h"
#include "tests/tessimodel/queuemodel.h"
#include "tests/tessimodel/tickbook.h"

#include <boost/thread/locks.hpp>

#include <mutex>
#include <string>

// One step of the model against another, and the locks of the model, its book and its levels against each other.
namespace {

using namespace tests;

class QueuePolling : public QueueTest {
protected:
    using BookLock = std::unique_lock<TC::detail::RecursiveLock>;

    bool poll() { return readQueues(model).updated; }

    static std::shared_ptr<quoter::QuoterDepthData> snapshot(const std::string& clock = "09:30:00")
    {
        return level2(clock).bid(10.00);
    }

    // Ticks by number, with the number as their time, so that the book's time tells how far it has come.
    template <class Tick, class Make>
    static Records numbered(const Make& make)
    {
        Records ticks;
        for (int number = 1; number <= kTicks; ++number) {
            const std::shared_ptr<Tick> tick = make(number);
            tick->timetag = number;
            ticks.push_back(tick);
        }
        return ticks;
    }
    static Records manyOrders()
    {
        return numbered<quoter::OrderData>([](int number) { return order(number).buy(10.00); });
    }
    static Records manyTrades()
    {
        return numbered<quoter::TransactionData>([](int number) { return fill(kTicks + number, 0); });
    }

    static constexpr int kTicks = 100'000;
};

TEST_F(QueuePolling, shouldTellOfEveryOrderWhenPanelPollsMeanwhile)
{
    feed.begin();
    poll();
    const auto work = [&](int round) {
        model.doEntrust(0, live, {order(2 * round - 1).buy(10.00)});
        model.doEntrust(0, live, {order(2 * round).buy(10.00)});
    };
    const auto seen = [&](int round) {
        if (!poll())
            return false;
        const auto level = model.m_book.getLevel(true, 10.00);
        return level && TC::readLive(level->m_count) == 2 * round;
    };
    EXPECT_EQ(missedRounds(1'000, work, seen), 0) << "whoever takes the flag finds the order";
}

TEST_F(QueuePolling, shouldTellOnePanelOnlyWhenTwoPollAtOnce)
{
    model.m_updateFlags = TC::kUpdateLevels;
    QueueReading first;
    QueueReading second;
    expectToWait(model.m_mutex, {[&] { first.poll(model); }, [&] { second.poll(model); }});
    EXPECT_NE(first.updated, second.updated);
    const QueueReading& winner = first.updated ? first : second;
    const QueueReading& loser = first.updated ? second : first;
    EXPECT_EQ(winner.flags, TC::kUpdateLevels);
    EXPECT_TRUE(winner.bids.empty());
    EXPECT_EQ(loser.flags, -1);
    EXPECT_TRUE(loser.keepsBids());
    EXPECT_TRUE(loser.keepsAsks());
}

TEST_F(QueuePolling, shouldLeaveTheFlagsUntilItHasTheLockWhenPolled)
{
    model.m_updateFlags = TC::kUpdateLevels;
    boost::unique_lock<boost::recursive_mutex> busy(model.m_mutex);
    auto polled = start([&] { poll(); });
    EXPECT_EQ(polled.wait_for(kShort), std::future_status::timeout);
    EXPECT_EQ(model.m_updateFlags, TC::kUpdateLevels);
    busy.unlock();
    polled.wait();
    EXPECT_EQ(model.m_updateFlags, 0);
}

// --- the model's lock -----------------------------------------------------------------------------------------

TEST_F(QueuePolling, shouldWaitForTheLockWhenReadOrChanged)
{
    feed.begin();
    model.doQuoter(0, live, {snapshot()});
    model.m_updateFlags = TC::kUpdateLevels;
    const std::vector<std::function<void()>> operations{
        [&] { poll(); },
        [&] { model.setStock(keyOf("SZ", "000001")); },
        [&] { model.initStockParams(); },
        [&] { model.clear(); },
    };
    expectToWait(model.m_mutex, operations);
    for (const auto& work : std::vector<std::function<void()>>{
             [&] { model.doEntrust(0, live, {order(1).buy(10.00)}); },
             [&] { model.doTransaction(0, live, {fill(1, 2)}); },
             [&] { model.doQuoter(0, live, {snapshot("09:30:03")}); },
             [&] { model.doQueue(0, live, {bestQueues("09:30:03")}); },
         })
        expectToWait(model.m_mutex, {work});
}

TEST_F(QueuePolling, shouldTakeAPushAtOnceWhenAPanelReads)
{
    boost::unique_lock<boost::recursive_mutex> reading(model.m_mutex);
    auto pushed = start([&] {
        model.entrustCallback(0, live, {order(1).buy(10.00)});
        model.transactionCallback(0, live, {fill(1, 2)});
        model.quoterCallback(0, live, {snapshot()});
        model.queueCallback(0, live, {bestQueues()});
    });
    EXPECT_EQ(pushed.wait_for(kLong), std::future_status::ready);
    reading.unlock();
}

TEST_F(QueuePolling, shouldLetAPanelInWhenAHistoryIsOnlyKept)
{
    const Records orders = manyOrders();
    EXPECT_TRUE(meet(model.m_mutex, {
                                        .prepare = [&] { model.clear(); },
                                        .work = [&] { model.doEntrust(0, history, orders); },
                                        .done = [&] { return static_cast<int>(model.m_orders.size()); },
                                        .all = kTicks,
                                        .intrude = [&] { poll(); },
                                    }));
    EXPECT_EQ(model.m_orders.size(), orders.size());

    const Records trades = manyTrades();
    EXPECT_TRUE(meet(model.m_mutex, {
                                        .prepare = [&] { model.clear(); },
                                        .work = [&] { model.doTransaction(0, history, trades); },
                                        .done = [&] { return static_cast<int>(model.m_transactions.size()); },
                                        .all = kTicks,
                                        .intrude = [&] { poll(); },
                                    }));
    EXPECT_EQ(model.m_transactions.size(), trades.size());
}

TEST_F(QueuePolling, shouldLetAPanelInWhenAHistoryIsPutIntoTheBook)
{
    const Records orders = manyOrders();
    const Records trades = manyTrades();
    struct Case {
        const char* what;
        std::function<void()> before;
        std::function<void()> work;
    };
    for (const auto& [what, before, work] : std::vector<Case>{
             {"more orders", [&] { feed.begin(); }, [&] { model.doEntrust(0, moreHistory, orders); }},
             {"more trades", [&] { feed.begin(); }, [&] { model.doTransaction(0, moreHistory, trades); }},
             {"the held orders", [&] { feed.orders(history, orders); }, [&] { model.doTransaction(0, history, {}); }},
             {"the held trades", [&] { feed.trades(history, trades); }, [&] { model.doEntrust(0, history, {}); }},
         }) {
        const auto prepare = [this, &before = before] {
            model.clear();
            before();
        };
        const auto done = [&] { return static_cast<int>(model.m_book.m_lastTimetag); };
        EXPECT_TRUE(meet(model.m_mutex, {prepare, work, done, kTicks, [&] { poll(); }})) << what;
        EXPECT_EQ(done(), kTicks) << what;
    }
}

// --- the book's lock ------------------------------------------------------------------------------------------

// Whoever waits for the book keeps no panel from polling.
TEST_F(QueuePolling, shouldLeaveTheModelsLockFreeWhenItWaitsForTheBook)
{
    struct Case {
        const char* what;
        std::function<void()> work;
        std::function<bool()> isAtTheBook;
    };
    const auto orders = [&] { return model.m_orders.size(); };
    const auto trades = [&] { return model.m_transactions.size(); };
    for (const auto& [what, work, isAtTheBook] : std::vector<Case>{
             {"an order", [&] { model.doEntrust(0, live, {order(3).buy(9.99)}); }, [&] { return orders() == 2; }},
             {"a trade", [&] { model.doTransaction(0, live, {fill(1, 3)}); }, [&] { return trades() == 2; }},
             {"more orders", [&] { model.doEntrust(0, moreHistory, {order(3).buy(9.99)}); },
              [&] { return orders() == 2; }},
             {"more trades", [&] { model.doTransaction(0, moreHistory, {fill(1, 3)}); }, [&] { return trades() == 2; }},
             {"orders anew", [&] { model.doEntrust(0, history, {}); }, [&] { return orders() == 0; }},
             {"trades anew", [&] { model.doTransaction(0, history, {}); }, [&] { return trades() == 0; }},
             {"clear", [&] { model.clear(); }, [&] { return orders() == 0 && trades() == 0; }},
         }) {
        model.clear();
        feed.begin({order(1).buy(10.00)}, {fill(1, 2).shares(40)});
        BookLock busy(model.m_book.m_mutex);
        auto working = start(work);
        EXPECT_TRUE(canBeTaken(model.m_mutex, isAtTheBook)) << what;
        EXPECT_EQ(working.wait_for(kShort), std::future_status::timeout) << what;
        EXPECT_TRUE(canBeTaken(model.m_mutex, isAtTheBook)) << what << ", while it waits";
        busy.unlock();
        EXPECT_EQ(working.wait_for(kLong), std::future_status::ready) << what;
    }
}

// --- a level's lock -------------------------------------------------------------------------------------------

TEST(QueueLevelLock, shouldBeWaitedForWhenTheBookChangesALevelThatWasLent)
{
    for (const bool isBid : {true, false}) {
        BookStory<TC::QueueBook> story;
        if (isBid)
            story.given(order(1).buy(10.00).shares(300));
        else
            story.given(order(1).sell(10.00).shares(300));
        const auto level = story.book.getLevel(isBid, 10.00);
        ASSERT_TRUE(level);
        for (const auto& offer : std::vector<std::function<void()>>{
                 [&] { story.given(isBid ? order(2).buy(10.00) : order(2).sell(10.00)); },
                 [&] { story.given(isBid ? fill(1, 9) : fill(9, 1)); },
                 [&] { story.given(isBid ? cancelOfBuy(1) : cancelOfSell(1)); },
             })
            expectToWait(level->m_mutex, {offer});
        EXPECT_EQ(totalsText(*level), "[2:100] 100 x1");
    }
}

TEST(QueueLevelLock, shouldBeWaitedForWhenALevelOfItsOwnChanges)
{
    TC::OrderQueue level(10.00, true);
    for (const auto& change : std::vector<std::function<void()>>{
             [&] { level.appendQuote(order(1).buy(10.00).shares(300)); },
             [&] { level.dealQuote(fill(1, 9)); },
             [&] { level.dealQuote(cancelOfBuy(1)); },
             [&] {
                 level.assignQueue({100, 200});
             },
         })
        expectToWait(level.m_mutex, {change});
    EXPECT_EQ(queueText(level), "0:100 1:200");
}

} // namespace
