#pragma once

#include <boost/shared_ptr.hpp>

namespace utils {

// The one object of a class in the process.
//
// A service class is reached by CSingletonT<CStockManager>::instance(). Only declared here: the source file
// that owns T includes csingletont_impl.h and instantiates it, so that every library of the process sees
// the same object.
template <class T>
struct CSingletonT {
    // The object, made at the first call and never null. Safe from any thread, until the very end of the process:
    // an object that is not released is never destroyed.
    static boost::shared_ptr<T> instance();

    // Drops the object; the next instance() makes a new one, also one from within the old one's destructor. Callers
    // that still hold the old one keep it alive.
    static void release();
};

} // namespace utils
