#pragma once

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/recursivelock.h"
#include "indexui/tessimodel/detail/sharesperhand.h"
#include "IndexUtils/instrumentdetails.h"

#include <boost/thread/lock_guard.hpp>

namespace TC::detail {

// Price tick, shares per hand and last close of a tick-level model from its instrument. The caller holds m_mutex.
// `sharesOf` is one of sharesperhand.h.
template <class Model, class SharesOf>
void takeStockParams(Model& model, const SharesOf& sharesOf)
{
    const InstrumentPtr& stock = model.m_stock;
    model.m_priceTick = stock ? getDetailPriceTick(stock) : kDefaultPriceTick;
    model.m_volumeUnit = stock ? sharesOf(*stock) : 1;
    model.m_lastClose = getDetailLastClose(stock);
}

// The same for the model's book, which has a copy of its own. The caller holds m_mutex.
template <class Model>
void shareWithBook(Model& model)
{
    const boost::lock_guard<RecursiveLock> lock(model.m_book.m_mutex);
    model.m_book.m_stock = model.m_stock;
    model.m_book.m_priceTick = model.m_priceTick;
    model.m_book.m_volumeUnit = model.m_volumeUnit;
}

} // namespace TC::detail
