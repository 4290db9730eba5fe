#pragma once

// The after-hours fixed-price phase, as snapshots show it in their tradeStatus.
namespace TC::detail {

inline constexpr int kStatusAfterHours = 22;
inline constexpr int kStatusAfterHoursClosed = 23;

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
