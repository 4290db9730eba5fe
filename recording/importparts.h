#pragma once

#include "quoter/quoterdepthdata.h"
#include "recording/recordedday.h"
#include "recording/sourcetable.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

// What the importers of both exchanges share.
namespace recording {

// The phases of a day as the snapshots' tradeStatus numbers them. 22 and above are the phases of after-hours
// trading; a stock without them ends the day at 15.
enum Phase : int {
    kHalted = 1,
    kBeforeOpen = 11,
    kOpeningAuction = 12,
    kContinuous = 13,
    kBreak = 14, // lunch, and from 09:25 to 09:30
    kClosed = 15,
    kVolatilityBreak = 16,
    kClosingAuction = 18,
    kIntradayAuction = 19
};

// A tick with its place in the exchange's sequence, and where it was read.
struct SourceTick {
    __int64 sequence = 0;
    Event event;
    const SourceTable* table = nullptr;
    std::size_t line = 0;
};

// Sorts by sequence. Throws ReadError when two ticks have the same.
void sortTicks(std::vector<SourceTick>& ticks);

// What an importer found, before it becomes a day.
struct ImportParts {
    std::string market;
    std::string code;
    int tradingDay = 0;
    double lastClose = 0;            // 0 when no snapshot tells it
    std::filesystem::path tradeFile; // empty when there is none
    bool hasFineTick = false;        // some price is no multiple of 0.01
    std::vector<Event> ticks;        // in the order of events
    std::vector<Event> images;       // snapshots and queues, in order at each time
    std::vector<Stream> streams;
    std::vector<std::string> notes; // what does not fit together across the files
};

// Adds the snapshot with its level-1 twin just before it and its book summary just behind it.
void addSnapshot(ImportParts& parts, const std::shared_ptr<quoter::QuoterDepthData>& snapshot,
                 const std::shared_ptr<quoter::QuoteAux>& aux);

// Puts ticks and images into one order and describes the instrument. An image comes behind all ticks whose time
// stamp is not above its own; which ticks it really holds, stamps do not say. `notes`, when given, receives the notes.
// Throws ReadError when the trades do not add up to the day volume of the last snapshot.
RecordedDay assemble(ImportParts&& parts, std::vector<std::string>* notes);

// Milliseconds since the epoch of a time of `tradingDay`. `clock` is HHMMSSmmm. Fails the column when it is no time.
__int64 stampFrom(const SourceTable& table, std::size_t column, __int64 clock, int tradingDay);

// HHMMSS of a time stamp.
int clockOf(__int64 timetag);

// The files of one layout, by kind.
enum class SourceKind {
    ShenzhenOrders,
    ShenzhenTrades,
    ShenzhenSnapshots,
    ShenzhenQueues,
    ShanghaiOrders,
    ShanghaiTrades,
    ShanghaiSnapshots
};
using SourceFiles = std::map<SourceKind, SourceTable>;

ImportParts importShenzhen(SourceFiles& files, int tradingDay);
ImportParts importShanghai(SourceFiles& files, int tradingDay);

} // namespace recording
