#include "Formula/formulaparam.h"
#include "tests/support/layout.h"
#include "tests/support/requests.h"
#include "tests/tessimodel/transdistributiontest.h"
#include "ztservice/instrumentdetail.h"

#include <QMetaMethod>
#include <QMetaObject>

#include <type_traits>

namespace {

using namespace tests;

// --- members and the meta object ----------------------------------------------------------------------------------

TEST_F(TransDistributionTest, shouldHoldNothingWhenNew)
{
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_FALSE(model.m_isShSz);
    EXPECT_EQ(sumsText(model), "all 0 max 0");
    EXPECT_TRUE(model.m_ticks.isEmpty());
    EXPECT_TRUE(model.m_prices.isEmpty());
    EXPECT_TRUE(model.m_dateProvider.empty());
    EXPECT_FALSE(model.m_hasAfterHours);
    EXPECT_FALSE(model.m_hasAfterHoursSz);
    EXPECT_EQ(model.m_title, "");
    EXPECT_FALSE(model.m_titleSet);
    EXPECT_TRUE(model.m_pending.isEmpty());
    EXPECT_TRUE(model.m_ready);
    EXPECT_TRUE(model.init());
    EXPECT_TRUE(model.m_mutex.isRecursive());
}

TEST(TransDistributionData, shouldBeEmptyWhenNew)
{
    const TC::CModelTransDistribution::TransDistributionData tick;
    EXPECT_EQ(tick.price, 0);
    EXPECT_EQ(tick.totalVolume, 0);
    EXPECT_EQ(tick.volume, 0);
    EXPECT_FALSE(tick.isBuy);
    const TC::TransDistributionPrice row;
    EXPECT_EQ(row.price, 0);
    EXPECT_EQ(row.buyVolume, 0);
    EXPECT_EQ(row.sellVolume, 0);
    EXPECT_EQ(row.totalVolume, 0);
}

TEST_F(TransDistributionTest, shouldKeepContractOrderWhenMembersAreLaidOut)
{
    const TC::CModelTransDistribution::TransDistributionData tick;
    EXPECT_TRUE(standInOrder(tick.price, tick.totalVolume, tick.volume, tick.isBuy));
    const TC::TransDistributionPrice row;
    EXPECT_TRUE(standInOrder(row.price, row.buyVolume, row.sellVolume, row.totalVolume));
    EXPECT_TRUE(standInOrder(model.m_stock, model.m_isShSz, model.m_maxVolume, model.m_totalVolume, model.m_ticks,
                             model.m_prices, model.m_dateProvider, model.m_hasAfterHours, model.m_hasAfterHoursSz,
                             model.m_title, model.m_titleSet, model.m_pending, model.m_ready, model.m_mutex));
    EXPECT_TRUE(std::has_virtual_destructor_v<TC::CModelTransDistribution>);
}

TEST_F(TransDistributionTest, shouldBeKnownByItsQualifiedNameWhenAskedThroughTheMetaObject)
{
    const QMetaObject& meta = TC::CModelTransDistribution::staticMetaObject;
    EXPECT_STREQ(meta.className(), "TC::CModelTransDistribution");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(model.metaObject(), &meta);
    EXPECT_TRUE(model.inherits("TC::CModelTransDistribution"));
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 1);
    EXPECT_EQ(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Signal);
    EXPECT_EQ(meta.method(meta.methodOffset()).methodSignature(), "sigRedraw()");
}

TEST_F(TransDistributionTest, shouldTellWhetherHistoriesAreDoneWhenAskedToInit)
{
    model.m_ready = false;
    EXPECT_FALSE(model.init());
    model.m_ready = true;
    EXPECT_TRUE(model.init());
}

// --- the instrument -----------------------------------------------------------------------------------------------

