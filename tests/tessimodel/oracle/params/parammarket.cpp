#include "tests/tessimodel/oracle/params/parammarket.h"

#include "quoter/brovanquoteralldata.h"
#include "quoter/orderdata.h"
#include "quoter/quoteaux.h"
#include "quoter/quoterdepthdata.h"
#include "tests/tessimodel/oracle/wrapping.h"
#include "utils/timeutils.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>

namespace tests::oracle::params {

namespace {

constexpr int kBehindClose = 22;

struct Phase {
    int status;
    int hour;
    int minute;
    int shortest; // in snapshots
    int longest;
};

constexpr Phase kDay[] = {{11, 9, 10, 1, 2},  {12, 9, 16, 1, 4},  {13, 9, 30, 3, 14},
                          {14, 11, 30, 0, 2}, {13, 13, 0, 3, 14}, {18, 14, 57, 1, 5},
                          {15, 15, 1, 1, 3},  {22, 15, 5, 3, 10}, {23, 15, 31, 1, 4}};

} // namespace

ParamMarket::ParamMarket(Dice& randomness)
    : m_dice(randomness)
{}

void ParamMarket::open(int instrument)
{
    const auto& all = paramInstruments();
    m_stock = &all[instrument < 0 ? 0 : static_cast<std::size_t>(instrument)];
    m_style =
        m_dice.pick({Style::LevelOne, Style::LevelOne, Style::LevelTwo, Style::LevelTwo, Style::Broker, Style::Mixed});
    m_wild = m_dice.oneIn(3);
    m_hasSettlements = m_stock->doubleFields.contains(3002) || m_dice.oneIn(4);
    m_last = m_stock->lastClose > 0.01 && m_stock->lastClose < 1e6 ? m_stock->lastClose : 10.0;
    m_open = m_high = m_low = m_amount = 0;
    m_volume = 0;
    m_day.clear();
    enterPhase(m_dice.oneIn(2) ? 0 : static_cast<std::size_t>(m_dice.below(kPhases - 1)));
    if (m_phase > 2)
        m_volume = m_dice.between(1, 2000000);
}

void ParamMarket::enterPhase(std::size_t phase)
{
    m_phase = phase;
    const Phase& now = kDay[phase];
    m_left = m_dice.between(now.shortest, now.longest);
    m_time = utils::timeToMilliseconds(2024, 1, 2, now.hour, now.minute, 0);
    if (now.status == kBehindClose && !m_dice.oneIn(8)) {
        m_volume = 0;
        m_amount = 0;
    }
}

void ParamMarket::passTime()
{
    while (m_left <= 0 && m_phase + 1 < kPhases)
        enterPhase(m_phase + 1);
    --m_left;
    m_time += m_gap;
    m_gap = m_dice.oneIn(12) ? 0 : m_dice.between(1, 30) * 1000;
}

// A price that has no tick: as near to the border of a rule as it can be.
double ParamMarket::anyPrice()
{
    const double close = m_stock->lastClose;
    const double tick = m_stock->priceTick;
    if (m_dice.oneIn(12))
        return oddDouble();
    if (m_dice.oneIn(4))
        return m_dice.pick({close, close + 1e-5, close - 1e-5, close + 1.1e-5, close - 1.1e-5, m_last + 1e-5});
    return m_last + m_dice.between(-5, 5) * tick;
}

double ParamMarket::oddDouble()
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    return m_dice.pick({kNan,     kInfinity, -kInfinity, DBL_MAX, DBL_MAX, -DBL_MAX,  0.0,     0.0,
                        0.0,      -0.0,      1e-5,       -1e-5,   9e-6,    1.1e-5,    -1.1e-5, 1e-300,
                        100000.0, 99999.99,  1e20,       -10.0,   1e308,   12345678.9});
}

__int64 ParamMarket::oddVolume()
{
    return m_dice.pick<__int64>({0, 0, 0, -1, -500, 1, 99999, 100000, INT_MAX, 1LL << 31, 1LL << 32, (1LL << 32) + 5,
                                 LLONG_MAX, LLONG_MAX - 1, LLONG_MIN, LLONG_MIN + 1, 1LL << 53});
}

double ParamMarket::priceFigure(double value)
{
    return m_wild && m_dice.oneIn(15) ? oddDouble() : value;
}

// None, or one about the size below which it is none.
double ParamMarket::thinPrice()
{
    const double threshold = m_stock->zeroPriceThreshold;
    return m_dice.pick({0.0, 0.0, 0.0, threshold, -threshold, threshold * 0.8, threshold + 0.01, 9e-6});
}

void ParamMarket::moveVolume()
{
    const int what = m_dice.below(100);
    const __int64 step = m_dice.pick<__int64>({1, 2, 17, 100, 4321, 99999});
    if (what < 3)
        m_volume = plus(m_volume, -step);
    else if (what < 5)
        m_volume = oddVolume();
    else if (what < 65)
        m_volume = plus(m_volume, step);
    // A count that had been thrown far off comes back.
    if (std::abs(static_cast<double>(m_volume)) > 1e10 && m_dice.oneIn(3))
        m_volume = m_dice.between(0, 3000000);
    m_amount = static_cast<double>(m_volume) * 100 * m_last;
}

void ParamMarket::trade()
{
    const double tick = m_stock->priceTick;
    const int what = m_dice.below(20);
    if (what < 8) // tick by tick
        m_last += m_dice.pick({-3, -1, -1, 1, 1, 2}) * tick;
    else if (what < 12) // at the tenth of one
        m_last += m_dice.pick({0.1, -0.1, 0.099, -0.099, 0.101, 1e-5, 0.05}) * tick;
    else if (what == 12) // by less than the tolerance of a ratio
        m_last += m_dice.pick({5e-5, -5e-5});
    if (!(m_last > 0))
        m_last = 10.0;
    m_open = m_open == 0 ? m_last : m_open;
    m_high = m_high == 0 ? m_last : std::max(m_high, m_last);
    m_low = m_low == 0 ? m_last : std::min(m_low, m_last);
}

