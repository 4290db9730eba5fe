#pragma once

#include "indexui/tessimodel/cmodeldepththousand.h"
#include "indexui/tessimodel/cmodelquoterdepththousand.h"

#include <limits>

namespace tessi {

// One read of a book: what checkUpdate of its model gives. Rows by ascending price.
struct BookReading {
    explicit BookReading(TC::CModelDepthThousand& model)
        : isNew(model.checkUpdate(flags, bids, asks, lastPrice, lastVolume, minPrice, maxPrice, maxAmount))
    {}

    BookReading(TC::CModelQuoterDepthThousand& model, bool byQuoter)
        : isNew(model.checkUpdate(flags, bids, asks, lastPrice, lastVolume, minPrice, maxPrice, maxAmount, byQuoter))
    {}

    static constexpr double kNoPrice = std::numeric_limits<double>::max();

    int flags = 0;
    TC::EntrustList bids;
    TC::EntrustList asks;
    double lastPrice = kNoPrice;
    int lastVolume = 0; // hands
    double minPrice = kNoPrice;
    double maxPrice = 0;
    double maxAmount = 0;
    bool isNew; // false: nothing changed since the read before, and all the rest is empty
};

} // namespace tessi
