#include "recording/importday.h"
#include "tests/recording/sources.h"

#include <gtest/gtest.h>

using namespace recording;
using namespace recording_test;

namespace {

const std::string kStock = "000001.SZ,000001,20170103,";

std::string trades(const std::string& rows)
{
    return kShenzhenTradeHeader + rows;
}

// Fields that the file leaves open hold a NUL, as the vendor's files do.
const std::string kNul(1, '\0');

} // namespace

TEST(ImportShenzhen, shouldOrderEventsByTheSharedSequenceWhenOrdersAndTradesMix)
{
    const TempFolder folder;
    folder.write("a.csv", kShenzhenOrderHeader + kStock + "91500000,0,137,0,B,90300,50000,\r\n" + kStock +
                              "93000010,1,180,0,S,90300,100,\r\n" + kStock + "93000020,2,300,1,S,100,700,\r\n" +
                              kStock + "93000030,3,301,U,B,0,500,\r\n" + kStock + "93000030,4,302,2,B,90200,400,\r\n");
    folder.write("b.csv",
                 trades(kStock + "93000010,181,0,0,S,90300,100,180,137,\r\n" + kStock + "93000015,200,C,0," + kNul +
                        ",0,49900,0,137,\r\n" + kStock + "150000000,400,0,0," + kNul + ",90250,400,300,302,\r\n"));

    const RecordedDay day = importDay(folder.path());
    EXPECT_EQ(eventsText(day), "09:15:00.000 order 137 buy kind 1 9.03 x 50000\n"
                               "09:30:00.010 order 180 sell kind 1 9.03 x 100\n"
                               "09:30:00.010 trade buy 137 sell 180 flag 2 9.03 x 100\n"
                               "09:30:00.015 cancel buy 137 sell 0 x 49900\n"
                               "09:30:00.020 order 300 sell kind 7 0.01 x 700\n"
                               "09:30:00.030 order 301 buy kind 6 0 x 500\n"
                               "09:30:00.030 order 302 buy kind 1 9.02 x 400\n"
                               "15:00:00.000 trade buy 302 sell 300 flag 0 9.025 x 400\n");
    EXPECT_EQ(day.tradingDay, 20170103);
    EXPECT_EQ(day.instrument.market, "SZ");
    EXPECT_EQ(day.instrument.code, "000001");
    EXPECT_EQ(day.instrument.types, std::set<int>{100003});
    EXPECT_EQ(day.streams, (std::vector<Stream>{Stream::Orders, Stream::Trades}));
}

TEST(ImportShenzhen, shouldPutASnapshotBehindTicksWhenTheyAreNotLater)
{
    const TempFolder folder;
    folder.write("orders.csv", kShenzhenOrderHeader + kStock + "93002990,0,1,0,B,91000,100,\r\n" + kStock +
                                   "93003000,1,2,0,B,91000,200,\r\n" + kStock + "93003010,2,3,0,B,91000,300,\r\n");
    folder.write("shots.csv", kShenzhenSnapshotHeader + shenzhenSnapshot(93003000, 91000, 300, 91100, 100));

    const RecordedDay day = importDay(folder.path());
    EXPECT_EQ(eventsText(day), "09:30:02.990 order 1 buy kind 1 9.1 x 100\n"
                               "09:30:03.000 order 2 buy kind 1 9.1 x 200\n"
                               "09:30:03.000 quote 13 last 9.11 volume 268700 bid 9.1 x 300 ask 9.11 x 100\n"
                               "09:30:03.000 snapshot 13 last 9.11 volume 268700 bid 9.1 x 300 ask 9.11 x 100\n"
                               "09:30:03.000 aux bid 9.04 x 7700 ask 9.41 x 5500\n"
                               "09:30:03.010 order 3 buy kind 1 9.1 x 300\n");
    const auto& quote = dynamic_cast<const quoter::QuoterAllData&>(*day.events[2].record);
    EXPECT_EQ(quote.amount, 2447857);
    EXPECT_EQ(quote.rawVolume, 268700);
    EXPECT_EQ(quote.high, 9.12);
    EXPECT_EQ(quote.lastClose, 9.1);
    EXPECT_EQ(day.instrument.lastClose, 9.1);
    EXPECT_EQ(day.instrument.upStopPrice, 10.01);
    EXPECT_EQ(day.instrument.downStopPrice, 8.19);
    EXPECT_EQ(day.instrument.priceTick, 0.01);
}

