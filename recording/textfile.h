#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Whole files in memory, plain or compressed with zstd.
namespace recording {

// The bytes of the file. Throws ReadError with the system's reason, and for a file of 0 bytes.
std::string readFile(const std::filesystem::path& file);

// As readFile, then the bytes of the one compressed frame that the file must be, to its last byte.
std::string readCompressedFile(const std::filesystem::path& file);

// Writes a new file and has the system put it on disk. Throws WriteError with the system's reason, which calls the
// file `named`; a file that was begun stays, for the caller to remove.
void writeFile(const std::filesystem::path& file, std::string_view bytes, const std::filesystem::path& named);

// One frame with a checksum, always at the same level: the same text gives the same bytes.
std::string compressed(std::string_view text);

} // namespace recording
