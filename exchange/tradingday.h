#pragma once

#include "utils/int64.h"

#include <array>

// The clock of a trading day: a Shenzhen stock's, by which all instruments of the simulator trade. Times of day are
// milliseconds since midnight at UTC+8.
//
//     09:15        09:20        09:25    09:30       11:30   13:00       14:57          15:00
//       | opening call auction   | break | continuous | break | continuous | closing auction |
//       | orders,    | orders    |       | orders,    |       | orders,    | orders only     |
//       | cancels    | only      |       | cancels    |       | cancels    |                 |
//
// What comes behind the close depends on the instrument:
//
//     15:00    15:05                      15:30        15:00           15:10
//       | closed | fixed-price trading      | closed     | closed        | the settlement price is known
namespace exchange {

using DayTime = int;

constexpr DayTime clockTime(int hour, int minute, int second = 0)
{
    return ((hour * 60 + minute) * 60 + second) * 1000;
}

constexpr DayTime kPreOpenSnapshot = clockTime(9, 0);
constexpr DayTime kOpeningAuction = clockTime(9, 15);
constexpr DayTime kOpeningAuctionNoCancels = clockTime(9, 20);
constexpr DayTime kOpeningUncross = clockTime(9, 25);
constexpr DayTime kMorning = clockTime(9, 30);
constexpr DayTime kLunch = clockTime(11, 30);
constexpr DayTime kAfternoon = clockTime(13, 0);
constexpr DayTime kClosingAuction = clockTime(14, 57);
constexpr DayTime kClosingUncross = clockTime(15, 0);
constexpr DayTime kSnapshotStep = clockTime(0, 0, 3);
constexpr DayTime kAfterHours = clockTime(15, 5);
constexpr DayTime kAfterHoursEnd = clockTime(15, 30);
constexpr DayTime kSettlement = clockTime(15, 10);

// What comes behind the close of 15:00.
enum class AfterClose { None, AfterHours, Settlement };

// The values are those of a snapshot's tradeStatus.
enum class Phase {
    BeforeOpen = 11,
    OpeningAuction = 12,
    Continuous = 13,
    Break = 14, // between the opening auction and the morning, and over lunch
    Closed = 15,
    ClosingAuction = 18,
    AfterHours = 22,
    AfterHoursClosed = 23
};

constexpr bool isCallAuction(Phase phase)
{
    return phase == Phase::OpeningAuction || phase == Phase::ClosingAuction;
}

// The phase from `time` on: a phase holds its first millisecond and not its last.
constexpr Phase phaseAt(DayTime time, AfterClose afterClose = AfterClose::None)
{
    if (time < kOpeningAuction)
        return Phase::BeforeOpen;
    if (time < kOpeningUncross)
        return Phase::OpeningAuction;
    if (time < kMorning || (time >= kLunch && time < kAfternoon))
        return Phase::Break;
    if (time < kClosingAuction)
        return Phase::Continuous;
    if (time < kClosingUncross)
        return Phase::ClosingAuction;
    if (time < kAfterHours || afterClose != AfterClose::AfterHours)
        return Phase::Closed;
    return time < kAfterHoursEnd ? Phase::AfterHours : Phase::AfterHoursClosed;
}

// When the day's last snapshot is due.
constexpr DayTime lastSnapshotOf(AfterClose afterClose)
{
    switch (afterClose) {
    case AfterClose::None:
        break;
    case AfterClose::AfterHours:
        return kAfterHoursEnd;
    case AfterClose::Settlement:
        return kSettlement;
    }
    return kClosingUncross + kSnapshotStep;
}

constexpr bool ordersAllowed(DayTime time)
{
    return phaseAt(time) == Phase::Continuous || isCallAuction(phaseAt(time));
}

constexpr bool cancelsAllowed(DayTime time)
{
    return phaseAt(time) == Phase::Continuous || (time >= kOpeningAuction && time < kOpeningAuctionNoCancels);
}

// The moment that lies `delay` milliseconds after `time` on a clock that stands still while cancels are refused.
// From 14:57 on there is no such moment, and the result lies there too.
constexpr DayTime cancelTimeAfter(DayTime time, DayTime delay)
{
    struct Pause {
        DayTime from, to;
    };
    constexpr std::array kPauses{Pause{kOpeningAuctionNoCancels, kMorning}, Pause{kLunch, kAfternoon}};
    for (const Pause& pause : kPauses) {
        if (time < pause.from && delay >= pause.from - time) {
            delay -= pause.from - time;
            time = pause.to;
        } else if (time >= pause.from && time < pause.to) {
            time = pause.to;
        }
    }
    return delay >= kClosingAuction - time ? kClosingAuction : time + delay;
}

// Whether the number is a calendar date yyyymmdd from 19700102 to 20380118, so that its stamps are above 0 and its
// seconds fit 32 bits.
bool isTradingDay(int yyyymmdd);

// Midnight of a trading day at UTC+8, in milliseconds since the epoch. Throws std::invalid_argument for a number that
// isTradingDay() refuses.
__int64 midnightOf(int yyyymmdd);

} // namespace exchange
