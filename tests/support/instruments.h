#pragma once

#include "standin/instrumentdescription.h"

#include <set>
#include <string>

#include <QString>

namespace tests {

// A stock of the market and code, with a last close of 10.00 and the types given.
inline standin::InstrumentDescription stock(const std::string& market, const std::string& code,
                                            const std::set<int>& types = {})
{
    standin::InstrumentDescription description;
    description.market = market;
    description.code = code;
    description.lastClose = 10.0;
    description.types = types;
    return description;
}

// The terminal's key of the instrument.
QString keyOf(const std::string& market, const std::string& code);

} // namespace tests
