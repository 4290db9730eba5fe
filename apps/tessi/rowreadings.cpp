#include "apps/tessi/rowreadings.h"

#include "apps/tessi/explanation.h"
#include "apps/tessi/queueexplanation.h"
#include "apps/tessi/watchedmodel.h"
#include "recording/recordedday.h"
#include "standin/terminal.h"

#include <algorithm>
#include <map>
#include <utility>

namespace tessi {

namespace {

// An order of a market kind may be anywhere on its side.
bool mayChange(const QueuePlace& changed, const QueuePlace& place)
{
    return changed.isBid == place.isBid && (!changed.key || changed.key == place.key);
}

class OpenRowWalk {
public:
    OpenRowWalk(const recording::RecordedDay& day, std::vector<OpenRow>& rows)
        : m_model(m_terminal, day)
        , m_ledger(day.instrument.priceTick)
        , m_changes(day.instrument.priceTick)
    {
        for (OpenRow& row : rows) {
            if (row.within.from < row.within.to)
                m_due.emplace(row.within.from, &row);
        }
    }

    void run(const std::vector<const recording::Event*>& ticks)
    {
        open(0);
        for (std::size_t state = 1; state <= ticks.size(); ++state) {
            const recording::Event& tick = *ticks[state - 1];
            m_model.push(tick);
            m_ledger.apply(tick);
            for (const QueuePlace& changed : m_changes.by(tick))
                readAgain(changed, state);
            open(state);
        }
    }

private:
    void open(std::size_t state)
    {
        for (auto [next, end] = m_due.equal_range(state); next != end; ++next) {
            OpenRow& row = *next->second;
            const QueuePlace place = m_changes.at(row.row->isBid, row.row->price);
            read(row, state, candidatesAt(place, row.row->price));
            m_open[place].push_back(&row);
        }
    }

    void readAgain(const QueuePlace& changed, std::size_t state)
    {
        for (auto& [place, rows] : m_open) {
            if (!mayChange(changed, place))
                continue;
            std::erase_if(rows, [state](const OpenRow* row) { return row->within.to <= state; });
            if (rows.empty())
                continue;
            const QueueCandidates candidates = candidatesAt(place, rows.front()->row->price);
            for (OpenRow* row : rows)
                read(*row, state, candidates);
        }
    }

    QueueCandidates candidatesAt(const QueuePlace& place, double price)
    {
        return {firstOrders(m_model.model(), place.isBid, price),
                unknownTo(m_model.book(), place.isBid, price, *place.key, m_ledger)};
    }

    static void read(OpenRow& open, std::size_t state, const QueueCandidates& candidates)
    {
        const QueueRow& row = *open.row;
        QueueReading reading;
        reading.states = {state, open.within.to};
        reading.book = candidates.bookSizes();
        const auto differing =
            std::mismatch(reading.book.begin(), reading.book.end(), row.sizes.begin(), row.sizes.end());
        reading.right = static_cast<std::size_t>(differing.first - reading.book.begin());
        reading.explainedBy = candidates.explain(row.sizes);
        // The price that an order of a market kind found is told by no record but this one.
        for (RestingOrder& order : reading.explainedBy)
            order.price = row.price;

        if (open.nearest.book.empty() || reading.right > open.nearest.right)
            open.nearest = reading;
        if (!open.explained.empty())
            open.explained.back().states.to = std::min(open.explained.back().states.to, state);
        if (!reading.explainedBy.empty())
            open.explained.push_back(std::move(reading));
    }

    standin::Terminal m_terminal;
    WatchedModel m_model;
    OrderLedger m_ledger;
    ChangedPlaces m_changes;
    std::multimap<std::size_t, OpenRow*> m_due; // by their first state
    std::map<QueuePlace, std::vector<OpenRow*>> m_open;
};

} // namespace

const QueueReading* OpenRow::at(std::size_t state) const
{
    const auto reading = std::find_if(explained.begin(), explained.end(),
                                      [state](const QueueReading& r) { return isIn(r.states, state); });
    return reading == explained.end() ? nullptr : &*reading;
}

void readOpenRows(const recording::RecordedDay& day, const std::vector<const recording::Event*>& ticks,
                  std::vector<OpenRow>& rows)
{
    OpenRowWalk(day, rows).run(ticks);
}

} // namespace tessi
