#include "standin/theme.h"
#include "tests/support/layout.h"
#include "tests/support/records.h"
#include "tests/tessimodel/indexparam.h"

#include <gtest/gtest.h>
#include <QMetaMethod>
#include <QScopeGuard>

#include <cfloat>
#include <cmath>
#include <limits>
#include <memory>

namespace {

using namespace tests;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class IndexParamTest : public ::testing::Test {
protected:
    IndexParamTest()
    {
        QObject::connect(&model, &TC::CCustomModelIndexParam::sigReDraw, [this] { ++redraws; });
    }

    std::string rowAfter(const Snapshot<quoter::QuoterAllData>& record, int row)
    {
        model.slotOnData(record);
        return rowText(model.m_rows.at(row));
    }

    IndexParam model;
    int redraws = 0;
};

const std::string kEmptyRows = "0 最新指数 [--] = none, none\n"
                               "1 今日开盘 [--] = none, none\n"
                               "2 昨日收盘 [--] = none, none\n"
                               "3 指数涨跌 [--] = none, none\n"
                               "4 指数涨幅 [--] = none, none\n"
                               "5 指数振幅 [--] = none, none\n"
                               "6 总成交量 [--] = none, none\n"
                               "7 总成交额 [--] = none, none\n"
                               "8 最高指数 [--] = none, none\n"
                               "9 最低指数 [--] = none, none\n";

// An index that opened low, rose through the last close and fell back below it for a moment.
Snapshot<quoter::QuoterAllData> ordinary()
{
    return level1().last(3100).open(3010).high(3120).low(2990).lastClose(3050).volume(123456).amount(7.5e11);
}

// --- the ten rows -------------------------------------------------------------------------------------------------

TEST_F(IndexParamTest, shouldHoldTenEmptyRowsWhenNew)
{
    EXPECT_EQ(rowsText(model), kEmptyRows);
    EXPECT_EQ(model.m_stockCode.toStdString(), "");
    EXPECT_EQ(model.m_requestId, -1);
}

TEST_F(IndexParamTest, shouldFillEveryRowWhenARecordComes)
{
    model.slotOnData(ordinary());
    EXPECT_EQ(rowsText(model), "0 最新指数 [3100.00] = 3100, fall\n"
                               "1 今日开盘 [3010.00] = 3010, fall\n"
                               "2 昨日收盘 [3050.00] = 3050, normal\n"
                               "3 指数涨跌 [50.00] = 50, rise\n"
                               "4 指数涨幅 [1.64%] = 0.016393442623, rise\n"
                               "5 指数振幅 [0.04] = 0.0416666666667, normal\n"
                               "6 总成交量 [123456.00] = 123456, rise\n"
                               "7 总成交额 [750000000000.00] = 750000000000, rise\n"
                               "8 最高指数 [3120.00] = 3120, rise\n"
                               "9 最低指数 [2990.00] = 2990, fall\n");
    EXPECT_EQ(redraws, 1);

    model.slotOnData(level1().last(3000).open(3060).high(3060).low(2500).lastClose(3050).volume(3049).amount(3049.5));
    EXPECT_EQ(rowsText(model), "0 最新指数 [3000.00] = 3000, rise\n"
                               "1 今日开盘 [3060.00] = 3060, rise\n"
                               "2 昨日收盘 [3050.00] = 3050, normal\n"
                               "3 指数涨跌 [-50.00] = -50, fall\n"
                               "4 指数涨幅 [-1.64%] = -0.016393442623, fall\n"
                               "5 指数振幅 [0.18] = 0.183006535948, normal\n"
                               "6 总成交量 [3049.00] = 3049, fall\n"
                               "7 总成交额 [3049.50] = 3049.5, fall\n"
                               "8 最高指数 [3060.00] = 3060, rise\n"
                               "9 最低指数 [2500.00] = 2500, fall\n");

    model.slotOnData(level1().last(3050).open(3050).high(3050).low(3050).lastClose(3050).volume(3050).amount(3050));
    EXPECT_EQ(rowsText(model), "0 最新指数 [3050.00] = 3050, normal\n"
                               "1 今日开盘 [3050.00] = 3050, normal\n"
                               "2 昨日收盘 [3050.00] = 3050, normal\n"
                               "3 指数涨跌 [0.00] = 0, normal\n"
                               "4 指数涨幅 [0.00%] = 0, normal\n"
                               "5 指数振幅 [0.00] = 0, normal\n"
                               "6 总成交量 [3050.00] = 3050, normal\n"
                               "7 总成交额 [3050.00] = 3050, normal\n"
                               "8 最高指数 [3050.00] = 3050, normal\n"
                               "9 最低指数 [3050.00] = 3050, normal\n");
    EXPECT_EQ(redraws, 3);
}

// --- rows that differ from what they seem to ask ------------------------------------------------------------------

TEST_F(IndexParamTest, shouldColourTheLatestIndexByTheOpenWhenTheyPointApart)
{
    EXPECT_EQ(rowAfter(level1().last(3100).open(3010).lastClose(3050), 0), "0 最新指数 [3100.00] = 3100, fall");
    EXPECT_EQ(rowAfter(level1().last(3000).open(3060).lastClose(3050), 0), "0 最新指数 [3000.00] = 3000, rise");
    EXPECT_EQ(rowAfter(level1().last(3000).open(3050).lastClose(3050), 0), "0 最新指数 [3000.00] = 3000, normal");
}

TEST_F(IndexParamTest, shouldShowAmplitudeAsABareFractionOfTheHighWhenRangeIsKnown)
{
    EXPECT_EQ(rowAfter(level1().high(4000).low(3000).lastClose(2000), 5), "5 指数振幅 [0.25] = 0.25, normal");
    EXPECT_EQ(rowAfter(level1().high(3000).low(4000).lastClose(2000), 5),
              "5 指数振幅 [-0.33] = -0.333333333333, normal");
}

TEST_F(IndexParamTest, shouldCompareVolumeAndAmountWithTheLastCloseWhenColoured)
{
    const auto rowsAfter = [this](__int64 volume, double amount) {
        model.slotOnData(level1().lastClose(3050).volume(volume).amount(amount));
        return colourText(model.m_rows[6].color) + " " + colourText(model.m_rows[7].color);
    };
    EXPECT_EQ(rowsAfter(3049, 3051), "fall rise");
    EXPECT_EQ(rowsAfter(3051, 3049), "rise fall");
    EXPECT_EQ(rowsAfter(3050, 3050.000005), "normal normal");
    EXPECT_EQ(rowsAfter(0, 0), "fall fall");
}

// --- numbers that are none ----------------------------------------------------------------------------------------

TEST_F(IndexParamTest, shouldShowRejectedTextsWhenQuotientsAreNoNumbers)
{
    EXPECT_EQ(rowAfter(level1().last(10), 4), "4 指数涨幅 [非法值] = inf, rise");
    EXPECT_EQ(rowAfter(level1().last(-10), 4), "4 指数涨幅 [非法值] = -inf, fall");
    model.slotOnData(level1());
    EXPECT_EQ(model.m_rows[4].text, "非法值");
    EXPECT_TRUE(std::isnan(model.m_rows[4].value));
    EXPECT_EQ(colourText(model.m_rows[4].color), "normal");
    EXPECT_EQ(model.m_rows[5].text, "非法值");
    EXPECT_TRUE(std::isnan(model.m_rows[5].value));
    EXPECT_EQ(rowAfter(level1().low(-3), 5), "5 指数振幅 [非法值] = inf, normal");
}

TEST_F(IndexParamTest, shouldShowRejectedTextInEveryRowWhenFieldsHaveNoValue)
{
    model.slotOnData(level1().last(DBL_MAX).open(kNaN).high(DBL_MAX).low(kInfinity).lastClose(3050).amount(1e20));
    std::string rejected;
    for (const auto& row : model.m_rows) {
        if (row.text == "非法值")
            rejected += std::to_string(row.id) + " " + colourText(row.color) + ", ";
    }
    EXPECT_EQ(rejected, "0 normal, 1 normal, 3 rise, 4 rise, 5 normal, 7 rise, 8 rise, 9 rise, ");
}

TEST_F(IndexParamTest, shouldColourTheRatioByItselfWhenItAndTheChangePointApart)
{
    EXPECT_EQ(rowAfter(level1().last(3050.015625).lastClose(3050), 3), "3 指数涨跌 [0.02] = 0.015625, rise");
    EXPECT_EQ(rowText(model.m_rows.at(4)), "4 指数涨幅 [0.00%] = 5.12295081967e-06, normal") << "too small a ratio";
    EXPECT_EQ(rowAfter(level1().last(-5).lastClose(-10), 3), "3 指数涨跌 [5.00] = 5, rise");
    EXPECT_EQ(rowText(model.m_rows.at(4)), "4 指数涨幅 [-50.00%] = -0.5, fall");
}

// A volume is shown to the last share.
TEST_F(IndexParamTest, shouldShowTheWholeVolumeWhenItIsBeyond32Bits)
{
    EXPECT_EQ(rowAfter(level1().volume(9007199254740991).lastClose(1), 6),
              "6 总成交量 [9007199254740991.00] = 9.00719925474e+15, rise");
    EXPECT_EQ(rowAfter(level1().volume(-5).lastClose(1), 6), "6 总成交量 [-5.00] = -5, fall");
}

// --- records of other types ---------------------------------------------------------------------------------------

TEST_F(IndexParamTest, shouldKeepRowsButAskForARedrawWhenRecordIsOfAnotherType)
{
    const Records others = {level2().last(10).open(9).volume(5), order(1).buy(10), bestQueues(),
                            std::make_shared<quoter::QuoterBase>(), nullptr};
    model.slotOnData(ordinary());
    const std::string before = rowsText(model);
    for (const auto& record : others) {
        redraws = 0;
        model.slotOnData(record);
        EXPECT_EQ(rowsText(model), before);
        EXPECT_EQ(redraws, 1);
    }
}

TEST_F(IndexParamTest, shouldFillRowsWhenRecordIsTheBrokers)
{
    model.slotOnData(brokerLevel1().last(3100).lastClose(3050));
    EXPECT_EQ(model.m_rows[0].text, "3100.00");
}

// --- clear and reset ----------------------------------------------------------------------------------------------

TEST_F(IndexParamTest, shouldShowNothingRatherThanDashesWhenCleared)
{
    model.slotOnData(ordinary());
    model.setStock("000001");
    model.onrequestId(7);
    model.clear();
    EXPECT_EQ(rowsText(model), "0 最新指数 [] = none, fall\n"
                               "1 今日开盘 [] = none, fall\n"
                               "2 昨日收盘 [] = none, normal\n"
                               "3 指数涨跌 [] = none, rise\n"
                               "4 指数涨幅 [] = none, rise\n"
                               "5 指数振幅 [] = none, normal\n"
                               "6 总成交量 [] = none, rise\n"
                               "7 总成交额 [] = none, rise\n"
                               "8 最高指数 [] = none, rise\n"
                               "9 最低指数 [] = none, fall\n");
    EXPECT_EQ(model.m_rows[0].value, DBL_MAX);
    EXPECT_EQ(model.m_stockCode.toStdString(), "000001");
    EXPECT_EQ(model.m_requestId, 7);

    model.slotOnData(ordinary());
    EXPECT_EQ(model.m_rows[0].text, "3100.00");
}

TEST_F(IndexParamTest, shouldHoldTwentyRowsWhenResetASecondTime)
{
    model.slotOnData(ordinary());
    const std::string ten = rowsText(model);
    model.reset();
    EXPECT_EQ(rowsText(model), ten + kEmptyRows) << "appended, with the same positions";

    model.slotOnData(level1().last(3000).open(3060).lastClose(3050));
    EXPECT_EQ(rowText(model.m_rows[0]), "0 最新指数 [3000.00] = 3000, rise");
    EXPECT_EQ(rowText(model.m_rows[10]), "0 最新指数 [--] = none, none") << "the first ten only";
    model.clear();
    EXPECT_EQ(model.m_rows[9].text, "");
    EXPECT_EQ(rowText(model.m_rows[10]), "0 最新指数 [--] = none, none");
    EXPECT_EQ(model.m_rows.size(), 20);
}

// --- what is only kept --------------------------------------------------------------------------------------------

TEST_F(IndexParamTest, shouldChangeNothingElseWhenOwnerKeepsCodeAndRequest)
{
    model.slotOnData(ordinary());
    const std::string before = rowsText(model);
    model.setStock("SH:000001");
    EXPECT_EQ(model.m_stockCode.toStdString(), "SH:000001");
    EXPECT_EQ(model.m_requestId, -1);
    model.onrequestId(std::numeric_limits<qint64>::min());
    EXPECT_EQ(model.m_requestId, std::numeric_limits<qint64>::min());
    model.setStock("SH:000300");
    EXPECT_EQ(model.m_requestId, std::numeric_limits<qint64>::min());
    model.request();
    model.unrequest();
    EXPECT_EQ(rowsText(model), before);
    EXPECT_EQ(model.m_stockCode.toStdString(), "SH:000300");
    EXPECT_EQ(model.m_requestId, std::numeric_limits<qint64>::min());
    EXPECT_EQ(redraws, 1);
}

// --- colours ------------------------------------------------------------------------------------------------------

TEST_F(IndexParamTest, shouldColourAgainstTheBaseWhenBeyondTolerance)
{
    struct Row {
        double value, base;
        const char* colour;
    };
    const Row rows[] = {
        {10.01, 10, "rise"},
        {9.99, 10, "fall"},
        {10, 10, "#123456"},
        {1e-5, 0, "#123456"}, // the bounds themselves count as equal
        {-1e-5, 0, "#123456"},
        {std::nextafter(1e-5, 1), 0, "rise"},
        {std::nextafter(-1e-5, -1), 0, "fall"},
        {kNaN, 0, "#123456"},
        {0, kNaN, "#123456"},
        {kInfinity, 0, "rise"},
        {-kInfinity, 0, "fall"},
        {0, DBL_MAX, "fall"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(colourText(model.getParamColor(row.value, row.base, QColor("#123456"))), row.colour)
            << row.value << " against " << row.base;
    EXPECT_EQ(colourText(model.getParamColor(1, 1, {})), "none") << "whatever colour is the normal one";
}

TEST_F(IndexParamTest, shouldTakeColoursFromTheThemeOfTheTimeWhenRecordComes)
{
    const auto restore = qScopeGuard([] { standin::setTheme(standin::Theme::Dark); });
    model.slotOnData(ordinary());
    const QColor before = model.m_rows[3].color;
    standin::setTheme(standin::Theme::Light, standin::Palette::GreenUp);
    EXPECT_EQ(model.m_rows[3].color, before);
    model.slotOnData(ordinary());
    EXPECT_NE(model.m_rows[3].color, before);
    EXPECT_EQ(model.m_rows[3].color, colourByKey("ic_clr_entrust_text_rise"));
    EXPECT_EQ(model.m_rows[1].color, colourByKey("ic_clr_entrust_text_fall"));
    EXPECT_EQ(model.m_rows[2].color, colourByKey("ic_clr_modulegroup_default_text"));
}

// --- the way of a record ------------------------------------------------------------------------------------------

TEST_F(IndexParamTest, shouldFillRowsAtOnceWhenDataComesOnItsOwnThread)
{
    model.ondata(ordinary());
    EXPECT_EQ(model.m_rows[0].text, "3100.00");
    EXPECT_EQ(redraws, 1);
    emit model.sigOnData(level1().last(3000).lastClose(3050));
    EXPECT_EQ(model.m_rows[0].text, "3000.00");
    EXPECT_EQ(redraws, 2) << "one slot for one record";
}

TEST_F(IndexParamTest, shouldHandTheVeryRecordOnWhenDataComes)
{
    quoter::QuoterBasePtr seen;
    QObject::connect(&model, &TC::CCustomModelIndexParam::sigOnData, [&](const quoter::QuoterBasePtr& r) { seen = r; });
    const std::shared_ptr<quoter::QuoterBase> record = level2();
    model.ondata(record);
    EXPECT_EQ(seen, record);
}

TEST_F(IndexParamTest, shouldNameSignalsAndSlotByTheirSignaturesWhenConnectedByName)
{
    const QMetaObject& meta = TC::CCustomModelIndexParam::staticMetaObject;
    EXPECT_GE(meta.indexOfSignal("sigOnData(quoter::QuoterBasePtr)"), 0);
    EXPECT_GE(meta.indexOfSignal("sigReDraw()"), 0);
    const int slot = meta.indexOfSlot("slotOnData(quoter::QuoterBasePtr)");
    ASSERT_GE(slot, 0);
    EXPECT_EQ(meta.method(slot).access(), QMetaMethod::Protected);
}

TEST_F(IndexParamTest, shouldKeepContractOrderWhenMembersAreLaidOut)
{
    const TC::SIndexParamRow row;
    EXPECT_TRUE(standInOrder(row.label, row.id, row.text, row.value, row.color));
    EXPECT_TRUE(standInOrder(model.m_rows, model.m_stockCode, model.m_requestId));
}

} // namespace
