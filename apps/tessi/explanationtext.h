#pragma once

#include "apps/tessi/orderledger.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace tessi {

// "explained by resting order 5123 (kind 7, sell) with 5700 shares at 9.15, order ..."
std::string explainedByText(const std::vector<RestingOrder>& orders, double priceTick);

nlohmann::ordered_json explainedByJson(const std::vector<RestingOrder>& orders);

} // namespace tessi
