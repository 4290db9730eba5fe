#include "apps/tessi/followedbook.h"

#include "apps/tessi/dayrequest.h"
#include "recording/datalayer.h"
#include "utils/stockkey.h"

#include <type_traits>

namespace tessi {

namespace {

using recording::Stream;

template <class Model, class Batch>
struct Connection {
    Stream stream;
    void (Model::*callback)(int, int, const Batch&);
};

std::vector<Connection<TC::CModelDepthThousand, TC::CModelDepthThousand::Batch>>
connectionsOf(const TC::CModelDepthThousand&)
{
    using Model = TC::CModelDepthThousand;
    return {{Stream::Orders, &Model::entrustCallback},
            {Stream::Trades, &Model::transactionCallback},
            {Stream::Snapshots, &Model::quoterCallback}};
}

std::vector<Connection<TC::CModelDepthQueue, TC::CModelDepthQueue::Records>> connectionsOf(const TC::CModelDepthQueue&)
{
    using Model = TC::CModelDepthQueue;
    return {{Stream::Orders, &Model::entrustCallback},
            {Stream::Trades, &Model::transactionCallback},
            {Stream::Snapshots, &Model::quoterCallback},
            {Stream::Queues, &Model::queueCallback}};
}

std::vector<Connection<TC::CModelQuoterDepthThousand, TC::CModelQuoterDepthThousand::Batch>>
connectionsOf(const TC::CModelQuoterDepthThousand&)
{
    using Model = TC::CModelQuoterDepthThousand;
    return {{Stream::Snapshots, &Model::quoterCallback}, {Stream::Thousand, &Model::ThousandDataCallback}};
}

} // namespace

template <class Model>
Followed<Model>::Followed(const recording::RecordedDay& day)
    : m_request(wholeDay(day))
{
    model.setStock(QString::fromStdString(utils::zlStockKey(day.instrument.market, day.instrument.code)));
}

// The model posts what it gets to its strand, so that the data layer's thread may call it.
template <class Model>
void Followed<Model>::subscribe(recording::DataLayer& data)
{
    for (const auto& connection : connectionsOf(model)) {
        const auto callback = connection.callback;
        data.subscribe(m_request, connection.stream,
                       [this, callback](int batchKind, const recording::RecordBatch& records) {
                           if constexpr (std::is_same_v<Model, TC::CModelDepthQueue>)
                               (model.*callback)(0, batchKind, records);
                           else
                               (model.*callback)(0, batchKind, recording::wrapBatch(m_request, records));
                       });
    }
}

template class Followed<TC::CModelDepthThousand>;
template class Followed<TC::CModelDepthQueue>;
template class Followed<TC::CModelQuoterDepthThousand>;

} // namespace tessi
