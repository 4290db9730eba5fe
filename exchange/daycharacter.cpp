#include "exchange/daycharacter.h"

#include "exchange/random.h"
#include "exchange/simulationoptions.h"

#include <algorithm>

namespace exchange {

namespace {

constexpr int kOrdersMargin = 3;       // per cent
constexpr int kVolatilitySpread = 160; // log-normal, in 256ths of a doubling
constexpr int kFewestTakers = 290;     // per mille
constexpr int kMostTakers = 410;

} // namespace

DayCharacter DayCharacter::draw(const SimulationOptions& options, Random& random)
{
    const int margin = options.ordersPerDay * kOrdersMargin / 100;
    const __int64 usual = options.dayVolatility;
    DayCharacter day;
    day.orders = options.ordersPerDay - margin + random.below(2 * margin + 1);
    day.volatility = static_cast<int>(
        std::clamp(random.logNormal(options.dayVolatility, kVolatilitySpread), (usual + 1) / 2, usual * 2));
    day.takers = kFewestTakers + random.below(kMostTakers - kFewestTakers + 1);
    return day;
}

} // namespace exchange
