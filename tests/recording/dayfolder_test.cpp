#include "recording/dayfolder.h"

#include "quoter/levelthousanddata.h"
#include "recording/slots.h"
#include "recording/textfile.h"
#include "tests/recording/builders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <limits>

using namespace recording;
using namespace recording_test;

namespace {

std::string headerOf(Stream stream)
{
    return withRecordType(stream, []<class Record>(std::type_identity<Record>) {
        std::string header = kArrivalColumn;
        for (const auto& slot : slotsOf<Record>())
            header += "," + slot.name;
        return header;
    });
}

} // namespace

TEST(DayFolder, shouldNameColumnsAsTheRecordsFieldsWhenTheHeaderIsMade)
{
    EXPECT_EQ(headerOf(Stream::Orders), "arrival,timetag,price,volume,seq,orderKind,bsFlag");
    EXPECT_EQ(headerOf(Stream::Trades), "arrival,timetag,price,volume,buySeq,sellSeq,tradeFlag,transKind");
    EXPECT_EQ(headerOf(Stream::Quotes),
              "arrival,timetag,lastPrice,open,high,low,lastClose,amount,volume,rawVolume,tradeStatus,"
              "lastSettlementPrice,settlementPrice,iopv,askPrice0,askPrice1,askPrice2,askPrice3,askPrice4,"
              "bidPrice0,bidPrice1,bidPrice2,bidPrice3,bidPrice4,askVolume0,askVolume1,askVolume2,askVolume3,"
              "askVolume4,bidVolume0,bidVolume1,bidVolume2,bidVolume3,bidVolume4,lastPriceAlt");
    EXPECT_EQ(headerOf(Stream::Queues), "arrival,timetag,lastPrice,bidPrice,bidQueue,askPrice,askQueue");
    EXPECT_EQ(headerOf(Stream::Thousand), "arrival,timetag,lastPrice,bidPrices,bidVolumes,bidNumbers,askPrices,"
                                          "askVolumes,askNumbers");
    EXPECT_EQ(headerOf(Stream::Counts), "arrival,timetag,lastPrice,buyOrderCount,buyHuge,buyBig,buyMiddle,buySmall,"
                                        "sellOrderCount,sellHuge,sellBig,sellMiddle,sellSmall");
    EXPECT_EQ(headerOf(Stream::Aux), "arrival,timetag,bidAveragePrice,totalBidVolume,askAveragePrice,totalAskVolume");
    const std::string snapshots = headerOf(Stream::Snapshots);
    EXPECT_EQ(std::count(snapshots.begin(), snapshots.end(), ','), 11 + 4 * 10 + 2);
    EXPECT_TRUE(snapshots.starts_with("arrival,timetag,lastPrice,open,high,low,volume,tradeStatus,lastClose,"
                                      "lastSettlementPrice,settlementPrice,iopv,askPrice0,"));
    EXPECT_TRUE(snapshots.ends_with(",bidVolume9,lastPriceAlt,amount"));
}

TEST(DayFolder, shouldWriteAFileForAStreamWhenTheDayListsIt)
{
    const TempFolder folder;
    const RecordedDay day =
        DayBuilder().order(1000, 10.01, 300, 5).trade(1010, 10.01, 100, 5, 3).lists(Stream::Counts).build();
    writeDay(day, folder / "day", Compression::None);

    EXPECT_EQ(listing(folder / "day"), "counts.csv instrument.json orders.csv trades.csv");
    EXPECT_EQ(fileBytes(folder / "day/orders.csv"),
              "arrival,timetag,price,volume,seq,orderKind,bsFlag\n0,1704153601000,10.01,300,5,1,1\n");
    EXPECT_EQ(fileBytes(folder / "day/trades.csv"),
              "arrival,timetag,price,volume,buySeq,sellSeq,tradeFlag,transKind\n1,1704153601010,10.01,100,5,3,0,0\n");
    EXPECT_NE(fileBytes(folder / "day/instrument.json").find("\"tradingDay\": 20240102"), std::string::npos);
}

TEST(DayFolder, shouldKeepAStreamListedWhenItHasNoEvents)
{
    const TempFolder folder;
    const RecordedDay day = DayBuilder().order(1000, 10.01, 300, 5).lists(Stream::Counts).build();
    writeDay(day, folder / "day", Compression::None);

    const RecordedDay read = readDay(folder / "day");
    EXPECT_EQ(read.streams, (std::vector<Stream>{Stream::Orders, Stream::Counts}));
    EXPECT_EQ(read.events.size(), 1u);
}

