#pragma once

#include "tests/support/instruments.h"

#include <set>
#include <string>

namespace tests {

// A stock 600001 with figures that tell every row, divisor and number of digits apart.
inline standin::InstrumentDescription figuredStock(const std::string& market = "SH", const std::set<int>& types = {})
{
    standin::InstrumentDescription instrument = stock(market, "600001", types);
    instrument.lastClose = 12.34;
    instrument.upStopPrice = 13.57;
    instrument.downStopPrice = 11.11;
    instrument.intFields = {{2022, 12345}};
    instrument.doubleFields = {{3000, 0.125}, {3002, 55.5}, {3003, 1.275}, {3015, 2.5e9}, {3016, 123456789}};
    return instrument;
}

// The bits of a bond's class.
inline constexpr unsigned kBondClass = 4U << 20;

} // namespace tests
