#pragma once

#include "quoter/quoterbase.h"

#include <vector>

namespace quoter {

// The exchange's thousand-level snapshot: every price of both sides, best first. The three vectors of a side
// have the same length; empty vectors are a valid record of an empty side. Volumes are in hands.
struct TERMINAL_API LevelThousandData : QuoterBase {
    ~LevelThousandData() override;

    std::vector<double> bidPrices;
    std::vector<int> bidVolumes;
    std::vector<int> bidNumbers; // orders at each level
    std::vector<double> askPrices;
    std::vector<int> askVolumes;
    std::vector<int> askNumbers;
};

} // namespace quoter
