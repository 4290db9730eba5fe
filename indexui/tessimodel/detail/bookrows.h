#pragma once

#include "indexui/tessimodel/cmodeldepththousand_queue.h"

// What panels get of a book: rows by ascending price.
namespace TC::detail {

// The running extremes over the rows of both sides. The caller of a model starts them; they only widen.
struct RowExtremes {
    double& minPrice;
    double& maxPrice;
    double& maxAmount; // hands times price

    void widen(const EntrustData& row);
};

// Where the snapshot's sides end, for the trim.
struct SnapshotLimits {
    double bidCeiling;
    double askFloor;
};

// A book that crosses loses the bids above the snapshot's best bid and the asks below its best ask. True when it
// crossed, whether rows went or not.
bool trimCrossed(EntrustList& bids, EntrustList& asks, const SnapshotLimits& limits);

} // namespace TC::detail
