#pragma once

#include "apps/tessi/bookverifier.h"

#include <nlohmann/json_fwd.hpp>

#include <iosfwd>
#include <optional>
#include <vector>

namespace tessi {

// A table with a line for each day: the rows of its order queues, and those that do not match by what explains them. A
// day without the stream has no figures.
void printQueues(std::ostream& out, const std::vector<VerifiedDay>& days);

// Every row that does not match, what explains it, and where it differs from the nearest state.
void printQueueMisses(std::ostream& out, const VerifiedQueues& queues, double priceTick);

// The figures of the table as fields of a day's object, null without the stream, and the misses as an array.
void addQueues(nlohmann::ordered_json& day, const std::optional<VerifiedQueues>& queues);
nlohmann::ordered_json queueMissesJson(const VerifiedQueues& queues);

} // namespace tessi
