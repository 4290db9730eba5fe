#pragma once

#include "exchange/simulationoptions.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tests {

// Days that differ in more than their chance: quiet and wild, with few market orders and with many.
inline exchange::SimulationOptions simulationOf(int seed)
{
    exchange::SimulationOptions options;
    options.seed = static_cast<std::uint64_t>(seed);
    options.ordersPerDay = std::array{2500, 1200, 4000}.at(static_cast<std::size_t>(seed % 3));
    options.lastClose = std::array{42.50, 9.10, 3.33, 118.00}.at(static_cast<std::size_t>(seed % 4));
    options.dayVolatility = seed % 2 == 0 ? 12 : 100;
    options.marketOrdersPerMille = seed % 2 == 0 ? 120 : 8;
    return options;
}

} // namespace tests
