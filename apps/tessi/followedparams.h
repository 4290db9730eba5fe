#pragma once

#include "indexui/tessimodel/cmodeltodayparam.h"
#include "net/rpcengine.h"
#include "recording/datalayer.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace quoter {
struct TransactionData;
}

namespace tessi {

// The parameter table of a replayed day, fed as a terminal's panel feeds it. The model belongs to one thread at a time:
// a strand of the panel's own plays the panel's thread, and whoever reads waits until it is idle.
//
// Snapshots are the day's level-2 ones or, where it has none, level 1. Where the terminal's last trading day is a later
// one, the request is moved back to the day, which then is history from end to end. Two figures are the panel's own:
//
//     average price             the day's amount over its shares, of which the terminal's volume in hands lacks the
//                               odd lots. None of an index, whose amount is not in points, nor of futures and options,
//                               of which the terminal does not know what one contract is worth. After-hours trading at
//                               a fixed price does not count
//     inner and outer volume    the trades that the feed marks as a seller's or a buyer's, in hands. Left alone until
//                               a trade is marked. At a moment of the past they are those that make up the snapshot's
//                               volume: its time stamp does not say which trades it has seen
class FollowedParams {
public:
    // With `level2` the rows of the whole book are in the lists.
    FollowedParams(const recording::RecordedDay& day, bool level2);

    void subscribe(recording::DataLayer& data);

    // Shows the table as it stood at the last snapshot up to `timetag` (milliseconds) that the model has in its
    // history, which are those in which something was traded: of any other it could not tell the counts. The time of
    // that snapshot, or nothing, when there is none. Only when the day has been delivered.
    std::optional<__int64> showAt(__int64 timetag);

    TC::CModelTodayParam model;

private:
    using Snapshot = std::shared_ptr<quoter::QuoterBase>;

    // Shares, by the aggressor's side.
    struct Sides {
        __int64 inner = 0;
        __int64 outer = 0;
        void add(const quoter::TransactionData& trade);
    };

    // A snapshot as it came, and the day's volume at it.
    struct Seen {
        Snapshot snapshot;
        __int64 shares;
    };

    // The day's volume at a snapshot in the recorded day.
    struct DayVolume {
        __int64 timetag;
        __int64 shares;
    };

    static std::vector<DayVolume> volumesOf(const recording::RecordedDay& day, recording::Stream stream);
    TC::CFormulaParam requestOf(const recording::RecordedDay& day) const;
    __int64 nextSharesAt(__int64 timetag);
    void take(int batchKind, const recording::RecordBatch& snapshots);
    void takeTrades(int batchKind, const recording::RecordBatch& trades);
    bool hasAverage() const;
    const Seen* dayOf(const Seen& seen) const;
    void showAverage(const Seen& seen);
    Sides sidesWithin(__int64 shares) const;
    void show(const Sides& sides);

    const recording::Stream m_stream;
    const int m_sharesPerHand;
    const std::vector<DayVolume> m_volumes;
    TC::CFormulaParam m_request;
    boost::shared_ptr<boost::asio::io_service::strand> m_panelThread;
    std::size_t m_nextVolume = 0;                                   // of the snapshot that comes next
    std::vector<Seen> m_snapshots;                                  // as they came
    std::vector<std::shared_ptr<quoter::TransactionData>> m_trades; // likewise
    bool m_isMarked = false;                                        // some trade has an aggressor
    Sides m_sides;                                                  // of all trades
};

} // namespace tessi
