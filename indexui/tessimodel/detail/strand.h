#pragma once

#include "net/rpcengine.h"

// The strands of the models.
namespace TC::detail {

using StrandPtr = boost::shared_ptr<boost::asio::io_service::strand>;

// The strand that runs the workers of all tick-level models, one at a time in posting order. Each model asks once
// and keeps it.
inline StrandPtr workerStrand()
{
    return utils::CSingletonT<net::RPCEngine>::instance()->getStrand("modulegroup");
}

// Queues `worker` for the batch; it never runs inline, so the data layer's thread is free at once.
//
// `owner` is what the task holds of the model: a shared pointer keeps the model alive until the task is done; with a
// plain pointer whoever destroys the model must first be sure that no task is pending. The batch, a pointer to a
// wrapper or a vector of pointers, is copied into the task once.
template <class Owner, class Model, class Batch>
void postWorker(boost::asio::io_service::strand& strand, const Owner& owner,
                void (Model::*worker)(int, int, const Batch&), int first, int batchKind, const Batch& batch)
{
    // Named anew, because a capture of a reference to const could only be copied where it is moved on.
    strand.post(
        [owner = owner, worker, first, batchKind, batch = batch] { ((*owner).*worker)(first, batchKind, batch); });
}

} // namespace TC::detail
