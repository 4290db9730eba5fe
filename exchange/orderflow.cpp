#include "exchange/orderflow.h"

#include "exchange/daycharacter.h"
#include "exchange/instrumentclass.h"
#include "exchange/orderbook.h"
#include "exchange/ordersize.h"
#include "exchange/simulationoptions.h"

#include <algorithm>

namespace exchange {

namespace {

constexpr int kValueUnit = 256;

// Shares of the orders, per mille.
constexpr int kFewerTakersOfWideSpread = 200;
constexpr int kDistant = 330; // of those that do not take
constexpr int kAuctionTakers = 330;
constexpr int kOddLots = 60; // of the sells
constexpr int kRoundSizes = 400;

// How strongly traders follow the value: per mille for each tick that it leads the market by, and at most.
constexpr int kSidePerTick = 20;
constexpr int kSideAtMost = 250;
constexpr int kTakersPerTick = 15;
constexpr int kTakersAtMost = 200;

int wholeRoot(__int64 number)
{
    __int64 root = 0;
    for (__int64 bit = 1LL << 30; bit > 0; bit >>= 1) {
        if ((root + bit) * (root + bit) <= number)
            root += bit;
    }
    return static_cast<int>(root);
}

// The value wanders in independent steps, so that after n of them it has moved by about the root of n.
int stepFor(const PriceBand& band, const DayCharacter& day)
{
    const __int64 move = static_cast<__int64>(band.lastClose) * kValueUnit * day.volatility / 1000;
    return wholeRoot(move * move / day.orders);
}

} // namespace

OrderFlow::OrderFlow(const SimulationOptions& options, const InstrumentClass& row, const DayCharacter& day,
                     const PriceBand& band, const Random& random)
    : m_band(band)
    , m_random(random)
    , m_lot(row.lot)
    , m_hasOddLots(row.hasOddLots)
    , m_medianHands(options.medianHands)
    , m_marketOrdersPerMille(options.marketOrdersPerMille)
    , m_takersPerMille(day.takers)
    , m_value(band.lastClose * kValueUnit)
    , m_valueStep(stepFor(band, day))
{
    // What happened since the last close.
    m_value += m_random.normal(band.lastClose * kValueUnit / 1000 * day.volatility / 3);
}

void OrderFlow::moveValue()
{
    m_value += m_random.normal(m_valueStep);
    m_value = std::clamp(m_value, m_band.low * kValueUnit, m_band.high * kValueUnit);
}

// Ticks that the value is above the middle of the market.
int OrderFlow::lead(const OrderBook& book) const
{
    const Ticks value = m_value / kValueUnit;
    const Ticks bid = book.best(Side::Buy).value_or(value);
    const Ticks ask = book.best(Side::Sell).value_or(value);
    return (m_value - (bid + ask) * (kValueUnit / 2)) / kValueUnit;
}

Order OrderFlow::draw(const OrderBook& book, Phase phase)
{
    moveValue();
    if (isCallAuction(phase))
        return drawAuctionOrder(m_random.chance(500) ? Side::Buy : Side::Sell);
    return drawContinuousOrder(drawSide(book), book);
}

Side OrderFlow::drawSide(const OrderBook& book)
{
    const int pull = std::clamp(lead(book) * kSidePerTick, -kSideAtMost, kSideAtMost);
    return m_random.chance(500 + pull) ? Side::Buy : Side::Sell;
}

Order OrderFlow::drawAuctionOrder(Side side)
{
    const Ticks value = m_value / kValueUnit;
    const Ticks reach = std::max(m_band.lastClose / 300, 2);
    Ticks price = value;
    if (m_random.chance(kAuctionTakers))
        price += keener(side) * m_random.exponential(reach);
    else if (m_random.chance(500))
        price -= keener(side) * m_random.exponential(reach * 2);
    else
        price = distantPrice(side, value);
    return {0, side, OrderKind::Limit, m_band.clamp(price), drawVolume(side)};
}

Order OrderFlow::drawContinuousOrder(Side side, const OrderBook& book)
{
    Order order{0, side, OrderKind::Limit, 0, drawVolume(side)};
    if (m_random.chance(m_marketOrdersPerMille)) {
        order.kind = drawMarketKind();
        return order;
    }

    const Touch touch{book.best(side), book.best(opposite(side))};
    const bool wide = touch.own && touch.other && std::abs(*touch.other - *touch.own) > 2;
    const int pull = std::clamp(lead(book) * keener(side) * kTakersPerTick, -kTakersAtMost, kTakersAtMost);
    const int takers = m_takersPerMille - (wide ? kFewerTakersOfWideSpread : 0);
    if (touch.other && m_random.chance(takers + pull))
        order.price = takingPrice(side, *touch.other);
    else
        order.price = joiningPrice(side, touch);
    return order;
}

OrderKind OrderFlow::drawMarketKind()
{
    const int draw = m_random.below(100);
    if (draw < 30)
        return OrderKind::FillAndCancel;
    if (draw < 55)
        return OrderKind::FiveLevelsFillAndCancel;
    if (draw < 65)
        return OrderKind::FillAllOrCancel;
    return draw < 75 ? OrderKind::OwnBest : OrderKind::OtherBest;
}

// Most takers name the other side's best price, some a few ticks more to be sure.
Ticks OrderFlow::takingPrice(Side side, Ticks other)
{
    const int draw = m_random.below(100);
    const Ticks more = draw < 75 ? 0 : draw < 93 ? 1 : 2 + m_random.below(4);
    return m_band.clamp(other + keener(side) * more);
}

Ticks OrderFlow::joiningPrice(Side side, const Touch& touch)
{
    const Ticks value = m_value / kValueUnit;
    const Ticks own = touch.own ? *touch.own : touch.other ? m_band.clamp(*touch.other - keener(side)) : value;
    if (m_random.chance(kDistant))
        return m_band.clamp(distantPrice(side, own));

    const Ticks gap = touch.own && touch.other ? std::abs(*touch.other - *touch.own) - 1 : 0;
    if (gap > 0 && m_random.chance(gap > 1 ? 700 : 250))
        return own + keener(side) * (1 + m_random.below(gap));
    return m_band.clamp(own - keener(side) * m_random.exponential(4));
}

// Behind the near prices: half within a percent or so, the rest anywhere up to the limit of the day.
Ticks OrderFlow::distantPrice(Side side, Ticks from)
{
    if (m_random.chance(600))
        return from - keener(side) * (1 + m_random.exponential(std::max(m_band.lastClose / 80, 2)));
    const Ticks limit = side == Side::Buy ? m_band.low : m_band.high;
    if (m_random.chance(120))
        return limit;
    return roundAway(side, from - keener(side) * m_random.below(std::abs(from - limit) + 1));
}

// People like round prices. Away from the market, so that no distant order crosses it.
Ticks OrderFlow::roundAway(Side side, Ticks price)
{
    const int draw = m_random.below(100);
    const Ticks step = draw < 30 ? 1 : draw < 60 ? 5 : draw < 80 ? 10 : draw < 92 ? 50 : 100;
    return side == Side::Buy ? price / step * step : (price + step - 1) / step * step;
}

Shares OrderFlow::drawVolume(Side side)
{
    Shares lots = drawLots(m_random, m_medianHands);
    if (m_random.chance(kRoundSizes)) {
        const Shares step = lots >= 100 ? 100 : lots >= 10 ? 10 : 1;
        lots = lots / step * step;
    }
    // Only what a holder has left over may be an odd lot, and only sold.
    const bool mayBeOdd = m_hasOddLots && side == Side::Sell;
    const Shares odd = mayBeOdd && m_random.chance(kOddLots) ? 1 + m_random.below(static_cast<int>(m_lot) - 1) : 0;
    return std::min(lots * m_lot + odd, kMostLots * m_lot);
}

__int64 OrderFlow::value(TickSize tick, int perUnit) const
{
    return static_cast<__int64>(m_value) * perUnit / (static_cast<__int64>(kValueUnit) * tick.perUnit);
}

} // namespace exchange
