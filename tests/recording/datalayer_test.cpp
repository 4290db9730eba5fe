// What a subscriber gets, and in which order. The receivers note it on the data layer's thread; the tests read it when
// everything is delivered.

#include "recording/datalayer.h"

#include "tests/recording/builders.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace recording;
using namespace recording_test;

namespace {

TC::CFormulaParam request(const char* market = "SZ", const char* code = "000001")
{
    TC::CFormulaParam param;
    param.market = market;
    param.stockCode = code;
    param.beginTime = {0, 0};
    param.endTime = quoter::TimeSeq::TIME_LASTED;
    return param;
}

// Five ticks and a snapshot, 10 ms apart.
std::shared_ptr<const RecordedDay> smallDay(const char* market = "SZ")
{
    return DayBuilder()
        .market(market)
        .order(1000, 10, 100, 1)
        .trade(1010, 10, 100, 1, 2)
        .order(1020, 10, 100, 3)
        .cancel(1030, 100, 3)
        .snapshot(1040, 10, 12345)
        .order(1050, 10, 100, 4)
        .share();
}

std::string batchText(const char* name, int batchKind, const RecordBatch& records)
{
    std::string out = name;
    out.append(" ").append(std::to_string(batchKind)).append(":");
    for (const auto& record : records)
        out.append(" ").append(std::to_string(record->timetag - kMorning));
    return out + "\n";
}

struct Receiver {
    std::string text;

    BatchCallback named(const char* name)
    {
        return [this, name](int kind, const RecordBatch& records) { text += batchText(name, kind, records); };
    }
};

DeliveryOptions historyUpTo(HistoryPoint point)
{
    DeliveryOptions options;
    options.history = point;
    return options;
}

} // namespace

TEST(DataLayer, shouldDeliverTheWholeDayAsHistoryWhenNoOptionIsSet)
{
    Receiver got;
    DataLayer layer(smallDay());
    layer.subscribe(request(), Stream::Orders, got.named("orders"));
    layer.subscribe(request(), Stream::Trades, got.named("trades"));
    EXPECT_EQ(layer.delivered(), 0u);
    layer.start();
    EXPECT_TRUE(layer.waitUntilDelivered());
    EXPECT_EQ(got.text, "orders 0: 1000 1020 1050\ntrades 0: 1010 1030\n");
    EXPECT_EQ(layer.delivered(), 6u);
    EXPECT_EQ(layer.total(), 6u);
}

TEST(DataLayer, shouldPushOneRecordAtATimeInArrivalOrderWhenTheHistoryIsOver)
{
    Receiver got;
    DataLayer layer(smallDay(), historyUpTo(HistoryPoint::arrival(2)));
    layer.subscribe(request(), Stream::Trades, got.named("trades"));
    layer.subscribe(request(), Stream::Orders, got.named("orders"));
    layer.subscribe(request(), Stream::Orders, got.named("again"));
    layer.subscribe(request(), Stream::Snapshots, got.named("snapshots"));
    layer.start();
    layer.waitUntilDelivered();
    EXPECT_EQ(got.text, "trades 0: 1010\n"
                        "orders 0: 1000\n"
                        "again 0: 1000\n"
                        "snapshots 0:\n"
                        "orders 1: 1020\n"
                        "again 1: 1020\n"
                        "trades 1: 1030\n"
                        "snapshots 1: 1040\n"
                        "orders 1: 1050\n"
                        "again 1: 1050\n");
}

TEST(DataLayer, shouldCutHistoryIntoPiecesWhenItExceedsThePieceSize)
{
    Receiver got;
    DeliveryOptions options;
    options.pieceSize = 2;
    DataLayer layer(smallDay(), options);
    layer.subscribe(request(), Stream::Orders, got.named("orders"));
    layer.subscribe(request(), Stream::Trades, got.named("trades"));
    layer.start();
    layer.waitUntilDelivered();
    EXPECT_EQ(got.text, "orders 0: 1000 1020\norders 3: 1050\ntrades 0: 1010 1030\n");
}

TEST(DataLayer, shouldDeliverHistoryInOneBatchWhenItIsSubscribedWhole)
{
    Receiver got;
    DeliveryOptions options = historyUpTo(HistoryPoint::arrival(5));
    options.pieceSize = 1;
    DataLayer layer(smallDay(), options);
    layer.subscribeWhole(request(), Stream::Orders, got.named("whole"));
    layer.subscribe(request(), Stream::Orders, got.named("pieces"));
    layer.subscribeWhole(request(), Stream::Queues, got.named("none"));
    layer.start();
    layer.waitUntilDelivered();
    EXPECT_EQ(got.text, "whole 0: 1000 1020\n"
                        "pieces 0: 1000\n"
                        "pieces 3: 1020\n"
                        "none 0:\n"
                        "whole 1: 1050\n"
                        "pieces 1: 1050\n");
}

