#pragma once

#include "recording/recordedday.h"

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <vector>

namespace recording {

// One line of a stream file. Row i stands in line i + 2, below the header.
struct StreamRow {
    std::size_t arrival = 0;
    Event event;
};

inline std::size_t lineOfRow(std::size_t row)
{
    return row + 2;
}

// The rows of a stream's CSV text. `file` is what a ReadError names. Throws for every line that is not exactly
// as the header says, for arrivals that do not rise, for a time stamp of another day than `tradingDay`, and for a last
// line without an end.
std::vector<StreamRow> readStream(Stream stream, std::string_view text, int tradingDay,
                                  const std::filesystem::path& file);

} // namespace recording
