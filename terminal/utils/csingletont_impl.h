#pragma once

#include "utils/csingletont.h"

#include <boost/make_shared.hpp>
#include <boost/thread/locks.hpp>
#include <boost/thread/shared_mutex.hpp>

// The body of CSingletonT, for the source file that owns T:
//
//     template struct utils::CSingletonT<CMyService>;

namespace utils {

namespace detail {

template <class T>
struct SingletonSlot {
    boost::shared_mutex mutex;
    boost::shared_ptr<T> instance;

    // Never destroyed: other objects may ask for T while the process takes its static data apart.
    static SingletonSlot& slot()
    {
        static SingletonSlot& only = *new SingletonSlot;
        return only;
    }
};

} // namespace detail

template <class T>
boost::shared_ptr<T> CSingletonT<T>::instance()
{
    auto& slot = detail::SingletonSlot<T>::slot();
    {
        boost::shared_lock<boost::shared_mutex> reading(slot.mutex);
        if (slot.instance)
            return slot.instance;
    }
    boost::unique_lock<boost::shared_mutex> writing(slot.mutex);
    if (!slot.instance)
        slot.instance = boost::make_shared<T>();
    return slot.instance;
}

template <class T>
void CSingletonT<T>::release()
{
    auto& slot = detail::SingletonSlot<T>::slot();
    boost::shared_ptr<T> last;
    {
        boost::unique_lock<boost::shared_mutex> writing(slot.mutex);
        last.swap(slot.instance);
    }
    // Destroyed here, with the mutex free: a destructor may ask for an instance itself.
}

} // namespace utils