TEST_F(TransDistributionTest, shouldKnowShanghaiAndShenzhenByWholeNameWhenSetUp)
{
    const std::pair<const char*, bool> cases[] = {{"SH", true},   {"SZ", true},    {"BJ", false},
                                                  {"SSE", false}, {"SZSE", false}, {"sh", false},
                                                  {"sz", false},  {"SHO", false},  {"S", false}};
    for (const auto& [market, expected] : cases) {
        model.m_isShSz = !expected;
        follow(market, "600000");
        EXPECT_EQ(model.m_isShSz, expected) << market;
        ASSERT_NE(model.m_stock, nullptr);
        EXPECT_EQ(model.m_stock->market, market);
    }
}

TEST_F(TransDistributionTest, shouldAskForTheAfterHoursTypeByTheInstrumentsOwnMarketWhenSetUp)
{
    follow("SH", "688001", {277});
    EXPECT_TRUE(model.m_hasAfterHours);
    EXPECT_FALSE(model.m_hasAfterHoursSz);

    for (const int other : {276, 278, 10006, 10005, 10007}) {
        follow("SH", "688001", {other});
        EXPECT_FALSE(model.m_hasAfterHours) << other;
        EXPECT_FALSE(model.m_hasAfterHoursSz) << other;
    }
    terminal.instruments.add(stock("SZ", "688001", {277}));
    model.setStock(keyOf("SH", "688001"));
    EXPECT_FALSE(model.m_hasAfterHours) << "the type of SZ 688001 does not count";
}

// Shenzhen's type is asked for with the market "SZ", whatever the instrument's own market is.
TEST_F(TransDistributionTest, shouldAskForShenzhensTypeByLiteralMarketWhenSetUp)
{
    follow("SZSE", "300001", {10006});
    EXPECT_FALSE(model.m_hasAfterHoursSz) << "the type of SZSE 300001 does not count";

    for (const int other : {277, 10005, 10007}) {
        terminal.instruments.add(stock("SZ", "300001", {other}));
        model.setStock(keyOf("SZSE", "300001"));
        EXPECT_FALSE(model.m_hasAfterHoursSz) << other;
    }
    terminal.instruments.add(stock("SZ", "300001", {10006}));
    model.setStock(keyOf("SZSE", "300001"));
    EXPECT_TRUE(model.m_hasAfterHoursSz) << "the type of SZ 300001 does";
    EXPECT_FALSE(model.m_hasAfterHours);
    model.setStock(keyOf("SZ", "300001"));
    EXPECT_TRUE(model.m_hasAfterHoursSz);
}

// Without an instrument Shenzhen's flag stays as it was, unlike the other two.
TEST_F(TransDistributionTest, shouldKeepShenzhensFlagAloneWhenKeyIsUnknown)
{
    follow("SH", "688001", {277});
    model.m_hasAfterHoursSz = true;
    model.setStock("nobody knows this");
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_FALSE(model.m_isShSz);
    EXPECT_FALSE(model.m_hasAfterHours);
    EXPECT_TRUE(model.m_hasAfterHoursSz);

    follow("SH", "688001", {277});
    ASSERT_FALSE(model.m_hasAfterHoursSz);
    model.setStock("");
    EXPECT_FALSE(model.m_hasAfterHoursSz);
}

TEST_F(TransDistributionTest, shouldTouchNoDataWhenItMovesToAnotherInstrument)
{
    follow("SZ", "000001");
    history({level1().last(10).volume(5)});
    ASSERT_TRUE(redraws.reach(3));
    redraws.forget();
    model.m_pending.append({10, 5, 5, true});
    model.m_title = "title";
    model.m_titleSet = true;
    model.m_dateProvider = [] { return 7; };
    for (const QString& key : {keyOf("SZ", "000001"), QString("nobody")}) {
        model.setStock(key);
        EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n");
        EXPECT_EQ(pricesText(model), "10 buys 0 sells 5 of 5\n");
        EXPECT_EQ(sumsText(model), "all 5 max 5");
        EXPECT_EQ(ticksText(model.m_pending), "10 +5 of 5 B\n");
        EXPECT_EQ(model.m_title, "title");
        EXPECT_TRUE(model.m_titleSet);
        EXPECT_FALSE(model.m_dateProvider.empty());
        EXPECT_TRUE(model.init());
        EXPECT_EQ(redraws.text(), "");
    }
}

