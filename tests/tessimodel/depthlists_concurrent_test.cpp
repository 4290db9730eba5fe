#include "Formula/formulaparam.h"
#include "indexui/tessimodel/cmodeltransaction.h"
#include "indexui/tessimodel/liveread.h"
#include "quoter/transactiondata.h"
#include "tests/tessimodel/endlessday.h"
#include "tests/tessimodel/keptrows.h"
#include "tests/tessimodel/orderlist.h"
#include "tests/tessimodel/tradelist.h"

#include <algorithm>
#include <atomic>
#include <climits>
#include <thread>
#include <vector>

namespace {

using namespace tests;

constexpr int kLeastHands = 5;
constexpr int kSharesPerHand = 100;

// The filters that panels change between. They differ in every field, and each lets only rows of 5 hands and more
// pass: the endless day has no amount as large as the one that would do instead.
TC::SDepthFilterParam filterOf(int round)
{
    switch (round % 4) {
    case 0:
        return atLeastHands(kLeastHands);
    case 1:
        return {.handsMode = 1, .hands = kLeastHands + 1, .amountMode = 1, .amount = INT_MAX};
    case 2:
        return {.handsMode = 2,
                .hands = kLeastHands + 3,
                .connective = 2,
                .startTime = dayTime("09:30:00"),
                .endTime = dayTime("09:40:00"),
                .showSellOrder = false,
                .showBuyCancel = false};
    default:
        return {.hands = kLeastHands, .connective = 7, .amount = 1000, .showBuyOrder = false, .showSellCancel = false};
    }
}

int handsOf(__int64 shares)
{
    return shares < kSharesPerHand ? 1 : static_cast<int>((shares + kSharesPerHand / 2) / kSharesPerHand);
}

void expectPair(const std::pair<int, int>& rows)
{
    if (rows == std::pair(-1, -1))
        return;
    EXPECT_GE(rows.first, 0);
    EXPECT_GE(rows.second, rows.first);
}

// An order list and a trade list of one instrument, and the threads that meet at them.
class DepthListsConcurrent : public ::testing::Test {
protected:
    DepthListsConcurrent()
    {
        terminal.instruments.add(stock("SZ", "000001"));
        terminal.instruments.add(stock("SZ", "000002"));
        orderList = boost::make_shared<OrderList>();
        tradeList = boost::make_shared<TC::CModelDepthHolographic>();
        follow("000001");
        setFilters(0);
    }

    void follow(const std::string& code)
    {
        orderList->setStock(keyOf("SZ", code));
        tradeList->setStock(keyOf("SZ", code));
    }

    void setFilters(int round)
    {
        TC::SDepthFilterParam filter = filterOf(round);
        orderList->setFilterParam(filter);
        tradeList->setFilterParam(filter);
    }

    void deliverOrders(int kind, const Records& records)
    {
        orderList->entrustCallback(0, kind, batchFor("SZ", "000001", records));
        tradeList->entrustCallback(0, kind, batchFor("SZ", "000001", records));
    }

    void deliverTrades(int kind, const Records& records)
    {
        orderList->transactionCallback(0, kind, batchFor("SZ", "000001", records));
        tradeList->transactionCallback(0, kind, batchFor("SZ", "000001", records));
    }

    void deliverSnapshots(int kind, const Records& records)
    {
        tradeList->quoterCallback(0, kind, batchFor("SZ", "000001", records));
    }

    void deliverLive()
    {
        EndlessDay day;
        while (!stop) {
            for (int i = 0; i < 100; ++i) {
                deliverOrders(live, {day.nextOrder()});
                deliverTrades(live, {day.nextTrade()});
                if (i % 5 == 0)
                    deliverSnapshots(live, {day.nextSnapshot()});
            }
            terminal.strands.waitIdle();
        }
    }

    void readAsPanel(int panel)
    {
        KeptRows kept;
        for (int round = panel; !stop && !HasFailure(); ++round) {
            updates += takeFlags(*orderList) != "none" && tradeList->m_changed.exchange(false) ? 1 : 0;
            for (int i = -1; i < 60; ++i) {
                const int index = i < 40 ? i : (i - 40) * 50;
                readOrders(index);
                readTrades(index);
                readPairs(index);
            }
            readLinks();
            rowsOutlived += kept.look(*tradeList);
            TC::CFormulaParam param;
            orderList->getParams(param);
            tradeList->getParams(param);
            if (round % 3 == 0)
                setFilters(round);
            if (panel == 0 && round % 4 == 0) {
                orderList->initStockParams();
                tradeList->initStockParams();
            }
        }
    }

