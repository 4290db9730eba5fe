#include "exchange/daystatistics.h"

#include <algorithm>
#include <map>

namespace exchange {

void ActiveVolume::add(Shares traded, __int64 amountInTicks, TickSize tick)
{
    const auto reaches = [traded, amountInTicks, tick](Shares shares, __int64 yuan) {
        return traded >= shares || amountInTicks >= yuan * tick.perUnit;
    };
    ++orders;
    if (reaches(500'000, 1'000'000))
        huge += traded;
    else if (reaches(100'000, 200'000))
        big += traded;
    else if (reaches(20'000, 40'000))
        middle += traded;
    else
        small += traded;
}

void DayStatistics::add(const std::vector<Fill>& fills, TickSize tick)
{
    struct Aggressor {
        Side side = Side::Buy;
        Shares volume = 0;
        __int64 amountInTicks = 0;
    };
    std::map<__int64, Aggressor> aggressors;
    for (const Fill& fill : fills) {
        const bool first = volume == 0;
        open = first ? fill.price : open;
        high = std::max(high, fill.price);
        low = first ? fill.price : std::min(low, fill.price);
        last = fill.price;
        volume += fill.volume;
        amountInTicks += fill.price * fill.volume;

        Aggressor& aggressor = aggressors[fill.aggressorSeq()];
        aggressor.side = fill.aggressor();
        aggressor.volume += fill.volume;
        aggressor.amountInTicks += fill.price * fill.volume;
    }
    for (const auto& [seq, aggressor] : aggressors)
        (aggressor.side == Side::Buy ? buys : sells).add(aggressor.volume, aggressor.amountInTicks, tick);
}

Ticks DayStatistics::averagePrice() const
{
    return volume == 0 ? 0 : averageOf(amountInTicks, volume);
}

} // namespace exchange
