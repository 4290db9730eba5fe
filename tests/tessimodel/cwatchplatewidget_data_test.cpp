#include "tests/support/offscreen.h"
#include "tests/support/records.h"
#include "tests/tessimodel/watchplate.h"

#include <cmath>
#include <limits>

namespace {

using namespace tests;

constexpr __int64 k32Bits = __int64{1} << 32;

class WatchPlateDataTest : public Offscreen {
protected:
    WatchPlate plate;
};

std::string shown(const WatchPlate& plate)
{
    return plateText(plate.m_data);
}

Counts morning()
{
    return counts().buys(300, 150, 100, 50).sells(100, 50, 150, 100).orders(30, 16);
}

constexpr char kMorning[] = "orders 30 | 16\n"
                            "sell 特大 100 = 0.1 in ic_clr_watchplate_line4\n"
                            "sell 大单 50 = 0.05 in ic_clr_watchplate_line5\n"
                            "sell 中单 150 = 0.15 in ic_clr_watchplate_line6\n"
                            "sell 小单 100 = 0.1 in ic_clr_watchplate_line7\n"
                            "buy 小单 50 = 0.05 in ic_clr_watchplate_line3\n"
                            "buy 中单 100 = 0.1 in ic_clr_watchplate_line2\n"
                            "buy 大单 150 = 0.15 in ic_clr_watchplate_line1\n"
                            "buy 特大 300 = 0.3 in ic_clr_watchplate_line0\n";

TEST(WatchPlateItem, shouldBeABuyOfMiddleSizeWithoutVolumeWhenMade)
{
    const TC::WatchPlateItem item;
    EXPECT_EQ(itemText(item), "buy 中单 0 = 0 in clr_default");
}

TEST_F(WatchPlateDataTest, shouldBeEmptyAndNamedWhenMade)
{
    QWidget panel;
    const TC::CWatchPlateWidget part(&panel);
    EXPECT_EQ(plateText(part.m_data), "orders 0 | 0\n");
    EXPECT_EQ(part.m_stockKey, "");
    EXPECT_EQ(part.objectName(), "zolv_CWatchPlateWidget");
    EXPECT_EQ(part.parentWidget(), &panel);
    EXPECT_FALSE(part.isWindow());
}

TEST_F(WatchPlateDataTest, shouldShowSellsFromHugeToSmallAndBuysBackToHugeWhenCountsArrive)
{
    plate.setTransactionCount({morning()});
    EXPECT_EQ(shown(plate), kMorning);
}

TEST_F(WatchPlateDataTest, shouldShowTheLastRecordWhenBatchHasSeveral)
{
    plate.setTransactionCount({counts().buys(1, 2, 3, 4).orders(5, 6), nullptr, level1(), morning()});
    EXPECT_EQ(shown(plate), kMorning);
    plate.setTransactionCount({morning(), counts().sells(8, 0, 0, 0).orders(0, 1)});
    EXPECT_EQ(shown(plate), "orders 0 | 1\n"
                            "sell 特大 8 = 1 in ic_clr_watchplate_line4\n"
                            "sell 大单 0 = 0 in ic_clr_watchplate_line5\n"
                            "sell 中单 0 = 0 in ic_clr_watchplate_line6\n"
                            "sell 小单 0 = 0 in ic_clr_watchplate_line7\n"
                            "buy 小单 0 = 0 in ic_clr_watchplate_line3\n"
                            "buy 中单 0 = 0 in ic_clr_watchplate_line2\n"
                            "buy 大单 0 = 0 in ic_clr_watchplate_line1\n"
                            "buy 特大 0 = 0 in ic_clr_watchplate_line0\n");
}

TEST_F(WatchPlateDataTest, shouldKeepTheOldPictureWhenTheLastRecordIsNoCount)
{
    plate.setTransactionCount({morning()});
    for (const Records& batch : {Records{}, Records{nullptr}, Records{level1()}, Records{counts(), level2()},
                                 Records{counts(), nullptr}, Records{counts(), order(1)}}) {
        plate.setTransactionCount(batch);
        EXPECT_EQ(shown(plate), kMorning);
        plate.setRegionTransaction(batch);
        EXPECT_EQ(shown(plate), kMorning);
    }
}

TEST_F(WatchPlateDataTest, shouldKeepTheOldPictureWhenTheFirstRecordOfARangeIsNoCount)
{
    plate.setTransactionCount({morning()});
    for (const Records& batch :
         {Records{nullptr, counts()}, Records{level1(), counts()}, Records{order(1), counts(), counts()}}) {
        plate.setRegionTransaction(batch);
        EXPECT_EQ(shown(plate), kMorning);
    }
}

TEST_F(WatchPlateDataTest, shouldShowTheLastRecordLessTheFirstWhenARangeIsChosen)
{
    plate.setRegionTransaction({counts().buys(1, 2, 3, 4).sells(5, 6, 7, 8).orders(9, 10), nullptr, level1(),
                                counts().buys(301, 152, 103, 54).sells(105, 56, 157, 108).orders(39, 26)});
    EXPECT_EQ(shown(plate), kMorning);
}

constexpr char kZeros[] = "orders 0 | 0\n"
                          "sell 特大 0 = nan in ic_clr_watchplate_line4\n"
                          "sell 大单 0 = nan in ic_clr_watchplate_line5\n"
                          "sell 中单 0 = nan in ic_clr_watchplate_line6\n"
                          "sell 小单 0 = nan in ic_clr_watchplate_line7\n"
                          "buy 小单 0 = nan in ic_clr_watchplate_line3\n"
                          "buy 中单 0 = nan in ic_clr_watchplate_line2\n"
                          "buy 大单 0 = nan in ic_clr_watchplate_line1\n"
                          "buy 特大 0 = nan in ic_clr_watchplate_line0\n";

TEST_F(WatchPlateDataTest, shouldEndWithZerosWhenARangeHasOneRecord)
{
    plate.setRegionTransaction({morning()});
    EXPECT_EQ(shown(plate), kZeros);
}

TEST_F(WatchPlateDataTest, shouldShowNegativeVolumesWhenTheFirstRecordIsLarger)
{
    plate.setRegionTransaction({counts().buys(0, 0, 0, 10).sells(150, 0, 0, 0).orders(5, 1),
                                counts().buys(0, 0, 0, 510).sells(50, 0, 0, 0).orders(3, 5)});
    EXPECT_EQ(shown(plate), "orders -2 | 4\n"
                            "sell 特大 -100 = -0.25 in ic_clr_watchplate_line4\n"
                            "sell 大单 0 = 0 in ic_clr_watchplate_line5\n"
                            "sell 中单 0 = 0 in ic_clr_watchplate_line6\n"
                            "sell 小单 0 = 0 in ic_clr_watchplate_line7\n"
                            "buy 小单 500 = 1.25 in ic_clr_watchplate_line3\n"
                            "buy 中单 0 = 0 in ic_clr_watchplate_line2\n"
                            "buy 大单 0 = 0 in ic_clr_watchplate_line1\n"
                            "buy 特大 0 = 0 in ic_clr_watchplate_line0\n");
}

TEST_F(WatchPlateDataTest, shouldTakeTheLow32BitsWhenCountsAreLarger)
{
    plate.setTransactionCount({counts()
                                   .buys(k32Bits + 300, 150 - k32Bits, 5 * k32Bits + 100, 50)
                                   .sells(100 + k32Bits, k32Bits + 50, 150, k32Bits * 9 + 100)
                                   .orders(k32Bits + 30, 16 - k32Bits)});
    EXPECT_EQ(shown(plate), kMorning);
    plate.setTransactionCount({counts().sells(0, 0, 0, 0xffffffff).orders(0x80000000, 0x7fffffff)});
    EXPECT_EQ(plate.m_data.m_items[3].volume, -1);
    EXPECT_EQ(plate.m_data.m_items[3].ratio, 1);
    EXPECT_EQ(plate.m_data.m_buyOrderCount, std::numeric_limits<int>::min());
    EXPECT_EQ(plate.m_data.m_sellOrderCount, std::numeric_limits<int>::max());
}

TEST_F(WatchPlateDataTest, shouldWrapWhenADifferenceDoesNotFit32Bits)
{
    plate.setRegionTransaction(
        {counts().buys(-1, 0, 0, 0).orders(-1, 0x80000000), counts().buys(0x7fffffff, 0, 0, 0).orders(0x7fffffff, 1)});
    EXPECT_EQ(plate.m_data.m_items[7].volume, std::numeric_limits<int>::min());
    EXPECT_EQ(plate.m_data.m_buyOrderCount, std::numeric_limits<int>::min());
    EXPECT_EQ(plate.m_data.m_sellOrderCount, std::numeric_limits<int>::min() + 1);
    EXPECT_EQ(plate.m_data.m_items[7].ratio, 1);
}

// The sum of eight volumes does not fit 32 bits, nor does that of one side.
TEST_F(WatchPlateDataTest, shouldShareExactlyWhenTheSumIsAboveTheRangeOfAVolume)
{
    constexpr __int64 kMost = std::numeric_limits<int>::max();
    plate.setTransactionCount({counts().buys(kMost, kMost, kMost, kMost).sells(kMost, kMost, kMost, kMost)});
    for (const TC::WatchPlateItem& item : plate.m_data.m_items)
        EXPECT_EQ(item.ratio, 0.125F) << itemText(item);
}

TEST_F(WatchPlateDataTest, shouldHaveNoFiniteRatioWhenVolumesCancelOut)
{
    plate.setTransactionCount({counts().buys(5, 0, 0, 0).sells(-5, 0, 0, 0)});
    const std::vector<TC::WatchPlateItem>& items = plate.m_data.m_items;
    EXPECT_EQ(items[0].ratio, -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(items[1].ratio));
    EXPECT_EQ(items[7].ratio, std::numeric_limits<float>::infinity());
}

// Key and share are worked out anew whatever was there, also for other items than the eight of a record.
TEST_F(WatchPlateDataTest, shouldWorkOutShareAndKeyOfWhateverItemsThereAreWhenRecalculated)
{
    plate.m_data.setItems({{1, 3, 30, 0.5F, "other"}, {0, 1, 10, 7, ""}});
    EXPECT_EQ(shown(plate), "orders 0 | 0\nsell 小单 30 = 0.5 in other\nbuy 大单 10 = 7 in \n");
    plate.m_data.recalculate();
    EXPECT_EQ(shown(plate), "orders 0 | 0\n"
                            "sell 小单 30 = 0.75 in ic_clr_watchplate_line7\n"
                            "buy 大单 10 = 0.25 in ic_clr_watchplate_line1\n");
    plate.m_data.setItems({});
    plate.m_data.recalculate();
    EXPECT_EQ(shown(plate), "orders 0 | 0\n");
}

TEST_F(WatchPlateDataTest, shouldBeEmptyWhenAnotherStockIsSet)
{
    for (const QString& key : {QStringLiteral("SZ000001"), QString()}) {
        plate.setTransactionCount({morning()});
        plate.setStock(key);
        EXPECT_EQ(plate.m_stockKey, key);
        EXPECT_EQ(shown(plate), "orders 0 | 0\n");
    }
}

} // namespace