TEST(ImportShenzhen, shouldTellThePhaseFromTheTimeAndFromPricesWhenAtASeam)
{
    struct Case {
        int clock;
        int bid;
        int ask;
        int status;
    };
    const Case cases[] = {
        {84057000, 0, 0, 11},          {91500000, 0, 0, 12},          {92448000, 91100, 91100, 12},
        {92500000, 91100, 91100, 12},  {92500000, 91000, 91100, 14},  {92503000, 91000, 91100, 14},
        {93000000, 91000, 91100, 13},  {112957000, 91000, 91100, 13}, {113000000, 91000, 91100, 14},
        {130000000, 91000, 91100, 13}, {145657000, 91000, 91100, 13}, {145700000, 91000, 91100, 13},
        {145700000, 0, 0, 18},         {145703000, 91100, 91100, 18}, {150000000, 91100, 91100, 18},
        {150003000, 91000, 91100, 15}, {150003000, 91000, 0, 15},     {133000000, 0, 91100, 13},
    };
    for (const Case& c : cases) {
        const TempFolder folder;
        folder.write("s.csv", kShenzhenSnapshotHeader +
                                  shenzhenSnapshot(c.clock, c.bid, c.bid ? 100 : 0, c.ask, c.ask ? 100 : 0));
        const RecordedDay day = importDay(folder.path());
        EXPECT_EQ(dynamic_cast<const quoter::QuoterDepthData&>(*day.events[1].record).tradeStatus, c.status)
            << c.clock << " " << c.bid << " " << c.ask;
    }
}

TEST(ImportShenzhen, shouldJoinTwoRowsWhenTheyAreTheSidesOfOneQueue)
{
    std::string fifty;
    for (int i = 1; i <= 50; ++i)
        fifty += std::to_string(i * 100) + ",";
    const TempFolder folder;
    folder.write("q.csv", kShenzhenQueueHeader + kStock + "92448000,65,91100,0,0,\r\n" + kStock +
                              "92448000,66,91000,2,2,300,200,\r\n" + kStock + "93000000,66,91000,54,50," + fifty +
                              "\r\n" + kStock + "93003000,65,91100,1,1,100,\r\n" + kStock +
                              "93003000,66,91000,1,1,700,\r\n");

    const RecordedDay day = importDay(folder.path());
    ASSERT_EQ(day.events.size(), 3u);
    EXPECT_EQ(eventText(day.events[0]), "09:24:48.000 queue bid 9.1 [300,200] ask 9.11 []");
    EXPECT_EQ(dynamic_cast<const quoter::LevelOrderData&>(*day.events[1].record).bidQueue.size(), 50u);
    EXPECT_EQ(eventText(day.events[2]), "09:30:03.000 queue bid 9.1 [700] ask 9.11 [100]");
}

TEST(ImportShenzhen, shouldTakeTheLastSizesWhenTheOtherSidesStandBeforeThem)
{
    const TempFolder folder;
    folder.write("q.csv", kShenzhenQueueHeader + kStock + "92448000,66,91000,9,2,700,800,300,200,\r\n");
    EXPECT_EQ(eventsText(importDay(folder.path())), "09:24:48.000 queue bid 9.1 [300,200] ask 0 []\n");
}

