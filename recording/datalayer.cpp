#include "recording/datalayer.h"

#include "recording/delivery.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace recording {

namespace {

std::shared_ptr<Subscription> requested(const TC::CFormulaParam& param, Stream stream, const RecordedDay& day)
{
    auto subscription = std::make_shared<Subscription>();
    subscription->stream = stream;
    subscription->isOfTheDay =
        param.market.toStdString() == day.instrument.market && param.stockCode.toStdString() == day.instrument.code;
    subscription->beginTime = param.beginTime.time;
    subscription->endTime = param.endTime.time;
    subscription->staysOpen = param.endTime == quoter::TimeSeq::TIME_LASTED;
    return subscription;
}

std::shared_ptr<Subscription> subscriptionFor(const TC::CFormulaParam& param, Stream stream, const RecordedDay& day,
                                              BatchCallback callback)
{
    if (stream == Stream::Aux)
        throw std::invalid_argument("the stream aux has a subscription of its own");
    auto subscription = requested(param, stream, day);
    subscription->deliver = [call = std::move(callback)](int batchKind, const std::vector<Event>& events) {
        RecordBatch batch;
        batch.reserve(events.size());
        for (const Event& event : events)
            batch.push_back(event.record);
        call(batchKind, batch);
    };
    return subscription;
}

} // namespace

std::size_t HistoryPoint::positionIn(const RecordedDay& day) const
{
    if (m_kind == Kind::Arrival)
        return static_cast<std::size_t>(std::min<__int64>(m_value, static_cast<__int64>(day.events.size())));
    const auto isLater = [this](const Event& event) { return timetagOf(event) >= m_value; };
    return static_cast<std::size_t>(std::find_if(day.events.begin(), day.events.end(), isLater) - day.events.begin());
}

__int64 HistoryPoint::clamped(std::size_t position)
{
    constexpr auto kMost = std::numeric_limits<__int64>::max();
    return static_cast<__int64>(std::min<std::size_t>(position, kMost));
}

DataLayer::DataLayer(std::shared_ptr<const RecordedDay> day, DeliveryOptions options)
    : m_delivery(std::make_unique<Delivery>(std::move(day), std::move(options)))
{}

DataLayer::~DataLayer()
{
    m_delivery->stop();
}

int DataLayer::subscribe(const TC::CFormulaParam& param, Stream stream, BatchCallback callback, ShanghaiCancels cancels)
{
    auto subscription = subscriptionFor(param, stream, m_delivery->day(), std::move(callback));
    const bool areElsewhere = (cancels == ShanghaiCancels::InOrdersOnly && stream == Stream::Trades) ||
                              (cancels == ShanghaiCancels::InTradesOnly && stream == Stream::Orders);
    subscription->leavesOutCancels = areElsewhere && m_delivery->day().instrument.market == "SH";
    return m_delivery->add(std::move(subscription));
}

int DataLayer::subscribeWhole(const TC::CFormulaParam& param, Stream stream, BatchCallback callback)
{
    auto subscription = subscriptionFor(param, stream, m_delivery->day(), std::move(callback));
    subscription->takesHistoryWhole = true;
    return m_delivery->add(std::move(subscription));
}

int DataLayer::subscribeAux(const TC::CFormulaParam& param, AuxCallback callback)
{
    auto subscription = requested(param, Stream::Aux, m_delivery->day());
    subscription->deliver = [call = std::move(callback)](int batchKind, const std::vector<Event>& events) {
        AuxBatch batch;
        batch.reserve(events.size());
        for (const Event& event : events)
            batch.push_back(event.aux);
        call(batchKind, batch);
    };
    return m_delivery->add(std::move(subscription));
}

void DataLayer::unsubscribe(int subscription)
{
    m_delivery->remove(subscription);
}

void DataLayer::start()
{
    m_delivery->start();
}

void DataLayer::stop()
{
    m_delivery->stop();
}

void DataLayer::setSpeed(double speed)
{
    m_delivery->setSpeed(speed);
}

bool DataLayer::waitUntilDelivered()
{
    return m_delivery->waitUntilDelivered();
}

std::size_t DataLayer::delivered() const
{
    return m_delivery->position();
}

std::size_t DataLayer::total() const
{
    return m_delivery->day().events.size();
}

boost::shared_ptr<TC::MetaCacheDataWrapper> wrapBatch(const TC::CFormulaParam& param, const RecordBatch& records)
{
    auto batch = boost::make_shared<TC::MetaCacheDataWrapper>();
    batch->records = records;
    batch->market = param.market.toStdString();
    batch->stockCode = param.stockCode.toStdString();
    return batch;
}

} // namespace recording
