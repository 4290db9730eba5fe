#include "tests/support/recordeddays.h"

#include <cstdlib>

namespace tests {

std::filesystem::path recordedDay(const std::string& folder)
{
    const char* const set = std::getenv("TESSI_RECORDED_DAYS");
    return std::filesystem::path(set ? set : TESSI_RECORDED_DAYS_DEFAULT) / folder;
}

std::string testName(std::string folder)
{
    std::erase(folder, '-');
    return folder;
}

} // namespace tests
