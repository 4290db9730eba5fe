#include "tests/support/layout.h"
#include "tests/tessimodel/figuredstock.h"
#include "tests/tessimodel/todayparam.h"

#include <cfloat>
#include <cmath>
#include <type_traits>

namespace {

using namespace tests;
using namespace TC;

// --- the 49 rows --------------------------------------------------------------------------------------------------

struct CatalogueRow {
    int value;
    ERealtimeParam id;
    const char* label;
    const char* colour;
};

const CatalogueRow kCatalogue[] = {
    {0, RP_LAST, "最新", "ic_clr_modulegroup_default_text"},
    {1, RP_AVERAGE, "均价", "ic_clr_modulegroup_default_text"},
    {2, RP_CHANGE, "涨跌", "ic_clr_modulegroup_default_text"},
    {3, RP_CHANGE_SETTLE, "涨跌[结]", "ic_clr_modulegroup_default_text"},
    {4, RP_RISE, "涨幅", "ic_clr_modulegroup_default_text"},
    {5, RP_RISE_SETTLE, "涨幅[结]", "ic_clr_modulegroup_default_text"},
    {6, RP_AMPLITUDE, "振幅", "ic_clr_modulegroup_default_text"},
    {7, RP_LAST_CLOSE, "昨收", "ic_clr_modulegroup_default_text"},
    {8, RP_LAST_SETTLE, "前结", "ic_clr_global_equal"},
    {9, RP_OPEN, "今开", "ic_clr_modulegroup_default_text"},
    {10, RP_HIGH, "最高", "ic_clr_modulegroup_default_text"},
    {11, RP_LOW, "最低", "ic_clr_modulegroup_default_text"},
    {12, RP_TRADE_COUNT, "总笔", "ic_clr_modulegroup_default_text"},
    {13, RP_VOLUME_PER_TRADE, "每笔", "ic_clr_modulegroup_default_text"},
    {14, RP_TOTAL_VOLUME, "总手", "ic_clr_entrust_amount"},
    {15, RP_CURRENT_VOLUME, "现手", "ic_clr_modulegroup_default_text"},
    {16, RP_TOTAL_AMOUNT, "总额", "ic_clr_model_today_amount"},
    {18, RP_COMMISSION_RATIO, "委比", "ic_clr_modulegroup_default_text"},
    {19, RP_OPEN_INTEREST, "持仓", "ic_clr_model_today_position"},
    {20, RP_SETTLE, "今结", "ic_clr_modulegroup_default_text"},
    {21, RP_UP_LIMIT, "涨停", "ic_clr_entrust_text_rise"},
    {22, RP_DOWN_LIMIT, "跌停", "ic_clr_entrust_text_fall"},
    {23, RP_IOPV, "IOPV", "ic_clr_modulegroup_default_text"},
    {24, RP_INNER, "内盘", "ic_clr_entrust_text_fall"},
    {25, RP_OUTER, "外盘", "ic_clr_entrust_text_rise"},
    {26, RP_TOTAL_SHARES, "总股本", "ic_clr_modulegroup_default_text"},
    {27, RP_FLOAT_SHARES, "流通盘", "ic_clr_modulegroup_default_text"},
    {28, RP_TOTAL_MARKET_VALUE, "总市值", "ic_clr_entrust_amount"},
    {29, RP_FLOAT_MARKET_VALUE, "流通市值", "ic_clr_entrust_amount"},
    {30, RP_TURNOVER, "换手", "ic_clr_modulegroup_default_text"},
    {31, RP_TOTAL_BID, "总买", "ic_clr_entrust_amount"},
    {32, RP_BID_AVERAGE, "均价", "ic_clr_modulegroup_default_text"},
    {33, RP_TOTAL_ASK, "总卖", "ic_clr_entrust_amount"},
    {34, RP_ASK_AVERAGE, "均价", "ic_clr_modulegroup_default_text"},
    {35, RP_SAME_RIGHTS, "同股同权", "ic_clr_modulegroup_default_text"},
    {36, RP_REGISTERED_CAPITAL, "注册资本", "ic_clr_modulegroup_default_text"},
    {37, RP_PROFITABLE, "是否盈利", "ic_clr_modulegroup_default_text"},
    {38, RP_VOTING_RIGHTS, "表决权", "ic_clr_modulegroup_default_text"},
    {39, RP_AFTER_HOURS_AMOUNT, "盘后额", "ic_clr_modulegroup_default_text"},
    {40, RP_AFTER_HOURS_VOLUME, "盘后量", "ic_clr_modulegroup_default_text"},
    {42, RP_TRADE_STATUS, "交易状态", "ic_clr_model_trade_status"},
    {46, RP_IS_REGISTERED, "是否注册制", "ic_clr_modulegroup_default_text"},
    {47, RP_VIE, "协议控制架构", "ic_clr_modulegroup_default_text"},
    {48, RP_GDR_CLOSE, "收盘价", "ic_clr_modulegroup_default_text"},
    {49, RP_GDR_SHARES, "份额", "ic_clr_modulegroup_default_text"},
    {50, RP_GDR_RATIO, "转换比例", "ic_clr_modulegroup_default_text"},
    {51, RP_GDR_PREMIUM, "溢价率", "ic_clr_modulegroup_default_text"},
    {52, RP_ACCRUED_INTEREST, "应计利息", "ic_clr_modulegroup_default_text"},
    {53, RP_DIRTY_SETTLE, "结算价全价", "ic_clr_modulegroup_default_text"},
};

using TodayParamCatalogueTest = TodayParamTest;

TEST_F(TodayParamCatalogueTest, shouldHoldEveryRowWithLabelAndColourWhenNew)
{
    ASSERT_EQ(std::size(kCatalogue), 49U);
    ASSERT_EQ(model.m_params.size(), std::size(kCatalogue));
    auto row = model.m_params.begin();
    for (const CatalogueRow& expected : kCatalogue) {
        SCOPED_TRACE(expected.value);
        EXPECT_EQ(static_cast<int>(expected.id), expected.value);
        EXPECT_EQ(static_cast<int>(row->first), expected.value);
        EXPECT_EQ(row->second.id, expected.value);
        EXPECT_EQ(row->second.label.toStdString(), expected.label);
        EXPECT_EQ(row->second.colorKey.toStdString(), expected.colour);
        EXPECT_EQ(row->second.text.toStdString(), "");
        ++row;
    }
}

// A panel tells the whole book's averages from the day's by their place.
TEST_F(TodayParamCatalogueTest, shouldShareALabelWhenThreeRowsAreAverages)
{
    std::string sharing;
    for (const auto& [id, row] : model.m_params) {
        if (row.label == "均价")
            sharing += std::to_string(id) + " ";
    }
    EXPECT_EQ(sharing, "1 32 34 ");
}

TEST_F(TodayParamCatalogueTest, shouldStandWithoutInstrumentWhenNew)
{
    EXPECT_EQ(listInForce(model), "default");
    EXPECT_EQ(filledText(model), "");
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_EQ(model.m_gdrStock, nullptr);
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_EQ(model.m_lastClose, DBL_MAX);
    EXPECT_EQ(flagsText(model), "");
    EXPECT_FALSE(model.m_isNewLoan);
    EXPECT_FALSE(model.m_level2);
    EXPECT_EQ(model.m_tradeCount, 0);
    EXPECT_FALSE(model.isDataValid());
    EXPECT_EQ(model.m_lastContinuous, nullptr);
    EXPECT_TRUE(model.m_history.empty());
    EXPECT_TRUE(model.m_pendingAux.empty());
    EXPECT_TRUE(model.m_historyDateSource.empty());
}

TEST_F(TodayParamCatalogueTest, shouldKeepContractOrderWhenMembersAreLaidOut)
{
    const TodayParam& m = model;
    EXPECT_TRUE(standInOrder(m.m_params, m.m_stockParams, m.m_futureParams, m.m_fundParams, m.m_optionParams,
                             m.m_indexParams, m.m_defaultParams, m.m_afterHoursParamsA, m.m_afterHoursParamsB,
                             m.m_registeredParamsA, m.m_registeredParamsB, m.m_gdrParams, m.m_newRuleBondParams,
                             m.m_bondParams, m.m_hkParams, m.m_ciccIndexParams, m.m_paramList, m.m_level2));
    EXPECT_TRUE(standInOrder(m.m_stock, m.m_gdrStock, m.m_lastClose, m.m_priceTick, m.m_isNewRuleBond, m.m_isBond,
                             m.m_isIopvFund, m.m_isAfterHoursA, m.m_isOption, m.m_isAfterHoursB, m.m_isRegisteredA,
                             m.m_hasGdr, m.m_isHk, m.m_isRegisteredB, m.m_isNewLoan));
    EXPECT_TRUE(standInOrder(m.m_isNewLoan, m.m_tradeCount, m.m_lastAll, m.m_lastDepth, m.m_lastContinuous, m.m_history,
                             m.m_pendingAux));
    const SRealtimeParam row;
    EXPECT_TRUE(standInOrder(row.id, row.label, row.text, row.colorKey));
    const STodayParamHistory entry;
    EXPECT_TRUE(standInOrder(entry.high, entry.low, entry.bidAveragePrice, entry.totalBidVolume, entry.askAveragePrice,
                             entry.totalAskVolume, entry.curVolume, entry.tradeCount));
}

// Panels cast numbers of lists to the one and combinations of flags to the other.
static_assert(std::is_same_v<std::underlying_type_t<ERealtimeParam>, int>);
static_assert(std::is_same_v<std::underlying_type_t<utils::EFormatNumberFlag>, int>);

// --- what no row is written for -----------------------------------------------------------------------------------

// A table that goes through everything that can happen to it between its setStock and its clear.
class TodayParamLifeTest : public TodayParamTest {
protected:
    TodayParamLifeTest()
    {
        terminal.answers.setBoardNewRules(true);
        standin::InstrumentDescription everything = stock("SH", "688001", {277, 10006, 10004, 101, 196, 100003});
        everything.listingFlags = -1;
        everything.classBits = kBondClass;
        everything.intFields[2022] = 5000;
        everything.doubleFields[3000] = 0.125;
        follow(everything);
    }

