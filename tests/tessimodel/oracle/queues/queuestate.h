#pragma once

#include "indexui/tessimodel/cmodeldepthqueue.h"
#include "tests/tessimodel/oracle/queues/naivequeuemodel.h"
#include "tests/tessimodel/oracle/realrecords.h"
#include "tests/tessimodel/oracle/statelines.h"

// The same lines of both sides.
namespace tests::oracle::queues {

struct Place {
    int where = 0; // a side of the book or of the slots, or what a panel holds
    int at = 0;    // price key or index
};

void writeState(Lines& out, const NaiveOrderQueue* queue, Place place);
void writeState(Lines& out, const TC::OrderQueue* queue, Place place);
void writeQuotes(Lines& out, const std::map<__int64, std::shared_ptr<NaiveQuote>>& quotes);
void writeQuotes(Lines& out, const TC::OrderQueue::Quotes& quotes);
void writeState(Lines& out, const NaiveQueueBook& book);
void writeState(Lines& out, const TC::QueueBook& book, const RealRecords& records);
void writeState(Lines& out, const NaiveQueueModel& model);
void writeState(Lines& out, const TC::CModelDepthQueue& model, const RealRecords& records);

} // namespace tests::oracle::queues
