#include "tests/tessi/command.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

namespace {

using namespace tests;

// Each case spoils one thing of a good day.
struct Case {
    const char* what;
    bool zstd;
    std::function<void(const std::string& day)> spoil;
    std::vector<std::string> named; // what the message must name
};

// Replaces the cell of a stream's column in one line, counted from 1 with the header.
void setCell(const std::string& file, int lineNumber, int column, const std::string& cell)
{
    const std::string text = readFile(file);
    std::size_t from = 0;
    for (int line = 1; line < lineNumber; ++line)
        from = text.find('\n', from) + 1;
    for (int c = 1; c < column; ++c)
        from = text.find(',', from) + 1;
    const std::size_t to = text.find_first_of(",\n", from);
    writeFile(file, text.substr(0, from) + cell + text.substr(to));
}

// Takes a column, counted from 1, out of every line.
void dropColumn(const std::string& file, int column)
{
    std::istringstream lines(readFile(file));
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        std::size_t from = 0;
        for (int c = 1; c < column; ++c)
            from = line.find(',', from) + 1;
        text += line.erase(from, line.find(',', from) + 1 - from) + "\n";
    }
    writeFile(file, text);
}

const std::vector<Case>& cases()
{
    static const std::vector<Case> all = {
        {"letters in a number",
         false,
         [](const std::string& day) { setCell(day + "/orders.csv", 17, 4, "12x"); },
         {"orders.csv:17: column volume (4)", "12x"}},
        {"an empty field",
         false,
         [](const std::string& day) { setCell(day + "/trades.csv", 3, 2, ""); },
         {"trades.csv:3: column timetag (2)"}},
        {"a number beyond its width",
         false,
         [](const std::string& day) { setCell(day + "/trades.csv", 4, 5, "99999999999"); },
         {"trades.csv:4: column buySeq (5)"}},
        {"a NUL in a line",
         false,
         [](const std::string& day) { setCell(day + "/orders.csv", 5, 3, std::string("1\0002", 3)); },
         {"orders.csv:5: column price (3)"}},
        {"a line cut short",
         false,
         [](const std::string& day) {
             const std::string text = readFile(day + "/quotes.csv");
             writeFile(day + "/quotes.csv", text.substr(0, text.size() - 10));
         },
         {"quotes.csv:", "the line has no end"}},
        {"a line too many",
         false,
         [](const std::string& day) {
             writeFile(day + "/orders.csv", readFile(day + "/orders.csv") + "1,2,3,4,5,6,7\n");
         },
         {"orders.csv:", "column arrival (1)"}},
        {"a missing column",
         false,
         [](const std::string& day) { dropColumn(day + "/orders.csv", 3); },
         {"orders.csv:1:", "price"}},
        {"an unknown column",
         false,
         [](const std::string& day) {
             std::string text = readFile(day + "/orders.csv");
             writeFile(day + "/orders.csv", text.replace(text.find("price"), 5, "prize"));
         },
         {"orders.csv:1:", "\"prize\" at position 3"}},
        {"an empty file", false, [](const std::string& day) { writeFile(day + "/trades.csv", ""); }, {"trades.csv"}},
        {"a compressed file cut in half",
         true,
         [](const std::string& day) {
             const std::string bytes = readFile(day + "/orders.csv.zst");
             writeFile(day + "/orders.csv.zst", bytes.substr(0, bytes.size() / 2));
         },
         {"orders.csv.zst"}},
        {"no instrument.json",
         false,
         [](const std::string& day) { std::filesystem::remove(day + "/instrument.json"); },
         {"instrument.json"}},
        {"no JSON in instrument.json",
         false,
         [](const std::string& day) { writeFile(day + "/instrument.json", "{\n  \"tradingDay\": ,\n"); },
         {"instrument.json:2:"}},
        {"no such folder", false, [](const std::string& day) { std::filesystem::remove_all(day); }, {"day"}},
    };
    return all;
}

