#pragma once

#include "exchange/order.h"
#include "exchange/random.h"
#include "exchange/tradingday.h"

#include <optional>

namespace exchange {

class OrderBook;
struct DayCharacter;
struct InstrumentClass;
struct SimulationOptions;

// What the traders of the day send: draws one order after another, each in view of the book as it stands.
//
// Behind the orders stands a fundamental value that wanders slowly. While it is above the market, more buys than sells
// come and more of them take what is offered, and so the price follows it. A trader either takes the other side's
// best price, or joins the queues near the touch (or the gap between them, when there is one), or waits further
// away, or far off at a round price or at the day's limit. Sizes are log-normal in lots; a few sells carry an odd lot.
class OrderFlow {
public:
    OrderFlow(const SimulationOptions& options, const InstrumentClass& row, const DayCharacter& day,
              const PriceBand& band, const Random& random);

    // The next order, without its sequence number. In a call auction always a limit order.
    Order draw(const OrderBook& book, Phase phase);

    // The fundamental value in units of a currency, times `perUnit`, rounded down.
    __int64 value(TickSize tick, int perUnit) const;

private:
    struct Touch {
        std::optional<Ticks> own;
        std::optional<Ticks> other;
    };

    void moveValue();
    Side drawSide(const OrderBook& book);
    Order drawAuctionOrder(Side side);
    Order drawContinuousOrder(Side side, const OrderBook& book);
    OrderKind drawMarketKind();
    Ticks takingPrice(Side side, Ticks other);
    Ticks joiningPrice(Side side, const Touch& touch);
    Ticks distantPrice(Side side, Ticks from);
    Ticks roundAway(Side side, Ticks price);
    Shares drawVolume(Side side);
    int lead(const OrderBook& book) const;

    PriceBand m_band;
    Random m_random;
    Shares m_lot;
    bool m_hasOddLots;
    int m_medianHands;
    int m_marketOrdersPerMille;
    int m_takersPerMille;
    int m_value;     // in 256ths of a tick
    int m_valueStep; // its usual move from one order to the next
};

} // namespace exchange
