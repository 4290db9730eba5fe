#pragma once

#include "terminal_api.h"

#include <string>

namespace luawrapper {

// The module whose entitlement shows convertible bonds in block trading with rows of their own.
inline constexpr char kModuleBlockTradeConvertibleBond[] = "block_trade_convertible_bond";

// Entitlements to the terminal's script modules. Answers may change at run time. Safe from any thread.
class TERMINAL_API LuaModuleCtrl {
public:
    // True when the user is entitled to the module; false for a name that is not known.
    static bool checkModule(const std::string& name);
};

} // namespace luawrapper