    void readOrders(int index)
    {
        if (const auto row = orderList->getOrderData(index, true)) {
            expectWhole(*row);
            OrderList::OrderRow found;
            if (orderList->getOrderData(row->seq, found)) {
                EXPECT_EQ(found->seq, row->seq);
            }
            OrderList::Trades trades;
            orderList->getTransactionData(row->seq, trades);
            for (const auto& trade : trades)
                EXPECT_TRUE(trade->buySeq == row->seq || trade->sellSeq == row->seq);
        }
        if (const auto shown = orderList->getOrderData(index, false)) {
            expectWhole(*shown);
            EXPECT_GE(shown->hands, kLeastHands) << "a row that no filter lets through";
            ++ordersShown;
        }
        if (const auto cancel = orderList->getCancelData(index)) {
            EXPECT_GT(cancel->seq, 0);
            EXPECT_EQ(cancel->hands, handsOf(cancel->volume));
            ++cancelsShown;
        }
        expectRun(orderList->tracebackOrderSeq(index), index);
        expectRun(orderList->tracebackCancelSeq(index), index);
    }

    static void expectWhole(const TC::DepthOrderData& row)
    {
        EXPECT_GT(row.seq, 0);
        EXPECT_EQ(row.hands, handsOf(row.volume));
        EXPECT_TRUE(row.bsFlag == 1 || row.bsFlag == 2);
        EXPECT_GT(row.price, 9.0);
    }

    static void expectRun(int run, int index)
    {
        EXPECT_GE(run, 1);
        EXPECT_LE(run, std::max(index, 0) + 1);
    }

    void readTrades(int index)
    {
        expectRun(tradeList->tracebackSeq(index), index);
        const auto row = tradeList->getData(index);
        if (!row)
            return;
        ++tradesShown;
        expectWhole(TC::readLive(*row));
        for (const bool isBuy : {true, false}) {
            EXPECT_GE(tradeList->getEntrustVolume(row, isBuy), 1);
            const int kind = tradeList->getDataKind(row, isBuy);
            EXPECT_TRUE(kind >= TC::DEAL_SINGLE && kind <= TC::DEAL_NEAR_OTHER_PRICE);
            const int seq = isBuy ? row->buySeq : row->sellSeq;
            if (const auto order = tradeList->getOrder(seq)) {
                EXPECT_EQ(order->seq, seq);
            }
        }
        readSecond(static_cast<int>(row->time));
    }

    static void expectWhole(const TC::DepthTransData& row)
    {
        EXPECT_EQ(row.hands, handsOf(row.volume));
        EXPECT_EQ(row.fullVolume, row.volume);
        EXPECT_GE(row.hands, kLeastHands) << "a row that no filter lets through";
        for (const int index : {row.prevBuyIndex, row.nextBuyIndex, row.prevSellIndex, row.nextSellIndex})
            EXPECT_GE(index, -1);
    }

    // A panel holds rows, and reads on in them without a lock while later rows are linked to them.
    void readLinks()
    {
        int count = 0;
        {
            const boost::unique_lock<boost::recursive_mutex> reading(tradeList->m_mutex);
            count = tradeList->m_rowCount;
        }
        std::vector<TC::CModelDepthHolographic::Row> held;
        for (int i = 0; i < 200; ++i) {
            if (const auto row = tradeList->getData(static_cast<int>(static_cast<__int64>(count) * i / 200)))
                held.push_back(row);
        }
        for (int glance = 0; glance < 20; ++glance) {
            for (const auto& row : held) {
                EXPECT_GE(TC::readLive(row->nextBuyIndex), -1);
                EXPECT_GE(TC::readLive(row->nextSellIndex), -1);
            }
        }
    }

