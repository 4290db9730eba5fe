#include "apps/tessi/explanationtext.h"

#include "apps/tessi/text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tessi {

std::string explainedByText(const std::vector<RestingOrder>& orders, double priceTick)
{
    std::string text = "explained by resting";
    const char* separator = " ";
    for (const RestingOrder& order : orders) {
        text += fmt::format("{}order {} (kind {}, {}) with {} shares at {}", separator, order.seq, order.kind,
                            order.isBid ? "buy" : "sell", order.shares, priceText(order.price, priceTick));
        separator = ", ";
    }
    return text;
}

nlohmann::ordered_json explainedByJson(const std::vector<RestingOrder>& orders)
{
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const RestingOrder& order : orders) {
        all.push_back({{"seq", order.seq},
                       {"kind", order.kind},
                       {"side", sideName(order.isBid)},
                       {"price", order.price},
                       {"shares", order.shares}});
    }
    return all;
}

} // namespace tessi
