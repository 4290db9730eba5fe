#pragma once

#include "Formula/metacachedatawrapper.h"
#include "quoter/quoterbase.h"
#include "ztservice/instrumentdetail.h"

#include <boost/shared_ptr.hpp>

#include <memory>
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

// The record as one of its types, null when it is none or is of another type.
template <class Record>
std::shared_ptr<Record> recordAs(const std::shared_ptr<quoter::QuoterBase>& record)
{
    return std::dynamic_pointer_cast<Record>(record);
}

// Whether there is a batch, and it was requested for the instrument. A batch that waited on a strand while its model
// moved on to another instrument must do no harm, and a model without an instrument takes nothing.
inline bool isFor(const BatchPtr& batch, const InstrumentPtr& stock)
{
    return batch && stock && batch->market == stock->market && batch->stockCode == stock->code;
}

} // namespace TC::detail
