#pragma once

#include "terminal_api.h"

#include <boost/thread/thread.hpp>

#include <string>

namespace utils {

// Names a running thread for debuggers and profilers. A name longer than the system's limit (15 bytes on
// Linux) is cut. A thread that has ended is left alone.
TERMINAL_API void setThreadName(boost::thread::native_handle_type thread, const std::string& name);

} // namespace utils
