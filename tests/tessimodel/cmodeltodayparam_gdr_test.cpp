#include "tests/tessimodel/todayparam.h"

#include <climits>

namespace {

using namespace tests;
using namespace TC;
using standin::InstrumentDescription;

// A Shanghai stock with a depositary receipt in London.
class TodayParamReceiptTest : public TodayParamTest {
protected:
    TodayParamReceiptTest()
    {
        share.gdrCode = "HTSC";
        receipt.priceTick = 0.0001;
        receipt.intFields = {{2008, 1}, {2009, 2}};
        receipt.doubleFields = {{3002, 20}, {3011, 900}}; // 20 × 1/2 at 9.00 is 90 a share
    }

    void followShare()
    {
        terminal.instruments.add(receipt);
        follow(share);
    }

    // "20.00 | 1 | 1:2 | -10.00% ic_clr_entrust_text_fall"
    std::string rows() const
    {
        return textOf(model, RP_GDR_CLOSE) + " | " + textOf(model, RP_GDR_SHARES) + " | " +
               textOf(model, RP_GDR_RATIO) + " | " + premium();
    }

    std::string premium() const { return textOf(model, RP_GDR_PREMIUM) + " " + colourOf(model, RP_GDR_PREMIUM); }

    std::string premiumWhen(double lastClose, double close, int first = 1, int second = 1, double rate = 100)
    {
        share.lastClose = lastClose;
        receipt.intFields = {{2008, first}, {2009, second}};
        receipt.doubleFields = {{3002, close}, {3011, rate}};
        followShare();
        return premium();
    }

