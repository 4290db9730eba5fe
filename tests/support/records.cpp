#include "tests/support/records.h"

#include "utils/timeutils.h"

#include <cctype>
#include <stdexcept>

namespace tests {

__int64 timeOf(const std::string& clock)
{
    const std::string full = clock.size() == 8 ? clock + ".000" : clock;
    const std::string shape = "00:00:00.000";
    bool fits = full.size() == shape.size();
    for (std::size_t i = 0; fits && i < shape.size(); ++i)
        fits = shape[i] == '0' ? std::isdigit(static_cast<unsigned char>(full[i])) != 0 : full[i] == shape[i];
    if (!fits)
        throw std::invalid_argument("no time of day: " + clock);
    const auto part = [&full](std::size_t from, std::size_t digits) { return std::stoi(full.substr(from, digits)); };
    return utils::timeToMilliseconds(2024, 3, 1, part(0, 2), part(3, 2), part(6, 2)) + part(9, 3);
}

std::string clockOf(__int64 second)
{
    const int ofDay = utils::d8_getSecondFromZero(second);
    const auto part = [](int number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    return part(ofDay / 3600) + ":" + part(ofDay / 60 % 60) + ":" + part(ofDay % 60);
}

} // namespace tests
