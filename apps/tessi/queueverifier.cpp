#include "apps/tessi/queueverifier.h"

#include "apps/tessi/placement.h"
#include "apps/tessi/rowreadings.h"
#include "apps/tessi/session.h"
#include "apps/tessi/statetimes.h"
#include "apps/tessi/watchedmodel.h"
#include "quoter/levelorderdata.h"
#include "recording/recordedday.h"
#include "standin/terminal.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tessi {

namespace {

// The rows of one record, `first` to before `end`, the states that it may have by its place among the others, and the
// one that it is given.
struct Record {
    std::size_t first = 0;
    std::size_t end = 0;
    StateRange bounds;
    std::optional<std::size_t> state;
};

// The states of a row near its stamp.
struct RowStates {
    States matching;  // the model has the recorded queue
    States explained; // resting orders make up the difference
};

// The states of a record with a row of each side, or twice the same: in which both match; else those in which one does
// and the other is explained; else those in which either is by itself. A side that orders of market kinds spoil may by
// chance be that of another moment, which must not place the record as long as the good side has one.
States statesOf(const RowStates& one, const RowStates& other)
{
    const States choices[] = {
        common(one.matching, other.matching),
        joined(common(one.matching, other.explained), common(one.explained, other.matching)),
        common(one.explained, other.explained),
        joined(one.matching, other.matching),
    };
    for (const States& choice : choices) {
        if (!choice.empty())
            return choice;
    }
    return joined(one.explained, other.explained);
}

class QueueVerification {
public:
    explicit QueueVerification(const recording::RecordedDay& day)
        : m_day(day)
        , m_ticks(ticksOf(day))
    {}

    VerifiedQueues run()
    {
        collect();
        if (!m_rows.empty()) {
            walkStates();
            placeWhole();
            explainOthers();
            placeOthers();
            for (const Record& record : m_records)
                tell(record);
        }
        return std::move(m_result);
    }

private:
    void collect()
    {
        const bool closingAuction = hasClosingAuction(m_day);
        for (std::size_t i = 0; i < m_day.events.size(); ++i) {
            const recording::Event& event = m_day.events[i];
            if (event.stream != recording::Stream::Queues ||
                !isInSession(event.record->timetag, m_day.instrument.market, closingAuction))
                continue;
            const auto& record = static_cast<const quoter::LevelOrderData&>(*event.record);
            const std::size_t first = m_rows.size();
            addRow({i, record.timetag, false, record.askPrice, {record.askQueue.begin(), record.askQueue.end()}});
            addRow({i, record.timetag, true, record.bidPrice, {record.bidQueue.begin(), record.bidQueue.end()}});
            if (m_rows.size() > first)
                m_records.push_back({first, m_rows.size(), {0, m_ticks.size() + 1}, std::nullopt});
        }
        m_result.rows = m_rows.size();
    }

    void addRow(QueueRow row)
    {
        if (!row.sizes.empty())
            m_rows.push_back(std::move(row));
    }

    // A queue of an order or two comes again and again: without the stamps nearly any row would match somewhere.
    void walkStates()
    {
        standin::Terminal terminal;
        WatchedModel model(terminal, m_day);
        QueueStates states(model, m_day.instrument.priceTick, m_rows);
        StateTimes times;
        for (const recording::Event* tick : m_ticks) {
            states.apply(*tick);
            times.add(tick->record->timetag);
        }
        m_matching = states.statesOfRows();
        for (std::size_t row = 0; row < m_rows.size(); ++row) {
            m_near.push_back(times.around(m_rows[row].timetag));
            m_matching[row] = common(m_matching[row], {m_near[row]});
        }
    }

