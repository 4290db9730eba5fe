#pragma once

#include "standin/terminal.h"

#include <string>
#include <vector>

#include <QString>

// Instruments of all markets and types, for models that are fed with snapshots alone.
namespace tests::oracle::snapshots {

inline constexpr int kUnknownInstrument = -1;

const std::vector<standin::InstrumentDescription>& snapshotInstruments();

// The terminal's key, and one that it does not know for kUnknownInstrument.
QString snapshotKeyOf(int instrument);
std::string snapshotNameOf(int instrument);

// The instruments as they are at first, and both forms of a volume the same.
void prepareSnapshots(standin::Terminal& terminal);

// The instrument as another day has it: another price step, last close and types under the same key. Who follows the
// old one keeps it.
standin::InstrumentDescription renewed(int instrument, int facts);
inline constexpr int kFacts = 4096;

// Days for which last closes are known, counted as the terminal counts them. The first is every market's last trading
// day; of the last nothing is known.
int dateAt(int number);
inline constexpr int kDates = 4;

} // namespace tests::oracle::snapshots
