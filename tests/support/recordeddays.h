#pragma once

#include <filesystem>
#include <string>

namespace tests {

// Where the exchanges' files of a recorded day are looked for: in TESSI_RECORDED_DAYS, or beside the checkout. They
// need not be there; a test of them is skipped then.
std::filesystem::path recordedDay(const std::string& folder);

// A folder's name as a test parameter's: gtest takes letters and digits only.
std::string testName(std::string folder);

} // namespace tests
