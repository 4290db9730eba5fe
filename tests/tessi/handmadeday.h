#pragma once

#include "quoter/levelthousanddata.h"
#include "quoter/quoteaux.h"
#include "quoter/transactioncount.h"
#include "recording/recordedday.h"
#include "tests/support/instruments.h"
#include "tests/support/records.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tests {

// A day of one stock on 2024-03-01, with the events in the order of the calls: HandmadeDay() << order(1).buy(10.00).
// It has the streams quotes, counts and aux only with an event of them, the others always.
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
    HandmadeDay& operator<<(const std::shared_ptr<quoter::QuoterAllData>& record)
    {
        return add(recording::Stream::Quotes, record);
    }
    HandmadeDay& operator<<(const std::shared_ptr<quoter::QuoteAux>& record)
    {
        m_day.events.push_back({listed(recording::Stream::Aux), nullptr, record});
        return *this;
    }
    HandmadeDay& operator<<(const std::shared_ptr<quoter::TransactionCount>& record)
    {
        return add(recording::Stream::Counts, record);
    }
    HandmadeDay& operator<<(const BestQueues& record) { return add(recording::Stream::Queues, record); }
    HandmadeDay& operator<<(const std::shared_ptr<quoter::LevelThousandData>& record)
    {
        return add(recording::Stream::Thousand, record);
    }

    standin::InstrumentDescription& instrument() { return m_day.instrument; }
    const recording::RecordedDay& recorded() const { return m_day; }

private:
    HandmadeDay& add(recording::Stream stream, std::shared_ptr<quoter::QuoterBase> record)
    {
        m_day.events.push_back({listed(stream), std::move(record), nullptr});
        return *this;
    }

    // The stream, which the day has from now on.
    recording::Stream listed(recording::Stream stream)
    {
        auto& streams = m_day.streams;
        if (std::find(streams.begin(), streams.end(), stream) == streams.end())
            streams.push_back(stream);
        return stream;
    }

    recording::RecordedDay m_day;
};

} // namespace tests
