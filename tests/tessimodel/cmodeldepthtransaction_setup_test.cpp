#include "tests/support/layout.h"
#include "tests/support/requests.h"
#include "tests/tessimodel/handcases.h"
#include "tests/tessimodel/tradelist.h"

#include <boost/weak_ptr.hpp>

#include <cfloat>

namespace {

using namespace tests;

class TradeSetUpTest : public TradeListTest {};

// --- construction --------------------------------------------------------------------------------------------

TEST_F(TradeSetUpTest, shouldHoldNothingWhenNew)
{
    const auto fresh = boost::make_shared<TradeList>();
    EXPECT_EQ(fresh->m_priceTick, 0.001);
    EXPECT_EQ(fresh->m_lastClose, DBL_MAX);
    EXPECT_EQ(fresh->m_volumeUnit, 1);
    EXPECT_EQ(fresh->m_rowCount, 0);
    EXPECT_EQ(fresh->m_lastMatchedQuote, -1);
    EXPECT_EQ(fresh->m_stock, nullptr);
    EXPECT_NE(fresh->m_strand, nullptr);
    EXPECT_FALSE(fresh->m_changed || fresh->m_isType277 || fresh->m_isType10006 || fresh->m_historyLoaded);
    EXPECT_TRUE(fresh->m_rows.isEmpty() && fresh->m_filteredRows.isEmpty() && fresh->m_quotes.isEmpty());
    EXPECT_TRUE(fresh->m_orders.empty() && fresh->m_pendingTransactions.empty() && fresh->m_seqPairs.empty());
}

TEST_F(TradeSetUpTest, shouldLetTheDayPassWhenTheFilterIsNew)
{
    const TC::SDepthFilterParam filter = model->m_filter;
    EXPECT_EQ(filter.startTime, 32400000) << "09:00:00";
    EXPECT_EQ(filter.endTime, 58200000) << "16:10:00";
    EXPECT_TRUE(filter.showBuyOrder && filter.showSellOrder && filter.showBuyCancel && filter.showSellCancel);
    EXPECT_EQ(filter.handsMode, 0);
    EXPECT_EQ(filter.hands, 0);
    EXPECT_EQ(filter.connective, 0);
    EXPECT_EQ(filter.amountMode, 0);
    EXPECT_EQ(filter.amount, 0);
}

TEST_F(TradeSetUpTest, shouldKeepMembersInOrderWhenLaidOut)
{
    const TradeList& m = *model;
    EXPECT_TRUE(standInOrder(m.m_priceTick, m.m_lastClose, m.m_volumeUnit, m.m_rowCount, m.m_changed, m.m_mutex,
                             m.m_strand, m.m_stock, m.m_isType277, m.m_isType10006, m.m_historyLoaded, m.m_rows,
                             m.m_filteredRows, m.m_orders, m.m_quotes, m.m_pendingTransactions, m.m_lastMatchedQuote,
                             m.m_seqPairs, m.m_buyChains, m.m_sellChains, m.m_minuteIndex, m.m_filter));
    const TC::DepthTransData row;
    EXPECT_TRUE(standInOrder(row.time, row.price, row.volume, row.hands, row.sellSeq, row.buySeq, row.prevBuyIndex,
                             row.nextBuyIndex, row.prevSellIndex, row.nextSellIndex, row.sellRun, row.buyRun,
                             row.sellRunHands, row.buyRunHands, row.tickDirection, row.transKind, row.tradeFlag,
                             row.isUp, row.fullVolume));
    EXPECT_TRUE(row.isUp);
    EXPECT_EQ(row.prevBuyIndex, -1);
    EXPECT_EQ(row.nextSellIndex, -1);
}

// --- the instrument ------------------------------------------------------------------------------------------

TEST_F(TradeSetUpTest, shouldCountHandsByTypeWhenTheInstrumentIsKnown)
{
    expectHandsByType(terminal, *model);
}

// Both types are asked for with the instrument's own market.
TEST_F(TradeSetUpTest, shouldTakeTheAfterHoursTypesWhenTheInstrumentIsKnown)
{
    const std::pair<const char*, std::set<int>> cases[] = {{"SH", {277}},   {"SZ", {277}},         {"SZ", {10006}},
                                                           {"SH", {10006}}, {"SSE", {277, 10006}}, {"SH", {126}}};
    int code = 688000;
    for (const auto& [market, types] : cases) {
        const std::string name = std::to_string(++code);
        SCOPED_TRACE(std::string(market) + " case " + name);
        follow(stock(market, name, types));
        EXPECT_EQ(model->m_isType277, types.contains(277));
        EXPECT_EQ(model->m_isType10006, types.contains(10006));
    }
    terminal.instruments.add(stock("SZ", "688000", {277, 10006}));
    follow(stock("SH", "688000"));
    EXPECT_FALSE(model->m_isType277 || model->m_isType10006);
}

TEST_F(TradeSetUpTest, shouldTakePriceTickAndLastCloseWhenTheInstrumentIsKnown)
{
    auto bond = stock("SH", "113001");
    bond.priceTick = 0.005;
    bond.lastClose = 101.5;
    const auto detail = follow(bond);
    EXPECT_EQ(model->m_stock, detail);
    EXPECT_EQ(model->m_priceTick, 0.005);
    EXPECT_EQ(model->m_lastClose, 101.5);
    EXPECT_FALSE(tookChange());
}

TEST_F(TradeSetUpTest, shouldFallBackAndKeepTheRowsWhenTheKeyIsUnknown)
{
    follow(stock("SH", "688001", {277, 10006, 126}));
    feed.trades(history, {dealt("09:30:00", 10.00, 1)});
    filter(atLeastHands(0));
    model->setStock("nobody knows this");
    EXPECT_EQ(model->m_stock, nullptr);
    EXPECT_EQ(model->m_priceTick, 0.001);
    EXPECT_EQ(model->m_lastClose, DBL_MAX);
    EXPECT_EQ(model->m_volumeUnit, 1);
    EXPECT_FALSE(model->m_isType277 || model->m_isType10006);
    EXPECT_EQ(model->m_rowCount, 1);
    EXPECT_TRUE(model->m_historyLoaded);
    EXPECT_EQ(model->m_filter.connective, 1);
}

TEST_F(TradeSetUpTest, shouldAskForTheLastTradingDayWhenRequested)
{
    terminal.instruments.setLastTradingDay("SZ", 20240301);
    TC::CFormulaParam param = strangeRequest();
    model->getParams(param);
    EXPECT_EQ(requestText(param), requestText(requestByVolume("SZ", "000001", timeOf("00:00:00"))));
}

TEST_F(TradeSetUpTest, shouldLeaveTheRequestAsItWasWhenThereIsNoInstrument)
{
    model->setStock("nobody knows this");
    TC::CFormulaParam param = strangeRequest();
    model->getParams(param);
    EXPECT_EQ(requestText(param), requestText(strangeRequest()));
}

// --- the strand ----------------------------------------------------------------------------------------------

TEST_F(TradeSetUpTest, shouldDoNothingOnTheCallersThreadWhenDelivered)
{
    feed.holdBack();
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:04", 10.00, 1)});
    feed.orders(history, {order(1)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 1)});
    EXPECT_TRUE(model->m_rows.isEmpty() && model->m_orders.empty() && model->m_quotes.isEmpty());
    EXPECT_FALSE(model->m_changed || model->m_historyLoaded);
    feed.run();
    EXPECT_EQ(pairsText(*model), "09:30:03 (0, 0)\n");
    EXPECT_NE(model->getOrder(1), nullptr);
    EXPECT_TRUE(model->m_changed && model->m_historyLoaded);
}

