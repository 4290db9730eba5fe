#include "indexui/tessimodel/cmodeltransdistribution.h"
#include "tests/tessimodel/endlessday.h"
#include "tests/tessimodel/entruststatus.h"
#include "tests/tessimodel/transactionrows.h"

#include <chrono>
#include <functional>
#include <latch>
#include <string>
#include <thread>
#include <vector>

// Snapshots are shared by all panels that show the instrument, each on a thread of its own. The book summary writes the
// last close into them while the others read.
namespace {

using namespace tests;

constexpr int kSnapshots = 100; // of a round

double closeOf(std::size_t snapshot)
{
    return 9 + 0.01 * static_cast<double>(snapshot);
}

// Snapshots of both streams that have no last price of either form, each with a last close of its own.
Records unpriced()
{
    Records records;
    for (std::size_t i = 0; i < kSnapshots; ++i) {
        const auto snapshot = level1().lastClose(closeOf(i)).volume(static_cast<__int64>(100 + i)).bid(10, 5);
        const std::shared_ptr<quoter::QuoterAllData> record = snapshot;
        records.push_back(i % 2 == 0 ? quoter::QuoterBasePtr(record) : asLevel2(*record));
    }
    return records;
}

class EntrustStatusConcurrent : public ::testing::Test {
protected:
    using Work = std::function<void(const Records&)>;

    EntrustStatusConcurrent() { terminal.instruments.add(stock("SZ", "000001")); }

    // Each work gets the same snapshots at the same time, again and again with new ones.
    void meet(const std::vector<Work>& works, const std::function<void(const Records&)>& look)
    {
        const auto end = std::chrono::steady_clock::now() + stressTime();
        while (std::chrono::steady_clock::now() < end && !HasFailure()) {
            const Records records = unpriced();
            std::latch start(static_cast<std::ptrdiff_t>(works.size()));
            std::vector<std::thread> threads;
            for (const Work& work : works) {
                threads.emplace_back([&] {
                    start.arrive_and_wait();
                    work(records);
                });
            }
            for (std::thread& thread : threads)
                thread.join();
            look(records);
            ++rounds;
        }
        EXPECT_GT(rounds, 0);
    }

    // A book summary that is pushed every snapshot: it sees the last close of each, whoever has written it.
    static Work summary(bool newLoan)
    {
        return [newLoan](const Records& records) {
            EntrustStatus model;
            model.setNewLoan(newLoan);
            model.setStock(keyOf("SZ", "000001"));
            for (std::size_t i = 0; i < records.size(); ++i) {
                model.live({records[i]});
                EXPECT_EQ(model.m_lastPrice, closeOf(i));
            }
        };
    }

    // Ticks of the snapshots as another model has seen them: before the write or after it.
    template <class Ticks>
    static void expectSeen(const Ticks& ticks)
    {
        ASSERT_EQ(ticks.size(), kSnapshots);
        for (int i = 0; i < ticks.size(); ++i) {
            if (ticks[i].price != 0) {
                EXPECT_EQ(ticks[i].price, closeOf(static_cast<std::size_t>(i)));
            }
        }
    }

    template <class Model>
    static void pushEach(Model& model, const Records& records)
    {
        model.setStock(keyOf("SZ", "000001"));
        for (const auto& record : records)
            model.quoterCallBack(0, 1, {record});
    }

    standin::Terminal terminal;
    int rounds = 0;
};

TEST_F(EntrustStatusConcurrent, shouldGiveEveryReaderTheLastCloseWhenSummariesShareSnapshots)
{
    meet({summary(false), summary(false), summary(true), summary(true)}, [](const Records& records) {
        for (std::size_t i = 0; i < records.size(); ++i) {
            EXPECT_EQ(records[i]->lastPrice, closeOf(i));
            EXPECT_EQ(alternativeLastOf(records[i]), closeOf(i));
        }
    });
}

TEST_F(EntrustStatusConcurrent, shouldDisturbNoOtherModelWhenASummaryWritesTheLastClose)
{
    const Work ticks = [](const Records& records) {
        Transactions model;
        pushEach(model, records);
        expectSeen(model.m_datas);
    };
    const Work distribution = [](const Records& records) {
        TC::CModelTransDistribution model;
        pushEach(model, records);
        expectSeen(model.m_ticks);
    };
    meet({summary(false), ticks, distribution}, [](const Records& records) {
        for (std::size_t i = 0; i < records.size(); ++i) {
            EXPECT_EQ(records[i]->lastPrice, closeOf(i));
            EXPECT_EQ(alternativeLastOf(records[i]), 0);
        }
    });
}

} // namespace