TEST(BadInput, shouldNameFileLineAndColumnWhenDayIsSpoilt)
{
    const Scratch good;
    ASSERT_EQ(good.tessi("simulate plain --orders 100").exitCode, 0);
    ASSERT_EQ(good.tessi("simulate packed --orders 100 --zstd").exitCode, 0);
    for (const Case& c : cases()) {
        SCOPED_TRACE(c.what);
        const Scratch scratch;
        std::filesystem::copy(good.path(c.zstd ? "packed" : "plain"), scratch.path("day"));
        c.spoil(scratch.path("day"));
        for (const char* panel : {"", " --panel ticks"}) {
            const Outcome run = scratch.tessi(std::string("replay day") + panel);
            EXPECT_EQ(run.exitCode, 3);
            EXPECT_EQ(run.out, "");
            for (const std::string& name : c.named)
                EXPECT_NE(run.err.find(name), std::string::npos) << run.err << " does not name " << name;
        }
    }
}

TEST(BadInput, shouldFailWhenOutputDoesNotFitOnTheDisk)
{
    const Scratch scratch;
    ASSERT_EQ(scratch.tessi("simulate day --orders 100").exitCode, 0);
    for (const char* arguments : {"--help", "replay --help", "--version", "replay day", "replay day --panel ticks",
                                  "replay day --panel ticks --format csv", "replay day --panel ticks --format json"}) {
        const Outcome run = scratch.tessi(std::string(arguments) + " >/dev/full");
        EXPECT_EQ(run.exitCode, 3) << arguments;
        EXPECT_NE(run.err.find("standard output"), std::string::npos) << run.err;
    }
}

// A limit on the size of files stands for a full disk.
TEST(BadInput, shouldLeaveNothingBehindWhenDayDoesNotFitOnTheDisk)
{
    const Scratch sources;
    std::string orders = "万得代码,交易所代码,自然日,时间,委托编号,交易所委托号,委托类型,委托代码,委托价格,委托数量,\n";
    for (int i = 1; i <= 2000; ++i)
        orders += "000001.SZ,000001,20170103,91500000,0," + std::to_string(i) + ",0,B,90300,100,\n";
    writeFile(sources.path("orders.csv"), orders);
    const Scratch scratch;
    for (const std::string& arguments : std::vector<std::string>{std::string("simulate day --orders 400"),
                                                                 std::string("simulate day --orders 400 --zstd"),
                                                                 "import '" + sources.folder().string() + "' day"}) {
        const Outcome run = scratch.tessi(arguments, "ulimit -f 4;");
        EXPECT_EQ(run.exitCode, 3) << arguments << "\n" << run.err;
        EXPECT_NE(run.err.find("day/"), std::string::npos) << run.err;
        EXPECT_NE(run.err.find(".csv"), std::string::npos) << run.err;
        EXPECT_TRUE(std::filesystem::is_empty(scratch.folder())) << "nothing half-written is left behind";
    }
}

TEST(BadInput, shouldNotTouchTheFolderWhenItExists)
{
    const Scratch scratch;
    std::filesystem::create_directory(scratch.path("day"));
    writeFile(scratch.path("day/mine.txt"), "mine");
    const Outcome run = scratch.tessi("simulate day --orders 100");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_NE(run.err.find("day"), std::string::npos);
    EXPECT_EQ(readFile(scratch.path("day/mine.txt")), "mine");
    EXPECT_FALSE(std::filesystem::exists(scratch.path("day/orders.csv")));
}

TEST(BadInput, shouldFailWhenThereIsNothingToImport)
{
    const Scratch scratch;
    std::filesystem::create_directory(scratch.path("empty"));
    std::filesystem::create_directory(scratch.path("unknown"));
    writeFile(scratch.path("unknown/orders.csv"), "a,b,c\n1,2,3\n");
    const std::pair<const char*, const char*> sources[] = {
        {"absent", "absent"}, {"empty", "empty"}, {"unknown", "orders.csv:1"}};
    for (const auto& [source, named] : sources) {
        const Outcome run = scratch.tessi(std::string("import ") + source + " day");
        EXPECT_EQ(run.exitCode, 3) << source;
        EXPECT_NE(run.err.find(named), std::string::npos) << run.err;
        EXPECT_FALSE(std::filesystem::exists(scratch.path("day")));
    }
}

} // namespace
