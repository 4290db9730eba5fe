#pragma once

#include "quoter/quoteaux.h"
#include "quoter/quoterbase.h"
#include "standin/instrumentdescription.h"

#include <array>
#include <memory>
#include <vector>

namespace recording {

// The streams of a day. Each is a file of its own.
enum class Stream {
    Orders,    // quoter::OrderData
    Trades,    // quoter::TransactionData
    Quotes,    // quoter::QuoterAllData, level 1
    Snapshots, // quoter::QuoterDepthData, level 2
    Queues,    // quoter::LevelOrderData
    Thousand,  // quoter::LevelThousandData
    Counts,    // quoter::TransactionCount
    Aux        // quoter::QuoteAux
};

// In the order in which a day that was read lists them.
inline constexpr std::array<Stream, 8> kAllStreams{Stream::Orders, Stream::Trades,   Stream::Quotes, Stream::Snapshots,
                                                   Stream::Queues, Stream::Thousand, Stream::Counts, Stream::Aux};

// "orders", "trades", ...: the stream's name in files, messages and on command lines.
const char* streamName(Stream stream);

// One record of the day. All volumes are in shares, those of snapshots too.
struct Event {
    Stream stream = Stream::Orders;
    std::shared_ptr<quoter::QuoterBase> record; // null in stream Aux
    std::shared_ptr<quoter::QuoteAux> aux;      // null in all others
};

// Time stamp of the event's record in milliseconds since the epoch; 0 of an event without one.
__int64 timetagOf(const Event& event);

// One instrument's day as it arrived: the order of `events` is the order of arrival across all streams.
struct RecordedDay {
    standin::InstrumentDescription instrument;
    int tradingDay = 0;          // yyyymmdd
    std::vector<Stream> streams; // the streams that the day has, also those without an event
    std::vector<Event> events;

    // Instruments without a stream here that a terminal needs beside the day's own, such as the depositary receipt
    // that `instrument.gdrCode` names. Each market and code stands once, the day's own not at all.
    std::vector<standin::InstrumentDescription> related;
};

} // namespace recording
