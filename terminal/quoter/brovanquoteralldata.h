#pragma once

#include "quoter/quoteralldata.h"

namespace zolv {

// The level-1 snapshot in the broker's quote mode: it carries the day's limits itself.
struct TERMINAL_API BrovanQuoterAllData : quoter::QuoterAllData {
    ~BrovanQuoterAllData() override;

    double upStopPrice = 0;
    double downStopPrice = 0;
};

} // namespace zolv