int ParamMarket::status()
{
    if (m_dice.oneIn(14))
        return m_dice.oneIn(10) ? m_dice.pick({-1, INT_MIN, INT_MAX, 31}) : m_dice.below(31);
    const bool isFuture = m_stock->doubleFields.contains(3002) && !m_stock->types.contains(277);
    return isFuture && !m_dice.oneIn(3) ? m_dice.pick({0, 1, 123456, 234567, 18}) : kDay[m_phase].status;
}

RecordPtr ParamMarket::next()
{
    passTime();
    moveVolume();
    trade();
    __int64 timetag = m_time;
    if (m_dice.oneIn(60))
        timetag = m_dice.pick<__int64>({0, -1, LLONG_MAX, LLONG_MIN, m_time - 5000});
    m_day.push_back(make(timetag, status()));
    return m_day.back();
}

RecordPtr ParamMarket::make(__int64 timetag, int status)
{
    const Style style = m_style != Style::Mixed
                            ? m_style
                            : m_dice.pick({Style::LevelOne, Style::LevelTwo, Style::LevelTwo, Style::Broker});
    if (style == Style::LevelTwo)
        return filled<quoter::QuoterDepthData>(timetag, status);
    if (style == Style::LevelOne)
        return filled<quoter::QuoterAllData>(timetag, status);
    auto record = filled<zolv::BrovanQuoterAllData>(timetag, status);
    record->upStopPrice = m_dice.pick({0.0, 100000.0, 12.0, 99999.999995, 99999.99998, DBL_MAX});
    record->downStopPrice = m_dice.pick({1e-5, 100000.000005, 8.0, 2e-5, -8.0});
    return record;
}

template <class Record>
std::shared_ptr<Record> ParamMarket::filled(__int64 timetag, int status)
{
    auto record = std::make_shared<Record>();
    const bool traded = !m_dice.oneIn(10);
    record->timetag = timetag;
    record->tradeStatus = status;
    record->volume = m_volume;
    record->amount = priceFigure(m_amount);
    record->lastPrice = priceFigure(traded ? m_last : 0);
    record->lastPriceAlt = priceFigure(traded ? m_last + m_stock->priceTick : 0);
    record->open = priceFigure(m_open);
    record->high = priceFigure(m_high);
    record->low = priceFigure(m_low);
    record->lastClose = priceFigure(m_dice.oneIn(20) ? 0 : m_stock->lastClose);
    record->lastSettlementPrice = priceFigure(m_hasSettlements ? m_stock->lastClose * 1.01 : 0);
    record->settlementPrice = priceFigure(m_hasSettlements && m_dice.oneIn(2) ? m_last : 0);
    record->iopv = priceFigure(m_dice.oneIn(4) ? m_dice.pick({0.0, DBL_MAX, 1e-5, 1.1e-5}) : m_last * 1.0001);
    record->bidPrice[0] = priceFigure(m_dice.oneIn(6) ? 0 : m_last - m_stock->priceTick);
    record->askPrice[0] = priceFigure(m_dice.oneIn(6) ? 0 : m_last + m_stock->priceTick);
    if (m_dice.oneIn(12)) // before the first trade
        for (double* price :
             {&record->lastPrice, &record->lastPriceAlt, record->bidPrice, record->askPrice, &record->lastClose})
            *price = thinPrice();
    return record;
}

RecordPtr ParamMarket::foreign()
{
    if (m_dice.oneIn(3))
        return nullptr;
    auto order = std::make_shared<quoter::OrderData>();
    order->timetag = m_time;
    order->price = m_last;
    return order;
}

RecordPtr ParamMarket::past()
{
    if (m_day.empty() || m_dice.oneIn(25))
        return foreign();
    const auto back = std::min<std::size_t>(m_day.size(), m_dice.oneIn(3) ? 40 : 8);
    const auto at = m_day.size() - 1 - static_cast<std::size_t>(m_dice.below(static_cast<int>(back)));
    if (!m_dice.oneIn(3))
        return m_day[at];
    const __int64 timetag = m_dice.oneIn(3) || !m_day[at] ? m_time + 500 : m_day[at]->timetag;
    return make(timetag, m_dice.oneIn(3) ? status() : m_dice.below(31));
}

AuxPtr ParamMarket::aux()
{
    auto aux = std::make_shared<quoter::QuoteAux>();
    aux->timetag = m_time + (m_dice.oneIn(3) ? 0 : m_gap);
    if (!m_day.empty() && m_dice.oneIn(2)) {
        const auto back = std::min<std::size_t>(m_day.size(), 6);
        aux->timetag =
            m_day[m_day.size() - 1 - static_cast<std::size_t>(m_dice.below(static_cast<int>(back)))]->timetag;
    }
    aux->bidAveragePrice = m_dice.oneIn(8) ? DBL_MAX : m_dice.oneIn(8) ? oddDouble() : m_last - 0.05;
    aux->askAveragePrice = m_dice.oneIn(8) ? DBL_MAX : m_dice.oneIn(8) ? oddDouble() : m_last + 0.05;
    aux->totalBidVolume = m_dice.oneIn(8) ? oddVolume() : m_dice.between(0, 9000000);
    aux->totalAskVolume = m_dice.oneIn(8) ? oddVolume() : m_dice.between(0, 9000000);
    return aux;
}

} // namespace tests::oracle::params
