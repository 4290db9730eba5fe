#pragma once

#include "apps/tessi/bestlevels.h"
#include "indexui/tessimodel/cmodeldepththousand_book.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace recording {
struct Event;
struct RecordedDay;
} // namespace recording

namespace tessi {

// The states that a tick-built book runs through in a day: state 0 is the empty book, state n the one after the nth
// tick, whether the book took that tick or not. Remembers of each what is needed to find a snapshot again.
//
// The day's instrument must be known to the terminal. One thread.
class BookStates {
public:
    explicit BookStates(const recording::RecordedDay& day);

    // Applies the next order or trade.
    void apply(const recording::Event& tick);

    struct Found {
        bool isMatch = false;
        std::size_t place = 0; // the state; without a match the one behind the last tick that is not later
        std::size_t from = 0;  // states `from` to before `to` have the day volume
        std::size_t to = 0;
    };

    // The first state with this day volume (shares) and these levels that is not before the one found last. To be
    // asked in the order of the snapshots, after all ticks.
    Found find(__int64 dayVolume, const BestLevels& levels, __int64 timetag);

    std::size_t parked() { return m_book.parkedTrades(); }
    __int64 forgotten() const { return m_book.forgottenTrades(); }

private:
    struct State {
        __int64 dayVolume = 0;
        std::uint64_t print = 0;
        __int64 timetag = 0;
    };

    void remember(__int64 timetag);
    std::size_t placeByTime(__int64 timetag) const;

    TC::ThousandBook m_book;
    __int64 m_dayVolume = 0;
    std::vector<State> m_states;
    std::size_t m_from = 0;
};

} // namespace tessi
