#pragma once

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/sharesperhand.h"
#include "IndexUtils/instrumentdetails.h"

namespace TC::detail {

// Price tick, shares per hand and last close of a tick-level model from its instrument. The caller holds m_mutex.
template <class Model>
void takeStockParams(Model& model)
{
    const InstrumentPtr& stock = model.m_stock;
    model.m_priceTick = stock ? getDetailPriceTick(stock) : kDefaultPriceTick;
    model.m_volumeUnit = stock ? sharesPerHand(*stock) : 1;
    model.m_lastClose = getDetailLastClose(stock);
}

} // namespace TC::detail
