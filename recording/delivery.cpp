#include "recording/delivery.h"

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace recording {

namespace {

constexpr int kHistoryBatch = 0;
constexpr int kFurtherHistoryBatch = 3;
constexpr int kLiveBatch = 1;

bool isCancel(const Event& event)
{
    if (const auto* trade = dynamic_cast<const quoter::TransactionData*>(event.record.get()))
        return trade->transKind == quoter::kTransKindCancel;
    const auto* order = dynamic_cast<const quoter::OrderData*>(event.record.get());
    return order && (order->bsFlag == quoter::kSideCancelBuy || order->bsFlag == quoter::kSideCancelSell);
}

} // namespace

bool Subscription::takes(const Event& event) const
{
    if (!isOfTheDay || event.stream != stream || !(event.record || event.aux))
        return false;
    const __int64 time = timetagOf(event);
    return beginTime <= time && time <= endTime && !(leavesOutCancels && isCancel(event));
}

DataLayer::Delivery::Delivery(std::shared_ptr<const RecordedDay> day, DeliveryOptions options)
    : m_day(std::move(day))
    , m_options(std::move(options))
    , m_view(*m_day, sharesPerHand(m_day->instrument))
    , m_pace(m_options.speed)
{}

int DataLayer::Delivery::add(std::shared_ptr<Subscription> subscription)
{
    const Lock lock(m_mutex);
    subscription->id = ++m_lastId;
    m_subscriptions.push_back(std::move(subscription));
    m_atEnd = false;
    change();
    return m_lastId;
}

void DataLayer::Delivery::remove(int id)
{
    Lock lock(m_mutex);
    for (const auto& subscription : m_subscriptions) {
        if (subscription->id == id)
            subscription->isActive = false;
    }
    change();
    if (std::this_thread::get_id() != m_threadId)
        m_changed.wait(lock, [&] { return m_callingId != id; });
}

void DataLayer::Delivery::start()
{
    const Lock joining(m_joinMutex);
    const Lock lock(m_mutex);
    if (m_started || m_stopped)
        throw std::logic_error("a data layer starts once");
    m_started = true;
    m_position = m_options.history.positionIn(*m_day);
    m_thread = std::thread([this] { run(); });
    m_threadId = m_thread.get_id();
}

void DataLayer::Delivery::stop()
{
    {
        const Lock lock(m_mutex);
        m_stopped = true;
        change();
    }
    if (std::this_thread::get_id() == m_threadId)
        return;
    const Lock joining(m_joinMutex);
    if (m_thread.joinable())
        m_thread.join();
}

void DataLayer::Delivery::setSpeed(double speed)
{
    const Lock lock(m_mutex);
    m_pace.setSpeed(speed);
    change();
}

bool DataLayer::Delivery::waitUntilDelivered()
{
    Lock lock(m_mutex);
    if (!m_started)
        return false;
    m_changed.wait(lock, [&] { return m_atEnd || m_stopped; });
    return m_atEnd;
}

void DataLayer::Delivery::run()
{
    Lock lock(m_mutex); // start() holds it until m_threadId is known
    while (!m_stopped) {
        removeInactive();
        if (const auto subscription = firstWithoutHistory()) {
            deliverHistory(lock, subscription);
        } else if (m_position == m_day->events.size()) {
            m_atEnd = true;
            m_changed.notify_all();
            waitForChange(lock);
        } else if (waitForNext(lock)) {
            pushNext(lock);
        }
    }
}

void DataLayer::Delivery::removeInactive()
{
    std::erase_if(m_subscriptions, [](const auto& subscription) { return !subscription->isActive; });
}

std::shared_ptr<Subscription> DataLayer::Delivery::firstWithoutHistory() const
{
    // In the order in which they were made, so those without are the last ones.
    if (m_subscriptions.empty() || m_subscriptions.back()->hasHistory)
        return nullptr;
    return *std::find_if(m_subscriptions.begin(), m_subscriptions.end(),
                         [](const auto& subscription) { return !subscription->hasHistory; });
}

void DataLayer::Delivery::deliverHistory(Lock& lock, const std::shared_ptr<Subscription>& subscription)
{
    const std::size_t pieceSize = std::max<std::size_t>(m_options.pieceSize, 1);
    int batchKind = kHistoryBatch;
    std::vector<Event> piece;
    const auto deliverPiece = [&] {
        call(lock, subscription, std::exchange(batchKind, kFurtherHistoryBatch), piece);
        piece.clear();
    };
    for (std::size_t i = 0; i < m_position && !m_stopped && subscription->isActive; ++i) {
        if (!subscription->takes(m_day->events[i]))
            continue;
        if (piece.size() == pieceSize && !subscription->takesHistoryWhole)
            deliverPiece();
        piece.push_back(m_view.event(i));
    }
    // An empty history is a batch too: the receiver empties.
    if (!piece.empty() || batchKind == kHistoryBatch)
        deliverPiece();
    subscription->hasHistory = true;
}

// True when the next event is due; false when something changed that must be looked at before.
bool DataLayer::Delivery::waitForNext(Lock& lock)
{
    if (m_pace.isPaused()) {
        waitForChange(lock);
        return false;
    }
    const Event& next = m_day->events[m_position];
    if (!m_pace.hasLimit() || !(next.record || next.aux))
        return true;
    const auto due = m_pace.due(timetagOf(next));
    return !m_changed.wait_until(lock, due, [this, seen = m_changes] { return m_changes != seen; });
}

void DataLayer::Delivery::waitForChange(Lock& lock)
{
    m_changed.wait(lock, [this, seen = m_changes] { return m_changes != seen; });
}

void DataLayer::Delivery::pushNext(Lock& lock)
{
    const std::size_t position = m_position;
    const Event& event = m_day->events[position];
    if (event.record || event.aux)
        m_pace.passed(timetagOf(event));
    // Subscriptions that a callback makes stand at the end and have no history yet: it will hold this event.
    for (std::size_t i = 0; i < m_subscriptions.size() && !m_stopped; ++i) {
        const std::shared_ptr<Subscription> subscription = m_subscriptions[i];
        if (!subscription->hasHistory || !subscription->staysOpen || !subscription->takes(event))
            continue;
        if (m_options.beforePush) {
            lock.unlock();
            m_options.beforePush();
            lock.lock();
        }
        call(lock, subscription, kLiveBatch, {m_view.event(position)});
    }
    m_position = position + 1;
}

void DataLayer::Delivery::call(Lock& lock, const std::shared_ptr<Subscription>& subscription, int batchKind,
                               const std::vector<Event>& events)
{
    if (m_stopped || !subscription->isActive)
        return;
    m_callingId = subscription->id;
    lock.unlock();
    subscription->deliver(batchKind, events);
    lock.lock();
    m_callingId = 0;
    m_changed.notify_all();
}

void DataLayer::Delivery::change()
{
    ++m_changes;
    m_changed.notify_all();
}

} // namespace recording
