#include "quoter/orderdata.h"
#include "tests/tessimodel/orderlist.h"

#include <climits>

namespace {

using namespace tests;

// Three orders, of which the second is too small for the filter, and three cancels likewise.
class OrderListLookupsTest : public OrderListTest {
protected:
    void SetUp() override
    {
        filter(atLeastHands(5));
        feed.orders(history, {order(11).buy(10.00).shares(500), order(12).buy(10.00).shares(100),
                              order(13).sell(10.00).shares(700)});
        feed.trades(history, {cancelOfBuy(11), cancelOfBuy(12), cancelOfSell(13)});
    }

    // "11 12 13 -": seqs of the rows that a lookup gives for -1 to 4, "-" for an empty pointer.
    template <class Lookup>
    static std::string seqsAt(Lookup lookup)
    {
        std::string text;
        for (const int index : {INT_MIN, -1, 0, 1, 2, 3, INT_MAX}) {
            const auto row = lookup(index);
            text += (text.empty() ? "" : " ") + (row ? std::to_string(row->seq) : "-");
        }
        return text;
    }
};

TEST_F(OrderListLookupsTest, shouldGiveRowsOfEitherListWhenIndexIsInRange)
{
    EXPECT_EQ(seqsAt([&](int i) { return model->getOrderData(i, true); }), "- - 11 12 13 - -");
    EXPECT_EQ(seqsAt([&](int i) { return model->getOrderData(i, false); }), "- - 11 13 - - -");
    EXPECT_EQ(seqsAt([&](int i) { return model->getCancelData(i); }), "- - 11 13 - - -");
    filter(nothing());
    EXPECT_EQ(seqsAt([&](int i) { return model->getOrderData(i, true); }), "- - 11 12 13 - -");
    EXPECT_EQ(seqsAt([&](int i) { return model->getOrderData(i, false); }), "- - - - - - -");
    EXPECT_EQ(seqsAt([&](int i) { return model->getCancelData(i); }), "- - - - - - -");
    model->clear();
    EXPECT_EQ(seqsAt([&](int i) { return model->getOrderData(i, true); }), "- - - - - - -");
}

TEST_F(OrderListLookupsTest, shouldFindAnOrderBySeqWhenItIsKnown)
{
    OrderList::OrderRow found;
    ASSERT_TRUE(model->getOrderData(12, found));
    EXPECT_EQ(found, model->m_orders[1]);
    for (const int seq : {0, 1, 10, 14, -12, INT_MAX}) {
        EXPECT_FALSE(model->getOrderData(seq, found)) << seq;
        EXPECT_EQ(found, model->m_orders[1]) << "nothing is touched";
    }
    model->clearEntrusts();
    EXPECT_FALSE(model->getOrderData(12, found));
}

TEST_F(OrderListLookupsTest, shouldCopyTheTradesOfAnOrderWhenThereAreSome)
{
    OrderList::Trades trades;
    ASSERT_TRUE(model->getTransactionData(11, trades));
    ASSERT_EQ(trades.size(), 1u);
    const OrderList::Trades before = trades;
    EXPECT_FALSE(model->getTransactionData(14, trades));
    EXPECT_EQ(trades, before) << "nothing is touched";
    ASSERT_TRUE(model->getTransactionData(12, trades));
    EXPECT_EQ(trades.size(), 1u) << "what was in the list is replaced";
    EXPECT_NE(trades, before);
    trades.clear();
    EXPECT_EQ(tradesText(*model, 12), "12+0 x100 cancel") << "the panel's list is a copy";
}

// --- rows of one second ---------------------------------------------------------------------------------------

class OrderListTracebackTest : public OrderListTest {
protected:
    // An order and its cancel at each of these times.
    void given(const std::vector<__int64>& timetags)
    {
        Records orders;
        Records cancels;
        for (const __int64 timetag : timetags) {
            const int seq = static_cast<int>(orders.size()) + 1;
            const std::shared_ptr<quoter::QuoterBase> record = order(seq).buy(10.00).shares(seq * 100LL);
            const std::shared_ptr<quoter::QuoterBase> cancel = cancelOfBuy(seq);
            record->timetag = cancel->timetag = timetag;
            orders.push_back(record);
            cancels.push_back(cancel);
        }
        feed.orders(history, orders);
        feed.trades(history, cancels);
    }

    // What both lists tell for -1 and onwards, up to behind the last row; they must agree.
    std::string traceback() const
    {
        EXPECT_EQ(model->m_filteredOrderCount, model->m_filteredCancelCount);
        std::string text;
        for (int i = -1; i <= model->m_filteredOrderCount; ++i) {
            const int row = model->tracebackOrderSeq(i);
            EXPECT_EQ(model->tracebackCancelSeq(i), row) << i;
            text += (text.empty() ? "" : " ") + std::to_string(row);
        }
        return text;
    }

    const __int64 morning = timeOf("09:00:00");
};

TEST_F(OrderListTracebackTest, shouldCountTheRowsOfOneSecondWhenTheyStandTogether)
{
    const __int64 t = timeOf("09:30:00");
    given({t, t + 999, t + 1000, t + 1001, t + 1999, t, t + 1, t + 2000});
    EXPECT_EQ(traceback(), "1 1 2 1 2 3 1 2 1 1") << "an earlier second that comes again starts anew";
}

TEST_F(OrderListTracebackTest, shouldBeOneWhenThereIsNoRowBefore)
{
    EXPECT_EQ(traceback(), "1 1");
    given({timeOf("09:30:00")});
    EXPECT_EQ(traceback(), "1 1 1");
    EXPECT_EQ(model->tracebackOrderSeq(INT_MAX), 1);
    EXPECT_EQ(model->tracebackOrderSeq(INT_MIN), 1);
    EXPECT_EQ(model->tracebackCancelSeq(INT_MAX), 1);
    EXPECT_EQ(model->tracebackCancelSeq(INT_MIN), 1);
}

TEST_F(OrderListTracebackTest, shouldCountShownRowsOnlyWhenAFilterHidesSome)
{
    const __int64 t = timeOf("09:30:00");
    given({t, t + 1000, t, t, t});
    EXPECT_EQ(traceback(), "1 1 1 1 2 3 1");
    filter({.handsMode = 1, .hands = 2, .connective = 1});
    EXPECT_EQ(traceback(), "1 1 2 3 1");
    filter({.handsMode = 2, .hands = 2, .connective = 1});
    EXPECT_EQ(traceback(), "1 1 1");
}

// Seconds are compared as 32 bits: rows that are 2^32 seconds apart count as of one second.
TEST_F(OrderListTracebackTest, shouldCompareTheLowBitsWhenSecondsAreFarApart)
{
    const __int64 wrap = 1000LL << 32; // 49710 days, 6 hours, 28 minutes and 16 seconds
    given({morning, morning + wrap, morning + wrap + 1000, morning + 1000, morning + (1000LL << 31)});
    filter({.startTime = 0, .endTime = dayTime("23:59:59")});
    EXPECT_EQ(traceback(), "1 1 2 1 2 1 1");
}

TEST_F(OrderListTracebackTest, shouldCountALongRunToItsBeginWhenAllRowsAreOfOneSecond)
{
    given(std::vector<__int64>(5000, morning));
    EXPECT_EQ(model->tracebackOrderSeq(4999), 5000);
    EXPECT_EQ(model->tracebackCancelSeq(4999), 5000);
    EXPECT_EQ(model->tracebackOrderSeq(5000), 1);
}

} // namespace