TEST_F(TradeSetUpTest, shouldLiveUntilItsWorkIsDoneWhenThePanelLetsGo)
{
    const boost::weak_ptr<TradeList> watched = model;
    feed.holdBack();
    feed.trades(history, {dealt("09:30:01", 10.00, 1)});
    model.reset();
    EXPECT_FALSE(watched.expired());
    terminal.strands.drain("modulegroup");
    EXPECT_TRUE(watched.expired());
}

TEST_F(TradeSetUpTest, shouldLogNothingWhenBatchesCome)
{
    feed.trades(history, {dealt("09:30:01", 10.00, 1), dealt("09:30:02", 10.00, 1)});
    feed.orders(history, {order(1), order(2)});
    feed.snapshots(history, {snapshot("09:30:03", 10.00, 1), snapshot("09:30:06", 10.00, 2)});
    model->clear();
    EXPECT_TRUE(terminal.log.lines().empty());
}

// --- kinds of orders -----------------------------------------------------------------------------------------

TEST_F(TradeSetUpTest, shouldNameTheKindsWithoutAUsablePriceWhenAsked)
{
    struct Case {
        int kind;
        bool special;
        const char* name;
    };
    const Case cases[] = {{-1, false, ""},
                          {0, false, ""},
                          {1, false, ""},
                          {2, true, "即时成交剩余撤销"},
                          {3, false, "ETF基金申报"},
                          {4, true, "最优五档即时成交剩余撤销"},
                          {5, true, "全额成交或撤销"},
                          {6, true, "本方最优价格"},
                          {7, true, "对手方最优价格"},
                          {8, false, ""}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.kind);
        EXPECT_EQ(TC::isOrderSpecial(order(1).kind(c.kind)), c.special);
        EXPECT_EQ(TC::getOrderSpecialName(order(1).kind(c.kind)), QString::fromUtf8(c.name));
    }
    EXPECT_FALSE(TC::isOrderSpecial(nullptr));
    EXPECT_EQ(TC::getOrderSpecialName(nullptr), "");
}

} // namespace
