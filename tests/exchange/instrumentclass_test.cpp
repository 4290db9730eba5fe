#include "exchange/instrumentclass.h"

#include "exchange/instrument.h"
#include "exchange/simulationoptions.h"
#include "recording/terminalview.h"
#include "tests/exchange/snapshottext.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>

namespace exchange {

namespace {

standin::InstrumentDescription describedBy(const std::string& name)
{
    return describe(SimulationOptions::of(name), instrumentClass(name));
}

// "SH 609001 tick 0.01 limits 13.53 11.07 types 100003".
std::string text(const standin::InstrumentDescription& instrument, TickSize tick)
{
    std::string text = line(instrument.market, " ", instrument.code, " tick ", priceText(instrument.priceTick, tick));
    if (instrument.upStopPrice > 0)
        text +=
            line(" limits ", priceText(instrument.upStopPrice, tick), " ", priceText(instrument.downStopPrice, tick));
    if (!instrument.types.empty())
        text += " types";
    for (const int type : instrument.types)
        text += line(" ", type);
    return text;
}

std::string errorOf(const SimulationOptions& options)
{
    try {
        options.check();
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "";
}

} // namespace

TEST(InstrumentClasses, shouldDescribeTheirInstrumentWhenNothingElseIsAskedFor)
{
    const std::pair<const char*, const char*> rows[] = {
        {"stock", "SZ 009001 tick 0.01 limits 46.75 38.25 types 100003"},
        {"sh-stock", "SH 609001 tick 0.01 limits 13.53 11.07 types 100003"},
        {"after-hours-a", "SH 689001 tick 0.01 limits 68.16 45.44 types 277 100003"},
        {"after-hours-b", "SZ 309001 tick 0.01 limits 34.08 22.72 types 10006 100003"},
        {"registered-a", "SZ 309002 tick 0.01 limits 23.52 15.68 types 10004 100003"},
        {"registered-b", "SH 609002 tick 0.01 limits 9.64 7.88 types 101 100003"},
        {"registered-c", "SZ 009002 tick 0.01 limits 16.72 13.68 types 196 100003"},
        {"gdr", "SH 609003 tick 0.01 limits 15.84 12.96 types 100003"},
        {"hk-stock", "HK 99001 tick 0.05"},
        {"fund", "SZ 199001 tick 0.001 limits 1.375 1.125 types 100013"},
        {"bond", "SZ 109901 tick 0.001 limits 111.375 91.125 types 100016"},
        {"company-bond", "SZ 119901 tick 0.001 limits 108.570 88.830 types 100005 100017"},
        {"convertible", "SZ 129901 tick 0.001 limits 142.320 94.880 types 135 100005 100017"},
        {"convertible-b", "SZ 129902 tick 0.001 limits 125.040 83.360 types 10019 100005 100017"},
        {"index", "SH 009900 tick 0.01"},
        {"cicc-index", "CICC CI9001 tick 0.01"},
        {"future", "IF IF2406 tick 0.2 limits 3929.0 3214.6"},
        {"commodity-future", "SHFE SM2410 tick 1 limits 4028 3296"},
        {"option", "SHO 10009901 tick 0.0001 limits 0.2258 0.0753"},
    };
    ASSERT_EQ(std::size(rows), instrumentClasses().size());
    std::set<std::string> codes;
    for (const auto& [name, expected] : rows) {
        EXPECT_EQ(text(describedBy(name), instrumentClass(name).tick), expected) << name;
        EXPECT_TRUE(codes.insert(describedBy(name).code).second) << name << " has another class's code";
        EXPECT_EQ(errorOf(SimulationOptions::of(name)), "") << name;
    }
}

TEST(InstrumentClasses, shouldGiveThePlainStockWhenNoClassIsNamed)
{
    EXPECT_EQ(instrumentClasses().front().name, "stock");
    const SimulationOptions named = SimulationOptions::of("stock");
    const SimulationOptions plain;
    EXPECT_EQ(plain.instrumentClass, "stock");
    EXPECT_EQ(plain.code, named.code);
    EXPECT_EQ(plain.name, named.name);
    EXPECT_EQ(plain.lastClose, named.lastClose);
}

// A day's hands are told by market and types alone, the lot stands beside them.
TEST(InstrumentClasses, shouldTradeInTheHandsOfTheirDayWhenTheyHaveNoBoardLots)
{
    for (const InstrumentClass& row : instrumentClasses()) {
        const bool hasBoardLots = row.market == "HK";
        EXPECT_EQ(recording::sharesPerHand(describedBy(row.name)), hasBoardLots ? 1 : row.lot) << row.name;
    }
}

TEST(InstrumentClasses, shouldTellTheTerminalWhatSetsTheClassApart)
{
    for (const char* name : {"bond", "company-bond", "convertible", "convertible-b"}) {
        const auto bond = describedBy(name);
        EXPECT_EQ(bond.classBits >> 20 & 63U, 4U) << name;
        EXPECT_GT(bond.doubleFields.at(3003), 0) << name;
        EXPECT_NE(bond.name.find("债"), std::string::npos) << name;
        std::string unspaced = bond.name;
        std::erase(unspaced, ' ');
        EXPECT_EQ(unspaced.find("转债") != std::string::npos, std::string(name).starts_with("convertible")) << name;
    }
    for (const char* name : {"registered-a", "registered-b", "registered-c", "after-hours-a", "after-hours-b"})
        EXPECT_TRUE(describedBy(name).listingFlags >> 19 & 1) << name;
    EXPECT_EQ(describedBy("stock").listingFlags, 0);
    EXPECT_EQ(describedBy("after-hours-a").intFields.at(2022), 420);
    EXPECT_EQ(describedBy("after-hours-a").doubleFields.at(3000), 0.85);
    EXPECT_EQ(describedBy("after-hours-b").intFields.at(2022), 360);
    EXPECT_EQ(describedBy("after-hours-b").listingFlags >> 20 & 1, 1);
    EXPECT_EQ(describedBy("registered-a").intFields.at(2022), 250);
    EXPECT_TRUE(describedBy("index").isIndex);
    EXPECT_FALSE(describedBy("cicc-index").isIndex) << "its market alone makes it one";
    EXPECT_EQ(describedBy("index").doubleFields.count(3015), 0U);
    EXPECT_EQ(describedBy("future").doubleFields, (std::map<int, double>{{3002, 3571.8}}));
    EXPECT_EQ(describedBy("fund").doubleFields.at(3016), 1.8e9);
}

TEST(InstrumentClasses, shouldBringTheReceiptAlongWhenTheStockHasOne)
{
    SimulationOptions options = SimulationOptions::of("gdr");
    for (const auto& [lastClose, close] : {std::pair(14.40, 20.60), std::pair(36.00, 51.50)}) {
        options.lastClose = lastClose;
        const auto others = related(options, instrumentClass("gdr"));
        ASSERT_EQ(others.size(), 1U);
        const standin::InstrumentDescription& receipt = others.front();
        EXPECT_EQ(receipt.market, "LSE");
        EXPECT_EQ(receipt.code, describe(options, instrumentClass("gdr")).gdrCode);
        EXPECT_EQ(receipt.intFields, (std::map<int, int>{{2008, 1}, {2009, 10}}));
        EXPECT_EQ(receipt.doubleFields, (std::map<int, double>{{3002, close}, {3011, 720}}));
        // What the receipt stands for, in yuan, over the last close.
        const double premium = 720 * (close * 1 / 10) / 100 / lastClose - 1;
        EXPECT_NEAR(premium, 0.03, 0.001) << lastClose;
    }
    for (const InstrumentClass& row : instrumentClasses()) {
        if (row.name != "gdr") {
            EXPECT_TRUE(related(SimulationOptions::of(row.name), row).empty()) << row.name;
            EXPECT_EQ(describedBy(row.name).gdrCode, "") << row.name;
        }
    }
}

TEST(InstrumentClasses, shouldNameTheClassWhenThePriceIsNoneOfIts)
{
    struct Row {
        const char* name;
        double lastClose;
        const char* message;
    };
    const Row rows[] = {
        {"future", 3560.1, "lastClose must be a whole number of ticks of 0.2 for class future"},
        {"future", 19.8, "lastClose must be from 20.0 to 100000.0 for class future"},
        {"commodity-future", 3650.5, "lastClose must be a whole number of ticks of 1 for class commodity-future"},
        {"option", 50.0001, "lastClose must be from 0.0100 to 50.0000 for class option"},
        {"fund", 1.2505, "lastClose must be a whole number of ticks of 0.001 for class fund"},
        {"hk-stock", 62.51, "lastClose must be a whole number of ticks of 0.05 for class hk-stock"},
        {"stock", 5000.01, "lastClose must be from 1.00 to 5000.00 for class stock"},
        {"option", 50.0, ""},
        {"hk-stock", 5.0, ""},
    };
    for (const Row& row : rows) {
        SimulationOptions options = SimulationOptions::of(row.name);
        options.lastClose = row.lastClose;
        EXPECT_EQ(errorOf(options), row.message);
    }
}

TEST(InstrumentClasses, shouldListTheNamesWhenThereIsNoneOfTheName)
{
    EXPECT_EQ(findInstrumentClass("Stock"), nullptr);
    EXPECT_THROW(SimulationOptions::of(""), std::invalid_argument);
    SimulationOptions options;
    options.instrumentClass = "shares";
    EXPECT_TRUE(errorOf(options).starts_with("no instrument class \"shares\"; there are stock, sh-stock, "))
        << errorOf(options);
}

} // namespace exchange
