#include "tests/exchange/daychecker.h"

#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"
#include "tests/exchange/plainreplay.h"
#include "tests/exchange/snapshottext.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using recording::Event;
using recording::RecordedDay;
using recording::Stream;

// Readable with up to five lines, whatever went wrong how often.
std::string head(const std::vector<std::string>& faults)
{
    std::string text;
    for (std::size_t i = 0; i < faults.size() && i < 5; ++i)
        text.append(faults[i]).append("\n");
    return text;
}

class DayChecker {
public:
    explicit DayChecker(const RecordedDay& day)
        : m_day(day)
        , m_replay(day)
    {}

    void run()
    {
        for (std::size_t i = 0; i < m_day.events.size(); ++i) {
            const Event& event = m_day.events[i];
            if (event.stream == Stream::Orders)
                m_replay.apply(record<quoter::OrderData>(i));
            else if (event.stream == Stream::Trades)
                m_replay.apply(record<quoter::TransactionData>(i));
            else if (event.stream == Stream::Quotes)
                checkInstant(i);
            else
                ASSERT_TRUE(i > 0 && i < m_endOfInstant) << "a snapshot record apart from its instant, at " << i;
        }
        m_replay.finish();
        EXPECT_EQ(head(m_replay.faults), "");
        EXPECT_EQ(m_phases, " 11 12 14 13 14 13 18 15");
    }

private:
    template <class Record>
    const Record& record(std::size_t i) const
    {
        return dynamic_cast<const Record&>(*m_day.events[i].record);
    }

    void checkInstant(std::size_t first)
    {
        constexpr std::array kOrder{Stream::Quotes,   Stream::Snapshots, Stream::Queues,
                                    Stream::Thousand, Stream::Counts,    Stream::Aux};
        m_endOfInstant = first + kOrder.size();
        ASSERT_LE(m_endOfInstant, m_day.events.size());
        const __int64 time = m_day.events[first].record->timetag;
        m_replay.settle(time);
        checkStamp(first, time);
        for (std::size_t i = 0; i < kOrder.size(); ++i) {
            const Event& event = m_day.events[first + i];
            ASSERT_EQ(event.stream, kOrder.at(i));
            ASSERT_EQ(event.aux ? event.aux->timetag : event.record->timetag, time);
        }

        const auto& quote = record<quoter::QuoterAllData>(first);
        if (quote.tradeStatus != m_status)
            m_phases.append(line(" ", quote.tradeStatus));
        m_status = quote.tradeStatus;
        ASSERT_EQ(quoteText(quote, m_replay.perUnit), m_replay.quoteText(5)) << "level 1 at " << first;
        ASSERT_EQ(quote.rawVolume, quote.volume);
        const std::string texts[] = {quoteText(record<quoter::QuoterDepthData>(first + 1), m_replay.perUnit),
                                     textOf(record<quoter::LevelOrderData>(first + 2), m_replay.perUnit),
                                     textOf(record<quoter::LevelThousandData>(first + 3), m_replay.perUnit),
                                     textOf(record<quoter::TransactionCount>(first + 4)),
                                     textOf(*m_day.events[first + 5].aux, m_replay.perUnit)};
        const std::string expected[] = {m_replay.quoteText(10), m_replay.queueText(), m_replay.thousandText(),
                                        m_replay.countsText(), m_replay.auxText()};
        std::string instant = std::to_string(quote.iopv);
        for (std::size_t i = 0; i < std::size(texts); ++i) {
            ASSERT_EQ(texts[i], expected[i]) << "event " << first + 1 + i;
            instant += texts[i];
        }
        EXPECT_NE(instant, m_lastInstant) << "nothing changed since the snapshot before, at " << first;
        m_lastInstant = instant;
    }

    // On the beat of three seconds, behind all earlier ticks and before all that are not earlier.
    void checkStamp(std::size_t first, __int64 time)
    {
        EXPECT_EQ(time % 3000, 0);
        const auto tick = [this](std::size_t i) {
            const Stream stream = m_day.events[i].stream;
            return stream == Stream::Orders || stream == Stream::Trades;
        };
        if (first > 0 && tick(first - 1)) {
            EXPECT_LT(m_day.events[first - 1].record->timetag, time);
        }
        if (m_endOfInstant < m_day.events.size() && tick(m_endOfInstant)) {
            EXPECT_GE(m_day.events[m_endOfInstant].record->timetag, time);
        }
    }

    const RecordedDay& m_day;
    PlainReplay m_replay;
    int m_status = 0;
    std::string m_phases; // each status as the day enters it
    std::size_t m_endOfInstant = 0;
    std::string m_lastInstant;
};

} // namespace

void checkDay(const RecordedDay& day)
{
    DayChecker(day).run();
}
