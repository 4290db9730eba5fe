#include "recording/importday.h"
#include "tests/recording/sources.h"

#include <gtest/gtest.h>

using namespace recording;
using namespace recording_test;

namespace {

constexpr int kDay = 20230201;

std::string order(const std::string& clock, const std::string& type, int seq, const std::string& price, int volume,
                  const std::string& side, int index)
{
    return "0,1,6,600519," + clock + "," + type + "," + std::to_string(seq) + "," + price + "," +
           std::to_string(volume) + "," + side + "," + std::to_string(index) + ",09:25:26.145,1\n";
}

std::string trade(const std::string& clock, const std::string& price, int volume, int buy, int sell,
                  const std::string& flag, int index)
{
    return "0,1,6,600519," + clock + "," + price + "," + std::to_string(volume) + ",1," + std::to_string(buy) + "," +
           std::to_string(sell) + "," + flag + "," + std::to_string(index) + ",09:25:08.075,1\n";
}

} // namespace

TEST(ImportShanghai, shouldRestoreTheFullSizeWhenAnOrderTradedBeforeItAppeared)
{
    const TempFolder folder;
    // The file's order is that of arrival; BizIndex is that of events.
    folder.write("entrust.csv", kShanghaiOrderHeader +
                                    order("09:30:00.020", "A", 12, "1801.00999999999999", 400, "B", 6) +
                                    order("09:30:00.000", "A", 10, "1801", 300, "S", 1) +
                                    order("09:30:00.000", "A", 11, "1801.00999999999999", 500, "S", 2) +
                                    order("09:30:00.090", "D", 12, "1801.00999999999999", 350, "B", 9) +
                                    order("09:30:00.095", "D", 11, "1801.00999999999999", 150, "S", 10));
    folder.write("trade.csv", kShanghaiTradeHeader + trade("09:30:00.020", "1801", 300, 12, 10, "B", 4) +
                                  trade("09:30:00.020", "1801.00999999999999", 200, 12, 11, "B", 5) +
                                  trade("09:30:00.050", "1801.00999999999999", 50, 12, 13, "S", 7) +
                                  trade("09:30:00.060", "1801.00999999999999", 150, 14, 11, "N", 8));

    // 12 came with 900, traded 500 at once and showed 400; 13 and 14 matched fully and never appear.
    EXPECT_EQ(eventsText(importDay(folder.path(), kDay)), "09:30:00.000 order 10 sell kind 1 1801 x 300\n"
                                                          "09:30:00.000 order 11 sell kind 1 1801.01 x 500\n"
                                                          "09:30:00.020 trade buy 12 sell 10 flag 1 1801 x 300\n"
                                                          "09:30:00.020 trade buy 12 sell 11 flag 1 1801.01 x 200\n"
                                                          "09:30:00.020 order 12 buy kind 1 1801.01 x 900\n"
                                                          "09:30:00.050 trade buy 12 sell 13 flag 2 1801.01 x 50\n"
                                                          "09:30:00.060 trade buy 14 sell 11 flag 0 1801.01 x 150\n"
                                                          "09:30:00.090 order 12 cancel-buy kind 0 1801.01 x 350\n"
                                                          "09:30:00.090 cancel buy 12 sell 0 x 350\n"
                                                          "09:30:00.095 order 11 cancel-sell kind 0 1801.01 x 150\n"
                                                          "09:30:00.095 cancel buy 0 sell 11 x 150\n");
}

TEST(ImportShanghai, shouldCleanAPriceWhenItsLastDigitsAreNoise)
{
    const TempFolder folder;
    folder.write("entrust.csv", kShanghaiOrderHeader +
                                    order("09:30:00.000", "A", 10, "1801.00999999999999", 300, "S", 1) +
                                    order("09:30:00.000", "A", 11, "1854.980000000000018", 300, "S", 2));
    folder.write("trade.csv", kShanghaiTradeHeader);

    const RecordedDay day = importDay(folder.path(), kDay);
    EXPECT_EQ(day.events[0].record->price, 1801.01);
    EXPECT_EQ(day.events[1].record->price, 1854.98);
    EXPECT_EQ(day.instrument.priceTick, 0.01);
}

