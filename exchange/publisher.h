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

struct InstrumentClass;

// Writes the market's instants as records of the snapshot streams that the class of the instrument has, in the order in
// which it is called: each call appends to `events`, which outlives the publisher. Prices in currency, volumes in
// shares or contracts, times in milliseconds since the epoch.
//
// Throws std::overflow_error when a number does not fit the record's field.
class Publisher {
public:
    // `midnight` of the trading day in milliseconds since the epoch; `previousSettlement` is 0 for classes without.
    Publisher(std::vector<recording::Event>& events, __int64 midnight, const InstrumentClass& instrument,
              Ticks lastClose, Ticks previousSettlement);

    // The instant in all snapshot streams, in this order: level 1, level 2, queues, thousand levels, counts, aux.
    // Nothing when the view is the one that was published last.
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
    bool has(recording::Stream stream) const;
    double price(Ticks ticks) const;

    std::vector<recording::Event>& m_events;
    __int64 m_midnight;
    const InstrumentClass& m_class;
    Ticks m_lastClose;
    Ticks m_previousSettlement;
    std::optional<MarketView> m_lastView;
};

} // namespace exchange
