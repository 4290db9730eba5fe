#pragma once

#include "quoter/levelthousanddata.h"
#include "tests/support/records.h"

#include <memory>
#include <string>
#include <vector>

namespace tests {

// A level of a thousand-level snapshot: price, volume in hands, orders.
struct ThousandLevel {
    double price;
    int volume = 1;
    int number = 1;
};

// A thousand-level snapshot: thousand("09:30:03").bids({{10.00, 5, 2}, {9.99, 8, 1}}).ask(10.02, 7), best first.
class ThousandRecord {
public:
    explicit ThousandRecord(__int64 timetag)
        : m_record(std::make_shared<quoter::LevelThousandData>())
    {
        m_record->timetag = timetag;
    }

    ThousandRecord& bids(const std::vector<ThousandLevel>& levels)
    {
        return set(m_record->bidPrices, m_record->bidVolumes, m_record->bidNumbers, levels);
    }
    ThousandRecord& asks(const std::vector<ThousandLevel>& levels)
    {
        return set(m_record->askPrices, m_record->askVolumes, m_record->askNumbers, levels);
    }
    ThousandRecord& bid(double price, int volume = 1) { return bids({{price, volume}}); }
    ThousandRecord& ask(double price, int volume = 1) { return asks({{price, volume}}); }

    operator std::shared_ptr<quoter::QuoterBase>() const { return m_record; }
    operator std::shared_ptr<quoter::LevelThousandData>() const { return m_record; }

private:
    ThousandRecord& set(std::vector<double>& prices, std::vector<int>& volumes, std::vector<int>& numbers,
                        const std::vector<ThousandLevel>& levels)
    {
        prices.clear();
        volumes.clear();
        numbers.clear();
        for (const ThousandLevel& level : levels) {
            prices.push_back(level.price);
            volumes.push_back(level.volume);
            numbers.push_back(level.number);
        }
        return *this;
    }

    std::shared_ptr<quoter::LevelThousandData> m_record;
};

inline ThousandRecord thousand(const std::string& clock = "09:30:00")
{
    return ThousandRecord(timeOf(clock));
}

inline ThousandRecord thousandAt(__int64 timetag)
{
    return ThousandRecord(timetag);
}

} // namespace tests
