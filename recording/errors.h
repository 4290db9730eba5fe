#pragma once

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace recording {

// Where in a file something is wrong. Lines and positions count from 1, the header is line 1; 0 and "" mean that
// the fault is not at one line or column.
struct Place {
    std::filesystem::path file;
    std::size_t line = 0;
    std::string column{};
    std::size_t position = 0; // of the column; without a column's name the byte of the line
};

// A file of a day that cannot be taken as it is. The text names the file as the caller's path leads to it:
//
//     DAY/orders.csv:17: column volume (4): not a number: "12x"
class ReadError : public std::runtime_error {
public:
    ReadError(Place where, const std::string& fault);

    const Place place;
    const std::string fault; // the text without the place
};

// A day that could not be written: the file or folder, and the system's reason.
class WriteError : public std::runtime_error {
public:
    WriteError(std::filesystem::path path, const std::string& reason);

    const std::filesystem::path file;
};

// `text` in quotes for a message, cut when long, with everything but printable ASCII as \xNN.
std::string inQuotes(std::string_view text);

// The system's text for an errno.
std::string systemReason(int error);

} // namespace recording
