#include "bench/heapcount.h"
#include "tests/tessimodel/entruststatus.h"

#include <functional>

// A snapshot comes for every instrument on the screen every few seconds: showing it asks for no memory.
namespace {

using namespace tests;

std::size_t allocationsOf(const std::function<void()>& work)
{
    const std::size_t before = bench::allocations();
    work();
    return bench::allocations() - before;
}

class EntrustAllocationTest : public EntrustStreamTest {
protected:
    EntrustAllocationTest() { follow("SH", "688001", {277}); }

    // One push of every kind that there is: growing, standing, without a last price, foreign, and through all phases.
    std::vector<Records> pushes() const
    {
        std::vector<Records> all;
        for (int i = 0; i < 20; ++i)
            all.push_back({of(level1().last(10 + i).volume(100 + i).ask(11 + i, i).bid(10 + i, i))});
        all.push_back({of(level1().last(10).volume(100))});
        all.push_back({of(level1().last(0).lastClose(9.9).volume(100).bid(10, 5))});
        all.push_back({order(1), nullptr});
        for (const int status : {15, 22, 22, 23, 23, 24, 13})
            all.push_back({of(level1().last(10).volume(status).status(status).bid(10, status))});
        return all;
    }
};

TEST_P(EntrustAllocationTest, shouldSeeEveryAllocationWhenOneIsMade)
{
    model.live({of(level1().last(10).bid(10, 5))});
    const EntrustStatus copy = model;
    EXPECT_EQ(allocationsOf([&] { model.clear(); }), 2U) << "the rows of both sides, which a copy shares";
    EXPECT_GE(allocationsOf([] { const quoter::QuoterBasePtr record = level1(); }), 1U);
}

TEST_P(EntrustAllocationTest, shouldAskForNoMemoryLiveWhenThereWasASnapshot)
{
    for (const bool newLoan : {false, true}) {
        model.clear();
        model.setNewLoan(newLoan);
        const std::vector<Records> all = pushes();
        model.live(all.front());
        const Records none;
        EXPECT_EQ(allocationsOf([&] {
                      for (const Records& push : all)
                          model.live(push);
                      model.live(none);
                  }),
                  0U);
        EXPECT_EQ(latest(), all.back().back());
    }
}

TEST_P(EntrustAllocationTest, shouldAskForNoMemoryWhenAPanelLooksBack)
{
    const std::vector<Records> all = pushes();
    model.live(all.front());
    EXPECT_EQ(allocationsOf([&] {
                  for (std::size_t i = 1; i < all.size(); ++i)
                      model.connectTickData(all[i].back(), all[i - 1].back(), 5);
                  model.clear();
              }),
              0U);
    EXPECT_EQ(rowsText(model), "");
}

TEST_P(EntrustAllocationTest, shouldAskForNoMemoryInAHistoryWhenItIsLong)
{
    Records batch;
    for (const Records& push : pushes())
        batch.push_back(push.back());
    model.live({batch.front()});
    EXPECT_EQ(allocationsOf([&] { model.history(batch); }), 0U);
    EXPECT_EQ(latest(), batch.back());
}

INSTANTIATE_TEST_SUITE_P(BothStreams, EntrustAllocationTest, ::testing::Values(1, 2), levelName);

} // namespace