TEST(ImportShanghai, shouldTakeThePhaseFromTheStatusExceptWhenInABreak)
{
    const TempFolder folder;
    folder.write("snapshot.csv",
                 shanghaiSnapshots({{"08:45:18.000", "START", "0", "0", "0"},
                                    {"09:15:06.000", "OCALL", "0", "1840.75999999999999", "1840.75999999999999"},
                                    {"09:25:01.000", "TRADE", "1854.980000000000018", "1854", "1854.99"},
                                    {"09:30:00", "TRADE", "1850.71", "1850", "1850.71"},
                                    {"11:30:03.000", "TRADE", "1850.71", "1850", "1850.71"},
                                    {"13:00:00.000", "TRADE", "1850.71", "1850", "1850.71"},
                                    {"14:00:00.000", "SUSP", "1850.71", "", ""},
                                    {"14:57:00.000", "CCALL", "1843.1", "1844.96", "1844.96"},
                                    {"15:00:02.000", "CLOSE", "1844.97", "1844.97", "1844.98"},
                                    {"15:05:03.000", "ENDTR", "1844.97", "1844.97", "1844.98"}}));

    const RecordedDay day = importDay(folder.path(), kDay);
    EXPECT_EQ(eventsText(day, Stream::Snapshots),
              "08:45:18.000 snapshot 11 last 0 volume 70000 bid 0 x 1900 ask 0 x 1100\n"
              "09:15:06.000 snapshot 12 last 0 volume 70000 bid 1840.76 x 1900 ask 1840.76 x 1100\n"
              "09:25:01.000 snapshot 14 last 1854.98 volume 70000 bid 1854 x 1900 ask 1854.99 x 1100\n"
              "09:30:00.000 snapshot 13 last 1850.71 volume 70000 bid 1850 x 1900 ask 1850.71 x 1100\n"
              "11:30:03.000 snapshot 14 last 1850.71 volume 70000 bid 1850 x 1900 ask 1850.71 x 1100\n"
              "13:00:00.000 snapshot 13 last 1850.71 volume 70000 bid 1850 x 1900 ask 1850.71 x 1100\n"
              "14:00:00.000 snapshot 1 last 1850.71 volume 70000 bid 0 x 1900 ask 0 x 1100\n"
              "14:57:00.000 snapshot 18 last 1843.1 volume 70000 bid 1844.96 x 1900 ask 1844.96 x 1100\n"
              "15:00:02.000 snapshot 15 last 1844.97 volume 70000 bid 1844.97 x 1900 ask 1844.98 x 1100\n"
              "15:05:03.000 snapshot 15 last 1844.97 volume 70000 bid 1844.97 x 1900 ask 1844.98 x 1100\n");
    EXPECT_EQ(eventText(day.events[2]), "08:45:18.000 aux bid 1762.846 x 94900 ask 1900.281 x 172082");
    EXPECT_EQ(dynamic_cast<const quoter::QuoterDepthData&>(*day.events[1].record).amount, 6159972661.97);
    EXPECT_EQ(day.instrument.market, "SH");
    EXPECT_EQ(day.instrument.code, "600519");
    EXPECT_EQ(day.instrument.lastClose, 1845.76);
    EXPECT_EQ(day.instrument.upStopPrice, 2030.34);
    EXPECT_EQ(day.instrument.downStopPrice, 1661.18);
}

TEST(ImportShanghai, shouldTakeTheDateFromTheFoldersNameWhenNoneIsGiven)
{
    const TempFolder folder;
    folder.write("sse-123456789-20231301-20230201-600519/t.csv",
                 kShanghaiTradeHeader + trade("09:30:00.020", "1801", 300, 12, 10, "B", 4));
    folder.write("undated/t.csv", kShanghaiTradeHeader + trade("09:30:00.020", "1801", 300, 12, 10, "B", 4));

    const std::string dated = (folder / "sse-123456789-20231301-20230201-600519").string();
    EXPECT_EQ(importDay(dated).tradingDay, 20230201);
    EXPECT_EQ(importDay(dated + "/").tradingDay, 20230201);
    EXPECT_EQ(importDay(dated, 20230202).tradingDay, 20230202);
    EXPECT_EQ(importDay(folder / "undated", 20230203).tradingDay, 20230203);
    EXPECT_ANY_THROW(importDay(folder / "undated"));
    EXPECT_ANY_THROW(importDay(folder / "undated", 20231301));
}

TEST(ImportShanghai, shouldNoteTheDeleteWhenItsOrderWasNotAdded)
{
    const TempFolder folder;
    folder.write("e.csv", kShanghaiOrderHeader + order("09:30:00.000", "A", 10, "1801", 300, "S", 1) +
                              order("09:30:00.020", "D", 12, "1801.01", 400, "B", 6));
    folder.write("t.csv", kShanghaiTradeHeader + trade("09:30:00.020", "1801", 300, 12, 10, "B", 4));
    EXPECT_EQ(importNotes(folder, kDay), "e.csv:3: deletes order 12, which was not added before; 1 such in all\n");
    EXPECT_EQ(importDay(folder.path(), kDay).events.size(), 4u) << "it is taken all the same, with its twin";
}

