#include "recording/dayfolder.h"
#include "recording/errors.h"
#include "recording/textfile.h"
#include "tests/recording/builders.h"

#include <gtest/gtest.h>

#include <functional>

using namespace recording;
using namespace recording_test;

namespace {

const std::string kOrders = "arrival,timetag,price,volume,seq,orderKind,bsFlag\n"
                            "0,1704153601000,10.01,300,5,1,1\n"
                            "1,1704153601010,10.02,200,6,1,1\n";
const std::string kTrades = "arrival,timetag,price,volume,buySeq,sellSeq,tradeFlag,transKind\n"
                            "2,1704153601020,10.02,200,7,6,1,0\n";

// A good day to spoil: orders, trades and queues.
void writeGoodDay(const TempFolder& folder)
{
    auto queue = std::make_shared<quoter::LevelOrderData>();
    queue->timetag = kMorning + 1030;
    queue->bidQueue = {100, 200};
    writeDay(DayBuilder()
                 .order(1000, 10.01, 300, 5)
                 .order(1010, 10.02, 200, 6)
                 .trade(1020, 10.02, 200, 7, 6)
                 .add(Stream::Queues, queue)
                 .build(),
             folder / "day", Compression::None);
}

ReadError errorOf(const std::filesystem::path& folder)
{
    try {
        readDay(folder);
    } catch (const ReadError& error) {
        return error;
    }
    return ReadError({"none"}, "nothing was thrown");
}

struct Spoilt {
    std::string file;
    std::string from;
    std::string to;
    std::string message;
};

void expectError(const Spoilt& spoilt)
{
    const TempFolder folder;
    writeGoodDay(folder);
    ASSERT_NO_THROW(readDay(folder / "day"));
    folder.write("day/" + spoilt.file, replaced(fileBytes(folder / ("day/" + spoilt.file)), spoilt.from, spoilt.to));
    EXPECT_EQ(errorOf(folder / "day").what(), (folder / "day/").string() + spoilt.message);
}

} // namespace

TEST(ReadErrors, shouldNameFileLineAndColumnWhenAFieldIsMalformed)
{
    const Spoilt cases[] = {
        {"orders.csv", ",300,", ",12x,", "orders.csv:2: column volume (4): not a number: \"12x\""},
        {"orders.csv", ",300,", ",,", "orders.csv:2: column volume (4): empty field"},
        {"orders.csv", ",300,", ", 300,", "orders.csv:2: column volume (4): not a number: \" 300\""},
        {"orders.csv", ",300,", ",+300,", "orders.csv:2: column volume (4): not a number: \"+300\""},
        {"orders.csv", ",300,", ",300.0,", "orders.csv:2: column volume (4): not a number: \"300.0\""},
        {"orders.csv", ",300,", ",9223372036854775808,",
         "orders.csv:2: column volume (4): out of range: \"9223372036854775808\""},
        {"orders.csv", ",5,1,1\n", ",5,2147483648,1\n",
         "orders.csv:2: column orderKind (6): out of range: \"2147483648\""},
        {"orders.csv", "10.01", "1e999", "orders.csv:2: column price (3): out of range: \"1e999\""},
        {"orders.csv", "10.01", "nan", "orders.csv:2: column price (3): not finite: \"nan\""},
        {"orders.csv", "10.01", "-inf", "orders.csv:2: column price (3): not finite: \"-inf\""},
        {"orders.csv", ",300,", ",-300,", "orders.csv:2: column volume (4): a volume below 0: \"-300\""},
        {"queues.csv", "100|200", "100|-200", "queues.csv:2: column bidQueue (5): a volume below 0: \"100|-200\""},
        {"orders.csv", "10.01", "10.01.", "orders.csv:2: column price (3): not a number: \"10.01.\""},
        {"orders.csv", "10.01", "0x1p3", "orders.csv:2: column price (3): not a number: \"0x1p3\""},
        {"orders.csv", "10.01", std::string("10\0", 3), "orders.csv:2: column price (3): not a number: \"10\\x00\""},
        {"orders.csv", "10.01", "\xE4\xB8\x87", "orders.csv:2: column price (3): not a number: \"\\xe4\\xb8\\x87\""},
        {"orders.csv", "6,1,1\n", "6,1,\n", "orders.csv:3: column bsFlag (7): empty field"},
        {"orders.csv", "6,1,1\n", "6,1,1\r\n", "orders.csv:3: column bsFlag (7): not a number: \"1\\x0d\""},
        {"orders.csv", "\n0,", "\n-1,", "orders.csv:2: column arrival (1): not a number: \"-1\""},
        {"orders.csv", "\n0,", "\n,", "orders.csv:2: column arrival (1): empty field"},
        {"queues.csv", "100|200", "100|", "queues.csv:2: column bidQueue (5): not a number: \"100|\""},
        {"queues.csv", "100|200", "4294967296|100",
         "queues.csv:2: column bidQueue (5): out of range: \"4294967296|100\""},
        {"queues.csv", "100|200", "|100", "queues.csv:2: column bidQueue (5): not a number: \"|100\""},
        {"queues.csv", "100|200", "100|4294967296",
         "queues.csv:2: column bidQueue (5): out of range: \"100|4294967296\""},
    };
    for (const Spoilt& spoilt : cases) {
        SCOPED_TRACE(spoilt.message);
        expectError(spoilt);
    }
}

