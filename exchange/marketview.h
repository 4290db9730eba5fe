#pragma once

#include "exchange/daystatistics.h"
#include "exchange/order.h"
#include "exchange/tradingday.h"

#include <array>
#include <vector>

namespace exchange {

class OrderBook;

constexpr std::size_t kShownLevels = 10;
constexpr std::size_t kQueuedOrders = 50;
constexpr std::size_t kThousandLevels = 1000;

// What is shown of one side of the book. Best price first, oldest order first.
struct SideView {
    struct ShownLevel {
        Ticks price = 0;
        Shares volume = 0;
        friend bool operator==(const ShownLevel&, const ShownLevel&) = default;
    };
    struct FullLevel {
        Ticks price = 0;
        Shares volume = 0;
        std::size_t orders = 0;
        friend bool operator==(const FullLevel&, const FullLevel&) = default;
    };

    std::array<ShownLevel, kShownLevels> shown{}; // price 0 and volume 0 where there is no level
    Ticks queuePrice = 0;
    std::vector<Shares> queue;  // the first orders at queuePrice
    std::vector<FullLevel> all; // the first kThousandLevels
    Ticks averagePrice = 0;     // of all shares of the book, rounded to the tick, half a tick up
    Shares total = 0;

    friend bool operator==(const SideView&, const SideView&) = default;
};

// What snapshots of some classes of instruments say beside the trades and the book; 0 of all others.
struct ClassFigures {
    static constexpr int kIopvPerUnit = 10'000;

    __int64 openInterest = 0; // contracts
    Ticks settlement = 0;     // of the day, once it is known
    __int64 iopv = 0;         // in 10,000ths of the currency unit

    friend bool operator==(const ClassFigures&, const ClassFigures&) = default;
};

// All that the exchange shows of the market at one instant.
//
// In continuous trading, in the breaks and after the close it shows the book as it is. A running call auction
// keeps its book to itself: the first level of either side carries the indicative price and the matched volume, the
// second one the volume left over at price 0, the queues have the indicative price and no order, and all else of
// the book is empty or 0. While nothing matches, all is 0.
struct MarketView {
    MarketView() = default;
    MarketView(const OrderBook& book, Phase shownPhase, const DayStatistics& dayStatistics);

    Phase phase = Phase::BeforeOpen;
    DayStatistics statistics;
    ClassFigures figures;
    SideView bid;
    SideView ask;

    friend bool operator==(const MarketView&, const MarketView&) = default;
};

} // namespace exchange
