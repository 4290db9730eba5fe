#pragma once

#include "Formula/metacachedatawrapper.h"
#include "quoter/quoterbase.h"
#include "ztservice/instrumentdetail.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <memory>
#include <typeinfo>
#include <vector>

// What a batch of records is to a model.
namespace TC::detail {

using InstrumentPtr = std::shared_ptr<ztservice::CInstrumentDetail>;
using RecordList = std::vector<std::shared_ptr<quoter::QuoterBase>>;
using BatchPtr = boost::shared_ptr<MetaCacheDataWrapper>;

// The batchKind of a callback. Any other number is a live push, of which by contract only the last record counts: a
// feed pushes ticks one by one.
inline constexpr int kHistoryStart = 0; // the whole history so far: empties, then takes all
inline constexpr int kHistoryMore = 3;  // more history: takes all, empties nothing

inline bool isHistory(int batchKind)
{
    return batchKind == kHistoryStart || batchKind == kHistoryMore;
}

// The record as one of its types, null when it is none or is of another type. Nearly every record is of just the type
// that its stream carries, which is told at a fraction of what a cast through the hierarchy costs.
template <class Record>
Record* recordAs(quoter::QuoterBase* record)
{
    if (record && typeid(*record) == typeid(Record))
        return static_cast<Record*>(record);
    return dynamic_cast<Record*>(record);
}

// Inlined wherever a history walks its records: the call would cost as much as the test.
template <class Record>
[[gnu::always_inline]] inline std::shared_ptr<Record> recordAs(const std::shared_ptr<quoter::QuoterBase>& record)
{
    Record* const typed = recordAs<Record>(record.get());
    return typed ? std::shared_ptr<Record>(record, typed) : nullptr;
}

// The record that counts of a live push; null when there is none of the type.
template <class Record>
std::shared_ptr<Record> lastAs(const RecordList& records)
{
    return records.empty() ? nullptr : recordAs<Record>(records.back());
}

// Room for a quarter more than a history holds, so that lists and tables of a running day seldom grow: a big one that
// does is a long silence.
inline std::size_t withGrowth(std::size_t count)
{
    return count + count / 4;
}

// Whether a record that was taken up for one instrument is still of the model's own.
inline bool isSameInstrument(const InstrumentPtr& own, const InstrumentPtr& other)
{
    if (own == other)
        return own != nullptr;
    return own && other && own->market == other->market && own->code == other->code;
}

// Whether there is a batch, and it was requested for the instrument. A batch that waited on a strand while its model
// moved on to another instrument must do no harm, and a model without an instrument takes nothing.
inline bool isFor(const BatchPtr& batch, const InstrumentPtr& stock)
{
    return batch && stock && batch->market == stock->market && batch->stockCode == stock->code;
}

} // namespace TC::detail