TEST(ReadErrors, shouldNameTheLineWhenItsShapeIsWrong)
{
    const Spoilt cases[] = {
        {"orders.csv", "5,1,1\n", "5,1\n", "orders.csv:2: 6 columns where the header has 7"},
        {"orders.csv", "5,1,1\n", "5,1,1,\n", "orders.csv:2: 8 columns where the header has 7"},
        {"orders.csv", "5,1,1\n", "5,1,1\n\n", "orders.csv:3: 1 columns where the header has 7"},
        {"orders.csv", "6,1,1\n", "6,1,1", "orders.csv:3: the line has no end: the file is cut"},
        {"orders.csv", "6,1,1\n", "6", "orders.csv:3: the line has no end: the file is cut"},
        {"orders.csv", kOrders, "arrival,timetag", "orders.csv:1: the line has no end: the file is cut"},
    };
    for (const Spoilt& spoilt : cases) {
        SCOPED_TRACE(spoilt.message);
        expectError(spoilt);
    }
}

TEST(ReadErrors, shouldNameTheColumnWhenTheHeaderIsNotTheStreams)
{
    const Spoilt cases[] = {
        {"orders.csv", "arrival,timetag", "timetag,arrival",
         "orders.csv:1: the first column must be arrival, not \"timetag\""},
        {"orders.csv", "volume", "Volume", "orders.csv:1: unknown column \"Volume\" at position 4"},
        {"orders.csv", ",bsFlag", ",bsFlag,", "orders.csv:1: unknown column \"\" at position 8"},
        {"orders.csv", ",bsFlag\n", ",bsFlag\r\n", "orders.csv:1: unknown column \"bsFlag\\x0d\" at position 7"},
        {"orders.csv", ",bsFlag", "", "orders.csv:1: column bsFlag is missing"},
        {"orders.csv", ",bsFlag", ",seq", "orders.csv:1: column seq stands twice"},
        {"orders.csv", kOrders, kTrades, "orders.csv:1: unknown column \"buySeq\" at position 5"},
    };
    for (const Spoilt& spoilt : cases) {
        SCOPED_TRACE(spoilt.message);
        expectError(spoilt);
    }
}

TEST(ReadErrors, shouldNameThePlaceWhenArrivalsDoNotMakeOneDay)
{
    const Spoilt cases[] = {
        {"orders.csv", "\n1,", "\n0,", "orders.csv:3: column arrival (1): 0 does not rise: the line before has 0"},
        {"trades.csv", "\n2,", "\n1,", "trades.csv:2: column arrival (1): 1 stands in orders too"},
        {"trades.csv", "\n2,", "\n4,",
         "trades.csv:2: column arrival (1): 4 in a day of 4 records: a position before it is missing"},
        {"trades.csv", "\n2,", "\n99999999999999999999,",
         "trades.csv:2: column arrival (1): out of range: \"99999999999999999999\""},
    };
    for (const Spoilt& spoilt : cases) {
        SCOPED_TRACE(spoilt.message);
        expectError(spoilt);
    }
}

