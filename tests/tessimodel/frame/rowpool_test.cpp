#include "indexui/tessimodel/detail/rowpool.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

using TC::detail::RowPool;

namespace {

// Counts those that live.
struct Row {
    Row() noexcept { ++living; }
    ~Row() { --living; }
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;

    int number = 0;
    static inline int living = 0;
};

using Rows = std::vector<boost::shared_ptr<Row>>;

// More than a few blocks hold.
Rows rowsFrom(RowPool<Row>& pool, int count)
{
    Rows rows;
    for (int i = 0; i < count; ++i) {
        rows.push_back(pool.make());
        rows.back()->number = i;
    }
    return rows;
}

} // namespace

TEST(RowPool, shouldKeepEveryRowByItselfWhenManyAreMade)
{
    RowPool<Row> pool;
    const Rows rows = rowsFrom(pool, 1000);
    EXPECT_EQ(Row::living, 1000);
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(rows[static_cast<std::size_t>(i)]->number, i);
}

TEST(RowPool, shouldEndEachRowWhenItsLastHolderLetsGo)
{
    RowPool<Row> pool;
    Rows rows = rowsFrom(pool, 300);
    const boost::shared_ptr<Row> held = rows[130];
    rows.clear();
    EXPECT_EQ(Row::living, 1);
    EXPECT_EQ(held->number, 130);
}

TEST(RowPool, shouldMakeNewRowsWhenAllOfABlockAreGone)
{
    RowPool<Row> pool;
    for (int i = 0; i < 300; ++i)
        EXPECT_EQ(pool.make()->number, 0);
    EXPECT_EQ(Row::living, 0);
}

TEST(RowPool, shouldLeaveRowsAliveWhenItGoesFirst)
{
    auto pool = std::make_unique<RowPool<Row>>();
    Rows rows = rowsFrom(*pool, 100);
    pool.reset();
    EXPECT_EQ(rows[99]->number, 99);
    rows.clear();
    EXPECT_EQ(Row::living, 0);
}

TEST(RowPool, shouldFreeRowsWhenAnotherThreadLetsGo)
{
    RowPool<Row> pool;
    Rows rows = rowsFrom(pool, 200);
    std::thread([&rows] { rows.clear(); }).join();
    EXPECT_EQ(Row::living, 0);
    EXPECT_EQ(rowsFrom(pool, 100).back()->number, 99);
}
