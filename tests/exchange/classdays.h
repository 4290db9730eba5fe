#pragma once

#include "exchange/simulator.h"
#include "exchange/tradingday.h"
#include "recording/recordedday.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

// Small simulated days of the classes of instruments.
namespace exchange {

inline SimulationOptions optionsOf(const std::string& name)
{
    SimulationOptions options = SimulationOptions::of(name);
    options.seed = 3;
    options.ordersPerDay = 600;
    options.marketOrdersPerMille = 60;
    return options;
}

inline recording::RecordedDay dayOf(const std::string& name)
{
    return simulateDay(optionsOf(name));
}

// A class as a test parameter's name: gtest takes no hyphen.
inline std::string testNameOf(const ::testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

// The records are the day's own.
template <class Record>
std::vector<const Record*> recordsOf(recording::RecordedDay&&) = delete;

template <class Record>
std::vector<const Record*> recordsOf(const recording::RecordedDay& day)
{
    std::vector<const Record*> records;
    for (const recording::Event& event : day.events) {
        if (const auto* const record = dynamic_cast<const Record*>(event.record.get()))
            records.push_back(record);
    }
    return records;
}

// The clock of a record as HHMMSS.
inline int clockOf(const recording::RecordedDay& day, const quoter::QuoterBase& record)
{
    const auto seconds =
        static_cast<int>((record.timetag - day.events.front().record->timetag) / 1000) + clockTime(9, 0) / 1000;
    return seconds / 3600 * 10000 + seconds / 60 % 60 * 100 + seconds % 60;
}

inline bool isWholeTicks(double price, double tick)
{
    const double perUnit = std::round(1 / tick);
    return std::round(price * perUnit) / perUnit == price;
}

} // namespace exchange
