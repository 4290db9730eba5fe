#include "luawrapper/luamodulectrl.h"
#include "tests/tessimodel/figuredstock.h"
#include "tests/tessimodel/todayparam.h"

#include <functional>
#include <vector>

namespace {

using namespace tests;
using namespace TC;
using standin::InstrumentDescription;

// --- the list of an instrument's class ----------------------------------------------------------------------------

// What makes an instrument be of a class, and the list of it; the first that applies wins.
struct ClassRow {
    const char* list;
    std::function<void(InstrumentDescription&)> make;
    bool byMarket = false; // so that it excludes others of that kind
};

std::function<void(InstrumentDescription&)> ofType(int type)
{
    return [type](InstrumentDescription& instrument) { instrument.types.insert(type); };
}

std::function<void(InstrumentDescription&)> onMarket(const char* market)
{
    return [market](InstrumentDescription& instrument) { instrument.market = market; };
}

// A receipt goes by the stock's code.
void withReceipt(InstrumentDescription& instrument)
{
    instrument.code = "601688";
    instrument.gdrCode = "HTSC";
}

const std::vector<ClassRow>& classes()
{
    static const std::vector<ClassRow> rows = {
        {"afterHoursA", ofType(277)},
        {"afterHoursB", ofType(10006)},
        {"registeredA", ofType(10004)},
        {"registeredB", ofType(196)},
        {"gdr", withReceipt},
        {"future", onMarket("IF"), true},
        {"option", onMarket("SHO"), true},
        {"stock", ofType(100003)},
        {"fund", ofType(100013)},
        {"index", [](InstrumentDescription& instrument) { instrument.isIndex = true; }},
        {"newRuleBond", ofType(135)},
        {"bond", [](InstrumentDescription& instrument) { instrument.classBits = kBondClass; }},
        {"hk", onMarket("HK"), true},
        {"ciccIndex", onMarket("CICC"), true},
        {"default", [](InstrumentDescription&) {}},
    };
    return rows;
}

class TodayParamClassTest : public TodayParamTest {
protected:
    TodayParamClassTest()
    {
        terminal.answers.setModule(luawrapper::kModuleBlockTradeConvertibleBond, true);
        terminal.answers.setBoardNewRules(true);
    }