TEST(ImportShenzhen, shouldReadTheFileWhenItIsInGbkOrHasMarksAndBlanks)
{
    // The order header in GBK.
    const std::string gbk = "\xCD\xF2\xB5\xC3\xB4\xFA\xC2\xEB,\xBD\xBB\xD2\xD7\xCB\xF9\xB4\xFA\xC2\xEB,"
                            "\xD7\xD4\xC8\xBB\xC8\xD5,\xCA\xB1\xBC\xE4,\xCE\xAF\xCD\xD0\xB1\xE0\xBA\xC5,"
                            "\xBD\xBB\xD2\xD7\xCB\xF9\xCE\xAF\xCD\xD0\xBA\xC5,\xCE\xAF\xCD\xD0\xC0\xE0\xD0\xCD,"
                            "\xCE\xAF\xCD\xD0\xB4\xFA\xC2\xEB,\xCE\xAF\xCD\xD0\xBC\xDB\xB8\xF1,"
                            "\xCE\xAF\xCD\xD0\xCA\xFD\xC1\xBF\n";
    const std::string quoted =
        "\"000001.SZ\",\"000001\",20170103,\"91500000\",0, 137 ,0" + kNul + ",B,90300,50000,,\n\n \r\n";
    const std::string files[] = {gbk + quoted, "\xEF\xBB\xBF" + kShenzhenOrderHeader + quoted};
    for (const std::string& file : files) {
        const TempFolder folder;
        folder.write("x.CSV", file);
        EXPECT_EQ(eventsText(importDay(folder.path())), "09:15:00.000 order 137 buy kind 1 9.03 x 50000\n");
    }
}

TEST(ImportShenzhen, shouldWidenTheLimitsOfChiNextWhenTheReformIsInForce)
{
    const auto limits = [](const std::string& date) {
        const TempFolder folder;
        std::string row = shenzhenSnapshot(93003000, 91000, 300, 91100, 100);
        row = replaced(row, "000001.SZ,000001,20170103", "300446.SZ,300446," + date);
        folder.write("s.csv", kShenzhenSnapshotHeader + row);
        const auto stock = importDay(folder.path()).instrument;
        return std::pair{stock.downStopPrice, stock.upStopPrice};
    };
    EXPECT_EQ(limits("20200821"), std::pair(8.19, 10.01));
    EXPECT_EQ(limits("20200824"), std::pair(7.28, 10.92));
}

