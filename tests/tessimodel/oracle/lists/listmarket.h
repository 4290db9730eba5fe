#pragma once

#include "tests/tessimodel/oracle/lists/liststreams.h"
#include "tests/tessimodel/oracle/recordmarket.h"

#include <vector>

namespace tests::oracle::lists {

// Makes the records of a market as the lists see it: trades near one price in which a few orders keep meeting, and
// snapshots whose volume mostly adds up with them. A share of the records is late, repeated, off by a little or wild.
class ListMarket : public RecordMarket {
public:
    explicit ListMarket(Dice& randomness);

    // Hands and order cancels go by the instrument.
    void follow(int instrument);

    RecordPtr order();
    RecordPtr trade();
    RecordPtr snapshot();

    // A lull: over the next minute; or a few records of one of the times at which filters end.
    void rest();

    int second() const { return static_cast<int>(m_time / 1000); }

    // Mostly that of the trades.
    double nextPrice();

    // Of an order, at times of none.
    int anySeq();

    Filter filter();

private:
    double wildPrice();
    __int64 volume();
    __int64 tick();
    __int64 wildTime();
    __int64 seqOfOrder();
    void cancel(Record& trade);

    int m_unit = 100;
    bool m_cancelsAsOrders = false;
    __int64 m_seq = 0;
    __int64 m_oddTime = 0;
    int m_oddTicks = 0; // to come
    __int64 m_dayShares = 0;
    __int64 m_afterHoursFrom = 0; // shares, where the day's volume starts anew
    int m_phase = 13;
    int m_level = 0; // ticks from the first price
    int m_buySeq = 1;
    int m_sellSeq = 2;
    double m_lastPrice = 10.0;
};

} // namespace tests::oracle::lists
