#pragma once

#include "terminal_api.h"

#include <log4cxx/logger.h>

namespace utils {

// The terminal's log. Null until the terminal has set it up, and null again after it has shut down, which it changes
// only while no model runs; whoever writes to it tests that first. Its own level may be unset, so ask
// getEffectiveLevel().
TERMINAL_API extern log4cxx::LoggerPtr g_ZTStdLogger;

} // namespace utils
