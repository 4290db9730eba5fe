#pragma once

#include "exchange/simulationoptions.h"

#include <functional>

namespace recording {
struct RecordedDay;
}

namespace exchange {

// Told of the simulated time of day: `doneMs` of `totalMs` have passed. Called about once a simulated minute, on
// the caller's thread, the last time with both equal.
using SimulationProgress = std::function<void(int doneMs, int totalMs)>;

// Simulates one instrument's trading day, with the streams of its class.
//
// An order flow sends orders and cancels to a matching engine; what the engine answers is published as the exchange
// does it, here a Shenzhen stock's:
//   - orders and trades share one sequence, which runs through the records in the order of the events, with gaps
//     for the other stocks of the channel. An order comes before the trades that it causes, and what its kind does
//     not let rest is cancelled right after them. In each trade the aggressor has the larger number.
//   - the trades of the call auctions are stamped 09:25:00.000 and 15:00:00.000; between 09:25 and 09:30 and over
//     lunch nothing happens; cancels are refused from 09:20 to 09:30 and from 14:57 on.
//   - a snapshot is due every 3 seconds, one at 09:00 before the day begins and one at 15:00:03 after it. It holds
//     all ticks of earlier stamps and stands right behind them; it is left out when nothing that it shows has
//     changed. An auction's last snapshot, stamped with the very moment at which the auction
//     ends, shows the state before its trades, and still the auction's tradeStatus; all others show the phase that
//     their stamp lies in.
//   - a thousand-level snapshot has 1,000 levels a side at most. Between the last close and a limit there are as many
//     prices as a tenth of it has ticks: a stock of 42.50 has some 300 levels a side, one of 500.00 up to 1,000, and
//     how often on both sides at once depends on where its price goes.
// What other classes do differently stands with them: in InstrumentClass, TickFeed, AfterHours and ClassFigures.
// Records never go back in time, across all streams.
//
// The same options give the same bytes on every machine. Throws std::invalid_argument for options out of range.
recording::RecordedDay simulateDay(const SimulationOptions& options, const SimulationProgress& progress = {});

} // namespace exchange
