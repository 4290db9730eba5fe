#include "apps/tessi/followedlists.h"

#include "Formula/formulaparam.h"
#include "recording/datalayer.h"
#include "recording/recordedday.h"
#include "utils/stockkey.h"

#include <boost/make_shared.hpp>

namespace tessi {

namespace {

using recording::ShanghaiCancels;
using recording::Stream;

template <class Model>
boost::shared_ptr<Model> following(const recording::RecordedDay& day)
{
    auto model = boost::make_shared<Model>();
    model->setStock(QString::fromStdString(utils::zlStockKey(day.instrument.market, day.instrument.code)));
    TC::SDepthFilterParam filter = wholeDayFilter();
    model->setFilterParam(filter);
    return model;
}

// The model posts what it gets to its strand, so that the data layer's thread may call it.
template <class Model, class Base>
void connect(recording::DataLayer& data, const boost::shared_ptr<Model>& model, Stream stream,
             void (Base::*callback)(int, int, const typename Base::Batch&),
             ShanghaiCancels cancels = ShanghaiCancels::InBothStreams)
{
    TC::CFormulaParam request;
    model->getParams(request);
    const auto deliver = [model, callback, request](int batchKind, const recording::RecordBatch& records) {
        ((*model).*callback)(0, batchKind, recording::wrapBatch(request, records));
    };
    data.subscribe(request, stream, deliver, cancels);
}

} // namespace

TC::SDepthFilterParam wholeDayFilter()
{
    TC::SDepthFilterParam filter;
    filter.startTime = 0;
    filter.endTime = (24 * 3600 - 1) * 1000; // rows know whole seconds
    return filter;
}

FollowedOrders::FollowedOrders(const recording::RecordedDay& day)
    : model(following<TC::CModelDepthEntrust>(day))
{}

void FollowedOrders::subscribe(recording::DataLayer& data)
{
    connect(data, model, Stream::Orders, &TC::CModelDepthEntrust::entrustCallback);
    connect(data, model, Stream::Trades, &TC::CModelDepthEntrust::transactionCallback, ShanghaiCancels::InOrdersOnly);
}

FollowedTrades::FollowedTrades(const recording::RecordedDay& day)
    : model(following<TC::CModelDepthHolographic>(day))
{}

void FollowedTrades::subscribe(recording::DataLayer& data)
{
    connect(data, model, Stream::Orders, &TC::CModelDepthTransaction::entrustCallback, ShanghaiCancels::InTradesOnly);
    connect(data, model, Stream::Trades, &TC::CModelDepthTransaction::transactionCallback);
    connect(data, model, Stream::Snapshots, &TC::CModelDepthTransaction::quoterCallback);
}

} // namespace tessi
