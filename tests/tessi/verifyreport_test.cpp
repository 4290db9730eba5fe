#include "apps/tessi/verifyreport.h"

#include "tests/support/records.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace {

using tessi::VerifiedDay;

VerifiedDay agreeing()
{
    VerifiedDay day;
    day.market = "SZ";
    day.code = "000001";
    day.priceTick = 0.01;
    day.day = 20240301;
    day.snapshots = 100;
    day.rawMatches = 100;
    day.newer = 90;
    day.correctedMatches = 90;
    return day;
}

tessi::Miss missAt(const std::string& clock)
{
    tessi::Miss miss;
    miss.arrival = 17;
    miss.timetag = tests::timeOf(clock);
    miss.dayVolume = 1200;
    miss.hasVolume = true;
    miss.snapshot = {{{1000, 10.00, 300}}, {{1001, 10.01, 500}, {1002, 10.02, 700}}};
    miss.book = {{{1000, 10.00, 300}, {999, 9.99, 50}}, {{1002, 10.02, 700}}};
    return miss;
}

std::string printed(const VerifiedDay& day, bool misses = false)
{
    std::ostringstream out;
    tessi::printVerified(out, {day}, misses, false);
    std::string text = out.str();
    for (int line = 0; line < 5; ++line)
        text.erase(0, text.find('\n') + 1);
    return text; // what comes below the two tables
}

// Two pairs of five do not match.
VerifiedDay withPairs()
{
    using tessi::PairFault;
    VerifiedDay day = agreeing();
    day.pairs.pairs = 5;
    day.pairs.matches = 3;
    day.pairs.rightRows = 4;
    day.pairs.misses = {{tests::timeOf("10:30:03"), {4, 6}, {4, 6}, 1290, 12, 13, PairFault::WholeHands},
                        {tests::timeOf("10:30:06"), {6, 6}, {-1, -1}, 100, 1, 0, PairFault::NoRow}};
    return day;
}

TEST(VerifyReport, shouldEndWithTheTablesWhenDayAgrees)
{
    EXPECT_EQ(printed(agreeing(), true), "");
}

TEST(VerifyReport, shouldShowBothBooksSideBySideWhenASnapshotMisses)
{
    VerifiedDay day = agreeing();
    day.misses = {missAt("10:30:03"), missAt("10:30:06")};
    day.misses[0].explainedBy = {{7, 6, false, 10.01, 500}};
    EXPECT_EQ(printed(day), "\nSZ 000001 20240301: the first snapshot without a match, 10:30:03 at arrival 17, day "
                            "volume 1200 shares; explained by resting order 7 (kind 6, sell) with 500 shares at 10.01\n"
                            "   side  price  snapshot  book\n"
                            "   ask   10.02       700   700\n"
                            "*  ask   10.01       500\n"
                            "   bid   10.00       300   300\n"
                            "*  bid    9.99              50\n");
}

