#pragma once

#include "indexui/tessimodel/cmodeltransaction.h"
#include "quoter/quoterbase.h"

#include <string>
#include <vector>

namespace tests {

// A model whose single steps a test can take.
class Transactions : public TC::CModelTransaction {
public:
    using CModelTransaction::append;
    using CModelTransaction::convert;
    using CModelTransaction::initStockParams;

    bool history(const std::vector<quoter::QuoterBasePtr>& records) { return quoterCallBack(0, 0, records); }
    bool more(const std::vector<quoter::QuoterBasePtr>& records) { return quoterCallBack(0, 3, records); }
    bool live(const std::vector<quoter::QuoterBasePtr>& records) { return quoterCallBack(0, 1, records); }
};

// Rows as "09:30:00 10.02 +500 of 500 B" lines.
std::string rowsText(const TC::CModelTransaction& model);

} // namespace tests
