#include "indexui/tessimodel/detail/rowpool.h"

#include <boost/shared_ptr.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <deque>
#include <mutex>
#include <thread>

namespace {

struct CountedRow {
    CountedRow() noexcept { ++living; }
    CountedRow(const CountedRow&) = delete;
    CountedRow& operator=(const CountedRow&) = delete;
    ~CountedRow() { --living; }

    int number = 0;
    static inline std::atomic<int> living{0};
};

// One thread makes rows while another lets go of them, so that blocks are freed by whoever has their last row.
TEST(RowPoolConcurrent, shouldFreeEveryRowOnceWhenAnotherThreadLetsGoMeanwhile)
{
    constexpr int kRows = 100000;
    constexpr std::size_t kKept = 50; // less than a block, so that both threads meet in one
    std::mutex mutex;
    std::deque<boost::shared_ptr<CountedRow>> rows;
    std::atomic<int> freed{0};
    std::atomic<bool> isWhole{true};

    std::thread consumer([&] {
        for (int expected = 0; expected < kRows;) {
            boost::shared_ptr<CountedRow> row;
            {
                const std::lock_guard lock(mutex);
                if (!rows.empty()) {
                    row = std::move(rows.front());
                    rows.pop_front();
                }
            }
            if (!row) {
                std::this_thread::yield();
                continue;
            }
            isWhole = isWhole && row->number == expected++;
            row.reset();
            ++freed;
        }
    });
    {
        TC::detail::RowPool<CountedRow> pool;
        for (int i = 0; i < kRows; ++i) {
            auto row = pool.make();
            row->number = i;
            const std::lock_guard lock(mutex);
            rows.push_back(std::move(row));
            if (rows.size() > kKept)
                std::this_thread::yield();
        }
    }
    consumer.join();
    EXPECT_TRUE(isWhole);
    EXPECT_EQ(freed, kRows);
    EXPECT_EQ(CountedRow::living, 0);
}

} // namespace
