// What the snapshots of some classes of instruments carry beside price, volume and book.

#include "exchange/instrumentclass.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "tests/exchange/classdays.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

namespace exchange {

using recording::RecordedDay;

TEST(ClassFigures, shouldCarryANetValueNearThePriceWhenItIsAFund)
{
    const RecordedDay day = dayOf("fund");
    std::set<double> values;
    for (const auto* snapshot : recordsOf<quoter::QuoterDepthData>(day)) {
        EXPECT_NEAR(snapshot->iopv, snapshot->volume > 0 ? snapshot->lastPrice : 1.250, 0.05);
        EXPECT_TRUE(isWholeTicks(snapshot->iopv, 0.0001)) << snapshot->iopv;
        values.insert(snapshot->iopv);
    }
    EXPECT_GT(values.size(), 50U);
    const RecordedDay ordinary = dayOf("stock");
    for (const auto* snapshot : recordsOf<quoter::QuoterDepthData>(ordinary))
        ASSERT_EQ(snapshot->iopv, 0);
}

TEST(ClassFigures, shouldCarryOpenInterestAndSettlementPricesWhenTheyAreContracts)
{
    for (const char* name : {"future", "commodity-future", "option"}) {
        const RecordedDay day = dayOf(name);
        const auto quotes = recordsOf<quoter::QuoterAllData>(day);
        std::set<int> openInterests;
        for (const auto* quote : quotes) {
            openInterests.insert(quote->tradeStatus);
            EXPECT_GT(quote->tradeStatus, 1000) << name;
            EXPECT_EQ(quote->lastSettlementPrice, day.instrument.doubleFields.at(3002)) << name;
            EXPECT_EQ(quote->settlementPrice > 0, clockOf(day, *quote) >= 151000) << name;
        }
        EXPECT_GT(openInterests.size(), 20U) << name;
        EXPECT_NE(day.instrument.doubleFields.at(3002), day.instrument.lastClose) << name;

        const quoter::QuoterAllData& last = *quotes.back();
        const double average = last.amount / static_cast<double>(last.volume) / instrumentClass(name).contractSize;
        EXPECT_EQ(clockOf(day, last), 151000) << name;
        EXPECT_NEAR(last.settlementPrice, average, day.instrument.priceTick * 0.501) << name;
    }
}

TEST(ClassFigures, shouldCarryTheAveragePriceBesideTheLastWhenTheyAreBonds)
{
    for (const char* name : {"bond", "company-bond", "convertible", "convertible-b"}) {
        const RecordedDay day = dayOf(name);
        const auto snapshots = recordsOf<quoter::QuoterDepthData>(day);
        const quoter::QuoterDepthData& last = *snapshots.back();
        EXPECT_NEAR(last.lastPriceAlt, last.amount / static_cast<double>(last.volume), 0.000501) << name;
        EXPECT_NE(last.lastPriceAlt, last.lastPrice) << name;
        EXPECT_EQ(snapshots.front()->lastPriceAlt, 0) << name;
    }
}

TEST(ClassFigures, shouldShowNoBookWhenItIsAnIndex)
{
    for (const char* name : {"index", "cicc-index"}) {
        const RecordedDay day = dayOf(name);
        std::set<double> last;
        for (const auto* quote : recordsOf<quoter::QuoterAllData>(day)) {
            last.insert(quote->lastPrice);
            for (int i = 0; i < 5; ++i)
                ASSERT_EQ(quote->askPrice[i] + quote->bidPrice[i], 0) << name;
            ASSERT_EQ(quote->askVolume[0] + quote->bidVolume[0], 0) << name;
        }
        EXPECT_GT(last.size(), 20U) << name;
    }
}

TEST(ClassFigures, shouldCountContractsAndHandsOfTheirOwnWhenLotsDiffer)
{
    const std::pair<const char*, __int64> rows[] = {{"hk-stock", 500}, {"future", 1}, {"option", 1}};
    for (const auto& [name, lot] : rows) {
        const RecordedDay day = dayOf(name);
        bool isOneLot = false;
        __int64 before = 0;
        for (const auto* quote : recordsOf<quoter::QuoterAllData>(day)) {
            EXPECT_EQ(quote->volume % lot, 0) << name;
            isOneLot = isOneLot || quote->volume - before == lot;
            before = quote->volume;
        }
        EXPECT_TRUE(isOneLot) << name;
    }
}

} // namespace exchange
