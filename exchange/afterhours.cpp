#include "exchange/afterhours.h"

#include "exchange/instrumentclass.h"
#include "exchange/ordersize.h"
#include "exchange/simulationoptions.h"

#include <algorithm>

namespace exchange {

namespace {

constexpr int kBeats = (kAfterHoursEnd - kAfterHours) / kSnapshotStep;
constexpr int kOneInSoMany = 50; // of the day's orders comes after hours
constexpr int kFewestOrders = 40;

} // namespace

AfterHours::AfterHours(const SimulationOptions& options, const InstrumentClass& row, const Random& random)
    : m_random(random)
    , m_lot(row.lot)
    , m_medianHands(options.medianHands)
    , m_perMille(std::min(std::max(options.ordersPerDay / kOneInSoMany, kFewestOrders) * 1000 / kBeats, 1000))
{}

void AfterHours::play(Ticks close)
{
    if (!m_random.chance(m_perMille))
        return;
    Shares& waiting = m_random.chance(500) ? m_buys : m_sells;
    waiting += drawLots(m_random, m_medianHands) * m_lot;
    const Shares matched = std::min(m_buys, m_sells);
    m_buys -= matched;
    m_sells -= matched;
    m_volume += matched;
    m_amountInTicks += close * matched;
}

DayStatistics AfterHours::shown(DayStatistics day) const
{
    day.volume = m_volume;
    day.amountInTicks = m_amountInTicks;
    return day;
}

} // namespace exchange
