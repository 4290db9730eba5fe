#pragma once

#include <initializer_list>
#include <random>

namespace tests::oracle {

class Dice {
public:
    explicit Dice(unsigned long long seed)
        : m_engine(seed)
    {}

    // 0 to count - 1.
    int below(int count) { return static_cast<int>(m_engine() % static_cast<unsigned long long>(count)); }
    int between(int low, int high) { return low + below(high - low + 1); }
    bool oneIn(int count) { return below(count) == 0; }
    bool percent(int share) { return below(100) < share; }

    template <class Value>
    Value pick(std::initializer_list<Value> values)
    {
        return values.begin()[below(static_cast<int>(values.size()))];
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace tests::oracle
