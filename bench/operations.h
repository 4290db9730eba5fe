#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

// What is measured: once by the clock (tessimodel_bench) and once in instructions (instructions_of). An operation is
// prepared outside the measurement. `perform` then does it at least the number of times that it is given, and tells how
// often it really did; `reset`, if any, comes before each perform and is not measured.
struct Body {
    std::function<int(int)> perform;
    std::function<void()> reset = {};
};

struct Operation {
    std::string name;
    std::function<Body()> prepare;
    int times = 5000; // for each perform
    int rounds = 0;   // performs by the clock, where a reset takes long; 0 for as many as make a steady figure
};

const std::vector<Operation>& operations();

} // namespace bench
