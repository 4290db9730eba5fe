#pragma once

#include "utils/int64.h"

#include <concepts>
#include <string>

namespace tessi {

// "hh:mm:ss" at UTC+8 of a time in seconds since the epoch.
std::string clockText(__int64 seconds);

// "hh:mm:ss.mmm" at UTC+8 of a time in milliseconds since the epoch.
std::string clockTextMs(__int64 milliseconds);

// A whole number in digits.
template <std::integral Number>
std::string numberText(Number number)
{
    return std::to_string(number);
}

const char* sideName(bool isBid); // "bid", "ask"

// The key in JSON of what is called so in a table: "buy_seq" for "buy seq".
std::string jsonKey(std::string name);

// A price with the digits of the tick; empty when there is no value.
std::string priceText(double price, double tick);

} // namespace tessi
