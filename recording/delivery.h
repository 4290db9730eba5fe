#pragma once

#include "recording/datalayer.h"
#include "recording/pace.h"
#include "recording/terminalview.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace recording {

// What one subscriber asked for, and how it is called.
struct Subscription {
    int id = 0;
    Stream stream = Stream::Orders;
    bool isOfTheDay = false; // else the request is for another instrument
    bool leavesOutCancels = false;
    bool takesHistoryWhole = false; // in one batch
    __int64 beginTime = 0;
    __int64 endTime = 0;
    bool staysOpen = false;
    std::function<void(int batchKind, const std::vector<Event>& events)> deliver;

    bool hasHistory = false; // its history has been delivered: live records follow
    bool isActive = true;

    bool takes(const Event& event) const;
};

// The thread behind a DataLayer.
//
// One mutex guards the subscriptions and the state; it is never held while a callback runs. Only the thread moves the
// position, so that a history and the live records behind it never overlap or leave a gap.
class DataLayer::Delivery {
public:
    Delivery(std::shared_ptr<const RecordedDay> day, DeliveryOptions options);

    int add(std::shared_ptr<Subscription> subscription);
    void remove(int id);
    void start();
    void stop();
    void setSpeed(double speed);
    bool waitUntilDelivered();

    const RecordedDay& day() const { return *m_day; }
    std::size_t position() const { return m_position; }

private:
    using Lock = std::unique_lock<std::mutex>;

    void run();
    void removeInactive();
    std::shared_ptr<Subscription> firstWithoutHistory() const;
    void deliverHistory(Lock& lock, const std::shared_ptr<Subscription>& subscription);
    bool waitForNext(Lock& lock);
    void waitForChange(Lock& lock);
    void pushNext(Lock& lock);
    void call(Lock& lock, const std::shared_ptr<Subscription>& subscription, int batchKind,
              const std::vector<Event>& events);
    void change();

    const std::shared_ptr<const RecordedDay> m_day;
    const DeliveryOptions m_options;
    TerminalView m_view; // of the delivery thread
    std::atomic<std::size_t> m_position{0};

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<std::shared_ptr<Subscription>> m_subscriptions; // in the order in which they were made
    Pace m_pace;
    unsigned m_changes = 0; // counts what the thread must look at before it goes on
    int m_lastId = 0;
    int m_callingId = 0; // the subscription whose callback runs
    bool m_started = false;
    bool m_stopped = false;
    bool m_atEnd = false; // nothing is left to deliver

    std::mutex m_joinMutex;
    std::thread m_thread;
    std::atomic<std::thread::id> m_threadId;
};

} // namespace recording