TEST(VerifyReport, shouldEndWhereTheSnapshotEndsWhenTheBookGoesDeeper)
{
    VerifiedDay day = agreeing();
    day.misses = {missAt("10:30:03")};
    for (int key = 999; key > 990; --key)
        day.misses[0].snapshot.bids.push_back({key, key / 100.0, 50});
    day.misses[0].book.bids = day.misses[0].snapshot.bids;
    day.misses[0].book.bids.push_back({990, 9.90, 50});
    const std::string text = printed(day);
    EXPECT_NE(text.find("bid    9.91        50    50\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("9.90"), std::string::npos) << "what a full side cannot see is no difference: " << text;
}

TEST(VerifyReport, shouldShowWhatAReadGaveWhenANewerSnapshotWasNotShown)
{
    VerifiedDay day = agreeing();
    day.correctedMatches = 89;
    day.wrongRead = {21, tests::timeOf("10:31:00"), 12, {{{1000, 10.00, 3}}, {}}, {{{1000, 10.00, 4}}, {}}};
    EXPECT_EQ(printed(day), "\nSZ 000001 20240301: the first newer snapshot that a read does not show, 10:31:00 at "
                            "arrival 21, in hands\n"
                            "   side  price  snapshot  read\n"
                            "*  bid   10.00         3     4\n");
}

TEST(VerifyReport, shouldListEveryMissWhenAsked)
{
    VerifiedDay day = agreeing();
    day.misses = {missAt("10:30:03"), missAt("10:30:06"), missAt("10:30:09")};
    day.misses[0].explainedBy = {{7, 6, false, 10.01, 200}, {9, 7, false, 10.01, 300}};
    day.misses[2].hasVolume = false;
    const std::string text = printed(day, true);
    EXPECT_EQ(text.substr(text.rfind("\n\n") + 2),
              "SZ 000001 20240301: snapshots without a match\n"
              "time      arrival  day volume  explanation\n"
              "10:30:03       17        1200  explained by resting order 7 (kind 6, sell) with 200 shares at 10.01, "
              "order 9 (kind 7, sell) with 300 shares at 10.01\n"
              "10:30:06       17        1200  no resting order explains it\n"
              "10:30:09       17        1200  no state of the book has this day volume\n");
}

TEST(VerifyReport, shouldCountPairsByWhatExplainsThemWhenDayIsPrinted)
{
    std::ostringstream out;
    tessi::printVerified(out, {withPairs()}, false, false);
    const std::string text = out.str();
    EXPECT_EQ(text.substr(text.find("\n\n") + 2),
              "market  code         day  pairs  pair matches  right rows  whole hands  carried  odd lots  late trade  "
              "other price  no row  unknown\n"
              "SZ      000001  20240301      5             3           4            1        0         0           0  "
              "          0       1        0\n");
}

TEST(VerifyReport, shouldListEveryPairWithoutAMatchWhenAsked)
{
    EXPECT_EQ(printed(withPairs(), true),
              "\nSZ 000001 20240301: pairs with other hands than their snapshot's volume step\n"
              "time      step  hands  shares  rows  right rows  why\n"
              "10:30:03    13     12    1290  4-6   4-6         whole hands\n"
              "10:30:06     0      1     100  6-6               no row\n");
}

TEST(VerifyReport, shouldGivePairsAsFieldsWhenFormatIsJson)
{
    std::ostringstream out;
    tessi::printVerifiedJson(out, {withPairs()}, true);
    const auto json = nlohmann::json::parse(out.str()).at(0);
    EXPECT_EQ(json.at("pairs"), 5);
    EXPECT_EQ(json.at("pairMatches"), 3);
    EXPECT_EQ(json.at("pairsRightRows"), 4);
    EXPECT_EQ(json.at("pairFaults").at("wholeHands"), 1);
    EXPECT_EQ(json.at("pairFaults").at("carried"), 0);
    EXPECT_EQ(json.at("pairMisses").at(1), nlohmann::json::parse(R"({"time": "10:30:06", "step": 0, "hands": 1,
        "shares": 100, "rows": "6-6", "rightRows": "", "why": "noRow"})"));
}

TEST(VerifyReport, shouldCountMissesByWhatExplainsThemWhenFormatIsJson)
{
    VerifiedDay day = agreeing();
    day.misses = {missAt("10:30:03"), missAt("10:30:06"), missAt("10:30:09"), missAt("10:30:12")};
    day.misses[0].explainedBy = {{7, 6, false, 10.01, 500}};
    day.misses[1].explainedBy = {{7, 2, false, 10.01, 200}, {8, 1, false, 10.01, 300}};
    std::ostringstream out;
    tessi::printVerifiedJson(out, {day}, true);
    const auto json = nlohmann::json::parse(out.str()).at(0);
    EXPECT_EQ(json.at("missesByMarketOrders"), 1);
    EXPECT_EQ(json.at("missesByOtherOrders"), 1) << "one limit order is enough";
    EXPECT_EQ(json.at("missesUnexplained"), 2);
    EXPECT_EQ(json.at("misses").size(), 4u);
    EXPECT_EQ(json.at("misses").at(1).at("explainedBy").at(1).at("seq"), 8);
}

// Of eight rows four do not match.
VerifiedDay withQueues()
{
    using tessi::QueueFault;
    VerifiedDay day = agreeing();
    day.queues.emplace();
    day.queues->rows = 8;
    day.queues->matches = 4;
    tessi::QueueMiss explained;
    explained.arrival = 17;
    explained.timetag = tests::timeOf("10:30:03");
    explained.price = 10.02;
    explained.sizes = {500, 800, 100};
    explained.book = {500, 100};
    explained.rightOrders = 1;
    explained.fault = QueueFault::MarketOrders;
    explained.explainedBy = {{7, 6, false, 10.02, 800}};
    tessi::QueueMiss unknown;
    unknown.arrival = 18;
    unknown.timetag = tests::timeOf("10:30:06");
    unknown.isBid = true;
    unknown.price = 10.00;
    unknown.sizes = {300};
    unknown.fault = QueueFault::Unknown;
    tessi::QueueMiss otherState = unknown;
    otherState.sizes = otherState.book = {300, 200};
    otherState.rightOrders = 2;
    otherState.fault = QueueFault::OtherState;
    tessi::QueueMiss outOfOrder = otherState;
    outOfOrder.book = {300, 250};
    outOfOrder.rightOrders = 1;
    outOfOrder.fault = QueueFault::OutOfOrder;
    day.queues->misses = {explained, otherState, outOfOrder, unknown};
    return day;
}

TEST(VerifyReport, shouldCountTheQueuesWhenTheDayHasSome)
{
    EXPECT_EQ(
        printed(withQueues()),
        "\n"
        "market  code         day  queue rows  queue matches  market orders  other orders  other state  out of order  "
        "unexplained\n"
        "SZ      000001  20240301           8              4              1             0            1             1  "
        "          1\n");
}

TEST(VerifyReport, shouldListEveryQueueWithoutAMatchWhenAsked)
{
    const std::string text = printed(withQueues(), true);
    EXPECT_EQ(
        text.substr(text.rfind("\n\n") + 2),
        "SZ 000001 20240301: rows of order queues without a match\n"
        "time      arrival  side  price  first difference             explanation\n"
        "10:30:03       17  ask   10.02  order 2: 800, book 100       explained by resting order 7 (kind 6, sell) with "
        "800 shares at 10.02\n"
        "10:30:06       18  bid   10.00  none                         the other side is of another state\n"
        "10:30:06       18  bid   10.00  order 2: 200, book 250       the book had this queue before or behind its "
        "place\n"
        "10:30:06       18  bid   10.00  order 1: 300, book no order  no resting order explains it\n");
}

TEST(VerifyReport, shouldGiveTheQueuesInJsonWhenAsked)
{
    std::ostringstream out;
    tessi::printVerifiedJson(out, {withQueues()}, true);
    const auto day = nlohmann::json::parse(out.str()).at(0);
    EXPECT_EQ(day.at("queueRows"), 8);
    EXPECT_EQ(day.at("queueMatches"), 4);
    EXPECT_EQ(day.at("queueMissesByMarketOrders"), 1);
    EXPECT_EQ(day.at("queueMissesByOtherOrders"), 0);
    EXPECT_EQ(day.at("queueMissesOtherState"), 1);
    EXPECT_EQ(day.at("queueMissesOutOfOrder"), 1);
    EXPECT_EQ(day.at("queueMissesUnexplained"), 1);
    const auto& miss = day.at("queueMisses").at(0);
    EXPECT_EQ(miss.at("sizes").dump(), "[500,800,100]");
    EXPECT_EQ(miss.at("book").dump(), "[500,100]");
    EXPECT_EQ(miss.at("explainedBy").at(0).at("seq"), 7);
    EXPECT_EQ(day.at("queueMisses").at(1).at("why"), "other state");
    EXPECT_EQ(day.at("queueMisses").at(3).at("why"), "unexplained");
}

TEST(VerifyReport, shouldLeaveTheQueuesOpenWhenADayLacksTheStream)
{
    VerifiedDay without = agreeing();
    without.market = "SH";
    std::ostringstream out;
    tessi::printVerified(out, {withQueues(), without}, false, false);
    EXPECT_NE(out.str().find("\nSH      000001  20240301\n"), std::string::npos) << out.str();

    std::ostringstream json;
    tessi::printVerifiedJson(json, {without}, true);
    const auto day = nlohmann::json::parse(json.str()).at(0);
    for (const char* figure : {"queueRows", "queueMatches", "queueMissesUnexplained"})
        EXPECT_TRUE(day.at(figure).is_null()) << figure;
    EXPECT_EQ(day.at("queueMisses").size(), 0u);
}

} // namespace
