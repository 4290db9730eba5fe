#pragma once

#include "utils/int64.h"

#include <CLI/CLI.hpp>

#include <string>

// What command line arguments must look like; a wrong one is a usage error.
namespace tessi {

CLI::Validator notEmpty();

CLI::Validator aboveZero();
CLI::Validator notBelowZero();

// "yyyymmdd", a date of the years that the terminal's clock covers.
CLI::Validator calendarDate();

// "HH:MM:SS".
CLI::Validator clockTime();

// "340x460", and how many pixels one of these is.
CLI::Validator pictureSize();
CLI::Validator pictureScale();

// Seconds since midnight of a clock time that has been checked.
int secondsOf(const std::string& clock);

// The first and the last millisecond of that second on a day, since the epoch.
__int64 timeOn(int tradingDay, const std::string& clock);
__int64 endOfSecondOn(int tradingDay, const std::string& clock);

} // namespace tessi
