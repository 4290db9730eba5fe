#pragma once

#include "tests/tessimodel/oracle/dice.h"
#include "tests/tessimodel/oracle/streams.h"

#include <vector>

namespace tests::oracle {

// What every market of the streams has: a clock, and the records that it made.
class RecordMarket {
public:
    // A record that no list and no book takes.
    RecordPtr levelOne();

    // Everything so far, as a history has it.
    const std::vector<RecordPtr>& orders() const { return m_orders; }
    const std::vector<RecordPtr>& trades() const { return m_trades; }
    const std::vector<RecordPtr>& snapshots() const { return m_snapshots; }

protected:
    RecordMarket(Dice& randomness, __int64 time)
        : m_dice(randomness)
        , m_time(time)
    {}

    RecordPtr kept(std::vector<RecordPtr>& list, Record record);

    // One of the list once more.
    RecordPtr repeated(const std::vector<RecordPtr>& list);

    Dice& m_dice;
    __int64 m_time;
    std::vector<RecordPtr> m_orders;
    std::vector<RecordPtr> m_trades;
    std::vector<RecordPtr> m_snapshots;

private:
    int m_nextId = 1;
};

} // namespace tests::oracle
