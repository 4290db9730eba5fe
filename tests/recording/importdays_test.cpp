// Checks on real days, where there are any: TESSI_RECORDED_DAYS names a folder with a folder for each.

#include "recording/dayfolder.h"
#include "recording/importday.h"
#include "tests/recording/builders.h"
#include "tests/support/recordeddays.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <unordered_map>

using namespace recording;
using namespace recording_test;

namespace {

struct KnownDay {
    const char* folder;
    const char* instrument;
    int tradingDay;
    std::map<Stream, std::size_t> rows;
    std::size_t trades; // of the trade stream, the rest are cancels
    std::size_t deletes;
};

void PrintTo(const KnownDay& day, std::ostream* out)
{
    *out << day.folder;
}

class RecordedDays : public ::testing::TestWithParam<KnownDay> {
protected:
    void SetUp() override
    {
        const std::filesystem::path source = tests::recordedDay(GetParam().folder);
        if (!std::filesystem::exists(source))
            GTEST_SKIP() << "no recorded day at " << source;
        m_day = importDay(source);
    }

    template <class Record, class Visit>
    void each(Stream stream, Visit&& visit) const
    {
        for (const Event& event : m_day.events) {
            if (event.stream == stream)
                visit(dynamic_cast<const Record&>(*event.record));
        }
    }

    RecordedDay m_day;
};

} // namespace

TEST_P(RecordedDays, shouldHoldEveryRowOfTheSourceWhenImported)
{
    std::map<Stream, std::size_t> rows;
    for (const Event& event : m_day.events)
        ++rows[event.stream];
    EXPECT_EQ(rows, GetParam().rows);
    EXPECT_EQ(m_day.instrument.market + m_day.instrument.code, GetParam().instrument);
    EXPECT_EQ(m_day.tradingDay, GetParam().tradingDay);

    std::size_t trades = 0;
    each<quoter::TransactionData>(Stream::Trades, [&](const auto& trade) { trades += trade.transKind != 3; });
    std::size_t deletes = 0;
    each<quoter::OrderData>(Stream::Orders, [&](const auto& order) { deletes += order.bsFlag > 2; });
    EXPECT_EQ(trades, GetParam().trades);
    EXPECT_EQ(deletes, GetParam().deletes);
}

TEST_P(RecordedDays, shouldShowTheVolumeThatWasTradedWhenTheDayEnds)
{
    __int64 traded = 0;
    double amount = 0;
    each<quoter::TransactionData>(Stream::Trades, [&](const auto& trade) {
        if (trade.transKind == 3)
            return;
        traded += trade.volume;
        amount += trade.price * static_cast<double>(trade.volume);
    });
    const quoter::QuoterDepthData* last = nullptr;
    each<quoter::QuoterDepthData>(Stream::Snapshots, [&](const auto& snapshot) { last = &snapshot; });
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(last->volume, traded);
    EXPECT_NEAR(last->amount, amount, 1.0); // Shenzhen's file gives whole units
    EXPECT_EQ(last->tradeStatus, 15);
    EXPECT_EQ(last->lastClose, m_day.instrument.lastClose);
}

// Shanghai never shows an order that matched fully at once; all others are known when they trade or go, or right after.
TEST_P(RecordedDays, shouldAccountForEveryOrderWhenItTradesOrGoes)
{
    struct Known {
        __int64 size = 0;
        bool appeared = false;
        __int64 gone = 0;
    };
    std::unordered_map<__int64, Known> orders;
    std::size_t unknown = 0;
    for (const Event& event : m_day.events) {
        if (event.stream == Stream::Orders) {
            const auto& order = dynamic_cast<const quoter::OrderData&>(*event.record);
            if (order.bsFlag > 2)
                continue;
            EXPECT_FALSE(orders[order.seq].appeared) << order.seq;
            orders[order.seq].size = order.volume;
            orders[order.seq].appeared = true;
        } else if (event.stream == Stream::Trades) {
            const auto& trade = dynamic_cast<const quoter::TransactionData&>(*event.record);
            for (const int seq : {trade.buySeq, trade.sellSeq}) {
                if (seq == 0)
                    continue;
                unknown += !orders[seq].appeared;
                orders[seq].gone += trade.volume;
            }
            EXPECT_EQ(trade.buySeq != 0 && trade.sellSeq != 0, trade.transKind != 3);
        }
    }
    for (const auto& [seq, order] : orders) {
        if (order.appeared)
            EXPECT_LE(order.gone, order.size) << "order " << seq;
        else
            EXPECT_EQ(m_day.instrument.market, "SH") << "order " << seq;
    }
    EXPECT_EQ(unknown == 0, m_day.instrument.market == "SZ");
}

