#pragma once

#include "indexui/tessimodel/detail/batch.h"

#include <boost/thread/locks.hpp>
#include <boost/thread/recursive_mutex.hpp>

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

} // namespace TC::detail
