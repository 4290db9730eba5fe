#pragma once

#include "tests/tessimodel/oracle/dice.h"
#include "tests/tessimodel/oracle/streams.h"

#include <algorithm>
#include <climits>

namespace tests::oracle {

// Orders of one price level and trades of them, at times with figures that no exchange sends.
class LevelRecords {
public:
    LevelRecords(Dice& randomness, int mostLots)
        : m_dice(randomness)
        , m_mostLots(mostLots)
    {}

    Record next(Record::Type type)
    {
        Record record;
        record.type = type;
        record.timetag = m_dice.oneIn(50) ? LLONG_MIN : m_dice.between(-10, 5000);
        record.volume = anyShares();
        m_seq += m_dice.between(0, 2);
        record.seq = m_dice.oneIn(60) ? m_dice.pick<__int64>({LLONG_MAX, 0, -3, 1LL << 33}) : m_seq;
        record.buySeq = m_dice.oneIn(3) ? m_dice.between(-1, m_seq + 2) : std::max(0, m_seq - m_dice.below(8));
        record.sellSeq = m_dice.oneIn(4) ? 0 : record.buySeq + m_dice.between(-1, 1);
        record.transKind = m_dice.oneIn(3) ? 3 : m_dice.below(3);
        return record;
    }

private:
    __int64 anyShares()
    {
        if (m_dice.oneIn(40))
            return m_dice.pick<__int64>({0, -1, -300, INT_MAX, 1LL << 32, (1LL << 32) + 100, LLONG_MAX, LLONG_MIN});
        return m_dice.between(1, m_mostLots) * m_dice.pick<__int64>({30, 50, 100});
    }

    Dice& m_dice;
    const int m_mostLots;
    int m_seq = 0;
};

} // namespace tests::oracle