TEST(DataLayer, shouldDeliverOneEmptyBatchWhenTheHistoryIsEmpty)
{
    Receiver got;
    DataLayer layer(smallDay(), historyUpTo(HistoryPoint::nothing()));
    layer.subscribe(request(), Stream::Trades, got.named("trades"));
    layer.subscribe(request(), Stream::Counts, got.named("counts"));
    layer.start();
    layer.waitUntilDelivered();
    EXPECT_EQ(got.text, "trades 0:\ncounts 0:\ntrades 1: 1010\ntrades 1: 1030\n");
}

TEST(DataLayer, shouldDeliverNothingOfTheDayWhenTheRequestIsForAnotherInstrument)
{
    Receiver got;
    DataLayer layer(smallDay(), historyUpTo(HistoryPoint::arrival(2)));
    layer.subscribe(request("SH", "000001"), Stream::Orders, got.named("market"));
    layer.subscribe(request("SZ", "000002"), Stream::Orders, got.named("code"));
    layer.subscribeAux(request("SZ", "000002"), [&](int kind, const AuxBatch& records) {
        got.text += "aux " + std::to_string(kind) + " " + std::to_string(records.size()) + "\n";
    });
    layer.start();
    layer.waitUntilDelivered();
    EXPECT_EQ(got.text, "market 0:\ncode 0:\naux 0 0\n");
}

TEST(DataLayer, shouldKeepToTheRequestedTimesWhenBeginOrEndIsSet)
{
    Receiver got;
    TC::CFormulaParam late = request();
    late.beginTime = {kMorning + 1020, 0};
    TC::CFormulaParam closed = request();
    closed.endTime = {kMorning + 1020, 0};
    TC::CFormulaParam beyond = request();
    beyond.endTime = {kMorning + 9999, 0};
    DataLayer layer(smallDay(), historyUpTo(HistoryPoint::arrival(3)));
    layer.subscribe(late, Stream::Orders, got.named("late"));
    layer.subscribe(closed, Stream::Orders, got.named("closed"));
    layer.subscribe(beyond, Stream::Orders, got.named("beyond"));
    layer.start();
    layer.waitUntilDelivered();
    EXPECT_EQ(got.text, "late 0: 1020\nclosed 0: 1000 1020\nbeyond 0: 1000 1020\nlate 1: 1050\n");
}

TEST(DataLayer, shouldLeaveOutShanghaisTradeCancelsWhenAsked)
{
    for (const char* market : {"SH", "SZ"}) {
        Receiver got;
        DataLayer layer(smallDay(market), historyUpTo(HistoryPoint::arrival(2)));
        layer.subscribe(request(market), Stream::Trades, got.named("book"));
        layer.subscribe(request(market), Stream::Trades, got.named("list"), ShanghaiCancels::InOrdersOnly);
        layer.start();
        layer.waitUntilDelivered();
        const std::string everything = "book 0: 1010\nlist 0: 1010\nbook 1: 1030\n";
        EXPECT_EQ(got.text, market == std::string("SH") ? everything : everything + "list 1: 1030\n");
    }
}

TEST(DataLayer, shouldLeaveOutShanghaisDeletesWhenAsked)
{
    const auto deletion = std::make_shared<quoter::OrderData>();
    deletion->timetag = kMorning + 1020;
    deletion->seq = 1;
    deletion->bsFlag = quoter::kSideCancelBuy;
    for (const char* market : {"SH", "SZ"}) {
        Receiver got;
        DataLayer layer(DayBuilder()
                            .market(market)
                            .order(1000, 10, 100, 1)
                            .add(Stream::Orders, deletion)
                            .cancel(1030, 100, 1)
                            .share());
        for (const Stream stream : {Stream::Orders, Stream::Trades})
            layer.subscribe(request(market), stream, got.named(streamName(stream)), ShanghaiCancels::InTradesOnly);
        layer.start();
        layer.waitUntilDelivered();
        EXPECT_EQ(got.text, market == std::string("SH") ? "orders 0: 1000\ntrades 0: 1030\n"
                                                        : "orders 0: 1000 1020\ntrades 0: 1030\n");
    }
}

TEST(DataLayer, shouldDeliverInTheTerminalsUnitsWhenTheInstrumentIsABond)
{
    __int64 volume = 0;
    __int64 total = 0;
    RecordedDay day = DayBuilder().snapshot(1000, 10, 12345).aux(1000, 999).build();
    day.instrument.types = {100016};
    DataLayer layer(std::make_shared<const RecordedDay>(day));
    layer.subscribe(request(), Stream::Snapshots, [&](int, const RecordBatch& records) {
        volume = dynamic_cast<const quoter::QuoterDepthData&>(*records.at(0)).volume;
    });
    layer.subscribeAux(request(), [&](int, const AuxBatch& records) { total = records.at(0)->totalBidVolume; });
    layer.start();
    layer.waitUntilDelivered();
    EXPECT_EQ(volume, 1234);
    EXPECT_EQ(total, 99);
}

