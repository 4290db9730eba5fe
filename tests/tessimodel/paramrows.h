#pragma once

#include "indexui/tessimodel/cmodeltodayparam.h"

#include <functional>
#include <string>

namespace tests {

// "RP_LAST"; the bare number of what is none.
std::string nameOf(TC::ERealtimeParam id);

// The rows that the action writes, also those that it writes as they were, in the order of their numbers:
// "RP_LAST 10.02 rise\n", or "RP_TOTAL_VOLUME 500\n" when the row keeps its colour key. Colours are rise, fall and
// equal; any other key stands as it is. An empty text is "(empty)".
std::string writtenBy(TC::CModelTodayParam& model, const std::function<void()>& action);

// Their names alone: "RP_LAST RP_CHANGE".
std::string namesWrittenBy(TC::CModelTodayParam& model, const std::function<void()>& action);

// The line of one row among those that writtenBy gives, without its end; "" when it is not there.
std::string lineOf(const std::string& written, TC::ERealtimeParam id);

// "09:30:03 +400 #2 9.9..10.6 bid 10.01 x 500 ask 10.05 x 700\n" for every snapshot: current volume, number of trades,
// low and high, and what book summaries brought.
std::string historyText(const TC::CModelTodayParam& model);

} // namespace tests
