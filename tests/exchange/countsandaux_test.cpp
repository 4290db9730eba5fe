// The counts by order size and the book summaries of simulated days, counted anew from the ticks before each record.

#include "exchange/instrumentclass.h"
#include "exchange/simulator.h"
#include "quoter/orderdata.h"
#include "quoter/quoteralldata.h"
#include "quoter/transactioncount.h"
#include "quoter/transactiondata.h"
#include "recording/datalayer.h"
#include "recording/dayfolder.h"
#include "recording/recordedday.h"
#include "tests/exchange/classdays.h"
#include "tests/exchange/plainreplay.h"
#include "tests/exchange/shanghaireplay.h"
#include "tests/exchange/snapshottext.h"
#include "tests/recording/builders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace exchange {

namespace {

using recording::Event;
using recording::RecordedDay;
using recording::Stream;

std::vector<std::string> classesWith(Stream stream, const std::string& market)
{
    std::vector<std::string> names;
    for (const InstrumentClass& row : instrumentClasses()) {
        if (row.market == market && std::count(row.streams.begin(), row.streams.end(), stream) > 0)
            names.push_back(row.name);
    }
    return names;
}

// Two days of a class, of which one is cheap enough for large orders to stand out and has more orders of market kinds.
std::vector<RecordedDay> daysOf(const std::string& name)
{
    SimulationOptions options = optionsOf(name);
    std::vector<RecordedDay> days = {simulateDay(options)};
    options.seed = 20;
    options.ordersPerDay = 1500;
    options.marketOrdersPerMille = 150;
    options.medianHands *= 4;
    days.push_back(simulateDay(options));
    return days;
}

template <class Replay>
void follow(Replay& replay, const Event& event)
{
    if (const auto* const order = dynamic_cast<const quoter::OrderData*>(event.record.get()))
        replay.apply(*order);
    else if (const auto* const trade = dynamic_cast<const quoter::TransactionData*>(event.record.get()))
        replay.apply(*trade);
}

bool isCallAuction(int status)
{
    return status == 12 || status == 18;
}

// The status that the latest snapshot shows.
class Status {
public:
    int after(const Event& event)
    {
        if (const auto* const quote = dynamic_cast<const quoter::QuoterAllData*>(event.record.get()))
            m_status = quote->tradeStatus;
        return m_status;
    }

private:
    int m_status = 0;
};

__int64 buysOf(const quoter::TransactionCount& count)
{
    return count.buyHuge + count.buyBig + count.buyMiddle + count.buySmall;
}

__int64 sellsOf(const quoter::TransactionCount& count)
{
    return count.sellHuge + count.sellBig + count.sellMiddle + count.sellSmall;
}

// The same in hands, as a terminal is given it: what is no whole hand is cut off.
quoter::TransactionCount inHands(quoter::TransactionCount count)
{
    for (__int64* const shares : {&count.buyHuge, &count.buyBig, &count.buyMiddle, &count.buySmall, &count.sellHuge,
                                  &count.sellBig, &count.sellMiddle, &count.sellSmall})
        *shares /= 100;
    return count;
}

quoter::QuoteAux inHands(quoter::QuoteAux aux)
{
    aux.totalBidVolume /= 100;
    aux.totalAskVolume /= 100;
    return aux;
}

RecordedDay writtenAndRead(const RecordedDay& day)
{
    const recording_test::TempFolder folder;
    recording::writeDay(day, folder / "day", recording::Compression::Zstd);
    return recording::readDay(folder / "day");
}

// Kind and contents of all batches of counts and of summaries, a line for each record.
struct Delivered {
    Delivered(const std::shared_ptr<const RecordedDay>& day, const recording::DeliveryOptions& options)
    {
        TC::CFormulaParam request;
        request.market = QString::fromStdString(day->instrument.market);
        request.stockCode = QString::fromStdString(day->instrument.code);
        request.endTime = quoter::TimeSeq::TIME_LASTED;
        recording::DataLayer data(day, options);
        data.subscribe(request, Stream::Counts, [this](int kind, const recording::RecordBatch& batch) {
            kinds.insert(kind);
            for (const auto& record : batch)
                counts += line(record->timetag, " ", textOf(dynamic_cast<quoter::TransactionCount&>(*record)), "\n");
        });
        data.subscribeAux(request, [this](int kind, const recording::AuxBatch& batch) {
            auxKinds.insert(kind);
            for (const auto& record : batch)
                summaries += line(record->timetag, " ", textOf(*record, 100), "\n");
        });
        data.start();
        data.waitUntilDelivered();
        data.stop();
    }

