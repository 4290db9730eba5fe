#pragma once

#include "terminal_api.h"
#include "utils/csingletont.h"

#include <string>

namespace ztservice {

// Classifies instruments by numeric type. What the numbers stand for is the terminal's affair; an instrument
// may have many. Reached by utils::CSingletonT<StockTypeCenter>. Safe from any thread.
class TERMINAL_API StockTypeCenter {
public:
    // True when the instrument of exactly this market and code has the type; false for an unknown one.
    bool isTypedStock(int type, const std::string& market, const std::string& code) const;
};

} // namespace ztservice

namespace utils {
extern template struct TERMINAL_API CSingletonT<ztservice::StockTypeCenter>;
} // namespace utils
