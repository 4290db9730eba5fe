#include "apps/tessi/text.h"

#include "Common/numberformat.h"
#include "utils/timeutils.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace tessi {

std::string clockText(__int64 seconds)
{
    const int second = utils::d8_getSecondFromZero(seconds);
    return fmt::format("{:02}:{:02}:{:02}", second / 3600, second / 60 % 60, second % 60);
}

std::string clockTextMs(__int64 milliseconds)
{
    return fmt::format("{}.{:03}", clockText(milliseconds / 1000), milliseconds % 1000);
}

const char* sideName(bool isBid)
{
    return isBid ? "bid" : "ask";
}

std::string jsonKey(std::string name)
{
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

std::string priceText(double price, double tick)
{
    constexpr double kRejectedFrom = 1e20;
    if (!(std::abs(price) < kRejectedFrom))
        return {};
    return ZP::formatPriceDoubleNumber(price, tick).toStdString();
}

} // namespace tessi