    std::set<int> kinds, auxKinds;
    std::string counts, summaries;
};

class ShenzhenDays : public ::testing::TestWithParam<std::string> {};
class ShanghaiDays : public ::testing::TestWithParam<std::string> {};

} // namespace

TEST_P(ShenzhenDays, shouldCountAndSumUpWhatTheTicksSayWhenARecordIsPublished)
{
    for (const RecordedDay& day : daysOf(GetParam())) {
        PlainReplay replay(day);
        int counts = 0;
        int summaries = 0;
        for (const Event& event : day.events) {
            follow(replay, event);
            if (const auto* const count = dynamic_cast<const quoter::TransactionCount*>(event.record.get())) {
                replay.settle(count->timetag);
                ASSERT_EQ(textOf(*count), replay.countsText()) << clockOf(day, *count);
                ++counts;
            } else if (event.stream == Stream::Aux) {
                replay.settle(event.aux->timetag);
                ASSERT_EQ(textOf(*event.aux, replay.perUnit), replay.auxText()) << event.aux->timetag;
                ++summaries;
            }
        }
        replay.finish();
        EXPECT_EQ(replay.faults, std::vector<std::string>());
        EXPECT_GT(counts, 500);
        EXPECT_EQ(summaries, counts);
    }
}

// An aggressor is the later order of the two, in an auction too: so all that trades is an active buy or an active sell.
TEST_P(ShenzhenDays, shouldHaveAllTradedSharesInItsSizesWhenARecordIsPublished)
{
    for (const RecordedDay& day : daysOf(GetParam())) {
        __int64 bought = 0;
        __int64 sold = 0;
        quoter::TransactionCount before;
        for (const Event& event : day.events) {
            if (const auto* const trade = dynamic_cast<const quoter::TransactionData*>(event.record.get())) {
                const bool trades = trade->transKind != quoter::kTransKindCancel;
                (trade->buySeq > trade->sellSeq ? bought : sold) += trades ? trade->volume : 0;
            }
            const auto* const count = dynamic_cast<const quoter::TransactionCount*>(event.record.get());
            if (!count)
                continue;
            ASSERT_EQ(buysOf(*count), bought) << clockOf(day, *count);
            ASSERT_EQ(sellsOf(*count), sold) << clockOf(day, *count);
            ASSERT_GE(count->buyOrderCount, before.buyOrderCount);
            ASSERT_GE(count->sellOrderCount, before.sellOrderCount);
            before = *count;
        }
        EXPECT_GT(before.buyOrderCount, 10);
        EXPECT_GT(before.sellOrderCount, 10);
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, ShenzhenDays, ::testing::ValuesIn(classesWith(Stream::Counts, "SZ")), testNameOf);

TEST(Counts, shouldFillEachSizeOfBothSidesWhenDaysAreOrdinary)
{
    quoter::TransactionCount all;
    for (const std::uint64_t seed : {1U, 2U, 3U}) {
        SimulationOptions options;
        options.seed = seed;
        const RecordedDay day = simulateDay(options);
        const quoter::TransactionCount last = *recordsOf<quoter::TransactionCount>(day).back();
        all.buyHuge += last.buyHuge;
        all.sellHuge += last.sellHuge;
        for (const __int64 shares :
             {last.buyBig, last.buyMiddle, last.buySmall, last.sellBig, last.sellMiddle, last.sellSmall})
            EXPECT_GT(shares, 0) << textOf(last);
    }
    EXPECT_GT(all.buyHuge, 0);
    EXPECT_GT(all.sellHuge, 0);
}

// The trades at a fixed price are in a stream of their own, which the day has not: counts and book stay the close's.
TEST(Counts, shouldStayAsTheCloseLeftThemWhenFixedPriceTradingCountsAnew)
{
    for (const RecordedDay& day : daysOf("after-hours-b")) {
        Status status;
        std::string closeCounts;
        std::string closeBook;
        __int64 dayVolume = 0;
        __int64 afterHours = 0;
        int compared = 0;
        for (const Event& event : day.events) {
            const bool isAfterHours = status.after(event) >= 22;
            if (const auto* const quote = dynamic_cast<const quoter::QuoterAllData*>(event.record.get()))
                (isAfterHours ? afterHours : dayVolume) = quote->volume;
            if (const auto* const count = dynamic_cast<const quoter::TransactionCount*>(event.record.get())) {
                closeCounts = isAfterHours ? closeCounts : textOf(*count);
                EXPECT_EQ(textOf(*count), closeCounts);
                EXPECT_EQ(buysOf(*count) + sellsOf(*count), dayVolume);
                compared += isAfterHours ? 1 : 0;
            } else if (event.stream == Stream::Aux) {
                closeBook = isAfterHours ? closeBook : textOf(*event.aux, 100);
                EXPECT_EQ(textOf(*event.aux, 100), closeBook);
            }
        }
        EXPECT_GT(compared, 10);
        EXPECT_GT(afterHours, 0);
    }
}

// An order that trades up at once never appears, and one that appears has been traded from: the book is the same.
TEST_P(ShanghaiDays, shouldSumUpTheBookThatTheTicksLeaveWhenARecordIsPublished)
{
    for (const RecordedDay& day : daysOf(GetParam())) {
        ShanghaiReplay replay;
        Status status;
        int compared = 0;
        for (const Event& event : day.events) {
            follow(replay, event);
            const bool isHidden = isCallAuction(status.after(event));
            if (event.stream != Stream::Aux)
                continue;
            ASSERT_EQ(textOf(*event.aux, 100), isHidden ? "bid 0@0 ask 0@0" : replay.auxText()) << event.aux->timetag;
            compared += event.aux->totalAskVolume > 0 ? 1 : 0;
        }
        EXPECT_EQ(replay.faults, "");
        EXPECT_GT(compared, 500);
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, ShanghaiDays, ::testing::ValuesIn(classesWith(Stream::Aux, "SH")), testNameOf);

TEST(CountsAndAux, shouldReachATerminalInHandsWhenTheDayWasWrittenAndRead)
{
    const RecordedDay day = simulateDay(optionsOf("after-hours-b"));
    std::string counts;
    std::string summaries;
    for (const Event& event : day.events) {
        if (const auto* const count = dynamic_cast<const quoter::TransactionCount*>(event.record.get()))
            counts += line(count->timetag, " ", textOf(inHands(*count)), "\n");
        else if (event.stream == Stream::Aux)
            summaries += line(event.aux->timetag, " ", textOf(inHands(*event.aux), 100), "\n");
    }

    const auto read = std::make_shared<const RecordedDay>(writtenAndRead(day));
    struct Row {
        recording::HistoryPoint history;
        std::set<int> kinds;
    };
    for (const Row& row : {Row{recording::HistoryPoint::wholeDay(), {0, 3}},
                           Row{recording::HistoryPoint::arrival(read->events.size() / 2), {0, 1, 3}},
                           Row{recording::HistoryPoint::nothing(), {0, 1}}}) {
        recording::DeliveryOptions options;
        options.history = row.history;
        options.pieceSize = 100;
        const Delivered delivered(read, options);
        EXPECT_EQ(delivered.kinds, row.kinds);
        EXPECT_EQ(delivered.auxKinds, row.kinds);
        EXPECT_TRUE(delivered.counts == counts) << "kinds " << row.kinds.size();
        EXPECT_TRUE(delivered.summaries == summaries) << "kinds " << row.kinds.size();
    }
}

} // namespace exchange
