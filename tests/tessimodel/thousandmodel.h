#pragma once

#include "indexui/tessimodel/cmodeldepththousand.h"
#include "tests/tessimodel/bookfeed.h"
#include "tests/tessimodel/bookreading.h"
#include "tests/tessimodel/booktext.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <cfloat>
#include <string>

namespace tests {

// A thousand-level model whose single steps a test can take.
class Thousand : public TC::CModelDepthThousand {
public:
    using CModelDepthThousand::CModelDepthThousand;
    using CModelDepthThousand::doEntrust;
    using CModelDepthThousand::doQuoter;
    using CModelDepthThousand::doTransaction;
    using CModelDepthThousand::getAsks;
    using CModelDepthThousand::getBids;
};

// The rows of one poll, "no update" when there was nothing to read.
inline std::string bookText(TC::CModelDepthThousand& model)
{
    const BookReading reading = readBook(model);
    return reading.updated ? bookText(reading.bids, reading.asks) : "no update";
}

class ThousandTest : public ::testing::Test, protected FollowedModel<Thousand> {};

} // namespace tests
