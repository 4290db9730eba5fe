#pragma once

#include "ztservice/instrumentdetail.h"
#include "ztservice/stocktypecenter.h"

// The after-hours fixed-price phase, as snapshots show it in their tradeStatus.
namespace TC::detail {

inline constexpr int kStatusAfterHours = 22;
inline constexpr int kStatusAfterHoursClosed = 23;

// Whether the instrument has such a phase, by its types in its own market; the second is of Shenzhen's codes.
inline bool hasAfterHoursType(const ztservice::CInstrumentDetail& stock)
{
    constexpr int kTypeAfterHours = 277;
    return utils::CSingletonT<ztservice::StockTypeCenter>::instance()->isTypedStock(kTypeAfterHours, stock.market,
                                                                                    stock.code);
}

inline bool hasAfterHoursTypeSz(const ztservice::CInstrumentDetail& stock)
{
    constexpr int kTypeAfterHoursSz = 10006;
    return utils::CSingletonT<ztservice::StockTypeCenter>::instance()->isTypedStock(kTypeAfterHoursSz, stock.market,
                                                                                    stock.code);
}

inline bool hasAfterHoursPhase(const ztservice::CInstrumentDetail& stock)
{
    return hasAfterHoursType(stock) || hasAfterHoursTypeSz(stock);
}

// After the close, whether there is an after-hours phase or not.
inline bool isAfterHours(int tradeStatus)
{
    return tradeStatus >= kStatusAfterHours;
}

// In the after-hours phase proper.
inline bool isAfterHoursPhase(int tradeStatus)
{
    return tradeStatus == kStatusAfterHours || tradeStatus == kStatusAfterHoursClosed;
}

} // namespace TC::detail
