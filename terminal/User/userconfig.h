#pragma once

#include "terminal_api.h"

namespace TC {

// What the signed-in user may see and how. Answers may change at run time. Safe from any thread.
class TERMINAL_API CUserConfig {
public:
    bool isBrovanQuoteMode() const; // the user chose the broker's quotes
    bool isBoardNewRules() const;   // the boards' registration rules apply
    bool hasNewBondsAuth() const;   // entitled to bonds under the new loan rules
};

// The user's configuration, null while nobody is signed in; then every question is answered no. It stays valid
// for the life of the process.
TERMINAL_API CUserConfig* getUserConfig();

} // namespace TC