    // The records that some state of the model has whole. Each leaves to the others the states that push none of these
    // aside. The others take part, since with one side they too tell where a whole record cannot be.
    void placeWhole()
    {
        std::vector<States> choices;
        for (const Record& record : m_records)
            choices.push_back(statesOf({m_matching[record.first], {}}, {m_matching[record.end - 1], {}}));
        place(choices);
        std::size_t from = 0;
        for (Record& record : m_records) {
            const States whole = common(m_matching[record.first], m_matching[record.end - 1]);
            if (whole.empty())
                record.state.reset();
            for (const StateRange& range : whole) {
                if (record.state && isIn(range, *record.state))
                    record.bounds = {*record.state, range.to};
            }
            from = record.bounds.from = std::max(from, record.bounds.from);
        }
        std::size_t to = m_ticks.size() + 1;
        for (auto record = m_records.rbegin(); record != m_records.rend(); ++record)
            to = record->bounds.to = std::min(to, record->bounds.to);
    }

    void place(const std::vector<States>& choices)
    {
        const std::vector<std::optional<std::size_t>> placed = placeInOrder(choices);
        for (std::size_t i = 0; i < m_records.size(); ++i)
            m_records[i].state = placed[i];
    }

    void explainOthers()
    {
        m_open.resize(m_rows.size());
        for (const Record& record : m_records) {
            for (std::size_t row = record.first; row < record.end && !record.state; ++row) {
                m_open[row].row = &m_rows[row];
                for (const StateRange& within : common({record.bounds}, {m_near[row]}))
                    m_open[row].within = within;
            }
        }
        readOpenRows(m_day, m_ticks, m_open);
    }

    void placeOthers()
    {
        std::vector<States> choices;
        for (const Record& record : m_records) {
            choices.push_back(record.state ? States{record.bounds}
                                           : statesOf(within(record, record.first), within(record, record.end - 1)));
        }
        place(choices);
    }

    RowStates within(const Record& record, std::size_t row) const
    {
        RowStates states{common(m_matching[row], {record.bounds}), {}};
        for (const QueueReading& reading : m_open[row].explained)
            states.explained.push_back(reading.states);
        return states;
    }

    void tell(const Record& record)
    {
        for (std::size_t row = record.first; row < record.end; ++row) {
            if (record.state && isIn(m_matching[row], *record.state))
                ++m_result.matches;
            else
                addMiss(row, record.state);
        }
    }

    void addMiss(std::size_t row, std::optional<std::size_t> state)
    {
        const OpenRow& open = m_open[row];
        const QueueReading* const explained = state ? open.at(*state) : nullptr;
        const QueueReading& reading = explained != nullptr ? *explained : open.nearest;
        QueueMiss miss;
        static_cast<QueueRow&>(miss) = m_rows[row];
        miss.book = reading.book;
        miss.rightOrders = reading.right;
        if (explained != nullptr) {
            miss.explainedBy = explained->explainedBy;
            miss.fault = areMarketOrders(miss.explainedBy) ? QueueFault::MarketOrders : QueueFault::OtherOrders;
        } else if (!m_matching[row].empty()) {
            miss.fault = state ? QueueFault::OtherState : QueueFault::OutOfOrder;
        }
        m_result.misses.push_back(std::move(miss));
    }

    const recording::RecordedDay& m_day;
    std::vector<const recording::Event*> m_ticks;
    std::vector<QueueRow> m_rows;
    std::vector<Record> m_records;
    std::vector<StateRange> m_near; // by row, the states near its stamp
    std::vector<States> m_matching; // by row, of these
    std::vector<OpenRow> m_open;    // by row
    VerifiedQueues m_result;
};

} // namespace

const char* nameOf(QueueFault fault)
{
    switch (fault) {
    case QueueFault::MarketOrders:
        return "market orders";
    case QueueFault::OtherOrders:
        return "other orders";
    case QueueFault::OtherState:
        return "other state";
    case QueueFault::OutOfOrder:
        return "out of order";
    case QueueFault::Unknown:
        break;
    }
    return "unexplained";
}

std::size_t VerifiedQueues::count(QueueFault fault) const
{
    return static_cast<std::size_t>(
        std::count_if(misses.begin(), misses.end(), [fault](const QueueMiss& miss) { return miss.fault == fault; }));
}

VerifiedQueues verifyQueues(const recording::RecordedDay& day)
{
    return QueueVerification(day).run();
}

} // namespace tessi
