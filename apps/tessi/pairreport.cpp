#include "apps/tessi/pairreport.h"

#include "apps/tessi/table.h"
#include "apps/tessi/text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cctype>
#include <ostream>
#include <string>
#include <utility>

namespace tessi {

namespace {

// "whole hands" as the name of a field: "wholeHands".
std::string keyOf(PairFault fault)
{
    std::string key = nameOf(fault);
    for (auto blank = key.find(' '); blank != std::string::npos; blank = key.find(' ')) {
        key.erase(blank, 1);
        key[blank] = static_cast<char>(std::toupper(key[blank]));
    }
    return key;
}

std::string rowsText(const std::pair<int, int>& rows)
{
    return rows.first < 0 ? std::string() : fmt::format("{}-{}", rows.first, rows.second);
}

} // namespace

void printPairs(std::ostream& out, const std::vector<VerifiedDay>& days)
{
    std::vector<Table::Column> columns = {
        {"market"}, {"code"}, {"day", true}, {"pairs", true}, {"pair matches", true}, {"right rows", true}};
    for (const PairFault fault : kAllPairFaults)
        columns.push_back({nameOf(fault), true});
    Table table(columns);
    for (const VerifiedDay& day : days) {
        std::vector<std::string> cells = {day.market,
                                          day.code,
                                          std::to_string(day.day),
                                          std::to_string(day.pairs.pairs),
                                          std::to_string(day.pairs.matches),
                                          std::to_string(day.pairs.rightRows)};
        for (const PairFault fault : kAllPairFaults)
            cells.push_back(std::to_string(day.pairs.count(fault)));
        table.add(cells);
    }
    table.print(out, Format::Table, false);
}

void printPairMisses(std::ostream& out, const VerifiedPairs& pairs)
{
    Table table({{"time"}, {"step", true}, {"hands", true}, {"shares", true}, {"rows"}, {"right rows"}, {"why"}});
    for (const PairMiss& miss : pairs.misses) {
        table.add({clockText(miss.timetag / 1000), std::to_string(miss.step), std::to_string(miss.hands),
                   std::to_string(miss.shares), rowsText(miss.rows), rowsText(miss.should), nameOf(miss.fault)});
    }
    table.print(out, Format::Table, false);
}

void addPairs(nlohmann::ordered_json& day, const VerifiedPairs& pairs)
{
    day["pairs"] = pairs.pairs;
    day["pairMatches"] = pairs.matches;
    day["pairsRightRows"] = pairs.rightRows;
    for (const PairFault fault : kAllPairFaults)
        day["pairFaults"][keyOf(fault)] = pairs.count(fault);
}

nlohmann::ordered_json pairMissesJson(const VerifiedPairs& pairs)
{
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const PairMiss& miss : pairs.misses) {
        all.push_back({{"time", clockText(miss.timetag / 1000)},
                       {"step", miss.step},
                       {"hands", miss.hands},
                       {"shares", miss.shares},
                       {"rows", rowsText(miss.rows)},
                       {"rightRows", rowsText(miss.should)},
                       {"why", keyOf(miss.fault)}});
    }
    return all;
}

} // namespace tessi
