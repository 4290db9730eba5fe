#pragma once

#include "indexui/tessimodel/cmodeldepththousand.h"

#include <boost/make_shared.hpp>

#include <cfloat>
#include <cmath>

namespace tests {

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

    // `source` is what only the model of the thousand-level snapshots asks for: whether by the level-2 snapshot.
    template <class Model, class... Source>
    bool poll(Model& model, Source... source)
    {
        return updated = model.checkUpdate(flags, bids, asks, lastPrice, lastVolume, minPrice, maxPrice, maxAmount,
                                           source...);
    }
};

template <class Model, class... Source>
BookReading readBook(Model& model, Source... source)
{
    BookReading reading;
    reading.poll(model, source...);
    return reading;
}

inline boost::shared_ptr<TC::CDepthThousandModelManager> bookManager()
{
    return utils::CSingletonT<TC::CDepthThousandModelManager>::instance();
}

// A side with one row, by a tick of 0.01, as models keep it and leave it with the manager.
inline TC::EntrustRows rowsAt(double price, int hands)
{
    auto row = boost::make_shared<TC::EntrustData>();
    row->price = price;
    row->volume = hands;
    row->number = 1;
    return {{static_cast<int>(std::lround(price * 100)), row}};
}

} // namespace tests
