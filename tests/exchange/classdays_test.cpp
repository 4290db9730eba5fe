// A simulated day of each class of instruments.

#include "exchange/instrumentclass.h"
#include "exchange/simulator.h"
#include "quoter/orderdata.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"
#include "tests/exchange/classdays.h"
#include "tests/exchange/daychecker.h"
#include "tests/exchange/dayfingerprint.h"
#include "tests/exchange/shanghaireplay.h"
#include "tests/exchange/snapshottext.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace exchange {

namespace {

using recording::Event;
using recording::RecordedDay;
using recording::Stream;

constexpr int kClosedStatus = 15;
constexpr int kAfterHoursStatus = 22;

// "11 12 14", each status as the day enters it.
std::string statusesOf(const RecordedDay& day)
{
    std::string text;
    int status = 0;
    for (const auto* record : recordsOf<quoter::QuoterAllData>(day)) {
        if (record->tradeStatus != status)
            text += line(text.empty() ? "" : " ", record->tradeStatus);
        status = record->tradeStatus;
    }
    return text;
}

std::string streamsOf(const RecordedDay& day)
{
    std::string text;
    for (const Stream stream : day.streams)
        text.append(text.empty() ? "" : " ").append(recording::streamName(stream));
    return text;
}

std::vector<std::string> classNames()
{
    std::vector<std::string> names;
    for (const InstrumentClass& row : instrumentClasses())
        names.push_back(row.name);
    return names;
}

class ClassDay : public ::testing::TestWithParam<std::string> {};

} // namespace

TEST_P(ClassDay, shouldBeTheSameOnlyWhenTheOptionsAreTheSame)
{
    SimulationOptions options = optionsOf(GetParam());
    const RecordedDay day = simulateDay(options);
    EXPECT_EQ(dayFingerprint(simulateDay(options)), dayFingerprint(day));
    EXPECT_EQ(simulateDay(options).instrument, day.instrument);
    ++options.seed;
    EXPECT_NE(dayFingerprint(simulateDay(options)), dayFingerprint(day));
}

TEST_P(ClassDay, shouldHoldOnlyItsStreamsInTheOrderOfTimeWhenSimulated)
{
    const RecordedDay day = dayOf(GetParam());
    std::set<Stream> seen;
    __int64 last = 0;
    for (const Event& event : day.events) {
        EXPECT_GE(timetagOf(event), last) << recording::streamName(event.stream);
        last = timetagOf(event);
        seen.insert(event.stream);
    }
    EXPECT_EQ(seen, std::set<Stream>(day.streams.begin(), day.streams.end())) << streamsOf(day);
}

TEST_P(ClassDay, shouldQuoteWholeTicksWithinTheLimitsWhenItTrades)
{
    const RecordedDay day = dayOf(GetParam());
    const standin::InstrumentDescription& instrument = day.instrument;
    bool moved = false;
    for (const auto* quote : recordsOf<quoter::QuoterAllData>(day)) {
        for (const double price :
             {quote->lastPrice, quote->open, quote->high, quote->low, quote->lastClose, quote->askPrice[0],
              quote->bidPrice[0], quote->settlementPrice, quote->lastSettlementPrice, quote->lastPriceAlt}) {
            ASSERT_TRUE(isWholeTicks(price, instrument.priceTick)) << price;
            if (instrument.upStopPrice > 0 && price > 0) {
                ASSERT_LE(price, instrument.upStopPrice);
                ASSERT_GE(price, instrument.downStopPrice);
            }
        }
        EXPECT_EQ(quote->lastClose, instrument.lastClose);
        moved = moved || (quote->volume > 0 && quote->high > quote->low);
    }
    EXPECT_TRUE(moved) << "a day with trades, and not all at one price";
}

