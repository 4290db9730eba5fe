#include "tests/tessimodel/oracle/naiveinstruments.h"
#include "tests/tessimodel/oracle/queues/naivequeuemodel.h"

#include <cmath>

namespace tests::oracle::queues {

namespace {

bool isZero(double price)
{
    return std::fabs(price) <= 1e-5;
}

bool isContinuous(const Record& snapshot)
{
    const double bid = snapshot.bids.prices[0];
    const double ask = snapshot.asks.prices[0];
    // A price that cannot be compared does not differ.
    return !(isZero(bid) && isZero(ask)) && std::fabs(bid - ask) > 1e-5;
}

} // namespace

void NaiveQueueModel::doQuoter(const Records& batch)
{
    if (batch.empty() || stock < 0 || !isOfType(batch.back(), Record::Type::Snapshot))
        return;
    const RecordPtr& last = batch.back();
    if (quoter && last->timetag <= quoter->timetag) {
        ++m_counters.oldSnapshots;
        return;
    }
    continuous = isContinuous(*last);
    if (!continuous) {
        ++m_counters.auctions;
        return;
    }
    quoter = last;
    if (levelOrder && levelOrder->timetag == last->timetag)
        updateRaw();
}

void NaiveQueueModel::doQueue(const Records& batch)
{
    if (batch.empty() || stock < 0 || !isOfType(batch.back(), Record::Type::Queue))
        return;
    const RecordPtr& last = batch.back();
    if ((levelOrder && last->timetag <= levelOrder->timetag) || !continuous) {
        ++m_counters.refusedQueues;
        return;
    }
    levelOrder = last;
    if (quoter && quoter->timetag == last->timetag)
        updateRaw();
}

void NaiveQueueModel::updateRaw()
{
    ++m_counters.pairs;
    rawTimetag = quoter->timetag;
    for (std::size_t level = 0; level < asks.size(); ++level) {
        asks[level] = rowOf(false, level);
        bids[level] = rowOf(true, level);
    }
}

// Only a level without an ordinary price gets a row with content.
NaiveOrderQueuePtr NaiveQueueModel::rowOf(bool isBid, std::size_t level) const
{
    auto row = std::make_shared<NaiveOrderQueue>();
    const TenLevels& levels = isBid ? quoter->bids : quoter->asks;
    const AllLevels& queue = isBid ? levelOrder->allBids : levelOrder->allAsks;
    const double price = levels.prices[level];
    if (!isZero(price) && !isZero(price - DBL_MAX))
        return row;
    ++m_counters.filledRows;
    row->price = price;
    row->volume = levels.volumes[level];
    row->valid = true;
    row->isBid = isBid;
    if (std::fabs(price - queue.prices[0]) < priceTick) {
        row->assignQueue(queue.volumes);
        ++m_counters.assignedRows;
    }
    return row;
}

void NaiveQueueModel::getBids(List& list)
{
    if (!hasTicks())
        return;
    if (loadedHistory == 3 && book.lastTimetag >= rawTimetag) {
        ++m_counters.keptLists;
        return;
    }
    ++m_counters.emptiedLists;
    list.clear(); // and the rows are of length 0
}

bool NaiveQueueModel::checkUpdate(int& flags, List& list)
{
    if (updateFlags == 0)
        return false;
    getBids(list);
    flags = updateFlags;
    updateFlags = 0;
    return true;
}

} // namespace tests::oracle::queues