    InstrumentDescription share = stock("SH", "601688");
    InstrumentDescription receipt = stock("LSE", "HTSC");
};

TEST_F(TodayParamReceiptTest, shouldShowTheReceiptWhenStockHasOne)
{
    share.lastClose = 100;
    followShare();
    EXPECT_EQ(rows(), "20.00 | 1 | 1:2 | -10.00% ic_clr_entrust_text_fall") << "prices by the stock's own tick";
    EXPECT_EQ(listInForce(model), "gdr");
    ASSERT_NE(model.m_gdrStock, nullptr);
    EXPECT_EQ(model.m_gdrStock->market, "LSE");
    EXPECT_EQ(model.m_gdrStock->code, "HTSC");
    for (const auto id : {RP_GDR_CLOSE, RP_GDR_SHARES, RP_GDR_RATIO})
        EXPECT_EQ(colourOf(model, id), kPlain);
}

// Set-up shows the sign alone; the first quote brings the number.
TEST_F(TodayParamReceiptTest, shouldShowALonePlusWhenReceiptIsDearer)
{
    EXPECT_EQ(premiumWhen(80, 20, 1, 2, 900), "+ ic_clr_entrust_text_rise");
    EXPECT_EQ(premiumWhen(1, 1000000), "+ ic_clr_entrust_text_rise");
}

TEST_F(TodayParamReceiptTest, shouldShowThePremiumWhenReceiptIsNotDearer)
{
    EXPECT_EQ(premiumWhen(90, 20, 1, 2, 900), "0.00% ic_clr_entrust_default_text");
    EXPECT_EQ(premiumWhen(120, 20, 1, 2, 900), "-25.00% ic_clr_entrust_text_fall");
    EXPECT_EQ(premiumWhen(10, -5), "-150.00% ic_clr_entrust_text_fall");
    EXPECT_EQ(premiumWhen(20, 10, 3, 2), "-25.00% ic_clr_entrust_text_fall") << "10 × 3/2 is 15";
}

TEST_F(TodayParamReceiptTest, shouldCountAsNoPremiumWhenWithinTolerance)
{
    // One part in a hundred thousand is the tolerance itself.
    EXPECT_EQ(premiumWhen(100000, 100001), "0.00% ic_clr_entrust_default_text");
    EXPECT_EQ(premiumWhen(100000, 99999), "0.00% ic_clr_entrust_default_text");
    EXPECT_EQ(premiumWhen(100000, 100001.5), "+ ic_clr_entrust_text_rise");
    EXPECT_EQ(premiumWhen(100000, 99998.5), "0.00% ic_clr_entrust_text_fall");
}

TEST_F(TodayParamReceiptTest, shouldShowNoPremiumWhenItCannotBeWorkedOut)
{
    const std::string none = "0.00% ic_clr_entrust_default_text";
    EXPECT_EQ(premiumWhen(10, 20, 1, 0), none) << "no second half of the ratio";
    EXPECT_EQ(premiumWhen(10, 20, 1, -1), none) << "a negative one";
    EXPECT_EQ(premiumWhen(10, 20, 1, INT_MIN), none);
    EXPECT_EQ(premiumWhen(0, 20), none) << "no last close";
    EXPECT_EQ(premiumWhen(-10, 20), none) << "a negative one";
    EXPECT_EQ(premiumWhen(1e-5, 20), none) << "one within tolerance";
    EXPECT_EQ(premiumWhen(1.5e-5, 20), "+ ic_clr_entrust_text_rise") << "one just beyond";
    EXPECT_EQ(premiumWhen(10, 20, 0, 1), "-100.00% ic_clr_entrust_text_fall") << "a first half of 0 is a price of 0";
    EXPECT_EQ(premiumWhen(10, 20, 1, 1, 0), "-100.00% ic_clr_entrust_text_fall") << "so is a rate of 0";
}

TEST_F(TodayParamReceiptTest, shouldLeavePremiumWhenReceiptHasNoClose)
{
    for (const double close : {0.0, 1e-5, -1e-5}) {
        model.m_params[RP_GDR_PREMIUM].text = "of old";
        model.m_params[RP_GDR_PREMIUM].colorKey = "kept";
        EXPECT_EQ(premiumWhen(100, close), "of old kept") << close;
        EXPECT_EQ(textOf(model, RP_GDR_CLOSE), "0.00") << "the other rows are written";
        EXPECT_EQ(textOf(model, RP_GDR_SHARES), "1");
        EXPECT_EQ(textOf(model, RP_GDR_RATIO), "1:1");
    }
    EXPECT_EQ(premiumWhen(100, 2e-5), "-100.00% ic_clr_entrust_text_fall");
}

TEST_F(TodayParamReceiptTest, shouldReduceTheRatioWhenHalvesHaveACommonDivisor)
{
    struct Row {
        int first, second;
        const char* shares;
        const char* ratio;
    };
    const Row ratios[] = {
        {10, 1, "10", "10:1"},
        {1, 10, "1", "1:10"},
        {20, 4, "20", "5:1"},
        {4, 20, "4", "1:5"},
        {12, 18, "12", "2:3"},
        {7, 3, "7", "7:3"},
        {7, 7, "7", "1:1"},
        {0, 5, "0", "0:1"},
        {5, 0, "5", "1:0"},
        {0, 0, "0", "0:0"},
        {0, -5, "0", "0:-1"},
        {-5, 0, "-5", "-1:0"},
        {-10, 4, "-10", "-5:2"},
        {10, -4, "10", "5:-2"},
        {-6, -4, "-6", "-3:-2"},
        {123456, 1, "123456", "123456:1"}, // plain, without a unit
        {INT_MAX, INT_MAX, "2147483647", "1:1"},
        {INT_MAX, 1, "2147483647", "2147483647:1"},
        {INT_MIN, 0, "-2147483648", "-1:0"},
        {0, INT_MIN, "0", "0:-1"},
        {INT_MIN, INT_MIN, "-2147483648", "-1:-1"},
        {INT_MIN, 2, "-2147483648", "-1073741824:1"},
        {6, INT_MIN, "6", "3:-1073741824"},
        {INT_MIN, 1, "-2147483648", "-2147483648:1"},
        {INT_MIN, -1, "-2147483648", "-2147483648:-1"},
        {INT_MIN, INT_MAX, "-2147483648", "-2147483648:2147483647"},
    };
    for (const Row& row : ratios) {
        receipt.intFields = {{2008, row.first}, {2009, row.second}};
        followShare();
        EXPECT_EQ(textOf(model, RP_GDR_SHARES), row.shares);
        EXPECT_EQ(textOf(model, RP_GDR_RATIO), row.ratio) << row.first << ":" << row.second;
    }
}

// --- the counterpart ----------------------------------------------------------------------------------------------

TEST_F(TodayParamReceiptTest, shouldShowEmptyRowsWhenReceiptIsUnknown)
{
    follow(share);
    EXPECT_TRUE(model.m_hasGdr);
    EXPECT_EQ(listInForce(model), "gdr");
    EXPECT_EQ(model.m_gdrStock, nullptr);
    EXPECT_EQ(rows(), " |  |  |  ic_clr_modulegroup_default_text");
}

TEST_F(TodayParamReceiptTest, shouldLookOnMarketLseAloneWhenReceiptIsElsewhere)
{
    terminal.instruments.add(stock("SH", "HTSC"));
    terminal.instruments.add(stock("LSEX", "HTSC"));
    follow(share);
    EXPECT_EQ(model.m_gdrStock, nullptr);
}

// The counterpart is never cleared: it is read only while the instrument has one.
TEST_F(TodayParamReceiptTest, shouldKeepTheCounterpartWhenNextInstrumentHasNone)
{
    followShare();
    const auto counterpart = model.m_gdrStock;
    const std::string before = rows();
    ASSERT_NE(counterpart, nullptr);
    follow(stock("SZ", "000001"));
    EXPECT_EQ(model.m_gdrStock, counterpart);
    EXPECT_FALSE(model.m_hasGdr);
    model.setStock("nobody knows this");
    EXPECT_EQ(model.m_gdrStock, counterpart);
    model.clear();
    EXPECT_EQ(model.m_gdrStock, counterpart);
    EXPECT_EQ(rows(), " |  |  |  " + colourOf(model, RP_GDR_PREMIUM));

    follow(share);
    EXPECT_EQ(rows(), before);
}

// The counterpart is looked up together with its list; an instrument of an earlier class shows the one before.
TEST_F(TodayParamReceiptTest, shouldKeepTheCounterpartWhenAnEarlierClassTakesTheList)
{
    followShare();
    auto other = stock("SH", "688001", {277});
    other.gdrCode = "OTHER";
    auto otherReceipt = receipt;
    otherReceipt.code = "OTHER";
    otherReceipt.doubleFields[3002] = 33;
    terminal.instruments.add(otherReceipt);
    model.m_params[RP_GDR_CLOSE].text = "?";
    follow(other);
    EXPECT_EQ(listInForce(model), "afterHoursA");
    EXPECT_TRUE(model.m_hasGdr);
    EXPECT_EQ(model.m_gdrStock->code, "HTSC");
    EXPECT_EQ(textOf(model, RP_GDR_CLOSE), "20.00");

    TodayParam fresh;
    fresh.setStock(keyOf("SH", "688001"));
    EXPECT_TRUE(fresh.m_hasGdr);
    EXPECT_EQ(fresh.m_gdrStock, nullptr);
    EXPECT_EQ(textOf(fresh, RP_GDR_CLOSE), "");
}

TEST_F(TodayParamReceiptTest, shouldForgetTheCounterpartWhenTheNextOneIsUnknown)
{
    followShare();
    auto other = stock("SH", "600001");
    other.gdrCode = "NOBODY";
    follow(other);
    EXPECT_EQ(model.m_gdrStock, nullptr);
    EXPECT_EQ(textOf(model, RP_GDR_RATIO), "1:2") << "texts stay";
}

} // namespace