TEST_P(ClassDay, shouldSayTheSameOnBothLevelsWhenItHasBoth)
{
    const RecordedDay day = dayOf(GetParam());
    const auto quotes = recordsOf<quoter::QuoterAllData>(day);
    const auto snapshots = recordsOf<quoter::QuoterDepthData>(day);
    if (snapshots.empty()) {
        EXPECT_TRUE(GetParam() == "index" || GetParam() == "cicc-index");
        return;
    }
    ASSERT_EQ(quotes.size(), snapshots.size());
    for (std::size_t i = 0; i < quotes.size(); ++i) {
        const quoter::QuoterAllData& one = *quotes[i];
        const quoter::QuoterDepthData& two = *snapshots[i];
        ASSERT_EQ(one.timetag, two.timetag);
        ASSERT_EQ(std::vector({one.lastPrice, one.open, one.high, one.low, one.amount, one.settlementPrice,
                               one.lastSettlementPrice, one.iopv, one.lastPriceAlt, one.askPrice[0], one.bidPrice[0]}),
                  std::vector({two.lastPrice, two.open, two.high, two.low, two.amount, two.settlementPrice,
                               two.lastSettlementPrice, two.iopv, two.lastPriceAlt, two.askPrice[0], two.bidPrice[0]}));
        ASSERT_EQ(one.volume, two.volume);
        ASSERT_EQ(one.tradeStatus, two.tradeStatus);
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, ClassDay, ::testing::ValuesIn(classNames()), testNameOf);

TEST(ClassDays, shouldHaveTheStreamsOfTheirMarketWhenSimulated)
{
    const std::string all = "orders trades quotes snapshots queues thousand counts aux";
    const std::string shanghai = "orders trades quotes snapshots aux";
    const std::map<std::string, std::string> expected = {{"stock", all},
                                                         {"sh-stock", shanghai},
                                                         {"after-hours-a", shanghai},
                                                         {"after-hours-b", all},
                                                         {"registered-a", all},
                                                         {"registered-b", shanghai},
                                                         {"registered-c", all},
                                                         {"gdr", shanghai},
                                                         {"hk-stock", "quotes snapshots"},
                                                         {"fund", all},
                                                         {"bond", all},
                                                         {"company-bond", all},
                                                         {"convertible", all},
                                                         {"convertible-b", all},
                                                         {"index", "quotes"},
                                                         {"cicc-index", "quotes"},
                                                         {"future", "quotes snapshots"},
                                                         {"commodity-future", "quotes snapshots"},
                                                         {"option", "quotes snapshots"}};
    ASSERT_EQ(expected.size(), instrumentClasses().size());
    for (const auto& [name, streams] : expected)
        EXPECT_EQ(streamsOf(dayOf(name)), streams) << name;
}

TEST(ClassDays, shouldPassThroughThePhasesOfTheirClassWhenTheStatusIsAPhase)
{
    for (const std::string& name : classNames()) {
        const RecordedDay day = dayOf(name);
        if (instrumentClass(name).settles)
            continue;
        const bool afterHours = name.starts_with("after-hours");
        const std::string expected = afterHours ? "11 12 14 13 14 13 18 15 22 23" : "11 12 14 13 14 13 18 15";
        const std::string statuses = statusesOf(day);
        if (day.instrument.isIndex || name == "cicc-index")
            EXPECT_TRUE(statuses.starts_with("11") && statuses.ends_with("15")) << name << ": " << statuses;
        else
            EXPECT_EQ(statuses, expected) << name;
    }
}

TEST(ClassDays, shouldCountAnewWhenFixedPriceTradingBegins)
{
    for (const char* name : {"after-hours-a", "after-hours-b"}) {
        const RecordedDay day = dayOf(name);
        const quoter::QuoterAllData* close = nullptr;
        const quoter::QuoterAllData* first = nullptr;
        const quoter::QuoterAllData* before = nullptr;
        for (const auto* quote : recordsOf<quoter::QuoterAllData>(day)) {
            if (quote->tradeStatus == kClosedStatus)
                close = quote;
            if (quote->tradeStatus < kAfterHoursStatus)
                continue;
            ASSERT_TRUE(close);
            first = first ? first : quote;
            ASSERT_TRUE(!before || quote->volume >= before->volume) << name;
            EXPECT_NEAR(quote->amount, static_cast<double>(quote->volume) * close->lastPrice, 0.005) << name;
            EXPECT_EQ(quote->lastPrice, close->lastPrice) << name;
            EXPECT_EQ(quote->high, close->high) << name;
            before = quote;
        }
        ASSERT_TRUE(first && before) << name;
        EXPECT_EQ(clockOf(day, *close), 150003) << name;
        EXPECT_EQ(clockOf(day, *first), 150500) << name;
        EXPECT_EQ(first->volume, 0) << name;
        EXPECT_EQ(clockOf(day, *before), 153000) << name;
        EXPECT_EQ(before->tradeStatus, 23) << name;
        EXPECT_GT(before->volume, 0) << name;
        EXPECT_LT(before->volume, close->volume) << name;
    }
}

TEST(ClassDays, shouldAgreeWithAPlainReplayOfTheirTicksWhenTheyAreShenzhens)
{
    std::vector<SimulationOptions> all;
    for (const char* name : {"registered-a", "registered-c", "after-hours-b", "fund", "bond", "company-bond",
                             "convertible", "convertible-b"})
        all.push_back(optionsOf(name));
    // Where there are few ticks between the limits, orders share their prices.
    all.push_back(optionsOf("bond"));
    all.back().lastClose = 1.003;
    for (const SimulationOptions& options : all) {
        SCOPED_TRACE(line(options.instrumentClass, " at ", options.lastClose));
        RecordedDay day = simulateDay(options);
        std::erase_if(day.events, [&day, midnight = day.events.front().record->timetag - clockTime(9, 0)](
                                      const Event& event) { return timetagOf(event) - midnight >= kAfterHours; });
        checkDay(day);
    }
}

TEST(ClassDays, shouldAgreeWithAReplayByShanghaisRulesWhenTheirTicksAreShanghais)
{
    for (const char* name : {"sh-stock", "after-hours-a", "registered-b", "gdr"}) {
        SimulationOptions options = optionsOf(name);
        options.ordersPerDay = 2500;
        const RecordedDay day = simulateDay(options);
        ShanghaiReplay replay;
        int compared = 0;
        for (const Event& event : day.events) {
            if (const auto* const order = dynamic_cast<const quoter::OrderData*>(event.record.get()))
                replay.apply(*order);
            else if (const auto* const trade = dynamic_cast<const quoter::TransactionData*>(event.record.get()))
                replay.apply(*trade);
            const auto* const snapshot = dynamic_cast<const quoter::QuoterDepthData*>(event.record.get());
            if (!snapshot || snapshot->tradeStatus == 12 || snapshot->tradeStatus == 18 ||
                snapshot->tradeStatus >= kAfterHoursStatus)
                continue;
            ASSERT_EQ(ShanghaiReplay::textOf(*snapshot), replay.text()) << name << " " << clockOf(day, *snapshot);
            ++compared;
        }
        EXPECT_EQ(replay.faults, "") << name;
        EXPECT_GT(compared, 1000) << name;
        EXPECT_GT(replay.neverAppeared(), 100U) << name;
    }
}

} // namespace exchange
