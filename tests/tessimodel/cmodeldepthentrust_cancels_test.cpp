#include "quoter/transactiondata.h"
#include "tests/tessimodel/orderlist.h"

#include <climits>

namespace {

using namespace tests;

using OrderListCancelsTest = OrderListTest;

// --- cancels that come as orders ------------------------------------------------------------------------------

TEST_F(OrderListCancelsTest, shouldListACancelWhenShanghaiSendsItAsAnOrder)
{
    follow("SH", "600000");
    feed.orders(history, {order(1).buy(10.00).shares(300), order(2).sell(10.02).shares(500),
                          deletionOfBuy(1, 10.00).shares(250).time("09:31:00.900")});
    feed.orders(live, {deletionOfSell(2, 10.03).shares(40).time("09:32:00")});
    EXPECT_EQ(allText(*model), "order 1 B 10.00 x300 3h 09:30:00\n"
                               "order 2 S 10.02 x500 5h 09:30:00\n"
                               "cancel 1 10.00 x250 3h 09:31:00\n"
                               "cancel 2 10.03 x40 1h 09:32:00\n");
    EXPECT_EQ(shownText(*model), allText(*model));
}

TEST_F(OrderListCancelsTest, shouldMakeNeitherRowNorEntryWhenAnOrderIsACancel)
{
    follow("SH", "600000");
    feed.orders(history, {deletionOfBuy(1), deletionOfSell(2), order(3).buy(10.00).flag(3).kind(1)});
    EXPECT_EQ(model->m_orderCount, 0);
    EXPECT_TRUE(model->m_orderIndexBySeq.empty());
    EXPECT_EQ(model->m_cancels.size(), 3);

    feed.orders(history, {order(1).buy(10.00), deletionOfBuy(1, 9.00)});
    OrderList::OrderRow found;
    ASSERT_TRUE(model->getOrderData(1, found));
    EXPECT_EQ(found->price, 10.00) << "the order, not its cancel";
}

// The flags mean cancels only in the market that is called "SH" to the letter.
TEST_F(OrderListCancelsTest, shouldTakeItAsAnOrderWhenAnotherMarketUsesTheFlagsOfACancel)
{
    for (const char* market : {"SZ", "BJ", "SSE", "sh", "SH "}) {
        SCOPED_TRACE(market);
        follow(market, "600000");
        feed.orders(history, {deletionOfBuy(1, 10.00), deletionOfSell(2, 10.02)});
        EXPECT_EQ(allText(*model), "order 1 B 10.00 x100 1h 09:30:00\norder 2 S 10.02 x100 1h 09:30:00\n");
        EXPECT_EQ(model->m_orderIndexBySeq.size(), 2u);
    }
}

TEST_F(OrderListCancelsTest, shouldTakeItAsAnOrderWhenShanghaiSendsAnyOtherFlag)
{
    follow("SH", "600000");
    for (const int flag : {0, 1, 2, 5, -3, INT_MAX})
        feed.orders(live, {order(1).buy(10.00).flag(flag)});
    EXPECT_EQ(model->m_orderCount, 6);
    EXPECT_EQ(model->m_cancels.size(), 0);
}

TEST_F(OrderListCancelsTest, shouldRoundTheCancelsOwnVolumeWhenItComesAsAnOrder)
{
    follow("SH", "600000");
    const std::pair<__int64, int> cases[] = {
        {0, 1}, {99, 1}, {149, 1}, {150, 2}, {-200, 1}, {4294967396, 42949674}, {LLONG_MAX, INT_MIN}};
    for (const auto& [volume, hands] : cases) {
        feed.orders(live, {deletionOfBuy((1LL << 32) + 9).shares(volume)});
        EXPECT_EQ(model->m_cancels.back()->hands, hands) << volume;
        EXPECT_EQ(model->m_cancels.back()->volume, volume);
        EXPECT_EQ(model->m_cancels.back()->seq, 9);
    }
}

// --- cancels that come as trades ------------------------------------------------------------------------------

TEST_F(OrderListCancelsTest, shouldListACancelWhenItComesAsATrade)
{
    feed.orders(history, {order(1).buy(10.00).shares(300), order(2).sell(10.02).shares(500)});
    feed.trades(history, {cancelOfBuy(1).shares(250).time("09:31:00.900"), fill(1, 2).at(10.00).shares(50)});
    feed.trades(live, {cancelOfSell(2).at(10.03).shares(40).time("09:32:00")});
    EXPECT_EQ(allText(*model), "order 1 B 10.00 x300 3h 09:30:00\n"
                               "order 2 S 10.02 x500 5h 09:30:00\n"
                               "cancel 1 0.00 x250 3h 09:31:00\n"
                               "cancel 2 10.03 x40 1h 09:32:00\n");
    EXPECT_EQ(shownText(*model), allText(*model));
}

TEST_F(OrderListCancelsTest, shouldNameTheSellOrderWhenATradedCancelHasBoth)
{
    feed.trades(history, {Trade(1, 2, 3), Trade(3, 0, 3), Trade(0, 4, 3), Trade(0, 0, 3), Trade(-5, 0, 3)});
    std::string seqs;
    for (const auto& row : model->m_cancels)
        seqs += std::to_string(row->seq) + " ";
    EXPECT_EQ(seqs, "2 3 4 0 -5 ");
}

TEST_F(OrderListCancelsTest, shouldMakeACancelOnlyWhenTheTradeIsOfTheCancelKind)
{
    for (const int kind : {0, 1, 2, 4, -3, 33, INT_MAX})
        feed.trades(live, {Trade(1, 0, kind)});
    EXPECT_EQ(model->m_cancels.size(), 0);
    feed.trades(live, {Trade(1, 0, 3)});
    EXPECT_EQ(model->m_cancels.size(), 1);
}

TEST_F(OrderListCancelsTest, shouldRoundTheCancelsOwnVolumeWhenItComesAsATrade)
{
    const std::pair<__int64, int> cases[] = {
        {0, 1}, {99, 1}, {149, 1}, {150, 2}, {-200, 1}, {4294967396, 42949674}, {LLONG_MAX, INT_MIN}};
    for (const auto& [volume, hands] : cases) {
        feed.trades(live, {cancelOfBuy(9).shares(volume)});
        EXPECT_EQ(model->m_cancels.back()->hands, hands) << volume;
        EXPECT_EQ(model->m_cancels.back()->volume, volume);
    }
}

TEST_F(OrderListCancelsTest, shouldCutTheTimeTowardZeroWhenACancelComesAsATrade)
{
    for (const auto& [timetag, seconds] : {std::pair(-1999LL, -1LL), {-999, 0}, {999, 0}, {1000, 1}}) {
        const std::shared_ptr<quoter::TransactionData> record = cancelOfBuy(1);
        record->timetag = timetag;
        feed.trades(live, {record});
        EXPECT_EQ(model->m_cancels.back()->time, seconds);
    }
}

// Every market's trades of that kind make cancel rows: a feed that sends Shanghai's cancels both ways shows them twice.
TEST_F(OrderListCancelsTest, shouldListACancelTwiceWhenShanghaiSendsItBothWays)
{
    follow("SH", "600000");
    feed.orders(history, {order(1).buy(10.00).shares(300), deletionOfBuy(1, 10.00).shares(300)});
    feed.trades(history, {cancelOfBuy(1).shares(300)});
    EXPECT_EQ(shownText(*model), "order 1 B 10.00 x300 3h 09:30:00\n"
                                 "cancel 1 10.00 x300 3h 09:30:00\n"
                                 "cancel 1 0.00 x300 3h 09:30:00\n");
}

// --- trades by the orders that they touch ---------------------------------------------------------------------

TEST_F(OrderListCancelsTest, shouldKeepATradeWithBothOrdersWhenItHasBoth)
{
    feed.trades(history, {fill(1, 2).shares(100), fill(1, 3).shares(200), cancelOfBuy(1).shares(50)});
    feed.trades(live, {fill(4, 3).shares(300)});
    EXPECT_EQ(tradesText(*model, 1), "1+2 x100 1+3 x200 1+0 x50 cancel");
    EXPECT_EQ(tradesText(*model, 2), "1+2 x100");
    EXPECT_EQ(tradesText(*model, 3), "1+3 x200 4+3 x300");
    EXPECT_EQ(tradesText(*model, 4), "4+3 x300");
    EXPECT_EQ(tradesText(*model, 5), "none");
    OrderList::Trades bought;
    OrderList::Trades sold;
    ASSERT_TRUE(model->getTransactionData(1, bought) && model->getTransactionData(2, sold));
    EXPECT_EQ(bought.front(), sold.front()) << "the delivered record itself";
}

TEST_F(OrderListCancelsTest, shouldKeepNothingUnderSeqZeroWhenASideIsUnknown)
{
    feed.trades(history, {fill(0, 2).shares(100), fill(1, 0).shares(200), fill(0, 0).shares(300), cancelOfSell(2)});
    EXPECT_EQ(tradesText(*model, 0), "none");
    EXPECT_EQ(tradesText(*model, 1), "1+0 x200");
    EXPECT_EQ(tradesText(*model, 2), "0+2 x100 0+2 x100 cancel");
    EXPECT_EQ(model->m_transactionsBySeq.size(), 2u);
}

TEST_F(OrderListCancelsTest, shouldKeepATradeTwiceWhenBothSidesAreOneOrder)
{
    feed.trades(history, {fill(6, 6).shares(100)});
    EXPECT_EQ(tradesText(*model, 6), "6+6 x100 6+6 x100");
}

TEST_F(OrderListCancelsTest, shouldKeepTradesWhateverTheirVolumeAndTheFilterWhenDelivered)
{
    filter(nothing());
    feed.trades(history, {fill(-7, 2).shares(0), fill(-7, 3).shares(-100)});
    EXPECT_EQ(tradesText(*model, -7), "-7+2 x0 -7+3 x-100");
}

// --- which stream's clear takes the cancels along -------------------------------------------------------------

TEST_F(OrderListCancelsTest, shouldEmptyCancelsWithTheStreamThatBringsThemWhenCleared)
{
    const struct {
        const char* market;
        bool withOrders;
        bool withTrades;
    } cases[] = {{"SH", true, false},    {"SZ", false, true},  {"BJ", false, false}, {"SSE", false, false},
                 {"SZSE", false, false}, {"sz", false, false}, {"sh", false, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.market);
        follow(c.market, "600000");
        const auto empties = [&](void (TC::CModelDepthEntrust::*clearStream)()) {
            feed.orders(history, {order(1).buy(10.00)});
            feed.trades(history, {cancelOfBuy(1)});
            EXPECT_NE(model->m_filteredCancelCount, 0);
            ((*model).*clearStream)();
            EXPECT_EQ(model->m_filteredCancels.size(), model->m_cancels.size());
            return model->m_cancels.empty();
        };
        EXPECT_EQ(empties(&OrderList::clearEntrusts), c.withOrders);
        EXPECT_EQ(empties(&OrderList::clearTransactions), c.withTrades);
        model->clear();
    }
}

TEST_F(OrderListCancelsTest, shouldEmptyCancelsWithTheTradesWhenThereIsNoInstrument)
{
    feed.orders(history, {order(1).buy(10.00)});
    feed.trades(history, {cancelOfBuy(1)});
    model->setStock("nobody knows this");
    model->clearEntrusts();
    EXPECT_EQ(allText(*model), "cancel 1 0.00 x100 1h 09:30:00\n");
    EXPECT_EQ(shownText(*model), "cancel 1 0.00 x100 1h 09:30:00\n");
    model->clearTransactions();
    EXPECT_EQ(allText(*model) + shownText(*model), "");
}

TEST_F(OrderListCancelsTest, shouldKeepTheOtherStreamWhenOneIsCleared)
{
    feed.orders(history, {order(1).buy(10.00)});
    feed.trades(history, {fill(1, 2), cancelOfBuy(1)});
    takeFlags(*model);
    model->clearEntrusts();
    EXPECT_EQ(tradesText(*model, 1), "1+2 x100 1+0 x100 cancel");
    EXPECT_TRUE(model->m_orderIndexBySeq.empty());
    feed.orders(history, {order(1).buy(10.00)});
    takeFlags(*model);
    model->clearTransactions();
    EXPECT_EQ(tradesText(*model, 1), "none");
    EXPECT_TRUE(model->m_transactionsBySeq.empty());
    EXPECT_EQ(allText(*model), "order 1 B 10.00 x100 1h 09:30:00\n");
    EXPECT_EQ(shownText(*model), allText(*model));
    EXPECT_EQ(model->m_orderIndexBySeq.size(), 1u);
    EXPECT_EQ(takeFlags(*model), "none");
}

} // namespace