TEST(ReadErrors, shouldNameTheTimeStampWhenItIsOfAnotherDay)
{
    const Spoilt cases[] = {
        {"orders.csv", "1704153601010", "1704211200000",
         "orders.csv:3: column timetag (2): 1704211200000 is no time of the trading day 20240102"},
        {"queues.csv", "1704153601030", "1704124799999",
         "queues.csv:2: column timetag (2): 1704124799999 is no time of the trading day 20240102"},
        {"orders.csv", kOrders,
         replaced(replaced(kOrders, "timetag,price", "price,timetag"), "1704153601000,10.01", "10.01,7"),
         "orders.csv:2: column timetag (3): 7 is no time of the trading day 20240102"},
    };
    for (const Spoilt& spoilt : cases) {
        SCOPED_TRACE(spoilt.message);
        expectError(spoilt);
    }
    for (const char* edge : {"1704124800000", "1704211199999"}) {
        const TempFolder folder;
        writeGoodDay(folder);
        folder.write("day/orders.csv", replaced(kOrders, "1704153601010", edge));
        EXPECT_NO_THROW(readDay(folder / "day")) << edge;
    }
}

TEST(ReadErrors, shouldNameTheFieldWhenTheInstrumentFileIsWrong)
{
    const Spoilt cases[] = {
        {"instrument.json", "20240102", "20240230",
         "instrument.json: field \"tradingDay\": not a date from 19700102 to 20380118: 20240230"},
        {"instrument.json", "20240102", "19700101",
         "instrument.json: field \"tradingDay\": not a date from 19700102 to 20380118: 19700101"},
        {"instrument.json", "20240102", "20380119",
         "instrument.json: field \"tradingDay\": not a date from 19700102 to 20380118: 20380119"},
        {"instrument.json", "20240102", "20240102,\n \"tradingDay\": 20240102",
         "instrument.json:28:2: field \"tradingDay\" stands twice"},
        {"instrument.json", "20240102", "\"20240102\"",
         "instrument.json: field \"tradingDay\": not a date from 19700102 to 20380118: \"20240102\""},
        {"instrument.json", "20240102", "9223372036854775808",
         "instrument.json: field \"tradingDay\": not a date from 19700102 to 20380118: 9223372036854775808"},
        {"instrument.json", "20240102", "-9223372036854775807",
         "instrument.json: field \"tradingDay\": not a date from 19700102 to 20380118: -9223372036854775807"},
        {"instrument.json", "20240102", "20240102.0",
         "instrument.json: field \"tradingDay\": not a date from 19700102 to 20380118: 20240102.0"},
        {"instrument.json", "\"tradingDay\"", "\"tradingday\"", "instrument.json: unknown field \"tradingday\""},
        {"instrument.json", "\"orders\": 2", "\"orders\": -2",
         "instrument.json: field \"rows\": not a number of rows: \"orders\": -2"},
        {"instrument.json", "\"orders\": 2", "\"counts\": 0, \"orders\": 2",
         "instrument.json: field \"rows\" announces counts, of which there is no file"},
        {"instrument.json", "\"orders\": 2,", "",
         "instrument.json: field \"rows\" lacks the stream orders, of which there is a file"},
        {"instrument.json", "\"rows\"", "\"related\": {}, \"rows\"",
         "instrument.json: field \"related\": not an array"},
        {"instrument.json", "\"rows\"", "\"related\": [7], \"rows\"",
         "instrument.json: field \"related\": instrument 1: an instrument must be an object"},
        {"instrument.json", "\"rows\"",
         R"("related": [{"market": "LSE", "code": "A"}, {"market": "LSE", "name": "B"}], "rows")",
         "instrument.json: field \"related\": instrument 2: field \"code\" is missing"},
        {"instrument.json", "\"rows\"",
         R"("related": [{"market": "LSE", "code": "A"}, {"market": "LSE", "code": "A"}], "rows")",
         "instrument.json: field \"related\": instrument 2: LSE A stands twice"},
        {"instrument.json", "\"rows\"", R"("related": [{"market": "SZ", "code": "000001"}], "rows")",
         "instrument.json: field \"related\": instrument 1: SZ 000001 stands twice"},
    };
    for (const Spoilt& spoilt : cases) {
        SCOPED_TRACE(spoilt.message);
        expectError(spoilt);
    }
}

