#include "exchange/simulationoptions.h"

#include "exchange/instrumentclass.h"
#include "exchange/tradingday.h"

#include <algorithm>
#include <cmath>

namespace exchange {

namespace {

void require(bool met, const std::string& option, const std::string& rule)
{
    if (!met)
        throw OptionError(option, rule);
}

bool isLetterOrDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

void checkLastClose(double lastClose, const InstrumentClass& row)
{
    constexpr double kRounding = 1e-7; // what a decimal price may be off its tick as a double
    constexpr Ticks kFewest = 100;
    constexpr Ticks kMost = 500'000;
    const TickSize tick = row.tick;
    const double ticks = lastClose * tick.perUnit;
    require(ticks >= kFewest - kRounding && ticks <= kMost + kRounding, "lastClose",
            "must be from " + priceText(tick.price(kFewest), tick) + " to " + priceText(tick.price(kMost), tick) +
                " for class " + row.name);
    require(std::fabs(ticks - std::round(ticks)) < kRounding, "lastClose",
            "must be a whole number of ticks of " + priceText(tick.price(1), tick) + " for class " + row.name);
}

} // namespace

SimulationOptions SimulationOptions::of(const std::string& instrumentClass)
{
    const InstrumentClass& row = exchange::instrumentClass(instrumentClass);
    SimulationOptions options;
    options.instrumentClass = row.name;
    options.code = row.code;
    options.name = row.instrumentName;
    options.lastClose = row.lastClose;
    return options;
}

void SimulationOptions::check() const
{
    constexpr std::size_t kLongestCode = 12;
    require(!code.empty() && code.size() <= kLongestCode && std::all_of(code.begin(), code.end(), isLetterOrDigit),
            "code", "must be 1 to 12 letters or digits");
    require(isTradingDay(tradingDay), "tradingDay", "must be a calendar date from 19700102 to 20380118, as yyyymmdd");
    checkLastClose(lastClose, exchange::instrumentClass(instrumentClass));
    require(totalShares > 0, "totalShares", "must be above 0");
    require(floatShares > 0 && floatShares <= totalShares, "floatShares", "must be from 1 to totalShares");
    require(ordersPerDay >= 1 && ordersPerDay <= 1'000'000, "ordersPerDay", "must be from 1 to 1000000");
    require(medianHands >= 1 && medianHands <= 1000, "medianHands", "must be from 1 to 1000");
    require(dayVolatility >= 0 && dayVolatility <= 200, "dayVolatility", "must be from 0 to 200");
    require(marketOrdersPerMille >= 0 && marketOrdersPerMille <= 1000, "marketOrdersPerMille",
            "must be from 0 to 1000");
}

} // namespace exchange
