#pragma once

#include "quoter/quoterbase.h"

#include <vector>

namespace quoter {

// The order queue at the best price of each side: volumes in shares, oldest order first. The exchanges send
// the first 50 orders at most.
struct TERMINAL_API LevelOrderData : QuoterBase {
    ~LevelOrderData() override;

    double bidPrice = 0;
    std::vector<int> bidQueue;
    double askPrice = 0;
    std::vector<int> askQueue;
};

} // namespace quoter
