#pragma once

#include "terminal_api.h"

#include <string>

// The source of the quotes. Safe from any thread.
namespace se {

class TERMINAL_API DataCenter {
public:
    // True while the quotes come from the broker, whose records lack some of the exchange's fields. It may
    // change at run time, and may differ from the user configuration's answer of the same name.
    static bool isBrovanQuoteMode();
};

// True for an index of any kind.
TERMINAL_API bool isIndexEx(const std::string& market, const std::string& code);

// True for the market of the terminal's own index family.
TERMINAL_API bool isCICCIndex(const std::string& market);

} // namespace se
