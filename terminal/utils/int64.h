#pragma once

// The 64-bit integer of all interfaces and record fields: times in milliseconds, sequence numbers, volumes.
// It is `long long` and so the same type as Qt's qint64. Never mix it with int64_t, which is `long` on
// 64-bit Linux and would give overloads and templates a second 64-bit type.
using __int64 = long long; // NOLINT(bugprone-reserved-identifier): the name is the terminal's

static_assert(sizeof(__int64) == 8, "__int64 must hold 64 bits");
