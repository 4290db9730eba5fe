#include "luawrapper/luamodulectrl.h"
#include "tests/tessimodel/figuredstock.h"
#include "tests/tessimodel/todayparam.h"

#include <cfloat>

namespace {

using namespace tests;
using namespace TC;
using standin::InstrumentDescription;

// What is there again after clear(), by older rules than those of setStock.
class TodayParamClearTest : public TodayParamTest {
protected:
    void entitleToModule(bool entitled)
    {
        terminal.answers.setModule(luawrapper::kModuleBlockTradeConvertibleBond, entitled);
    }

    // Follows and clears. The rows that then have a text.
    std::string rowsAfterClear(const InstrumentDescription& instrument)
    {
        follow(instrument);
        model.clear();
        return filledText(model);
    }
};

// Shares show two digits here where setStock shows none.
TEST_F(TodayParamClearTest, shouldShowTwoDigitsOfSharesWhenClearedAndNoneWhenSetUp)
{
    follow(figuredStock());
    EXPECT_EQ(filledText(model), "7 12.34\n21 13.57\n22 11.11\n26 25亿\n27 1亿\n28 309亿\n29 15亿\n");
    model.clear();
    EXPECT_EQ(filledText(model), "7 12.34\n21 13.57\n22 11.11\n26 25.00亿\n27 1.23亿\n28 309亿\n29 15亿\n");
    model.setStock(keyOf("SH", "600001"));
    EXPECT_EQ(filledText(model), "7 12.34\n21 13.57\n22 11.11\n26 25亿\n27 1亿\n28 309亿\n29 15亿\n");
}

TEST_F(TodayParamClearTest, shouldShowPreviousSettlementWhenAFutureIsCleared)
{
    EXPECT_EQ(rowsAfterClear(figuredStock("INE")),
              "7 12.34\n8 55.50\n21 13.57\n22 11.11\n26 25.00亿\n27 1.23亿\n28 309亿\n29 15亿\n");
    EXPECT_EQ(rowsAfterClear(figuredStock("SHO")),
              "7 12.34\n21 13.57\n22 11.11\n26 25.00亿\n27 1.23亿\n28 309亿\n29 15亿\n");
}

// Bonds by the older rule: by their types, of which one counts for Shanghai alone.
TEST_F(TodayParamClearTest, shouldKnowBondsByTheOlderRuleWhenCleared)
{
    const auto isBondAfterClear = [this](const InstrumentDescription& instrument) {
        const std::string rows = rowsAfterClear(instrument);
        EXPECT_EQ(rows.find("29 1523万\n") != std::string::npos, model.m_isBond) << rows;
        EXPECT_EQ(rows.find("28 3亿\n") != std::string::npos, model.m_isBond) << rows;
        return model.m_isBond;
    };
    EXPECT_TRUE(isBondAfterClear(figuredStock("SH", {100016})));
    EXPECT_TRUE(isBondAfterClear(figuredStock("SZ", {100016})));
    EXPECT_TRUE(isBondAfterClear(figuredStock("SH", {126})));
    EXPECT_FALSE(isBondAfterClear(figuredStock("SH")));
    EXPECT_FALSE(isBondAfterClear(figuredStock("SH", {125, 127, 100015, 100017})));

    InstrumentDescription byClass = figuredStock("SZ");
    byClass.classBits = kBondClass;
    follow(byClass);
    ASSERT_TRUE(model.m_isBond);
    EXPECT_FALSE(isBondAfterClear(byClass)) << "the class does not count here";
}

TEST_F(TodayParamClearTest, shouldAskForTheShanghaiTypeByLiteralMarketWhenCleared)
{
    rowsAfterClear(figuredStock("SSE", {126}));
    EXPECT_FALSE(model.m_isBond) << "the type of SSE 600001 does not count";
    terminal.instruments.add(figuredStock("SH", {126}));
    rowsAfterClear(figuredStock("SSE"));
    EXPECT_TRUE(model.m_isBond) << "the type of SH 600001 does";
    rowsAfterClear(figuredStock("SZ"));
    EXPECT_TRUE(model.m_isBond);
}

TEST_F(TodayParamClearTest, shouldWorkOutThreeFlagsAndTheTickWhenCleared)
{
    entitleToModule(true);
    InstrumentDescription instrument = figuredStock("SH", {135, 100016, 100013, 277, 10006});
    instrument.priceTick = 0.005;
    follow(instrument);
    ASSERT_EQ(flagsText(model), "newRuleBond iopvFund afterHoursA afterHoursB");
    model.m_priceTick = 7;
    model.m_isIopvFund = model.m_isNewRuleBond = false;
    model.clear();
    EXPECT_EQ(flagsText(model), "newRuleBond bond iopvFund afterHoursA afterHoursB");
    EXPECT_EQ(model.m_priceTick, 0.005);

    entitleToModule(false);
    model.clear();
    EXPECT_EQ(flagsText(model), "bond iopvFund afterHoursA afterHoursB") << "by the entitlement of now";

    InstrumentDescription plain = figuredStock("SH", {10019});
    follow(plain);
    model.m_isNewRuleBond = model.m_isBond = model.m_isIopvFund = true;
    model.clear();
    EXPECT_EQ(flagsText(model), "");
    entitleToModule(true);
    model.clear();
    EXPECT_EQ(flagsText(model), "newRuleBond");
}

// The other flags are the last setStock's.
TEST_F(TodayParamClearTest, shouldKeepTheOtherFlagsWhenCleared)
{
    const auto raiseOthers = [this] {
        model.m_isAfterHoursA = model.m_isOption = model.m_isAfterHoursB = model.m_isRegisteredA = model.m_hasGdr =
            model.m_isHk = model.m_isRegisteredB = model.m_isNewLoan = true;
    };
    follow(figuredStock());
    raiseOthers();
    model.clear();
    EXPECT_EQ(flagsText(model), "afterHoursA option afterHoursB registeredA gdr hk registeredB");
    EXPECT_TRUE(model.m_isNewLoan);

    model.setStock("nobody knows this");
    raiseOthers();
    model.m_isNewRuleBond = model.m_isBond = model.m_isIopvFund = true;
    model.m_priceTick = 7;
    model.m_lastClose = 7;
    model.clear();
    EXPECT_EQ(flagsText(model), "afterHoursA option afterHoursB registeredA gdr hk registeredB");
    EXPECT_TRUE(model.m_isNewLoan);
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_EQ(model.m_lastClose, DBL_MAX);
    EXPECT_EQ(filledText(model), "");
}

TEST_F(TodayParamClearTest, shouldTakeTheLastCloseFromTheInstrumentAgainWhenCleared)
{
    follow(figuredStock());
    model.setLastClose(7);
    model.clear();
    EXPECT_EQ(model.m_lastClose, 12.34);
}

// Receipt, listing facts and interest come back with setStock only.
TEST_F(TodayParamClearTest, shouldLoseTheTextsOfSetUpWhenCleared)
{
    InstrumentDescription everything = figuredStock("SH", {277, 10006, 100016});
    everything.gdrCode = "HTSC";
    everything.classBits = kBondClass;
    everything.listingFlags = 1 << 19;
    follow(everything);
    model.m_gdrStock = model.m_stock;
    follow(everything);
    ASSERT_EQ(filledText(model),
              "7 12.34\n21 13.57\n22 11.11\n26 25亿\n27 1亿\n28 3亿\n29 1523万\n35 12.50%\n36 123.45亿\n"
              "37 未盈利\n38 无差异\n47 不具有\n48 55.50\n49 0\n50 0:0\n51 0.00%\n52 1.28\n");
    model.clear();
    EXPECT_EQ(filledText(model), "7 12.34\n21 13.57\n22 11.11\n26 25.00亿\n27 1.23亿\n28 3亿\n29 1523万\n");
}

TEST_F(TodayParamClearTest, shouldKeepLabelsColoursAndListsWhenCleared)
{
    terminal.answers.setNewBondsAuth(true);
    InstrumentDescription loan = figuredStock("SH", {100016, 277});
    loan.listingFlags = 1 << 19;
    follow(loan);
    for (auto& [id, row] : model.m_params)
        row.colorKey = "kept";
    const QList<int> list = *model.m_paramList;
    model.clear();
    EXPECT_EQ(labelOf(model, RP_TOTAL_VOLUME), "总量");
    EXPECT_EQ(labelOf(model, RP_CURRENT_VOLUME), "现量");
    for (const auto& [id, row] : model.m_params)
        EXPECT_EQ(row.colorKey.toStdString(), "kept") << id;
    EXPECT_EQ(listInForce(model), "afterHoursA");
    EXPECT_EQ(*model.m_paramList, list);
    EXPECT_EQ(model.m_params.size(), 49U);
}

} // namespace
