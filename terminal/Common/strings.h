#pragma once

#include "terminal_api.h"

#include <QString>

#include <string>

namespace ZP {

// UTF-8 to QString. Bytes that are no UTF-8 come out as replacement characters.
TERMINAL_API QString sToQs(const std::string& text);

} // namespace ZP
