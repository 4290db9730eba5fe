#pragma once

#include "quoter/levelthousanddata.h"
#include "recording/recordedday.h"
#include "tests/support/instruments.h"
#include "tests/support/records.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tests {

// A day of one stock on 2024-03-01, with the events in the order of the calls: HandmadeDay() << order(1).buy(10.00).
// Volumes are in shares, those of snapshots too.
class HandmadeDay {
public:
    explicit HandmadeDay(const std::string& market = "SZ", const std::string& code = "000001")
    {
        m_day.instrument = stock(market, code, {100003});
        m_day.tradingDay = 20240301;
        m_day.streams = {recording::Stream::Orders, recording::Stream::Trades, recording::Stream::Snapshots,
                         recording::Stream::Queues, recording::Stream::Thousand};
    }

    HandmadeDay& operator<<(const Order& record) { return add(recording::Stream::Orders, record); }
    HandmadeDay& operator<<(const Trade& record) { return add(recording::Stream::Trades, record); }
    HandmadeDay& operator<<(const std::shared_ptr<quoter::QuoterDepthData>& record)
    {
        return add(recording::Stream::Snapshots, record);
    }
    HandmadeDay& operator<<(const BestQueues& record) { return add(recording::Stream::Queues, record); }
    HandmadeDay& operator<<(const std::shared_ptr<quoter::LevelThousandData>& record)
    {
        return add(recording::Stream::Thousand, record);
    }

    const recording::RecordedDay& recorded() const { return m_day; }

private:
    HandmadeDay& add(recording::Stream stream, std::shared_ptr<quoter::QuoterBase> record)
    {
        m_day.events.push_back({stream, std::move(record), nullptr});
        return *this;
    }

    recording::RecordedDay m_day;
};

} // namespace tests
