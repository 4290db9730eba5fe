#pragma once

#include "bench/levelfeed.h"
#include "bench/referencedeltas.h"
#include "indexui/tessimodel/cmodelquoterdepththousand.h"

#include <cstddef>

namespace bench {

// The model of the thousand-level snapshots with the records of a feed and a panel that keeps its lists from read to
// read, and what both are measured against: ReferenceDeltas, and rows that are only made.
class LevelRounds {
public:
    // Throws std::runtime_error unless the model and the reference come to the same changes by the whole feed, as many
    // as its options say, and all of them stand in the rows of the last record.
    explicit LevelRounds(const LevelOptions& options = {});

    // Empties model and reference. They take the first records, so that there is something to compare with, and the
    // model a level-2 snapshot of continuous trading.
    void begin();

    // The records that begin() has left, by the strand's worker and by the reference. How many these are.
    int takeRecords();
    int takeRecordsByReference();

    // Once all of the model's levels, and once as many rows without anything in them.
    void read();
    void makeRows();

    void clear() { m_model.clear(); }

private:
    // With its worker in the open.
    class Model : public TC::CModelQuoterDepthThousand {
    public:
        using CModelQuoterDepthThousand::doThousandData;
    };

    void check() const;

    LevelFeed m_feed;
    Model m_model;
    ReferenceDeltas m_reference;
    TC::EntrustList m_bids;
    TC::EntrustList m_asks;
    TC::EntrustList m_bareBids;
    TC::EntrustList m_bareAsks;
};

} // namespace bench
