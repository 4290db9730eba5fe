#pragma once

#include "tests/tessimodel/oracle/market.h"

#include <array>

namespace tests::oracle::thousand {

// A market with thousand-level records: two sides over the same prices that change a little from record to record, now
// and then crossed, unordered or torn.
class ThousandMarket : public Market {
public:
    explicit ThousandMarket(Dice& randomness);

    RecordPtr record();
    RecordPtr levelTwo();
    __int64 now() const { return m_time; }
    std::vector<__int64> queueVolumes();

private:
    struct Level {
        int volume = 0;
        int number = 0;
    };
    using Side = std::array<Level, kPrices>;

    void passTime();
    void change(Side& side);
    AllLevels listed(const Side& side, bool isBid);
    void tear(AllLevels& levels);
    int anyVolume();

    Side m_bids;
    Side m_asks;
    int m_middle = 10;
    std::vector<RecordPtr> m_records;
};

} // namespace tests::oracle::thousand
