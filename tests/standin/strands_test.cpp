#include "net/rpcengine.h"
#include "standin/terminal.h"

#include <gmock/gmock.h>

#include <boost/weak_ptr.hpp>

#include <algorithm>
#include <functional>
#include <future>
#include <latch>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using Strand = boost::shared_ptr<boost::asio::io_service::strand>;

Strand strand(const std::string& name)
{
    return utils::CSingletonT<net::RPCEngine>::instance()->getStrand(name);
}

template <class Number>
Strand numbered(Number number)
{
    return strand(std::to_string(number));
}

// Tasks that write down their names as they run.
struct Story {
    std::string text;

    auto task(char name)
    {
        return [this, name] { text += name; };
    }
};

} // namespace

TEST(HandStrands, shouldRunInPostingOrderWhenDrained)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    Story story;
    for (const char name : {'a', 'b', 'c', 'd'})
        strand("modulegroup")->post(story.task(name));
    EXPECT_EQ(story.text, "");
    EXPECT_TRUE(terminal.strands.drain("modulegroup"));
    EXPECT_EQ(story.text, "abcd");
    EXPECT_FALSE(terminal.strands.drain("modulegroup"));
}

TEST(HandStrands, shouldLeaveOtherStrandsAloneWhenOneIsDrained)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    Story story;
    strand("modulegroup")->post(story.task('m'));
    strand("data_release")->post(story.task('r'));
    EXPECT_TRUE(terminal.strands.drain("data_release"));
    EXPECT_EQ(story.text, "r");
    EXPECT_TRUE(terminal.strands.drain("modulegroup"));
    EXPECT_EQ(story.text, "rm");
    EXPECT_FALSE(terminal.strands.drain("nobody asked"));
}

TEST(HandStrands, shouldRunTasksOfTasksWhenDrained)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    Story story;
    strand("s")->post([&] {
        strand("s")->post(story.task('b'));
        story.text += 'a';
    });
    strand("s")->post(story.task('c'));
    EXPECT_TRUE(terminal.strands.drain("s"));
    EXPECT_EQ(story.text, "acb");
    EXPECT_FALSE(terminal.strands.drain("s"));
}

TEST(HandStrands, shouldRunDispatchedTaskAtOnceWhenOnTheStrandAndLaterOtherwise)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    Story story;
    const Strand s = strand("s");
    s->dispatch([&] {
        EXPECT_TRUE(s->running_in_this_thread());
        s->dispatch(story.task('a'));
        story.text += 'b';
    });
    EXPECT_FALSE(s->running_in_this_thread());
    EXPECT_EQ(story.text, "");
    terminal.strands.drain("s");
    EXPECT_EQ(story.text, "ab");
}

TEST(HandStrands, shouldRunNothingWithinATaskWhenItDrainsItsOwnStrand)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    Story story;
    strand("s")->post([&] {
        EXPECT_FALSE(terminal.strands.drain("s"));
        story.text += 'a';
    });
    strand("s")->post(story.task('b'));
    EXPECT_TRUE(terminal.strands.drain("s"));
    EXPECT_EQ(story.text, "ab");
}

TEST(HandStrands, shouldKeepLaterTasksWhenOneThrows)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    Story story;
    strand("s")->post([] { throw std::runtime_error("task"); });
    strand("s")->post(story.task('a'));
    EXPECT_THROW(terminal.strands.drain("s"), std::runtime_error);
    EXPECT_TRUE(terminal.strands.drain("s"));
    EXPECT_EQ(story.text, "a");
}

TEST(HandStrands, shouldFreeTasksUnrunWhenReset)
{
    const auto owned = std::make_shared<int>();
    bool ran = false;
    Strand held;
    {
        standin::Terminal terminal;
        terminal.strands.runByHand();
        held = strand("s");
        // The task holds its own strand, as a task does that keeps its model alive.
        held->post([owned, held, &ran] { ran = true; });
        EXPECT_EQ(owned.use_count(), 2);
    }
    EXPECT_EQ(owned.use_count(), 1);
    EXPECT_FALSE(ran);
}

TEST(HandStrands, shouldRefuseToWaitWhenByHand)
{
    standin::Terminal terminal;
    terminal.strands.runByHand();
    EXPECT_THROW(terminal.strands.waitIdle(), std::logic_error);
}

TEST(PoolStrands, shouldGiveTheSameStrandWhenAskedAgain)
{
    standin::Terminal terminal;
    EXPECT_EQ(strand("a"), strand("a"));
    EXPECT_NE(strand("a"), strand("b"));
    terminal.strands.runByHand();
    EXPECT_EQ(strand("a"), strand("a"));
    EXPECT_NE(strand("a"), strand("b"));
}

