#pragma once

#include "utils/int64.h"

#include <cstdint>
#include <string>

namespace exchange {

// What a simulated day is made of. The same options give the same day, byte for byte.
struct SimulationOptions {
    std::uint64_t seed = 1; // any

    std::string code = "009001"; // 1 to 12 letters or digits; the market is "SZ"
    std::string name = "模拟股份";
    int tradingDay = 20240315; // yyyymmdd, a calendar date from 19700102 to 20380118
    // Whole ticks of 0.01, from 1.00 to 5000.00; the limits are 10% off it. From about 500.00 on, with the orders
    // below, a side has up to 1,000 levels.
    double lastClose = 42.50;
    __int64 totalShares = 2'400'000'000; // above 0
    __int64 floatShares = 1'800'000'000; // above 0, at most totalShares

    int ordersPerDay = 25'000; // about: the seed makes it up to 3% more or fewer; 1 to 1,000,000
    int medianHands = 6;       // median order size in hands of 100 shares, 1 to 1000
    // Usual move of the fundamental value over the day, per mille of the last close; the seed makes it half to twice
    // as much. 0 to 200.
    int dayVolatility = 12;
    int marketOrdersPerMille = 8; // of the orders in continuous trading, 0 to 1000

    // Throws std::invalid_argument that names the option and its range.
    void check() const;
};

} // namespace exchange
