#pragma once

#include "utils/int64.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace quoter {
struct OrderData;
struct TransactionData;
} // namespace quoter

namespace bench {

// One event of a tick feed: one of the two is set.
struct Tick {
    std::shared_ptr<quoter::OrderData> order;
    std::shared_ptr<quoter::TransactionData> trade;
};

struct TickOptions {
    int events = 1'000'000;   // or a few more: the last order trades to its end. More than `levels` and `resting` need
    int levels = 1000;        // on each side when trading begins; the price limits are that many ticks away
    int resting = 20'000;     // orders of both sides together that the book keeps to
    int cancelPerMille = 350; // of the events after the opening
    int perDay = 1'000'000;   // orders and cancels that would make up a whole day
    int fills = 0;            // if any, they end the stream in place of `events`, again with a few more
    std::uint64_t seed = 1;
};

struct TickStream {
    std::vector<Tick> ticks; // in the order in which the exchange saw them
    std::size_t opening = 0; // so many orders at the front stand the book up; nothing trades among them
    std::size_t orders = 0;
    std::size_t trades = 0; // fills and cancels
    std::size_t fills = 0;
    int lowestKey = 0; // price limits in ticks
    int highestKey = 0;
};

inline constexpr double kPriceTick = 0.01;

// The ticks of one busy stock in the shape that measurements need and with nothing left to chance but a seed: limit
// orders, their fills and cancels as a Shenzhen feed has them. An aggressor appears as an order first and then
// trades with the oldest order at the best price; what is left of it rests.
//
// Activity is thickest at the touch; a tenth of the new orders and some of the cancels lie anywhere up to the limits,
// so that the book stays deep. Orders and trades share one growing sequence with gaps. A stream of fewer events is the
// beginning of one of more.
//
// Not a market simulator: no market orders, no auction, no snapshots.
TickStream makeTicks(const TickOptions& options);

} // namespace bench
