#pragma once

#include "standin/instrumentdescription.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace recording {

inline constexpr char kInstrumentFile[] = "instrument.json";

// What instrument.json holds.
struct InstrumentFile {
    int tradingDay = 0; // yyyymmdd
    standin::InstrumentDescription instrument;

    // Events of each stream file, by stream name. Lets a file that was cut at the end of a line be noticed;
    // a day that was made by hand may go without.
    std::optional<std::map<std::string, std::size_t>> rows;

    std::vector<standin::InstrumentDescription> related; // see RecordedDay; the field is left out when there is none
};

// Throws ReadError for a file that is missing, no UTF-8 JSON, or short of a field or with an unknown one or the same
// one twice, or with an instrument twice.
InstrumentFile readInstrumentFile(const std::filesystem::path& file);

// Throws std::runtime_error that names the field which the file cannot hold: a number that is not finite, an
// instrument that stands twice.
std::string instrumentFileText(const InstrumentFile& content);

// Whether `yyyymmdd` is a date from 19700102 to 20380118, as a day's must be.
bool isTradingDay(int yyyymmdd);

} // namespace recording
