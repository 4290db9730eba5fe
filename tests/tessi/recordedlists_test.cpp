// The order list and the trade list after a real day, against sums over its records that use neither.

#include "apps/tessi/followedlists.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "recording/datalayer.h"
#include "tests/tessi/importedday.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <vector>

namespace {

using namespace tests;

// What the records say, order by order.
struct Records {
    explicit Records(const recording::RecordedDay& day)
    {
        const bool deletesAreOrders = day.instrument.market == "SH";
        for (const recording::Event& event : day.events) {
            if (const auto order = std::dynamic_pointer_cast<quoter::OrderData>(event.record))
                (order->bsFlag >= quoter::kSideCancelBuy ? deletes : orders).push_back(order);
            else if (const auto trade = std::dynamic_pointer_cast<quoter::TransactionData>(event.record))
                add(*trade, trade, deletesAreOrders);
        }
        for (const auto& order : orders)
            bySeq[order->seq] = order;
    }

    void add(const quoter::TransactionData& trade, const std::shared_ptr<quoter::TransactionData>& record,
             bool deletesAreOrders)
    {
        if (trade.transKind == quoter::kTransKindCancel) {
            if (!deletesAreOrders)
                cancels.push_back(record);
            return;
        }
        if (trade.volume == 0)
            return;
        trades.push_back(record);
        traded[trade.buySeq] += trade.volume;
        traded[trade.sellSeq] += trade.volume;
    }

    std::vector<std::shared_ptr<quoter::OrderData>> orders;
    std::vector<std::shared_ptr<quoter::OrderData>> deletes; // Shanghai's cancels
    std::vector<std::shared_ptr<quoter::TransactionData>> cancels;
    std::vector<std::shared_ptr<quoter::TransactionData>> trades;
    std::map<__int64, std::shared_ptr<quoter::OrderData>> bySeq;
    std::map<__int64, __int64> traded; // shares
};

class RecordedLists : public ImportedDay {
protected:
    void SetUp() override
    {
        ImportedDay::SetUp();
        m_records = std::make_unique<Records>(m_day);
    }

    // The model of a followed list after the day.
    template <class Followed>
    auto after()
    {
        Followed followed(m_day);
        tessi::deliverAsHistory(m_terminal, m_day, [&](recording::DataLayer& data) { followed.subscribe(data); });
        return followed.model;
    }

    std::unique_ptr<Records> m_records;
};

TEST_P(RecordedLists, shouldHaveARowForEveryOrderWhenDayIsReal)
{
    const auto model = after<tessi::FollowedOrders>();
    ASSERT_EQ(static_cast<std::size_t>(model->m_orderCount), m_records->orders.size());
    EXPECT_EQ(model->m_filteredOrderCount, model->m_orderCount);
    for (int i = 0; i < model->m_orderCount; ++i) {
        const quoter::OrderData& record = *m_records->orders[static_cast<std::size_t>(i)];
        const auto row = model->getOrderData(i, true);
        ASSERT_TRUE(row->seq == record.seq && row->volume == record.volume && row->time == record.timetag / 1000 &&
                    row->bsFlag == record.bsFlag && row->price == record.price)
            << "order " << record.seq;
    }
}

TEST_P(RecordedLists, shouldHaveARowForEveryCancelWhenDayIsReal)
{
    const auto model = after<tessi::FollowedOrders>();
    const auto check = [&](int index, __int64 seq, __int64 volume, bool isBuy) {
        const auto row = model->getCancelData(index);
        TC::CModelDepthEntrust::OrderRow order;
        ASSERT_TRUE(row && row->seq == seq && row->volume == volume) << "cancel " << index << " of order " << seq;
        ASSERT_TRUE(model->getOrderData(row->seq, order)) << seq;
        const std::string symbol = TC::getOrderSymbol(order).toStdString();
        ASSERT_TRUE(symbol == (isBuy ? "B" : "S") || symbol == (isBuy ? "UB" : "US")) << seq << " is " << symbol;
    };
    int index = 0;
    for (const auto& record : m_records->deletes)
        check(index++, record->seq, record->volume, record->bsFlag == quoter::kSideCancelBuy);
    for (const auto& record : m_records->cancels)
        check(index++, record->buySeq + record->sellSeq, record->volume, record->buySeq != 0);
    EXPECT_GT(index, 500);
    EXPECT_EQ(model->m_filteredCancelCount, index);
    EXPECT_EQ(model->m_cancels.size(), index);
}

TEST_P(RecordedLists, shouldHaveARowForEveryTradeWhenDayIsReal)
{
    const auto model = after<tessi::FollowedTrades>();
    ASSERT_EQ(static_cast<std::size_t>(model->m_rowCount), m_records->trades.size());
    for (int i = 0; i < model->m_rowCount; ++i) {
        const quoter::TransactionData& record = *m_records->trades[static_cast<std::size_t>(i)];
        const auto row = model->getData(i);
        ASSERT_TRUE(row->buySeq == record.buySeq && row->sellSeq == record.sellSeq &&
                    row->fullVolume == record.volume && row->price == record.price &&
                    row->time == record.timetag / 1000)
            << "trade " << i;
    }
}

// By the links of the trade list, and by the lookup of the order list.
TEST_P(RecordedLists, shouldSumUpToWhatAnOrderTradedWhenItsChainIsFollowed)
{
    const auto trades = after<tessi::FollowedTrades>();
    std::map<__int64, __int64> chained;
    for (int i = 0; i < trades->m_rowCount; ++i) {
        const auto first = trades->getData(i);
        if (first->prevBuyIndex < 0) {
            for (auto row = first; row; row = trades->getData(row->nextBuyIndex))
                chained[first->buySeq] += row->fullVolume;
        }
        if (first->prevSellIndex < 0) {
            for (auto row = first; row; row = trades->getData(row->nextSellIndex))
                chained[first->sellSeq] += row->fullVolume;
        }
    }
    EXPECT_EQ(chained, m_records->traded);

    const auto orders = after<tessi::FollowedOrders>();
    std::map<__int64, __int64> touched;
    for (const auto& [seq, shares] : m_records->traded) {
        TC::CModelDepthEntrust::Trades found;
        ASSERT_TRUE(orders->getTransactionData(static_cast<int>(seq), found)) << seq;
        for (const auto& trade : found)
            touched[seq] += trade->transKind == quoter::kTransKindCancel ? 0 : trade->volume;
    }
    EXPECT_EQ(touched, m_records->traded);
}

TEST_P(RecordedLists, shouldGiveTheOrdersOwnSizeWhenItIsKnown)
{
    const auto model = after<tessi::FollowedTrades>();
    const auto hands = [&](__int64 shares) { return std::max(1LL, std::llround(static_cast<double>(shares) / 100)); };
    std::size_t known = 0;
    for (int i = 0; i < model->m_rowCount; ++i) {
        const auto row = model->getData(i);
        for (const bool isBuy : {true, false}) {
            const int seq = isBuy ? row->buySeq : row->sellSeq;
            const auto order = m_records->bySeq.find(seq);
            known += order != m_records->bySeq.end() ? 1U : 0U;
            const __int64 shares = order != m_records->bySeq.end() ? order->second->volume : m_records->traded.at(seq);
            ASSERT_EQ(model->getEntrustVolume(row, isBuy), hands(shares)) << "order " << seq;
        }
    }
    EXPECT_GT(known, m_records->trades.size());
}

INSTANTIATE_TEST_SUITE_P(Days, RecordedLists,
                         ::testing::Values("szse-20171229-300446", "szse-20170103-000001", "sse-20230201-600519"),
                         [](const auto& param) { return testName(param.param); });

} // namespace
