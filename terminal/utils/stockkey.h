#pragma once

#include "terminal_api.h"

#include <string>

namespace utils {

// The terminal's key of an instrument, as CStockManager::getInstrumentDetail takes it. Nobody parses a key.
TERMINAL_API std::string zlStockKey(const std::string& market, const std::string& code);

} // namespace utils
