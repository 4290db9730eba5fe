#include "exchange/daystatistics.h"

#include <gtest/gtest.h>

namespace exchange {

TEST(DayStatistics, shouldFollowTheTradesWhenTheyComeInBatches)
{
    DayStatistics statistics;
    EXPECT_EQ(statistics.reference(1000), 1000);
    statistics.add({});
    EXPECT_EQ(statistics, DayStatistics{});

    statistics.add({{2, 1, 1005, 300}, {2, 1, 1007, 100}});
    statistics.add({{3, 4, 1001, 200}});
    EXPECT_EQ(statistics.open, 1005);
    EXPECT_EQ(statistics.high, 1007);
    EXPECT_EQ(statistics.low, 1001);
    EXPECT_EQ(statistics.last, 1001);
    EXPECT_EQ(statistics.volume, 600);
    EXPECT_EQ(statistics.amountInTicks, 1005 * 300 + 1007 * 100 + 1001 * 200);
    EXPECT_EQ(statistics.reference(1000), 1001);
    EXPECT_EQ(statistics.buys.orders, 1);
    EXPECT_EQ(statistics.buys.small, 400);
    EXPECT_EQ(statistics.sells.orders, 1);
    EXPECT_EQ(statistics.sells.small, 200);
}

// The aggressor of an auction's trades is whichever order is younger, and its fills need not be neighbours.
TEST(DayStatistics, shouldSizeEachAggressorByAllItsFillsWhenAnAuctionTrades)
{
    DayStatistics statistics;
    statistics.add({{5, 1, 1000, 10'000}, {3, 4, 1000, 50}, {5, 2, 1000, 10'000}});
    EXPECT_EQ(statistics.buys.orders, 1);
    EXPECT_EQ(statistics.buys.middle, 0);
    EXPECT_EQ(statistics.buys.big, 20'000) << "20,000 shares at 10.00 are 200,000 yuan";
    EXPECT_EQ(statistics.sells.orders, 1);
    EXPECT_EQ(statistics.sells.small, 50);
}

TEST(ActiveVolume, shouldReachAClassBySharesOrByAmountWhenAnOrderIsSized)
{
    struct Row {
        Shares shares;
        __int64 yuan;
        char expected;
    };
    for (const Row row : {
             Row{19'999, 39'999, 's'},
             Row{20'000, 1, 'm'},
             Row{1, 40'000, 'm'},
             Row{99'999, 199'999, 'm'},
             Row{100'000, 1, 'b'},
             Row{1, 200'000, 'b'},
             Row{499'999, 999'999, 'b'},
             Row{500'000, 1, 'h'},
             Row{1, 1'000'000, 'h'},
         }) {
        ActiveVolume volume;
        volume.add(row.shares, row.yuan * TickSize().perUnit);
        const Shares at[] = {volume.small, volume.middle, volume.big, volume.huge};
        const std::string names = "smbh";
        for (std::size_t i = 0; i < names.size(); ++i)
            EXPECT_EQ(at[i], names[i] == row.expected ? row.shares : 0) << row.shares << " for " << row.yuan;
        EXPECT_EQ(volume.orders, 1);
    }
}

} // namespace exchange
