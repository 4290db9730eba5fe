#pragma once

#include "indexui/tessimodel/cmodeldepthentrust.h"
#include "quoter/orderdata.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/bookfeed.h"
#include "tests/tessimodel/listfilter.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

// What tests of the order list are written with.
namespace tests {

// An order list whose single steps a test can take.
class OrderList : public TC::CModelDepthEntrust {
public:
    using CModelDepthEntrust::append;
    using CModelDepthEntrust::beInTheRange;
    using CModelDepthEntrust::datasFilter;
    using CModelDepthEntrust::doEntrust;
    using CModelDepthEntrust::doTransaction;
    using CModelDepthEntrust::passFilter;
};

// A cancel as market "SH" sends it.
inline Order deletionOfBuy(__int64 seq, double price = 0)
{
    return order(seq).buy(price).flag(quoter::kSideCancelBuy).kind(0);
}

inline Order deletionOfSell(__int64 seq, double price = 0)
{
    return order(seq).sell(price).flag(quoter::kSideCancelSell).kind(0);
}

// "1 B 10.00 x300 3h 09:30:00": seq, symbol, price, shares, hands, time of day. A cancel has no symbol.
std::string rowText(const TC::DepthOrderData& row);
std::string rowText(const TC::DepthCancelData& row);

// "order 1 B 10.00 x300 3h 09:30:00\ncancel 1 0.00 x300 3h 09:31:00\n": orders, then cancels, as they came; all rows,
// or those that the filter lets through.
std::string allText(const OrderList& model);
std::string shownText(const OrderList& model);

// "orders 1 2 cancels 2": the rows that the filter lets through by their seqs.
std::string shownSeqs(const OrderList& model);

// "1+2 x100 1+0 x50 cancel": buy and sell seq and shares of each trade that touched the order. "none" for no entry.
std::string tradesText(const OrderList& model, int seq);

// The changed flags that are up, "orders trades", "orders", "trades" or "none"; lowers them as a panel does.
std::string takeFlags(OrderList& model);

// That the counts are those of the lists, that the filtered rows are rows of the full lists in the same order, and that
// each seq leads to a row of its own.
void expectConsistent(const OrderList& model);

// Milliseconds since midnight, as a filter has them.
int dayTime(const std::string& clock);

// An order list that follows SZ 000001, and its feed.
class OrderListTest : public ::testing::Test {
protected:
    OrderListTest();
    void TearDown() override;

    // Puts an instrument there, also in place of the one with its name; model and feed move to it.
    void follow(const std::string& market, const std::string& code, const std::set<int>& types = {});

    void filter(TC::SDepthFilterParam param) { model->setFilterParam(param); }

    BookTerminal terminal;
    boost::shared_ptr<OrderList> model = boost::make_shared<OrderList>();
    BookFeed<OrderList> feed{terminal, *model};
};

} // namespace tests
