#pragma once

#include <QMutex>

#if defined(__SANITIZE_THREAD__)
#define TESSIMODEL_TSAN 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define TESSIMODEL_TSAN 1
#endif
#endif
#ifdef TESSIMODEL_TSAN
#include <sanitizer/tsan_interface.h>
#endif

namespace TC::detail {

// Holds a QMutex, as QMutexLocker does, and tells ThreadSanitizer so: Qt is not built with instrumentation, and its
// locks are not seen otherwise.
class QtLock {
public:
    explicit QtLock(QMutex& mutex)
        : m_mutex(mutex)
    {
        m_mutex.lock();
#ifdef TESSIMODEL_TSAN
        __tsan_acquire(&m_mutex);
#endif
    }

    ~QtLock()
    {
#ifdef TESSIMODEL_TSAN
        __tsan_release(&m_mutex);
#endif
        m_mutex.unlock();
    }

    QtLock(const QtLock&) = delete;
    QtLock& operator=(const QtLock&) = delete;

private:
    QMutex& m_mutex;
};

} // namespace TC::detail
