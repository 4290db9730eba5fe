#include "apps/tessi/bookstates.h"

#include "Formula/stockmanager.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"
#include "recording/terminalview.h"

#include <algorithm>
#include <limits>

namespace tessi {

BookStates::BookStates(const recording::RecordedDay& day)
{
    m_book.m_stock = utils::CSingletonT<TC::CStockManager>::instance()->getInstrumentDetail(day.instrument.market,
                                                                                            day.instrument.code);
    m_book.m_priceTick = day.instrument.priceTick;
    m_book.m_volumeUnit = recording::sharesPerHand(day.instrument);
    remember(0);
}

void BookStates::apply(const recording::Event& tick)
{
    int flags = 0;
    if (tick.stream == recording::Stream::Orders) {
        m_book.appendOrder(m_book.m_stock, std::static_pointer_cast<quoter::OrderData>(tick.record), flags, false);
    } else {
        const auto trade = std::static_pointer_cast<quoter::TransactionData>(tick.record);
        m_book.appendTransaction(m_book.m_stock, trade, flags, false);
        m_dayVolume += trade->transKind == quoter::kTransKindCancel ? 0 : trade->volume;
    }
    remember(tick.record->timetag);
}

void BookStates::remember(__int64 timetag)
{
    const bool isUnchanged = !m_states.empty() && !m_book.m_bidsDirty && !m_book.m_asksDirty;
    const std::uint64_t print = isUnchanged ? m_states.back().print : fingerprint(bestLevels(m_book, kSnapshotLevels));
    m_book.m_bidsDirty = false;
    m_book.m_asksDirty = false;
    m_states.push_back({m_dayVolume, print, timetag});
}

BookStates::Found BookStates::find(__int64 dayVolume, const BestLevels& levels, __int64 timetag)
{
    // The day volume never falls from state to state.
    const auto byVolume = [](const State& state, __int64 volume) { return state.dayVolume < volume; };
    const auto from = std::lower_bound(m_states.begin(), m_states.end(), dayVolume, byVolume);
    const auto to = std::lower_bound(from, m_states.end(), dayVolume + 1, byVolume);
    const auto index = [this](auto state) { return static_cast<std::size_t>(state - m_states.begin()); };

    Found found{false, 0, index(from), index(to)};
    const std::uint64_t print = fingerprint(levels);
    const auto first = m_states.begin() + static_cast<std::ptrdiff_t>(std::clamp(m_from, found.from, found.to));
    const auto match = std::find_if(first, to, [print](const State& state) { return state.print == print; });
    found.isMatch = match != to;
    if (found.isMatch)
        m_from = index(match);
    found.place = found.isMatch ? index(match) : placeByTime(timetag);
    return found;
}

// Times of ticks may go back where a feed delivers an auction late, so the last one that is not later is what counts.
std::size_t BookStates::placeByTime(__int64 timetag) const
{
    const auto last =
        std::find_if(m_states.rbegin(), m_states.rend() - 1, [&](const State& s) { return s.timetag <= timetag; });
    return static_cast<std::size_t>(m_states.rend() - last) - 1;
}

} // namespace tessi
