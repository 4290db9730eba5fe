#include "apps/tessi/tracereport.h"

#include "apps/tessi/ordertext.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"
#include "quoter/transactiondata.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <ostream>
#include <string>

namespace tessi {

namespace {

std::string symbolOf(const OrderTrace& trace)
{
    return TC::getOrderSymbol(trace.order).toStdString();
}

Table orderTable(const OrderTrace& trace, double priceTick)
{
    Table table({{"row", true},
                 {"time"},
                 {"side"},
                 {"kind"},
                 {"price", true},
                 {"hands", true},
                 {"shares", true},
                 {"seq", true}});
    const TC::DepthOrderData& order = *trace.order;
    table.add({std::to_string(trace.row), clockText(order.time), symbolOf(trace), kindText(order),
               priceText(order.price, priceTick), std::to_string(order.hands), std::to_string(order.volume),
               std::to_string(order.seq)},
              tintOf(order));
    return table;
}

Table fateTable(const OrderTrace& trace, double priceTick)
{
    Table table(
        {{"event"}, {"time"}, {"price", true}, {"shares", true}, {"counterpart", true}, {"left after it", true}});
    __int64 left = trace.order ? trace.order->volume : 0;
    const auto leftText = [&](__int64 gone) {
        left -= gone;
        return trace.order ? std::to_string(left) : std::string();
    };
    for (const auto& trade : trace.fate.trades) {
        table.add({"trade", clockTextMs(trade->timetag), priceText(trade->price, priceTick),
                   std::to_string(trade->volume), std::to_string(trace.counterpartOf(*trade)),
                   leftText(trade->volume)});
    }
    for (std::size_t i = 0; i < trace.fate.cancels.size(); ++i) {
        const auto& cancel = trace.fate.cancels[i];
        table.add({"cancel", clockTextMs(trace.cancelledAt[i]), "", std::to_string(cancel->volume), "",
                   leftText(cancel->volume)});
    }
    return table;
}

nlohmann::ordered_json orderJson(const OrderTrace& trace)
{
    if (!trace.order)
        return nullptr;
    const TC::DepthOrderData& order = *trace.order;
    return {{"row", trace.row},        {"time", clockTextMs(trace.orderedAt)},
            {"side", symbolOf(trace)}, {"kind", kindText(order)},
            {"price", order.price},    {"hands", order.hands},
            {"shares", order.volume}};
}

} // namespace

void printTrace(std::ostream& out, const OrderTrace& trace, double priceTick, bool colours)
{
    if (trace.order) {
        orderTable(trace, priceTick).print(out, Format::Table, colours);
        out << "\n";
    }
    const Table fate = fateTable(trace, priceTick);
    if (!fate.isEmpty()) {
        fate.print(out, Format::Table, colours);
        out << "\n";
    }
    const auto left = trace.left();
    out << fmt::format("order {}: traded {} in {} trade{}, cancelled {}, left {}\n", trace.seq, trace.fate.traded,
                       trace.fate.trades.size(), trace.fate.trades.size() == 1 ? "" : "s", trace.fate.cancelled,
                       left ? std::to_string(*left) : "not known");
}

void printTraceJson(std::ostream& out, const OrderTrace& trace)
{
    nlohmann::ordered_json trades = nlohmann::ordered_json::array();
    for (const auto& trade : trace.fate.trades) {
        trades.push_back({{"time", clockTextMs(trade->timetag)},
                          {"price", trade->price},
                          {"shares", trade->volume},
                          {"counterpart", trace.counterpartOf(*trade)}});
    }
    nlohmann::ordered_json cancels = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < trace.fate.cancels.size(); ++i)
        cancels.push_back({{"time", clockTextMs(trace.cancelledAt[i])}, {"shares", trace.fate.cancels[i]->volume}});
    nlohmann::ordered_json object = {
        {"seq", trace.seq},   {"order", orderJson(trace)},   {"trades", trades},
        {"cancels", cancels}, {"traded", trace.fate.traded}, {"cancelled", trace.fate.cancelled},
        {"left", nullptr}};
    if (const auto left = trace.left())
        object["left"] = *left;
    out << object.dump(2) << "\n";
}

} // namespace tessi
