#pragma once

#include "indexui/tessimodel/detail/stocktype.h"

// The phases of a trading day, as snapshots show them in their tradeStatus; of most interest is the after-hours
// fixed-price phase.
namespace TC::detail {

inline constexpr int kStatusOpeningAuction = 12;
inline constexpr int kStatusAuctionClosed = 15; // trading by auction has ended, the after-hours phase has not begun
inline constexpr int kStatusClosingAuction = 18;
inline constexpr int kStatusMiddayAuction = 19;
inline constexpr int kStatusAfterHours = 22;
inline constexpr int kStatusAfterHoursClosed = 23;

inline constexpr int kTypeAfterHours = 277;
inline constexpr int kTypeAfterHoursSz = 10006;

// Whether the instrument has such a phase, by its types in its own market; the second is of Shenzhen's codes.
inline bool hasAfterHoursType(const ztservice::CInstrumentDetail& stock)
{
    return isOfType(kTypeAfterHours, stock);
}

inline bool hasAfterHoursTypeSz(const ztservice::CInstrumentDetail& stock)
{
    return isOfType(kTypeAfterHoursSz, stock);
}

// The same for models that look a code up as Shenzhen's wherever the instrument is traded. That is wanted.
inline bool hasAfterHoursCodeSz(const ztservice::CInstrumentDetail& stock)
{
    return isOfType(kTypeAfterHoursSz, "SZ", stock.code);
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

// Whether the phase begins from one snapshot to the next. Volume and amount of the day then count anew.
inline bool entersAfterHours(int statusBefore, int statusNow)
{
    return !isAfterHours(statusBefore) && isAfterHours(statusNow);
}

// In a call auction, at the opening, in the course of the day or at the close.
inline bool isCallAuctionPhase(int tradeStatus)
{
    return tradeStatus == kStatusOpeningAuction || tradeStatus == kStatusClosingAuction ||
           tradeStatus == kStatusMiddayAuction;
}

// In the after-hours phase proper.
inline bool isAfterHoursPhase(int tradeStatus)
{
    return tradeStatus == kStatusAfterHours || tradeStatus == kStatusAfterHoursClosed;
}

} // namespace TC::detail
