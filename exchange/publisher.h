#pragma once

#include "exchange/marketview.h"
#include "exchange/order.h"
#include "exchange/tradingday.h"

#include <optional>
#include <vector>

namespace recording {
struct Event;
enum class Stream;
} // namespace recording

namespace exchange {

// Writes what happens on the exchange as records, in the order in which it is called: each call appends to `events`,
// which outlives the publisher. Prices in yuan, volumes in shares, times in milliseconds since the epoch.
//
// Throws std::overflow_error when a number does not fit the record's field.
class Publisher {
public:
    // `midnight` of the trading day in milliseconds since the epoch.
    Publisher(std::vector<recording::Event>& events, __int64 midnight, Ticks lastClose);

    // One order. Kinds without a price of their own carry price 0.
    void order(DayTime time, const Order& order);

    // One trade for each fill, marked with the aggressor's side.
    void trades(DayTime time, const std::vector<Fill>& fills);

    // One cancel in the trade stream: price 0, one sequence number, and the whole remainder.
    void cancel(DayTime time, Side side, __int64 seq, Shares remainder);

    // The instant in all six snapshot streams: level 1, level 2, queues, thousand levels, counts, aux. Nothing when the
    // view is the one that was published last.
    void snapshot(DayTime time, const MarketView& view);

private:
    template <class Record>
    Record& append(recording::Stream stream, DayTime time);

    template <class Snapshot>
    void appendQuote(recording::Stream stream, DayTime time, const MarketView& view);
    void appendQueues(DayTime time, const MarketView& view);
    void appendThousand(DayTime time, const MarketView& view);
    void appendCounts(DayTime time, const DayStatistics& statistics);
    void appendAux(DayTime time, const MarketView& view);

    std::vector<recording::Event>& m_events;
    __int64 m_midnight;
    Ticks m_lastClose;
    std::optional<MarketView> m_lastView;
};

} // namespace exchange
