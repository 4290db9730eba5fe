#include "tests/tessimodel/figuredstock.h"
#include "tests/tessimodel/limittexts.h"
#include "tests/tessimodel/todayparam.h"

#include <cfloat>
#include <climits>
#include <tuple>

namespace {

using namespace tests;
using namespace TC;
using standin::InstrumentDescription;

class TodayParamFixedRowsTest : public TodayParamTest {
protected:
    // The rows that have a text once a new table follows the instrument.
    std::string rowsOf(const InstrumentDescription& instrument)
    {
        terminal.instruments.add(instrument);
        TodayParam fresh;
        fresh.setStock(keyOf(instrument.market, instrument.code));
        return filledText(fresh);
    }
};

const std::string kCommon = "7 12.34\n21 13.57\n22 11.11\n26 25亿\n27 1亿\n28 309亿\n29 15亿\n";

// --- rows of every instrument -------------------------------------------------------------------------------------

TEST_F(TodayParamFixedRowsTest, shouldFillTheRowsThatNeedNoQuoteWhenInstrumentIsKnown)
{
    EXPECT_EQ(rowsOf(figuredStock()), kCommon);
    EXPECT_EQ(rowsOf(figuredStock("HK")), kCommon);
    EXPECT_EQ(rowsOf(figuredStock("SHO")), kCommon) << "an option has no previous settlement here";
}

TEST_F(TodayParamFixedRowsTest, shouldTakeAHundredthOfTheCloseForMarketValuesWhenABond)
{
    InstrumentDescription bond = figuredStock();
    bond.classBits = kBondClass;
    bond.priceTick = 0.001;
    EXPECT_EQ(rowsOf(bond), "7 12.340\n21 13.570\n22 11.110\n26 25亿\n27 1亿\n28 3亿\n29 1523万\n52 1.275\n");
}

TEST_F(TodayParamFixedRowsTest, shouldShowPreviousSettlementWhenAFuture)
{
    for (const char* market : {"DF", "DCE", "ZF", "CZCE", "SF", "SHFE", "GF", "GFEX", "IF", "CFFEX", "INE"}) {
        InstrumentDescription future = figuredStock(market);
        future.priceTick = 0.2;
        EXPECT_EQ(rowsOf(future), "7 12.3\n8 55.5\n21 13.6\n22 11.1\n26 25亿\n27 1亿\n28 309亿\n29 15亿\n") << market;
    }
}

TEST_F(TodayParamFixedRowsTest, shouldShowNoSharesWhenInstrumentHasNone)
{
    EXPECT_EQ(rowsOf(stock("SH", "600001")), "7 10.00\n21 -\n22 -\n26 0\n27 0\n28 0\n29 0\n");
}

TEST_F(TodayParamFixedRowsTest, shouldShowRejectedTextsWhenFieldsAreNoNumbers)
{
    InstrumentDescription strange = stock("SH", "600001", {277});
    strange.lastClose = DBL_MAX;
    strange.upStopPrice = kNaN;
    strange.downStopPrice = DBL_MAX;
    strange.doubleFields = {{3000, kNaN}, {3015, kNaN}, {3016, 1e9}};
    EXPECT_EQ(rowsOf(strange), "7 --\n21 --\n22 --\n26 非法值\n27 10亿\n28 非法值\n29 非法值\n35 非法值\n");
}

TEST_F(TodayParamFixedRowsTest, shouldShowADashWhenThereIsNoLimit)
{
    for (const auto& [limit, text] : kLimitTexts) {
        InstrumentDescription instrument = stock("SH", "600001");
        instrument.upStopPrice = limit;
        instrument.downStopPrice = 7;
        follow(instrument);
        EXPECT_EQ(textOf(model, RP_UP_LIMIT), text) << limit;
        EXPECT_EQ(textOf(model, RP_DOWN_LIMIT), "7.00");

        instrument.upStopPrice = 9;
        instrument.downStopPrice = limit;
        follow(instrument);
        EXPECT_EQ(textOf(model, RP_UP_LIMIT), "9.00");
        EXPECT_EQ(textOf(model, RP_DOWN_LIMIT), text) << limit;
    }
}

// The tick is the instrument's: the same limit reads differently for another one.
TEST_F(TodayParamFixedRowsTest, shouldShowTheSameLimitsByAnotherTickWhenInstrumentHasOne)
{
    InstrumentDescription instrument = figuredStock();
    for (const auto& [tick, up, down] : {std::tuple(0.01, "13.57", "11.11"), std::tuple(0.001, "13.570", "11.110"),
                                         std::tuple(0.1, "13.6", "11.1"), std::tuple(0.01, "13.57", "11.11")}) {
        instrument.priceTick = tick;
        follow(instrument);
        EXPECT_EQ(textOf(model, RP_UP_LIMIT), up);
        EXPECT_EQ(textOf(model, RP_DOWN_LIMIT), down);
    }
    std::swap(instrument.upStopPrice, instrument.downStopPrice);
    follow(instrument);
    EXPECT_EQ(textOf(model, RP_UP_LIMIT), "11.11");
    EXPECT_EQ(textOf(model, RP_DOWN_LIMIT), "13.57");
}

// Of all rows only the two with a changing label and the premium are given a colour.
TEST_F(TodayParamFixedRowsTest, shouldKeepColoursWhenRowsAreFilled)
{
    for (auto& [id, row] : model.m_params)
        row.colorKey = "kept";
    InstrumentDescription everything = figuredStock("IF", {277, 10006});
    everything.classBits = kBondClass;
    everything.listingFlags = -1;
    follow(everything);
    ASSERT_EQ(filledText(model), "7 12.34\n8 55.50\n21 13.57\n22 11.11\n26 25亿\n27 1亿\n28 3亿\n29 1523万\n"
                                 "35 12.50%\n36 123.45亿\n37 已盈利\n38 存在差异\n47 具有\n52 1.28\n");
    for (const auto& [id, row] : model.m_params) {
        const bool hasLabelOfItsUnit = id == RP_TOTAL_VOLUME || id == RP_CURRENT_VOLUME;
        EXPECT_EQ(row.colorKey == "kept", !hasLabelOfItsUnit) << id;
    }
}

// --- listing facts ------------------------------------------------------------------------------------------------

constexpr int kVie = 1 << 20;

TEST_F(TodayParamFixedRowsTest, shouldShowListingFactsWhenClassHasThem)
{
    terminal.answers.setBoardNewRules(true);
    const auto extraRows = [this](const std::set<int>& types, int listingFlags) {
        InstrumentDescription instrument = figuredStock("SH", types);
        instrument.listingFlags = listingFlags;
        const std::string rows = rowsOf(instrument);
        EXPECT_EQ(rows.substr(0, kCommon.size()), kCommon);
        return rows.substr(kCommon.size());
    };
    EXPECT_EQ(extraRows({277}, 0), "35 12.50%\n36 123.45亿\n");
    EXPECT_EQ(extraRows({277}, kVie), "35 12.50%\n36 123.45亿\n");
    EXPECT_EQ(extraRows({10006}, 0), "36 123.45亿\n47 不具有\n");
    EXPECT_EQ(extraRows({10006}, kVie), "36 123.45亿\n47 具有\n");
    EXPECT_EQ(extraRows({10006}, ~kVie & ~(1 << 19)), "36 123.45亿\n47 不具有\n");
    EXPECT_EQ(extraRows({10004}, 0), "36 123.45亿\n47 不具有\n");
    EXPECT_EQ(extraRows({10004}, kVie), "36 123.45亿\n47 具有\n");
    EXPECT_EQ(extraRows({196}, kVie), "") << "registered B tells none";
    EXPECT_EQ(extraRows({277, 10006}, kVie), "35 12.50%\n36 123.45亿\n47 具有\n") << "both, whatever the list";
    EXPECT_EQ(extraRows({277, 10004}, 0), "35 12.50%\n36 123.45亿\n47 不具有\n");
    EXPECT_EQ(extraRows({}, kVie), "");
    terminal.answers.setBoardNewRules(false);
    EXPECT_EQ(extraRows({10004}, kVie), "");
}

TEST_F(TodayParamFixedRowsTest, shouldShowRegisteredCapitalInUnitsWhenGivenInMillions)
{
    const std::pair<int, const char*> capitals[] = {
        {0, "0"},
        {1, "100.00万"},
        {-1, "-100.00万"},
        {9999, "99.99亿"},
        {5000, "50.00亿"},
        {2147483646, "2147.48万亿"},
        {INT_MIN, "-2147.48万亿"},
    };
    for (const int type : {277, 10006}) {
        for (const auto& [millions, text] : capitals) {
            InstrumentDescription instrument = figuredStock("SH", {type});
            instrument.intFields[2022] = millions;
            follow(instrument);
            EXPECT_EQ(textOf(model, RP_REGISTERED_CAPITAL), text) << millions;
        }
    }
}

// What is not written keeps the text of the instrument before.
TEST_F(TodayParamFixedRowsTest, shouldLeaveRegisteredCapitalWhenThereIsNone)
{
    for (const int type : {277, 10006}) {
        InstrumentDescription instrument = figuredStock("SH", {type});
        instrument.intFields[2022] = 2147483647;
        model.m_params[RP_REGISTERED_CAPITAL].text = "of old";
        follow(instrument);
        EXPECT_EQ(textOf(model, RP_REGISTERED_CAPITAL), "of old");
    }
    EXPECT_EQ(textOf(model, RP_VIE), "不具有") << "the row beside it is written";
}

TEST_F(TodayParamFixedRowsTest, shouldLeaveRowsOfOtherClassesWhenFollowing)
{
    InstrumentDescription bond = figuredStock("IF", {277, 10006});
    bond.classBits = kBondClass;
    follow(bond);
    follow(stock("SZ", "000001"));
    EXPECT_EQ(filledText(model), "7 10.00\n8 55.50\n21 -\n22 -\n26 0\n27 0\n28 0\n29 0\n"
                                 "35 12.50%\n36 123.45亿\n47 不具有\n52 1.28\n");
}

} // namespace
