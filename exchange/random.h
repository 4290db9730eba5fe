#pragma once

#include "utils/int64.h"

#include <array>
#include <cstdint>

namespace exchange {

// The simulator's only source of chance: the same seed gives the same numbers on every machine, compiler and
// standard library. Everything is integer arithmetic; no floating point takes part, so neither the rounding of a
// libm nor a fused multiplication can change a decision.
//
// The generator is xoshiro256**: four 64-bit words of state, of which one is scrambled into the result before all
// are stirred with shifts, a rotation and exclusive-ors. The words are filled by splitmix64, a counter with a
// finalising hash, so that neighbouring seeds give unrelated days. Plain value; one thread.
class Random {
public:
    explicit Random(std::uint64_t seed);

    std::uint64_t next();

    // 0 to count - 1, evenly. `count` is above 0.
    int below(int count);

    // True `perMille` times in a thousand.
    bool chance(int perMille) { return below(1000) < perMille; }

    // Bell-shaped around 0 with the given standard deviation, never beyond six of them: the sum of twelve even draws.
    int normal(int deviation);

    // Exponentially distributed with the given mean, rounded down; at most 45 means.
    int exponential(int mean);

    // `median` times two to the power of a bell-shaped number. `spread` is the standard deviation of that number in
    // 256ths: 256 puts two thirds of the draws between half and twice the median. `median` is at most a million and
    // `spread` at most 1000.
    __int64 logNormal(int median, int spread);

private:
    __int64 bell(); // 16 fractional bits, standard deviation 1

    std::array<std::uint64_t, 4> m_state{};
};

} // namespace exchange
