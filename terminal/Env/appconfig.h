#pragma once

#include "terminal_api.h"

namespace TC {

// The edition of the client program. The type underneath is fixed, so that any edition's number may be cast.
enum EClientType : int {
    CLIENT_TYPE_SDK = 3 // embedded in a host's own window, with text colours of its own
};

// Safe from any thread.
class TERMINAL_API CAppConfig {
public:
    // True when the running client is of this edition.
    static bool isClientType(EClientType type);
};

} // namespace TC
