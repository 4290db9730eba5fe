#include "apps/tessi/bookverifier.h"

#include "apps/tessi/bookstates.h"
#include "apps/tessi/explanation.h"
#include "apps/tessi/session.h"
#include "apps/tessi/watchedmodel.h"
#include "quoter/quoterdepthdata.h"
#include "recording/recordedday.h"
#include "recording/terminalview.h"
#include "standin/terminal.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <unordered_map>
#include <utility>

namespace tessi {

namespace {

using recording::Stream;

// What the book has too much pushes the rest down: it is compared deeper than a snapshot can see.
constexpr std::size_t kComparedLevels = 3 * kSnapshotLevels;

// How far a book is from a snapshot: by the number of prices that differ, then by the shares.
using Distance = std::pair<std::size_t, __int64>;

Distance distanceOf(const std::vector<Difference>& differences)
{
    __int64 shares = 0;
    for (const Difference& difference : differences)
        shares += std::abs(difference.missing);
    return {differences.size(), shares};
}

// A snapshot of continuous trading.
struct Candidate {
    std::size_t arrival = 0;
    std::shared_ptr<quoter::QuoterDepthData> record; // of the day, in shares
    BestLevels levels;
    BookStates::Found found;
    std::optional<Miss> miss;
    std::optional<Distance> distance; // between the miss and its nearest state
};

// Whether a panel's rows begin with the snapshot's levels. What is worse than all of them the snapshot cannot know; a
// side that it shows empty is empty.
bool shows(const std::vector<BookLevel>& rows, const std::vector<BookLevel>& snapshot)
{
    if (snapshot.empty() || rows.size() < snapshot.size())
        return rows.size() == snapshot.size();
    return std::equal(snapshot.begin(), snapshot.end(), rows.begin());
}

class Verification {
public:
    Verification(const recording::RecordedDay& day, const VerifyProgress& progress)
        : m_day(day)
        , m_view(day, recording::sharesPerHand(day.instrument))
        , m_model(m_terminal, day)
        , m_progress(progress)
        , m_ticks(ticksOf(day))
    {
        m_result.market = day.instrument.market;
        m_result.code = day.instrument.code;
        m_result.priceTick = day.instrument.priceTick;
        m_result.day = day.tradingDay;
    }

    VerifiedDay run()
    {
        collect();
        walkStates();
        walkModel();
        for (Candidate& candidate : m_candidates) {
            if (candidate.miss)
                m_result.misses.push_back(std::move(*candidate.miss));
        }
        return std::move(m_result);
    }

private:
    void collect()
    {
        const bool closingAuction = hasClosingAuction(m_day);
        for (std::size_t i = 0; i < m_day.events.size(); ++i) {
            const recording::Event& event = m_day.events[i];
            if (event.stream != Stream::Snapshots)
                continue;
            const auto delivered = std::dynamic_pointer_cast<quoter::QuoterDepthData>(m_view.event(i).record);
            if (!m_model.isContinuous(delivered) ||
                !isInSession(delivered->timetag, m_day.instrument.market, closingAuction))
                continue;
            Candidate candidate;
            candidate.arrival = i;
            candidate.record = std::dynamic_pointer_cast<quoter::QuoterDepthData>(event.record);
            candidate.levels = shownLevels(*candidate.record, m_day.instrument.priceTick);
            m_candidates.push_back(std::move(candidate));
        }
        m_result.snapshots = m_candidates.size();
    }

    // The book by itself, and where in its states each snapshot stands.
    void walkStates()
    {
        BookStates states(m_day);
        for (const recording::Event* tick : m_ticks) {
            states.apply(*tick);
            advance();
        }
        m_result.parked = states.parked();
        m_result.forgotten = states.forgotten();
        for (Candidate& candidate : m_candidates) {
            candidate.found = states.find(candidate.record->volume, candidate.levels, candidate.record->timetag);
            if (candidate.found.isMatch)
                continue;
            addMiss(candidate);
            for (std::size_t state = candidate.found.from; state < candidate.found.to; ++state)
                m_missesByState.emplace(state, &candidate);
        }
    }

    void addMiss(Candidate& candidate)
    {
        Miss& miss = candidate.miss.emplace();
        miss.arrival = candidate.arrival;
        miss.timetag = candidate.record->timetag;
        miss.dayVolume = candidate.record->volume;
        miss.hasVolume = candidate.found.from < candidate.found.to;
        miss.snapshot = candidate.levels;
    }

