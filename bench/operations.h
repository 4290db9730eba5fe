#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

// What is measured: once by the clock (tessimodel_bench) and once in instructions (instructions_of). An operation is
// prepared outside the measurement; the body then performs it at least the number of times that it is given, and tells
// how often it really did.
using Body = std::function<int(int)>;

struct Operation {
    std::string name;
    std::function<Body()> prepare;
};

const std::vector<Operation>& operations();

} // namespace bench
