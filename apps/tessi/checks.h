#pragma once

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

// Seconds since midnight of a clock time that has been checked.
int secondsOf(const std::string& clock);

} // namespace tessi
