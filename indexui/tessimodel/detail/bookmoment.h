#pragma once

#include "indexui/tessimodel/realtimeparam.h"
#include "quoter/quoteaux.h"

namespace TC::detail {

// The book's summary becomes part of what its moment showed.
inline void keepBook(STodayParamHistory& moment, const quoter::QuoteAux& aux)
{
    moment.bidAveragePrice = aux.bidAveragePrice;
    moment.totalBidVolume = aux.totalBidVolume;
    moment.askAveragePrice = aux.askAveragePrice;
    moment.totalAskVolume = aux.totalAskVolume;
}

} // namespace TC::detail