    // Checks behind every step, so that no later one can hide what it wrote.
    template <class Check>
    void live(const Check& check)
    {
        const auto after = [&check](const char* step) {
            SCOPED_TRACE(step);
            check();
        };
        after("setStock");
        model.history({level1("09:30:00").last(10).volume(5), level1("09:30:03").last(10.1).volume(9)});
        after("the day so far");
        model.live({level2("09:30:06").last(10.2).volume(12)});
        after("a live snapshot");
        model.live({level1("15:05:00").last(10.2).volume(3).status(22)});
        after("the after-hours phase");
        model.quoteAuxCallback(summary("09:30:09"));
        after("a summary of the book");
        model.setDishData(123456, 7);
        after("inner and outer volume");
        model.setAveragePrice(10.1);
        after("the average");
        model.setLastClose(9);
        after("another last close");
        model.connectTickData(level1("09:30:03").last(10.1).volume(9));
        after("a look back");
        model.history({});
        after("the end of the day");
    }
};

TEST_F(TodayParamLifeTest, shouldStayEmptyWhenRowIsKeptForPanelsThatLookItUp)
{
    live([this] {
        EXPECT_EQ(textOf(model, RP_COMMISSION_RATIO), "");
        EXPECT_EQ(textOf(model, RP_IS_REGISTERED), "");
    });
    model.m_params[RP_COMMISSION_RATIO].text = model.m_params[RP_IS_REGISTERED].text = "?";
    model.clear();
    EXPECT_EQ(textOf(model, RP_COMMISSION_RATIO), "");
    EXPECT_EQ(textOf(model, RP_IS_REGISTERED), "");
}

TEST_F(TodayParamLifeTest, shouldKeepRightsAndCapitalWhenWrittenBySetStock)
{
    ASSERT_EQ(textOf(model, RP_SAME_RIGHTS), "12.50%");
    ASSERT_EQ(textOf(model, RP_REGISTERED_CAPITAL), "50.00亿");
    model.m_params[RP_SAME_RIGHTS].text = model.m_params[RP_REGISTERED_CAPITAL].text = "?";
    live([this] {
        EXPECT_EQ(textOf(model, RP_SAME_RIGHTS), "?");
        EXPECT_EQ(textOf(model, RP_REGISTERED_CAPITAL), "?");
    });
    model.clear();
    EXPECT_EQ(textOf(model, RP_SAME_RIGHTS), "");
    EXPECT_EQ(textOf(model, RP_REGISTERED_CAPITAL), "");
}

// --- the colour of a price ----------------------------------------------------------------------------------------

TEST_F(TodayParamCatalogueTest, shouldColourPriceByItsBaseWhenBeyondTolerance)
{
    struct Row {
        double price, base;
        std::string colour;
    };
    const Row rows[] = {
        {10.01, 10.00, "ic_clr_entrust_text_rise"},
        {9.99, 10.00, "ic_clr_entrust_text_fall"},
        {10.00, 10.00, "ic_clr_entrust_default_text"},
        {1e-5, 0, "ic_clr_entrust_default_text"}, // the bounds themselves count as equal
        {-1e-5, 0, "ic_clr_entrust_default_text"},
        {0, 1e-5, "ic_clr_entrust_default_text"},
        {std::nextafter(1e-5, 1), 0, "ic_clr_entrust_text_rise"},
        {std::nextafter(-1e-5, -1), 0, "ic_clr_entrust_text_fall"},
        {-10, -10.5, "ic_clr_entrust_text_rise"},
        {10, DBL_MAX, "ic_clr_entrust_text_fall"},
        {DBL_MAX, 10, "ic_clr_entrust_text_rise"},
        {DBL_MAX, DBL_MAX, "ic_clr_entrust_default_text"},
        {kInfinity, 10, "ic_clr_entrust_text_rise"},
        {-kInfinity, 10, "ic_clr_entrust_text_fall"},
        {kInfinity, kInfinity, "ic_clr_entrust_default_text"},
        {kNaN, 10, "ic_clr_entrust_default_text"},
        {10, kNaN, "ic_clr_entrust_default_text"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(TodayParam::getPriceColor(row.price, row.base).toStdString(), row.colour)
            << row.price << " against " << row.base;
}

} // namespace
