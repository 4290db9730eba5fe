#pragma once

#include "apps/tessi/table.h"

#include <string>

namespace TC {
struct DepthOrderData;
}

namespace tessi {

// The name of an order's kind; empty for the plain ones.
std::string kindText(const TC::DepthOrderData& order);

// Buys stand out as rising, sells as falling.
Table::Tint tintOf(const TC::DepthOrderData& order);

} // namespace tessi
