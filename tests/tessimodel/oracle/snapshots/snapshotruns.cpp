#include "tests/tessimodel/oracle/snapshots/snapshotruns.h"

#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"

#include <climits>
#include <memory>

namespace tests::oracle::snapshots {

void expectEveryInput(const Counts& follows, const Counts& kinds, const Counts& statuses)
{
    for (int instrument = kUnknownInstrument; instrument < static_cast<int>(snapshotInstruments().size()); ++instrument)
        EXPECT_TRUE(follows.contains(instrument)) << snapshotNameOf(instrument);
    for (const int kind : {0, 1, 2, 3, 4, -1, 5, INT_MIN, INT_MAX})
        EXPECT_TRUE(kinds.contains(kind)) << "batches of kind " << kind;
    for (const int status : {-1, 9, 11, 12, 13, 14, 15, 18, 19, 20, 21, 22, 23, 24, 25, INT_MIN, INT_MAX})
        EXPECT_TRUE(statuses.contains(status)) << "snapshots of status " << status;
}

void countLastStatus(Counts& statuses, const Records& records)
{
    if (records.empty())
        return;
    if (const auto all = std::dynamic_pointer_cast<quoter::QuoterAllData>(records.back()))
        ++statuses[all->tradeStatus];
    else if (const auto depth = std::dynamic_pointer_cast<quoter::QuoterDepthData>(records.back()))
        ++statuses[depth->tradeStatus];
}

} // namespace tests::oracle::snapshots
