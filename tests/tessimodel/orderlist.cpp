#include "tests/tessimodel/orderlist.h"

#include "quoter/transactiondata.h"

#include <fmt/format.h>

namespace tests {

namespace {

template <class Row>
void expectPartOf(const QList<Row>& all, const QList<Row>& shown)
{
    auto place = all.begin();
    for (const Row& row : shown) {
        place = std::find(place, all.end(), row);
        ASSERT_NE(place, all.end()) << "a filtered row that is none of the full list, or stands in another place";
        ++place;
    }
}

} // namespace

std::string rowText(const TC::DepthOrderData& row)
{
    const auto copy = boost::make_shared<TC::DepthOrderData>(row);
    return fmt::format("{} {} {:.2f} x{} {}h {}", row.seq, TC::getOrderSymbol(copy).toStdString(), row.price,
                       row.volume, row.hands, clockOf(row.time));
}

std::string rowText(const TC::DepthCancelData& row)
{
    return fmt::format("{} {:.2f} x{} {}h {}", row.seq, row.price, row.volume, row.hands, clockOf(row.time));
}

std::string allText(const OrderList& model)
{
    std::string text;
    for (int i = 0; i < model.m_orderCount; ++i)
        text += "order " + rowText(*model.getOrderData(i, true)) + "\n";
    for (const auto& row : model.m_cancels)
        text += "cancel " + rowText(*row) + "\n";
    return text;
}

std::string shownText(const OrderList& model)
{
    std::string text;
    for (int i = 0; i < model.m_filteredOrderCount; ++i)
        text += "order " + rowText(*model.getOrderData(i, false)) + "\n";
    for (int i = 0; i < model.m_filteredCancelCount; ++i)
        text += "cancel " + rowText(*model.getCancelData(i)) + "\n";
    return text;
}

std::string shownSeqs(const OrderList& model)
{
    std::string text = "orders";
    for (const auto& row : model.m_filteredOrders)
        text += fmt::format(" {}", row->seq);
    text += " cancels";
    for (const auto& row : model.m_filteredCancels)
        text += fmt::format(" {}", row->seq);
    return text;
}

std::string tradesText(const OrderList& model, int seq)
{
    OrderList::Trades trades;
    if (!model.getTransactionData(seq, trades))
        return "none";
    std::string text;
    for (const auto& trade : trades) {
        text += fmt::format("{}{}+{} x{}{}", text.empty() ? "" : " ", trade->buySeq, trade->sellSeq, trade->volume,
                            trade->transKind == quoter::kTransKindCancel ? " cancel" : "");
    }
    return text;
}

std::string takeFlags(OrderList& model)
{
    const bool orders = model.m_ordersChanged.exchange(false);
    const bool trades = model.m_transactionsChanged.exchange(false);
    if (!orders && !trades)
        return "none";
    return std::string(orders ? "orders" : "") + (orders && trades ? " " : "") + (trades ? "trades" : "");
}

void expectConsistent(const OrderList& model)
{
    EXPECT_EQ(model.m_orderCount, model.m_orders.size());
    EXPECT_EQ(model.m_filteredOrderCount, model.m_filteredOrders.size());
    EXPECT_EQ(model.m_filteredCancelCount, model.m_filteredCancels.size());
    expectPartOf(model.m_orders, model.m_filteredOrders);
    expectPartOf(model.m_cancels, model.m_filteredCancels);
    for (const auto& [seq, index] : model.m_orderIndexBySeq) {
        ASSERT_TRUE(index >= 0 && index < model.m_orders.size()) << "seq " << seq;
        EXPECT_EQ(model.m_orders[index]->seq, seq);
    }
}

int dayTime(const std::string& clock)
{
    return static_cast<int>(timeOf(clock) - timeOf("00:00:00"));
}

OrderListTest::OrderListTest()
{
    model->setStock(keyOf("SZ", "000001"));
}

void OrderListTest::TearDown()
{
    if (model)
        expectConsistent(*model);
}

void OrderListTest::follow(const std::string& market, const std::string& code, const std::set<int>& types)
{
    terminal.instruments.add(stock(market, code, types));
    model->setStock(keyOf(market, code));
    feed.request(market, code);
}

} // namespace tests
