#pragma once

#include "utils/int64.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace exchange {

// "lastClose must be a whole number of ticks": an option of SimulationOptions, by its name, and the rule that it
// breaks.
class OptionError : public std::invalid_argument {
public:
    OptionError(const std::string& option, const std::string& rule)
        : std::invalid_argument(option + " " + rule)
        , m_option(option)
        , m_rule(rule)
    {}

    const std::string& option() const { return m_option; }
    const std::string& rule() const { return m_rule; }

private:
    std::string m_option;
    std::string m_rule;
};

// What a simulated day is made of. The same options give the same day, byte for byte.
struct SimulationOptions {
    std::uint64_t seed = 1; // any

    std::string instrumentClass = "stock"; // a name of instrumentClasses()
    std::string code = "009001";           // 1 to 12 letters or digits
    std::string name = "模拟股份";
    int tradingDay = 20240315; // yyyymmdd, a calendar date from 19700102 to 20380118
    // Whole ticks of the class, from 100 to 500,000 of them. A stock's are 0.01: from 1.00 to 5000.00, and the limits
    // are 10% off. From about 500.00 on, with the orders below, a side has up to 1,000 levels.
    double lastClose = 42.50;
    __int64 totalShares = 2'400'000'000; // above 0
    __int64 floatShares = 1'800'000'000; // above 0, at most totalShares

    int ordersPerDay = 25'000; // about: the seed makes it up to 3% more or fewer; 1 to 1,000,000
    int medianHands = 6;       // median order size in lots of the class, 1 to 1000
    // Usual move of the fundamental value over the day, per mille of the last close; the seed makes it half to twice
    // as much. 0 to 200.
    int dayVolatility = 12;
    int marketOrdersPerMille = 8; // of the orders in continuous trading, 0 to 1000

    // The options above with the code, name and last close of a class. Throws std::invalid_argument when there is none
    // of that name.
    static SimulationOptions of(const std::string& instrumentClass);

    // Throws OptionError, and std::invalid_argument when there is no class of that name.
    void check() const;
};

} // namespace exchange