TEST(DataLayer, shouldAskBeforeARecordOnlyWhenItIsPushed)
{
    Receiver got;
    DeliveryOptions options = historyUpTo(HistoryPoint::arrival(3));
    options.beforePush = [&] { got.text += "ready?\n"; };
    DataLayer layer(smallDay(), options);
    layer.subscribe(request(), Stream::Orders, got.named("orders"));
    layer.subscribe(request(), Stream::Trades, got.named("trades"));
    layer.start();
    layer.waitUntilDelivered();
    EXPECT_EQ(got.text, "orders 0: 1000 1020\ntrades 0: 1010\nready?\ntrades 1: 1030\nready?\norders 1: 1050\n");
}

TEST(DataLayer, shouldGiveTheHistoryUpToNowWhenASubscriberComesLate)
{
    Receiver got;
    DataLayer layer(smallDay(), historyUpTo(HistoryPoint::nothing()));
    bool subscribed = false;
    layer.subscribe(request(), Stream::Trades, [&](int kind, const RecordBatch& records) {
        got.text += batchText("trades", kind, records);
        if (kind == 1 && !subscribed) {
            subscribed = true;
            layer.subscribe(request(), Stream::Orders, got.named("orders"));
            layer.subscribe(request(), Stream::Trades, got.named("late"));
        }
    });
    layer.start();
    layer.waitUntilDelivered();
    EXPECT_EQ(got.text, "trades 0:\n"
                        "trades 1: 1010\n"
                        "orders 0: 1000\n"
                        "late 0: 1010\n"
                        "orders 1: 1020\n"
                        "trades 1: 1030\n"
                        "late 1: 1030\n"
                        "orders 1: 1050\n");

    got.text.clear();
    layer.subscribe(request(), Stream::Orders, got.named("after"));
    EXPECT_TRUE(layer.waitUntilDelivered());
    EXPECT_EQ(got.text, "after 0: 1000 1020 1050\n");
}

TEST(DataLayer, shouldNotCallAReceiverAgainWhenItWasUnsubscribed)
{
    Receiver got;
    DataLayer layer(smallDay(), historyUpTo(HistoryPoint::nothing()));
    int orders = 0;
    layer.subscribe(request(), Stream::Trades, [&](int kind, const RecordBatch& records) {
        got.text += batchText("trades", kind, records);
        if (kind == 1)
            layer.unsubscribe(orders);
    });
    orders = layer.subscribe(request(), Stream::Orders, got.named("orders"));
    layer.start();
    layer.waitUntilDelivered();
    EXPECT_EQ(got.text, "trades 0:\norders 0:\norders 1: 1000\ntrades 1: 1010\ntrades 1: 1030\n");
}

TEST(DataLayer, shouldRefuseACallWhenStreamOrStateDoesNotAllowIt)
{
    DataLayer layer(smallDay());
    EXPECT_THROW(layer.subscribe(request(), Stream::Aux, [](int, const RecordBatch&) {}), std::invalid_argument);
    EXPECT_THROW(layer.subscribeWhole(request(), Stream::Aux, [](int, const RecordBatch&) {}), std::invalid_argument);
    EXPECT_FALSE(layer.waitUntilDelivered()) << "not started";
    layer.start();
    EXPECT_THROW(layer.start(), std::logic_error);
    layer.stop();
    EXPECT_THROW(layer.start(), std::logic_error);
}

TEST(DataLayer, shouldKeepTheDayUnchangedWhenAModelCompletesASnapshot)
{
    const auto day = DayBuilder().snapshot(1000, 0, 100).share();
    for (int round = 0; round < 2; ++round) {
        DataLayer layer(day);
        double seen = -1;
        layer.subscribe(request(), Stream::Snapshots, [&](int, const RecordBatch& records) {
            seen = records.at(0)->lastPrice;
            records.at(0)->lastPrice = 10;
        });
        layer.start();
        layer.waitUntilDelivered();
        EXPECT_EQ(seen, 0);
    }
}

TEST(WrapBatch, shouldNameTheInstrumentOfTheRequestWhenRecordsAreWrapped)
{
    const RecordBatch records = {std::make_shared<quoter::OrderData>(), nullptr};
    const auto batch = wrapBatch(request("SH", "600519"), records);
    EXPECT_EQ(batch->market, "SH");
    EXPECT_EQ(batch->stockCode, "600519");
    EXPECT_EQ(batch->records, records);
}