TEST(ImportShenzhen, shouldNameFileLineAndColumnWhenARowIsMalformed)
{
    struct Case {
        std::string from;
        std::string to;
        std::string message;
    };
    const std::string good = kShenzhenTradeHeader + kStock + "91500050,868,C,0," + kNul + ",0,100,0,867,\r\n" + kStock +
                             "93000010,900,0,0,S,90300,100,180,137,\r\n";
    const Case cases[] = {
        {"90300", "9o300", "t.csv:3: column 成交价格 (9): not a number: \"9o300\""},
        {"90300", "", "t.csv:3: column 成交价格 (9): empty field"},
        {",100,180", ",100.5,180", "t.csv:3: column 成交数量 (10): not a whole number: \"100.5\""},
        {"180,137", "99999999999,137", "t.csv:3: column 叫卖序号 (11): out of range: \"99999999999\""},
        {"180,137", "99999999999999999999,137",
         "t.csv:3: column 叫卖序号 (11): out of range: \"99999999999999999999\""},
        {",S,", ",X,", "t.csv:3: column BS标志 (8): not B or S: \"X\""},
        {"90300", "0", "t.csv:3: column 成交价格 (9): not above 0: \"0\""},
        {"90300", "-90300", "t.csv:3: column 成交价格 (9): not above 0: \"-90300\""},
        {",100,180", ",0,180", "t.csv:3: column 成交数量 (10): not above 0: \"0\""},
        {",100,180", ",1e3,180", "t.csv:3: column 成交数量 (10): not a whole number: \"1e3\""},
        {",100,0,867", ",-100,0,867", "t.csv:2: column 成交数量 (10): not above 0: \"-100\""},
        {",0,100,0,867", ",5,100,0,867", "t.csv:2: column 成交价格 (9): a cancel with a price: \"5\""},
        {"0,867,", "-1,867,", "t.csv:2: column 叫卖序号 (11): below 0: \"-1\""},
        {"180,137", "0,137", "t.csv:3: column 叫卖序号 (11): not above 0: \"0\""},
        {"180,137", "180,0", "t.csv:3: column 叫买序号 (12): not above 0: \"0\""},
        {"900,0,0", "900,D,0", "t.csv:3: column 成交代码 (6): neither a trade nor a cancel: \"D\""},
        {"0,867,", "866,867,", "t.csv:2: column 成交代码 (6): a cancel must name one order"},
        {"93000010", "93060010", "t.csv:3: column 时间 (4): not a time of day: \"93060010\""},
        {"20170103,930", "20170104,930", "t.csv:3: column 自然日 (3): not the trading day 20170103: \"20170104\""},
        {"20170103,915", "20171303,915", "t.csv:2: column 自然日 (3): not the trading day 0: \"20171303\""},
        {"000001.SZ,000001,20170103,930", "000002.SZ,000001,20170103,930",
         "t.csv:3: column 万得代码 (1): another instrument than 000001: \"000002.SZ\""},
        {"000001.SZ,000001,20170103,915", "600519.SH,000001,20170103,915",
         "t.csv:2: column 万得代码 (1): not an instrument of Shenzhen: \"600519.SH\""},
        {"180,137,\r\n", "180\r\n", "t.csv:3: 11 columns where the header has 12"},
        {"180,137,\r\n", "180,137,,5\r\n", "t.csv:3: 14 columns where the header has 12"},
        {"180,137,\r\n", "180,13", "t.csv:3: the line has no end: the file is cut"},
        {"867,\r\n", "867,\r\n\r\n", "t.csv:3: blank line"},
        {",900,", ",868,", "t.csv:3: sequence 868 stands in t.csv:2 too"},
        {"成交数量", "数量", "t.csv:1: column 成交数量 is missing"},
        {"叫买序号", "叫卖序号",
         "t.csv:1: column \"\\xe5\\x8f\\xab\\xe5\\x8d\\x96\\xe5\\xba\\x8f\\xe5\\x8f\\xb7\" stands twice"},
        {"成交编号", "编号", "t.csv:1: the header is of no known layout"},
    };
    for (const Case& c : cases) {
        const TempFolder folder;
        folder.write("t.csv", good);
        ASSERT_EQ(importError(folder), "nothing was thrown");
        folder.write("t.csv", replaced(good, c.from, c.to));
        EXPECT_EQ(importError(folder), c.message);
    }
}

TEST(ImportShenzhen, shouldTakeTheLastLineWithoutANewlineOnlyWhenItIsComplete)
{
    const std::string trade = kStock + "93000010,900,0,0,S,90300,100,180,137,";
    const std::string cut = "t.csv:2: the line has no end: the file is cut";
    const TempFolder folder;
    folder.write("t.csv", kShenzhenTradeHeader + trade);
    EXPECT_EQ(eventsText(importDay(folder.path())), "09:30:00.010 trade buy 137 sell 180 flag 2 9.03 x 100\n");
    for (std::size_t size = 1; size < trade.size(); ++size) {
        folder.write("t.csv", kShenzhenTradeHeader + trade.substr(0, size));
        EXPECT_EQ(importError(folder), cut) << size;
    }
    // A header without the comma says nothing of the rows.
    folder.write("t.csv", replaced(kShenzhenTradeHeader, ",\r\n", "\r\n") + trade);
    EXPECT_EQ(importError(folder), cut);
}

TEST(ImportShenzhen, shouldTakeAnOpenQueueRowOnlyWhenItHasTheSizesThatAreAnnounced)
{
    const std::string row = kStock + "92448000,66,91000,9,2,";
    const TempFolder folder;
    folder.write("q.csv", kShenzhenQueueHeader + row + "300,200,");
    EXPECT_EQ(eventsText(importDay(folder.path())), "09:24:48.000 queue bid 9.1 [300,200] ask 0 []\n");
    for (const char* sizes : {"300,", "300,20", "700,300,200,"}) {
        folder.write("q.csv", kShenzhenQueueHeader + row + sizes);
        EXPECT_EQ(importError(folder), "q.csv:2: the line has no end: the file is cut") << sizes;
    }
}

