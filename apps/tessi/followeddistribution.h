#pragma once

#include "indexui/tessimodel/cmodeltransdistribution.h"
#include "net/rpcengine.h"
#include "recording/datalayer.h"

#include <condition_variable>
#include <mutex>

namespace tessi {

// The distribution of a replayed day's volume over prices, from level-2 snapshots or, where the day has none, from
// level 1. A strand of the panel's own plays the panel's thread. It hands over a batch when the model has done the one
// before: nothing else says that a live record comes behind the history, and one piece of it behind the other.
class FollowedDistribution {
public:
    explicit FollowedDistribution(const recording::RecordedDay& day);

    void subscribe(recording::DataLayer& data);

    // To be read when the day has been delivered and the strands are idle.
    const TC::CModelTransDistribution& model() const { return m_model; }
    double priceTick() const { return m_priceTick; }

private:
    void waitUntilReady();

    const recording::Stream m_stream;
    const double m_priceTick;
    boost::shared_ptr<boost::asio::io_service::strand> m_panelThread;
    std::mutex m_mutex;
    std::condition_variable m_redrawn;
    TC::CModelTransDistribution m_model;
};

} // namespace tessi