    std::string listOf(const InstrumentDescription& instrument)
    {
        follow(instrument);
        return listInForce(model);
    }
};

TEST_F(TodayParamClassTest, shouldShowTheListOfItsClassWhenInstrumentIsOfOneAlone)
{
    ASSERT_EQ(classes().size(), 15U);
    for (const ClassRow& row : classes()) {
        InstrumentDescription instrument = stock("SH", "600001");
        row.make(instrument);
        EXPECT_EQ(listOf(instrument), row.list);
    }
}

TEST_F(TodayParamClassTest, shouldShowTheListOfTheEarlierClassWhenInstrumentIsOfTwo)
{
    for (auto earlier = classes().begin(); earlier != classes().end(); ++earlier) {
        for (auto later = earlier + 1; later != classes().end(); ++later) {
            if (earlier->byMarket && later->byMarket)
                continue;
            InstrumentDescription instrument = stock("SH", "600001");
            earlier->make(instrument);
            later->make(instrument);
            EXPECT_EQ(listOf(instrument), earlier->list) << "and of " << later->list;
        }
    }
}

// Which market has the terminal's own indices is the terminal's to say.
TEST_F(TodayParamClassTest, shouldShowTheListOfTheEarlierClassWhenItsMarketIsThatOfOwnIndices)
{
    const std::pair<const char*, const char*> markets[] = {{"IF", "future"}, {"SHO", "option"}, {"HK", "hk"}};
    for (const auto& [market, list] : markets) {
        terminal.answers.setOwnIndexMarket(market);
        EXPECT_EQ(listOf(stock(market, "600001")), list);
    }
    terminal.answers.setOwnIndexMarket("SH");
    EXPECT_EQ(listOf(stock("SH", "600001")), "ciccIndex");
    EXPECT_EQ(listOf(stock("CICC", "600001")), "default");
}

TEST_F(TodayParamClassTest, shouldShowAfterHoursListWhenAlsoOnAFutureMarket)
{
    EXPECT_EQ(listOf(stock("CFFEX", "600001", {277})), "afterHoursA");
}

// Bonds without the entitlement are bonds like any other.
TEST_F(TodayParamClassTest, shouldFallToTheLaterClassesWhenUserIsNotEntitled)
{
    terminal.answers.setModule(luawrapper::kModuleBlockTradeConvertibleBond, false);
    InstrumentDescription convertible = stock("SH", "113001", {135, 10019});
    EXPECT_EQ(listOf(convertible), "default");
    convertible.classBits = kBondClass;
    EXPECT_EQ(listOf(convertible), "bond");

    terminal.answers.setBoardNewRules(false);
    EXPECT_EQ(listOf(stock("SH", "600001", {10004, 196, 101, 100003})), "stock");
}

TEST_F(TodayParamClassTest, shouldKnowFuturesAndOptionsByTheWholeMarketWhenSetUp)
{
    const std::pair<const char*, const char*> markets[] = {
        {"DF", "future"},    {"DCE", "future"},   {"ZF", "future"},   {"CZCE", "future"},  {"SF", "future"},
        {"SHFE", "future"},  {"GF", "future"},    {"GFEX", "future"}, {"IF", "future"},    {"CFFEX", "future"},
        {"INE", "future"},   {"SHO", "option"},   {"SZO", "option"},  {"SH", "default"},   {"SZ", "default"},
        {"BJ", "default"},   {"HKX", "default"},  {"dce", "default"}, {"DCEX", "default"}, {"XDCE", "default"},
        {"D", "default"},    {"INEX", "default"}, {"IFX", "default"}, {"CFFE", "default"}, {"SHOX", "default"},
        {"SZOX", "default"}, {"LSE", "default"},  {"SFE", "default"}, {"F", "default"},    {"sho", "default"},
    };
    for (const auto& [market, list] : markets)
        EXPECT_EQ(listOf(stock(market, "600001")), list) << market;
}

// --- what setStock says -------------------------------------------------------------------------------------------

TEST_F(TodayParamClassTest, shouldTellWhetherTheListIsAnotherWhenFollowing)
{
    EXPECT_FALSE(follow("SH", "600001")) << "the default list is in force from the start";
    EXPECT_FALSE(model.setStock("nobody knows this"));
    EXPECT_TRUE(follow("SH", "600001", {100003}));
    EXPECT_FALSE(follow("SH", "600001", {100003})) << "the same instrument again";
    EXPECT_FALSE(follow("SZ", "000001", {100003})) << "another one of its class";
    EXPECT_TRUE(follow("SH", "688001", {277}));
    EXPECT_TRUE(follow("SH", "600001"));
    EXPECT_TRUE(follow("HK", "00700"));
    EXPECT_TRUE(model.setStock("nobody knows this"));
    EXPECT_FALSE(model.setStock("nobody else knows this"));
}

// It is the list that counts, not its entries: these two are alike.
TEST_F(TodayParamClassTest, shouldTellOfAnotherListWhenItsEntriesAreTheSame)
{
    follow("CFFEX", "IF2403");
    ASSERT_EQ(listText(*model.m_paramList), listText(model.m_optionParams));
    EXPECT_TRUE(follow("SHO", "10006001"));
}

TEST_F(TodayParamClassTest, shouldKeepTheListInForceWhenListsAreBuiltAnew)
{
    follow("SH", "600001", {100003});
    model.initParams();
    EXPECT_EQ(listInForce(model), "stock");
    model.clear();
    EXPECT_EQ(listInForce(model), "stock");
}

// --- what an instrument change leaves alone -----------------------------------------------------------------------

TEST_F(TodayParamClassTest, shouldKeepTheDayWhenFollowingAnotherInstrument)
{
    follow("SH", "688001", {277});
    model.history({level1("09:30:00").last(10).volume(5)});
    model.live({level2("09:30:03").last(10.1).volume(9)});
    model.quoteAuxCallback(summary("10:00:00"));
    const auto all = model.m_lastAll;
    const auto depth = model.m_lastDepth;
    ASSERT_TRUE(all && depth && model.m_lastContinuous);
    const auto expectDay = [&] {
        EXPECT_EQ(model.m_lastAll, all);
        EXPECT_EQ(model.m_lastDepth, depth);
        EXPECT_NE(model.m_lastContinuous, nullptr);
        EXPECT_EQ(model.m_tradeCount, 2);
        EXPECT_EQ(model.m_history.size(), 2U);
        EXPECT_EQ(model.m_pendingAux.size(), 1U);
    };
    expectDay();
    follow("SZ", "000001");
    expectDay();
    model.setStock("nobody knows this");
    expectDay();
}

// Old texts stay: a panel empties them by clear().
TEST_F(TodayParamClassTest, shouldKeepOldTextsWhenNextKeyIsUnknown)
{
    auto known = stock("SH", "688001", {277});
    known.upStopPrice = 12;
    known.downStopPrice = 8;
    known.listingFlags = 1 << 19;
    follow(known);
    const std::string before = tableText(model);
    const QList<int> listed = model.m_afterHoursParamsA;
    model.setStock("nobody knows this");
    EXPECT_EQ(tableText(model), before);
    EXPECT_EQ(model.m_afterHoursParamsA, listed) << "the listing rows are left in their lists";
    EXPECT_EQ(listed.last(), 1038);
}

TEST_F(TodayParamClassTest, shouldHaveEmptyRowsWhenFirstKeyIsUnknown)
{
    EXPECT_FALSE(model.setStock("nobody knows this"));
    EXPECT_EQ(tableText(model), tableText(TodayParam()));
}

} // namespace