    void readSecond(int second)
    {
        expectPair(tradeList->find(second));
        EXPECT_GE(tradeList->find(second, true), -1);
        EXPECT_GE(tradeList->find(second, false), -1);
        EXPECT_GE(tradeList->getNextQuoterTimgtag(second), -1);
        EXPECT_GE(tradeList->getPreQuoterTimgtag(second), -1);

        TC::CModelDepthHolographic::SeqPair rows;
        const bool found = tradeList->findSeq(second, second % 20, rows);
        EXPECT_EQ(found, rows != std::pair(-1, -1));
        pairsFound += found ? 1 : 0;
        expectPair(rows);
        TC::TransData tick;
        tick.timetag = second + 3600;
        tick.volume = 30;
        if (tradeList->tryFind(&tick, rows))
            expectPair(rows);
    }

    void readPairs(int index)
    {
        expectPair(tradeList->getCurrSeqPair(index));
        expectPair(tradeList->getNextSeqPair(index));
        expectPair(tradeList->getPreSeqPair(index));
        EXPECT_GE(tradeList->getCurrQuoterTimgtag(index), -1);
    }

    // The panel that owns the view moves it, clears, goes to another instrument and back, and asks for histories, until
    // the time is over.
    void ownTheModels(std::chrono::steady_clock::time_point end)
    {
        for (int round = 0; std::chrono::steady_clock::now() < end && !HasFailure(); ++round) {
            EndlessDay day;
            const auto [orders, trades, snapshots] = day.nextHistory(200);
            deliverOrders(round % 4 == 1 ? moreHistory : history, orders);
            deliverTrades(round % 4 == 2 ? moreHistory : history, trades);
            deliverSnapshots(round % 4 == 3 ? moreHistory : history, snapshots);
            if (round % 2 == 0)
                terminal.strands.waitIdle();
            lookAround(round);
            if (round % 5 == 4) {
                orderList->clear();
                tradeList->clear();
                follow("000001");
            }
            if (round % 7 == 6) {
                follow("000002");
                follow("000001");
            }
            if (round % 11 == 10) {
                tradeList->clearQuotes();
                tradeList->clearTransactions();
            }
        }
    }

    void lookAround(int round)
    {
        const int begin = static_cast<int>(timeOf("09:30:00") / 1000);
        tradeList->setFullHeightHandle(round);
        tradeList->setViewTimeRange(begin + round % 3, begin + 20);
        tradeList->recalcMaxMinSeqAndPrice();
        tradeList->recalcMaxMinPrice();
        EXPECT_GE(tradeList->getStartIndex(), -1);
        EXPECT_GE(tradeList->getEndIndex(), -1);
        EXPECT_GE(tradeList->m_maxPrice, tradeList->m_minPrice);
    }

    standin::Terminal terminal;
    boost::shared_ptr<OrderList> orderList;
    boost::shared_ptr<TC::CModelDepthHolographic> tradeList;
    std::atomic<bool> stop{false};
    std::atomic<int> updates{0};
    std::atomic<int> ordersShown{0};
    std::atomic<int> cancelsShown{0};
    std::atomic<int> tradesShown{0};
    std::atomic<int> pairsFound{0};
    std::atomic<int> rowsOutlived{0}; // by panels that keep them
};

TEST_F(DepthListsConcurrent, shouldStayWholeWhenEverythingRunsAtOnce)
{
    std::vector<std::thread> threads;
    threads.emplace_back([this] { deliverLive(); });
    for (int panel = 0; panel < 2; ++panel)
        threads.emplace_back([this, panel] { readAsPanel(panel); });
    ownTheModels(std::chrono::steady_clock::now() + stressTime());
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
    for (const std::atomic<int>* seen :
         {&updates, &ordersShown, &cancelsShown, &tradesShown, &pairsFound, &rowsOutlived})
        EXPECT_GT(*seen, 0);

    terminal.strands.waitIdle();
    expectConsistent(*orderList);
    orderList->clear();
    tradeList->clear();
    follow("000001");
    TC::SDepthFilterParam all;
    orderList->setFilterParam(all);
    tradeList->setFilterParam(all);
    EndlessDay day;
    const auto [orders, trades, snapshots] = day.nextHistory(500);
    deliverOrders(history, orders);
    deliverTrades(history, trades);
    deliverSnapshots(history, snapshots);
    terminal.strands.waitIdle();
    expectConsistent(*orderList);
    EXPECT_EQ(orderList->m_filteredOrderCount, 500);
    EXPECT_EQ(orderList->m_cancels.size() + tradeList->m_rowCount, 500);
    EXPECT_FALSE(tradeList->m_seqPairs.empty());
    expectChains(*tradeList);
}

} // namespace