TEST(ImportShenzhen, shouldNameTheColumnWhenAnOrderCannotBe)
{
    const std::pair<std::string, std::string> cases[] = {
        {"137,0,B,0,100", "o.csv:2: column 委托价格 (9): not above 0: \"0\""},
        {"137,0,B,-90300,100", "o.csv:2: column 委托价格 (9): not above 0: \"-90300\""},
        {"137,1,B,-1,100", "o.csv:2: column 委托价格 (9): below 0: \"-1\""},
        {"137,0,B,90300,0", "o.csv:2: column 委托数量 (10): not above 0: \"0\""},
        {"0,0,B,90300,100", "o.csv:2: column 交易所委托号 (6): not above 0: \"0\""},
        {"137,1,B,0,100", "nothing was thrown"},
    };
    for (const auto& [row, message] : cases) {
        const TempFolder folder;
        folder.write("o.csv", kShenzhenOrderHeader + kStock + "91500000,0," + row + ",\r\n");
        EXPECT_EQ(importError(folder), message);
    }
}

TEST(ImportShenzhen, shouldNameTheColumnWhenASnapshotHoldsANegativeValue)
{
    const TempFolder folder;
    const std::string good = shenzhenSnapshot(93003000, 91000, 300, 91100, 100);
    folder.write("s.csv", kShenzhenSnapshotHeader + replaced(good, "268700", "-268700"));
    EXPECT_EQ(importError(folder), "s.csv:2: column 当日累计成交量 (12): below 0: \"-268700\"");
    folder.write("s.csv", kShenzhenSnapshotHeader + shenzhenSnapshot(93003000, -91000, 300, 91100, 100));
    EXPECT_EQ(importError(folder), "s.csv:2: column 申买价1 (38): below 0: \"-91000\"");
    folder.write("s.csv", kShenzhenSnapshotHeader + shenzhenSnapshot(93003000, 91000, -300, 91100, 100));
    EXPECT_EQ(importError(folder), "s.csv:2: column 申买量1 (48): below 0: \"-300\"");
}

TEST(ImportShenzhen, shouldNoteTheTradeWhenItsOrderIsNotInTheOrderFile)
{
    const TempFolder folder;
    const std::string order = kStock + "93000010,1,180,0,S,90300,100,\r\n";
    const std::string trade = kStock + "93000010,181,0,0,S,90300,100,180,137,\r\n";
    folder.write("o.csv", kShenzhenOrderHeader + order);
    folder.write("t.csv", trades(trade));
    const std::string note = "t.csv:2: names order 137, which does not stand before it in o.csv; 1 such in all\n";
    EXPECT_EQ(importNotes(folder), note);
    folder.write("t.csv", trades(kStock + "93000010,181,C,0," + kNul + ",0,100,0,137,\r\n"));
    EXPECT_EQ(importNotes(folder), note);
    EXPECT_EQ(importDay(folder.path()).events.size(), 2u) << "it is taken all the same";
    folder.write("o.csv", kShenzhenOrderHeader + order + kStock + "93000010,1,137,0,B,90300,100,\r\n");
    EXPECT_EQ(importNotes(folder), "");
}

TEST(ImportShenzhen, shouldNoteTheTradeFileWhenItsVolumeIsNotTheDays)
{
    const TempFolder folder;
    const auto trade = [](int volume) {
        return trades(kStock + "93000010,181,0,0,S,90300," + std::to_string(volume) + ",180,137,\r\n");
    };
    folder.write("s.csv", kShenzhenSnapshotHeader + shenzhenSnapshot(93003000, 91000, 300, 91100, 100));
    folder.write("t.csv", trade(268700));
    EXPECT_EQ(importNotes(folder), "");
    for (const int volume : {268600, 268800}) {
        folder.write("t.csv", trade(volume));
        EXPECT_EQ(importNotes(folder), "t.csv: the trades add up to " + std::to_string(volume) +
                                           " shares where the last snapshot has a day volume of 268700\n");
    }
}