TEST(ImportShanghai, shouldNameFileLineAndColumnWhenARowIsMalformed)
{
    struct Case {
        std::string from;
        std::string to;
        std::string message;
    };
    const std::string orders = kShanghaiOrderHeader + order("09:30:00.000", "A", 10, "1801", 300, "S", 1) +
                               order("09:30:00.020", "A", 12, "1801.01", 400, "B", 6);
    const Case cases[] = {
        {"1801.01", "1801.0101", "e.csv:3: column OrderPrice (8): finer than a thousandth: \"1801.0101\""},
        {"1801.01", "nan", "e.csv:3: column OrderPrice (8): not a number: \"nan\""},
        {"1801.01", "-1801.01", "e.csv:3: column OrderPrice (8): not above 0: \"-1801.01\""},
        {"1801.01", "0", "e.csv:3: column OrderPrice (8): not above 0: \"0\""},
        {",400,", ",0,", "e.csv:3: column Balance (9): not above 0: \"0\""},
        {",400,", ",1e3,", "e.csv:3: column Balance (9): not a whole number: \"1e3\""},
        {"A,12,", "A,0,", "e.csv:3: column OrderNO (7): not above 0: \"0\""},
        {",A,12", ",T,12", "e.csv:3: column OrderType (6): not one of AD: \"T\""},
        {",B,6", ",X,6", "e.csv:3: column OrderBSFlag (10): not one of BS: \"X\""},
        {",B,6", ",,6", "e.csv:3: column OrderBSFlag (10): not one of BS: \"\""},
        {"09:30:00.020", "09:30:00,020", "e.csv:3: 14 columns where the header has 13"},
        {"09:30:00.020", "9:30:00.020", "e.csv:3: column OrderTime (5): not a time of day: \"9:30:00.020\""},
        {"09:30:00.020", "09:30:61.020", "e.csv:3: column OrderTime (5): not a time of day: \"09:30:61.020\""},
        {",B,6", ",B,1", "e.csv:3: sequence 1 stands in e.csv:2 too"},
        {",B,6", ",B,4", "t.csv:2: sequence 4 stands in e.csv:3 too"},
        {"600519,09:30:00.020", "600520,09:30:00.020",
         "e.csv:3: column SecurityID (4): another instrument than 600519: \"600520\""},
        {"600519,09:30:00.020", ",09:30:00.020", "e.csv:3: column SecurityID (4): empty field"},
    };
    for (const Case& c : cases) {
        const TempFolder folder;
        folder.write("e.csv", orders);
        folder.write("t.csv", kShanghaiTradeHeader + trade("09:30:00.020", "1801", 300, 12, 10, "B", 4));
        ASSERT_EQ(importError(folder, kDay), "nothing was thrown");
        folder.write("e.csv", replaced(orders, c.from, c.to));
        EXPECT_EQ(importError(folder, kDay), c.message);
    }
}

TEST(ImportShanghai, shouldNameTheColumnWhenATradeCannotBe)
{
    const std::pair<std::string, std::string> cases[] = {
        {trade("09:30:00.020", "0", 300, 12, 10, "B", 4), "t.csv:2: column TradPrice (6): not above 0: \"0\""},
        {trade("09:30:00.020", "1801", -1, 12, 10, "B", 4), "t.csv:2: column TradVolume (7): not above 0: \"-1\""},
        {trade("09:30:00.020", "1801", 300, 0, 10, "B", 4), "t.csv:2: column TradeBuyNo (9): not above 0: \"0\""},
        {trade("09:30:00.020", "1801", 300, 12, 0, "B", 4), "t.csv:2: column TradeSellNo (10): not above 0: \"0\""},
    };
    for (const auto& [row, message] : cases) {
        const TempFolder folder;
        folder.write("t.csv", kShanghaiTradeHeader + row);
        EXPECT_EQ(importError(folder, kDay), message);
    }
}

TEST(ImportShanghai, shouldNameLineAndColumnWhenThePhaseIsUnknown)
{
    const TempFolder folder;
    folder.write("s.csv", shanghaiSnapshots({{"08:45:18.000", "LUNCH", "0", "0", "0"}}));
    EXPECT_EQ(importError(folder, kDay), "s.csv:2: column InstruStatus (8): not a trading phase: \"LUNCH\"");
}

TEST(ImportShanghai, shouldRefuseOrdersWhenTheTradesAreMissing)
{
    const TempFolder folder;
    folder.write("e.csv", kShanghaiOrderHeader + order("09:30:00.000", "A", 10, "1801", 300, "S", 1));
    EXPECT_EQ(importError(folder, kDay),
              "e.csv: the trades are missing, without which the full size of an order is not known");
}
