#pragma once

#include "recording/recordedday.h"

#include <filesystem>

// A recorded day on disk: one folder with instrument.json and one CSV per stream. docs/recorded-days.md tells
// the format.
namespace recording {

enum class Compression {
    None, // orders.csv
    Zstd  // orders.csv.zst
};

// Reads a day. Throws ReadError at the first thing that is not as the format has it; nothing is skipped.
// `streams` comes in the order of kAllStreams.
RecordedDay readDay(const std::filesystem::path& folder);

// Writes a day into a new folder, which appears under its name only when it is complete. The same day gives
// the same bytes. Throws WriteError when the folder exists, when the system refuses (nothing is left behind
// then), and for a day that the format cannot hold: an event of a stream that the day does not list, without a
// record, or with a record of another type than its stream's.
void writeDay(const RecordedDay& day, const std::filesystem::path& folder, Compression compression);

} // namespace recording
