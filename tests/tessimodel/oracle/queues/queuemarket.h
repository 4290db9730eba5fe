#pragma once

#include "tests/tessimodel/oracle/market.h"

namespace tests::oracle::queues {

// A market with order queues: their records are mostly of the time of a snapshot, or a snapshot is of theirs, and
// levels without a price are many.
class QueueMarket : public Market {
public:
    using Market::Market;

    RecordPtr trade();
    RecordPtr queue();
    RecordPtr levelTwo();

private:
    Record tradeOf(const Record& order, int transKind);
    RecordPtr lateFill(const Record& order);
    double emptyPrice();
    AllLevels queueAt(double best);
    void emptySome(TenLevels& levels);

    RecordPtr m_gone; // an order that was cancelled and will have a fill
    RecordPtr m_lastSnapshot;
    __int64 m_queueTime = 0;
    std::vector<RecordPtr> m_queues;
};

} // namespace tests::oracle::queues
