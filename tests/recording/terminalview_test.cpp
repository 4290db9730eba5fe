#include "recording/terminalview.h"

#include "indexui/tessimodel/detail/markets.h"
#include "quoter/brovanquoteralldata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/transactioncount.h"
#include "tests/recording/builders.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace recording;
using namespace recording_test;

TEST(LevelHands, shouldCountOneHandWhenSharesFillOnlyPartOfTheFirst)
{
    struct Case {
        __int64 shares;
        int unit;
        __int64 hands;
    };
    const Case cases[] = {{0, 100, 0},   {1, 100, 1}, {99, 100, 1}, {100, 100, 1}, {199, 100, 1},
                          {200, 100, 2}, {5, 10, 1},  {19, 10, 1},  {7, 1, 7},     {12'345'678'999, 100, 123'456'789}};
    for (const Case& c : cases)
        EXPECT_EQ(levelHands(c.shares, c.unit), c.hands) << c.shares << " / " << c.unit;
}

TEST(SharesPerHand, shouldDifferFromAHundredOnlyWhenTypeOrMarketIsListed)
{
    struct Case {
        const char* market;
        int type;
        int shares;
    };
    const Case cases[] = {{"SZ", 100003, 100}, {"SZ", 100016, 10}, {"SH", 100016, 10}, {"SZ", 100017, 10},
                          {"SH", 100017, 10},  {"SH", 126, 10},    {"SZ", 126, 100},   {"BJ", 100017, 100},
                          {"IF", 0, 1},        {"CFFEX", 0, 1},    {"SHFE", 0, 1},     {"SF", 0, 1},
                          {"DCE", 0, 1},       {"DF", 0, 1},       {"CZCE", 0, 1},     {"ZF", 0, 1},
                          {"GFEX", 0, 1},      {"GF", 0, 1},       {"INE", 0, 1},      {"SHO", 0, 1},
                          {"SZO", 0, 1},       {"HK", 0, 1},       {"HK", 100017, 1},  {"HGT", 0, 100},
                          {"CICC", 0, 100},    {"LSE", 0, 100}};
    for (const Case& c : cases) {
        standin::InstrumentDescription stock;
        stock.market = c.market;
        stock.code = "113001";
        stock.types = {c.type};
        EXPECT_EQ(sharesPerHand(stock), c.shares) << c.market << " " << c.type;
    }
}

// Every name of up to four capitals, and the longer ones that there are.
std::vector<std::string> marketNames()
{
    constexpr std::size_t kLongest = 4;
    std::vector<std::string> names{""};
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (char c = 'A'; c <= 'Z' && names[i].size() < kLongest; ++c)
            names.push_back(names[i] + c);
    }
    names.insert(names.end(), {"CFFEX", "SSEHKEX", "SZSEHKEX", "sho", "hk", "IF "});
    return names;
}

TEST(SharesPerHand, shouldBeOneExactlyWhenTheModelsTakeTheMarketForContractsOrHongKong)
{
    standin::InstrumentDescription instrument;
    int differing = 0;
    for (const std::string& market : marketNames()) {
        instrument.market = market;
        const bool isSingle = TC::detail::isFutureMarket(market) || TC::detail::isOptionMarket(market) ||
                              TC::detail::isHongKongMarket(market);
        EXPECT_EQ(sharesPerHand(instrument), isSingle ? 1 : 100) << market;
        differing += isSingle ? 1 : 0;
    }
    EXPECT_EQ(differing, 14) << "the markets of futures and options, and Hong Kong";
}

TEST(TerminalView, shouldDeliverTheRecordAsItIsWhenItIsATickOrAQueue)
{
    auto queue = std::make_shared<quoter::LevelOrderData>();
    queue->bidQueue = {100, 250};
    const RecordedDay day =
        DayBuilder().order(1, 10, 350, 1).trade(2, 10, 150, 1, 2).add(Stream::Queues, queue).build();
    TerminalView view(day, 100);
    for (std::size_t i = 0; i < day.events.size(); ++i)
        EXPECT_EQ(view.event(i).record, day.events[i].record);
}

TEST(TerminalView, shouldDeliverVolumesInHandsWhenTheRecordIsASnapshotOrACount)
{
    auto snapshot = std::make_shared<quoter::QuoterDepthData>();
    snapshot->timetag = 7;
    snapshot->lastPrice = 10.01;
    snapshot->volume = 1999;
    snapshot->amount = 20000;
    snapshot->askVolume[0] = 50;
    snapshot->bidVolume[9] = 250;
    auto quote = std::make_shared<quoter::QuoterAllData>();
    quote->volume = 1999;
    quote->rawVolume = 99;
    quote->askVolume[4] = 50;
    quote->bidVolume[0] = 250;
    auto broker = std::make_shared<zolv::BrovanQuoterAllData>();
    broker->volume = 1999;
    broker->upStopPrice = 11;
    auto levels = std::make_shared<quoter::LevelThousandData>();
    levels->bidVolumes = {50, 250, 0};
    levels->bidNumbers = {1, 2, 3};
    levels->askVolumes = {1000};
    auto count = std::make_shared<quoter::TransactionCount>();
    count->buyOrderCount = 170;
    count->buyHuge = 170;
    count->sellSmall = 99;
    const RecordedDay day = DayBuilder()
                                .add(Stream::Snapshots, snapshot)
                                .add(Stream::Quotes, quote)
                                .add(Stream::Quotes, broker)
                                .add(Stream::Thousand, levels)
                                .add(Stream::Counts, count)
                                .aux(9, 199)
                                .build();
    TerminalView view(day, 100);

    const auto& s = dynamic_cast<const quoter::QuoterDepthData&>(*view.event(0).record);
    EXPECT_EQ(eventText(view.event(0)), "08:00:00.007 snapshot 0 last 10.01 volume 19 bid 0 x 0 ask 0 x 1");
    EXPECT_EQ(s.bidVolume[9], 2);
    EXPECT_EQ(s.amount, 20000);
    const auto& q = dynamic_cast<const quoter::QuoterAllData&>(*view.event(1).record);
    EXPECT_EQ(q.volume, 19);
    EXPECT_EQ(q.rawVolume, 0);
    EXPECT_EQ(q.askVolume[4], 1);
    EXPECT_EQ(q.bidVolume[0], 2);
    const auto& b = dynamic_cast<const zolv::BrovanQuoterAllData&>(*view.event(2).record);
    EXPECT_EQ(b.volume, 19);
    EXPECT_EQ(b.upStopPrice, 11);
    const auto& l = dynamic_cast<const quoter::LevelThousandData&>(*view.event(3).record);
    EXPECT_EQ(l.bidVolumes, (std::vector<int>{1, 2, 0}));
    EXPECT_EQ(l.bidNumbers, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(l.askVolumes, (std::vector<int>{10}));
    const auto& c = dynamic_cast<const quoter::TransactionCount&>(*view.event(4).record);
    EXPECT_EQ(c.buyOrderCount, 170);
    EXPECT_EQ(c.buyHuge, 1);
    EXPECT_EQ(c.sellSmall, 0);
    EXPECT_EQ(view.event(5).aux->totalBidVolume, 1);
}

TEST(TerminalView, shouldCutEachSizeAndBothTotalsToWholeHandsWhenTheyAreDelivered)
{
    auto count = std::make_shared<quoter::TransactionCount>();
    count->timetag = kMorning + 5;
    count->buyOrderCount = 1500;
    count->buyHuge = 100'000'000'000;
    count->buyBig = 1199;
    count->buyMiddle = 299;
    count->buySmall = 99;
    count->sellOrderCount = 1600;
    count->sellHuge = 1600;
    count->sellBig = 1750;
    count->sellMiddle = 1899;
    count->sellSmall = 0;
    RecordedDay day = DayBuilder().add(Stream::Counts, count).aux(9, 199).build();
    day.events[1].aux->totalAskVolume = 350;
    day.events[1].aux->bidAveragePrice = 9.99;
    day.events[1].aux->askAveragePrice = 10.01;
    TerminalView view(day, 100);

    const auto& c = dynamic_cast<const quoter::TransactionCount&>(*view.event(0).record);
    const std::vector<__int64> hands = {c.buyHuge,  c.buyBig,  c.buyMiddle,  c.buySmall,
                                        c.sellHuge, c.sellBig, c.sellMiddle, c.sellSmall};
    EXPECT_EQ(hands, (std::vector<__int64>{1'000'000'000, 11, 2, 0, 16, 17, 18, 0}));
    EXPECT_EQ(c.buyOrderCount, 1500) << "orders are no shares";
    EXPECT_EQ(c.sellOrderCount, 1600);
    EXPECT_EQ(c.timetag, kMorning + 5);
    EXPECT_EQ(eventText(view.event(1)), "08:00:00.009 aux bid 9.99 x 1 ask 10.01 x 3");
    EXPECT_EQ(count->buySmall, 99) << "the day's own stays";
}

TEST(TerminalView, shouldLeaveTheDaysRecordsAloneWhenConverting)
{
    const RecordedDay day = DayBuilder().snapshot(7, 10.01, 1999).aux(9, 199).build();
    TerminalView view(day, 100);
    EXPECT_NE(view.event(0).record, day.events[0].record);
    EXPECT_EQ(view.event(0).record, view.event(0).record) << "converted once";
    EXPECT_EQ(dynamic_cast<const quoter::QuoterDepthData&>(*day.events[0].record).volume, 1999);
    EXPECT_EQ(view.event(1).aux->totalBidVolume, 1);
    EXPECT_EQ(day.events[1].aux->totalBidVolume, 199);
}