TEST(ImportShenzhen, shouldSetNoLimitsWhenNoSnapshotTellsTheLastClose)
{
    const TempFolder folder;
    folder.write("o.csv", kShenzhenOrderHeader + kStock + "91500000,0,137,0,B,90300,50000,\r\n");
    const auto stock = importDay(folder.path()).instrument;
    EXPECT_EQ(stock.lastClose, 0);
    EXPECT_EQ(stock.upStopPrice, 0);
    EXPECT_EQ(stock.downStopPrice, 0);
}

TEST(ImportShenzhen, shouldNameLineAndColumnWhenAQueueRowIsMalformed)
{
    struct Case {
        std::string row;
        std::string message;
    };
    std::string fiftyOne;
    for (int i = 0; i < 51; ++i)
        fiftyOne += "100,";
    const Case cases[] = {
        {"66,91000,2,2,300,", "q.csv:2: column 明细个数 (8): \"2\" announced, 1 there"},
        {"66,91000,1,2,300,200,", "q.csv:2: column 订单数量 (7): fewer orders than sizes: \"1\""},
        {"66,91000,51,51," + fiftyOne, "q.csv:2: column 明细个数 (8): not 0 to 50 sizes: \"51\""},
        {"66,91000,0,-1,", "q.csv:2: column 明细个数 (8): not 0 to 50 sizes: \"-1\""},
        {"67,91000,2,2,300,200,", "q.csv:2: column 买卖方向 (5): not 65 (A) or 66 (B): \"67\""},
        {"66,91000,2,2,300,2x0,", "q.csv:2: column 订单明细 (10): not a number: \"2x0\""},
    };
    for (const Case& c : cases) {
        const TempFolder folder;
        folder.write("q.csv", kShenzhenQueueHeader + kStock + "92448000," + c.row + "\r\n");
        EXPECT_EQ(importError(folder), c.message);
    }
}

TEST(ImportDay, shouldNameTheFileWhenItIsCompressed)
{
    for (const std::string name : {"b.csv.zst", "b.csv.gz", "b.CSV.xz", "b.csv.zip", "b.csv.bz2", "b.csv.7z"}) {
        const TempFolder folder;
        folder.write("a.csv", kShenzhenOrderHeader + kStock + "91500000,0,137,0,B,90300,50000,\r\n");
        folder.write(name, "packed");
        EXPECT_EQ(importError(folder), name + ": a compressed file: unpack it first");
    }
}

TEST(ImportDay, shouldSayWhyWhenTheFolderIsNoDay)
{
    const TempFolder folder;
    EXPECT_NE(importError(folder).find("the folder holds no CSV file"), std::string::npos);

    folder.write("a.csv", kShenzhenOrderHeader + kStock + "91500000,0,137,0,B,90300,50000,\r\n");
    folder.write("b.csv", kShenzhenOrderHeader);
    EXPECT_EQ(importError(folder), "b.csv:1: the same kind of file as a.csv");
    folder.write("b.csv", kShanghaiTradeHeader);
    EXPECT_EQ(importError(folder), "b.csv:1: a layout of another exchange than the files before it");
    folder.write("b.csv", "");
    EXPECT_EQ(importError(folder), "b.csv: the file is empty, it has not even a header");
    folder.write("b.csv", "\xFF\xFF\xFF,\n");
    EXPECT_EQ(importError(folder), "b.csv:1: the header is neither UTF-8 nor GBK");
    std::filesystem::remove(folder / "b.csv");
    folder.write("a.csv", kShenzhenOrderHeader);
    EXPECT_EQ(importError(folder), "a.csv: no row names the instrument");
}
