#pragma once

#include "apps/tessi/bookverifier.h"

#include <nlohmann/json_fwd.hpp>

#include <iosfwd>
#include <vector>

namespace tessi {

// A table with a line for each day: its pairs, and those that do not match by what explains them.
void printPairs(std::ostream& out, const std::vector<VerifiedDay>& days);

// Every pair that does not match, and why.
void printPairMisses(std::ostream& out, const VerifiedPairs& pairs);

// The figures of the table as fields of a day's object, and the misses as an array.
void addPairs(nlohmann::ordered_json& day, const VerifiedPairs& pairs);
nlohmann::ordered_json pairMissesJson(const VerifiedPairs& pairs);

} // namespace tessi
