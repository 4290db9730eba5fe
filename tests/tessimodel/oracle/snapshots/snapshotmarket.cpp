#include "tests/tessimodel/oracle/snapshots/snapshotmarket.h"

#include "quoter/brovanquoteralldata.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "tests/support/oddvalues.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <iterator>

namespace tests::oracle::snapshots {

namespace {

constexpr int kBehindClose = 22;

struct Phase {
    int status;
    int shortest; // in snapshots
    int longest;
};

constexpr Phase kDay[] = {{11, 1, 2}, {12, 1, 3}, {13, 2, 9},  {14, 0, 2}, {13, 2, 9},
                          {18, 1, 3}, {15, 1, 3}, {22, 1, 10}, {23, 1, 5}, {19, 0, 3}};

} // namespace

SnapshotMarket::SnapshotMarket(Dice& randomness)
    : m_dice(randomness)
{}

void SnapshotMarket::open(const standin::InstrumentDescription& stock)
{
    m_style =
        m_dice.pick({Style::LevelOne, Style::LevelOne, Style::LevelTwo, Style::LevelTwo, Style::Broker, Style::Mixed});
    m_wild = m_dice.oneIn(4);
    m_tick = stock.priceTick > 0 ? stock.priceTick : 0.01;
    m_close = m_last = std::abs(stock.lastClose) > 1e-4 && std::abs(stock.lastClose) < 1e6 ? stock.lastClose : 10.0;
    m_phase = m_dice.oneIn(2) ? 0 : static_cast<std::size_t>(m_dice.below(static_cast<int>(std::size(kDay))));
    m_left = m_dice.between(kDay[m_phase].shortest, kDay[m_phase].longest);
    m_volume = m_phase > 2 || m_dice.oneIn(3) ? m_dice.between(0, 100000) : 0;
    m_day.clear();
}

bool SnapshotMarket::isOver() const
{
    return m_phase + 1 == std::size(kDay) && m_left <= 0;
}

void SnapshotMarket::passPhase()
{
    while (m_left <= 0 && m_phase + 1 < std::size(kDay)) {
        const Phase& now = kDay[++m_phase];
        m_left = m_dice.between(now.shortest, now.longest);
        if (now.status == kBehindClose && !m_dice.oneIn(4))
            m_volume = 0;
    }
    --m_left;
    m_time += 1000;
}

double SnapshotMarket::oddDouble()
{
    return m_dice.pick(
        {kNaN, kInfinity, -kInfinity, DBL_MAX, -DBL_MAX, 0.0, -0.0, 1e-5, -1e-5, 9e-6, 1.1e-5, 1e20, -10.0, 1e308});
}

__int64 SnapshotMarket::oddVolume()
{
    return m_dice.pick<__int64>({0, 0, -1, -500, 1, INT_MAX, INT_MIN, INT_MIN + 1LL, INT_MAX - 1LL, 1LL << 31,
                                 1LL << 32, (1LL << 32) + 5, (1LL << 33) - 7, LLONG_MAX, LLONG_MIN, LLONG_MIN + 1,
                                 1LL << 53});
}

__int64 SnapshotMarket::volume()
{
    return m_dice.oneIn(6) ? oddVolume() : plus(m_volume, m_dice.between(-200, 200));
}

int SnapshotMarket::status()
{
    if (m_dice.oneIn(10))
        return m_dice.oneIn(6) ? m_dice.pick({-1, INT_MIN, INT_MAX, 24}) : m_dice.between(9, 25);
    return kDay[m_phase].status;
}

void SnapshotMarket::moveVolume()
{
    const int what = m_dice.below(100);
    const __int64 step = m_dice.pick<__int64>({1, 2, 17, 100, 4321});
    if (what < 5)
        m_volume = minus(m_volume, step);
    else if (what < 8 && (m_wild || m_dice.oneIn(3)))
        m_volume = m_dice.oneIn(4) ? plus(m_volume, 1LL << 31) : oddVolume();
    else if (what < 75)
        m_volume = plus(m_volume, step);
    // A count that had been thrown far off comes back.
    if (std::abs(static_cast<double>(m_volume)) > 1e8 && m_dice.oneIn(3))
        m_volume = m_dice.between(0, 100000);
}

void SnapshotMarket::trade()
{
    const int what = m_dice.below(20);
    if (what < 8) // tick by tick
        m_last += m_dice.pick({-3, -1, -1, 1, 1, 2}) * m_tick;
    else if (what < 12) // at the tenth, and at the half of one
        m_last += m_dice.pick({0.1, -0.1, 0.099, 0.101, 0.5, -0.5, 0.5, 0.49, -0.51, 1.5}) * m_tick;
    else if (what == 12)
        m_last += m_dice.pick({5e-5, -5e-5, 1e-5, -1e-5, 9e-6, -9e-6, 1.1e-5});
    else if (what == 13) // a half tick, exactly
        m_last = m_dice.pick({1.0, 0.5, 1.5, 2.0}) * m_tick;
    else if (what == 14)
        m_last = m_close + m_dice.pick({0.0, 0.0, 9e-6, 2e-5, -2e-5});
    if (!std::isfinite(m_last) || std::abs(m_last) > 1e7 || m_dice.oneIn(40))
        m_last = m_close;
}

double SnapshotMarket::price()
{
    if (m_dice.oneIn(12))
        return oddDouble();
    return m_last + m_dice.pick({0.0, 0.0, 1.0, -1.0, 0.5, -0.5, 0.25, 2.0, -3.0, 0.1}) * m_tick;
}

double SnapshotMarket::figure(double value)
{
    return m_wild && m_dice.oneIn(15) ? oddDouble() : value;
}

double SnapshotMarket::lastPrice()
{
    if (m_dice.oneIn(8))
        return m_dice.pick({0.0, 0.0, -0.0, 1e-5, -1e-5, 9e-6, -9e-6, 1.1e-5, -1.1e-5, std::nextafter(1e-5, 1.0)});
    return figure(m_last);
}

double SnapshotMarket::lastClose()
{
    if (m_dice.oneIn(5))
        return m_dice.pick({0.0, m_tick, m_tick + 2e-5, -m_tick - 2e-5, m_tick + 9e-6, m_tick / 2, -2 * m_tick,
                            -m_close, kNaN, kInfinity, -kInfinity, DBL_MAX, -DBL_MAX});
    return m_dice.oneIn(4) ? m_last : m_close;
}

template <std::size_t Depth>
void SnapshotMarket::fillSide(double (&prices)[Depth], __int64 (&volumes)[Depth], double best, double step)
{
    double price = best;
    for (std::size_t i = 0; i < Depth; ++i) {
        prices[i] = figure(price);
        volumes[i] = m_dice.oneIn(30) ? oddVolume() : m_dice.between(0, 900);
        if (m_dice.oneIn(12)) // as near to an empty row, or to the tenth of a tick, as can be
            prices[i] = m_dice.pick({0.0, m_tick / 10, std::nextafter(m_tick / 10, 0.0), 5e-5, 2e-5, 1e-5, -m_tick,
                                     price + m_tick / 10, price - m_tick * 0.09, price + m_tick * 0.11});
        if (!m_dice.oneIn(15)) // else the same price once more
            price += m_dice.oneIn(8) ? 3 * step : step;
    }
    if (m_dice.oneIn(10)) { // a thin side
        for (std::size_t i = static_cast<std::size_t>(m_dice.below(static_cast<int>(Depth))); i < Depth; ++i)
            prices[i] = 0, volumes[i] = 0;
    }
}

template <class Record>
RecordPtr SnapshotMarket::filled()
{
    auto record = std::make_shared<Record>();
    record->timetag = m_time;
    record->tradeStatus = status();
    record->volume = m_volume;
    record->lastPrice = lastPrice();
    record->lastPriceAlt = m_dice.oneIn(2) ? lastPrice() : record->lastPrice + m_tick;
    record->lastClose = lastClose();
    const double best = std::round(m_last / m_tick) * m_tick;
    fillSide(record->askPrice, record->askVolume, best, m_tick);
    fillSide(record->bidPrice, record->bidVolume, best - m_tick, -m_tick);
    return record;
}

RecordPtr SnapshotMarket::make()
{
    const Style style =
        m_style != Style::Mixed ? m_style : m_dice.pick({Style::LevelOne, Style::LevelTwo, Style::Broker});
    if (style == Style::LevelTwo)
        return filled<quoter::QuoterDepthData>();
    return style == Style::LevelOne ? filled<quoter::QuoterAllData>() : filled<zolv::BrovanQuoterAllData>();
}

RecordPtr SnapshotMarket::next()
{
    passPhase();
    moveVolume();
    trade();
    m_day.push_back(make());
    return m_day.back();
}

RecordPtr SnapshotMarket::foreign()
{
    if (m_dice.oneIn(2))
        return nullptr;
    auto order = std::make_shared<quoter::OrderData>();
    order->timetag = m_time;
    order->price = m_last;
    return order;
}

RecordPtr SnapshotMarket::past()
{
    if (m_day.empty() || m_dice.oneIn(25))
        return foreign();
    const auto back = std::min<std::size_t>(m_day.size(), m_dice.oneIn(3) ? 40 : 6);
    return m_day[m_day.size() - 1 - static_cast<std::size_t>(m_dice.below(static_cast<int>(back)))];
}

Records SnapshotMarket::history(int longest)
{
    const auto count = std::min<std::size_t>(m_day.size(), static_cast<std::size_t>(m_dice.between(0, longest)));
    Records records(m_day.end() - static_cast<std::ptrdiff_t>(count), m_day.end());
    if (records.empty() || !m_dice.oneIn(5))
        return records;
    const auto at = static_cast<std::ptrdiff_t>(m_dice.below(static_cast<int>(records.size())));
    switch (m_dice.below(4)) {
    case 0:
        records.insert(records.begin() + at, foreign());
        break;
    case 1:
        records.insert(records.begin() + at, 1, make());
        records.insert(records.begin() + at, foreign());
        break;
    case 2:
        records.push_back(m_dice.oneIn(3) ? foreign() : records[static_cast<std::size_t>(at)]);
        break;
    default:
        std::swap(records.back(), records[static_cast<std::size_t>(at)]);
        break;
    }
    return records;
}

} // namespace tests::oracle::snapshots
