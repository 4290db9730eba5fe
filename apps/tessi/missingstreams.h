#pragma once

#include "recording/recordedday.h"

#include <string>
#include <vector>

namespace tessi {

// "the day has no stream queues, and none snapshots"; empty when it has them all.
std::string missingStreamsText(const recording::RecordedDay& day, const std::vector<recording::Stream>& streams);

// Notes of a panel as one line.
std::string joinedNotes(const std::vector<std::string>& notes);

} // namespace tessi
