#include "apps/tessi/checks.h"

#include "apps/tessi/picture.h"
#include "recording/dayspan.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace tessi {

namespace {

bool areDigits(const std::string& text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool isCalendarDate(const std::string& text)
{
    constexpr std::size_t kDigits = 8;
    // Seconds since the epoch are 32 bits wide in the terminal, and 0 stands for no time.
    if (text.size() != kDigits || !areDigits(text) || text < "19700102" || text > "20380118")
        return false;
    const int date = std::stoi(text);
    return std::chrono::year_month_day(std::chrono::year{date / 10000} / (date / 100 % 100) / (date % 100)).ok();
}

bool isClockTime(const std::string& text)
{
    constexpr std::size_t kLength = 8;
    if (text.size() != kLength || text[2] != ':' || text[5] != ':')
        return false;
    const std::string parts[] = {text.substr(0, 2), text.substr(3, 2), text.substr(6, 2)};
    return std::all_of(std::begin(parts), std::end(parts), areDigits) && parts[0] < "24" && parts[1] < "60" &&
           parts[2] < "60";
}

// 0 for a text that is no number: converting it to the option's type fails then.
double numberOf(const std::string& text)
{
    return std::strtod(text.c_str(), nullptr);
}

} // namespace

CLI::Validator aboveZero()
{
    return {[](const std::string& text) { return numberOf(text) > 0 ? std::string() : text + " is no number above 0"; },
            "> 0"};
}

CLI::Validator notBelowZero()
{
    return {[](const std::string& text) { return numberOf(text) >= 0 ? std::string() : text + " is below 0"; }, ">= 0"};
}

CLI::Validator notEmpty()
{
    return {[](const std::string& text) { return text.empty() ? std::string("must not be empty") : std::string(); },
            ""};
}

CLI::Validator calendarDate()
{
    return {[](const std::string& text) {
                return isCalendarDate(text) ? std::string() : text + " is no date yyyymmdd from 19700102 to 20380118";
            },
            "yyyymmdd"};
}

CLI::Validator clockTime()
{
    return {[](const std::string& text) { return isClockTime(text) ? std::string() : text + " is no time HH:MM:SS"; },
            "HH:MM:SS"};
}

CLI::Validator pictureSize()
{
    return {[](const std::string& text) {
                return pictureOfSize(text)
                           ? std::string()
                           : fmt::format("{} is no size WIDTHxHEIGHT, each from 1 to {}", text, Picture::kLongestSide);
            },
            "WIDTHxHEIGHT"};
}

CLI::Validator pictureScale()
{
    return {[](const std::string& text) {
                const double scale = numberOf(text);
                return scale >= Picture::kSmallestScale && scale <= Picture::kLargestScale
                           ? std::string()
                           : fmt::format("{} is no scale from {} to {}", text, Picture::kSmallestScale,
                                         Picture::kLargestScale);
            },
            "0.5-4"};
}

int secondsOf(const std::string& clock)
{
    return (std::stoi(clock.substr(0, 2)) * 60 + std::stoi(clock.substr(3, 2))) * 60 + std::stoi(clock.substr(6, 2));
}

__int64 timeOn(int tradingDay, const std::string& clock)
{
    return recording::DaySpan(tradingDay).begin() + secondsOf(clock) * 1000LL;
}

__int64 endOfSecondOn(int tradingDay, const std::string& clock)
{
    return timeOn(tradingDay, clock) + 999;
}

} // namespace tessi
