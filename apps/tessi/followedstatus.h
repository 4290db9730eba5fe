#pragma once

#include "indexui/tessimodel/cmodelentruststatus.h"
#include "net/rpcengine.h"
#include "recording/datalayer.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace tessi {

// The book summary of a replayed day, from snapshots of one level. The model belongs to one thread at a time: a strand
// of the panel's own plays the panel's thread, and whoever reads waits until it is idle.
class FollowedStatus {
public:
    FollowedStatus(const recording::RecordedDay& day, recording::Stream snapshots);

    void subscribe(recording::DataLayer& data);

    // Shows the book of the last snapshot up to `timetag` (milliseconds) with the changes since the one before it and
    // the volume of the latest tick by then. The time of that snapshot, or nothing when there is none. Only when the
    // day has been delivered.
    std::optional<__int64> showAt(__int64 timetag);

    TC::CModelEntrustStatus model;

private:
    __int64 tickVolumeAt(std::size_t snapshot) const;

    const recording::Stream m_stream;
    boost::shared_ptr<boost::asio::io_service::strand> m_panelThread;
    recording::RecordBatch m_snapshots; // as they came
};

} // namespace tessi