TEST(ReadErrors, shouldNameTheInstrumentFileWhenItIsNoJsonOrIncomplete)
{
    const std::string contents[] = {
        "",
        "{",
        "[]",
        "null",
        "{\"tradingDay\": 20240102}",
        "{\"tradingDay\": 20240102, \"instrument\": {}}",
        "{\"tradingDay\": 20240102, \"instrument\": {\"market\": \"SZ\", \"code\": \"\xFF\"}}"};
    for (const std::string& content : contents) {
        const TempFolder folder;
        writeGoodDay(folder);
        folder.write("day/instrument.json", content);
        const ReadError error = errorOf(folder / "day");
        EXPECT_EQ(error.place.file, folder / "day/instrument.json") << content;
        EXPECT_FALSE(error.fault.empty());
    }
}

TEST(ReadErrors, shouldNameLineAndColumnWhenTheInstrumentFileIsNoJson)
{
    const std::pair<std::string, std::string> contents[] = {
        {"{\n  \"tradingDay\": ,\n}", ":2:17: syntax error"},
        {"{\"tradingDay\": 20240102,\n  \"instrument\": {\"code\": \"1\", \"code\": \"2\"}}",
         ":2:31: field \"code\" stands twice"},
        {"{\"tradingDay\": 1e999}", ":1:21: number overflow"}};
    for (const auto& [content, message] : contents) {
        const TempFolder folder;
        writeGoodDay(folder);
        folder.write("day/instrument.json", content);
        const std::string what = errorOf(folder / "day").what();
        EXPECT_TRUE(what.starts_with((folder / "day/instrument.json").string() + message)) << what;
        EXPECT_EQ(what.find("json.exception"), std::string::npos) << what;
    }
}

TEST(ReadErrors, shouldSayWhatIsMissingWhenFolderOrInstrumentFileIsAbsent)
{
    const TempFolder folder;
    EXPECT_EQ(errorOf(folder / "nowhere").what(), (folder / "nowhere").string() + ": No such file or directory");

    writeGoodDay(folder);
    std::filesystem::remove(folder / "day/instrument.json");
    EXPECT_EQ(errorOf(folder / "day").what(),
              (folder / "day/").string() + "instrument.json: No such file or directory");
}

TEST(ReadErrors, shouldReportTheMissingHeaderWhenAFileIsEmpty)
{
    const TempFolder folder;
    writeGoodDay(folder);
    folder.write("day/counts.csv", "");
    EXPECT_EQ(errorOf(folder / "day").what(),
              (folder / "day/").string() + "counts.csv: the file is empty, it has not even a header");

    std::filesystem::remove(folder / "day/counts.csv");
    folder.write("day/counts.csv.zst", compressed(""));
    EXPECT_EQ(errorOf(folder / "day").what(),
              (folder / "day/").string() + "counts.csv.zst: the file is empty, it has not even a header");
}

TEST(ReadErrors, shouldNoticeMissingRowsWhenAFileWasCutAtALineEnd)
{
    expectError({"orders.csv", "1,1704153601010,10.02,200,6,1,1\n", "",
                 "orders.csv: 1 rows where instrument.json announces 2"});
}

TEST(ReadErrors, shouldReadTheDayWhenItIsHandMadeWithoutRowCounts)
{
    const TempFolder folder;
    folder.write("day/instrument.json",
                 "{\"tradingDay\": 20240102, \"instrument\": {\"market\": \"SZ\", \"code\": \"000001\"}}");
    folder.write("day/orders.csv", kOrders);
    folder.write("day/notes.txt", "a file of another kind");
    EXPECT_EQ(readDay(folder / "day").events.size(), 2u);
}

TEST(ReadErrors, shouldNameTheFolderWhenItHoldsNoStream)
{
    const TempFolder folder;
    folder.write("day/instrument.json",
                 "{\"tradingDay\": 20240102, \"instrument\": {\"market\": \"SZ\", \"code\": \"000001\"}}");
    EXPECT_EQ(errorOf(folder / "day").what(), (folder / "day").string() + ": the folder holds no stream of the day");
}