// --- the request --------------------------------------------------------------------------------------------------

TEST_F(TransDistributionTest, shouldAskForTheLastTradingDayWhenRequested)
{
    terminal.instruments.setLastTradingDay(20240301);
    terminal.instruments.setLastTradingDay("BJ", 20240229);
    follow("SZ", "000001");
    TC::CFormulaParam param = strangeRequest();
    model.getParams(param);
    EXPECT_EQ(requestText(param), requestText(requestByVolume("SZ", "000001", timeOf("00:00:00"))));

    follow("BJ", "830001");
    param = strangeRequest();
    model.getParams(param);
    constexpr __int64 kDay = 86400000;
    EXPECT_EQ(requestText(param), requestText(requestByVolume("BJ", "830001", timeOf("00:00:00") - kDay)));
}

TEST_F(TransDistributionTest, shouldLeaveRequestAsItWasWhenWithoutInstrument)
{
    TC::CFormulaParam param = strangeRequest();
    model.getParams(param);
    follow("SZ", "000001");
    model.setStock("nobody");
    model.getParams(param);
    EXPECT_EQ(requestText(param), requestText(strangeRequest()));
}

// --- clear --------------------------------------------------------------------------------------------------------

TEST_F(TransDistributionTest, shouldKeepInstrumentAndWhatThePanelSetWhenCleared)
{
    follow("SH", "688001", {277});
    model.m_hasAfterHoursSz = true;
    history({level1().last(10).volume(5)});
    model.m_pending.append({10, 5, 5, true});
    model.m_title = "title";
    model.m_titleSet = true;
    model.m_dateProvider = [] { return 7; };
    ASSERT_TRUE(redraws.reach(3));
    redraws.forget();
    model.clear();
    EXPECT_EQ(ticksText(model), "");
    EXPECT_EQ(pricesText(model), "");
    EXPECT_EQ(sumsText(model), "all 0 max 0");
    EXPECT_TRUE(model.m_pending.isEmpty());
    EXPECT_NE(model.m_stock, nullptr);
    EXPECT_TRUE(model.m_isShSz);
    EXPECT_TRUE(model.m_hasAfterHours);
    EXPECT_TRUE(model.m_hasAfterHoursSz);
    EXPECT_EQ(model.m_title, "title");
    EXPECT_TRUE(model.m_titleSet);
    EXPECT_FALSE(model.m_dateProvider.empty());
    EXPECT_TRUE(model.init());
    EXPECT_EQ(redraws.text(), "");
    model.m_ready = false;
    model.clear();
    EXPECT_FALSE(model.init()) << "clear does not end a history";
    model.m_ready = true;
}

// The lists are freed where they stand: nothing goes to the strand that frees big containers.
TEST_F(TransDistributionTest, shouldFreeRowsInPlaceWhenCleared)
{
    terminal.strands.runByHand();
    follow("SZ", "000001");
    history({level1().last(10).volume(5)});
    model.clear();
    history({level1().last(10).volume(5)});
    history({});
    EXPECT_FALSE(terminal.strands.drain("data_release"));
}

// A panel may have taken a copy of the lists.
TEST_F(TransDistributionTest, shouldLeaveCopiesOfTheListsAloneWhenItGoesOn)
{
    follow("SZ", "000001");
    history({level1().last(10).volume(5)});
    const auto ticks = model.m_ticks;
    const auto prices = model.m_prices;
    model.live({level1().last(10).volume(9)});
    EXPECT_EQ(ticksText(model), "10 +5 of 5 S\n"
                                "10 +4 of 9 B\n");
    model.clear();
    EXPECT_EQ(ticksText(ticks), "10 +5 of 5 S\n");
    ASSERT_EQ(prices.size(), 1);
    EXPECT_EQ(prices[0].totalVolume, 5);
}

} // namespace
