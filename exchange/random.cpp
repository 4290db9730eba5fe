#include "exchange/random.h"

#include <bit>

namespace exchange {

namespace {

constexpr int kFraction = 16; // fractional bits of the fixed-point numbers below
constexpr __int64 kOne = 1LL << kFraction;

std::uint64_t splitmix(std::uint64_t& counter)
{
    counter += 0x9e3779b97f4a7c15U;
    std::uint64_t mixed = counter;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebU;
    return mixed ^ (mixed >> 31);
}

// Minus the binary logarithm of bits / 2^64, for bits above 0. The fraction comes bit by bit: squaring a mantissa
// doubles its logarithm.
__int64 minusLog2(std::uint64_t bits)
{
    const int zeros = std::countl_zero(bits);
    std::uint64_t mantissa = (bits << zeros) >> 32; // 1 to 2, with 31 fractional bits
    __int64 fraction = 0;
    for (int bit = 0; bit < kFraction; ++bit) {
        mantissa = (mantissa * mantissa) >> 31;
        const bool doubled = (mantissa >> 32) != 0;
        fraction = fraction * 2 + (doubled ? 1 : 0);
        if (doubled)
            mantissa >>= 1;
    }
    return (zeros + 1) * kOne - fraction;
}

} // namespace

Random::Random(std::uint64_t seed)
{
    for (std::uint64_t& word : m_state)
        word = splitmix(seed);
}

std::uint64_t Random::next()
{
    const std::uint64_t result = std::rotl(m_state[1] * 5, 7) * 9;
    const std::uint64_t shifted = m_state[1] << 17;
    m_state[2] ^= m_state[0];
    m_state[3] ^= m_state[1];
    m_state[1] ^= m_state[2];
    m_state[0] ^= m_state[3];
    m_state[2] ^= shifted;
    m_state[3] = std::rotl(m_state[3], 45);
    return result;
}

int Random::below(int count)
{
    return static_cast<int>(((next() >> 32) * static_cast<std::uint64_t>(count)) >> 32);
}

__int64 Random::bell()
{
    // Twelve even 16-bit draws have a variance of one in units of 2^16, and a mean of six less half a bit each.
    __int64 sum = -6 * (kOne - 1);
    for (int word = 0; word < 3; ++word) {
        std::uint64_t bits = next();
        for (int part = 0; part < 4; ++part, bits >>= 16)
            sum += static_cast<__int64>(bits & 0xffffU);
    }
    return sum;
}

int Random::normal(int deviation)
{
    return static_cast<int>((bell() * deviation + kOne / 2) >> kFraction);
}

int Random::exponential(int mean)
{
    constexpr __int64 kLn2 = 45426; // with 16 fractional bits
    const __int64 nats = (minusLog2(next() | 1U) * kLn2) >> kFraction;
    return static_cast<int>((nats * mean) >> kFraction);
}

__int64 Random::logNormal(int median, int spread)
{
    const __int64 exponent = (bell() * spread) >> 8;
    const __int64 fraction = exponent & (kOne - 1);
    // 2^f is close to 1 + 0.6565 f + 0.3435 f^2 for f from 0 to 1, and exact at both ends.
    const __int64 mantissa = kOne + ((fraction * (43026 + ((22510 * fraction) >> kFraction))) >> kFraction);
    const __int64 shift = kFraction - (exponent >> kFraction);
    if (shift <= 0)
        return (median * mantissa) << -shift;
    return shift > 62 ? 0 : (median * mantissa) >> shift;
}

} // namespace exchange
