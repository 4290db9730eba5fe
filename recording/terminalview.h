#pragma once

#include "recording/recordedday.h"
#include "utils/int64.h"

#include <array>
#include <vector>

namespace recording {

// Shares in one hand of an instrument, by its market and types. 1 in the markets whose volumes the terminal delivers as
// they are: contracts of futures and options, shares of Hong Kong.
int sharesPerHand(const standin::InstrumentDescription& instrument);

// A level's volume in hands: a part of the first hand counts as one, so that a level with shares never looks empty,
// while nothing stays nothing; above, whole hands count.
__int64 levelHands(__int64 shares, int unit);

// The day as the terminal shows it. A recorded day counts shares throughout; the terminal delivers
//
//     orders, trades, queues          shares
//     levels of snapshots, level-1    hands, by levelHands
//       quotes and thousand levels
//     day volumes, counts and book    hands, cut off
//       summaries
//
// The converted records are new ones, made at the first need of a stream: those of the day never change, though a
// model may complete a delivered snapshot. One thread.
class TerminalView {
public:
    // `day` must outlive the view.
    TerminalView(const RecordedDay& day, int sharesPerHand);

    // The event as it is delivered.
    const Event& event(std::size_t arrival);

private:
    void convert(Stream stream);

    const RecordedDay& m_day;
    const int m_unit;
    std::array<bool, kAllStreams.size()> m_converted{};
    std::vector<Event> m_events; // by arrival
};

} // namespace recording
