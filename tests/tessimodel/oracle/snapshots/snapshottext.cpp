#include "quoter/brovanquoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "tests/tessimodel/oracle/snapshots/snapshotmarket.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tests::oracle::snapshots {

namespace {

template <class Record>
std::string figuresText(const char* what, const Record& r)
{
    return fmt::format("{} time {} status {} volume {} last {} alt {} close {} asks {} of {} bids {} of {}", what,
                       r.timetag, r.tradeStatus, r.volume, r.lastPrice, r.lastPriceAlt, r.lastClose,
                       fmt::join(r.askPrice, " "), fmt::join(r.askVolume, " "), fmt::join(r.bidPrice, " "),
                       fmt::join(r.bidVolume, " "));
}

} // namespace

std::string textOf(const RecordPtr& record)
{
    if (!record)
        return "null record";
    if (const auto broker = std::dynamic_pointer_cast<zolv::BrovanQuoterAllData>(record))
        return figuresText("broker's level 1", *broker);
    if (const auto all = std::dynamic_pointer_cast<quoter::QuoterAllData>(record))
        return figuresText("level 1", *all);
    if (const auto depth = std::dynamic_pointer_cast<quoter::QuoterDepthData>(record))
        return figuresText("level 2", *depth);
    return fmt::format("no snapshot, time {}", record->timetag);
}

std::string textOf(const Records& records)
{
    std::string out = fmt::format("{} records", records.size());
    for (const RecordPtr& record : records)
        out += "\n        " + textOf(record);
    return out;
}

} // namespace tests::oracle::snapshots
