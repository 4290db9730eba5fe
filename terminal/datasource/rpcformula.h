#pragma once

#include <vector>

namespace se {

// A computed series: `rowCount` rows of a price and the day's cumulative volume at it, oldest first. Both
// columns hold `rowCount` values.
struct RPCFormulaMetaResult {
    int rowCount = 0;
    std::vector<double> prices;
    std::vector<double> volumes;
};

// What else the computation gave; nothing of it is read by the models.
struct RPCFormulaResult {};

} // namespace se