TEST_P(RecordedDays, shouldKeepTheOrderOfEventsWhenTicksAndSnapshotsAreMerged)
{
    __int64 seq = 0;
    __int64 tickTime = 0;
    __int64 imageTime = 0;
    for (const Event& event : m_day.events) {
        const bool isTick = event.stream == Stream::Orders || event.stream == Stream::Trades;
        const __int64 time = timetagOf(event);
        if (isTick) {
            EXPECT_LE(tickTime, time);
            EXPECT_LT(imageTime, time) << "a tick that is not later than a snapshot comes before it";
            tickTime = time;
        } else {
            EXPECT_LE(tickTime, time);
            EXPECT_LE(imageTime, time);
            imageTime = time;
        }
        if (event.stream == Stream::Orders && m_day.instrument.market == "SZ") {
            const auto& order = dynamic_cast<const quoter::OrderData&>(*event.record);
            EXPECT_LT(seq, order.seq);
            seq = order.seq;
        }
    }
}

TEST_P(RecordedDays, shouldShowPhasesInOrderWithBidEqualToAskOnlyWhenAnAuctionRuns)
{
    int phase = 0;
    const std::map<int, int> rank = {{11, 0}, {12, 1}, {14, 2}, {13, 2}, {18, 3}, {15, 4}};
    each<quoter::QuoterDepthData>(Stream::Snapshots, [&](const quoter::QuoterDepthData& s) {
        const std::string text = eventText({Stream::Snapshots, std::make_shared<quoter::QuoterDepthData>(s), nullptr});
        ASSERT_TRUE(rank.count(s.tradeStatus)) << text;
        EXPECT_LE(phase, rank.at(s.tradeStatus)) << text;
        phase = rank.at(s.tradeStatus);
        const bool isAuction = s.tradeStatus == 12 || s.tradeStatus == 18;
        const bool isMatching = s.bidPrice[0] == s.askPrice[0];
        EXPECT_TRUE(isAuction == isMatching || (s.tradeStatus == 11 && s.bidPrice[0] == 0)) << text;
        for (const double price : {s.lastPrice, s.bidPrice[0], s.askPrice[0], s.bidPrice[9], s.askPrice[9]}) {
            EXPECT_EQ(price, std::round(price * 100) / 100) << text;
            EXPECT_LE(price, m_day.instrument.upStopPrice);
        }
    });
}

TEST_P(RecordedDays, shouldReadBackAsImportedWhenWrittenPlainOrCompressed)
{
    for (const Compression compression : {Compression::None, Compression::Zstd}) {
        const TempFolder folder;
        writeDay(m_day, folder / "day", compression);
        EXPECT_TRUE(sameDay(m_day, readDay(folder / "day")));
    }
}

INSTANTIATE_TEST_SUITE_P(Known, RecordedDays,
                         ::testing::Values(KnownDay{"szse-20171229-300446",
                                                    "SZ300446",
                                                    20171229,
                                                    {{Stream::Orders, 2499},
                                                     {Stream::Trades, 2106},
                                                     {Stream::Quotes, 1877},
                                                     {Stream::Snapshots, 1877},
                                                     {Stream::Queues, 1249},
                                                     {Stream::Aux, 1877}},
                                                    1576,
                                                    0},
                                           KnownDay{"szse-20170103-000001",
                                                    "SZ000001",
                                                    20170103,
                                                    {{Stream::Orders, 23831},
                                                     {Stream::Trades, 18202},
                                                     {Stream::Quotes, 4687},
                                                     {Stream::Snapshots, 4687},
                                                     {Stream::Queues, 3946},
                                                     {Stream::Aux, 4687}},
                                                    13730,
                                                    0},
                                           KnownDay{"sse-20230201-600519",
                                                    "SH600519",
                                                    20230201,
                                                    {{Stream::Orders, 54735},
                                                     {Stream::Trades, 42803},
                                                     {Stream::Quotes, 5109},
                                                     {Stream::Snapshots, 5109},
                                                     {Stream::Aux, 5109}},
                                                    27135,
                                                    15668}),
                         [](const auto& known) { return std::string(known.param.instrument); });