    // The model, with each snapshot at its place, and with the whole book at hand to explain the misses.
    void walkModel()
    {
        std::vector<Candidate*> byPlace;
        for (Candidate& candidate : m_candidates)
            byPlace.push_back(&candidate);
        std::stable_sort(byPlace.begin(), byPlace.end(),
                         [](const Candidate* a, const Candidate* b) { return a->found.place < b->found.place; });

        OrderLedger ledger(m_day.instrument.priceTick);
        auto next = byPlace.begin();
        for (std::size_t state = 0; state <= m_ticks.size(); ++state) {
            if (state > 0)
                pushTick(*m_ticks[state - 1], ledger);
            explainMissesAt(state, ledger);
            for (; next != byPlace.end() && (*next)->found.place == state; ++next)
                deliver(**next);
            advance();
        }
    }

    void pushTick(const recording::Event& tick, OrderLedger& ledger)
    {
        m_model.push(tick);
        ledger.apply(tick);
    }

    // Of the states with a miss's day volume, the one that resting orders explain is its state; without an
    // explanation the one that is nearest.
    void explainMissesAt(std::size_t state, const OrderLedger& ledger)
    {
        std::optional<BestLevels> book;
        for (auto [at, end] = m_missesByState.equal_range(state); at != end; ++at) {
            if (!book)
                book = bestLevels(m_model.book(), kComparedLevels);
            compare(*at->second, *book, ledger);
        }
    }

    void compare(Candidate& candidate, const BestLevels& book, const OrderLedger& ledger)
    {
        Miss& miss = *candidate.miss;
        if (!miss.explainedBy.empty())
            return;
        const std::vector<Difference> apart = differences(candidate.levels, book);
        miss.explainedBy = explain(apart, ledger, m_model.book());
        const Distance distance = distanceOf(apart);
        const bool isNearer = !candidate.distance || distance < *candidate.distance;
        if (!isNearer && miss.explainedBy.empty())
            return;
        candidate.distance = distance;
        miss.book = book;
    }

    void deliver(Candidate& candidate)
    {
        if (candidate.found.isMatch) {
            // A fingerprint only narrows down.
            if (bestLevels(m_model.book(), kSnapshotLevels) == candidate.levels)
                ++m_result.rawMatches;
            else
                addMiss(candidate);
        }
        if (candidate.miss && !candidate.distance)
            candidate.miss->book = bestLevels(m_model.book(), kComparedLevels);

        const recording::Event& delivered = m_view.event(candidate.arrival);
        const __int64 before = m_model.snapshotTime();
        m_model.push(delivered);
        const bool isTaken = m_model.snapshotTime() > before;
        if (isTaken && m_model.isSnapshotNewer())
            readCorrected(candidate, static_cast<const quoter::QuoterDepthData&>(*delivered.record));
    }

    void readCorrected(const Candidate& candidate, const quoter::QuoterDepthData& delivered)
    {
        ++m_result.newer;
        const BestLevels expected = shownLevels(delivered, m_day.instrument.priceTick);
        const BestLevels read = m_model.read().value_or(BestLevels());
        if (shows(read.bids, expected.bids) && shows(read.asks, expected.asks))
            ++m_result.correctedMatches;
        else if (!m_result.wrongRead)
            m_result.wrongRead = {candidate.arrival, delivered.timetag, delivered.volume, expected, read};
    }

    void advance()
    {
        ++m_done;
        constexpr std::size_t kEvery = 4096;
        if (m_progress && m_done % kEvery == 0)
            m_progress(m_done, 2 * m_ticks.size() + 1);
    }

    const recording::RecordedDay& m_day;
    standin::Terminal m_terminal;
    recording::TerminalView m_view;
    WatchedModel m_model;
    const VerifyProgress& m_progress;
    std::vector<const recording::Event*> m_ticks;
    std::size_t m_done = 0;
    std::vector<Candidate> m_candidates;
    std::unordered_multimap<std::size_t, Candidate*> m_missesByState;
    VerifiedDay m_result;
};

} // namespace

std::size_t VerifiedDay::missesByMarketOrders() const
{
    return static_cast<std::size_t>(std::count_if(misses.begin(), misses.end(),
                                                  [](const Miss& miss) { return areMarketOrders(miss.explainedBy); }));
}

std::size_t VerifiedDay::missesByOtherOrders() const
{
    return misses.size() - missesByMarketOrders() - missesUnexplained();
}

std::size_t VerifiedDay::missesUnexplained() const
{
    return static_cast<std::size_t>(
        std::count_if(misses.begin(), misses.end(), [](const Miss& miss) { return miss.explainedBy.empty(); }));
}

VerifiedDay verifyDay(const recording::RecordedDay& day, const VerifyProgress& progress)
{
    VerifiedDay result = Verification(day, progress).run();
    result.pairs = verifyPairs(day);
    if (std::find(day.streams.begin(), day.streams.end(), Stream::Queues) != day.streams.end())
        result.queues = verifyQueues(day);
    return result;
}

} // namespace tessi
