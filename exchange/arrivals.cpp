#include "exchange/arrivals.h"

#include "exchange/random.h"

#include <algorithm>
#include <array>

namespace exchange {

namespace {

constexpr DayTime kMinute = clockTime(0, 1);
constexpr DayTime kStampStep = 10;
constexpr int kFollowers = 300; // per mille
constexpr DayTime kFollowAfter = 60;
constexpr int kWaiting = 250; // per mille, in the first minute of a session
constexpr DayTime kWaitingRush = 1500;

// Orders of one minute, relative to other minutes; between two points the curve is straight, and a jump is two
// points of neighbouring minutes.
struct Point {
    DayTime minute;
    int weight;
};

constexpr std::array kOpeningAuctionCurve{
    Point{clockTime(9, 15), 900}, Point{clockTime(9, 16), 300}, Point{clockTime(9, 19), 150},
    Point{clockTime(9, 20), 40},  Point{clockTime(9, 24), 70},
};
constexpr std::array kMorningCurve{
    Point{clockTime(9, 30), 430}, Point{clockTime(9, 35), 250}, Point{clockTime(9, 45), 180},
    Point{clockTime(10, 0), 145}, Point{clockTime(10, 30), 88}, Point{clockTime(11, 0), 60},
    Point{clockTime(11, 29), 52},
};
constexpr std::array kAfternoonCurve{
    Point{clockTime(13, 0), 90},  Point{clockTime(13, 10), 62}, Point{clockTime(14, 0), 55},
    Point{clockTime(14, 30), 65}, Point{clockTime(14, 50), 85}, Point{clockTime(14, 56), 115},
};
constexpr std::array kClosingAuctionCurve{
    Point{clockTime(14, 57), 60},
    Point{clockTime(14, 58), 45},
    Point{clockTime(14, 59), 60},
};

struct Minute {
    DayTime from;
    __int64 weight; // from the day's first minute to the end of this one
    bool opensSession;
};

template <class Curve>
void appendSession(const Curve& curve, std::vector<Minute>& minutes)
{
    for (std::size_t i = 0; i + 1 < curve.size(); ++i) {
        const Point& from = curve[i];
        const Point& to = curve[i + 1];
        const int steps = (to.minute - from.minute) / kMinute;
        for (int step = 0; step < steps; ++step)
            minutes.push_back({from.minute + step * kMinute, from.weight + (to.weight - from.weight) * step / steps,
                               i == 0 && step == 0});
    }
    minutes.push_back({curve.back().minute, curve.back().weight, false});
}

std::vector<Minute> minutesOfDay()
{
    std::vector<Minute> minutes;
    appendSession(kOpeningAuctionCurve, minutes);
    appendSession(kMorningCurve, minutes);
    appendSession(kAfternoonCurve, minutes);
    appendSession(kClosingAuctionCurve, minutes);
    for (std::size_t i = 1; i < minutes.size(); ++i)
        minutes[i].weight += minutes[i - 1].weight;
    return minutes;
}

// Milliseconds into a minute; `previous` is that of the order drawn before in the same minute, below 0 for the first.
DayTime drawOffset(const Minute& minute, DayTime previous, Random& random)
{
    DayTime offset = 0;
    if (minute.opensSession && random.chance(kWaiting))
        offset = random.exponential(kWaitingRush);
    else if (previous >= 0 && random.chance(kFollowers))
        offset = previous + random.exponential(kFollowAfter);
    else
        offset = random.below(kMinute);
    return std::min(offset, kMinute - kStampStep) / kStampStep * kStampStep;
}

} // namespace

std::vector<DayTime> drawArrivals(int count, Random& random)
{
    const std::vector<Minute> minutes = minutesOfDay();
    std::vector<DayTime> times;
    times.reserve(static_cast<std::size_t>(count));
    for (const Minute& minute : minutes) {
        const auto first = times.size();
        DayTime previous = -1;
        for (auto due = static_cast<std::size_t>(count * minute.weight / minutes.back().weight); times.size() < due;) {
            previous = drawOffset(minute, previous, random);
            times.push_back(minute.from + previous);
        }
        std::sort(times.begin() + static_cast<std::ptrdiff_t>(first), times.end());
    }
    return times;
}

} // namespace exchange
