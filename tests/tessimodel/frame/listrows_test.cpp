#include "indexui/tessimodel/detail/listrows.h"

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <vector>

namespace {

using namespace TC::detail;

struct TimedRow {
    long long time = 0;
};

using Rows = QList<boost::shared_ptr<TimedRow>>;

Rows rowsOf(const std::vector<long long>& times)
{
    Rows rows;
    for (const long long time : times)
        rows.append(boost::make_shared<TimedRow>(TimedRow{time}));
    return rows;
}

TEST(ListRows, shouldGiveNothingWhenIndexIsOutOfRange)
{
    const Rows rows = rowsOf({7, 8});
    EXPECT_EQ(rowAt(rows, 0)->time, 7);
    EXPECT_EQ(rowAt(rows, 1)->time, 8);
    EXPECT_FALSE(rowAt(rows, -1));
    EXPECT_FALSE(rowAt(rows, 2));
    EXPECT_FALSE(rowAt(Rows(), 0));
}

TEST(ListRows, shouldCountBackToTheFirstOfTheSecondWhenRowsShareIt)
{
    const Rows rows = rowsOf({7, 8, 8, 8, 9, 8});
    const std::vector<int> expected{1, 1, 2, 3, 1, 1};
    for (int i = 0; i < rows.size(); ++i)
        EXPECT_EQ(runOfSecond(rows, i), expected[static_cast<std::size_t>(i)]) << i;
    EXPECT_EQ(runOfSecond(rows, -1), 1);
    EXPECT_EQ(runOfSecond(rows, 6), 1);
}

TEST(ListRows, shouldTakeSecondsAsEqualWhenTheirLow32BitsAre)
{
    constexpr long long kHigh = 1LL << 32;
    EXPECT_EQ(runOfSecond(rowsOf({5, kHigh + 5}), 1), 2);
}

TEST(ListRows, shouldHoldJustTheRowsThatPassWhateverItHeldBefore)
{
    EXPECT_TRUE(
        rc::check("as a copy of those that pass", [](const std::vector<bool>& before, const std::vector<bool>& now) {
            Rows rows;
            for (std::size_t i = 0; i < now.size(); ++i)
                rows.append(boost::make_shared<TimedRow>(TimedRow{static_cast<long long>(i)}));
            Rows filtered;
            for (std::size_t i = 0; i < before.size(); ++i)
                filtered.append(before[i] && i < now.size() ? rows.at(static_cast<int>(i))
                                                            : boost::make_shared<TimedRow>());
            const auto passes = [&](const auto& row) { return bool(now[static_cast<std::size_t>(row->time)]); };

            Rows expected;
            for (const auto& row : rows) {
                if (passes(row))
                    expected.append(row);
            }
            RC_ASSERT(filterRows(rows, filtered, passes) == expected.size());
            RC_ASSERT(filtered == expected);
        }));
}

} // namespace
