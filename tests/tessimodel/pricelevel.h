#pragma once

#include "indexui/tessimodel/cmodeldepththousand_queue.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "tests/support/records.h"
#include "tests/tessimodel/booktext.h"

#include <boost/make_shared.hpp>

#include <string>

namespace tests {

// A level at 10.00 with its row, of an instrument with 100 shares a hand.
struct PriceLevel {
    explicit PriceLevel(bool isBid = true)
        : queue(10.0, isBid)
    {}

    bool add(const std::shared_ptr<quoter::OrderData>& order) { return queue.order(order, row, 100); }
    bool take(const std::shared_ptr<quoter::TransactionData>& trade) { return queue.deal(trade, row, 100); }

    std::string text() { return levelText(queue); }
    std::string rowText() const { return tests::rowText(*row); }

    TC::SingleQueue queue;
    boost::shared_ptr<TC::EntrustData> row = boost::make_shared<TC::EntrustData>();
};

} // namespace tests
