#include "apps/tessi/verifyreport.h"

#include "apps/tessi/explanationtext.h"
#include "apps/tessi/pairreport.h"
#include "apps/tessi/queuereport.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <optional>
#include <ostream>
#include <string>

namespace tessi {

namespace {

std::string dayName(const VerifiedDay& day)
{
    return fmt::format("{} {} {}", day.market, day.code, day.day);
}

std::string explanationText(const Miss& miss, double priceTick)
{
    if (!miss.hasVolume)
        return "no state of the book has this day volume";
    if (miss.explainedBy.empty())
        return "no resting order explains it";
    return explainedByText(miss.explainedBy, priceTick);
}

Table dayTable(const std::vector<VerifiedDay>& days)
{
    Table table({{"market"},
                 {"code"},
                 {"day", true},
                 {"snapshots", true},
                 {"raw matches", true},
                 {"misses", true},
                 {"market orders", true},
                 {"other orders", true},
                 {"unexplained", true},
                 {"newer", true},
                 {"corrected", true},
                 {"parked", true},
                 {"forgotten", true}});
    for (const VerifiedDay& day : days) {
        table.add({day.market, day.code, numberText(day.day), numberText(day.snapshots), numberText(day.rawMatches),
                   numberText(day.misses.size()), numberText(day.missesByMarketOrders()),
                   numberText(day.missesByOtherOrders()), numberText(day.missesUnexplained()), numberText(day.newer),
                   numberText(day.correctedMatches), numberText(day.parked), numberText(day.forgotten)});
    }
    return table;
}

// Both sides of one book beside the other, from the highest price down to where the snapshot ends.
Table sideBySide(const Divergence& at, double priceTick, const char* bookName)
{
    struct Line {
        double price = 0;
        std::string snapshot;
        std::string book;
    };
    Table table({{""}, {"side"}, {"price", true}, {"snapshot", true}, {bookName, true}});
    for (const bool isBid : {false, true}) {
        const auto& snapshot = isBid ? at.snapshot.bids : at.snapshot.asks;
        std::map<int, Line, std::greater<>> lines;
        for (const BookLevel& level : snapshot)
            lines[level.key] = {level.price, std::to_string(level.volume), ""};
        for (const BookLevel& level : isBid ? at.book.bids : at.book.asks) {
            if (!reaches(snapshot, isBid, level.key))
                continue;
            lines[level.key].price = level.price;
            lines[level.key].book = std::to_string(level.volume);
        }
        for (const auto& [key, line] : lines) {
            table.add({line.snapshot == line.book ? "" : "*", sideName(isBid), priceText(line.price, priceTick),
                       line.snapshot, line.book},
                      isBid ? Table::Tint::Rise : Table::Tint::Fall);
        }
    }
    return table;
}

void printMisses(std::ostream& out, const VerifiedDay& day)
{
    out << "\n" << dayName(day) << ": snapshots without a match\n";
    Table table({{"time"}, {"arrival", true}, {"day volume", true}, {"explanation"}});
    for (const Miss& miss : day.misses) {
        table.add({clockText(miss.timetag / 1000), std::to_string(miss.arrival), std::to_string(miss.dayVolume),
                   explanationText(miss, day.priceTick)});
    }
    table.print(out, Format::Table, false);
}

void printDivergence(std::ostream& out, const VerifiedDay& day, bool colours)
{
    if (!day.misses.empty()) {
        const Miss& first = day.misses.front();
        out << fmt::format("\n{}: the first snapshot without a match, {} at arrival {}, day volume {} shares; {}\n",
                           dayName(day), clockText(first.timetag / 1000), first.arrival, first.dayVolume,
                           explanationText(first, day.priceTick));
        sideBySide(first, day.priceTick, "book").print(out, Format::Table, colours);
    }
    if (day.wrongRead) {
        out << fmt::format("\n{}: the first newer snapshot that a read does not show, {} at arrival {}, in hands\n",
                           dayName(day), clockText(day.wrongRead->timetag / 1000), day.wrongRead->arrival);
        sideBySide(*day.wrongRead, day.priceTick, "read").print(out, Format::Table, colours);
    }
}

nlohmann::ordered_json jsonOf(const Miss& miss)
{
    return {{"arrival", miss.arrival},
            {"time", clockText(miss.timetag / 1000)},
            {"dayVolume", miss.dayVolume},
            {"explainedBy", explainedByJson(miss.explainedBy)}};
}

} // namespace

void printVerified(std::ostream& out, const std::vector<VerifiedDay>& days, bool misses, bool colours)
{
    dayTable(days).print(out, Format::Table, false);
    out << "\n";
    printPairs(out, days);
    if (std::any_of(days.begin(), days.end(), [](const VerifiedDay& day) { return day.queues.has_value(); })) {
        out << "\n";
        printQueues(out, days);
    }
    for (const VerifiedDay& day : days)
        printDivergence(out, day, colours);
    for (const VerifiedDay& day : days) {
        if (misses && !day.misses.empty())
            printMisses(out, day);
        if (misses && !day.pairs.misses.empty()) {
            out << "\n" << dayName(day) << ": pairs with other hands than their snapshot's volume step\n";
            printPairMisses(out, day.pairs);
        }
        if (misses && day.queues && !day.queues->misses.empty()) {
            out << "\n" << dayName(day) << ": rows of order queues without a match\n";
            printQueueMisses(out, *day.queues, day.priceTick);
        }
    }
}

void printVerifiedJson(std::ostream& out, const std::vector<VerifiedDay>& days, bool misses)
{
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const VerifiedDay& day : days) {
        nlohmann::ordered_json object = {{"market", day.market},
                                         {"code", day.code},
                                         {"day", day.day},
                                         {"snapshots", day.snapshots},
                                         {"rawMatches", day.rawMatches},
                                         {"missesByMarketOrders", day.missesByMarketOrders()},
                                         {"missesByOtherOrders", day.missesByOtherOrders()},
                                         {"missesUnexplained", day.missesUnexplained()},
                                         {"newer", day.newer},
                                         {"correctedMatches", day.correctedMatches},
                                         {"parked", day.parked},
                                         {"forgotten", day.forgotten}};
        addPairs(object, day.pairs);
        addQueues(object, day.queues);
        if (misses) {
            object["misses"] = nlohmann::ordered_json::array();
            for (const Miss& miss : day.misses)
                object["misses"].push_back(jsonOf(miss));
            object["pairMisses"] = pairMissesJson(day.pairs);
            object["queueMisses"] = queueMissesJson(day.queues.value_or(VerifiedQueues()));
        }
        all.push_back(std::move(object));
    }
    out << all.dump(2) << "\n";
}

} // namespace tessi