TEST(DayFolder, shouldKeepRelatedInstrumentsWhenTheDayHasThem)
{
    const TempFolder folder;
    RecordedDay day = DayBuilder().order(1000, 10.01, 300, 5).related("LSE", "B").related("LSE", "A").build();
    day.related[0].doubleFields[3002] = 21.5;
    day.related[1].intFields[2008] = 1;
    writeDay(day, folder / "day", Compression::None);

    const RecordedDay read = readDay(folder / "day");
    ASSERT_EQ(read.related.size(), 2u);
    EXPECT_EQ(read.related[0].code, "B");
    EXPECT_EQ(read.related[0].doubleFields.at(3002), 21.5);
    EXPECT_TRUE(sameDay(day, read));
}

TEST(DayFolder, shouldLeaveTheFieldOutWhenNoInstrumentIsRelated)
{
    const TempFolder folder;
    writeDay(DayBuilder().order(1000, 10.01, 300, 5).build(), folder / "day", Compression::None);
    EXPECT_EQ(fileBytes(folder / "day/instrument.json").find("related"), std::string::npos);
    EXPECT_TRUE(readDay(folder / "day").related.empty());
}

TEST(DayFolder, shouldKeepTheBitsWhenNumbersAreExtreme)
{
    const double values[] = {DBL_MAX, -DBL_MAX,  DBL_MIN, std::numeric_limits<double>::denorm_min(),
                             -0.0,    0.1 + 0.2, 1.0 / 3};
    DayBuilder builder;
    for (const double value : values)
        builder.order(0, value, std::numeric_limits<__int64>::max(), std::numeric_limits<__int64>::min());

    for (const Compression compression : {Compression::None, Compression::Zstd}) {
        const TempFolder folder;
        writeDay(builder.build(), folder / "day", compression);
        EXPECT_TRUE(sameDay(builder.build(), readDay(folder / "day")));
    }
}

TEST(DayFolder, shouldReadRecordsWhenColumnsStandInAnotherOrder)
{
    const TempFolder folder;
    writeDay(DayBuilder().order(1000, 10.01, 300, 5).build(), folder / "day", Compression::None);
    folder.write("day/orders.csv",
                 "arrival,bsFlag,seq,price,orderKind,timetag,volume\n0,1,5,10.01,1,1704153601000,300\n");

    EXPECT_EQ(eventsText(readDay(folder / "day")), "08:00:01.000 order 5 buy kind 1 10.01 x 300\n");
}

TEST(DayFolder, shouldMergeTheStreamsByArrivalWhenReadBack)
{
    const TempFolder folder;
    const RecordedDay day = DayBuilder()
                                .trade(1000, 10.01, 100, 5, 3)
                                .order(1000, 10.01, 300, 5)
                                .aux(900, 50)
                                .trade(1020, 10.02, 200, 6, 3)
                                .order(1030, 10.03, 100, 6)
                                .build();
    writeDay(day, folder / "day", Compression::Zstd);

    EXPECT_EQ(listing(folder / "day"), "aux.csv.zst instrument.json orders.csv.zst trades.csv.zst");
    EXPECT_EQ(eventsText(readDay(folder / "day")), "08:00:01.000 trade buy 5 sell 3 flag 0 10.01 x 100\n"
                                                   "08:00:01.000 order 5 buy kind 1 10.01 x 300\n"
                                                   "08:00:00.900 aux bid 0 x 50 ask 0 x 0\n"
                                                   "08:00:01.020 trade buy 6 sell 3 flag 0 10.02 x 200\n"
                                                   "08:00:01.030 order 6 buy kind 1 10.03 x 100\n");
}

TEST(DayFolder, shouldWriteTheSameBytesWhenTheDayIsTheSame)
{
    const TempFolder folder;
    const RecordedDay day = DayBuilder().order(1000, 10.01, 300, 5).trade(1010, 10.01, 100, 5, 3).build();
    for (const Compression compression : {Compression::None, Compression::Zstd}) {
        const std::string name = compression == Compression::None ? "plain" : "packed";
        writeDay(day, folder / (name + "1"), compression);
        writeDay(day, folder / (name + "2"), compression);
        ASSERT_EQ(listing(folder / (name + "1")), listing(folder / (name + "2")));
        for (const auto& entry : std::filesystem::directory_iterator(folder / (name + "1"))) {
            const std::string file = entry.path().filename().string();
            EXPECT_EQ(fileBytes(entry.path()), fileBytes(folder / (name + "2/" + file))) << file;
        }
    }
    EXPECT_EQ(readCompressedFile(folder / "packed1/orders.csv.zst"), fileBytes(folder / "plain1/orders.csv"));
}