TEST(ReadErrors, shouldNameTheFileWhenItOnlyLooksLikeAStream)
{
    const TempFolder folder;
    writeGoodDay(folder);
    folder.write("day/order.csv", kOrders);
    EXPECT_EQ(errorOf(folder / "day").what(),
              (folder / "day/").string() + "order.csv: no stream of a day has this name");
}

TEST(ReadErrors, shouldNameBothFilesWhenAStreamStandsTwice)
{
    const TempFolder folder;
    writeGoodDay(folder);
    folder.write("day/orders.csv.zst", compressed(kOrders));
    EXPECT_EQ(errorOf(folder / "day").what(),
              (folder / "day/").string() + "orders.csv.zst: the stream stands here and in orders.csv");
}

TEST(ReadErrors, shouldRefuseACompressedFileWhenItIsCutAnywhere)
{
    const TempFolder folder;
    writeGoodDay(folder);
    std::filesystem::remove(folder / "day/orders.csv");
    const std::string packed = compressed(kOrders);
    folder.write("day/orders.csv.zst", packed);
    ASSERT_NO_THROW(readDay(folder / "day"));
    for (std::size_t size = 0; size < packed.size(); ++size) {
        folder.write("day/orders.csv.zst", packed.substr(0, size));
        EXPECT_THROW(readDay(folder / "day"), ReadError) << size;
    }
    folder.write("day/orders.csv.zst", packed.substr(0, packed.size() / 2));
    EXPECT_EQ(errorOf(folder / "day").what(),
              (folder / "day/").string() +
                  "orders.csv.zst: the compressed data is cut: the file ends in the middle of it");
}

TEST(ReadErrors, shouldRefuseACompressedFileWhenItsDataIsCorrupt)
{
    const TempFolder folder;
    writeGoodDay(folder);
    std::filesystem::remove(folder / "day/orders.csv");
    const std::string packed = compressed(kOrders);
    for (std::size_t at = 0; at < packed.size(); ++at) {
        std::string spoilt = packed;
        spoilt[at] = static_cast<char>(spoilt[at] ^ 0x08);
        folder.write("day/orders.csv.zst", spoilt);
        EXPECT_THROW(readDay(folder / "day"), ReadError) << at;
    }
    folder.write("day/orders.csv.zst", kOrders);
    EXPECT_EQ(errorOf(folder / "day").what(),
              (folder / "day/").string() + "orders.csv.zst: the compressed data is corrupt: Unknown frame descriptor");
    folder.write("day/orders.csv.zst", packed + "more");
    EXPECT_EQ(errorOf(folder / "day").what(),
              (folder / "day/").string() + "orders.csv.zst: 4 bytes stand after the compressed data");
    folder.write("day/orders.csv.zst", packed + packed);
    EXPECT_THROW(readDay(folder / "day"), ReadError);
}

TEST(ReadErrors, shouldCarryThePlaceInItsMembersWhenAFieldIsMalformed)
{
    const TempFolder folder;
    writeGoodDay(folder);
    folder.write("day/orders.csv", replaced(kOrders, ",200,", ",two,"));
    const ReadError error = errorOf(folder / "day");
    EXPECT_EQ(error.place.file, folder / "day/orders.csv");
    EXPECT_EQ(error.place.line, 3u);
    EXPECT_EQ(error.place.column, "volume");
    EXPECT_EQ(error.place.position, 4u);
    EXPECT_EQ(error.fault, "not a number: \"two\"");
}

TEST(ReadErrors, shouldCutTheTextInTheMessageWhenItIsLong)
{
    expectError({"orders.csv", ",300,", "," + std::string(100, 'x') + ",",
                 "orders.csv:2: column volume (4): not a number: \"" + std::string(40, 'x') + "...\""});
}

TEST(ReadErrors, shouldNameTheFileWhenAFolderStandsInItsPlace)
{
    const TempFolder folder;
    writeGoodDay(folder);
    std::filesystem::create_directory(folder / "day/counts.csv");
    EXPECT_EQ(errorOf(folder / "day").what(), (folder / "day/").string() + "counts.csv: Is a directory");
}
