#pragma once

#include <cstdint>

namespace recording {
struct RecordedDay;
}

// A 64-bit FNV-1a hash over every field of every record of the day, in the order of arrival, little end first.
std::uint64_t dayFingerprint(const recording::RecordedDay& day);
