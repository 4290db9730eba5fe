#pragma once

#include "exchange/order.h"
#include "standin/instrumentdescription.h"

#include <vector>

namespace exchange {

struct InstrumentClass;
struct SimulationOptions;

// What the terminal is told about the instrument of a simulated day. The options are good ones, the class is theirs.

// Last close and limits. Contracts have their limits around the previous settlement price, all others around the last
// close.
PriceBand bandOf(const SimulationOptions& options, const InstrumentClass& row);

// The settlement price of the day before: near the last close, and not the same. For classes that settle.
Ticks previousSettlement(const SimulationOptions& options, const InstrumentClass& row);

standin::InstrumentDescription describe(const SimulationOptions& options, const InstrumentClass& row);

// The instruments on other markets that belong to it: the depositary receipt of a stock that has one. The receipt
// closed a few per cent above the stock.
std::vector<standin::InstrumentDescription> related(const SimulationOptions& options, const InstrumentClass& row);

} // namespace exchange
