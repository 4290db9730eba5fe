#pragma once

#include "tests/tessimodel/oracle/recordmarket.h"

#include <map>
#include <vector>

namespace tests::oracle {

// Makes the records of a small market: about 20 prices, orders that mostly rest on their own side, trades that mostly
// fill the oldest order of the best price. Roughly right on purpose: a share of the records is late, repeated, of an
// odd kind or wild, and what the market believes of its own book goes wrong with them.
class Market : public RecordMarket {
public:
    explicit Market(Dice& randomness)
        : RecordMarket(randomness, 1000000)
        , m_spread(randomness.oneIn(8) ? randomness.pick({7, 300, 4000}) : 1)
        , m_hasFarPrices(m_spread == 1 && randomness.oneIn(10))
    {}

    RecordPtr order();
    RecordPtr trade();
    RecordPtr snapshot();

    // Time goes on quickly, so that marks fade.
    void rest() { m_time += m_dice.between(2000, 4000); }

    // A price of the market, at times one off the tick or a wild one.
    double price();

    // Mostly one at which an order rests.
    double queuePrice();

protected:
    static constexpr int kPrices = 20;

    double priceAt(int level) const; // level below kPrices
    double wildPrice();

private:
    struct Open {
        __int64 seq;
        bool isBid;
        int level;
        __int64 left;
    };

    __int64 volume();
    __int64 tick();
    __int64 seqOfOrder();
    int seqOfTrade(bool isBid);
    const Open* oldestAtBest(bool isBid) const;
    void fillPair(Record& trade);
    void cancelOne(Record& trade);
    void tradeAhead(Record& trade);
    void take(__int64 seq, __int64 shares);
    __int64 wrongHands();
    TenLevels levels(bool isBid);

    const int m_spread;        // ticks from one price to the next
    const bool m_hasFarPrices; // the highest prices are some 65,000 ticks away
    __int64 m_seq = 0;
    __int64 m_dayVolume = 0; // hands
    int m_phase = 13;
    int m_mid = 10;
    std::vector<Open> m_open;           // oldest first
    std::map<__int64, bool> m_promised; // side of orders that traded before they came
};

} // namespace tests::oracle
