#pragma once

#include "exchange/daystatistics.h"
#include "exchange/order.h"
#include "exchange/random.h"

namespace exchange {

struct InstrumentClass;
struct SimulationOptions;

// Fixed-price trading after the close. All orders have one price, the close, and meet in the order in which they come:
// so what is left of one side is all there is to know of the queue.
class AfterHours {
public:
    AfterHours(const SimulationOptions& options, const InstrumentClass& row, const Random& random);

    // What comes between two snapshots: mostly an order on busy days, none on quiet ones. It trades at `close`.
    void play(Ticks close);

    // The day's figures as they are shown in and after this phase: volume and amount are its own, counted from 0.
    DayStatistics shown(DayStatistics day) const;

private:
    Random m_random;
    Shares m_lot;
    int m_medianHands;
    int m_perMille; // how often an order comes
    Shares m_buys = 0;
    Shares m_sells = 0; // what waits; one of the two is 0
    Shares m_volume = 0;
    __int64 m_amountInTicks = 0;
};

} // namespace exchange
