#pragma once

#include "recording/recordedday.h"

#include <initializer_list>
#include <string>

namespace tessi {

// "the day has no stream queues, and none snapshots"; empty when it has them all.
std::string missingStreamsText(const recording::RecordedDay& day, std::initializer_list<recording::Stream> streams);

} // namespace tessi
