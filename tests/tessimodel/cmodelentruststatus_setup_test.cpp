#include "Formula/formulaparam.h"
#include "tests/support/layout.h"
#include "tests/support/requests.h"
#include "tests/tessimodel/entruststatus.h"
#include "ztservice/instrumentdetail.h"

#include <cmath>

namespace {

using namespace tests;

// --- a new one ------------------------------------------------------------------------------------------------

TEST_F(EntrustStatusTest, shouldHoldNothingWhenNew)
{
    EXPECT_EQ(memberText(model), ".......... ..........\n"
                                 "tick 0, kept 0, last DBL_MAX, close DBL_MAX\n"
                                 "stock 0x0 types false false step 0.001 new loan false\n"
                                 "level1 0x0 level2 0x0 closing 0x0 after 0x0\n");
    EXPECT_EQ(model.m_askRows.size(), 10);
    EXPECT_EQ(model.m_bidRows.size(), 10);
    EXPECT_EQ(TC::CModelEntrustStatus::kRows, 10);
}

TEST(EntrustStatusRow, shouldBeUnusedAndZeroWhenNew)
{
    const TC::EntrustStatusRow row;
    EXPECT_FALSE(row.used);
    EXPECT_EQ(row.price, 0);
    EXPECT_EQ(row.volume, 0);
    EXPECT_EQ(row.delta, 0);
}

TEST_F(EntrustStatusTest, shouldKeepContractOrderWhenMembersAreLaidOut)
{
    const TC::EntrustStatusRow row;
    EXPECT_TRUE(standInOrder(row.used, row.price, row.volume, row.delta));
    EXPECT_TRUE(standInOrder(model.m_stock, model.m_hasAfterHours, model.m_hasAfterHoursSz, model.m_lastPrice,
                             model.m_lastClose, model.m_priceTick, model.m_bidRows, model.m_askRows, model.m_tickVolume,
                             model.m_lastAllData, model.m_lastDepthData, model.m_closingData, model.m_closingPrevData,
                             model.m_afterHoursVolume, model.m_isNewLoan));
}

// --- setStock -------------------------------------------------------------------------------------------------

TEST_F(EntrustStatusTest, shouldTakeStepAndLastCloseWhenInstrumentIsKnown)
{
    followWithStep(0.25);
    EXPECT_EQ(model.m_stock->code, "000001");
    EXPECT_EQ(model.m_priceTick, 0.25);
    EXPECT_EQ(model.m_lastClose, 10.0);
    EXPECT_EQ(model.m_lastPrice, kNoPrice);
    EXPECT_FALSE(model.m_hasAfterHours || model.m_hasAfterHoursSz);
}

// A last close of a snapshot has to be worth something; the instrument's is taken as it is.
TEST_F(EntrustStatusTest, shouldTakeTheInstrumentsLastCloseAsItIsWhenItIsUnusable)
{
    standin::InstrumentDescription description = stock("SZ", "000001");
    for (const double lastClose : {0.0, 0.001, -5.0, kNoPrice, kInfinity}) {
        description.lastClose = lastClose;
        follow(description);
        EXPECT_EQ(model.m_lastClose, lastClose);
    }
    description.lastClose = kNaN;
    follow(description);
    EXPECT_TRUE(std::isnan(model.m_lastClose));
}

struct TypeCase {
    const char* market;
    std::set<int> types;
    bool hasAfterHours, hasAfterHoursSz;
};

// Both types are looked up in the instrument's own market.
TEST_F(EntrustStatusTest, shouldHaveAfterHoursWhenTheInstrumentIsOfSuchAType)
{
    const TypeCase cases[] = {
        {"SH", {277}, true, false},           {"SZ", {10006}, false, true}, {"SZSE", {10006}, false, true},
        {"HK", {277, 10006}, true, true},     {"SZ", {}, false, false},     {"SH", {276, 278}, false, false},
        {"SZ", {10005, 10007}, false, false},
    };
    for (const TypeCase& c : cases) {
        SCOPED_TRACE(c.market);
        follow(c.market, "300001", c.types);
        EXPECT_EQ(model.m_hasAfterHours, c.hasAfterHours);
        EXPECT_EQ(model.m_hasAfterHoursSz, c.hasAfterHoursSz);
    }
}

TEST_F(EntrustStatusTest, shouldNotAskForTheTypeInAnotherMarketWhenTheCodeIsTheSame)
{
    terminal.instruments.add(stock("SZ", "300001", {10006, 277}));
    follow("SZSE", "300001");
    EXPECT_FALSE(model.m_hasAfterHours || model.m_hasAfterHoursSz);
}

TEST_F(EntrustStatusTest, shouldFallBackToDefaultsAndKeepLastCloseWhenKeyIsUnknown)
{
    standin::InstrumentDescription description = stock("SZ", "000001", {277, 10006});
    description.priceTick = 0.25;
    follow(description);
    model.setStock("nobody knows this");
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_FALSE(model.m_hasAfterHours || model.m_hasAfterHoursSz);
    EXPECT_EQ(model.m_lastClose, 10.0);
}

TEST_F(EntrustStatusTest, shouldLeaveAllElseAloneWhenAnInstrumentComesOrGoes)
{
    follow("SZ", "000001", {277});
    model.live({level1().last(10.01).volume(100).bid(10, 5).ask(10.02, 6)});
    model.live({level2().last(10.01).volume(100).bid(10, 5).ask(10.02, 6)});
    model.live({level2().last(10.02).volume(150).bid(10, 7).ask(10.02, 6)});
    model.m_afterHoursVolume = 30;
    model.setNewLoan(true);
    const std::string rows = rowsText(model);
    ASSERT_EQ(rows, "ask1 10.02 6\nbid1 10 7 +2\n");
    const auto level1Record = model.m_lastAllData;
    const auto closing = model.m_closingData;
    const auto beforeClosing = model.m_closingPrevData;
    ASSERT_NE(closing, nullptr);
    ASSERT_NE(beforeClosing, nullptr);

    terminal.instruments.add(stock("SH", "600000"));
    for (const QString& key : {keyOf("SH", "600000"), QString("nobody")}) {
        model.setStock(key);
        EXPECT_EQ(rowsText(model), rows);
        EXPECT_EQ(figuresText(model), "tick 50, kept 30, last 10.02, close 10");
        EXPECT_EQ(model.m_lastAllData, level1Record);
        EXPECT_EQ(model.m_lastDepthData, closing);
        EXPECT_EQ(model.m_closingData, closing);
        EXPECT_EQ(model.m_closingPrevData, beforeClosing);
        EXPECT_TRUE(model.m_isNewLoan);
    }
}

// --- the request ----------------------------------------------------------------------------------------------

TEST_F(EntrustStatusTest, shouldAskForQuotesOfTheLastTradingDayWhenRequested)
{
    terminal.instruments.setLastTradingDay(20240301);
    follow("SZ", "000001");
    TC::CFormulaParam param = strangeRequest();
    model.getParams(param);
    EXPECT_EQ(requestText(param), requestText(requestOfQuotes("SZ", "000001", timeOf("00:00:00"))));
}

TEST_F(EntrustStatusTest, shouldLeaveRequestAsItWasWhenWithoutInstrument)
{
    TC::CFormulaParam param = strangeRequest();
    model.getParams(param);
    EXPECT_EQ(requestText(param), requestText(strangeRequest()));
}

// --- the last close, the new loan -------------------------------------------------------------------------------

// DBL_MAX is finite: it is given back, although the instrument would know better.
TEST_F(EntrustStatusTest, shouldAskTheInstrumentForTheLastCloseOnlyWhenItsOwnIsNotFinite)
{
    follow();
    for (const double own : {9.5, 0.0, -1.0, kNoPrice, -kNoPrice}) {
        model.m_lastClose = own;
        EXPECT_EQ(model.getLastClosePrice(), own);
    }
    for (const double own : {kNaN, kInfinity, -kInfinity}) {
        model.m_lastClose = own;
        EXPECT_EQ(model.getLastClosePrice(), 10.0);
    }
    EXPECT_EQ(model.m_lastClose, -kInfinity) << "it only looks";
    model.m_lastClose = 9.5;
    model.clear();
    EXPECT_EQ(model.getLastClosePrice(), kNoPrice);
}

TEST_F(EntrustStatusTest, shouldHaveNoLastCloseWhenThereIsNoInstrumentEither)
{
    EXPECT_EQ(model.getLastClosePrice(), kNoPrice);
    model.m_lastClose = kNaN;
    EXPECT_EQ(model.getLastClosePrice(), kNoPrice);
}

TEST_F(EntrustStatusTest, shouldSwitchTheFormAndNothingElseWhenNewLoanIsSet)
{
    follow();
    model.live({level1().last(10.01).alternativeLast(20.01).volume(100).bid(10, 5)});
    const std::string rows = rowsText(model);
    const std::string figures = figuresText(model);
    for (const bool newLoan : {true, true, false}) {
        model.setNewLoan(newLoan);
        EXPECT_EQ(model.m_isNewLoan, newLoan);
        EXPECT_EQ(rowsText(model), rows);
        EXPECT_EQ(figuresText(model), figures);
    }
}

} // namespace
