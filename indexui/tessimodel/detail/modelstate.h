#pragma once

#include "indexui/tessimodel/detail/batch.h"

#include <boost/thread/locks.hpp>
#include <boost/thread/recursive_mutex.hpp>

#include <atomic>

// The lock of a tick-level model, what says how far it has got, and its instrument.
namespace TC::detail {

using ModelLock = boost::unique_lock<boost::recursive_mutex>;

// Bits of m_loadedHistory and m_dataReady.
inline constexpr int kTradesLoaded = 1;
inline constexpr int kOrdersLoaded = 2;
inline constexpr int kBothLoaded = 3;

// The model's instrument, null when it has none.
template <class Model>
InstrumentPtr stockOf(const Model& model)
{
    const ModelLock lock(model.m_mutex);
    return model.m_stock;
}

// The same if the batch is for it, else null.
template <class Model>
InstrumentPtr stockFor(const Model& model, const BatchPtr& batch)
{
    const ModelLock lock(model.m_mutex);
    return isFor(batch, model.m_stock) ? model.m_stock : nullptr;
}

// What a read has to tell, 0 for nothing. Takes `lock`, which is the model's and not taken yet, unless there was
// nothing from the start: a poll without news costs no lock. The flags are taken before the rows are read, in one step:
// what is raised meanwhile is for the next read, and of two panels one is the faster.
template <class Model>
int takeFlags(Model& model, ModelLock& lock)
{
    if (model.m_updateFlags.load(std::memory_order_relaxed) == 0)
        return 0;
    lock.lock();
    return model.m_updateFlags.exchange(0);
}

} // namespace TC::detail
