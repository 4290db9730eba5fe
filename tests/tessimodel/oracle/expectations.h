#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

// What a test of a generator asks: does enough happen, and always the same?
namespace tests::oracle {

struct Expectation {
    const char* what;
    int count;
    int atLeast;
};

inline void expectCounts(std::initializer_list<Expectation> expectations)
{
    for (const auto& [what, count, atLeast] : expectations) {
        EXPECT_GE(count, atLeast) << what;
    }
}

// `make` gives the steps of a seed.
template <class Make>
void expectStepsToGoByTheSeed(const Make& make)
{
    const auto textOf = [&make](unsigned long long seed) {
        std::string out;
        for (const auto& step : make(seed))
            out += text(step) + '\n';
        return out;
    };
    EXPECT_EQ(textOf(5), textOf(5));
    EXPECT_NE(textOf(5), textOf(6));
}

} // namespace tests::oracle
