#pragma once

#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/transactionrows.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tests {

// A tick list and the terminal that it stands in.
class TransactionTest : public ::testing::Test {
protected:
    void follow(const std::string& market, const std::string& code, const std::set<int>& types = {})
    {
        terminal.instruments.add(stock(market, code, types));
        model.setStock(keyOf(market, code));
    }

    standin::Terminal terminal;
    Transactions model;
};

} // namespace tests
