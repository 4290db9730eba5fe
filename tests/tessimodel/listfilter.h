#pragma once

#include "indexui/tessimodel/depthfilter.h"

namespace tests {

// A filter that only says how large a row must be: both tests are needed, and any amount will do.
inline TC::SDepthFilterParam atLeastHands(int hands)
{
    return {.hands = hands, .connective = 1};
}

// A filter that no row passes.
inline TC::SDepthFilterParam nothing()
{
    return {.handsMode = 2, .hands = -1, .connective = 1};
}

} // namespace tests
