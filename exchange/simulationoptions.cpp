#include "exchange/simulationoptions.h"

#include "exchange/order.h"
#include "exchange/tradingday.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace exchange {

namespace {

void require(bool met, const char* what)
{
    if (!met)
        throw std::invalid_argument(what);
}

bool isLetterOrDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

void SimulationOptions::check() const
{
    constexpr double kRounding = 1e-7; // what a decimal price may be off its tick as a double
    constexpr std::size_t kLongestCode = 12;
    require(!code.empty() && code.size() <= kLongestCode && std::all_of(code.begin(), code.end(), isLetterOrDigit),
            "code must be 1 to 12 letters or digits");
    require(isTradingDay(tradingDay), "tradingDay must be a calendar date from 19700102 to 20380118, as yyyymmdd");
    require(lastClose >= 1.0 && lastClose <= 5000.0, "lastClose must be from 1.00 to 5000.00");
    const double ticks = lastClose * kTicksPerYuan;
    require(std::fabs(ticks - std::round(ticks)) < kRounding, "lastClose must be a whole number of ticks of 0.01");
    require(totalShares > 0, "totalShares must be above 0");
    require(floatShares > 0 && floatShares <= totalShares, "floatShares must be from 1 to totalShares");
    require(ordersPerDay >= 1 && ordersPerDay <= 1'000'000, "ordersPerDay must be from 1 to 1000000");
    require(medianHands >= 1 && medianHands <= 1000, "medianHands must be from 1 to 1000");
    require(dayVolatility >= 0 && dayVolatility <= 200, "dayVolatility must be from 0 to 200");
    require(marketOrdersPerMille >= 0 && marketOrdersPerMille <= 1000, "marketOrdersPerMille must be from 0 to 1000");
}

} // namespace exchange