TEST(PoolStrands, shouldRunTasksInPostingOrderOnAnotherThreadWhenPosted)
{
    standin::Terminal terminal;
    std::vector<int> order;
    std::set<std::thread::id> threads;
    for (int i = 0; i < 1000; ++i) {
        strand("s")->post([&, i] {
            order.push_back(i);
            threads.insert(std::this_thread::get_id());
        });
    }
    terminal.strands.waitIdle();
    ASSERT_EQ(order.size(), 1000U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_FALSE(threads.contains(std::this_thread::get_id()));
}

// Asio's strands come from a fixed set of queues, of which a hundred would hardly be dealt without a repeat.
TEST(PoolStrands, shouldRunOnQueuesOfTheirOwnWhenNamesDiffer)
{
    standin::Terminal terminal;
    constexpr int kStrands = 100;
    for (int i = 0; i < kStrands; ++i) {
        for (int j = 0; j < i; ++j)
            EXPECT_FALSE(*numbered(i) == *numbered(j)) << i << " and " << j;
    }
}

TEST(PoolStrands, shouldWaitForTasksOfTasksOnOtherStrandsWhenWaitingUntilIdle)
{
    standin::Terminal terminal;
    int hops = 0;
    std::function<void()> hop = [&] {
        if (++hops < 500)
            numbered(hops % 7)->post(hop);
    };
    numbered(0)->post(hop);
    terminal.strands.waitIdle();
    EXPECT_EQ(hops, 500);
    numbered(0)->post([&hops] { ++hops; });
    terminal.strands.waitIdle();
    EXPECT_EQ(hops, 501);
}

TEST(PoolStrands, shouldRunAsManyAtOnceAsThereAreThreadsWhenEachStrandHasATask)
{
    standin::Terminal terminal;
    terminal.strands.runOnPool(4);
    for (const unsigned threads : {4U, 3U, 1U, 5U}) {
        terminal.strands.runOnPool(threads);
        std::latch met(static_cast<std::ptrdiff_t>(threads));
        for (unsigned i = 0; i < threads; ++i)
            numbered(i)->post([&met] { met.arrive_and_wait(); });
        terminal.strands.waitIdle();
        EXPECT_TRUE(met.try_wait());
    }
}

TEST(PoolStrands, shouldKeepStrandsAndTasksWhenNumberOfThreadsChanges)
{
    standin::Terminal terminal;
    const Strand s = strand("s");
    int ran = 0;
    for (int i = 0; i < 2000; ++i) {
        s->post([&ran] { ++ran; });
        if (i % 500 == 0)
            terminal.strands.runOnPool(1 + static_cast<unsigned>(i) / 500);
    }
    EXPECT_EQ(strand("s"), s);
    terminal.strands.waitIdle();
    EXPECT_EQ(ran, 2000);
}

TEST(PoolStrands, shouldFinishQueuedTasksWhenReset)
{
    int ran = 0;
    {
        standin::Terminal terminal;
        for (int i = 0; i < 1000; ++i)
            strand("s")->post([&ran] { ++ran; });
    }
    EXPECT_EQ(ran, 1000);
}

TEST(PoolStrands, shouldStayValidAndRunNothingWhenHeldAfterReset)
{
    bool ran = false;
    const auto owned = std::make_shared<int>();
    Strand held;
    {
        standin::Terminal terminal;
        held = strand("s");
    }
    standin::Terminal terminal;
    held->post([owned, &ran] { ran = true; });
    EXPECT_NE(strand("s"), held);
    strand("s")->post([] {});
    terminal.strands.waitIdle();
    EXPECT_FALSE(ran);
    EXPECT_EQ(owned.use_count(), 2);
    held.reset();
    EXPECT_EQ(owned.use_count(), 1);
}

TEST(PoolStrands, shouldLetGoOfStrandWhenItsLastHolderIsATaskOnIt)
{
    boost::weak_ptr<boost::asio::io_service::strand> watched;
    {
        standin::Terminal terminal;
        Strand last = strand("s");
        watched = last;
        last->post([last] {});
        last.reset();
    }
    EXPECT_TRUE(watched.expired());
}

// A model's destructor asks for the strand that frees its containers, from whichever thread it runs on.
TEST(PoolStrands, shouldNotDeadlockWhenAnOwnerThatPostsIsReleasedOnThePool)
{
    struct Owner {
        Strand home = strand("modulegroup");
        std::shared_ptr<int> container = std::make_shared<int>();
        ~Owner()
        {
            strand("data_release")->post([freed = std::move(container)] {});
        }
    };
    std::weak_ptr<int> container;
    {
        standin::Terminal terminal;
        auto owner = std::make_shared<Owner>();
        container = owner->container;
        strand("modulegroup")->post([owner = std::move(owner)] {});
    }
    EXPECT_TRUE(container.expired());
}

TEST(PoolStrands, shouldRefuseWhenATaskWaitsForItsOwnPool)
{
    std::promise<void> done;
    standin::Terminal terminal;
    strand("s")->post([&] {
        EXPECT_THROW(terminal.strands.waitIdle(), std::logic_error);
        EXPECT_THROW(terminal.strands.runOnPool(3), std::logic_error);
        done.set_value();
    });
    done.get_future().wait();
}

TEST(PoolStrands, shouldNotDeadlockWhenATaskResetsTheTerminal)
{
    auto terminal = std::make_unique<standin::Terminal>();
    std::promise<void> done;
    strand("s")->post([&] {
        terminal.reset();
        done.set_value();
    });
    done.get_future().wait();
    standin::Terminal next;
    bool ran = false;
    strand("s")->post([&ran] { ran = true; });
    next.strands.waitIdle();
    EXPECT_TRUE(ran);
}

TEST(PoolStrands, shouldRefuseHandsOnWorkWhenOnThePool)
{
    standin::Terminal terminal;
    EXPECT_THROW(terminal.strands.drain("s"), std::logic_error);
    EXPECT_THROW(terminal.strands.runOnPool(0), std::invalid_argument);
    EXPECT_NO_THROW(terminal.strands.waitIdle());
}

TEST(PoolStrands, shouldRunOnThePoolAgainWhenByHandIsOver)
{
    standin::Terminal terminal;
    Story story;
    terminal.strands.runByHand();
    const Strand byHand = strand("s");
    byHand->post(story.task('x'));
    terminal.strands.runOnPool(2);
    byHand->post(story.task('y'));
    strand("s")->post(story.task('a'));
    terminal.strands.waitIdle();
    EXPECT_EQ(story.text, "a");
}
