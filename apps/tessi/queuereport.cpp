#include "apps/tessi/queuereport.h"

#include "apps/tessi/explanationtext.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <ostream>
#include <string>

namespace tessi {

namespace {

const char* keyOf(QueueFault fault)
{
    switch (fault) {
    case QueueFault::MarketOrders:
        return "queueMissesByMarketOrders";
    case QueueFault::OtherOrders:
        return "queueMissesByOtherOrders";
    case QueueFault::OtherState:
        return "queueMissesOtherState";
    case QueueFault::OutOfOrder:
        return "queueMissesOutOfOrder";
    case QueueFault::Unknown:
        break;
    }
    return "queueMissesUnexplained";
}

std::string whyText(const QueueMiss& miss, double priceTick)
{
    if (!miss.explainedBy.empty())
        return explainedByText(miss.explainedBy, priceTick);
    if (miss.fault == QueueFault::OtherState)
        return "the other side is of another state";
    if (miss.fault == QueueFault::OutOfOrder)
        return "the book had this queue before or behind its place";
    return "no resting order explains it";
}

// "order 3: 500, book 700"; a queue that has ended has no size there, and equal ones have no difference.
std::string differenceText(const QueueMiss& miss)
{
    if (miss.sizes == miss.book)
        return "none";
    const auto sizeIn = [&miss](const std::vector<__int64>& sizes) {
        return miss.rightOrders < sizes.size() ? std::to_string(sizes[miss.rightOrders]) : std::string("no order");
    };
    return fmt::format("order {}: {}, book {}", miss.rightOrders + 1, sizeIn(miss.sizes), sizeIn(miss.book));
}

} // namespace

void printQueues(std::ostream& out, const std::vector<VerifiedDay>& days)
{
    std::vector<Table::Column> columns = {
        {"market"}, {"code"}, {"day", true}, {"queue rows", true}, {"queue matches", true}};
    for (const QueueFault fault : kAllQueueFaults)
        columns.push_back({nameOf(fault), true});
    Table table(columns);
    for (const VerifiedDay& day : days) {
        std::vector<std::string> cells = {day.market, day.code, std::to_string(day.day)};
        if (day.queues) {
            cells.insert(cells.end(), {std::to_string(day.queues->rows), std::to_string(day.queues->matches)});
            for (const QueueFault fault : kAllQueueFaults)
                cells.push_back(std::to_string(day.queues->count(fault)));
        }
        cells.resize(columns.size());
        table.add(cells);
    }
    table.print(out, Format::Table, false);
}

void printQueueMisses(std::ostream& out, const VerifiedQueues& queues, double priceTick)
{
    Table table({{"time"}, {"arrival", true}, {"side"}, {"price", true}, {"first difference"}, {"explanation"}});
    for (const QueueMiss& miss : queues.misses) {
        table.add({clockText(miss.timetag / 1000), std::to_string(miss.arrival), sideName(miss.isBid),
                   priceText(miss.price, priceTick), differenceText(miss), whyText(miss, priceTick)});
    }
    table.print(out, Format::Table, false);
}

void addQueues(nlohmann::ordered_json& day, const std::optional<VerifiedQueues>& queues)
{
    day["queueRows"] = queues ? nlohmann::ordered_json(queues->rows) : nullptr;
    day["queueMatches"] = queues ? nlohmann::ordered_json(queues->matches) : nullptr;
    for (const QueueFault fault : kAllQueueFaults)
        day[keyOf(fault)] = queues ? nlohmann::ordered_json(queues->count(fault)) : nullptr;
}

nlohmann::ordered_json queueMissesJson(const VerifiedQueues& queues)
{
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const QueueMiss& miss : queues.misses) {
        all.push_back({{"arrival", miss.arrival},
                       {"time", clockText(miss.timetag / 1000)},
                       {"side", sideName(miss.isBid)},
                       {"price", miss.price},
                       {"sizes", miss.sizes},
                       {"book", miss.book},
                       {"why", nameOf(miss.fault)},
                       {"explainedBy", explainedByJson(miss.explainedBy)}});
    }
    return all;
}

} // namespace tessi
