#pragma once

#include "utils/int64.h"

#include <string>
#include <vector>

namespace recording {
struct Event;
struct RecordedDay;
} // namespace recording

namespace tessi {

// Phases of the day, as snapshots show them in their tradeStatus.
inline constexpr int kClosingAuctionStatus = 18;
inline constexpr int kAfterHoursStatus = 22; // and above

// Whether a record stamped at `timetag` falls into a session of continuous trading: 09:30:00 to 11:30:00, both
// included, and 13:00:00 up to the closing auction at 14:57:00, or up to 15:00:00 on a day without one. Shanghai's
// phase of continuous trading goes on over lunch, and so do its snapshots.
bool isInSession(__int64 timetag, const std::string& market, bool hasClosingAuction);

// Whether a snapshot of the day is of a closing auction.
bool hasClosingAuction(const recording::RecordedDay& day);

// The orders and trades of the day, as they came.
std::vector<const recording::Event*> ticksOf(const recording::RecordedDay& day);

} // namespace tessi
