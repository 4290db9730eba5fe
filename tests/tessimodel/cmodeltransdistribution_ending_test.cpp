#include "tests/tessimodel/transdistributiontest.h"

#include <boost/thread/exceptions.hpp>
#include <pthread.h>

#include <atomic>
#include <cstddef>
#include <future>
#include <memory>

// Histories whose thread cannot be started, and the end of a model.
namespace {

using namespace tests;

class TransDistributionEnding : public TransDistributionTest {
protected:
    TransDistributionEnding() { follow("SZ", "000001"); }
};

// While it lives no thread can be started in this process: each would want more stack than there are addresses.
class NoMoreThreads {
public:
    NoMoreThreads()
    {
        pthread_getattr_default_np(&m_before);
        pthread_attr_t greedy;
        pthread_attr_init(&greedy);
        pthread_attr_setstacksize(&greedy, std::size_t{1} << 47U);
        EXPECT_EQ(pthread_setattr_default_np(&greedy), 0);
        pthread_attr_destroy(&greedy);
    }
    ~NoMoreThreads()
    {
        EXPECT_EQ(pthread_setattr_default_np(&m_before), 0);
        pthread_attr_destroy(&m_before);
    }
    NoMoreThreads(const NoMoreThreads&) = delete;
    NoMoreThreads& operator=(const NoMoreThreads&) = delete;

private:
    pthread_attr_t m_before{};
};

// --- a thread that cannot be started ------------------------------------------------------------------------------

TEST_F(TransDistributionEnding, shouldThrowAndStayBusyWhenNoThreadCanBeStarted)
{
    model.live({level1().last(10).volume(5)});
    redraws.forget();
    {
        const NoMoreThreads none;
        EXPECT_THROW(model.startMore({level1().last(10).volume(7)}), boost::thread_resource_error);
    }
    EXPECT_FALSE(model.init());
    EXPECT_EQ(redraws.text(), "");
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n");
    model.live({level1().last(10).volume(8)});
    EXPECT_EQ(sumsText(model), "all 8 max 8");
    EXPECT_FALSE(model.init()) << "a live push is no history";
    redraws.forget();
    model.startMore({level1().last(10).volume(9)});
    EXPECT_TRUE(becomesReady(model));
    ASSERT_TRUE(redraws.reach(2));
    EXPECT_EQ(sumsText(model), "all 9 max 9");
}

TEST_F(TransDistributionEnding, shouldStillEmptyTheListsWhenNoThreadCanBeStarted)
{
    history({level1().last(10).volume(5)});
    ASSERT_TRUE(redraws.reach(3));
    redraws.forget();
    {
        const NoMoreThreads none;
        EXPECT_THROW(model.startHistory({level1().last(10).volume(7)}), boost::thread_resource_error);
    }
    EXPECT_EQ(redraws.text(), "caller ready");
    EXPECT_EQ(ticksText(model), "");
    EXPECT_FALSE(model.init());
    history({});
}

TEST_F(TransDistributionEnding, shouldBeReadyOnceARunningHistoryEndsWhenAnotherCouldNotBeStarted)
{
    Gate gate;
    model.m_dateProvider = gate.dateProvider();
    model.startMore({level1().last(10).volume(5)});
    ASSERT_TRUE(gate.reached());
    {
        const NoMoreThreads none;
        EXPECT_THROW(model.startMore({level1().last(10).volume(7)}), boost::thread_resource_error);
    }
    EXPECT_FALSE(model.init());
    gate.letOn();
    EXPECT_TRUE(becomesReady(model));
    EXPECT_EQ(sumsText(model), "all 5 max 5");
}

TEST_F(TransDistributionEnding, shouldBeDestroyedAtOnceWhenNoThreadCouldBeStarted)
{
    auto doomed = std::make_unique<TransDistribution>();
    doomed->setStock(keyOf("SZ", "000001"));
    {
        const NoMoreThreads none;
        EXPECT_THROW(doomed->startMore({}), boost::thread_resource_error);
    }
    const auto destroyed = start([&doomed] { doomed.reset(); });
    EXPECT_EQ(destroyed.wait_for(kLong), std::future_status::ready);
}

// --- the end ------------------------------------------------------------------------------------------------------

// An owner may see that the model is ready while the history's thread has its redraw still to ask for.
TEST_F(TransDistributionEnding, shouldWaitForTheLastRedrawWhenDestroyed)
{
    auto doomed = std::make_unique<TransDistribution>();
    doomed->setStock(keyOf("SZ", "000001"));
    Gate gate;
    std::atomic<bool> heard{false};
    const std::thread::id caller = std::this_thread::get_id();
    QObject::connect(doomed.get(), &TC::CModelTransDistribution::sigRedraw, [&heard, caller, stop = gate.stop()] {
        if (std::this_thread::get_id() == caller)
            return;
        stop();
        heard = true;
    });
    doomed->startMore({level1().last(10).volume(5)});
    ASSERT_TRUE(gate.reached());
    ASSERT_TRUE(doomed->init());
    std::atomic<bool> heardBefore{false};
    const auto destroyed = start([&] {
        doomed.reset();
        heardBefore = heard.load();
    });
    EXPECT_EQ(destroyed.wait_for(kShort), std::future_status::timeout);
    gate.letOn();
    ASSERT_EQ(destroyed.wait_for(kLong), std::future_status::ready);
    EXPECT_TRUE(heardBefore);
}

TEST_F(TransDistributionEnding, shouldLetGoOfEverythingWhenDestroyed)
{
    auto doomed = std::make_unique<TransDistribution>();
    doomed->setStock(keyOf("SZ", "000001"));
    const std::weak_ptr<ztservice::CInstrumentDetail> instrument = doomed->m_stock;
    const quoter::QuoterBasePtr record = level1().last(10).volume(5);
    doomed->startMore({record});
    ASSERT_TRUE(becomesReady(*doomed));
    terminal.instruments.add(stock("SZ", "000001"));
    model.setStock(keyOf("SZ", "000001"));
    EXPECT_FALSE(instrument.expired());
    doomed.reset();
    EXPECT_TRUE(instrument.expired());
}

} // namespace
