#include "exchange/cancelplan.h"

#include "exchange/orderbook.h"

#include <algorithm>
#include <cstdlib>

namespace exchange {

namespace {

constexpr int kImpatient = 520;       // per mille of the orders that come to rest
constexpr int kImpatientFarOff = 250; // and of those far from the touch
constexpr int kLeftAtFront = 500;     // per mille of the visits to an order at the best price
constexpr Ticks kNear = 3;
constexpr int kNearLife = 150'000; // median milliseconds
constexpr int kLife = 900'000;
constexpr int kLifeSpread = 600; // log-normal, in 256ths of a doubling
constexpr DayTime kShortestLife = 200;
constexpr DayTime kStampStep = 10;

Ticks distanceFromTouch(const RestingOrder& order, const OrderBook& book)
{
    return std::abs(book.best(order.side).value_or(order.price) - order.price);
}

} // namespace

void CancelPlan::add(const RestingOrder& order, const OrderBook& book, DayTime now)
{
    const Ticks distance = distanceFromTouch(order, book);
    const bool farOff = distance > book.band().lastClose / 100;
    if (m_random.chance(farOff ? kImpatientFarOff : kImpatient))
        plan(order.seq, now, distance <= kNear ? kNearLife : kLife);
}

void CancelPlan::plan(__int64 seq, DayTime now, DayTime medianLife)
{
    const __int64 drawn = m_random.logNormal(medianLife, kLifeSpread);
    const auto life = static_cast<DayTime>(std::clamp<__int64>(drawn, kShortestLife, kClosingAuction));
    const DayTime visit = cancelTimeAfter(now, life / kStampStep * kStampStep);
    if (visit < kClosingAuction)
        m_visits.emplace(visit, seq);
}

std::optional<DayTime> CancelPlan::nextTime() const
{
    return m_visits.empty() ? std::nullopt : std::optional(m_visits.top().first);
}

std::optional<__int64> CancelPlan::take(const OrderBook& book)
{
    const auto [now, seq] = m_visits.top();
    m_visits.pop();
    const RestingOrder* order = book.find(seq);
    if (!order)
        return std::nullopt;
    if (distanceFromTouch(*order, book) == 0 && m_random.chance(kLeftAtFront)) {
        plan(seq, now, kNearLife);
        return std::nullopt;
    }
    return seq;
}

} // namespace exchange
