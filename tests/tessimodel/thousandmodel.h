#pragma once

#include "indexui/tessimodel/cmodeldepththousand.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/bookfeed.h"
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

// What a panel gets of one poll. The figures hold what the panel started them with where nothing was written.
struct BookReading {
    bool updated = false;
    int flags = -1;
    TC::EntrustList bids;
    TC::EntrustList asks;
    double lastPrice = -1;
    int lastVolume = -1;
    double minPrice = DBL_MAX;
    double maxPrice = -DBL_MAX;
    double maxAmount = 0;

    bool poll(TC::CModelDepthThousand& model)
    {
        return updated = model.checkUpdate(flags, bids, asks, lastPrice, lastVolume, minPrice, maxPrice, maxAmount);
    }
};

inline BookReading readBook(TC::CModelDepthThousand& model)
{
    BookReading reading;
    reading.poll(model);
    return reading;
}

// The rows of one poll, "no update" when there was nothing to read.
inline std::string bookText(TC::CModelDepthThousand& model)
{
    const BookReading reading = readBook(model);
    return reading.updated ? bookText(reading.bids, reading.asks) : "no update";
}

inline boost::shared_ptr<TC::CDepthThousandModelManager> bookManager()
{
    return utils::CSingletonT<TC::CDepthThousandModelManager>::instance();
}

// A model that follows SZ 000001, and its feed.
class ThousandTest : public ::testing::Test {
protected:
    ThousandTest() { model.setStock(keyOf("SZ", "000001")); }

    BookTerminal terminal;
    Thousand model;
    BookFeed<Thousand> feed{terminal, model};
};

} // namespace tests
