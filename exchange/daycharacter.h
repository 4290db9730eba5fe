#pragma once

namespace exchange {

class Random;
struct SimulationOptions;

// How one day differs from the others of the same options: drawn once from the seed, before the day begins. Some days
// are calm and some are nervous, on some people wait and on some they trade.
struct DayCharacter {
    int orders = 0;     // 3% more or fewer than SimulationOptions::ordersPerDay at most, and at least one
    int volatility = 0; // usual move of the value over the day, per mille of the last close: from half of
                        // SimulationOptions::dayVolatility to twice of it
    int takers = 0;     // per mille of the continuous orders that take what is offered while the spread is narrow and
                        // the price is right: from 290 to 410

    static DayCharacter draw(const SimulationOptions& options, Random& random);
};

} // namespace exchange
