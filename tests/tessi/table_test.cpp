#include "apps/tessi/bar.h"
#include "apps/tessi/table.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>
#include <string>
#include <vector>

namespace {

using tessi::Format;
using tessi::Table;

Table prices()
{
    Table table({{"name"}, {"price", true}});
    table.add({"平安", "9.10"}, Table::Tint::Rise);
    table.add({"a \"b\", c", "10.05"}, Table::Tint::Fall);
    table.add({"none", ""});
    return table;
}

std::string printed(const Table& table, Format format, bool colours = false)
{
    std::ostringstream out;
    table.print(out, format, colours);
    return out.str();
}

TEST(Table, shouldAlignColumnsWhenCharactersAreWide)
{
    EXPECT_EQ(printed(prices(), Format::Table), "name      price\n"
                                                "平安       9.10\n"
                                                "a \"b\", c  10.05\n"
                                                "none\n");
}

TEST(Table, shouldAlignTextsToTheRightWhenColumnWantsIt)
{
    Table table({{"name"}, {.name = "value", .alignRight = true}});
    table.add({"平安", "9.1万"});
    table.add({"all", "10"});
    EXPECT_EQ(printed(table, Format::Table), "name  value\n"
                                             "平安  9.1万\n"
                                             "all      10\n");
    EXPECT_EQ(nlohmann::json::parse(printed(table, Format::Json))[1].at("value"), "10") << "still a text";
}

TEST(Table, shouldGivePeopleATextAndProgramsANumberWhenAColumnIsForOneOfThem)
{
    Table table({{.name = "share", .forPeople = true, .alignRight = true},
                 {.name = "share", .numeric = true, .forPrograms = true},
                 {"price", true}});
    table.add({"60.0%", "0.6", "9.10"});
    EXPECT_EQ(printed(table, Format::Table), "share  price\n60.0%   9.10\n");
    EXPECT_EQ(printed(table, Format::Csv), "share,price\n0.6,9.10\n");
    EXPECT_EQ(printed(table, Format::Json), "[\n {\"share\": 0.6, \"price\": 9.10}\n]\n");
}

TEST(Table, shouldWriteASignOnlyInTablesWhenColumnWantsIt)
{
    Table table({{"change", true, true}});
    for (const char* cell : {"12", "-3", "0", ""})
        table.add({cell});
    EXPECT_EQ(printed(table, Format::Table), "change\n"
                                             "   +12\n"
                                             "    -3\n"
                                             "     0\n"
                                             "\n");
    EXPECT_EQ(printed(table, Format::Csv), "change\n12\n-3\n0\n\n");
}

TEST(Table, shouldColourRowsWhenWanted)
{
    EXPECT_EQ(printed(prices(), Format::Table, true), "name      price\n"
                                                      "\033[31m平安       9.10\033[0m\n"
                                                      "\033[32ma \"b\", c  10.05\033[0m\n"
                                                      "none\n");
}

TEST(Table, shouldDrawBehindTheCellsOnlyInTablesWhenRowHasADrawing)
{
    using Spans = std::vector<Table::Span>;
    Table table({{"name"}, {"hands", true}});
    table.add({"one", "7"}, Spans{{"##", Table::Tint::Rise}, {"", Table::Tint::Rise}, {"--", Table::Tint::Fall}});
    table.add({"two", "12"}, Spans{});
    EXPECT_EQ(printed(table, Format::Table), "name  hands\none       7  ##--\ntwo      12\n");
    EXPECT_EQ(printed(table, Format::Table, true),
              "name  hands\none       7  \033[31m##\033[0m\033[32m--\033[0m\ntwo      12\n");
    EXPECT_EQ(printed(table, Format::Csv, true), "name,hands\none,7\ntwo,12\n");
}

// "###==", the bought part and the sold one.
std::string barText(int bought, int total, int largest)
{
    std::string text;
    for (const Table::Span& span : tessi::barOf(bought, total, largest)) {
        const std::string glyph = span.tint == Table::Tint::Rise ? tessi::kBuyGlyph : tessi::kSellGlyph;
        for (std::size_t at = 0; at < span.text.size(); at += glyph.size())
            text += span.text.substr(at, glyph.size()) != glyph ? "?" : span.tint == Table::Tint::Rise ? "#" : "=";
    }
    return text;
}

TEST(Bar, shouldHaveItsPartOfFortyCellsWhenItIsDrawn)
{
    EXPECT_EQ(barText(100, 100, 100), std::string(40, '#'));
    EXPECT_EQ(barText(25, 100, 100), std::string(10, '#') + std::string(30, '='));
    EXPECT_EQ(barText(5, 10, 100), "##==");
    EXPECT_EQ(barText(0, 10, 100), "====");
    EXPECT_EQ(barText(1, 1, 1'000'000), "#") << "what was traded is seen";
    EXPECT_EQ(barText(1, 3, 1'000'000), "=") << "as the larger side";
    EXPECT_EQ(barText(0, 0, 100), "");
    EXPECT_EQ(barText(2'000'000'000, 2'000'000'000, 2'000'000'000).size(), 40U);
    // Volumes wrap in 32 bits.
    EXPECT_EQ(barText(-5, -5, 100), "");
    EXPECT_EQ(barText(-50, 50, 100), std::string(20, '='));
    EXPECT_EQ(barText(200, 200, 100), std::string(40, '#'));
}

TEST(Table, shouldQuoteWhatNeedsItWhenFormatIsCsv)
{
    EXPECT_EQ(printed(prices(), Format::Csv, true), "name,price\n"
                                                    "平安,9.10\n"
                                                    "\"a \"\"b\"\", c\",10.05\n"
                                                    "none,\n");
}

TEST(Table, shouldBeParsableWhenFormatIsJson)
{
    const std::string text = printed(prices(), Format::Json, true);
    const auto rows = nlohmann::json::parse(text);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].at("name"), "平安");
    EXPECT_EQ(rows[0].at("price"), 9.1);
    EXPECT_NE(text.find("9.10"), std::string::npos) << "the digits of the tick stay";
    EXPECT_EQ(rows[1].at("name"), "a \"b\", c");
    EXPECT_TRUE(rows[2].at("price").is_null());

    EXPECT_EQ(printed(Table({{"name"}}), Format::Json), "[]\n");
}

TEST(Table, shouldHaveKeysWithoutBlanksWhenFormatIsJson)
{
    Table table({{"left after it", true}, {"buy kind"}});
    table.add({"7", "near same"});
    EXPECT_EQ(printed(table, Format::Json), "[\n {\"left_after_it\": 7, \"buy_kind\": \"near same\"}\n]\n");
    EXPECT_EQ(printed(table, Format::Csv), "left after it,buy kind\n7,near same\n");
}

TEST(Table, shouldRefuseRowWhenCellsAreMissing)
{
    Table table({{"a"}, {"b"}});
    EXPECT_THROW(table.add({"1"}), std::logic_error);
}

} // namespace
